#pragma once
// Real databases for the data tests: a SQLite file in a temporary folder, and a private
// PostgreSQL database on the cluster that scripts/test starts (TQ7_PG_CONN).
#include "companion/db/Connection.h"
#include "frame/Error.h"

#include <gtest/gtest.h>

#include <QString>
#include <QTemporaryDir>
#include <atomic>
#include <cstdlib>
#include <sqlite3.h>
#include <unistd.h>

namespace tq7::test {

// A SQLite file made with the plain C API, so that the layer under test is not its own witness.
struct SqliteFile {
  QTemporaryDir dir;
  QString path;
  explicit SqliteFile(const char* sql, const QString& name = QStringLiteral("data.db"))
      : path(dir.filePath(name)) {
    sqlite3* db = nullptr;
    sqlite3_open(path.toUtf8().constData(), &db);
    char* msg = nullptr;
    if (sqlite3_exec(db, sql, nullptr, nullptr, &msg) != SQLITE_OK) {
      const std::string m = msg ? msg : "?";
      sqlite3_free(msg);
      sqlite3_close(db);
      throw std::runtime_error("test data: " + m);
    }
    sqlite3_close(db);
  }
  QString conn() const { return QStringLiteral("Data Source=") + path; }
};

inline QString pgAdminConnection() { return QString::fromLocal8Bit(std::getenv("TQ7_PG_CONN")); }

// A database of its own on the test cluster, dropped at the end, so that tests running side by
// side never see each other's tables.
struct PgDatabase {
  QString name;
  QString conn;
  PgDatabase() {
    static std::atomic<int> n{0};
    name = QStringLiteral("tq7_%1_%2").arg(::getpid()).arg(++n);
    db::Connection admin;
    admin.Open(pgAdminConnection());
    admin.Execute(QStringLiteral("CREATE DATABASE ") + name);
    conn = pgAdminConnection();
    conn.replace(QStringLiteral("Database=tq7test"), QStringLiteral("Database=") + name);
  }
  ~PgDatabase() {
    try {
      db::Connection admin;
      admin.Open(pgAdminConnection());
      admin.Execute(QStringLiteral("DROP DATABASE IF EXISTS %1 WITH (FORCE)").arg(name));
    } catch (...) {
    }
  }
};

#define TQ7_REQUIRE_PG()                                                                              \
  do {                                                                                                \
    if (::tq7::test::pgAdminConnection().isEmpty())                                                   \
      GTEST_SKIP() << "TQ7_PG_CONN is not set: run scripts/test, which starts a PostgreSQL cluster"; \
  } while (0)

// Runs f and answers the tq7::Error it throws; fails the test when it throws nothing.
template <class F>
Error errorOf(F&& f) {
  try {
    f();
  } catch (const Error& e) {
    return e;
  }
  ADD_FAILURE() << "expected a tq7::Error";
  return Error{0, QString()};
}

}  // namespace tq7::test
