#include "companion/db/Connection.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <cstdlib>

using namespace tq7;

// A load from a real PostgreSQL server: server types (numeric, date, timestamp, boolean) arrive
// as the grid's values and texts, nulls keep the row's defaults, keys are kept as text.
TEST(GridEditorPostgres, LoadsEveryKindOfColumnFromTheServer) {
  const QString conn = QString::fromLocal8Bit(std::getenv("TQ7_PG_CONN"));
  if (conn.isEmpty()) GTEST_SKIP() << "TQ7_PG_CONN is not set: no PostgreSQL cluster was started for this run";
  FakePlatform fake;
  const QString table = QStringLiteral("grid_load_%1").arg(QCoreApplication::applicationPid());
  {
    db::Connection c;
    c.Open(conn);
    c.Execute("DROP TABLE IF EXISTS " + table);
    c.Execute("CREATE TABLE " + table +
              " (code varchar(10) PRIMARY KEY, name text, price numeric(12,2), due date, stamp timestamp, "
              "paid boolean, kind integer, made integer, hours double precision)");
    c.Execute("INSERT INTO " + table +
              QString::fromUtf8(" VALUES ('A-1', 'ข้าวหอมมะลิ', 1234.50, '2024-03-15', '2024-03-15 14:30:00', true, "
                                "2, 2024, 7.3)"));
    c.Execute("INSERT INTO " + table + " VALUES ('B-2', NULL, NULL, NULL, NULL, false, NULL, NULL, NULL)");
    c.Close();
  }
  GridEditor g;
  g.SetFirst(12);
  g.addField3(1, "code", "TEXT", 1, "Code", 0, {}, 0, {}, 0, 10, 0, 0, 1, 0, 800);
  g.addField3(2, "NAME", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 40, 1, 1, 1, 0, 2000, 0, 0, {}, 0, "-");
  g.addField3(3, "price", "NUMBER", 0, "Price", 2, {}, 0, {}, 0, 12, 1, 1, 1, 0, 1200, 0, 0, {}, 5, {}, {}, {}, 2);
  g.addField3(4, "due", "DATE", 0, "Due", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 1200);
  g.addField3(5, "stamp", "DATETIME", 0, "Stamp", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 1800);
  g.addField3(6, "paid", "YESNO", 0, "Paid", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 500);
  g.addField3(7, "kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 900, 0, 0, "A,B,C");
  g.addField3(8, "made", "YEAR", 0, "Made", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 700);
  g.addField3(9, "hours", "HOUR", 0, "Hours", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 700);
  g.addField3(10, "missing", "NUMBER", 0, "Missing", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 700, 0, 0, {}, 3);
  g.SetData("Items", table, {}, "code", {}, 0, conn, conn);
  g.SetLast3("/tmp", "grdPg", "1", {}, conn);
  g.FillData3(true, true);

  ASSERT_EQ(g.ErrorNumber, 0);
  ASSERT_EQ(g.RecordCount, 2);
  EXPECT_EQ(g.TextMatrix(1, -989), "A-1");
  EXPECT_EQ(g.TextMatrix(2, -989), "B-2");
  EXPECT_EQ(g.GETText(1, 2), QString::fromUtf8("ข้าวหอมมะลิ"));
  EXPECT_EQ(g.GETText(1, 3), "1,234.50");
  EXPECT_EQ(g.GETText(1, 4), "15/03/2567");
  EXPECT_EQ(g.GETText(1, 5), "15/03/2567 14:30");
  EXPECT_EQ(g.GETValue(1, 6), 1);  // the data layer gives a boolean as 1 or 0
  EXPECT_EQ(g.GETText(1, 6), "Y");
  EXPECT_EQ(g.GETText(1, 7), "C");
  EXPECT_EQ(g.GETText(1, 8), "2567");
  EXPECT_EQ(g.GETText(1, 9), "7.30");
  EXPECT_EQ(g.GETValue(1, 10), 3);  // no such field: the default stays
  // Nulls keep the defaults of the row.
  EXPECT_EQ(g.GETText(2, 2), "-");
  EXPECT_EQ(g.GETValue(2, 3), 5);
  EXPECT_EQ(g.GETText(2, 4), "");
  EXPECT_EQ(g.GETValue(2, 6), 0);

  db::Connection c;
  c.Open(conn);
  c.Execute("DROP TABLE " + table);
}
