// The view's definition and its statements: the SELECT text in each dialect, the condition put
// into a table expression, the list calls and their result text.
#include "frame/FakePlatform.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::test;

TEST(DataViewQuery, SelectTextInEachDialect) {
  EXPECT_EQ(viewsql::selectText("a,b", "t", 0, "Provider=MySQL;Server=x"), "SELECT a,b FROM t");
  EXPECT_EQ(viewsql::selectText("a,b", "t", 50, "provider=mysql;server=x"), "SELECT a,b FROM t LIMIT 50 ");
  EXPECT_EQ(viewsql::selectText("a,b", "t WHERE x=1", 50, "Driver={MySql ODBC};"),
            "SELECT a,b FROM t WHERE x=1 LIMIT 50 ");
  EXPECT_EQ(viewsql::selectText("a,b", "t", 50, "Data Source=x.db"), "SELECT  TOP 50 a,b FROM t");
  EXPECT_EQ(viewsql::selectText("a,b", "t", -3, "Data Source=x.db"), "SELECT a,b FROM t");
}

TEST(DataViewQuery, ConditionGoesBeforeTheOldWhereOrOrderBy) {
  EXPECT_EQ(viewsql::injectCondition("t WHERE x=1 ORDER BY y", "a = 1"), "t WHERE a = 1 AND x=1 ORDER BY y");
  EXPECT_EQ(viewsql::injectCondition("t ORDER BY y", "a = 1"), "t WHERE a = 1 ORDER BY  y");
  EXPECT_EQ(viewsql::injectCondition("t", "a = 1"), "t WHERE a = 1");
  // The tests are made on the upper-cased text; the pieces come from the text itself.
  EXPECT_EQ(viewsql::injectCondition("t where x=1", "a = 1"), "t WHERE a = 1 AND x=1");
  // The last WHERE counts: that of a subquery in a join stays in front.
  EXPECT_EQ(viewsql::injectCondition("t JOIN (SELECT k FROM u WHERE z=2) q ON q.k=t.k WHERE x=1", "a = 1"),
            "t JOIN (SELECT k FROM u WHERE z=2) q ON q.k=t.k WHERE a = 1 AND x=1");
}

TEST(DataViewQuery, ShowDataStoresTheDefinitionAndCapsWithTopOnSqlite) {
  FakePlatform fake;
  ItemsFile db(250);
  ItemsView v;
  v.view.MaxRecord = 50;
  v.view.showData("cap", "ItemID", kFields, kLabels, kWidths, kTypes, "Items ORDER BY ItemID DESC", db.conn(), 1, 2, 3,
                  4, 5, 7, 0, 0, 10.5f, true, true);
  EXPECT_EQ(v.view.SelectText(), "SELECT  TOP 50 " + kFields + " FROM Items ORDER BY ItemID DESC");
  EXPECT_EQ(v.view.ErrorNumber, 0);
  EXPECT_EQ(v.view.RecordCount, 50);
  EXPECT_EQ(v.view.TextMatrix(1, 1), "250");
  EXPECT_EQ(v.view.iAddCommandID, 1);
  EXPECT_EQ(v.view.iEditCommandID, 2);
  EXPECT_EQ(v.view.iDeleteCommandID, 3);
  EXPECT_EQ(v.view.iFilterCommandID, 4);
  EXPECT_EQ(v.view.iPrintCommandID, 5);
  EXPECT_TRUE(v.view.iMultiRowSelect);
  EXPECT_EQ(v.view.mfgData.Font().Size, 10.5);
  EXPECT_TRUE(v.view.mfgData.Font().Bold);
  EXPECT_EQ(v.view.GETColByFieldName("itemname"), 2);
  EXPECT_EQ(v.view.GETColByFieldName("nothing"), 0);
  EXPECT_EQ(v.view.GETGridTYpe(), 1);
  EXPECT_EQ(v.view.Record2Row(-7), 7);
  EXPECT_EQ(v.view.Cols(), 7);
}

// The mode in the tooltip reads the language flag the other way round from the help box.
TEST(DataViewQuery, TooltipModePrefixTestsTheLanguageInReverse) {
  FakePlatform fake;
  ItemsFile db(3);
  ItemsView v;
  v.show(db.conn());
  EXPECT_EQ(v.view.mfgData.ToolTipText(), QString::fromUtf8("[Single Select Mode] - กดปุ่ม F1 เพื่อดูวิธีใช้ทั้งหมด"));
  v.show(db.conn(), "Items", true);
  EXPECT_EQ(v.view.mfgData.ToolTipText(), QString::fromUtf8("[Multi Select mode] - กดปุ่ม F1 เพื่อดูวิธีใช้ทั้งหมด"));
  v.view.setLanguageID(1);
  v.show(db.conn(), "Items", true);
  EXPECT_TRUE(v.view.mfgData.ToolTipText().startsWith(QString::fromUtf8("[โหมดเลือกแบบหลายรายการ] - ")));
  v.show(db.conn());
  EXPECT_TRUE(v.view.mfgData.ToolTipText().startsWith(QString::fromUtf8("[โหมดเลือกรายการเดียว] - ")));
  // While the help box of an English view is English.
  v.view.ShowHelp();
  EXPECT_TRUE(fake.calls.last().endsWith("| Help for more usage"));
  EXPECT_TRUE(fake.calls.last().contains(QString::fromUtf8("กด F2   for Search Record")));
}

TEST(DataViewQuery, ListCallsSizeTheSurfaceAndReturnTheCommandWithTheKeys) {
  FakePlatform fake;
  ItemsFile db(30);
  ItemsView v;
  v.view.setSize(9000, 6000);
  // SelectDataList8 passes no width on: the surface keeps its width whatever FormWidth says.
  const double before = v.view.mfgData.Width();
  v.view.SelectDataList8("cap", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 1, 1, 1, 1, 1, 5000,
                         4000, 0, false, false, 0, 0, 0, 0, false, 0, 0, {}, {}, {}, {}, {}, 30, 0);
  EXPECT_EQ(v.events.widthAtCount, before);
  EXPECT_EQ(v.view.PageSize, 100);  // the floor
  // SelectDataList4 with no widths and no FormWidth passes the control's own width on.
  v.view.mfgData.setWidth(100);
  v.view.SelectDataList4("cap", "ItemID", kFields, kLabels, ",,,,,,", kTypes, "Items", db.conn(), 1, 1, 1, 1, 1);
  EXPECT_EQ(v.events.widthAtCount, 9000);
  // With widths, their sum plus 400.
  v.view.SelectDataList4("cap", "ItemID", kFields, kLabels, "1000,-2000,0,0,0,0,0", kTypes, "Items", db.conn(), 1, 1,
                         1, 1, 1);
  EXPECT_EQ(v.events.widthAtCount, 3400);
  // The layout of the open gives the surface the control's width again.
  EXPECT_EQ(v.view.mfgData.Width(), 9000);
  EXPECT_TRUE(v.view.mfgData.Visible());
  EXPECT_TRUE(v.view.TbrButton.Enabled());
  EXPECT_GT(fake.processEventsCount, 0);

  // An edit on key 17, then a list call: the command number comes first.
  v.view.mfgData.SetActiveCell(1, 17);
  int16_t f4 = key::F4, none = 0;
  v.view.mfgData.inputKeyDown(f4, none);
  EXPECT_EQ(v.events.log.last(), "Edit -2 [17]");
  const QString r = v.view.SelectDataList7("cap", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 1,
                                           1, 1, 1, 1);
  EXPECT_EQ(r, "-2#,17");
  v.view.iActionCommandID = 0;
  EXPECT_EQ(v.view.SelectDataList7("cap", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 1, 1, 1, 1,
                                   1),
            "17");
  // DisplayMode 2 and 3 hide the bar.
  v.view.SelectDataList4("cap", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 1, 1, 1, 1, 1, 0, 0, 0,
                         false, false, 0, 0, 3);
  EXPECT_FALSE(v.view.TbrButton.Visible());
}

TEST(DataViewQuery, AddExtraSearchKeepsTheAlternativeDefinition) {
  DataView view;
  EXPECT_EQ(view.AddExtraSearch("c", "k", "f", "l", "w", "t", "tb"), "");
  EXPECT_EQ(view.xCaption, "c");
  EXPECT_EQ(view.xPrimaryName, "k");
  EXPECT_EQ(view.xFieldList, "f");
  EXPECT_EQ(view.xFieldLabelList, "l");
  EXPECT_EQ(view.xFieldWidthList, "w");
  EXPECT_EQ(view.xFieldTypeList, "t");
  EXPECT_EQ(view.xTableName, "tb");
}
