// The query open and the fill: page size and its floor, the scroll bar and the page moves, the
// text of each type code, the empty result, and the failures of the open.
#include "companion/StandardHelper.h"
#include "companion/db/Recordset.h"
#include "frame/FakePlatform.h"
#include "view/FilterData.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::test;

TEST(DataViewFill, PagesThroughTheResultWithTheScrollBar) {
  FakePlatform fake;
  ItemsFile db(250);
  ItemsView v;
  v.view.PageSize = 30;
  v.show(db.conn());
  DataView& d = v.view;
  EXPECT_EQ(d.PageSize, 100);  // raised to the floor, and the application sees it
  EXPECT_EQ(d.RecordCount, 250);
  EXPECT_EQ(v.events.log.first(), "RecordCountChange 250");
  EXPECT_EQ(v.events.log.last(), "ActionReady");
  EXPECT_TRUE(d.VScroll1.Visible());
  EXPECT_EQ(d.VScroll1.Max(), 3);
  EXPECT_EQ(d.LastRecord(), 100);
  EXPECT_EQ(v.events.fills, 100);
  EXPECT_EQ(d.TextMatrix(1, 2), "Item 1");
  EXPECT_EQ(d.TextMatrix(100, -1000), "100");
  EXPECT_FALSE(d.Text1.Visible());
  EXPECT_EQ(d.mfgData.ColWidth(0), 405);
  EXPECT_EQ(d.TextMatrix(0, 6), "Kind");  // the heading is the label up to its first ';'

  v.events.fills = 0;
  d.VScroll1.setValue(3);
  EXPECT_EQ(d.FirstRecord(), 201);
  EXPECT_EQ(d.LastRecord(), 50);
  EXPECT_EQ(v.events.fills, 50);
  EXPECT_EQ(d.TextMatrix(1, -1000), "201");
  EXPECT_EQ(d.TextMatrix(50, 2), "Item 250");
  EXPECT_EQ(d.TextMatrix(50, 3), "375.00");

  // A filter with 5 hits after paging to row 201: the position is clamped to 5, one row shows.
  fake.onShowModal = [](Form& f) {
    auto& fd = static_cast<FilterData&>(f);
    fd.lstFields.setListIndex(2);
    fd.lstOperator.setListIndex(int(fd.lstOperator.Items().indexOf("<=")));
    fd.txtValue.setText("7.5");
    int16_t enter = key::Return, none = 0;
    fd.txtValue_KeyDown(enter, none);
  };
  d.FilterTool();
  EXPECT_EQ(d.SelectText(), "SELECT " + kFields + " FROM Items WHERE Price <= 7.5");
  EXPECT_EQ(d.RecordCount, 5);
  EXPECT_EQ(d.FirstRecord(), 5);
  EXPECT_EQ(d.LastRecord(), 1);
  EXPECT_EQ(d.TextMatrix(1, 2), "Item 5");
  EXPECT_EQ(d.VScroll1.Value(), 3);  // the old page number stands until the user scrolls
  EXPECT_FALSE(d.VScroll1.Visible());
}

TEST(DataViewFill, HundredRowsShowNoScrollBarAndOneMoreMakesASecondPage) {
  FakePlatform fake;
  ItemsFile db(101);
  ItemsView v;
  v.show(db.conn(), "Items WHERE ItemID <= 100");
  EXPECT_FALSE(v.view.VScroll1.Visible());
  EXPECT_EQ(v.view.LastRecord(), 100);
  v.show(db.conn());
  EXPECT_TRUE(v.view.VScroll1.Visible());
  EXPECT_EQ(v.view.VScroll1.Max(), 2);
  v.view.VScroll1.setValue(2);
  EXPECT_EQ(v.view.LastRecord(), 1);
  EXPECT_EQ(v.view.TextMatrix(1, 1), "101");
  // A page move leaves the surface narrower by the scroll bar, within the control.
  EXPECT_EQ(v.view.mfgData.Width() + v.view.VScroll1.Width(), v.view.Width());
  EXPECT_EQ(v.view.VScroll1.Left(), v.view.mfgData.Width());
}

TEST(DataViewFill, CellTextByTypeCode) {
  FakePlatform fake;
  SqliteFile db(
      "CREATE TABLE T(k INTEGER, n REAL, d TEXT, y INTEGER, s INTEGER, t TEXT, p REAL);"
      "INSERT INTO T VALUES(1, -1234.5, '2024-03-15 14:30:00', 2024, 2, 'plain', 45366.25);"
      "INSERT INTO T VALUES(2, 0, '8888-08-08', NULL, 7, NULL, 0);"
      "INSERT INTO T VALUES(3, 2.123456789, '3333-01-01', NULL, 1, NULL, NULL);");
  DataView d;
  d.showData("c", "k", "k,n,n,n,n,n,n,n,n,n,d,d,d,d,s,s,s,t,p,y,k AS kk",
             "K,A,B,C,D,E,F,G,H,I,J,L,M,N,O,P,Q;x;y,R,S,Y,Z",
             "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1",
             "2,1,2,5,7,8,9,14,15,16,6,10,11,17,3,4,13,99,1,12,0", "T ORDER BY k", "Data Source=" + db.path, 0, 0, 0, 0, 0);
  ASSERT_EQ(d.ErrorNumber, 0);
  EXPECT_EQ(d.TextMatrix(1, 2), "-1,234.50");
  EXPECT_EQ(d.TextMatrix(1, 3), "-1,235");  // halves away from zero
  EXPECT_EQ(d.TextMatrix(1, 4), "-1,234.5000");
  EXPECT_EQ(d.TextMatrix(1, 5), "1,235");
  EXPECT_EQ(d.TextMatrix(1, 6), "1,234.50");
  EXPECT_EQ(d.TextMatrix(1, 7), "1,234.5000");
  EXPECT_EQ(d.TextMatrix(1, 8), "-1,234.500000");
  EXPECT_EQ(d.TextMatrix(1, 9), "1,234.500000");
  EXPECT_EQ(d.TextMatrix(1, 10), "1,234.500000000");
  EXPECT_EQ(d.TextMatrix(1, 11), "15/03/2567");
  EXPECT_EQ(d.TextMatrix(1, 12), "15/03/2567 14:30");
  EXPECT_EQ(d.TextMatrix(1, 13), "14:30");
  EXPECT_EQ(d.TextMatrix(1, 14), "03/2567");
  EXPECT_EQ(d.TextMatrix(1, 15), "False");
  EXPECT_EQ(d.TextMatrix(1, 16), "Reject");
  EXPECT_EQ(d.TextMatrix(1, 17), "2");  // "Q;x;y" names values 0 and 1: 2 shows as itself
  EXPECT_EQ(d.TextMatrix(3, 17), "y");
  EXPECT_EQ(d.TextMatrix(1, 18), "plain");
  EXPECT_EQ(d.TextMatrix(1, 19), "45,366.25");
  // A year column whose entry is a field name finds no field: the cell stays empty.
  EXPECT_EQ(d.TextMatrix(1, 20), "");
  // An entry the result does not know by its text (an alias) leaves its cells empty, the others filled.
  EXPECT_EQ(d.TextMatrix(1, 21), "");
  // The empty-date years are blanked, whatever the type.
  EXPECT_EQ(d.TextMatrix(2, 11), "");
  EXPECT_EQ(d.TextMatrix(2, 12), "");
  EXPECT_EQ(d.TextMatrix(3, 13), "");
  EXPECT_EQ(d.TextMatrix(2, 14), "");
  EXPECT_EQ(d.TextMatrix(2, 16), "No");
  EXPECT_EQ(d.TextMatrix(3, 16), "Yes");
  EXPECT_EQ(d.TextMatrix(2, 17), "7");  // beyond the list: the number itself
  EXPECT_EQ(d.TextMatrix(2, 18), "");   // NULL
  EXPECT_EQ(d.TextMatrix(2, 19), "0.00");
  EXPECT_EQ(d.TextMatrix(3, 19), "");
  EXPECT_EQ(d.mfgData.ColWidth(1), 1);
  // Numbers right, the rest left.
  d.mfgData.setRow(1);
  d.mfgData.setCol(2);
  EXPECT_EQ(d.mfgData.TypeHAlign(), 1);
  d.mfgData.setCol(11);
  EXPECT_EQ(d.mfgData.TypeHAlign(), 0);

  // With a calendar offset of 0 it is the year 8888 itself that is blanked, and 1899.
  StandardHelper::setYearOffset(0);
  d.DataRefresh();
  StandardHelper::setYearOffset(543);
  EXPECT_EQ(d.TextMatrix(2, 11), "");
  EXPECT_EQ(d.TextMatrix(1, 11), "15/03/2024");
}

TEST(DataViewFill, EmptyResultLeavesOneEmptyRowAndNoEnterButton) {
  FakePlatform fake;
  ItemsFile db(10);
  ItemsView v;
  v.show(db.conn(), "Items WHERE ItemID > 99");
  DataView& d = v.view;
  EXPECT_EQ(d.ErrorNumber, 0);
  EXPECT_EQ(d.RecordCount, 0);
  EXPECT_EQ(d.LastRecord(), 1);
  EXPECT_EQ(d.TextMatrix(1, 2), "");
  EXPECT_FALSE(d.button("Enter").Enabled);
  EXPECT_FALSE(d.button("Enter").Visible);
  EXPECT_TRUE(d.button("Filter").Visible);
  // The Enter key still runs the select command; its event follows only when asked for.
  int16_t enter = key::Return, none = 0;
  d.mfgData.inputKeyDown(enter, none);
  EXPECT_EQ(v.events.count("Select"), 0);
  d.EnbleNoneSelectEvent = true;
  d.mfgData.inputKeyDown(enter, none);
  EXPECT_EQ(v.events.log.last(), "Select 0 []");
}

TEST(DataViewFill, FailedOpensTellTheStatementAndKeepTheLastGoodResult) {
  FakePlatform fake;
  ItemsFile db(120);
  ItemsView v;
  DataView& d = v.view;
  // Before any query a refresh raises ActionReady and does nothing else.
  d.DataRefresh();
  EXPECT_EQ(v.events.log, QStringList{"ActionReady"});
  EXPECT_EQ(d.LastRecord(), 0);

  v.show(db.conn());
  ASSERT_EQ(d.RecordCount, 120);
  v.show(db.conn(), "NoSuchTable");
  EXPECT_NE(d.ErrorNumber, 0);
  EXPECT_TRUE(d.Text1.Visible());
  EXPECT_TRUE(d.Text1.Text().startsWith("Query : \nSELECT " + kFields + " FROM NoSuchTable\nError:  "));
  EXPECT_TRUE(d.Text1.Text().contains("NoSuchTable"));
  EXPECT_TRUE(d.QueryOpened());
  // The last good result is still there to refresh from.
  d.setTextMatrix(1, 2, "scribbled");
  d.DataRefresh();
  EXPECT_EQ(d.TextMatrix(1, 2), "Item 1");
  EXPECT_EQ(d.GETRecordset()->RecordCount(), 120);

  // A database that cannot be opened, and a statement that does not parse.
  v.show("Data Source=/nonexistent/folder/x.db");
  EXPECT_NE(d.ErrorNumber, 0);
  v.show(db.conn(), "Items WHERE");
  EXPECT_NE(d.ErrorNumber, 0);
  v.show(db.conn());
  EXPECT_EQ(d.ErrorNumber, 0);
  EXPECT_FALSE(d.Text1.Visible());
  EXPECT_EQ(fake.pointer, MousePointer::Default);
}

TEST(DataViewFill, LayoutFollowsTheCommandSwitchesAndTheControlSize) {
  FakePlatform fake;
  ItemsFile db(5);
  ItemsView v;
  DataView& d = v.view;
  d.showData("c", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 0, 1, 0, 1, 0);
  d.Resize();
  EXPECT_FALSE(d.button("Add").Visible);
  EXPECT_TRUE(d.button("Edit").Visible);
  EXPECT_FALSE(d.button("Print").Visible);  // the filter switch does not show Print
  EXPECT_EQ(d.mfgData.Height(), std::abs(d.Height() - (d.TbrButton.Height() + 30)));
  EXPECT_EQ(d.cmdOption.Width(), 405);
  d.setNumberWidth(200);
  d.Resize();
  EXPECT_EQ(d.cmdOption.Width(), 405);  // below 300 it is raised to 405
  EXPECT_EQ(d.NumberWidth(), 200);
  d.setNumberWidth(-5);
  EXPECT_EQ(d.NumberWidth(), 200);
  d.setSize(600, 3000);
  EXPECT_EQ(d.Width(), 0);
  // The please-wait screen.
  d.SpeedProcess2(true, {});
  EXPECT_EQ(d.Text1.Text(), "Loading Data Please wait...");
  EXPECT_FALSE(d.mfgData.Visible());
  d.SpeedProcess(false);
  EXPECT_TRUE(d.mfgData.Visible());
  EXPECT_FALSE(d.Text1.Visible());
}
