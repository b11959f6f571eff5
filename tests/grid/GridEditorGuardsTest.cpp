// A statement that fails skips itself alone: the ones after it run on what the variables held, and
// no public method lets a failure out. Each case puts a failing statement in the middle of a
// method and looks at what must still have happened after it.
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <gtest/gtest.h>

#include <QDate>
#include <iterator>

using namespace tq7;

namespace {

struct Log : GridEditorEvents {
  int gridDataChange = 0, validData = 0;
  QStringList keys;
  void GridDataChange() override { ++gridDataChange; }
  void ValidData() override { ++validData; }
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override { keys << QStringLiteral("%1/%2").arg(KeyCode).arg(Shift); }
};

struct Guards : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  Log ev;
  Guards() { g.setListener(&ev); }

  // CanEdit 1, CanDuplicate 1, CanBlank 1 unless told; width 1200.
  void column(int c, const char* type, int16_t displayDecimal = 2, const QString& labels = {}, double defaultValue = 0,
              int16_t canEdit = 1) {
    g.addField3(c, QStringLiteral("F%1").arg(c), QString::fromUtf8(type), 0, QStringLiteral("C%1").arg(c),
                displayDecimal, {}, 0, {}, 0, 20, 1, 1, canEdit, 0, 1200, 0, 0, labels, defaultValue, {}, {}, {}, 0, 0,
                {}, {}, 0);
  }
  void editMode() {
    g.setEditStatus(true);
    g.mfgData.setVisible(true);
  }
  void commit(int col, const QString& text, int row = 1) {
    g.mfgData.SetActiveCell(col, row);
    g.Text.setText(text);
    int16_t k = key::Return, s = 0;
    g.Text_KeyDown(k, s);
  }
  QString cell(int row, int col) const { return g.TextMatrix(row, col); }
  SpreadSurface::CellLook look(int row, int col) const { return g.mfgData.look(col, row); }
};

double serial(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }

}  // namespace

// An entry whose width does not read counts it as 0 and hides its column; the entries around it
// are applied as written.
TEST_F(Guards, AFormatEntryWhoseWidthDoesNotReadHidesItsColumn) {
  g.SetFirst(5);
  for (int c = 1; c <= 5; ++c) column(c, "TEXT");
  ASSERT_FALSE(g.IsColHidden(3));

  g.ApplyColumnFormat(QStringLiteral("2,15;3,abc;4,900"));
  EXPECT_TRUE(g.IsColHidden(2));
  EXPECT_EQ(g.mfgData.ColWidth(2), 0);
  EXPECT_TRUE(g.IsColHidden(3));
  EXPECT_EQ(g.mfgData.ColWidth(3), 0);
  EXPECT_FALSE(g.IsColHidden(4));  // the entry after the failure still runs
  EXPECT_EQ(g.mfgData.ColWidth(4), 900);

  // The same after a readable width, and with the width missing altogether.
  g.ApplyColumnFormat(QStringLiteral("1,1500;5,x"));
  EXPECT_FALSE(g.IsColHidden(1));
  EXPECT_EQ(g.mfgData.ColWidth(1), 1500);
  EXPECT_TRUE(g.IsColHidden(5));
  EXPECT_EQ(g.mfgData.ColWidth(5), 0);
  g.ApplyColumnFormat(QStringLiteral("4"));
  EXPECT_TRUE(g.IsColHidden(4));
}

// The alignment of a new row's cell is two statements, and the note and colour resets after them
// run whatever the alignment texts say.
TEST_F(Guards, FillINI2ResetsNoteAndColoursWhenAnAlignmentDoesNotConvert) {
  g.SetFirst(3);
  column(1, "TEXT");
  column(2, "NUMBER");
  g.setTextMatrix(attr::HAlign, 1, QStringLiteral("70000"));
  g.setTextMatrix(attr::VAlign, 1, QStringLiteral("1"));
  g.setTextMatrix(attr::HAlign, 2, QStringLiteral("2"));
  g.setTextMatrix(attr::VAlign, 2, QStringLiteral("99999"));
  for (int c = 1; c <= 2; ++c) {
    g.mfgData.setRow(1);
    g.mfgData.setCol(c);
    g.mfgData.setCellNote(QStringLiteral("note"));
    g.mfgData.setBackColor(0x00FF00);
    g.mfgData.setForeColor(0x0000FF);
    g.mfgData.setTypeVAlign(0);
  }
  g.setTextMatrix(attr::DefaultText, 1, QStringLiteral("abc"));

  g.FillINI2(1);
  for (int c = 1; c <= 2; ++c) {
    SCOPED_TRACE(c);
    const SpreadSurface::CellLook lk = look(1, c);
    EXPECT_FALSE(lk.hasNote);
    EXPECT_EQ(lk.back, syscolor::Window);
    EXPECT_EQ(lk.fore, syscolor::WindowText);
  }
  EXPECT_EQ(look(1, 1).vAlign, 1);  // the vertical alignment after the failed horizontal one
  EXPECT_EQ(look(1, 2).hAlign, 2);
  EXPECT_EQ(cell(1, 1), "abc");  // and the default after the look
}

// A default that cannot be shown: each write of the default is a statement of its own.
TEST_F(Guards, FillINI2WritesEachDefaultStatementOnItsOwn) {
  g.SetFirst(3);
  column(1, "LABELLIST", 0, QStringLiteral("a;first,b;second,c;third"));
  column(2, "DATE");
  column(3, "PERIOD");
  g.setTextMatrix(attr::DefaultValue, 1, QStringLiteral("99999"));  // no 16-bit position
  g.Matrix1.SetValue(1, 1, 2);
  ASSERT_EQ(cell(1, 1), "c");

  // A date default that has no text: the value is written and the empty-date test still runs
  // on the text the cell has.
  g.setTextMatrix(attr::DefaultValue, 2, QStringLiteral("999999999"));
  g.setTextMatrix(attr::DefaultValue, 3, QStringLiteral("999999999"));
  g.setTextMatrix(1, 2, QStringLiteral("01/01/2442"));  // 1899 + 543
  g.setTextMatrix(1, 3, QStringLiteral("01/2442"));

  g.FillINI2(1);
  // The position is converted in both its statements, and both fail; the columns after it
  // still get their defaults.
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), 2);
  EXPECT_EQ(cell(1, 1), "c");
  EXPECT_EQ(g.Matrix1.GetValue(1, 2), 999999999);
  EXPECT_EQ(cell(1, 2), "");
  EXPECT_EQ(g.Matrix1.GetValue(1, 3), 999999999);
  EXPECT_EQ(cell(1, 3), "");
}

TEST_F(Guards, SetValueWritesTheUnroundedValueWhenTheDecimalsDoNotConvert) {
  g.SetFirst(3);
  column(1, "NUMBER");
  column(2, "NUMBER");
  column(3, "YEAR");
  g.setTextMatrix(attr::DisplayDecimal, 2, QStringLiteral("70000"));
  g.setTextMatrix(attr::DisplayDecimal, 3, QStringLiteral("abc"));  // no number: 0 decimals, no failure
  const int before = ev.gridDataChange;

  EXPECT_EQ(g.SetValue(1, 2, 1.23456), 1);
  EXPECT_EQ(g.GETValue(1, 2), 1.23456);
  EXPECT_EQ(ev.gridDataChange, before + 1);
  // The columns beside it round as declared.
  EXPECT_EQ(g.SetValue(1, 1, 1.23456), 1);
  EXPECT_EQ(g.GETValue(1, 1), 1.23);
  EXPECT_EQ(cell(1, 1), "1.23");
  EXPECT_EQ(g.SetValue(1, 3, 2017.6), 1);
  EXPECT_EQ(g.GETValue(1, 3), 2018);
  EXPECT_EQ(ev.gridDataChange, before + 3);
  // Out of range is still no write at all.
  EXPECT_EQ(g.SetValue(9, 2, 1), 0);
  EXPECT_EQ(ev.gridDataChange, before + 3);
}

// A date that has no text keeps the cell's old text, and the empty-date test still runs on it;
// the event comes all the same.
TEST_F(Guards, ARenderingThatFailsStillRunsTheEmptyDateTest) {
  g.SetFirst(3);
  column(1, "DATE");
  column(2, "PERIOD");
  column(3, "DATE");
  g.setTextMatrix(1, 1, QStringLiteral("31/12/2442"));
  g.setTextMatrix(1, 2, QStringLiteral("12/9431"));  // 8888 + 543
  g.setTextMatrix(1, 3, QStringLiteral("15/03/2567"));
  const int before = ev.gridDataChange;

  EXPECT_EQ(g.SetValue(1, 1, 1e9), 1);
  EXPECT_EQ(cell(1, 1), "");
  EXPECT_EQ(g.GETValue(1, 1), 1e9);  // the value stays in Matrix1
  EXPECT_EQ(g.SetValue(1, 2, -1e9), 1);
  EXPECT_EQ(cell(1, 2), "");
  // A text without the fixed years stays as it was.
  EXPECT_EQ(g.SetValue(1, 3, 1e9), 1);
  EXPECT_EQ(cell(1, 3), "15/03/2567");
  EXPECT_EQ(ev.gridDataChange, before + 3);
  // And a date that has its text renders as before.
  EXPECT_EQ(g.SetValue(1, 3, serial(2024, 3, 15)), 1);
  EXPECT_EQ(cell(1, 3), "15/03/2567");
}

// A year too large for a whole number leaves the year 0: 0 is written to Matrix1 and the
// canonical text of 0 goes into the cell, and the commit goes on to the end.
TEST_F(Guards, AYearCommitThatOverflowsWritesZeroAndItsCanonicalText) {
  g.SetFirst(3);
  column(1, "YEAR", 0);
  column(2, "TEXT");
  editMode();
  commit(1, QStringLiteral("2560"));
  ASSERT_EQ(g.Matrix1.GetValue(1, 1), 2017);
  ASSERT_EQ(cell(1, 1), "2560");
  const int valid = ev.validData;

  commit(1, QStringLiteral("99999999999"));
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), 0);
  EXPECT_EQ(cell(1, 1), QString::number(StandardHelper::YearOffset()));
  EXPECT_EQ(ev.validData, valid + 1);
  EXPECT_EQ(g.Column(), 2);  // moved on to the next input column
}

// Attribute texts outside the 16-bit range reach the key paths; none of them lets the overflow
// out, and each counts the flag as 0.
TEST_F(Guards, FlagsOutsideTheSixteenBitRangeThrowNowhere) {
  g.SetFirst(4);
  column(1, "TEXT");
  column(2, "TEXT");
  column(3, "TEXT");
  column(4, "TEXT");
  editMode();
  EXPECT_EQ(g.SetText(-986, 2, QStringLiteral("70000")), 1);
  g.setTextMatrix(1, 2, QStringLiteral("kept"));
  fake.clipboard = QStringLiteral("pasted");

  // Ctrl+V on column 2: no paste, nothing thrown, the grid still answers.
  g.mfgData.SetActiveCell(2, 1);
  int16_t k = 86, s = 2;
  EXPECT_NO_THROW(g.RunAction_KeyDown(k, s));
  EXPECT_EQ(cell(1, 2), "kept");
  EXPECT_FALSE(g.DOINGCLIP);

  // The walk to the next input column passes over column 2.
  g.mfgData.SetActiveCell(1, 1);
  EXPECT_NO_THROW(g.NextColumnInput());
  EXPECT_EQ(g.Column(), 3);

  // A typed character opens no editor on it, F2 relays as on any plain column, F4 opens the box
  // read only.
  g.mfgData.SetActiveCell(2, 1);
  int16_t ch = 'x';
  EXPECT_NO_THROW(g.mfgData.inputKeyPress(ch));
  EXPECT_FALSE(g.Text.Visible());
  int16_t f4 = key::F4, none = 0;
  fake.answers.push_back(QStringLiteral("typed"));
  EXPECT_NO_THROW(g.RunAction_KeyDown(f4, none));
  EXPECT_EQ(fake.count(QStringLiteral("multiLineInput")), 1);

  // The commit's last step: a StopBlankMove that does not convert counts as 0, and the cursor
  // moves on from a blank cell.
  g.setTextMatrix(attr::StopBlankMove, 1, QStringLiteral("40000"));
  EXPECT_NO_THROW(commit(1, QString()));
  EXPECT_EQ(g.Column(), 3);
  EXPECT_EQ(g.TextMatrix(1, attr::RecordState), "E");

  // F2 in the text box of a column whose CanEdit does not convert commits its text.
  g.SetText(-986, 4, QStringLiteral("-40000"));
  g.mfgData.SetActiveCell(4, 1);
  g.Text.setText(QStringLiteral("f2"));
  int16_t f2 = key::F2;
  EXPECT_NO_THROW(g.Text_KeyDown(f2, none));
  EXPECT_EQ(cell(1, 4), "f2");
}

// A picker's value that has no text leaves the box as it was; the commit behind it still runs.
TEST_F(Guards, APickerValueWithoutTextStillCommits) {
  g.SetFirst(2);
  column(1, "DATETIME");
  column(2, "TEXT");
  editMode();
  g.mfgData.SetActiveCell(1, 1);
  g.Text.setText(QString());
  const int valid = ev.validData;
  EXPECT_NO_THROW(g.DateTimeView1_DateClick(1e9));
  EXPECT_FALSE(g.DateTimeView1.Visible());
  EXPECT_EQ(g.TextMatrix(1, attr::RecordState), "E");
  EXPECT_EQ(ev.validData, valid + 1);
  EXPECT_NO_THROW(g.MonthView1_DateDblClick(-1e9));
}

// A period picker opened on a value it cannot show still takes the grid's language and opens.
TEST_F(Guards, APickerOpensOnAValueItCannotShow) {
  g.SetFirst(2);
  column(1, "PERIOD");
  column(2, "TEXT");
  editMode();
  g.MonthYearView1->setLanguageID(1);  // the grid's own is 0
  g.MonthYearView1.setWidth(0);
  g.Matrix1.SetValue(1, 1, 1e9);
  g.mfgData.SetActiveCell(1, 1);
  int16_t f2 = key::F2, none = 0;
  EXPECT_NO_THROW(g.RunAction_KeyDown(f2, none));
  EXPECT_TRUE(g.MonthYearView1.Visible());
  EXPECT_EQ(g.MonthYearView1->LanguageID(), 0);
  EXPECT_EQ(g.MonthYearView1.Width(), g.MonthYearView1->Width());
}

// Every attribute of every column outside the 16-bit range, and every key with every shift
// through the dispatcher and the surface: nothing comes out of a public method.
TEST_F(Guards, NoKeyLetsAFailureOutWhateverTheAttributeTexts) {
  const char* types[] = {"TEXT", "NUMBER", "ABSNUMBER", "YEAR", "DATE", "PERIOD", "DATETIME", "TIME",
                         "HOUR", "DAYTIME", "YESNO", "CHECK", "LABELLIST", "COLOR", "AUTONUMBER"};
  const int n = int(std::size(types));
  g.SetFirst(n);
  for (int c = 1; c <= n; ++c) column(c, types[c - 1], 2, QStringLiteral("a;x,b;y"));
  for (int c = 1; c <= n; ++c)
    for (int r = attr::GroupCaption2; r <= attr::NoteHeight; ++r)
      if (r != attr::FieldType && r != attr::Labels && r != attr::LabelDataList && r != attr::Caption &&
          r != attr::ShellCommand)
        g.setTextMatrix(r, c, QStringLiteral("70000"));
  g.cmdAdd_Click();
  editMode();
  fake.clipboard = QStringLiteral("99999999999");
  int opened = 0;
  auto sweep = [&] {
    for (int c = 1; c <= n; ++c) {
      SCOPED_TRACE(types[c - 1]);
      for (int16_t code = 1; code < 256; ++code) {
        for (int16_t shift = 0; shift < 4; ++shift) {
          g.mfgData.SetActiveCell(c, 1);
          int16_t k = code, s = shift;
          EXPECT_NO_THROW(g.RunAction_KeyDown(k, s)) << code << "/" << shift;
          if (g.Text.Visible()) {
            int16_t e = key::Escape, none = 0;
            EXPECT_NO_THROW(g.Text_KeyDown(e, none));
          }
        }
        g.mfgData.SetActiveCell(c, g.Rows());  // F5 has removed row 1; F3 added live rows below
        EXPECT_NO_THROW(g.mfgData.inputKeyPress(code)) << code;
        if (g.Text.Visible()) {
          ++opened;
          g.Text.setText(QStringLiteral("99999999999"));
          int16_t enter = key::Return, none = 0;
          EXPECT_NO_THROW(g.Text_KeyDown(enter, none)) << code;
        }
      }
      EXPECT_NO_THROW(g.NextColumnInput());
      EXPECT_NO_THROW(g.SetValue(1, c, 1e300));
      EXPECT_NO_THROW(g.FillINI2(1));
      EXPECT_NO_THROW(g.CheckRecordStatus(1));
      EXPECT_NO_THROW(g.GETDate(1, c));
    }
  };
  sweep();
  EXPECT_EQ(opened, 0);  // no column takes input
  // Editable columns, every other attribute still out of range: the editors open and commit.
  for (int c = 1; c <= n; ++c) g.setTextMatrix(attr::CanEdit, c, QStringLiteral("1"));
  sweep();
  EXPECT_GT(opened, 0);
  EXPECT_NO_THROW(g.GridReady2(false));
  EXPECT_NO_THROW(g.CheckData());
  EXPECT_GE(g.Rows(), 2);
}
