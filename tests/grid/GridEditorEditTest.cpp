#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <gtest/gtest.h>

#include <QDate>

using namespace tq7;

namespace {

struct Log : GridEditorEvents {
  QStringList log;
  std::function<void()> onValidData;
  void SelChange() override { log << QStringLiteral("SelChange"); }
  void ValidData() override {
    log << QStringLiteral("ValidData");
    if (onValidData) onValidData();
  }
};

struct Editing : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  Log ev;
  Editing() { g.setListener(&ev); }

  void rows(int n) {
    for (int i = 1; i < n; ++i) g.cmdAppend_Click();
    g.setEditStatus(true);
    g.mfgData.setVisible(true);  // as the end of a load leaves it
  }
  // A column with CanEdit 1 and CanDuplicate 1 unless told; args past MaxLength as addField3 has them.
  void column(int c, const char* type, int16_t displayDecimal = 0, int16_t numberOfDecimal = 0,
              int16_t canDuplicate = 1, int16_t primaryKey = 0, int16_t stopBlankMove = 0,
              const QString& labels = {}) {
    g.addField3(c, QStringLiteral("F%1").arg(c), QString::fromUtf8(type), primaryKey, QStringLiteral("C%1").arg(c),
                displayDecimal, {}, 0, {}, 0, 20, canDuplicate, 1, 1, 0, 1200, 0, 0, labels, 0, {}, {}, {},
                numberOfDecimal, 0, {}, {}, stopBlankMove);
  }
  // What the host does: the user typed `text` into the open box and pressed Enter.
  void commit(int col, const QString& text, int row = 1) {
    g.mfgData.SetActiveCell(col, row);
    g.Text.setText(text);
    key(13);
  }
  void key(int16_t code) {
    int16_t k = code, s = 0;
    g.Text_KeyDown(k, s);
  }
  QString cell(int row, int col) const { return g.TextMatrix(row, col); }
  double value(int row, int col) { return g.Matrix1.GetValue(row, col); }
  QString state(int row) const { return g.TextMatrix(row, attr::RecordState); }
};

double serial(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }

}  // namespace

TEST_F(Editing, EachTypeConvertsItsTextIntoAValueAndTheCanonicalText) {
  g.SetFirst(13);
  column(1, "DATE");
  column(2, "PERIOD");
  column(3, "DATETIME");
  column(4, "TIME");
  column(5, "HOUR");
  column(6, "DAYTIME");
  column(7, "NUMBER", 2, 0);
  column(8, "NUMBER", 2, 1);
  column(9, "ABSNUMBER", -1, 0);
  column(10, "YEAR");
  column(11, "YESNO");
  column(12, "TEXT");
  rows(2);

  commit(1, "15/3/2567");
  EXPECT_EQ(value(1, 1), serial(2024, 3, 15));
  EXPECT_EQ(cell(1, 1), "15/03/2567");
  commit(2, "3/2567");
  EXPECT_EQ(value(1, 2), serial(2024, 3, 1));
  EXPECT_EQ(cell(1, 2), "03/2567");
  commit(3, "15/03/2567 8:30");
  EXPECT_NEAR(value(1, 3), serial(2024, 3, 15) + 8.5 / 24, 1e-9);
  EXPECT_EQ(cell(1, 3), "15/03/2567 08:30");
  commit(4, "8.30");
  EXPECT_NEAR(value(1, 4), 8.5 / 24, 1e-9);
  EXPECT_EQ(cell(1, 4), "08:30");
  commit(5, "7.30");
  EXPECT_EQ(cell(1, 5), "7.30");
  EXPECT_NE(value(1, 5), 0);
  commit(6, "2 08:30");
  EXPECT_EQ(cell(1, 6), StandardHelper().DayTimeText(value(1, 6)));
  EXPECT_NE(value(1, 6), 0);
  // No decimals kept: the text read twice; one decimal: rounded; both shown with two.
  commit(7, "1234.567");
  EXPECT_DOUBLE_EQ(value(1, 7), 1234.567);
  EXPECT_EQ(cell(1, 7), "1,234.57");
  commit(8, "1234.567");
  EXPECT_DOUBLE_EQ(value(1, 8), 1234.6);
  EXPECT_EQ(cell(1, 8), "1,234.60");
  commit(9, "-1234.4");  // DisplayDecimal -1 shows one decimal
  EXPECT_DOUBLE_EQ(value(1, 9), 1234.4);
  EXPECT_EQ(cell(1, 9), "1,234.4");
  commit(10, "2560");
  EXPECT_EQ(value(1, 10), 2017);
  EXPECT_EQ(cell(1, 10), "2560");
  commit(10, "12560");  // no group separator in a year
  EXPECT_EQ(cell(1, 10), "12560");
  commit(11, "1");
  EXPECT_EQ(value(1, 11), 1);
  EXPECT_EQ(cell(1, 11), "Y");
  commit(11, "y");
  EXPECT_EQ(cell(1, 11), "Y");
  commit(11, "yes");
  EXPECT_EQ(value(1, 11), 0);
  EXPECT_EQ(cell(1, 11), "N");
  commit(12, "  as typed ");
  EXPECT_EQ(cell(1, 12), "  as typed ");
  EXPECT_EQ(value(1, 12), 0);
  EXPECT_EQ(state(1), "E");
}

TEST_F(Editing, AnUnreadableTextQuietlyPutsTheCellBackAndTheCommitGoesOn) {
  g.SetFirst(4);
  column(1, "DATE");
  column(2, "TIME");
  column(3, "PERIOD");
  column(4, "TEXT");
  rows(2);
  g.SetValue(1, 1, serial(2024, 1, 1));
  ASSERT_EQ(cell(1, 1), "01/01/2567");
  ev.log.clear();
  commit(1, "31/02/2567");
  EXPECT_EQ(cell(1, 1), "01/01/2567");
  EXPECT_EQ(value(1, 1), serial(2024, 1, 1));
  EXPECT_EQ(fake.messages(), QStringList{});
  EXPECT_TRUE(ev.log.contains("ValidData"));
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);  // moved on as after any commit
  commit(2, "25:99");
  EXPECT_EQ(cell(1, 2), "");
  EXPECT_EQ(value(1, 2), 0);
  commit(3, "nonsense");
  EXPECT_EQ(cell(1, 3), "");
  EXPECT_EQ(state(1), "E");
}

TEST_F(Editing, DuplicateIsRefusedWithItsMessageAfterTheRecordWasMarkedEdited) {
  g.SetFirst(3);
  column(1, "TEXT", 0, 0, /*canDuplicate*/ 0);
  column(2, "NUMBER", 0, 0, 0);
  column(3, "TEXT", 0, 0, 0, /*primaryKey*/ 1);
  rows(3);
  g.SetText(1, 1, "Abc");
  g.SetText(2, 1, "x");
  ev.log.clear();
  commit(1, "aBC", 2);
  EXPECT_EQ(fake.messages(), QStringList{QString::fromUtf8("ข้อมูล ไม่สามารถซ้ำได้")});
  EXPECT_EQ(state(2), "E");
  EXPECT_EQ(cell(2, 1), "x");
  EXPECT_FALSE(ev.log.contains("ValidData"));
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
  EXPECT_EQ(g.mfgData.ActiveCol(), 1);  // the cursor stays
  // A cell does not conflict with itself; a deleted record does not count.
  commit(1, "x", 2);
  EXPECT_EQ(fake.messages().size(), 1);
  EXPECT_EQ(cell(2, 1), "x");
  g.setTextMatrix(1, attr::RecordState, "D");
  commit(1, "abc", 2);
  EXPECT_EQ(fake.messages().size(), 1);
  EXPECT_EQ(cell(2, 1), "abc");
  // On a converted type the value written before the walk stays in Matrix1.
  g.SetValue(2, 2, 5);
  commit(2, "5", 3);
  EXPECT_EQ(fake.messages().size(), 2);
  EXPECT_EQ(value(3, 2), 5);
  // A key column's text is normalised before it is compared and written.
  commit(3, "  k1 ", 2);
  EXPECT_EQ(cell(2, 3), "k1");
  commit(3, "k1", 3);
  EXPECT_EQ(fake.messages().size(), 3);
}

TEST_F(Editing, TypingOpensTheBoxOverTheCellAndEscapeDropsTheInput) {
  g.SetFirst(3);
  column(1, "TEXT");
  column(2, "TEXT");
  column(3, "TEXT");
  rows(2);
  g.SetText(1, 1, "abc");
  g.mfgData.SetActiveCell(1, 1);
  g.mfgData.SetFocus();
  g.mfgData.inputKeyPress('x');
  ASSERT_TRUE(g.Text.Visible());
  EXPECT_EQ(g.Text.Text(), "x");
  EXPECT_EQ(g.focusedChild(), &g.Text);
  EXPECT_EQ(g.Text.SelStart(), 1);
  EXPECT_EQ(g.Text.MaxLength(), 20);
  double x = 0, y = 0, w = 0, h = 0;
  ASSERT_TRUE(g.mfgData.GetCellPos(1, 1, x, y, w, h));
  EXPECT_EQ(g.Text.Left(), g.mfgData.Left() + x);
  EXPECT_EQ(g.Text.Top(), g.mfgData.Top() + y);
  EXPECT_EQ(g.Text.Width(), std::abs(g.mfgData.ColWidth(1)) - 18);
  EXPECT_EQ(g.Text.Height(), std::abs(g.mfgData.RowHeight(1)) - 18);
  EXPECT_GE(fake.processEventsCount, 1);
  key(27);
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
  EXPECT_EQ(cell(1, 1), "abc");
  EXPECT_EQ(state(1), "");
  // Space opens the box with the cell's text; Enter with no change moves to the next column.
  g.mfgData.inputKeyPress(' ');
  ASSERT_TRUE(g.Text.Visible());
  EXPECT_EQ(g.Text.Text(), "abc");
  key(13);
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_EQ(cell(1, 1), "abc");
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);
  // A locked cell opens nothing.
  g.CellLockMode(1, 2, 1);
  g.mfgData.inputKeyPress('y');
  EXPECT_FALSE(g.Text.Visible());
}

TEST_F(Editing, TheBoxFollowsTheSelectionAndClipboardKeysSuppressOneOpening) {
  g.SetFirst(2);
  column(1, "TEXT");
  g.addField3(2, "B", "TEXT", 0, "B", 0, {}, 0, {}, 0, 7, 1, 1, 1, 0, 1200);
  rows(2);
  g.SetText(1, 2, "second");
  g.mfgData.SetActiveCell(1, 1);
  ev.log.clear();
  g.mfgData.inputKeyDown(key::Right, 0);
  EXPECT_EQ(g.Text.Text(), "second");
  EXPECT_EQ(g.Text.MaxLength(), 7);
  EXPECT_TRUE(ev.log.contains("SelChange"));

  g.DOINGCLIP = true;
  g.mfgData.inputKeyPress(3);  // the control character of Ctrl+C
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_FALSE(g.DOINGCLIP);
  g.mfgData.inputKeyPress('q');
  EXPECT_TRUE(g.Text.Visible());
  EXPECT_EQ(g.Text.Text(), "q");
}

TEST_F(Editing, BlankCommitsKeepTheCursorOnlyWhereStopBlankMoveIsSetAndValidDataMayMoveIt) {
  g.SetFirst(4);
  column(1, "TEXT", 0, 0, 1, 0, /*stopBlankMove*/ 1);
  column(2, "TEXT");
  column(3, "TEXT");
  column(4, "TEXT");
  rows(2);
  commit(1, "");
  EXPECT_EQ(g.mfgData.ActiveCol(), 1);
  commit(1, "a");
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);
  commit(2, "");
  EXPECT_EQ(g.mfgData.ActiveCol(), 3);
  ev.onValidData = [&] { g.mfgData.SetActiveCell(1, 1); };
  commit(2, "b");
  EXPECT_EQ(g.mfgData.ActiveCol(), 1);
  EXPECT_EQ(cell(1, 2), "b");
}

TEST_F(Editing, TheLabelListShowsAndWritesTheWholeEntry) {
  g.SetFirst(3);
  column(1, "LABELLIST", 0, 0, 1, 0, 0, "a;b,c");
  column(2, "TEXT");
  column(3, "TEXT");
  rows(2);
  g.Matrix1.SetValue(1, 1, 7);  // beyond the last entry
  g.mfgData.SetActiveCell(1, 1);
  g.mfgData.inputKeyPress('z');
  ASSERT_TRUE(g.List1.Visible());
  EXPECT_EQ(g.List1.Items(), (QStringList{"a (b)", "c"}));
  EXPECT_EQ(g.List1.ListIndex(), 1);
  EXPECT_EQ(value(1, 1), 1);
  EXPECT_EQ(g.focusedChild(), &g.List1);
  const double rh = g.mfgData.RowHeight(1);
  EXPECT_EQ(g.List1.Height(), std::abs(rh) * 3);
  EXPECT_EQ(g.List1.Width(), std::abs(g.mfgData.ColWidth(1)) - 18);
  double x = 0, y = 0, w = 0, h = 0;
  g.mfgData.GetCellPos(1, 1, x, y, w, h);
  EXPECT_EQ(g.List1.Top(), g.mfgData.Top() + y + rh);
  g.List1.setListIndex(0);
  ev.log.clear();
  int16_t enter = 13, none = 0;
  g.List1_KeyDown(enter, none);
  EXPECT_EQ(cell(1, 1), "a (b)");
  EXPECT_EQ(value(1, 1), 0);
  EXPECT_TRUE(ev.log.contains("ValidData"));
  EXPECT_EQ(state(1), "");  // a choice does not mark the record
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);
  EXPECT_FALSE(g.List1.Visible());  // the surface took the focus back
}

TEST_F(Editing, TheListStandsOnTopOfTheCellWhenItWouldPassTheSurfacesBottom) {
  g.SetFirst(2);
  column(1, "LABELLIST", 0, 0, 1, 0, 0, "a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p");
  column(2, "DATE");
  rows(3);
  g.mfgData.SetActiveCell(1, 3);
  g.mfgData.inputKeyPress('1');
  ASSERT_TRUE(g.List1.Visible());
  const double rh = g.mfgData.RowHeight(3);
  double x = 0, y = 0, w = 0, h = 0;
  g.mfgData.GetCellPos(1, 3, x, y, w, h);
  EXPECT_EQ(g.List1.Top(), g.mfgData.Top() + y + rh - g.List1.Height() - rh);
  int16_t esc = 27, none = 0;
  g.List1_KeyDown(esc, none);
  EXPECT_FALSE(g.List1.Visible());
  EXPECT_EQ(cell(1, 3), "");
  // A picker that would pass the surface's bottom ends at it instead, at the cell's left.
  g.mfgData.SetActiveCell(2, 3);
  key(key::F2);
  ASSERT_TRUE(g.MonthView1.Visible());
  g.mfgData.GetCellPos(2, 3, x, y, w, h);
  ASSERT_GT(g.mfgData.Top() + y + rh + g.MonthView1.Height(), g.mfgData.Top() + g.mfgData.Height());
  EXPECT_EQ(g.MonthView1.Top() + g.MonthView1.Height(), g.mfgData.Top() + g.mfgData.Height());
  EXPECT_EQ(g.MonthView1.Left(), g.mfgData.Left() + x);
  g.mfgData.SetFocus();  // a picker that loses the focus closes and commits nothing
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_EQ(state(3), "");
}

TEST_F(Editing, F2OpensTheDatePickerEscapeCommitsTheOldTextAndAChoiceCommitsTheDate) {
  g.SetFirst(3);
  column(1, "DATE");
  column(2, "TEXT");
  column(3, "TEXT");
  rows(2);
  g.SetValue(1, 1, serial(2024, 3, 15));
  g.mfgData.SetActiveCell(1, 1);
  g.mfgData.inputKeyDown(key::Right, 0);
  g.mfgData.inputKeyDown(key::Left, 0);  // the box now holds the cell's text
  ASSERT_EQ(g.Text.Text(), "15/03/2567");
  key(key::F2);
  ASSERT_TRUE(g.MonthView1.Visible());
  EXPECT_EQ(g.focusedChild(), &g.MonthView1);
  EXPECT_EQ(g.MonthView1.Value(), serial(2024, 3, 15));
  double x = 0, y = 0, w = 0, h = 0;
  g.mfgData.GetCellPos(1, 1, x, y, w, h);
  EXPECT_EQ(g.MonthView1.Left(), g.mfgData.Left() + x);
  EXPECT_EQ(g.MonthView1.Top(), g.mfgData.Top() + y + g.mfgData.RowHeight(1));
  g.MonthView1.inputKeyDown(key::Escape, 0);
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_EQ(cell(1, 1), "15/03/2567");
  EXPECT_EQ(state(1), "E");  // Escape commits the old text all the same
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);

  g.mfgData.SetActiveCell(1, 1);
  g.mfgData.inputKeyDown(key::Right, 0);
  g.mfgData.inputKeyDown(key::Left, 0);
  key(key::F2);
  g.MonthView1.inputDblClick(serial(2024, 4, 2));
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_EQ(value(1, 1), serial(2024, 4, 2));
  EXPECT_EQ(cell(1, 1), "02/04/2567");
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
}

TEST_F(Editing, DateTimeAndPeriodPickersStartFromTodayAndCommitWhatIsChosen) {
  g.SetFirst(3);
  column(1, "DATETIME");
  column(2, "PERIOD");
  column(3, "TEXT");
  rows(2);
  fake.clock = serial(2024, 3, 15) + 0.75;
  g.mfgData.SetActiveCell(1, 1);
  key(key::F2);
  ASSERT_TRUE(g.DateTimeView1.Visible());
  EXPECT_EQ(g.DateTimeView1->Value(), fake.clock);
  EXPECT_EQ(g.DateTimeView1.Width(), DateTimeView::FixedWidth);
  g.DateTimeView1->Command2_Click();  // OK
  EXPECT_FALSE(g.DateTimeView1.Visible());
  EXPECT_EQ(cell(1, 1), "15/03/2567 18:00");
  EXPECT_DOUBLE_EQ(value(1, 1), fake.clock);

  g.mfgData.SetActiveCell(2, 1);
  key(key::F2);
  ASSERT_TRUE(g.MonthYearView1.Visible());
  EXPECT_EQ(g.MonthYearView1->EYear(), 2024);
  EXPECT_EQ(g.MonthYearView1->EMonth(), 3);
  g.MonthView1.setVisible(true);  // the choice hides the calendar, not itself
  g.MonthYearView1->List1.setListIndex(5);
  g.MonthYearView1->List1_DblClick();
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_FALSE(g.MonthYearView1.Visible());  // closed by the loss of focus
  EXPECT_EQ(cell(1, 2), "06/2567");
  EXPECT_EQ(value(1, 2), serial(2024, 6, 1));
}

TEST_F(Editing, F2OnATimeColumnCommitsItsTextAndOnACheckTurnsItOver) {
  g.SetFirst(3);
  column(1, "TIME");
  column(2, "CHECK");
  column(3, "TEXT");
  rows(3);
  g.mfgData.SetActiveCell(1, 1);
  g.Text.setText("9:15");
  key(key::F2);
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_FALSE(g.DateTimeView1.Visible());
  EXPECT_FALSE(g.MonthYearView1.Visible());
  EXPECT_EQ(cell(1, 1), "09:15");
  EXPECT_EQ(state(1), "E");
  EXPECT_EQ(g.mfgData.ActiveCol(), 2);

  key(key::F2);
  EXPECT_EQ(value(1, 2), 1);
  EXPECT_EQ(g.mfgData.ActiveRow(), 1);  // no move unless asked
  g.setEnableCheckAutoMoveNextRow(true);
  g.mfgData.SetActiveCell(2, 3);
  key(key::F2);
  EXPECT_EQ(value(3, 2), 1);
  EXPECT_EQ(g.mfgData.ActiveRow(), 1);  // from the last row to the first
  key(key::F2);
  EXPECT_EQ(value(1, 2), 0);
  EXPECT_EQ(g.mfgData.ActiveRow(), 2);
}

TEST_F(Editing, TheQuickFormHookAnswersEmptySoAShellColumnTakesNoTypedInput) {
  g.SetFirst(2);
  g.addField3(1, "S", "TEXT", 0, "S", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 1200, 0, 0, {}, 0, {}, "frmPick");
  column(2, "TEXT");
  rows(2);
  QString alias = "frmPick";
  EXPECT_EQ(g.SelectQuickForm(alias), "");
  g.mfgData.SetActiveCell(1, 1);
  g.mfgData.inputKeyPress('a');
  EXPECT_FALSE(g.Text.Visible());
  EXPECT_EQ(g.mfgData.ActiveCol(), 1);
}

// The box behind the pickers holds the active cell's text however the cursor got there: moved by
// the commit's next-column step, by code, or with the cell written by the application since.
TEST_F(Editing, TheBoxHoldsTheActiveCellsTextWhenTheCursorIsMovedByCode) {
  g.SetFirst(4);
  column(1, "DATE");
  column(2, "DATETIME");
  column(3, "TEXT");
  column(4, "TEXT");
  rows(2);
  g.SetValue(1, 2, 0);
  commit(1, "15/3/2567");
  ASSERT_EQ(g.mfgData.ActiveCol(), 2);
  EXPECT_EQ(g.Text.Text(), "");
  key(key::F2);
  ASSERT_TRUE(g.DateTimeView1.Visible());
  g.DateTimeView1->MonthView2.inputKeyDown(key::Escape, 0);
  EXPECT_EQ(cell(1, 2), "");
  EXPECT_EQ(value(1, 2), 0);

  g.SetText(2, 3, "second row");
  g.setRecord(2);
  g.setColumn(3);
  EXPECT_EQ(g.Text.Text(), "second row");
  // Written by the application while the cursor stands there: F2 on a time-less picker column
  // and Escape keep what the application wrote.
  g.mfgData.SetActiveCell(2, 2);
  g.SetValue(2, 2, serial(2024, 3, 15) + 0.4375);
  g.mfgData.inputKeyDown(key::F2, 0);  // F2 on the sheet
  ASSERT_TRUE(g.DateTimeView1.Visible());
  g.DateTimeView1->MonthView2.inputKeyDown(key::Escape, 0);
  EXPECT_EQ(cell(2, 2), "15/03/2567 10:30");
}

// A NUMBER's second reading goes through the language's own number text, which keeps 15
// significant digits.
TEST_F(Editing, ANumbersSecondReadingKeepsFifteenDigits) {
  g.SetFirst(3);
  column(1, "NUMBER", 0, 0);
  column(2, "NUMBER", 2, 2);
  column(3, "TEXT");
  rows(2);
  commit(1, "12345678901234567");
  EXPECT_EQ(value(1, 1), 12345678901234600.0);
  commit(2, "0.125");
  EXPECT_EQ(value(1, 2), 0.13);
  EXPECT_EQ(vb::CStr(12345678901234567.0), "1.23456789012346E+16");
  EXPECT_EQ(vb::CStr(0.1 + 0.2), "0.3");
  EXPECT_EQ(vb::CStr(-1234.5), "-1234.5");
}

// Enter in the date-time drop-down's calendar chooses its Value, which follows clicks on a day;
// the arrow keys move the calendar's day only.
TEST_F(Editing, EnterInTheDateTimeCalendarChoosesTheClickedValueNotTheArrowedDay) {
  g.SetFirst(2);
  column(1, "DATETIME");
  column(2, "TEXT");
  rows(2);
  g.SetValue(1, 1, serial(2024, 3, 15) + 0.5);
  g.mfgData.SetActiveCell(1, 1);
  key(key::F2);
  ASSERT_TRUE(g.DateTimeView1.Visible());
  g.DateTimeView1->MonthView2.inputKeyDown(key::Right, 0);
  g.DateTimeView1->MonthView2.inputKeyDown(key::Right, 0);
  EXPECT_EQ(g.DateTimeView1->MonthView2.Value(), serial(2024, 3, 17));
  g.DateTimeView1->MonthView2.inputKeyDown(key::Return, 0);
  EXPECT_FALSE(g.DateTimeView1.Visible());
  EXPECT_EQ(cell(1, 1), "15/03/2567 12:00");

  g.mfgData.SetActiveCell(1, 1);
  key(key::F2);
  g.DateTimeView1->MonthView2.inputClick(serial(2024, 3, 20));
  g.DateTimeView1->MonthView2.inputKeyDown(key::Left, 0);
  g.DateTimeView1->MonthView2.inputKeyDown(key::Return, 0);
  EXPECT_EQ(cell(1, 1), "20/03/2567 12:00");
}
