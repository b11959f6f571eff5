#include "companion/FileHelper.h"

#include "companion/IniFile.h"
#include "frame/Platform.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace tq7 {

namespace {
qsizetype lastSeparator(const QString& path) {
  return std::max(path.lastIndexOf(QLatin1Char('\\')), path.lastIndexOf(QLatin1Char('/')));
}
}  // namespace

QString FileHelper::ReadINIKey(const QString& FileName, const QString& Section, const QString& Key) {
  return IniFile::readValue(FileName, Section, Key);
}

int16_t FileHelper::AddLog(const QString& Text, const QString& FileName, const QString& Caption,
                           const QString& TimeStamp, const QString& NewLine) {
  QString line = Caption + Text;
  if (TimeStamp.trimmed() == QLatin1String("1"))
    line = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss ")) + line;
  if (NewLine.trimmed() == QLatin1String("1")) line += QLatin1Char('\n');
  QFile f(FileName);
  if (!f.open(QIODevice::WriteOnly | QIODevice::Append)) return 0;
  const QByteArray bytes = line.toUtf8();
  return f.write(bytes) == bytes.size() ? 1 : 0;
}

QString FileHelper::OpenFileDialog(const QString& InitialPath, const QString& Filter, bool ChangeFolder, bool Modern,
                                   const QString& Title) {
  (void)Modern;
  const QString title =
      Title.isEmpty() ? (LanguageID == 0 ? QStringLiteral("เปิดไฟล์") : QStringLiteral("Open File")) : Title;
  const QString answer = platform().openFileDialog(title, Filter, InitialPath);
  if (answer.isEmpty() || ChangeFolder) return answer;
  // The starting folder is the path itself when it is a folder, else the folder it names.
  QString start = QFileInfo(InitialPath).isDir() ? InitialPath : FolderOf(InitialPath);
  while (start.endsWith(QLatin1Char('\\')) || start.endsWith(QLatin1Char('/'))) start.chop(1);
  if (FolderOf(answer).compare(start, Qt::CaseInsensitive) != 0) return {};
  return answer;
}

QString FileHelper::SaveFileDialog(const QString& InitialPath, const QString& Filter, const QString& Title) {
  const QString title =
      Title.isEmpty() ? (LanguageID == 0 ? QStringLiteral("บันทึกไฟล์") : QStringLiteral("Save File")) : Title;
  return platform().saveFileDialog(title, Filter, InitialPath);
}

QString FileHelper::FolderDialog(const QString& Title, const QString& InitialPath) {
  return platform().folderDialog(Title, InitialPath);
}

QString FileHelper::FolderOf(const QString& Path) {
  const qsizetype at = lastSeparator(Path);
  return at < 0 ? QString() : Path.left(at);
}

QString FileHelper::FileNameOf(const QString& Path) { return Path.mid(lastSeparator(Path) + 1); }

}  // namespace tq7
