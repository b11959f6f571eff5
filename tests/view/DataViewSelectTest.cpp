// Marks, the selection Matrix, the result text, and the command bar with its keys.
#include "companion/db/Recordset.h"
#include "frame/FakePlatform.h"
#include "view/FilterData.h"
#include "view/ViewTestSupport.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::test;

namespace {
void press(DataView& d, int16_t code, int16_t shiftState = 0) {
  d.mfgData.inputKeyDown(code, shiftState);
  d.mfgData.inputKeyUp(code, shiftState);
}
void type(DataView& d, char16_t c) { d.mfgData.inputKeyPress(int16_t(c)); }
Colour backAt(DataView& d, int32_t col, int32_t row) {
  d.mfgData.setCol(col);
  d.mfgData.setRow(row);
  return d.mfgData.BackColor();
}
}  // namespace

TEST(DataViewSelect, MarksToggleRowsTheirColoursAndTheMatrix) {
  FakePlatform fake;
  ItemsFile db(150);
  ItemsView v;
  DataView& d = v.view;
  v.show(db.conn(), "Items", true);
  d.mfgData.SetActiveCell(2, 2);
  d.cmdMark_Click(5);
  EXPECT_TRUE(d.isMarked(5));
  EXPECT_FALSE(d.isMarked(2));
  EXPECT_EQ(d.mfgData.SelBlockRow(), 5);  // the surface's block moves to that row
  EXPECT_EQ(backAt(d, 3, 5), DataView::kMarkBack);
  EXPECT_EQ(d.GETGridValueObject().GetValue(5, 3), 7.5);
  EXPECT_EQ(d.GETGridValueObject().GetValue(5, 1), 5);
  EXPECT_EQ(v.events.count("SelectionChange"), 1);
  d.cmdMark_Click(5);
  EXPECT_FALSE(d.isMarked(5));
  EXPECT_EQ(backAt(d, 3, 5), syscolor::Window);
  EXPECT_EQ(d.GETGridValueObject().GetValue(5, 3), 0);

  // Space and double click mark the cursor's row; a block marks each of its rows.
  d.mfgData.SetActiveCell(1, 3);
  type(d, u' ');
  EXPECT_TRUE(d.isMarked(3));
  d.mfgData.SetSelection(1, 7, 1, 9);
  d.cmdMark_Click();
  EXPECT_TRUE(d.isMarked(7) && d.isMarked(8) && d.isMarked(9));
  d.GetSelect();
  EXPECT_EQ(d.TextResult, "3#,7#,8#,9");
  // A page move loses the marks and resets the matrix.
  d.VScroll1.setValue(2);
  d.VScroll1.setValue(1);
  EXPECT_FALSE(d.isMarked(3));
  EXPECT_EQ(d.GETGridValueObject().GetValue(3, 1), 0);
  d.GetSelect();
  EXPECT_EQ(d.TextResult, "");
  // No row marked: the select command raises nothing unless asked to.
  press(d, key::Return);
  EXPECT_EQ(v.events.count("Select "), 0);

  // Ctrl+A and Ctrl+Z on the page; with SelectStatus false nothing happens.
  d.SelectStatus = false;
  press(d, 'A', shift::Ctrl);
  EXPECT_FALSE(d.isMarked(1));
  d.SelectStatus = true;
  press(d, 'A', shift::Ctrl | shift::Shift);  // the Control state alone
  EXPECT_FALSE(d.isMarked(1));
  press(d, 'A', shift::Ctrl);
  EXPECT_TRUE(d.isMarked(1) && d.isMarked(100));
  EXPECT_EQ(v.events.log.last(), "SelectAll");
  EXPECT_TRUE(d.mfgData.Visible());
  EXPECT_TRUE(d.TbrButton.Visible());
  press(d, key::Return);
  EXPECT_TRUE(v.events.log.last().startsWith("Select 0 [1#,2#,3#,"));
  press(d, 'Z', shift::Ctrl);
  EXPECT_FALSE(d.isMarked(50));
  EXPECT_EQ(v.events.log.last(), "DeSelectAll");
}

TEST(DataViewSelect, SingleModeSelectsTheCursorRowAndIgnoresMarks) {
  FakePlatform fake;
  ItemsFile db(20);
  ItemsView v;
  DataView& d = v.view;
  v.show(db.conn());
  d.mfgData.SetActiveCell(2, 4);
  type(d, u' ');
  EXPECT_FALSE(d.isMarked(4));
  EXPECT_EQ(v.events.count("SelectionChange"), 0);
  d.mfgData.inputDblClick(1, 1);  // outside the cells: nothing
  press(d, key::Return);
  EXPECT_EQ(v.events.log.last(), "Select 0 [4]");
  // A key list of two fields, of which one is not in the view, gives a key of one part.
  d.iPrimaryName = "ItemName;Missing";
  d.GetSelect();
  EXPECT_EQ(d.TextResult, "Item 4");
  d.iPrimaryName = "ItemID;ItemName";
  d.GetSelect();
  EXPECT_EQ(d.TextResult, "4;Item 4");
  // The key at the cursor comes from the data.
  d.iPrimaryName = "Price";
  EXPECT_EQ(d.GetSelectATCursor(), "6");
}

TEST(DataViewSelect, CommandsSetTheirNumberBeforeTheirEvent) {
  FakePlatform fake;
  ItemsFile db(20);
  ItemsView v;
  DataView& d = v.view;
  d.showData("c", "ItemID", kFields, kLabels, kWidths, kTypes, "Items", db.conn(), 0, 1, 1, 0, 1);
  d.mfgData.SetActiveCell(1, 6);
  // The fill shows every button but Export, whatever the switches said to the layout.
  press(d, key::F3);
  EXPECT_EQ(v.events.log.last(), "Add -1 [6]");
  press(d, key::F4);
  EXPECT_EQ(v.events.log.last(), "Edit -2 [6]");
  press(d, key::F5);
  EXPECT_EQ(v.events.log.last(), "Delete -3 [6]");
  press(d, key::F9);
  EXPECT_EQ(v.events.log.last(), "Print -5 [6]");
  d.TbrButton.ButtonClick("Export");
  EXPECT_EQ(v.events.log.last(), "Export -6 [6]");
  d.TbrButton.ButtonClick("Open");
  EXPECT_EQ(v.events.log.last(), "Open 0 [6]");
  d.TbrButton.ButtonClick("Add");
  EXPECT_EQ(v.events.log.last(), "Add -1 [6]");
  const int before = v.events.log.size();
  press(d, key::Escape);  // EscapeAction is false
  EXPECT_EQ(v.events.log.size(), before);
  press(d, key::F12);
  EXPECT_EQ(v.events.log.last(), "Cancel 0 [6]");
  d.EscapeAction = true;
  press(d, key::Escape);
  EXPECT_EQ(v.events.count("Cancel"), 2);

  // No filter switch: F2 and F6 do nothing, the buttons still open the tools.
  press(d, key::F6);
  press(d, key::F2);
  EXPECT_EQ(fake.count("showModal"), 0);
  int shown = 0;
  QString caption;
  bool resetVisible = true;
  fake.onShowModal = [&](Form& f) {
    ++shown;
    caption = f.Caption();
    resetVisible = static_cast<FilterData&>(f).cmdReset.Visible();
    f.Hide();
  };
  d.TbrButton.ButtonClick("Filter");
  EXPECT_EQ(caption, "Filter Data Tool");
  EXPECT_TRUE(resetVisible);
  d.TbrButton.ButtonClick("MSearch");
  EXPECT_EQ(shown, 2);
  EXPECT_EQ(caption, "Search Data Tool (Without Top Filter Effect)");
  EXPECT_FALSE(resetVisible);
  // The search took the view's lists as its defaults, and they stay.
  EXPECT_EQ(d.xFieldList, kFields);
  EXPECT_EQ(d.xTableName, "Items");

  // F8 freezes up to the cursor's column and back.
  d.mfgData.SetActiveCell(3, 6);
  press(d, key::F8);
  EXPECT_EQ(d.mfgData.ColsFrozen(), 3);
  press(d, key::F8);
  EXPECT_EQ(d.mfgData.ColsFrozen(), 0);
  // F1 shows the Thai help of a view that has no language of its own yet.
  press(d, key::F1);
  EXPECT_TRUE(fake.calls.last().startsWith(QString::fromUtf8("infoBox: กดตัวอักษรนำหน้า")));
  // F7 asks for a text and goes to the next row that begins with it.
  fake.answers.push_back("1");
  d.mfgData.SetActiveCell(1, 1);
  press(d, key::F7);
  EXPECT_EQ(d.mfgData.ActiveRow(), 10);
}

TEST(DataViewSelect, SearchAndFilterBuildTheirStatementsAndAFilterReplacesTheLast) {
  FakePlatform fake;
  ItemsFile db(60);
  ItemsView v;
  DataView& d = v.view;
  v.show(db.conn(), "Items WHERE Status = 1 ORDER BY ItemID");
  ASSERT_EQ(d.RecordCount, 20);
  auto answer = [&](int field, const QString& op, const QString& text) {
    fake.onShowModal = [=](Form& form) {
      auto& f = static_cast<FilterData&>(form);
      f.lstFields.setListIndex(field);
      f.lstOperator.setListIndex(int(f.lstOperator.Items().indexOf(op)));
      f.txtValue.setText(text);
      f.cmdSearch_Click();
    };
  };
  answer(2, ">", "30");
  press(d, key::F6);
  EXPECT_EQ(d.SelectText(), "SELECT " + kFields + " FROM Items WHERE Price > 30 AND Status = 1 ORDER BY ItemID");
  EXPECT_EQ(d.RecordCount, 13);
  answer(2, "<", "6.5");
  press(d, key::F6);
  EXPECT_EQ(d.SelectText(), "SELECT " + kFields + " FROM Items WHERE Price < 6.5 AND Status = 1 ORDER BY ItemID");
  EXPECT_EQ(d.RecordCount, 2);
  // RESET brings the plain statement back; an empty result of the dialog runs nothing.
  fake.onShowModal = [](Form& form) { static_cast<FilterData&>(form).cmdReset_Click(); };
  press(d, key::F6);
  EXPECT_EQ(d.SelectText(), "SELECT " + kFields + " FROM Items WHERE Status = 1 ORDER BY ItemID");
  EXPECT_EQ(d.RecordCount, 20);
  fake.onShowModal = [](Form& form) { static_cast<FilterData&>(form).cmdCancel_Click(); };
  const int counts = v.events.count("RecordCountChange");
  press(d, key::F6);
  EXPECT_EQ(v.events.count("RecordCountChange"), counts);
  // The search reads the alternative definition, without the cap.
  d.MaxRecord = 5;
  d.AddExtraSearch("x", "ItemID", "ItemID,ItemName,Price,DocDate,Status,Kind,Flag", "", "", "", "Items ORDER BY ItemID");
  answer(1, "CONTAIN", "Item 5");
  press(d, key::F2);
  EXPECT_EQ(d.SelectText(), "SELECT ItemID,ItemName,Price,DocDate,Status,Kind,Flag FROM Items WHERE ItemName LIKE "
                            "'%Item 5%' ORDER BY  ItemID");
  EXPECT_EQ(d.RecordCount, 11);
  EXPECT_EQ(d.xFieldLabelList, kLabels);
}

TEST(DataViewSelect, ButtonRulesOfTheBar) {
  FakePlatform fake;
  ItemsFile db(3);
  ItemsView v;
  DataView& d = v.view;
  v.show(db.conn());
  EXPECT_FALSE(d.button("Export").Visible);
  EXPECT_TRUE(d.button("Enter").Visible);
  EXPECT_EQ(d.button("MSearch").Caption, "F2-Search   ");
  EXPECT_EQ(d.button("Freeze").ToolTipText, QString::fromUtf8("ค้นหารายละเอียดในเอกสาร"));
  // False hides the whole bar: its "Close" is a key this bar lacks.
  d.setbuttons(false);
  for (const ToolButton& b : d.TbrButton.ButtonList()) EXPECT_FALSE(b.Visible) << b.Key.toStdString();
  d.SetButonStatus();
  for (const char* k : {"Add", "Edit", "Delete", "Print", "Open"}) {
    EXPECT_FALSE(d.button(k).Enabled) << k;
    EXPECT_FALSE(d.button(k).Visible) << k;
  }
  // F3 with the button hidden does nothing.
  press(d, key::F3);
  EXPECT_EQ(v.events.count("Add"), 0);
  d.SetButonStatus2(true, true, false, false, true, true, false, false, true, true, true, false, true, true);
  EXPECT_TRUE(d.button("Filter").Visible);
  EXPECT_FALSE(d.button("Freeze").Visible);  // FreezeVisible goes to Freeze though it stands crossed
  d.setbuttons(true);
  EXPECT_TRUE(d.button("Delete").Visible);
  EXPECT_FALSE(d.button("Edit").Visible);  // disabled, so hidden
  // False still shows what SetButonStatus2 asked to show on a loaded view.
  d.setbuttons(false);
  EXPECT_TRUE(d.button("Delete").Visible);
  EXPECT_FALSE(d.button("Enter").Visible);
  QImage icon(16, 16, QImage::Format_ARGB32);
  d.SetButtonLabel("New Item", icon);
  EXPECT_EQ(d.button("Add").Caption, "New Item");
  EXPECT_EQ(d.button("Add").Image, "AddIcon");
  EXPECT_TRUE(d.DoIcon);
  d.SetButtonLabel("Again");
  EXPECT_EQ(d.button("Add").Caption, "New Item");
  d.SetButtonOpenCaption("Choose");
  EXPECT_EQ(d.button("Enter").Caption, "Choose");
}

TEST(DataViewSelect, DragSumRemovedRowsAndIncrementalFind) {
  FakePlatform fake;
  SqliteFile db(
      "CREATE TABLE T(k INTEGER, a REAL, n TEXT);"
      "INSERT INTO T VALUES(1, 1234.5, 'apple'),(2, 2, 'banana'),(3, 0, 'avocado'),(4, 9, 'cherry');");
  ItemsView v;
  DataView& d = v.view;
  d.setSize(8000, 5000);
  d.showData("c", "k", "k,a,n", "K,A,N", "600,1200,1500", "0,1,0", "T ORDER BY k", "Data Source=" + db.path, 0, 0, 0,
             0, 0);
  ASSERT_EQ(d.TextMatrix(1, 2), "1,234.50");
  EXPECT_EQ(d.TextMatrix(2, 2), "2.00");
  d.setTextMatrix(2, 2, "2");
  // Drag from the first to the second cell of column 2.
  double x1, y1, w, h, x2, y2;
  ASSERT_TRUE(d.mfgData.GetCellPos(2, 1, x1, y1, w, h));
  ASSERT_TRUE(d.mfgData.GetCellPos(2, 2, x2, y2, w, h));
  d.mfgData.inputMouseDown(MouseButton::Left, 0, x1 + 10, y1 + 10);
  d.mfgData.inputMouseMove(x2 + 10, y2 + 10, true);
  d.mfgData.inputMouseUp(MouseButton::Left, x2 + 10, y2 + 10);
  EXPECT_EQ(d.mfgData.ToolTipText(), "1,236.50");
  double x3, y3;
  ASSERT_TRUE(d.mfgData.GetCellPos(1, 3, x3, y3, w, h));
  d.mfgData.inputMouseDown(MouseButton::Left, 0, x3 + 10, y3 + 10);
  d.mfgData.inputMouseUp(MouseButton::Left, x3 + 10, y3 + 10);
  EXPECT_EQ(d.mfgData.ToolTipText(), d.HelpHint());
  // The right button on a heading flips the heading click between sort and sum.
  EXPECT_EQ(d.ClickMode(), 1);
  double hx, hy;
  ASSERT_TRUE(d.mfgData.GetCellPos(2, 0, hx, hy, w, h));
  d.mfgData.inputMouseDown(MouseButton::Right, 0, hx + 10, hy + 10);
  d.mfgData.inputMouseUp(MouseButton::Right, hx + 10, hy + 10);
  EXPECT_EQ(d.ClickMode(), 0);
  // In sum mode a heading click totals its whole column: 1,234.50 + 2 + 9.00 (zeros left out).
  d.mfgData.inputMouseDown(MouseButton::Left, 0, hx + 10, hy + 10);
  d.mfgData.inputMouseUp(MouseButton::Left, hx + 10, hy + 10);
  EXPECT_EQ(d.mfgData.ToolTipText(), "1,245.50");
  d.mfgData.inputMouseDown(MouseButton::Right, 0, hx + 10, hy + 10);
  EXPECT_EQ(d.ClickMode(), 1);

  // Typing a letter goes to the next row whose text in the column begins with it, and again.
  d.mfgData.SetActiveCell(3, 1);
  type(d, u'a');
  EXPECT_EQ(d.mfgData.ActiveRow(), 3);
  type(d, u'a');
  EXPECT_EQ(d.mfgData.ActiveRow(), 1);

  // The last row removed: the cursor stands on the nearest visible row above.
  d.mfgData.SetActiveCell(1, 4);
  d.RemoveActiveRow();
  EXPECT_EQ(d.mfgData.RowHeight(4), 0);
  EXPECT_EQ(d.mfgData.ActiveRow(), 3);
  EXPECT_EQ(v.events.log.last(), "RowDeleted 4");
  EXPECT_EQ(d.GETRecordset()->RecordCount(), 4);  // the data stay in the result
  d.mfgData.SetActiveCell(1, 2);
  d.RemoveActiveRow();
  EXPECT_EQ(d.mfgData.ActiveRow(), 3);
}
