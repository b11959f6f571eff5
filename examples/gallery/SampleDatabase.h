#pragma once
// The gallery's embedded sample database: a small invoice table with Thai item names, and the
// control tables the grids read for the user's language, rights and aliases. Made on first run in
// the gallery's own data folder, next to the user format file the grids read their widths from.
#include <QString>

namespace gallery {

struct SampleDatabase {
  QString folder;  // the data folder, with no final separator
  QString path;    // folder + "/sample.db"
  bool created = false;  // true when this run made the database
  QString error;         // empty when the database is ready

  // "Data Source=<path>": the data layer's embedded SQLite provider.
  QString connectionString() const;
};

// Makes the folder and, when it holds no database yet, the database and the user format file.
// An existing database is left as the user has it.
SampleDatabase openSampleDatabase();

// The invoice that the Invoice page shows.
inline constexpr const char* kSampleInvoice = "INV-0001";

}  // namespace gallery
