#pragma once
// Settings files in the classic INI form, UTF-8 (a byte-order mark is accepted on reading):
//
//   [TQ7]
//   12:ITEMGRID=1,1200;2,0;3,950.5
//
// The controls' own keys (the saved column formats) all live in the one section [TQ7]. Section
// and key names compare without regard to case, blanks around names and values do not count,
// lines starting with ";" or "#" are comments, and a value in double quotes loses them on reading.
// Writing keeps every other line of the file as it was.
#include <QString>

namespace tq7 {

class IniFile {
 public:
  // The section that ReadKey, WriteKey and DeleteKey use.
  static QString SectionName() { return QStringLiteral("TQ7"); }

  // The value of Key, or empty when the file, the section or the key is not there.
  QString ReadKey(const QString& FileName, const QString& Key);
  // Writes Key, replacing its value or adding it; the file is made when missing (its folder must
  // exist). A file that cannot be written throws tq7::Error (76 no such folder, 75 no access).
  void WriteKey(const QString& FileName, const QString& Key, const QString& Value);
  // Removes Key; a missing file or key is no failure.
  void DeleteKey(const QString& FileName, const QString& Key);

  // The same for any section. Reading with an empty Section finds the key wherever it stands
  // first, also above the first section header.
  static QString readValue(const QString& FileName, const QString& Section, const QString& Key);
  static void writeValue(const QString& FileName, const QString& Section, const QString& Key, const QString& Value);
  static void deleteValue(const QString& FileName, const QString& Section, const QString& Key);
};

}  // namespace tq7
