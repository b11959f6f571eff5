#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <gtest/gtest.h>

using namespace tq7;

namespace {

// A grid of `rows` records over the columns a test declares.
struct Records : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  void rows(int n) {
    for (int i = 1; i < n; ++i) g.cmdAppend_Click();
  }
};

}  // namespace

TEST_F(Records, StatusIsAComparisonOfCountsWithItsWantedConsequences) {
  EXPECT_EQ(g.CheckRecordStatus(1), 0);  // no columns at all
  g.SetFirst(4);
  // One optional text column and no key: filled or not, the record counts as empty.
  g.addField3(1, "A", "TEXT", 0, "A", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.addField3(2, "B", "TEXT", 0, "B", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  rows(2);
  EXPECT_EQ(g.CheckRecordStatus(1), 0);
  g.SetText(1, 1, "x");
  EXPECT_EQ(g.CheckRecordStatus(1), 0);
  g.SetText(1, 2, "y");
  EXPECT_EQ(g.CheckRecordStatus(1), -3);  // two optional columns filled
  // One required number with limits and nothing else required: a broken limit is one error against
  // one required column, so the record counts as empty, and with two optional columns filled, -3.
  g.addField3(3, "N", "NUMBER", 0, "N", 0, ">", 0, "<", 10, 10, 1, 0, 1);
  g.SetValue(1, 3, 12);
  EXPECT_EQ(g.CheckRecordStatus(1), -3);
  g.SetText(1, 2, "");
  EXPECT_EQ(g.CheckRecordStatus(1), 0);
  // A second required column, filled: now the errors are fewer than the required columns.
  g.SetFirst(5);
  g.addField3(1, "A", "TEXT", 0, "A", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.addField3(3, "N", "NUMBER", 0, "N", 0, ">", 0, "<", 10, 10, 1, 0, 1);
  g.addField3(4, "R", "TEXT", 0, "R", 0, {}, 0, {}, 0, 10, 1, 0, 1);
  g.SetText(1, 4, "r");
  g.SetValue(1, 3, 12);
  EXPECT_EQ(g.CheckRecordStatus(1), -2);
  g.SetValue(1, 3, 5);
  EXPECT_EQ(g.CheckRecordStatus(1), 1);
  g.SetValue(1, 3, 0);  // one error: the limits, which 0 would break too, are not looked at
  EXPECT_EQ(g.CheckRecordStatus(1), -2);
  // A key column left blank.
  g.addField3(5, "K", "TEXT", 1, "K", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.SetValue(1, 3, 5);
  EXPECT_EQ(g.CheckRecordStatus(1), -1);
  g.SetText(1, 5, "k1");
  EXPECT_EQ(g.CheckRecordStatus(1), 1);
  g.SetValue(1, 3, 12);
  EXPECT_EQ(g.CheckRecordStatus(1), -2);
  g.SetText(1, 5, "");
  EXPECT_EQ(g.CheckRecordStatus(1), -3);
}

TEST_F(Records, RequiredTimesMayBeZeroAndOptionalLimitsAreNeverChecked) {
  g.SetFirst(3);
  g.addField3(1, "T", "TIME", 0, "T", 0, {}, 0, {}, 0, 0, 1, 0, 1);
  g.addField3(2, "O", "NUMBER", 0, "O", 0, "<", 5, {}, 0, 10, 1, 1, 1);
  g.addField3(3, "R", "TEXT", 0, "R", 0, {}, 0, {}, 0, 10, 1, 0, 1);
  g.SetText(1, 3, "filled");
  g.SetValue(1, 2, 99);  // breaks its limit, but it is optional
  EXPECT_EQ(g.CheckRecordStatus(1), 1);
}

TEST_F(Records, DuplicatesIgnoreCaseSkipDeletedRecordsAndNeverMatchTextAgainstNumbers) {
  g.SetFirst(3);
  g.addField3(1, "Code", "TEXT", 0, "Code", 0, {}, 0, {}, 0, 10, 0, 0, 1);
  g.addField3(2, "Qty", "NUMBER", 0, "Qty", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.addField3(3, "Yes", "YESNO", 0, "Yes", 0, {}, 0, {}, 0, 0, 1, 0, 1);  // required, never failing
  rows(3);
  g.SetText(1, 1, "abc");
  g.SetText(2, 1, "ABC");
  g.SetText(3, 1, "abc ");
  EXPECT_TRUE(g.CheckDulicate(1, QStringLiteral("abc"), 1));
  EXPECT_EQ(g.CheckRecordStatus(1), -2);
  EXPECT_EQ(g.CheckRecordStatus(2), -2);
  EXPECT_FALSE(g.CheckDulicate(1, QStringLiteral("ABC "), 3));  // no trimming
  g.setTextMatrix(2, -988, "D");
  EXPECT_EQ(g.CheckRecordStatus(1), 1);
  EXPECT_FALSE(g.CheckDulicate(1, QStringLiteral("abc"), 1));
  // Numbers compare by value; a text never equals one.
  g.SetValue(1, 2, 7);
  g.SetValue(3, 2, 7);
  EXPECT_TRUE(g.CheckDulicate(2, 7.0, 1));
  EXPECT_FALSE(g.CheckDulicate(2, QStringLiteral("7"), 1));
  EXPECT_TRUE(g.CheckDulicate(2, 7.0));  // nothing skipped: record 1 itself counts
  g.SetValue(1, 3, 1);
  g.SetValue(3, 3, 1);
  EXPECT_FALSE(g.CheckDulicate(3, QStringLiteral("Y"), 1));  // the status check passes text here
}

TEST_F(Records, CheckDataNamesTheLastOffendingRowsFirstColumn) {
  g.SetFirst(3);
  g.addField3(1, "Key", "TEXT", 1, "Key", 0, {}, 0, {}, 0, 10, 0, 0, 1);
  g.addField3(2, "Name", "TEXT", 0, QString::fromUtf8("ชื่อ"), 0, {}, 0, {}, 0, 10, 1, 0, 1);
  g.addField3(3, "Note", "TEXT", 0, "Note", 0, {}, 0, {}, 0, 10, 1, 2, 1);
  rows(4);
  for (int r = 1; r <= 4; ++r) g.setTextMatrix(r, -988, "E");
  g.SetText(1, 1, "k1");   // Name and Note blank
  g.SetText(2, 1, "k2");
  g.SetText(2, 2, "n2");   // Note blank
  g.SetText(3, 1, "");     // no key: not looked at
  g.setTextMatrix(4, -988, "");  // never confirmed: not looked at
  EXPECT_EQ(g.CheckData(), QString::fromUtf8("กรุณาระบุ Note ให้ถูกต้อง"));
  EXPECT_EQ(g.ValidData(), "");
  g.SetText(2, 3, "x");
  EXPECT_EQ(g.CheckData(), QString::fromUtf8("กรุณาระบุ ชื่อ ให้ถูกต้อง"));
}

TEST_F(Records, ErrorMessagesMoveTheCursorAndHonourTheForcedLanguage) {
  g.SetFirst(3);
  g.addField3(2, "Qty", "NUMBER", 0, QString::fromUtf8("จำนวน"));
  rows(5);
  g.setRecord(2);
  EXPECT_EQ(g.GETErrorMessage(0, 0, 0), QString::fromUtf8("กรุณาใส่ข้อมูลในตาราง ก่อนการบันทึก"));
  EXPECT_EQ(g.GETErrorMessage(0, 0, 0, 5), "Please fill some record before save.");
  EXPECT_EQ(g.Record(), 2);
  EXPECT_EQ(g.GETErrorMessage(0, 2, 5, 1),
            QString::fromUtf8("Please Check [ จำนวน ] \r\n First Record (if only 1 record) or On highlight Record / "
                              "At Column Cursor appear"));
  EXPECT_EQ(g.Record(), 2);  // record 0: the cursor stays
  EXPECT_EQ(g.mfgData.Col(), 2);
  EXPECT_TRUE(g.GETErrorMessage(4, 2, 5).startsWith(QString::fromUtf8("กรุณาตรวจสอบ [ จำนวน ] \r\n บรรทัดแรก")));
  EXPECT_EQ(g.Record(), 4);
}

TEST_F(Records, CleanRecordErasesAndPutsTheDefaultsBack) {
  g.SetFirst(2);
  g.addField3(1, "Qty", "NUMBER", 0, "Qty", 2, {}, 0, {}, 0, 10, 1, 1, 1, 0, 800, 0, 0, {}, 3);
  g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 800, 0, 0, {}, 0, "none");
  rows(2);
  g.SetValue(2, 1, 99);
  g.SetText(2, 2, "x");
  g.setTextMatrix(2, -988, "E");
  EXPECT_EQ(g.CleanRecord(2), 0);
  EXPECT_EQ(g.GETValue(2, 1), 3);
  EXPECT_EQ(g.GETText(2, 2), "none");
  EXPECT_EQ(g.TextMatrix(2, -988), "E");  // the state stays
}

// CheckDulicate compares other types as variants: a date by its serial, True as -1, a text never
// equal to a number. GETDate gives the zero date for a value that names no date.
TEST_F(Records, DuplicatesOfDatesAndBooleansAndDatesOutOfRange) {
  g.SetFirst(3);
  g.addField3(1, "D", "DATE", 0, "D", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.addField3(2, "N", "NUMBER", 0, "N", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  g.addField3(3, "T", "TEXT", 0, "T", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  rows(3);
  const QDate day(2024, 3, 15);
  g.SetValue(1, 1, vb::dateToSerial(day));
  g.SetValue(2, 1, 0);
  g.SetValue(3, 1, 0);
  EXPECT_TRUE(g.CheckDulicate(1, QVariant(day), 2));
  EXPECT_FALSE(g.CheckDulicate(1, QVariant(day), 1));
  EXPECT_FALSE(g.CheckDulicate(1, QVariant(QDate(2024, 3, 16))));
  EXPECT_TRUE(g.CheckDulicate(1, QVariant(QDateTime(day, QTime(0, 0), Qt::UTC))));
  g.SetValue(2, 2, -1);
  EXPECT_TRUE(g.CheckDulicate(2, QVariant(true)));
  g.SetValue(2, 2, 1);
  EXPECT_FALSE(g.CheckDulicate(2, QVariant(true)));
  EXPECT_FALSE(g.CheckDulicate(2, QVariant(QStringLiteral("1"))));

  g.SetValue(1, 2, 1e12);
  EXPECT_EQ(g.GETDate2(1, 2), 0);
  EXPECT_EQ(g.GETDate(1, 2), 0);
  g.SetValue(1, 2, -1e7);
  EXPECT_EQ(g.GETDate2(1, 2), 0);
  g.Matrix1.SetValue(1, 2, 45366.25);
  EXPECT_EQ(g.GETDate2(1, 2), 45366.25);
}

// The running numbers are written over a text the application put into column 0, whether by an
// added row or by switching the numbers on again.
TEST_F(Records, RunningNumbersWriteOverTextInTheRowHeader) {
  g.SetFirst(1);
  g.addField3(1, "T", "TEXT", 0, "T", 0, {}, 0, {}, 0, 10, 1, 1, 1);
  rows(3);
  ASSERT_EQ(g.TextMatrix(2, 0), "2");
  g.setTextMatrix(2, 0, "X");
  g.cmdAppend_Click();
  EXPECT_EQ(g.TextMatrix(2, 0), "2");
  EXPECT_EQ(g.TextMatrix(4, 0), "4");
  g.setTextMatrix(3, 0, "Y");
  g.setEnableNumber(true);
  EXPECT_EQ(g.TextMatrix(3, 0), "3");
}
