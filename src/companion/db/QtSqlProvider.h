#pragma once
// ODBC and MySQL through Qt's SQL drivers (QODBC, QMYSQL). Each provider owns one named Qt
// connection for its lifetime. Qt loads its drivers only inside a running QCoreApplication, so
// one is made here, once, if the process has none (a library user with a QApplication already
// has one).
#include "companion/db/Provider.h"

namespace tq7::db {

class QtSqlProvider final : public Provider {
 public:
  enum Kind { Odbc, MySql };
  QtSqlProvider(Kind kind, const ConnectionString& cs, const QString& user, const QString& password);
  ~QtSqlProvider() override;

  QString name() const override { return kind_ == Odbc ? QStringLiteral("ODBC") : QStringLiteral("MySQL"); }
  std::unique_ptr<ResultTable> query(const QString& sql, int32_t timeoutSeconds) override;
  int64_t execute(const QString& sql, int32_t timeoutSeconds) override;
  QStringList tables() override;
  QStringList columns(const QString& table) override;
  std::vector<ForeignKey> foreignKeys() override;

 private:
  std::unique_ptr<ResultTable> run(const QString& sql);

  Kind kind_;
  QString connectionName_;
};

}  // namespace tq7::db
