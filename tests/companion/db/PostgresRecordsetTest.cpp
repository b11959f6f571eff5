#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "companion/db/DbTestSupport.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::db;
using tq7::test::errorOf;
using tq7::test::PgDatabase;

TEST(DbPostgres, ServerTypesArriveAsTheSystemKeepsThem) {
  TQ7_REQUIRE_PG();
  PgDatabase pg;
  Connection c;
  c.setCursorLocation(cursor::UseClient);
  c.setCommandTimeout(0);
  c.Open(pg.conn, "", "", -1);
  EXPECT_EQ(c.providerName(), QStringLiteral("PostgreSQL"));
  c.Execute(QStringLiteral(
      "CREATE TABLE items(item_id int PRIMARY KEY, name varchar(40), price numeric(10,2), qty bigint, "
      "sold date, stamp timestamp, ok boolean, note text, pic bytea);"
      "INSERT INTO items VALUES (1, 'ปากกา', 12.50, 10, '2024-01-31', '1899-12-29 06:00:00', true, NULL, '\\x00ff');"
      "INSERT INTO items VALUES (2, 'Pencil', NULL, NULL, NULL, '2024-02-01 18:00:00', false, '', NULL);"));
  Recordset rs;
  rs.Open(QStringLiteral("SELECT * FROM items ORDER BY item_id"), c, 3, 1, -1);
  ASSERT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(rs.Fields().Count(), 9);
  EXPECT_EQ(rs.Fields(QStringLiteral("ITEM_ID")).Value().toLongLong(), 1);
  EXPECT_EQ(rs.Fields(QStringLiteral("Name")).Value().toString(), QStringLiteral("ปากกา"));
  EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("price")).Value().toDouble(), 12.5);
  // 31 January 2024 is serial 45322; 29 December 1899 06:00 is -1.25.
  EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("sold")).Value().toDouble(), 45322.0);
  EXPECT_EQ(rs.Fields(QStringLiteral("sold")).Type(), FieldType::Date);
  EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("stamp")).Value().toDouble(), -1.25);
  EXPECT_EQ(rs.Fields(QStringLiteral("ok")).Value().toInt(), 1);
  EXPECT_TRUE(rs.Fields(QStringLiteral("note")).Value().isNull());
  EXPECT_EQ(rs.Fields(QStringLiteral("pic")).Value().toByteArray(), QByteArray("\x00\xff", 2));
  rs.MoveNext();
  EXPECT_TRUE(rs.Fields(QStringLiteral("price")).Value().isNull());
  EXPECT_TRUE(rs.Fields(QStringLiteral("sold")).Value().isNull());
  EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("stamp")).Value().toDouble(), 45323.75);
  EXPECT_EQ(rs.Fields(QStringLiteral("ok")).Value().toInt(), 0);
  EXPECT_FALSE(rs.Fields(QStringLiteral("note")).Value().isNull());
  // An all-null column still says what it holds.
  Recordset nulls;
  nulls.Open(QStringLiteral("SELECT  TOP 1 price FROM items WHERE price IS NULL"), c);
  EXPECT_EQ(nulls.RecordCount(), 1);
  EXPECT_EQ(nulls.Fields(0).Type(), FieldType::Double);
  EXPECT_EQ(nulls.Source(), QStringLiteral("SELECT  TOP 1 price FROM items WHERE price IS NULL"));

  EXPECT_EQ(c.columns(QStringLiteral("ITEMS")).size(), 9);
  EXPECT_TRUE(c.tables().contains(QStringLiteral("items")));
}

TEST(DbPostgres, ErrorsTimeoutsAndAStoppedServer) {
  TQ7_REQUIRE_PG();
  PgDatabase pg;
  Connection c;
  c.Open(pg.conn);
  Recordset rs;
  Error e = errorOf([&] { rs.Open(QStringLiteral("SELEKT 1"), c); });
  EXPECT_EQ(e.number, err::DbSyntax);
  EXPECT_TRUE(e.description.contains(QStringLiteral("syntax error"))) << e.description.toStdString();
  e = errorOf([&] { rs.Open(QStringLiteral("SELECT * FROM missing_table"), c); });
  EXPECT_EQ(e.number, err::DbNoSuchTable);
  EXPECT_TRUE(e.description.contains(QStringLiteral("missing_table")));

  c.setCommandTimeout(1);
  QElapsedTimer t;
  t.start();
  e = errorOf([&] { rs.Open(QStringLiteral("SELECT pg_sleep(10)"), c); });
  EXPECT_EQ(e.number, err::DbTimeout);
  EXPECT_FALSE(e.description.isEmpty());
  EXPECT_LT(t.elapsed(), 5000);
  EXPECT_EQ(rs.State(), state::Closed);
  // No limit again: the same connection answers.
  c.setCommandTimeout(0);
  rs.Open(QStringLiteral("SELECT pg_sleep(0.01), 7 AS n"), c);
  EXPECT_EQ(rs.Fields(QStringLiteral("n")).Value().toInt(), 7);

  // A server that is not there: a socket folder with no server in it, and a wrong database.
  Connection down;
  e = errorOf([&] {
    down.Open(QStringLiteral("Provider=PostgreSQL;Host=%1;Port=1;Database=x;User ID=postgres").arg(pg.name));
  });
  EXPECT_EQ(e.number, err::DbUnspecified);
  EXPECT_FALSE(e.description.isEmpty());
  EXPECT_EQ(down.State(), state::Closed);
  QString noDb = pg.conn;
  noDb.replace(pg.name, QStringLiteral("no_such_db"));
  e = errorOf([&] { down.Open(noDb); });
  EXPECT_TRUE(e.description.contains(QStringLiteral("no_such_db"))) << e.description.toStdString();
  EXPECT_EQ(down.State(), state::Closed);
}
