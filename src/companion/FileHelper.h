#pragma once
// File chores of the companion helpers: a key from an INI-style settings file, a line added to a
// log file, the file and folder dialogs (through the platform), and a path split into its folder
// and its name. Paths may use "\" or "/" as separator.
#include <QString>
#include <cstdint>

namespace tq7 {

class FileHelper {
 public:
  // Language of the dialogs' default titles: 0 Thai, anything else English.
  int16_t LanguageID = 0;

  // The value of Key in Section of an INI-style file; an empty Section finds the key wherever it
  // stands first. Empty when the file or the key is absent.
  QString ReadINIKey(const QString& FileName, const QString& Section, const QString& Key);

  // Adds Text to the log file, making the file when missing: Caption in front of the text, the
  // time (yyyy-MM-dd HH:mm:ss and a blank) in front of both when TimeStamp is "1", and a line
  // break after when NewLine is "1". Answers 1 when written, 0 when the file could not be; it
  // never throws.
  int16_t AddLog(const QString& Text, const QString& FileName, const QString& Caption = {},
                 const QString& TimeStamp = QStringLiteral("0"), const QString& NewLine = QStringLiteral("1"));

  // The open dialog, starting at InitialPath. With ChangeFolder false the answer must lie in the
  // starting folder, or it counts as cancelled. Modern is accepted: both dialogs look alike here.
  // Empty when cancelled.
  QString OpenFileDialog(const QString& InitialPath, const QString& Filter, bool ChangeFolder = true,
                         bool Modern = true, const QString& Title = {});
  QString SaveFileDialog(const QString& InitialPath, const QString& Filter, const QString& Title = {});
  QString FolderDialog(const QString& Title, const QString& InitialPath);

  // "C:\img\a.jpg" gives "C:\img" and "a.jpg"; a name without a folder gives an empty folder.
  static QString FolderOf(const QString& Path);
  static QString FileNameOf(const QString& Path);
};

}  // namespace tq7
