#pragma once
// PostgreSQL through libpq. Host may be a socket folder. The command time-out is the server's
// statement_timeout, set for the session whenever it changes.
#include "companion/db/Provider.h"

struct pg_conn;

namespace tq7::db {

class PostgresProvider final : public Provider {
 public:
  PostgresProvider(const ConnectionString& cs, const QString& user, const QString& password);
  ~PostgresProvider() override;

  QString name() const override { return QStringLiteral("PostgreSQL"); }
  std::unique_ptr<ResultTable> query(const QString& sql, int32_t timeoutSeconds) override;
  int64_t execute(const QString& sql, int32_t timeoutSeconds) override;
  QStringList tables() override;
  QStringList columns(const QString& table) override;
  std::vector<ForeignKey> foreignKeys() override;

 private:
  void applyTimeout(int32_t seconds);

  pg_conn* conn_ = nullptr;
  int32_t timeout_ = 0;  // the statement_timeout in force, in seconds; 0 is the server's "none"
};

}  // namespace tq7::db
