#include "companion/FileHelper.h"
#include "frame/FakePlatform.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

TEST(FileHelper, ReadsSettingsAndAppendsLogLines) {
  QTemporaryDir dir;
  const QString ini = dir.filePath(QStringLiteral("TQ7DynamicIP.INI"));
  {
    QFile f(ini);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[Setting]\nSOURCEURL = http://127.0.0.1/ip\nKEYWORD=: \nREFRESH=30\n[Other]\nREFRESH=99\n");
  }
  FileHelper h;
  EXPECT_EQ(h.ReadINIKey(ini, QString(), QStringLiteral("sourceurl")), QStringLiteral("http://127.0.0.1/ip"));
  EXPECT_EQ(h.ReadINIKey(ini, QStringLiteral("Other"), QStringLiteral("REFRESH")), QStringLiteral("99"));
  EXPECT_EQ(h.ReadINIKey(ini, QStringLiteral("Setting"), QStringLiteral("KEYWORD")), QStringLiteral(":"));
  EXPECT_EQ(h.ReadINIKey(ini, QString(), QStringLiteral("CUSTOMERCODE")), QString());
  EXPECT_EQ(h.ReadINIKey(dir.filePath(QStringLiteral("none.ini")), QString(), QStringLiteral("X")), QString());

  const QString log = dir.filePath(QStringLiteral("WMLog.log"));
  EXPECT_EQ(h.AddLog(QStringLiteral("ST,GS,+0012.5kg"), log, QString(), QStringLiteral("0"), QStringLiteral("1")), 1);
  EXPECT_EQ(h.AddLog(QStringLiteral("น้ำหนัก"), log, QStringLiteral("> "), QStringLiteral("0"), QStringLiteral("1")), 1);
  EXPECT_EQ(h.AddLog(QStringLiteral("tail"), log, QString(), QStringLiteral("0"), QStringLiteral("0")), 1);
  QFile f(log);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_EQ(QString::fromUtf8(f.readAll()), QStringLiteral("ST,GS,+0012.5kg\n> น้ำหนัก\ntail"));
  f.close();
  EXPECT_EQ(h.AddLog(QStringLiteral("x"), log, QString(), QStringLiteral("1")), 1);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_TRUE(QString::fromUtf8(f.readAll()).contains(QRegularExpression(QStringLiteral("tail\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d x\n$"))));
  EXPECT_EQ(h.AddLog(QStringLiteral("x"), dir.filePath(QStringLiteral("no/folder/a.log"))), 0);
}

TEST(FileHelper, DialogsGoThroughThePlatform) {
  FakePlatform fake;
  QTemporaryDir dir;
  QDir(dir.path()).mkpath(QStringLiteral("store/sub"));
  const QString store = dir.filePath(QStringLiteral("store"));
  FileHelper h;
  fake.answers = {dir.filePath(QStringLiteral("store/a.jpg")), dir.filePath(QStringLiteral("store/sub/b.jpg")),
                  dir.filePath(QStringLiteral("store/sub/b.jpg")), QString(), QStringLiteral("/tmp/out.csv"),
                  dir.filePath(QStringLiteral("store/sub"))};
  EXPECT_EQ(h.OpenFileDialog(store, QStringLiteral("Pictures|*.jpg"), false), dir.filePath(QStringLiteral("store/a.jpg")));
  EXPECT_EQ(h.OpenFileDialog(store, QString(), false), QString());  // left the starting folder
  EXPECT_EQ(h.OpenFileDialog(dir.filePath(QStringLiteral("store/a.jpg")), QString(), true),
            dir.filePath(QStringLiteral("store/sub/b.jpg")));
  EXPECT_EQ(h.OpenFileDialog(store, QString()), QString());  // cancelled
  h.LanguageID = 1;
  EXPECT_EQ(h.SaveFileDialog(QStringLiteral("/tmp"), QStringLiteral("CSV|*.csv")), QStringLiteral("/tmp/out.csv"));
  EXPECT_EQ(h.FolderDialog(QStringLiteral("เลือกหมวดหมู่ ที่จัดเก็บ"), store), dir.filePath(QStringLiteral("store/sub")));
  ASSERT_EQ(fake.calls.size(), 6);
  EXPECT_TRUE(fake.calls[0].startsWith(QStringLiteral("openFileDialog: เปิดไฟล์ | Pictures|*.jpg | ") + store));
  EXPECT_TRUE(fake.calls[4].startsWith(QStringLiteral("saveFileDialog: Save File | CSV|*.csv")));
  EXPECT_TRUE(fake.calls[5].contains(QStringLiteral("เลือกหมวดหมู่ ที่จัดเก็บ")));
}

TEST(FileHelper, SplitsPathsIntoFolderAndName) {
  EXPECT_EQ(FileHelper::FolderOf(QStringLiteral("C:\\Images\\2567\\a.jpg")), QStringLiteral("C:\\Images\\2567"));
  EXPECT_EQ(FileHelper::FileNameOf(QStringLiteral("C:\\Images\\2567\\a.jpg")), QStringLiteral("a.jpg"));
  EXPECT_EQ(FileHelper::FolderOf(QStringLiteral("/srv/img/รูป.png")), QStringLiteral("/srv/img"));
  EXPECT_EQ(FileHelper::FileNameOf(QStringLiteral("/srv/img/รูป.png")), QStringLiteral("รูป.png"));
  EXPECT_EQ(FileHelper::FolderOf(QStringLiteral("a.jpg")), QString());
  EXPECT_EQ(FileHelper::FileNameOf(QStringLiteral("a.jpg")), QStringLiteral("a.jpg"));
  EXPECT_EQ(FileHelper::FolderOf(QStringLiteral("\\sub\\")), QStringLiteral("\\sub"));
  EXPECT_EQ(FileHelper::FileNameOf(QStringLiteral("\\sub\\")), QString());
}
