#include "companion/IniFile.h"
#include "frame/Error.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {
QByteArray readAll(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}
void writeAll(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  f.write(bytes);
}
}  // namespace

TEST(IniFile, FormatKeysRoundTripAndStayInTheirSection) {
  QTemporaryDir dir;
  const QString file = dir.filePath(QStringLiteral("TQ7UserFormat.ini"));
  IniFile ini;
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("12:ITEMGRID")), QString());  // no file yet
  ini.WriteKey(file, QStringLiteral("12:ITEMGRID"), QStringLiteral("1,1200;2,0;3,950.5"));
  ini.WriteKey(file, QStringLiteral("GLOBAL:ITEMGRID"), QStringLiteral("1,800"));
  EXPECT_EQ(readAll(file), QByteArray("[TQ7]\n12:ITEMGRID=1,1200;2,0;3,950.5\nGLOBAL:ITEMGRID=1,800\n"));
  // Keys compare without regard to case; a second write replaces in place.
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("12:itemgrid")), QStringLiteral("1,1200;2,0;3,950.5"));
  ini.WriteKey(file, QStringLiteral("12:itemGrid"), QStringLiteral("ชื่อ,1"));
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("12:ITEMGRID")), QStringLiteral("ชื่อ,1"));
  EXPECT_EQ(readAll(file), QByteArray("[TQ7]\n12:itemGrid=ชื่อ,1\nGLOBAL:ITEMGRID=1,800\n"));
  ini.DeleteKey(file, QStringLiteral("12:ITEMGRID"));
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("12:ITEMGRID")), QString());
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("GLOBAL:ITEMGRID")), QStringLiteral("1,800"));
  ini.DeleteKey(file, QStringLiteral("nothing"));
  ini.DeleteKey(dir.filePath(QStringLiteral("absent.ini")), QStringLiteral("x"));
  EXPECT_FALSE(QFile::exists(dir.filePath(QStringLiteral("absent.ini"))));
}

TEST(IniFile, HandWrittenFilesKeepTheirOtherLines) {
  QTemporaryDir dir;
  const QString file = dir.filePath(QStringLiteral("s.ini"));
  writeAll(file, "\xEF\xBB\xBF; settings\r\nTOP=above\r\n[Other]\r\nKey=other\r\n\r\n[tq7]\r\n Key = \"quoted\" \r\n"
                 "; Key=commented\r\n\r\n[Last]\r\nx=1\r\n");
  IniFile ini;
  EXPECT_EQ(ini.ReadKey(file, QStringLiteral("KEY")), QStringLiteral("quoted"));
  EXPECT_EQ(IniFile::readValue(file, QStringLiteral("OTHER"), QStringLiteral("key")), QStringLiteral("other"));
  EXPECT_EQ(IniFile::readValue(file, QString(), QStringLiteral("top")), QStringLiteral("above"));
  EXPECT_EQ(IniFile::readValue(file, QString(), QStringLiteral("key")), QStringLiteral("other"));
  ini.WriteKey(file, QStringLiteral("New"), QStringLiteral("v"));
  ini.DeleteKey(file, QStringLiteral("key"));
  EXPECT_EQ(readAll(file), QByteArray("; settings\r\nTOP=above\r\n[Other]\r\nKey=other\r\n\r\n[tq7]\r\n"
                                      "; Key=commented\r\nNew=v\r\n\r\n[Last]\r\nx=1\r\n"));
  EXPECT_EQ(IniFile::readValue(file, QStringLiteral("Other"), QStringLiteral("key")), QStringLiteral("other"));
}

TEST(IniFile, UnwritableFilesFailWithARuntimeNumber) {
  QTemporaryDir dir;
  IniFile ini;
  try {
    ini.WriteKey(dir.filePath(QStringLiteral("no/such/folder/f.ini")), QStringLiteral("k"), QStringLiteral("v"));
    ADD_FAILURE() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.number, err::PathNotFound);
  }
  try {
    ini.WriteKey(dir.path(), QStringLiteral("k"), QStringLiteral("v"));  // a folder, not a file
    ADD_FAILURE() << "no error";
  } catch (const Error& e) {
    EXPECT_EQ(e.number, err::PathFileAccess);
  }
}
