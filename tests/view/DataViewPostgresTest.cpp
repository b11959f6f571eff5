// The view on a real PostgreSQL server: open, page, filter with a date that reaches the server in
// quotes; and a server that is not there.
#include "frame/FakePlatform.h"
#include "view/FilterData.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>

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
