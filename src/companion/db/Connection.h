#pragma once
// A connection to one database, shaped like the record-set API the controls were written
// against. The engine comes from the connection string:
//   SQLite (the default)   Data Source=path.db            [Provider=SQLite]
//   PostgreSQL             Provider=PostgreSQL;Host=...;Port=...;Database=...;User ID=...;Password=...
//   ODBC                   DSN=...  or  Driver={...};...
//   MySQL                  Provider=MySQL;Server=...;Port=...;Database=...;User ID=...;Password=...
// A failure throws tq7::Error with a record-set style number and the engine's own text, and
// leaves the connection closed.
#include "companion/db/Provider.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <memory>
#include <vector>

namespace tq7::db {

namespace cursor {
constexpr int32_t UseServer = 2;
constexpr int32_t UseClient = 3;
}  // namespace cursor
namespace state {
constexpr int32_t Closed = 0;
constexpr int32_t Open = 1;
}  // namespace state

class Connection {
 public:
  Connection();
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  // Kept for the callers that set it; every result is fetched whole on the client either way.
  int32_t CursorLocation() const { return cursorLocation_; }
  void setCursorLocation(int32_t v) { cursorLocation_ = v; }
  // Seconds a command may run; 0 is no limit. Read at each command.
  int32_t CommandTimeout() const { return commandTimeout_; }
  void setCommandTimeout(int32_t v) { commandTimeout_ = v; }
  QString ConnectionString() const { return connectionString_; }
  void setConnectionString(const QString& s) { connectionString_ = s; }

  // An empty ConnectionString uses the one set before. Options is accepted and has no effect.
  void Open(const QString& ConnectionString = {}, const QString& UserID = {}, const QString& Password = {},
            int32_t Options = -1);
  void Close();
  int32_t State() const { return provider_ ? state::Open : state::Closed; }

  // Runs statements that give no rows (used to make data); answers the rows changed.
  int64_t Execute(const QString& CommandText);

  // The engine behind an open connection: "SQLite", "PostgreSQL", "ODBC" or "MySQL".
  QString providerName() const;
  // Catalog questions, for the table and reference checks.
  QStringList tables();
  QStringList columns(const QString& table);
  std::vector<ForeignKey> foreignKeys();

  // The open engine; throws when the connection is closed.
  Provider& provider();

 private:
  int32_t cursorLocation_ = cursor::UseServer;
  int32_t commandTimeout_ = 30;
  QString connectionString_;
  std::unique_ptr<Provider> provider_;
};

}  // namespace tq7::db
