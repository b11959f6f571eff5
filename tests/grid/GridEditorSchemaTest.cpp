#include "companion/StandardHelper.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Counting : GridEditorEvents {
  int dataChanges = 0;
  void GridDataChange() override { ++dataChanges; }
};

struct Declared : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  Counting ev;
  void SetUp() override {
    g.setListener(&ev);
    g.SetFirst(6);
    g.addField3(1, "ItemID", "AUTONUMBER", 1, "No.", 0, {}, 0, {}, 0, 0, 0, 1, 0, 0, 1500);
    g.addField3(2, "Amount", "NUMBER", 0, QString::fromUtf8("จำนวนเงิน"), 2, ">=", 0.5, "<", 1e6, 12, 1, 0, 1, 0,
                1200, 7, 7, {}, 1234.5, {}, {}, "X", 2, 0, QString::fromUtf8("ยอด"), {});
    g.addField3(3, "Paid", "YESNO", 0, "Paid", 0, {}, 0, {}, 0, 0, 1, 2, 1, 0, 600);
    g.addField3(4, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 900, 4, 4,
                QString::fromUtf8("A;สินค้า,,C"), 1);
    g.addField3(5, "When", "DATE", 0, "When", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 0);
    g.addField3(6, "Note", "TEXT", 0, "Note", 0, {}, 0, {}, 0, 40, 1, 1, 1, 0, 2000, 9, 9, {}, 0,
                QString::fromUtf8("ไม่มี"));
  }
};

}  // namespace

TEST_F(Declared, AttributeRowsHoldTheDeclarationAsText) {
  EXPECT_EQ(g.TextMatrix(-990, 2), "Amount");
  EXPECT_EQ(g.TextMatrix(-988, 2), "NUMBER");
  EXPECT_EQ(g.TextMatrix(-987, 2), "12");
  EXPECT_EQ(g.TextMatrix(-986, 2), "1");
  EXPECT_EQ(g.TextMatrix(-982, 2), "0");
  EXPECT_EQ(g.TextMatrix(-981, 2), "2");
  EXPECT_EQ(g.TextMatrix(-980, 2), "1,234.50");
  EXPECT_EQ(g.TextMatrix(-976, 2), ">=");
  EXPECT_EQ(g.TextMatrix(-975, 2), "0.5");
  EXPECT_EQ(g.TextMatrix(-973, 2), "1000000");
  EXPECT_EQ(g.TextMatrix(-998, 2), QString::fromUtf8("ยอด"));
  EXPECT_EQ(g.TextMatrix(g.GetRowCaption(), 2), QString::fromUtf8("จำนวนเงิน"));
  EXPECT_EQ(g.GETValue(-980, 2), 1234.5);  // attribute rows read as numbers
  // Maximum lengths by type.
  EXPECT_EQ(g.TextMatrix(-987, 3), "2");
  EXPECT_EQ(g.TextMatrix(-987, 4), "2");
  EXPECT_EQ(g.TextMatrix(-987, 5), "10");
  EXPECT_EQ(g.TextMatrix(-987, 6), "40");
  // The labels alone, an empty entry as one blank.
  EXPECT_EQ(g.TextMatrix(-978, 4), "A, ,C");
  EXPECT_EQ(g.TextMatrix(-972, 4), QString::fromUtf8("A;สินค้า,,C"));
  // Alignment stored from the surface: right/centre for 7, left/top for 0 rows of column 1.
  EXPECT_EQ(g.TextMatrix(-968, 2), "1");
  EXPECT_EQ(g.TextMatrix(-967, 2), "2");
  EXPECT_EQ(g.TextMatrix(-968, 4), "2");
  // A first-level group caption shows its row for the whole grid; the second level stays hidden.
  EXPECT_GT(g.mfgData.RowHeight(-998), 0);
  EXPECT_EQ(g.mfgData.RowHeight(-999), 0);
  // Undeclared attribute rows keep the defaults of SetFirst.
  EXPECT_EQ(g.TextMatrix(-977, 1), "2");
  EXPECT_EQ(g.TextMatrix(-981, 1), "2");
  EXPECT_EQ(g.TextMatrix(-986, 1), "");
  EXPECT_EQ(g.DeclaredWidths(), "1,1500;2,1200;3,600;4,900;5,0;6,2000");
  EXPECT_EQ(g.PrimaryKeyColumn(), 1);
  EXPECT_EQ(g.PrimaryKeyName(), "ItemID");
  EXPECT_EQ(g.HighestDeclaredColumn(), 6);
}

TEST_F(Declared, WidthsHideColumnsAndRequiredCaptionsTurnBold) {
  EXPECT_TRUE(g.IsColHidden(1));  // a running number never shows, whatever its width
  EXPECT_EQ(g.mfgData.ColWidth(1), 0);
  EXPECT_TRUE(g.IsColHidden(5));  // width 0
  EXPECT_FALSE(g.IsColHidden(2));
  auto bold = [&](int32_t col) {
    g.mfgData.setRow(-997);
    g.mfgData.setCol(col);
    return g.mfgData.FontBold();
  };
  EXPECT_TRUE(bold(2));   // CanBlank 0
  EXPECT_TRUE(bold(3));   // CanBlank 2
  EXPECT_FALSE(bold(4));  // CanBlank 1
  EXPECT_FALSE(bold(1));  // AUTONUMBER skips the caption's bold with the rest
  EXPECT_EQ(g.SetColumnWidth(6, 0), 0);
  EXPECT_TRUE(g.IsColHidden(6));
  EXPECT_EQ(g.SetColumnWidth(6, 700), 700);
  EXPECT_FALSE(g.IsColHidden(6));
  // The surface stays hidden after declaring.
  EXPECT_FALSE(g.mfgData.Visible());
}

TEST_F(Declared, NewRowDefaultsFollowTheTypes) {
  // FillINI ran for the last row at SetFirst, before the columns existed; run it again.
  g.FillINI();
  EXPECT_EQ(g.GETValue(1, 1), 1);  // the running number
  EXPECT_EQ(g.GETValue(1, 2), 1234.5);
  EXPECT_EQ(g.GETText(1, 2), "1,234.50");
  EXPECT_EQ(g.GETText(1, 3), "N");
  EXPECT_EQ(g.GETValue(1, 4), 1);
  EXPECT_EQ(g.GETText(1, 4), " ");
  EXPECT_EQ(g.GETText(1, 6), QString::fromUtf8("ไม่มี"));
  EXPECT_EQ(g.GETText(1, 5), "");
  g.mfgData.setRow(1);
  g.mfgData.setCol(2);
  EXPECT_EQ(g.mfgData.TypeHAlign(), 1);
}

TEST_F(Declared, SetValueRendersByTypeAndRaisesGridDataChangeOnce) {
  ev.dataChanges = 0;
  EXPECT_EQ(g.SetValue(1, 2, 1.005), 1);
  EXPECT_EQ(g.GETValue(1, 2), 1.01);
  EXPECT_EQ(g.GETText(1, 2), "1.01");
  EXPECT_EQ(ev.dataChanges, 1);
  g.SetValue(1, 2, 0);
  EXPECT_EQ(g.GETText(1, 2), "");
  g.setShowZeroValueText(true);
  g.SetValue(1, 2, 0);
  EXPECT_EQ(g.GETText(1, 2), "0.00");
  g.SetValue(1, 3, 1);
  EXPECT_EQ(g.GETText(1, 3), "Y");
  g.SetValue(1, 3, 2);
  EXPECT_EQ(g.GETText(1, 3), "N");
  g.SetValue(1, 4, -2);
  EXPECT_EQ(g.GETText(1, 4), "C");
  g.SetValue(1, 4, 9);
  EXPECT_EQ(g.GETText(1, 4), "C");  // beyond the list: the last label
  // A TEXT column shows a written value as a number.
  g.SetValue(1, 6, 3);
  EXPECT_EQ(g.GETText(1, 6), "3");  // with its own 0 decimals
  // A date shows its text; a date whose text holds one of the fixed years shows empty, value kept.
  const double d = StandardHelper().TextToDate(QStringLiteral("15/03/2567"));
  g.SetValue(1, 5, d);
  EXPECT_EQ(g.GETText(1, 5), "15/03/2567");
  const double y1899 = StandardHelper().TextToDate(QStringLiteral("01/01/2442"));
  g.SetValue(1, 5, y1899);
  EXPECT_EQ(g.GETText(1, 5), "");
  EXPECT_EQ(g.GETValue(1, 5), y1899);
  // Out of range: nothing, no event.
  ev.dataChanges = 0;
  EXPECT_EQ(g.SetValue(2, 2, 5), 0);
  EXPECT_EQ(g.SetValue(1, 99, 5), 0);
  EXPECT_EQ(ev.dataChanges, 0);
  EXPECT_EQ(g.GETText(99, 1), "");
}

TEST_F(Declared, SetTextReachesHeaderAndAttributeRowsButNotBeyondTheSheet) {
  EXPECT_EQ(g.SetText(1, 0, "x"), 1);
  EXPECT_EQ(g.TextMatrix(1, 0), "x");
  EXPECT_EQ(g.SetText(1, 999, "x"), 0);
  EXPECT_EQ(g.SetText(-997, 1, "Name"), 1);
  EXPECT_EQ(g.TextMatrix(-997, 1), "Name");
  EXPECT_EQ(g.GETValue(1, 2), g.Matrix1.GetValue(1, 2));  // text alone: the value stays
}

TEST(GridEditorSchema, OddDeclarationsAreTakenAsTheyCome) {
  FakePlatform fake;
  GridEditor g;
  g.SetFirst(200);
  EXPECT_EQ(g.Cols(), 200);
  EXPECT_EQ(g.Rows(), 1);
  g.addField3(250, "Far", "TEXT", 0, "Far");
  EXPECT_EQ(g.Cols(), 250);
  // Two key fields: the later one wins, both keep their mark.
  g.addField3(1, "A", "TEXT", 1);
  g.addField3(2, "B", "TEXT", 1);
  EXPECT_EQ(g.PrimaryKeyColumn(), 2);
  EXPECT_EQ(g.TextMatrix(-989, 1), "1");
  // A type in lower case is an unknown word: stored, and its length is MaxLength.
  g.addField3(3, "C", "date", 0, "C", 0, {}, 0, {}, 0, 33);
  EXPECT_EQ(g.TextMatrix(-988, 3), "date");
  EXPECT_EQ(g.TextMatrix(-987, 3), "33");
  // Column 0 writes into the row header's column.
  g.addField3(0, "Zero", "TEXT", 0, "Zero");
  EXPECT_EQ(g.TextMatrix(-990, 0), "Zero");
  // An empty list writes no labels; DisplayField is kept nowhere.
  g.addField3(4, "D", "LABELLIST", 0, "D", 0, {}, 0, {}, 0, 0, 0, 1, 1, 0, 500, 0, 0, {}, 0, {}, {}, "X");
  EXPECT_EQ(g.TextMatrix(-978, 4), "");
  // The caption takes the title's alignment, the column's cells the row alignment.
  g.addField3(6, "E", "TEXT", 0, "E", 0, {}, 0, {}, 0, 0, 0, 1, 1, 0, 900, g.flexAlignCenterCenter(),
              g.flexAlignRightBottom());
  g.mfgData.setCol(6);
  g.mfgData.setRow(-997);
  EXPECT_EQ(g.mfgData.TypeHAlign(), 2);
  EXPECT_EQ(g.mfgData.TypeVAlign(), 2);
  g.mfgData.setRow(1);
  EXPECT_EQ(g.mfgData.TypeHAlign(), 1);
  EXPECT_EQ(g.mfgData.TypeVAlign(), 1);
  EXPECT_EQ(g.TextMatrix(-968, 6), "1");
  EXPECT_EQ(g.TextMatrix(-967, 6), "1");
  // The width list keeps the asked width of a running number.
  g.addField3(5, "N", "AUTONUMBER", 0, "N", 0, {}, 0, {}, 0, 0, 0, 1, 0, 0, 1500);
  EXPECT_TRUE(g.DeclaredWidths().endsWith("5,1500"));
  EXPECT_EQ(g.TextMatrix(-986, 5), "");
}

TEST(GridEditorSchema, WithoutSetFirstNothingFails) {
  FakePlatform fake;
  GridEditor g;
  EXPECT_EQ(g.SetValue(1, 1, 5), 0);
  EXPECT_EQ(g.GETValue(3, 3), 0);
  EXPECT_EQ(g.GETText(1, 1), "");
  g.FillINI();
  g.addField3(2, "X", "NUMBER", 0, "X");
  EXPECT_EQ(g.Cols(), 500);  // the sheet's own width stays until SetFirst sizes it
}
