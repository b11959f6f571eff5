#include "ribbon/RibbonSkin.h"

#include "frame/Platform.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace tq7 {

namespace {

const SkinColours kSkins[3] = {
    // BLACK: white captions on the dark strip, the selected tab black on its light face.
    {0xFFFFFFu, 0xFFFFFFu, 0x000000u, syscolor::WindowText, 0x464646u, 0xFFFFFFu},
    // BLUE
    {0xB86A3Eu, 0x8B4215u, 0x8B4215u, 0x8B4215u, 0xDAB08Eu, 0x8B4215u},
    // SILVER
    {0x6A625Cu, 0x6A625Cu, 0x6A625Cu, 0x6A625Cu, 0xDDD4D0u, 0x6A625Cu},
};

constexpr size_t kTempPathBuffer = 260;
constexpr int32_t kResourceMissing = 326;
constexpr int32_t kInvalidPicture = 481;

QString systemText(int code) { return QString::fromLocal8Bit(std::strerror(code)).left(255); }

[[noreturn]] void raise(int32_t number, const QString& description, const char* suffix) {
  RibbonPictureError e;
  e.number = number;
  e.description = description;
  e.source = programName() + QLatin1String(suffix);
  throw e;
}

// The failure of the temporary folder or name: the system's code with 10000 added by OR.
[[noreturn]] void raiseSystem(int code) { raise(int32_t(code) | 10000, systemText(code), ".cAniCursor"); }

QString resourcePath(int id, const QString& type, bool twice) {
  return QStringLiteral(":/tq7/ribbon/%1/%2%3.png").arg(type).arg(id).arg(twice ? QStringLiteral("@2x") : QString());
}

}  // namespace

const SkinColours& skinColours(int16_t theme) { return kSkins[theme >= 0 && theme <= 2 ? theme : 0]; }

QString skinType(int16_t theme) {
  switch (theme) {
    case 1: return QStringLiteral("BLUE");
    case 2: return QStringLiteral("SILVER");
    default: return QStringLiteral("BLACK");
  }
}

QString programName() {
  static const QString name = QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).completeBaseName();
  return name;
}

SkinPicture LoadSkinPicture(int id, const QString& type) {
  // 1. The resource's bytes.
  QFile res(resourcePath(id, type, false));
  if (!res.open(QIODevice::ReadOnly))
    raise(kResourceMissing, QStringLiteral("Resource with identifier '%1' not found").arg(id), ".cLoadResPicture");
  const QByteArray bytes = res.readAll();

  // 2. A temporary name "LRP..." in the system's temporary folder.
  const QByteArray folder = platform().temporaryFolder().toLocal8Bit();
  if (folder.isEmpty() || size_t(folder.size()) >= kTempPathBuffer) raiseSystem(folder.isEmpty() ? ENOENT : ENAMETOOLONG);
  QByteArray name = folder;
  if (!name.endsWith('/')) name += '/';
  name += "LRPXXXXXX";
  const int fd = ::mkstemp(name.data());
  if (fd < 0) raiseSystem(errno);

  // 3. The bytes to the file as one block; 4. the picture from the file; 5. the file away.
  const ssize_t written = ::write(fd, bytes.constData(), size_t(bytes.size()));
  const int writeError = errno;
  ::close(fd);
  SkinPicture out;
  const QString path = QString::fromLocal8Bit(name);
  const bool loaded = written == bytes.size() && out.picture.load(path, "PNG");
  ::unlink(name.constData());
  if (written != bytes.size()) raise(writeError | 10000, systemText(writeError), ".cLoadResPicture");
  if (!loaded) raise(kInvalidPicture, QStringLiteral("Invalid picture"), ".cLoadResPicture");

  // The sharper drawing for scaled screens, straight from memory.
  QFile twice(resourcePath(id, type, true));
  if (twice.open(QIODevice::ReadOnly) && out.picture2x.loadFromData(twice.readAll(), "PNG"))
    out.picture2x.setDevicePixelRatio(2.0);
  return out;
}

}  // namespace tq7
