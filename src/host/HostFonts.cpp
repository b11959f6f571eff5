#include "host/HostFonts.h"

#include <QFontDatabase>
#include <QHash>
#include <QStringList>

namespace tq7 {
namespace {

enum class Kind { Sans, Serif, Mono };

bool writesThai(const QString& family) {
  return QFontDatabase::writingSystems(family).contains(QFontDatabase::Thai);
}

// Families of each kind, best first: the Thai families Debian ships (fonts-thai-tlwg), whose
// shapes are closest to the faces Thai business forms were drawn with.
const QStringList& preferred(Kind k) {
  static const QStringList sans{QStringLiteral("Loma"),  QStringLiteral("Garuda"),   QStringLiteral("Waree"),
                                QStringLiteral("Umpush"), QStringLiteral("Sawasdee"), QStringLiteral("Tlwg Typo")};
  static const QStringList serif{QStringLiteral("Norasi"), QStringLiteral("Kinnari"), QStringLiteral("Laksaman")};
  static const QStringList mono{QStringLiteral("Tlwg Mono"), QStringLiteral("Tlwg Typewriter"),
                                QStringLiteral("Tlwg Typist")};
  switch (k) {
    case Kind::Serif: return serif;
    case Kind::Mono: return mono;
    default: return sans;
  }
}

Kind kindOf(const QString& name) {
  const QString n = name.trimmed().toLower();
  static const QStringList serif{QStringLiteral("ms serif"), QStringLiteral("times new roman"),
                                 QStringLiteral("times"), QStringLiteral("angsana new"),
                                 QStringLiteral("angsanaupc"), QStringLiteral("georgia"),
                                 QStringLiteral("serif"), QStringLiteral("roman")};
  static const QStringList mono{QStringLiteral("courier new"), QStringLiteral("courier"),
                                QStringLiteral("lucida console"), QStringLiteral("fixedsys"),
                                QStringLiteral("terminal"), QStringLiteral("monospace")};
  if (serif.contains(n)) return Kind::Serif;
  if (mono.contains(n)) return Kind::Mono;
  return Kind::Sans;
}

QString firstThai(Kind k) {
  for (const QString& f : preferred(k))
    if (QFontDatabase::hasFamily(f) && writesThai(f)) return f;
  if (k != Kind::Sans) return firstThai(Kind::Sans);
  // No Tlwg family at all: any family that writes Thai, else the system's own.
  for (const QString& f : QFontDatabase::families(QFontDatabase::Thai)) return f;
  return QFontDatabase::systemFont(QFontDatabase::GeneralFont).family();
}

}  // namespace

QString defaultThaiFamily() {
  static const QString family = firstThai(Kind::Sans);
  return family;
}

QString hostFontFamily(const QString& name) {
  // Asked for every cell font change; the font database is slow, so each name is decided once.
  static QHash<QString, QString> decided;
  auto it = decided.constFind(name);
  if (it != decided.constEnd()) return it.value();
  QString family;
  const Kind k = kindOf(name);
  // "MS Sans Serif" and its kin are not installed here; a name that is, and writes Thai, stays.
  if (!name.isEmpty() && QFontDatabase::hasFamily(name) && writesThai(name))
    family = name;
  else
    family = k == Kind::Sans ? defaultThaiFamily() : firstThai(k);
  decided.insert(name, family);
  return family;
}

QFont toQFont(const QString& name, double pointSize, bool bold) {
  QFont f(hostFontFamily(name));
  f.setPointSizeF(pointSize > 0 ? pointSize : 8.25);
  f.setBold(bold);
  return f;
}

QFont toQFont(const tq7::Font& font) {
  QFont f = toQFont(font.Name, font.Size, font.Bold);
  f.setItalic(font.Italic);
  f.setUnderline(font.Underline);
  f.setStrikeOut(font.Strikethrough);
  return f;
}

}  // namespace tq7
