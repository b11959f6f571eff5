#pragma once
// The embedded engine, through SQLite's own C API. The file must exist: opening never creates a
// database, so a mistyped path is an error and not a fresh empty file.
#include "companion/db/Provider.h"

#include <chrono>

struct sqlite3;

namespace tq7::db {

class SqliteProvider final : public Provider {
 public:
  explicit SqliteProvider(const QString& path);
  ~SqliteProvider() override;

  QString name() const override { return QStringLiteral("SQLite"); }
  std::unique_ptr<ResultTable> query(const QString& sql, int32_t timeoutSeconds) override;
  int64_t execute(const QString& sql, int32_t timeoutSeconds) override;
  QStringList tables() override;
  QStringList columns(const QString& table) override;
  std::vector<ForeignKey> foreignKeys() override;

 private:
  class Deadline;
  [[noreturn]] void fail(int rc, const QString& context = {});

  sqlite3* db_ = nullptr;
  QString path_;
  bool expired_ = false;  // set by the progress handler when a command ran out of time
  std::chrono::steady_clock::time_point deadline_{};
};

}  // namespace tq7::db
