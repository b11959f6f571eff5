// The view on a real PostgreSQL server: open, page, filter with a date that reaches the server in
// quotes; and a server that is not there.
#include "companion/db/Recordset.h"
#include "frame/FakePlatform.h"
#include "view/FilterData.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace tq7;
using namespace tq7::test;

TEST(DataViewPostgres, OpensPagesAndFiltersOnTheServer) {
  if (pgAdminConnection().isEmpty())
    GTEST_SKIP() << "TQ7_PG_CONN is not set: no PostgreSQL cluster was started for this run";
  FakePlatform fake;
  PgDatabase pg;
  {
    db::Connection c;
    c.Open(pg.conn);
    c.Execute(
        "CREATE TABLE items (itemid integer PRIMARY KEY, itemname text, price numeric(12,2), docdate date);"
        "INSERT INTO items SELECT i, 'สินค้า ' || i, i * 1.5, DATE '2024-01-01' + (i - 1) FROM generate_series(1, 230) i;");
    c.Close();
  }
  ItemsView v;
  DataView& d = v.view;
  d.showData("c", "itemid", "itemid,itemname,price,docdate", "No,Name,Price,Date", "600,2000,1000,1200", "2,0,1,6",
             "items ORDER BY itemid", pg.conn, 1, 1, 1, 1, 1);
  ASSERT_EQ(d.ErrorNumber, 0) << d.Text1.Text().toStdString();
  EXPECT_EQ(d.RecordCount, 230);
  EXPECT_EQ(d.TextMatrix(1, 2), QString::fromUtf8("สินค้า 1"));
  EXPECT_EQ(d.TextMatrix(1, 4), "01/01/2567");
  d.VScroll1.setValue(3);
  EXPECT_EQ(d.LastRecord(), 30);
  EXPECT_EQ(d.TextMatrix(30, 1), "230");
  EXPECT_EQ(d.TextMatrix(30, 3), "345.00");

  fake.onShowModal = [](Form& form) {
    auto& f = static_cast<FilterData&>(form);
    f.lstFields.setListIndex(3);
    f.lstOperator.setListIndex(int(f.lstOperator.Items().indexOf(">=")));
    f.txtValue.setText("10/08/2567");
    int16_t enter = key::Return, none = 0;
    f.txtValue_KeyDown(enter, none);
  };
  d.FilterTool();
  EXPECT_EQ(d.SelectText(), "SELECT itemid,itemname,price,docdate FROM items WHERE docdate >= #$2024-08-10#$ ORDER BY  itemid");
  ASSERT_EQ(d.ErrorNumber, 0) << d.Text1.Text().toStdString();
  EXPECT_EQ(d.RecordCount, 8);    // items 223 to 230: 10 to 17 August 2024
  EXPECT_EQ(d.FirstRecord(), 8);  // the page position is clamped: the page shows the last hit
  EXPECT_EQ(d.TextMatrix(1, 4), "17/08/2567");
}

namespace {
// Connections to the database other than the asker's own.
int otherConnections(const QString& conn, const QString& name) {
  db::Connection c;
  c.Open(conn);
  db::Recordset rs;
  rs.Open("SELECT count(*) FROM pg_stat_activity WHERE datname = '" + name + "' AND pid <> pg_backend_pid()", c);
  const int n = rs.Fields(0).Value().toInt();
  c.Close();
  return n;
}
}  // namespace

// A missing table, and a server that ends the query half-way: the message, ErrorNumber, the last
// good result kept, and no connection of a failed open left behind.
TEST(DataViewPostgres, FailuresLeaveNoConnectionOpen) {
  if (pgAdminConnection().isEmpty())
    GTEST_SKIP() << "TQ7_PG_CONN is not set: no PostgreSQL cluster was started for this run";
  FakePlatform fake;
  PgDatabase pg;
  {
    db::Connection c;
    c.Open(pg.conn);
    c.Execute("CREATE TABLE items (itemid integer, itemname text)");
    c.Execute("INSERT INTO items SELECT i, 'x' || i FROM generate_series(1, 10) i");
    c.Close();
  }
  ItemsView v;
  DataView& d = v.view;
  d.showData("c", "itemid", "itemid,itemname", "No,Name", "600,2000", "2,0", "items", pg.conn, 1, 1, 1, 1, 1);
  ASSERT_EQ(d.ErrorNumber, 0);
  EXPECT_EQ(otherConnections(pg.conn, pg.name), 1);  // the view keeps the connection of its result
  d.showData("c", "itemid", "itemid,itemname", "No,Name", "600,2000", "2,0", "nosuchtable", pg.conn, 1, 1, 1, 1, 1);
  EXPECT_NE(d.ErrorNumber, 0);
  EXPECT_TRUE(d.Text1.Text().contains("nosuchtable"));
  EXPECT_EQ(otherConnections(pg.conn, pg.name), 1);
  EXPECT_EQ(d.RecordCount, 10);

  // The server ends the view's query while it runs.
  std::thread killer([&] {
    // Polls until the view's query is running, then ends it.
    db::Connection c;
    c.Open(pg.conn);
    for (int tries = 0; tries < 100; ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(100));
      db::Recordset rs;
      rs.Open("SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity WHERE datname = '" + pg.name +
                  "' AND pid <> pg_backend_pid() AND query LIKE '%pg_sleep%'",
              c);
      if (rs.Fields(0).Value().toInt() > 0) break;
    }
    c.Close();
  });
  d.showData("c", "itemid", "itemid,itemname", "No,Name", "600,2000", "2,0",
             "items, (SELECT pg_sleep(5)) AS pause", pg.conn, 1, 1, 1, 1, 1);
  killer.join();
  EXPECT_NE(d.ErrorNumber, 0);
  EXPECT_TRUE(d.Text1.Visible());
  EXPECT_TRUE(d.Text1.Text().startsWith("Query : "));
  EXPECT_EQ(d.TextMatrix(1, 2), "x1");  // the last good page stands
  EXPECT_EQ(otherConnections(pg.conn, pg.name), 1);
}

TEST(DataViewPostgres, AServerThatIsDownEndsInTheMessage) {
  FakePlatform fake;
  ItemsView v;
  v.view.showData("c", "k", "k", "K", "600", "0", "items", "Provider=PostgreSQL;Host=127.0.0.1;Port=1;Database=x;"
                  "User ID=nobody;Password=none", 1, 1, 1, 1, 1);
  EXPECT_NE(v.view.ErrorNumber, 0);
  EXPECT_TRUE(v.view.Text1.Visible());
  EXPECT_TRUE(v.view.Text1.Text().startsWith("Query : \nSELECT k FROM items\nError:  "));
  EXPECT_EQ(v.view.GETRecordset(), nullptr);
}
