#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "companion/db/DbTestSupport.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::db;
using tq7::test::errorOf;
using tq7::test::SqliteFile;

// ODBC for real: unixODBC with Debian's SQLite driver, registered as "SQLite3".
TEST(DbOdbc, DriverConnectionReadsValuesAndTurnsTopIntoLimit) {
  SqliteFile f(R"(CREATE TABLE Items(ItemID INTEGER PRIMARY KEY, ItemName TEXT, Price REAL);
    INSERT INTO Items VALUES (1, 'ปากกา', 12.5), (2, 'Pencil', NULL), (3, 'ยางลบ', 4);
    CREATE TABLE Sales(SaleID INTEGER PRIMARY KEY, ItemRef INTEGER REFERENCES Items(ItemID));)");
  Connection c;
  c.Open(QStringLiteral("Driver={SQLite3};Database=") + f.path);
  EXPECT_EQ(c.providerName(), QStringLiteral("ODBC"));
  Recordset rs;
  const QString sql = QStringLiteral("SELECT  TOP 2 ItemID, ItemName, Price FROM Items ORDER BY ItemID");
  rs.Open(sql, c, 3, 1, -1);
  EXPECT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(rs.Source(), sql);
  EXPECT_EQ(rs.Fields(QStringLiteral("itemid")).Value().toInt(), 1);
  EXPECT_EQ(rs.Fields(1).Value().toString(), QStringLiteral("ปากกา"));
  EXPECT_DOUBLE_EQ(rs.Fields(2).Value().toDouble(), 12.5);
  rs.MoveNext();
  EXPECT_TRUE(rs.Fields(2).Value().isNull());

  EXPECT_EQ(c.Execute(QStringLiteral("INSERT INTO Sales VALUES (1, 3)")), 1);
  EXPECT_TRUE(c.tables().contains(QStringLiteral("Sales")));
  EXPECT_EQ(c.columns(QStringLiteral("items")).size(), 3);
  const auto fks = c.foreignKeys();
  ASSERT_EQ(fks.size(), 1u);
  EXPECT_EQ(fks[0].table + '.' + fks[0].column + '>' + fks[0].refTable + '.' + fks[0].refColumn,
            QStringLiteral("Sales.ItemRef>Items.ItemID"));

  Recordset bad;
  const Error e = errorOf([&] { bad.Open(QStringLiteral("SELEC 1"), c); });
  EXPECT_NE(e.number, 0);
  EXPECT_TRUE(e.description.contains(QStringLiteral("syntax error"))) << e.description.toStdString();
  EXPECT_EQ(bad.State(), state::Closed);
  c.Close();
  EXPECT_EQ(c.State(), state::Closed);
}

TEST(DbOdbc, UnknownDataSourceOrDriverFails) {
  for (const char* s : {"DSN=tq7_no_such_dsn", "Driver={No Such Driver};Database=x"}) {
    Connection c;
    const Error e = errorOf([&] { c.Open(QString::fromUtf8(s)); });
    EXPECT_NE(e.number, 0) << s;
    EXPECT_FALSE(e.description.isEmpty()) << s;
    EXPECT_EQ(c.State(), state::Closed) << s;
  }
}

// No MySQL server runs in the tests: what can be checked is that a server that does not answer
// gives an error with a text and leaves nothing open.
TEST(DbMysql, AServerThatIsNotThereFailsCleanly) {
  Connection c;
  const Error e = errorOf(
      [&] { c.Open(QStringLiteral("Provider=MySQL;Server=127.0.0.1;Port=1;Database=x;User ID=u;Password=p")); });
  EXPECT_EQ(e.number, err::DbUnspecified);
  EXPECT_FALSE(e.description.isEmpty());
  EXPECT_EQ(c.State(), state::Closed);
}
