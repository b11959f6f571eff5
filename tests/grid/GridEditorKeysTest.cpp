#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Trace : GridEditorEvents {
  QStringList log;
  int16_t rewriteKeyTo = -1;  // an application that swallows or changes a relayed key
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override {
    log << QStringLiteral("KeyDown %1 %2").arg(KeyCode).arg(Shift);
    if (rewriteKeyTo >= 0) KeyCode = rewriteKeyTo;
  }
  void SelChange() override { log << "SelChange"; }
  void ValidData() override { log << "ValidData"; }
  void DoubleClick() override { log << "DoubleClick"; }
  void DeleteKeyProcessOnReadOnly() override { log << "DeleteOnReadOnly"; }
  void Click(int32_t COL, int32_t Row) override { log << QStringLiteral("Click %1 %2").arg(COL).arg(Row); }
  void AddClick() override { log << "AddClick"; }
  void DeleteClick() override { log << "DeleteClick"; }
  int count(const QString& what) const { return int(log.count(what)); }
};

// Columns: 1 ID NUMBER, 2 Name TEXT, 3 Amount NUMBER read only, 4 Done CHECK, 5 Status LABELLIST,
// 6 Ok YESNO, 7 Tint COLOR, 8 Note TEXT; five records named n1..n5, in edit mode.
struct Keys : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  Trace ev;
  void SetUp() override {
    g.setListener(&ev);
    g.SetFirst(8);
    g.addField3(1, "ItemID", "NUMBER", 1, "ID", 0, {}, 0, {}, 0, 10, 0, 1, 1, 0, 600);
    g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    g.addField3(3, "Amount", "NUMBER", 0, "Amount", 2, {}, 0, {}, 0, 10, 1, 1, 0, 0, 1200);
    g.addField3(4, "Done", "CHECK", 0, "Done", 0, {}, 0, {}, 0, 1, 1, 1, 1, 0, 600);
    g.addField3(5, "Status", "LABELLIST", 0, "Status", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 900, 0, 0,
                "A;Active,B;Blocked,C");
    g.addField3(6, "Ok", "YESNO", 0, "Ok", 0, {}, 0, {}, 0, 1, 1, 1, 1, 0, 600);
    g.addField3(7, "Tint", "COLOR", 0, "Tint", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 600);
    g.addField3(8, "Note", "TEXT", 0, "Note", 0, {}, 0, {}, 0, 40, 1, 1, 1, 0, 1500);
    g.setEditStatus(true);
    g.mfgData.setVisible(true);
    g.setSize(12000, 4800);  // every column in view
    for (int r = 1; r <= 5; ++r) {
      if (r > 1) g.cmdAppend_Click();
      g.SetValue(r, 1, r);
      g.SetText(r, 2, QStringLiteral("n%1").arg(r));
      g.SetValue(r, 3, r * 10);
      g.SetValue(r, 5, 2);
      g.setTextMatrix(r, -988, "E");
    }
    go(2, 1);
    ev.log.clear();
    fake.calls.clear();
  }
  void go(int col, int row) { g.mfgData.SetActiveCell(col, row); }
  void key(int16_t code, int16_t shiftState = 0) { g.mfgData.inputKeyDown(code, shiftState); }
  void run(int16_t code, int16_t shiftState = 0) { g.RunAction_KeyDown(code, shiftState); }
  QPointF centre(int col, int row) {
    double x, y, w, h;
    EXPECT_TRUE(g.mfgData.GetCellPos(col, row, x, y, w, h));
    return {x + w / 2, y + h / 2};
  }
  void click(int col, int row) {
    const QPointF p = centre(col, row);
    g.mfgData.inputMouseDown(MouseButton::Left, 0, p.x(), p.y());
  }
  // A block by the mouse: the cursor stays at the corner pressed first.
  void drag(int col, int row, int col2, int row2) {
    click(col, row);
    const QPointF p = centre(col2, row2);
    g.mfgData.inputMouseMove(p.x(), p.y(), true);
    g.mfgData.inputMouseUp(MouseButton::Left, p.x(), p.y());
    ev.log.clear();
  }
  void dblClick(int col, int row) {
    const QPointF p = centre(col, row);
    g.mfgData.inputDblClick(p.x(), p.y());
  }
  QString names() {
    QStringList out;
    for (int r = 1; r <= g.Rows(); ++r) out << g.GETText(r, 2);
    return out.join(',');
  }
};

}  // namespace

TEST_F(Keys, ALockedOrForeignCellIgnoresEveryKeyAndAnOpenEditorTakesTheFocus) {
  g.setEnableCustomFunctionKey(true);
  g.CellLockMode(2, 2, 1);
  go(2, 2);
  for (int16_t k : {key::F1, key::F3, key::F6, key::Delete}) key(k);
  EXPECT_EQ(fake.count("infoBox"), 0);
  EXPECT_EQ(g.Rows(), 5);
  EXPECT_TRUE(ev.log.isEmpty()) << ev.log.join('|').toStdString();
  EXPECT_EQ(g.GETText(2, 2), "n2");
  // Lifted, the same keys work again.
  g.CellLockMode(2, 2, 0);
  key(key::F1);
  EXPECT_EQ(fake.count("infoBox"), 1);
  // Outside the sheet (row 0) nothing happens either.
  go(2, 0);
  key(key::F3);
  EXPECT_EQ(g.Rows(), 5);
  // While the cell editor is open it gets the focus back and the command does not run.
  go(2, 2);
  g.Text.setVisible(true);
  key(key::F3);
  EXPECT_EQ(g.Rows(), 5);
  EXPECT_EQ(g.focusedChild(), &g.Text);
}

TEST_F(Keys, F3ByShiftAppendsInsertsOrInsertsAfterAndDoesNothingInViewMode) {
  go(2, 2);
  key(key::F3, shift::Shift | shift::Ctrl);  // both held: the plain append
  EXPECT_EQ(names(), "n1,n2,n3,n4,n5,");
  EXPECT_EQ(ev.count("AddClick"), 1);
  go(2, 2);
  key(key::F3, shift::Shift);  // before the cursor
  EXPECT_EQ(names(), "n1,,n2,n3,n4,n5,");
  go(2, 3);
  key(key::F3, shift::Ctrl);  // after the cursor
  EXPECT_EQ(names(), "n1,,n2,,n3,n4,n5,");
  key(key::F3);
  EXPECT_EQ(g.Rows(), 9);
  g.setEditStatus(false);
  for (int16_t s : {0, 1, 2, 3}) key(key::F3, s);
  EXPECT_EQ(g.Rows(), 9);
}

TEST_F(Keys, RecordKeysMoveRemoveAndFreezeOnlyWhereTheModeAllows) {
  go(2, 3);
  key(key::F11);
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  key(key::F12, shift::Shift);
  EXPECT_EQ(names(), "n1,n2,n4,n5,n3");
  key(key::F11, shift::Shift);
  EXPECT_EQ(names(), "n3,n1,n2,n4,n5");
  key(key::F12, shift::Shift | shift::Ctrl);  // both: one step down
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  key(key::F11, shift::Ctrl);  // relayed, not a move
  key(key::F12, shift::Ctrl);
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  // F8 freezes up to the cursor's column in both modes.
  go(3, 1);
  key(key::F8);
  EXPECT_EQ(g.mfgData.ColsFrozen(), 3);
  key(key::F8);
  EXPECT_EQ(g.mfgData.ColsFrozen(), 0);
  g.setEditStatus(false);
  go(2, 3);
  for (int16_t k : {key::F11, key::F12}) {
    key(k);
    key(k, shift::Shift);
  }
  key(key::F5);
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  EXPECT_EQ(ev.count("DeleteClick"), 0);
  key(key::F8);
  EXPECT_EQ(g.mfgData.ColsFrozen(), 2);
  // Back in edit mode, F5 removes the record.
  g.setEditStatus(true);
  go(2, 3);
  key(key::F5);
  EXPECT_EQ(ev.count("DeleteClick"), 1);
  EXPECT_EQ(g.TextMatrix(3, -988), "D");
}

TEST_F(Keys, KeysTheGridHasNoUseForGoToTheApplicationOnlyWhenItAsks) {
  go(8, 1);
  key(key::F6);
  key(key::F5, shift::Ctrl);
  key(key::F9);
  key(key::F11, shift::Ctrl);
  key(key::F2);  // a plain column's F2 is the application's all the same
  EXPECT_EQ(ev.log, QStringList{"KeyDown 113 0"});
  ev.log.clear();
  g.setEnableCustomFunctionKey(true);
  key(key::F6);
  key(key::F5, shift::Ctrl);
  key(key::F10, shift::Shift);
  key(key::F2, shift::Shift);
  key(67, shift::Shift);  // a capital C, not the copy
  EXPECT_EQ(ev.log, (QStringList{"KeyDown 117 0", "KeyDown 116 2", "KeyDown 121 1", "KeyDown 113 1", "KeyDown 67 1"}));
  // Arrows are relayed and then move the cursor, unless the application swallows the key.
  ev.log.clear();
  key(key::Down);
  EXPECT_EQ(g.Row(), 2);
  EXPECT_EQ(ev.log.first(), "KeyDown 40 0");
  ev.rewriteKeyTo = 0;
  key(key::Down);
  EXPECT_EQ(g.Row(), 2);
  // The tool bar's Enter button is the Enter key.
  ev.rewriteKeyTo = -1;
  ev.log.clear();
  g.setEditStatus(false);
  g.TbrButton.ButtonClick("Enter");
  EXPECT_EQ(ev.log, QStringList{"KeyDown 13 0"});
}

TEST_F(Keys, F2TurnsACheckOverAndMayStepDownButLeavesAReadOnlyColumnAlone) {
  go(4, 2);
  key(key::F2);
  EXPECT_EQ(g.GETValue(2, 4), 1);
  g.mfgData.setRow(2);
  g.mfgData.setCol(4);
  EXPECT_EQ(g.mfgData.CellType(), celltype::CheckBox);
  EXPECT_EQ(g.mfgData.Value(), 1);
  run(key::F2);
  EXPECT_EQ(g.GETValue(2, 4), 0);
  EXPECT_EQ(g.Row(), 2);
  g.setEnableCheckAutoMoveNextRow(true);
  key(key::F2);
  EXPECT_EQ(g.GETValue(2, 4), 1);
  EXPECT_EQ(g.Row(), 3);
  EXPECT_EQ(g.Column(), 4);
  go(4, 5);
  key(key::F2);
  EXPECT_EQ(g.GETValue(5, 4), 1);
  EXPECT_EQ(g.Row(), 1);  // from the last row round to the first
  // A column that can not be edited: nothing, not even the application's KeyDown.
  go(3, 2);
  key(key::F2);
  EXPECT_EQ(g.GETValue(2, 3), 20);
  EXPECT_EQ(ev.count("KeyDown 113 0"), 0);
  // In view mode F2 does nothing.
  g.setEditStatus(false);
  go(4, 1);
  key(key::F2);
  EXPECT_EQ(g.GETValue(1, 4), 0);
}

TEST_F(Keys, F2OnAColourCellOpensTheDialogWithTheTurnedValueAndPaintsTheChoice) {
  go(7, 2);
  fake.answers.push_back(QVariant(0x00FF00u));
  key(key::F2);
  EXPECT_TRUE(fake.calls.contains("colorDialog: 1"));
  EXPECT_EQ(g.GETValue(2, 7), 0x00FF00);
  EXPECT_EQ(g.TextMatrix(2, 7), "");
  g.mfgData.setRow(2);
  g.mfgData.setCol(7);
  EXPECT_EQ(g.mfgData.BackColor(), Colour(0x00FF00));
  g.mfgData.setRow(3);
  EXPECT_NE(g.mfgData.BackColor(), Colour(0x00FF00));
  // A cancelled dialog leaves the turned value; a value of 1 turns to 0 first.
  g.SetValue(3, 7, 1);
  go(7, 3);
  key(key::F2);
  EXPECT_TRUE(fake.calls.contains("colorDialog: 0"));
  EXPECT_EQ(g.GETValue(3, 7), 0);
}

TEST_F(Keys, DeleteEmptiesTheEditablePlainCellsOfTheBlockAndNothingInViewMode) {
  g.SetValue(2, 4, 1);
  g.SetValue(3, 4, 1);
  drag(1, 2, 5, 3);
  ASSERT_EQ(g.Row(), 2);
  ASSERT_EQ(g.mfgData.SelBlockCol2(), 5);
  key(key::Delete);
  EXPECT_EQ(ev.count("ValidData"), 6);  // two rows of ID, Name and Done
  for (int r : {2, 3}) {
    EXPECT_EQ(g.GETText(r, 1), "");
    EXPECT_EQ(g.GETValue(r, 1), 0);
    EXPECT_EQ(g.GETText(r, 2), "");
    EXPECT_EQ(g.GETValue(r, 4), 0);
    EXPECT_EQ(g.GETText(r, 3), QString::number(r * 10) + ".00");  // read only
    EXPECT_EQ(g.GETText(r, 5), "C");                                // a list
    EXPECT_EQ(g.TextMatrix(r, -988), "E");
  }
  EXPECT_EQ(g.GETText(1, 2), "n1");
  EXPECT_EQ(g.GETText(4, 2), "n4");
  // View mode: a quiet no-op even where the application asked to hear of read-only cells.
  ev.log.clear();
  g.setEditStatus(false);
  g.setEnableDeleteEventOnReadOnlyField(true);
  go(3, 4);
  key(key::Delete);
  go(2, 4);
  key(key::Delete);
  EXPECT_TRUE(ev.log.isEmpty()) << ev.log.join('|').toStdString();
  EXPECT_EQ(g.GETText(4, 2), "n4");
}

TEST_F(Keys, PasteWritesTheOneClipboardTextIntoEveryCellOfTheBlockByType) {
  fake.clipboard = "abc";
  drag(1, 2, 1, 3);
  key('V', shift::Ctrl);
  EXPECT_TRUE(g.DOINGCLIP);
  for (int r : {2, 3}) {
    EXPECT_EQ(g.GETText(r, 1), "abc");
    EXPECT_EQ(g.GETValue(r, 1), 0);
  }
  EXPECT_EQ(g.GETValue(4, 1), 4);
  EXPECT_EQ(ev.count("ValidData"), 2);
  EXPECT_EQ(g.Row(), 3);
  // A list takes a label it knows, by position; a text it does not know leaves the cell.
  fake.clipboard = "B";
  go(5, 1);
  key('V', shift::Ctrl);
  EXPECT_EQ(g.GETValue(1, 5), 1);
  EXPECT_EQ(g.GETText(1, 5), "B");
  fake.clipboard = "Z";
  key('V', shift::Ctrl);
  EXPECT_EQ(g.GETValue(1, 5), 1);
  EXPECT_EQ(g.GETText(1, 5), "B");
  fake.clipboard = "no thanks";
  go(6, 1);
  key('V', shift::Ctrl);
  EXPECT_EQ(g.GETValue(1, 6), 0);
  EXPECT_EQ(g.GETText(1, 6), "no thanks");
  fake.clipboard = "yes";
  key('V', shift::Ctrl);
  EXPECT_EQ(g.GETValue(1, 6), 1);
  // A read-only active cell, or view mode: the clipboard is not even read.
  fake.calls.clear();
  go(3, 1);
  key('V', shift::Ctrl);
  g.setEditStatus(false);
  go(1, 1);
  key('V', shift::Ctrl);
  EXPECT_EQ(fake.count("clipboardText"), 0);
  EXPECT_EQ(g.GETText(1, 3), "10.00");
  EXPECT_EQ(g.GETText(1, 1), "1");
}

TEST_F(Keys, CopyAndCutMarkTheClipboardKeyAndCutErasesByEditStatus) {
  go(2, 2);
  key('C', shift::Ctrl);
  EXPECT_TRUE(g.DOINGCLIP);
  EXPECT_EQ(fake.clipboard, "n2\r\n");  // the surface's own copy, after the grid's handler
  g.DOINGCLIP = false;
  go(2, 3);
  key('X', shift::Ctrl);
  EXPECT_TRUE(g.DOINGCLIP);
  EXPECT_EQ(fake.clipboard, "n3\r\n");
  EXPECT_EQ(g.TextMatrix(3, 2), "");
  g.setEditStatus(false);
  go(2, 4);
  key('X', shift::Ctrl);
  EXPECT_EQ(fake.clipboard, "n4\r\n");
  EXPECT_EQ(g.TextMatrix(4, 2), "n4");
}

TEST_F(Keys, F4OpensTheMultiLineBoxOnTextCellsReadOnlyInViewMode) {
  go(2, 2);
  fake.answers.push_back(QStringLiteral("line one\r\nline two"));
  key(key::F4);
  EXPECT_EQ(fake.calls.value(0), QString::fromUtf8("multiLineInput: Name | พิมพ์ข้อความ | 20"));
  EXPECT_EQ(g.TextMatrix(2, 2), "line one\r\nline two");
  EXPECT_TRUE(ev.log.isEmpty());
  go(1, 2);
  key(key::F4);
  EXPECT_EQ(fake.count("multiLineInput"), 1);
  g.setEditStatus(false);
  go(2, 3);
  fake.answers.push_back(QStringLiteral("changed"));
  key(key::F4);
  EXPECT_EQ(fake.count("multiLineInput"), 2);
  EXPECT_EQ(g.TextMatrix(3, 2), "n3");
}

TEST_F(Keys, F7AndTypingInViewModeFindTheNextRowInTheColumn) {
  g.SetText(2, 2, "Banana");
  g.SetText(4, 2, "blue");
  g.setEditStatus(false);
  go(2, 1);
  g.mfgData.inputKeyPress('b');
  EXPECT_EQ(g.Row(), 2);
  g.mfgData.inputKeyPress('b');
  EXPECT_EQ(g.Row(), 4);
  EXPECT_EQ(g.Column(), 2);
  fake.answers.push_back(QStringLiteral("n5"));
  key(key::F7);
  EXPECT_EQ(fake.count("inputBox"), 1);
  EXPECT_EQ(g.Row(), 5);
  key(key::F7, shift::Shift);  // relayed only
  EXPECT_EQ(fake.count("inputBox"), 1);
}

TEST_F(Keys, ArrowsComingUpClickAndDoubleClickTellTheApplication) {
  for (int16_t k : {key::Left, key::Up, key::Right, key::Down}) g.mfgData.inputKeyUp(k, 0);
  g.mfgData.inputKeyUp(key::Return, 0);
  g.mfgData.inputKeyUp(key::Tab, 0);
  EXPECT_EQ(ev.count("SelChange"), 4);
  ev.log.clear();
  // A click on a check turns it over in edit mode, before SelChange and Click.
  click(4, 2);
  EXPECT_EQ(g.GETValue(2, 4), 1);
  EXPECT_EQ(ev.log.mid(ev.log.size() - 2), (QStringList{"SelChange", "Click 4 2"}));
  // Double clicks in edit mode, on the cell the press before put the cursor on: a check by F2, a
  // YESNO turned over, other columns by the chosen key.
  go(4, 3);
  dblClick(4, 3);
  EXPECT_EQ(g.GETValue(3, 4), 1);
  go(6, 3);
  dblClick(6, 3);
  EXPECT_EQ(g.GETValue(3, 6), 1);
  EXPECT_EQ(g.GETText(3, 6), "Y");
  dblClick(6, 3);
  EXPECT_EQ(g.GETText(3, 6), "N");
  ev.log.clear();
  go(8, 3);
  dblClick(8, 3);
  EXPECT_EQ(ev.log.filter("KeyDown"), QStringList{"KeyDown 113 0"});
  // A locked cell: nothing.
  g.CellLockMode(3, 6, 2);
  dblClick(6, 3);
  EXPECT_EQ(g.GETText(3, 6), "N");
  // View mode: the event, or the chosen key told to the application, which may change it.
  g.setEditStatus(false);
  ev.log.clear();
  dblClick(8, 2);
  EXPECT_EQ(ev.log.filter(QRegularExpression("DoubleClick|KeyDown")), QStringList{"DoubleClick"});
  g.setDoubleClickNoAction(false);
  g.setDoubleClickEventKeyCode(key::F9);
  ev.log.clear();
  dblClick(4, 2);
  EXPECT_EQ(ev.log.filter(QRegularExpression("DoubleClick|KeyDown")), QStringList{"KeyDown 120 0"});
  EXPECT_EQ(g.GETValue(2, 4), 1);
}

TEST_F(Keys, NextColumnInputSkipsReadOnlyAndNarrowColumnsAndNeverReachesTheLast) {
  go(2, 2);
  g.Text.setVisible(true);
  g.NextColumnInput();
  EXPECT_EQ(g.Column(), 4);  // Amount is read only
  EXPECT_FALSE(g.Text.Visible());
  g.mfgData.setColWidth(5, 15);
  g.NextColumnInput();
  EXPECT_EQ(g.Column(), 6);
  EXPECT_EQ(g.Row(), 2);
  go(7, 2);
  g.NextColumnInput();
  EXPECT_EQ(g.Column(), 7);
}

TEST_F(Keys, AWheelNotchScrollsARoomfulOfRowsButAtLeastTen) {
  for (int i = 0; i < 35; ++i) g.cmdAppend_Click();
  const double rh = g.mfgData.RowHeight(1);
  ASSERT_GT(rh, 0);
  g.mfgData.setHeight(rh * 3.5);  // three rows in view
  g.MouseWheel(0, -120, 0, 0);
  EXPECT_EQ(g.mfgData.TopRow(), 11);
  g.MouseWheel(0, 120, 0, 0);
  EXPECT_EQ(g.mfgData.TopRow(), 1);
  g.mfgData.setHeight(rh * 20);
  g.MouseWheel(0, -120, 0, 0);
  EXPECT_EQ(g.mfgData.TopRow(), 20);
  g.MouseWheel(0, -120, 0, 0);
  g.MouseWheel(0, -120, 0, 0);
  EXPECT_EQ(g.mfgData.TopRow(), 40);  // no further than the last row
  // A row of height 0 where the top would land: the surface stays.
  g.mfgData.setTopRow(1);
  g.mfgData.setRowHeight(20, 0);
  g.MouseWheel(0, -120, 0, 0);
  EXPECT_EQ(g.mfgData.TopRow(), 1);
}

TEST_F(Keys, ATypedCharacterOpensTheCellsEditorButNotTheOneAfterAClipboardKey) {
  // Ctrl+C sends its control character next: it opens nothing, and the letter after it does.
  go(2, 2);
  key('C', shift::Ctrl);
  g.mfgData.inputKeyPress(3);
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_FALSE(g.DOINGCLIP);
  g.mfgData.inputKeyPress('x');
  EXPECT_TRUE(g.Text.Visible());
  EXPECT_EQ(g.Text.Text(), "x");
  // While the box is open, keys on the surface only hand it the focus back.
  key(key::F3);
  EXPECT_EQ(g.Rows(), 5);
  g.Text.setVisible(false);
  // A read-only column, or a hidden row: nothing opens.
  go(3, 2);
  g.mfgData.inputKeyPress('7');
  EXPECT_FALSE(g.Text.Visible());
  g.mfgData.setRow(4);
  g.mfgData.setRowHidden(true);
  go(2, 4);
  g.mfgData.inputKeyPress('y');
  EXPECT_FALSE(g.Text.Visible());
  // F2 on a list acts as the typed "1", which opens the list; Space on a check turns it over.
  go(5, 1);
  key(key::F2);
  EXPECT_TRUE(g.List1.Visible());
  g.List1.setVisible(false);
  go(4, 1);
  g.mfgData.inputKeyPress(' ');
  EXPECT_EQ(g.GETValue(1, 4), 1);
  g.mfgData.inputKeyPress('a');
  EXPECT_EQ(g.GETValue(1, 4), 1);
  EXPECT_FALSE(g.Text.Visible());
}
