// The date-time drop-down, headless: the calendar and the time box make one value, and the
// owner hears DateClick only when the user has chosen.
#include "controls/DateTimeView.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "frame/GridSurface.h"

#include <QDate>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

double day(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }
double at(int y, int m, int d, int hh, int mm) { return day(y, m, d) + vb::timeSerial(hh, mm, 0); }

// Records the events as lines, in order; can swallow keys.
struct Recorder : DateTimeViewEvents {
  QStringList log;
  std::vector<double> clicked;
  bool swallow = false;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override {
    log << QStringLiteral("KeyDown %1 %2").arg(KeyCode).arg(Shift);
    if (swallow) KeyCode = 0;
  }
  void DateClick(double DateClicked) override {
    log << QStringLiteral("DateClick");
    clicked.push_back(DateClicked);
  }
};

struct DateTimeViewTest : ::testing::Test {
  void SetUp() override {
    StandardHelper::setYearOffset(543);
    fake.clock = at(2024, 3, 15, 9, 45) + 17.0 / 86400;  // 15 March 2024 09:45:17
  }
  FakePlatform fake;
  Recorder rec;
};

}  // namespace

TEST_F(DateTimeViewTest, StartsAtTheClockWithAFixedSize) {
  DateTimeView v;
  v.setListener(&rec);
  EXPECT_EQ(v.Value(), fake.clock);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 3, 15));
  EXPECT_EQ(v.MonthView2.Month(), 3);
  EXPECT_EQ(v.MonthView2.Year(), 2024);
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("09:45"));
  EXPECT_EQ(v.Label1.Caption(), QStringLiteral("Time:"));
  EXPECT_EQ(v.Command1.Caption(), QStringLiteral("Now"));
  EXPECT_EQ(v.Command2.Caption(), QStringLiteral("OK"));

  v.setSize(6000, 900);
  EXPECT_EQ(v.Width(), 2460);
  EXPECT_EQ(v.Height(), 2640);
  EXPECT_EQ(v.picDateTime.Width(), 2460);
  EXPECT_EQ(v.picDateTime.Height(), 2640);
  // Every piece stands inside the frame.
  for (Widget* w : v.children()) {
    EXPECT_LE(w->Left() + w->Width(), 2460) << w->Name().toStdString();
    EXPECT_LE(w->Top() + w->Height(), 2640) << w->Name().toStdString();
  }
  EXPECT_TRUE(rec.log.isEmpty());

  // Setting the value shows it in both halves and tells nobody.
  v.setValue(at(2023, 12, 31, 23, 5));
  EXPECT_EQ(v.MonthView2.Value(), day(2023, 12, 31));
  EXPECT_EQ(v.MonthView2.Month(), 12);
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("23:05"));
  EXPECT_EQ(v.Value(), at(2023, 12, 31, 23, 5));
  EXPECT_TRUE(rec.log.isEmpty());
}

TEST_F(DateTimeViewTest, AClickCombinesTheHalvesAndADoubleClickChooses) {
  DateTimeView v;
  v.setListener(&rec);
  v.txtTime.setText(QStringLiteral("14:30"));  // typed, focus not yet left
  v.MonthView2.inputClick(day(2024, 3, 20));
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 3, 20));
  EXPECT_DOUBLE_EQ(v.Value(), at(2024, 3, 20, 14, 30));
  EXPECT_TRUE(rec.log.isEmpty());

  // A day of the next month, shown greyed at the foot, brings that month on show.
  v.MonthView2.inputClick(v.MonthView2.CellDate(5, 6));
  EXPECT_EQ(v.MonthView2.Month(), 4);
  EXPECT_DOUBLE_EQ(v.Value(), at(2024, 4, 6, 14, 30));

  v.MonthView2.inputDblClick(day(2024, 4, 2));
  ASSERT_EQ(rec.log, QStringList{QStringLiteral("DateClick")});
  EXPECT_DOUBLE_EQ(rec.clicked[0], at(2024, 4, 2, 14, 30));

  // OK hands back the value as it stands.
  v.Command2.Click();
  ASSERT_EQ(rec.clicked.size(), 2u);
  EXPECT_DOUBLE_EQ(rec.clicked[1], at(2024, 4, 2, 14, 30));
}

TEST_F(DateTimeViewTest, TheTimeBoxNormalisesOrRestoresWhenItLosesTheFocus) {
  DateTimeView v;
  v.setListener(&rec);
  v.setFocusTo(&v.txtTime);
  EXPECT_EQ(v.txtTime.SelStart(), 0);
  EXPECT_EQ(v.txtTime.SelLength(), 5);

  v.txtTime.setText(QStringLiteral("7:5"));
  v.setFocusTo(&v.MonthView2);
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("07:05"));
  EXPECT_DOUBLE_EQ(v.Value(), at(2024, 3, 15, 7, 5));

  // A bad time and Enter: the old time comes back, DateClick carries the old value, and the key
  // is passed on after it.
  v.setFocusTo(&v.txtTime);
  v.txtTime.setText(QStringLiteral("25:99"));
  int16_t k = key::Return, s = 0;
  v.txtTime_KeyDown(k, s);
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("07:05"));
  EXPECT_EQ(rec.log, (QStringList{QStringLiteral("DateClick"), QStringLiteral("KeyDown 13 0")}));
  EXPECT_DOUBLE_EQ(rec.clicked[0], at(2024, 3, 15, 7, 5));

  // Any other key is only passed on.
  rec.log.clear();
  v.txtTime.setText(QStringLiteral("8:00"));
  k = 'A';
  s = shift::Shift;
  v.txtTime_KeyDown(k, s);
  EXPECT_EQ(rec.log, QStringList{QStringLiteral("KeyDown 65 1")});
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("8:00"));
  EXPECT_DOUBLE_EQ(v.Value(), at(2024, 3, 15, 7, 5));
}

TEST_F(DateTimeViewTest, NowHandsBackTheMomentOfTheClickAndShowsNothing) {
  DateTimeView v;
  v.setListener(&rec);
  v.setValue(at(2020, 1, 1, 8, 0));
  fake.clock = 45678.123456789;
  v.Command1.Click();
  ASSERT_EQ(rec.clicked.size(), 1u);
  EXPECT_EQ(rec.clicked[0], 45678.123456789);
  EXPECT_EQ(v.Value(), 45678.123456789);
  EXPECT_EQ(v.MonthView2.Value(), day(2020, 1, 1));
  EXPECT_EQ(v.txtTime.Text(), QStringLiteral("08:00"));

  int16_t k = key::Escape, s = 0;
  v.Command1_KeyDown(k, s);
  EXPECT_EQ(rec.log.last(), QStringLiteral("KeyDown 27 0"));
}

TEST_F(DateTimeViewTest, CalendarKeysReachTheOwnerFirstAndMoveOnlyTheCalendar) {
  DateTimeView v;
  v.setListener(&rec);
  v.MonthView2.inputKeyDown(key::Right, 0);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 3, 16));
  v.MonthView2.inputKeyDown(key::Down, 0);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 3, 23));
  v.MonthView2.inputKeyDown(key::PageDown, 0);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 4, 23));
  v.MonthView2.setValue(day(2024, 3, 31));
  v.MonthView2.inputKeyDown(key::PageUp, 0);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 2, 29));  // the month before is shorter
  EXPECT_EQ(rec.log.size(), 4);
  EXPECT_EQ(rec.log.first(), QStringLiteral("KeyDown 39 0"));
  // Only a click takes the day into the value.
  EXPECT_EQ(v.Value(), fake.clock);

  rec.swallow = true;
  v.MonthView2.inputKeyDown(key::Left, 0);
  EXPECT_EQ(v.MonthView2.Value(), day(2024, 2, 29));
  EXPECT_TRUE(rec.clicked.empty());
}

TEST_F(DateTimeViewTest, TheCalendarLaysOutSixWeeksFromSundayInEitherLanguage) {
  DateTimeView v;
  MonthCalendar& c = v.MonthView2;
  // 1 March 2024 is a Friday.
  EXPECT_EQ(c.CellDate(0, 5), day(2024, 3, 1));
  EXPECT_EQ(c.CellDate(0, 0), day(2024, 2, 25));
  EXPECT_EQ(c.CellDate(5, 6), day(2024, 4, 6));
  EXPECT_FALSE(c.InShownMonth(c.CellDate(0, 4)));
  EXPECT_TRUE(c.InShownMonth(c.CellDate(4, 6)));
  EXPECT_EQ(c.TitleText(), QStringLiteral("มีนาคม 2567"));
  EXPECT_EQ(c.DayName(0), QStringLiteral("อา"));

  v.setLanguageID(1);
  EXPECT_EQ(c.TitleText(), QStringLiteral("March 2567"));
  EXPECT_EQ(c.DayName(6), QStringLiteral("Sa"));

  c.setShownMonth(2024, 1);
  c.PreviousMonth();
  EXPECT_EQ(c.Year(), 2023);
  EXPECT_EQ(c.Month(), 12);
  EXPECT_EQ(c.CellDate(0, 5), day(2023, 12, 1));  // also a Friday
  c.NextMonth();
  c.NextMonth();
  EXPECT_EQ(c.TitleText(), QStringLiteral("February 2567"));

  // A click outside the allowed days is pulled back to the nearest.
  c.setMaxDate(day(2024, 3, 10));
  v.MonthView2.inputClick(day(2024, 3, 20));
  EXPECT_EQ(c.Value(), day(2024, 3, 10));
  EXPECT_DOUBLE_EQ(v.Value(), at(2024, 3, 10, 9, 45));
}
