#include "companion/db/Connection.h"
#include "companion/db/ConnectionString.h"
#include "companion/db/Provider.h"
#include "companion/db/DbTestSupport.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::db;
using tq7::test::errorOf;

TEST(DbConnectionString, KeysIgnoreCaseAndValuesMayBeQuotedOrBraced) {
  const auto cs = ConnectionString::parse(
      QStringLiteral(" provider = PostgreSQL ; HOST=/tmp/sock;Password=\"a;b\"\"c\";Driver={SQLite3 {x}}};"
                     "User ID='o''neil';;Empty=;Port=5432"));
  EXPECT_EQ(cs.value(QStringLiteral("Provider")), QStringLiteral("PostgreSQL"));
  EXPECT_EQ(cs.value(QStringLiteral("host")), QStringLiteral("/tmp/sock"));
  EXPECT_EQ(cs.value(QStringLiteral("PASSWORD")), QStringLiteral("a;b\"c"));
  EXPECT_EQ(cs.value(QStringLiteral("driver")), QStringLiteral("SQLite3 {x}"));
  EXPECT_EQ(cs.value(QStringLiteral("user id")), QStringLiteral("o'neil"));
  EXPECT_TRUE(cs.has(QStringLiteral("EMPTY")));
  EXPECT_EQ(cs.value({QStringLiteral("Server"), QStringLiteral("Port")}), QStringLiteral("5432"));
  EXPECT_EQ(cs.pairs().size(), 7);
}

TEST(DbConnectionString, MalformedStringsFailWithANumberAndLeaveNothingOpen) {
  for (const char* bad : {"", "   ;  ", "Data Source", "=x;Data Source=a.db", "Password=\"open", "Driver={SQLite3",
                          "Password=\"a\"b;Data Source=x.db"}) {
    Connection c;
    const Error e = errorOf([&] { c.Open(QString::fromUtf8(bad)); });
    EXPECT_NE(e.number, 0) << bad;
    EXPECT_FALSE(e.description.isEmpty()) << bad;
    EXPECT_EQ(c.State(), state::Closed) << bad;
  }
  Connection c;
  const Error e = errorOf([&] { c.Open(QStringLiteral("Provider=Oracle;Data Source=x")); });
  EXPECT_EQ(e.number, err::DbProviderNotFound);
  EXPECT_TRUE(e.description.contains(QStringLiteral("Oracle")));
  EXPECT_EQ(c.State(), state::Closed);
}

TEST(DbConnectionString, TopClauseBecomesALimitAtTheEnd) {
  EXPECT_EQ(topToLimit(QStringLiteral("SELECT  TOP 50 a,b FROM t")), QStringLiteral("SELECT a,b FROM t LIMIT 50"));
  EXPECT_EQ(topToLimit(QStringLiteral("select\ttop\n7 * from t where x='TOP 3' order by a;  ")),
            QStringLiteral("SELECT * from t where x='TOP 3' order by a LIMIT 7"));
  EXPECT_EQ(topToLimit(QStringLiteral("SELECT DISTINCT TOP 2 a FROM t")), QStringLiteral("SELECT DISTINCT a FROM t LIMIT 2"));
  // Not the TOP form: left alone.
  for (const char* s : {"SELECT topping FROM t", "SELECT a FROM t LIMIT 5", "UPDATE t SET top=1"})
    EXPECT_EQ(topToLimit(QString::fromUtf8(s)), QString::fromUtf8(s));
  EXPECT_FALSE(hasTopClause(QStringLiteral("SELECT TOP FROM t")));
}
