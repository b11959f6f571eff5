// The month-and-year drop-down, headless: the year on show carries the offset, the list follows
// the style, and only Enter and Escape reach the owner.
#include "controls/MonthYearView.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "frame/GridSurface.h"

#include <QDate>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

double day(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }

struct Recorder : MonthYearViewEvents {
  QStringList log;
  int resizes = 0;
  void Resize() override { ++resizes; }
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override {
    log << QStringLiteral("KeyDown %1 %2").arg(KeyCode).arg(Shift);
  }
  void MonthClick(int16_t EMonth, int16_t EYear) override {
    log << QStringLiteral("MonthClick %1 %2").arg(EMonth).arg(EYear);
  }
};

struct MonthYearViewTest : ::testing::Test {
  void SetUp() override {
    StandardHelper::setYearOffset(543);
    fake.clock = day(2024, 7, 9) + 0.5;
  }
  void TearDown() override { StandardHelper::setYearOffset(543); }
  FakePlatform fake;
  Recorder rec;
};

}  // namespace

TEST_F(MonthYearViewTest, StartsOnThisMonthAndInJanuaryOnDecember) {
  {
    MonthYearView v;
    EXPECT_EQ(v.EMonth(), 7);
    EXPECT_EQ(v.EYear(), 2024);
    EXPECT_EQ(v.Style(), 0);
    EXPECT_EQ(v.Text1.Text(), QStringLiteral("2567"));
    ASSERT_EQ(v.List1.ListCount(), 12);
    EXPECT_EQ(v.List1.List(0), QStringLiteral("มกราคม"));
    EXPECT_EQ(v.List1.List(11), QStringLiteral("ธันวาคม"));
    EXPECT_EQ(v.List1.ListIndex(), 6);
    EXPECT_EQ(v.Width(), 2000);
    EXPECT_EQ(v.Height(), 2670);
    EXPECT_EQ(v.List1.Height(), 2370);
    EXPECT_EQ(v.FullText(), QStringLiteral("กรกฎาคม 2567"));
  }
  fake.clock = day(2025, 1, 20);
  MonthYearView jan;
  EXPECT_EQ(jan.List1.ListIndex(), 11);
  EXPECT_EQ(jan.EMonth(), 12);  // the list's click has run
  EXPECT_EQ(jan.EYear(), 2025);
}

TEST_F(MonthYearViewTest, OutOfRangeMonthsAndYearsAreIgnoredAndTheYearWraps) {
  MonthYearView v;
  v.setEMonth(13);
  v.setEMonth(0);
  EXPECT_EQ(v.EMonth(), 7);
  v.setEMonth(2);
  EXPECT_EQ(v.List1.ListIndex(), 1);

  v.setEYear(10000);
  v.setEYear(0);
  EXPECT_EQ(v.EYear(), 2024);
  v.setEYear(9999);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("10542"));
  v.cmdNext_Click();
  EXPECT_EQ(v.EYear(), 1);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("544"));
  v.cmdPrevious.Click();
  EXPECT_EQ(v.EYear(), 9999);
  v.cmdNext.Click();
  v.cmdNext.Click();
  EXPECT_EQ(v.EYear(), 2);

  // The offset is the helper's: a Gregorian process shows the year as it is.
  StandardHelper::setYearOffset(0);
  v.setEYear(2024);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2024"));
}

TEST_F(MonthYearViewTest, StylesRedrawTheListAndCutTheFourthQuarter) {
  MonthYearView v;
  v.setListener(&rec);
  v.setStyle(2);
  EXPECT_EQ(v.EMonth(), 3);
  ASSERT_EQ(v.List1.ListCount(), 4);
  EXPECT_EQ(v.List1.List(0), QStringLiteral("ไตรมาสที่ 1"));
  EXPECT_EQ(v.List1.ListIndex(), 2);
  EXPECT_EQ(v.Height(), 1113);
  EXPECT_EQ(v.List1.Height(), 810);
  EXPECT_GE(rec.resizes, 1);

  v.setStyle(3);
  EXPECT_EQ(v.List1.List(3), QStringLiteral("Quarter 4"));
  EXPECT_EQ(v.FullText(), QStringLiteral("Quarter 3 2567"));

  // Style 1 shows the year alone; the buttons bring the offset back.
  v.setStyle(1);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2024"));
  EXPECT_EQ(v.Height(), 2670);
  v.setEYear(2024);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2567"));  // the setter adds it in every style
  v.setStyle(1);
  v.cmdNext_Click();
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2568"));

  // A style out of range is not taken, but the list is drawn again all the same.
  v.setStyle(7);
  EXPECT_EQ(v.Style(), 1);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2025"));

  // Any resize comes back to the width and the style's height, and says so.
  rec.resizes = 0;
  v.setStyle(2);
  v.setSize(5000, 300);
  EXPECT_EQ(v.Width(), 2000);
  EXPECT_EQ(v.Height(), 1113);
  EXPECT_GE(rec.resizes, 1);
}

TEST_F(MonthYearViewTest, ADoubleClickTellsWhatItsFirstClickSet) {
  MonthYearView v;
  v.setListener(&rec);
  // The host moves the list's selection as the mouse goes down; that is the list's click.
  v.List1.setListIndex(4);
  EXPECT_EQ(v.EMonth(), 5);
  v.List1_DblClick();
  EXPECT_EQ(rec.log, QStringList{QStringLiteral("MonthClick 5 2024")});

  // A click on the row already selected sets the month from it again.
  v.setValue(day(2030, 11, 1));
  EXPECT_EQ(v.EMonth(), 11);
  EXPECT_EQ(v.List1.ListIndex(), 4);  // no display update
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2567"));
  v.List1_Click();
  v.List1_DblClick();
  EXPECT_EQ(rec.log.last(), QStringLiteral("MonthClick 5 2030"));
}

TEST_F(MonthYearViewTest, OnlyEnterAndEscapeArePassedOn) {
  MonthYearView v;
  v.setListener(&rec);
  for (int16_t code : {int16_t(key::Return), int16_t(key::Escape), int16_t(key::Down), int16_t('A'),
                       int16_t(key::F1 + 1)}) {
    int16_t k = code, s = shift::Ctrl;
    v.List1_KeyDown(k, s);
    k = code;
    v.cmdNext_KeyDown(k, s);
    k = code;
    v.cmdPrevious_KeyDown(k, s);
  }
  EXPECT_EQ(rec.log, (QStringList{"KeyDown 13 2", "KeyDown 13 2", "KeyDown 13 2", "KeyDown 27 2", "KeyDown 27 2",
                                  "KeyDown 27 2"}));
}

TEST_F(MonthYearViewTest, DatesInAndOut) {
  MonthYearView v;
  v.setEMonth(2);
  v.setEYear(2024);
  EXPECT_EQ(v.Value(), day(2024, 2, 1));
  EXPECT_EQ(v.GETDate(), day(2024, 2, 1));  // "1/ก.พ./2567" read back
  v.setLanguageID(1);
  EXPECT_EQ(v.GETDate(), day(2024, 2, 1));  // "1/Feb/2567"

  EXPECT_EQ(v.SetDate(QDate(2023, 10, 31)), 0.0);
  EXPECT_EQ(v.EMonth(), 10);
  EXPECT_EQ(v.EYear(), 2023);
  EXPECT_EQ(v.List1.ListIndex(), 9);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2566"));
  v.SetDate(day(2001, 5, 17) + 0.75);
  EXPECT_EQ(v.EMonth(), 5);
  EXPECT_EQ(v.Text1.Text(), QStringLiteral("2544"));
  v.SetDate(QStringLiteral("03/12/2560"));
  EXPECT_EQ(v.EMonth(), 12);
  EXPECT_EQ(v.EYear(), 2017);
  // A text that is no date changes nothing.
  v.SetDate(QStringLiteral("not a date"));
  EXPECT_EQ(v.EMonth(), 12);
  EXPECT_EQ(v.EYear(), 2017);

  v.setText(QStringLiteral("kept"));
  EXPECT_EQ(v.Text(), QStringLiteral("kept"));
  PropertyBag bag;
  v.WriteProperties(bag);
  EXPECT_TRUE(bag.names().isEmpty());  // nothing is persisted
}
