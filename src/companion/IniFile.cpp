#include "companion/IniFile.h"

#include "frame/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringList>
#include <optional>

namespace tq7 {

namespace {

struct Lines {
  QStringList lines;
  QString eol = QStringLiteral("\n");
};

Lines load(const QString& fileName) {
  Lines out;
  QFile f(fileName);
  if (!f.open(QIODevice::ReadOnly)) return out;
  QByteArray bytes = f.readAll();
  if (bytes.startsWith("\xEF\xBB\xBF")) bytes.remove(0, 3);
  if (bytes.contains("\r\n")) out.eol = QStringLiteral("\r\n");
  QString text = QString::fromUtf8(bytes);
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  out.lines = text.split(QLatin1Char('\n'));
  if (!out.lines.isEmpty() && out.lines.last().isEmpty()) out.lines.removeLast();  // the final line break
  return out;
}

void save(const QString& fileName, const Lines& l) {
  const QFileInfo info(fileName);
  if (!info.absoluteDir().exists())
    throw Error{err::PathNotFound, QStringLiteral("Path not found: %1").arg(info.absolutePath())};
  QSaveFile f(fileName);
  if (!f.open(QIODevice::WriteOnly))
    throw Error{err::PathFileAccess, QStringLiteral("Path/File access error: %1").arg(fileName)};
  QString text = l.lines.join(l.eol);
  if (!l.lines.isEmpty()) text += l.eol;
  f.write(text.toUtf8());
  if (!f.commit()) throw Error{err::PathFileAccess, QStringLiteral("Path/File access error: %1").arg(fileName)};
}

std::optional<QString> sectionOf(const QString& line) {
  const QString t = line.trimmed();
  if (!t.startsWith(QLatin1Char('['))) return std::nullopt;
  const qsizetype close = t.indexOf(QLatin1Char(']'));
  if (close < 0) return std::nullopt;
  return t.mid(1, close - 1).trimmed();
}

bool isComment(const QString& line) {
  const QString t = line.trimmed();
  return t.startsWith(QLatin1Char(';')) || t.startsWith(QLatin1Char('#'));
}

// The key of a "key=value" line, or nothing.
std::optional<QString> keyOf(const QString& line) {
  if (isComment(line)) return std::nullopt;
  const qsizetype eq = line.indexOf(QLatin1Char('='));
  if (eq < 0) return std::nullopt;
  return line.left(eq).trimmed();
}

bool same(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// Lines of a section: from after its header to before the next header. -1 when absent.
struct Span {
  qsizetype header = -1, begin = -1, end = -1;
};

Span findSection(const QStringList& lines, const QString& section) {
  Span s;
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const auto name = sectionOf(lines[i]);
    if (!name) continue;
    if (s.header >= 0) {
      s.end = i;
      return s;
    }
    if (same(*name, section)) s.header = i, s.begin = i + 1;
  }
  if (s.header >= 0) s.end = lines.size();
  return s;
}

}  // namespace

QString IniFile::readValue(const QString& FileName, const QString& Section, const QString& Key) {
  const Lines l = load(FileName);
  const QString wanted = Key.trimmed();
  bool inSection = Section.isEmpty();
  for (const QString& line : l.lines) {
    if (const auto name = sectionOf(line)) {
      inSection = Section.isEmpty() || same(*name, Section.trimmed());
      continue;
    }
    if (!inSection) continue;
    const auto key = keyOf(line);
    if (!key || !same(*key, wanted)) continue;
    QString value = line.mid(line.indexOf(QLatin1Char('=')) + 1).trimmed();
    if (value.size() >= 2 && value.startsWith(QLatin1Char('"')) && value.endsWith(QLatin1Char('"')))
      value = value.mid(1, value.size() - 2);
    return value;
  }
  return {};
}

void IniFile::writeValue(const QString& FileName, const QString& Section, const QString& Key, const QString& Value) {
  Lines l = load(FileName);
  const QString key = Key.trimmed();
  const QString entry = key + QLatin1Char('=') + Value;
  const Span s = findSection(l.lines, Section.trimmed());
  if (s.header < 0) {
    if (!l.lines.isEmpty() && !l.lines.last().trimmed().isEmpty()) l.lines << QString();
    l.lines << QLatin1Char('[') + Section.trimmed() + QLatin1Char(']') << entry;
  } else {
    qsizetype lastFilled = s.header;
    bool replaced = false;
    for (qsizetype i = s.begin; i < s.end; ++i) {
      const auto k = keyOf(l.lines[i]);
      if (k && same(*k, key)) {
        l.lines[i] = entry;
        replaced = true;
        break;
      }
      if (!l.lines[i].trimmed().isEmpty()) lastFilled = i;
    }
    if (!replaced) l.lines.insert(lastFilled + 1, entry);
  }
  save(FileName, l);
}

void IniFile::deleteValue(const QString& FileName, const QString& Section, const QString& Key) {
  if (!QFile::exists(FileName)) return;
  Lines l = load(FileName);
  const Span s = findSection(l.lines, Section.trimmed());
  if (s.header < 0) return;
  bool removed = false;
  for (qsizetype i = s.end - 1; i >= s.begin; --i) {
    const auto k = keyOf(l.lines[i]);
    if (k && same(*k, Key.trimmed())) {
      l.lines.removeAt(i);
      removed = true;
    }
  }
  if (removed) save(FileName, l);
}

QString IniFile::ReadKey(const QString& FileName, const QString& Key) { return readValue(FileName, SectionName(), Key); }

void IniFile::WriteKey(const QString& FileName, const QString& Key, const QString& Value) {
  writeValue(FileName, SectionName(), Key, Value);
}

void IniFile::DeleteKey(const QString& FileName, const QString& Key) { deleteValue(FileName, SectionName(), Key); }

}  // namespace tq7
