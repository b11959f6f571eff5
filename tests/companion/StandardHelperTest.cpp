#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/FakePlatform.h"

#include <gtest/gtest.h>

using tq7::StandardHelper;
namespace vb = tq7::vb;

namespace {

class StandardHelperTest : public ::testing::Test {
 protected:
  void SetUp() override { StandardHelper::setYearOffset(543); }
  void TearDown() override { StandardHelper::setYearOffset(543); }
  tq7::FakePlatform fake;  // the clock stands at 45000.5: 15 March 2023 12:00, shown year 2566
  StandardHelper h;
  static double day(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }
};

}  // namespace

TEST_F(StandardHelperTest, DatesShowAndReadInTheBuddhistEra) {
  EXPECT_EQ(StandardHelper::YearOffset(), 543);
  EXPECT_EQ(h.DateText(day(2024, 3, 15)), QStringLiteral("15/03/2567"));
  EXPECT_EQ(h.DateText(day(2024, 3, 15) + 0.99), QStringLiteral("15/03/2567"));
  EXPECT_EQ(h.DateText(day(2024, 3, 15), 0, false), h.DateText(day(2024, 3, 15), 0, true));
  // The empty-date test finds offset + 1899 in the text of the zero date.
  EXPECT_TRUE(h.DateText(0).contains(QString::number(StandardHelper::YearOffset() + 1899)));

  double value = -1;
  QString text = QStringLiteral("x");
  ASSERT_TRUE(h.IsDateText(QStringLiteral("5/3/2567"), value, text));
  EXPECT_EQ(value, day(2024, 3, 5));
  EXPECT_EQ(text, QStringLiteral("05/03/2567"));
  EXPECT_EQ(h.TextToDate(QStringLiteral("15/03/2567"), value, text), day(2024, 3, 15));

  const struct {
    const char* typed;
    QDate date;
  } forms[] = {
      {"15-03-2567", {2024, 3, 15}},          {"15.3.2567", {2024, 3, 15}},
      {"15032567", {2024, 3, 15}},            {"150367", {2024, 3, 15}},
      {"1503", {2023, 3, 15}},                {"15/3", {2023, 3, 15}},
      {"15/3/67", {2024, 3, 15}},             {"1/1/10", {1967, 1, 1}},   // the window runs from 2486 to 2585
      {"1/1/90", {1947, 1, 1}},               {"1/ม.ค./2567", {2024, 1, 1}},
      {"15 มีนาคม 2567", {2024, 3, 15}},       {"15 มีค 2567", {2024, 3, 15}},
      {"15 Mar 2567", {2024, 3, 15}},         {"15-march-2567", {2024, 3, 15}},
      {"29/02/2567", {2024, 2, 29}},          {"  1/12/2500  ", {1957, 12, 1}},
  };
  for (const auto& f : forms) {
    const QString typed = QString::fromUtf8(f.typed);
    EXPECT_TRUE(h.IsDateText(typed)) << f.typed;
    EXPECT_EQ(h.TextToDate(typed), vb::dateToSerial(f.date)) << f.typed;
  }
  for (const char* bad : {"", "abc", "29/02/2566", "31/04/2567", "0/1/2567", "1/0/2567", "15/03/567", "1/1/642",
                          "15/03/2567 10:00", "15/Foo/2567", "123456789", "15//2567", "-1/3/2567"}) {
    EXPECT_FALSE(h.IsDateText(QString::fromUtf8(bad), value, text)) << bad;
    EXPECT_EQ(value, 0.0) << bad;
    EXPECT_TRUE(text.isEmpty()) << bad;
    EXPECT_EQ(h.TextToDate(QString::fromUtf8(bad)), 0.0) << bad;
  }

  // The offset is one setting: text and reading follow it together.
  StandardHelper::setYearOffset(0);
  EXPECT_EQ(h.DateText(day(2024, 3, 15)), QStringLiteral("15/03/2024"));
  EXPECT_EQ(h.TextToDate(QStringLiteral("15/03/2024")), day(2024, 3, 15));
  EXPECT_EQ(h.PeriodText(day(2024, 3, 15)), QStringLiteral("03/2024"));
  EXPECT_EQ(h.TextToDate(QStringLiteral("1/1/30")), day(2030, 1, 1));  // window 1943 to 2042
  EXPECT_EQ(h.TextToDate(QStringLiteral("1/1/43")), day(1943, 1, 1));
}

TEST_F(StandardHelperTest, TimesAndDateTimes) {
  EXPECT_EQ(h.TimeText(day(2024, 3, 15) + 0.75), QStringLiteral("18:00"));
  EXPECT_EQ(h.TimeText(0), QStringLiteral("00:00"));
  EXPECT_EQ(h.TimeText(vb::timeSerial(8, 5, 59)), QStringLiteral("08:05"));  // seconds dropped
  EXPECT_EQ(h.TimeText(-1.25), QStringLiteral("06:00"));

  const struct {
    const char* typed;
    int h, m, s;
  } times[] = {{"8:05", 8, 5, 0},   {"08:05:30", 8, 5, 30}, {"14.30", 14, 30, 0}, {"14.30 น.", 14, 30, 0},
               {"2:30 PM", 14, 30, 0}, {"12:15am", 0, 15, 0}, {"12 PM", 12, 0, 0},   {"0:00", 0, 0, 0}};
  for (const auto& t : times) {
    const QString typed = QString::fromUtf8(t.typed);
    EXPECT_TRUE(h.IsTimeText(typed)) << t.typed;
    EXPECT_EQ(h.TextToTime(typed), vb::timeSerial(t.h, t.m, t.s)) << t.typed;
  }
  for (const char* bad : {"", "24:00", "12:60", "8", "830", "13:00 PM", "8:00:60", "a:b", "1:2:3:4"}) {
    EXPECT_FALSE(h.IsTimeText(QString::fromUtf8(bad))) << bad;
    EXPECT_EQ(h.TextToTime(QString::fromUtf8(bad)), 0.0) << bad;
  }
  // What a time box shows reads back to the same text.
  for (double t : {0.0, 0.3, 0.5, 0.999})
    EXPECT_EQ(h.TimeText(h.TextToTime(h.TimeText(t))), h.TimeText(t)) << t;

  const double v = day(2024, 3, 15) + vb::timeSerial(14, 30, 0);
  const QString shown = h.DateText(v, 0, false) + QStringLiteral(" ") + h.TimeText(v, true);
  EXPECT_EQ(shown, QStringLiteral("15/03/2567 14:30"));
  EXPECT_TRUE(h.IsDateTimeText(shown));
  EXPECT_EQ(h.TextToDateTime(shown), v);
  EXPECT_EQ(vb::CDate(shown), v);
  EXPECT_TRUE(h.IsDateTimeText(QStringLiteral("15 มี.ค. 2567 2:30 PM")));
  EXPECT_EQ(h.TextToDateTime(QStringLiteral("15 มี.ค. 2567 2:30 PM")), v);
  EXPECT_TRUE(h.IsDateTimeText(QStringLiteral("15/03/2567")));  // midnight
  EXPECT_EQ(h.TextToDateTime(QStringLiteral("15/03/2567")), day(2024, 3, 15));
  EXPECT_FALSE(h.IsDateTimeText(QStringLiteral("14:30")));
  EXPECT_FALSE(h.IsDateTimeText(QStringLiteral("15/03/2567 14:61")));
  EXPECT_EQ(h.TextToDateTime(QStringLiteral("nonsense")), 0.0);
}

TEST_F(StandardHelperTest, PeriodsAreMonthsOfAYear) {
  EXPECT_EQ(h.PeriodText(day(2024, 3, 15)), QStringLiteral("03/2567"));
  const struct {
    const char* typed;
    QDate first;
  } forms[] = {{"3/2567", {2024, 3, 1}},    {"03-2567", {2024, 3, 1}},     {"3.2567", {2024, 3, 1}},
               {"3/67", {2024, 3, 1}},      {"032567", {2024, 3, 1}},      {"0367", {2024, 3, 1}},
               {"มี.ค. 2567", {2024, 3, 1}}, {"มีนาคม/2567", {2024, 3, 1}}, {"Mar 2567", {2024, 3, 1}},
               {"15/03/2567", {2024, 3, 1}}, {"12/2566", {2023, 12, 1}}};
  for (const auto& f : forms) {
    const QString typed = QString::fromUtf8(f.typed);
    EXPECT_TRUE(h.IsPeriodText(typed)) << f.typed;
    EXPECT_EQ(h.TextToPeriod(typed), vb::dateToSerial(f.first)) << f.typed;
  }
  for (const char* bad : {"", "13/2567", "0/2567", "3", "3/567", "abc/2567", "31/02/2567"}) {
    EXPECT_FALSE(h.IsPeriodText(QString::fromUtf8(bad))) << bad;
    EXPECT_EQ(h.TextToPeriod(QString::fromUtf8(bad)), 0.0) << bad;
  }
  EXPECT_EQ(h.TextToPeriod(h.PeriodText(day(2024, 11, 30))), day(2024, 11, 1));
}

TEST_F(StandardHelperTest, HoursAreHoursDotMinutes) {
  EXPECT_EQ(h.TextToHour(QStringLiteral("8:30")), 8.3);
  EXPECT_EQ(h.TextToHour(QStringLiteral("8.30")), 8.3);
  EXPECT_EQ(h.TextToHour(QStringLiteral("8.5")), 8.5);  // the number 8.50: 8 hours 50 minutes
  EXPECT_EQ(h.TextToHour(QStringLiteral("8:5")), 8.05);
  EXPECT_EQ(h.TextToHour(QStringLiteral(" 12 ")), 12.0);
  EXPECT_EQ(h.TextToHour(QStringLiteral("120:59")), 120.59);
  EXPECT_EQ(h.HourText(8.3), QStringLiteral("8.30"));
  EXPECT_EQ(h.HourText(8.05), QStringLiteral("8.05"));
  EXPECT_EQ(h.HourText(1234), QStringLiteral("1234.00"));
  for (const char* bad : {"", "8.75", "8:60", "8.", ":30", "-1", "8.300", "8:30:00", "x", "1,000"}) {
    EXPECT_FALSE(h.IsHourText(QString::fromUtf8(bad))) << bad;
    EXPECT_EQ(h.TextToHour(QString::fromUtf8(bad)), 0.0) << bad;
  }
  // Text -> value -> text -> value is stable, so a committed cell reads back as it shows.
  for (const char* typed : {"0:01", "7.45", "23:59", "100", "9.9"}) {
    const double v = h.TextToHour(QString::fromUtf8(typed));
    const QString shown = h.HourText(v);
    EXPECT_TRUE(h.IsHourText(shown)) << typed;
    EXPECT_EQ(h.TextToHour(shown), v) << typed;
  }
}

TEST_F(StandardHelperTest, DayTimesAreSpansOnTheDateScale) {
  EXPECT_EQ(h.DayTimeText(1.5), QStringLiteral("1 12:00"));
  EXPECT_EQ(h.DayTimeText(h.MinutesToSpan(90)), QStringLiteral("0 01:30"));
  EXPECT_EQ(h.DayTimeText(-0.25), QStringLiteral("-0 06:00"));
  EXPECT_EQ(h.DayTimeText(0), QStringLiteral("0 00:00"));
  EXPECT_EQ(h.DayTimeText(2.9999999), QStringLiteral("3 00:00"));
  EXPECT_EQ(h.TextToDayTime(QStringLiteral("1 12:00")), 1.5);
  EXPECT_EQ(h.TextToDayTime(QStringLiteral("3")), 3.0);
  EXPECT_EQ(h.TextToDayTime(QStringLiteral("06:00")), 0.25);
  EXPECT_EQ(h.TextToDayTime(QStringLiteral("- 2 6.00")), -2.25);
  for (const char* bad : {"", "1 24:00", "1 12", "x", "1 12:00 5", "-", "1:5:0"}) {
    EXPECT_FALSE(h.IsDayTimeText(QString::fromUtf8(bad))) << bad;
    EXPECT_EQ(h.TextToDayTime(QString::fromUtf8(bad)), 0.0) << bad;
  }
  for (double v : {0.0, 1.5, 12.0 + 17.0 / 1440, -3.75}) {
    const QString shown = h.DayTimeText(v);
    EXPECT_TRUE(h.IsDayTimeText(shown)) << shown.toStdString();
    EXPECT_DOUBLE_EQ(h.TextToDayTime(shown), v) << shown.toStdString();
  }
  EXPECT_EQ(h.MinutesToSpan(1440), 1.0);
}

TEST_F(StandardHelperTest, NumbersConvertTheClassicWay) {
  EXPECT_EQ(h.TextToInteger(QString()), 0);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("abc")), 0);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("12abc")), 0);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("2.5")), 2);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("3.5")), 4);
  EXPECT_EQ(h.TextToInteger(QStringLiteral(" -2.5 ")), -2);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("1,234")), 1234);
  EXPECT_EQ(h.TextToInteger(QStringLiteral("-1")), -1);
  EXPECT_EQ(tq7::step([&] { h.TextToInteger(QStringLiteral("40000")); }), tq7::err::Overflow);
  EXPECT_EQ(h.TextToLong(QStringLiteral("40000")), 40000);
  EXPECT_EQ(h.TextToLong(QStringLiteral("2,147,483,647")), 2147483647);
  EXPECT_EQ(tq7::step([&] { h.TextToLong(QStringLiteral("3000000000")); }), tq7::err::Overflow);
  EXPECT_EQ(h.TextToDouble(QStringLiteral("1,234.50")), 1234.5);
  EXPECT_EQ(h.TextToDouble(QStringLiteral("abc")), 0.0);
  EXPECT_EQ(h.TextToDouble(QStringLiteral("1e400")), 0.0);
  EXPECT_EQ(h.TextToDouble(QStringLiteral("(3)")), -3.0);

  EXPECT_EQ(h.RoundTo(1.005, 2), 1.01);
  EXPECT_EQ(h.RoundTo(2.675, 2), 2.68);
  EXPECT_EQ(h.RoundTo(-1.005, 2), -1.01);
  EXPECT_EQ(h.RoundTo(-0.5, 0), -1.0);
  EXPECT_EQ(h.RoundTo(1.4999, 0), 1.0);
  EXPECT_EQ(h.RoundTo(8.345, 2), 8.35);
  EXPECT_EQ(h.RoundTo(123.456, 5), 123.456);
  EXPECT_EQ(h.TextToRounded(QStringLiteral("1,000.125"), 2), 1000.13);
  EXPECT_EQ(h.TextToRounded(QStringLiteral("x"), 2), 0.0);

  EXPECT_EQ(h.NumberFormat(-1234.5, 2), QStringLiteral("-1,234.50"));
  EXPECT_EQ(h.NumberFormat(0.5, 0), QStringLiteral("1"));
  EXPECT_EQ(h.NumberFormat(0.07, 1), QStringLiteral("0.1"));

  // Counting decimals the callers' way: the position of the point less one.
  auto decimals = [&](const char* t) { return vb::InStr(h.NumberText(QString::fromUtf8(t)), QStringLiteral(".")) - 1; };
  EXPECT_EQ(h.NumberText(QStringLiteral("-1,234.50")), QStringLiteral("05.4321"));
  EXPECT_EQ(decimals("1,234.50"), 2);
  EXPECT_EQ(decimals("2.5"), 1);
  EXPECT_EQ(decimals("2"), -1);
  EXPECT_EQ(decimals(".125"), 3);
  EXPECT_EQ(decimals(""), -1);
}

TEST_F(StandardHelperTest, NamesSqlTextSearchAndPlatformServices) {
  EXPECT_EQ(h.MonthText(1, true, 0), QStringLiteral("มกราคม"));
  EXPECT_EQ(h.MonthText(12, true, 0), QStringLiteral("ธันวาคม"));
  EXPECT_EQ(h.MonthText(1, false, 0), QStringLiteral("ม.ค."));
  EXPECT_EQ(h.MonthText(12, false, 0), QStringLiteral("ธ.ค."));
  EXPECT_EQ(h.MonthText(2, true, 1), QStringLiteral("February"));
  EXPECT_EQ(h.MonthText(9, false, -1), QStringLiteral("Sep"));
  EXPECT_EQ(h.MonthText(13, true, 0), QString());
  EXPECT_EQ(h.MonthText(0, false, 1), QString());
  // A month picker reads its date back through "1/", the short name, "/", the shown year.
  for (int16_t m = 1; m <= 12; ++m) {
    const QString t = QStringLiteral("1/") + h.MonthText(m, false, 0) + QStringLiteral("/2567");
    EXPECT_EQ(vb::CDate(t), day(2024, m, 1)) << m;
    EXPECT_EQ(h.TextToDate(QStringLiteral("1/") + h.MonthText(m, true, 1) + QStringLiteral("/2567")), day(2024, m, 1));
  }

  EXPECT_EQ(h.SqlDateText(day(2024, 3, 5) + 0.75), QStringLiteral("2024-03-05"));
  EXPECT_EQ(h.SqlDateText(-1.25), QStringLiteral("1899-12-29"));
  EXPECT_EQ(tq7::step([&] { h.SqlDateText(1e9); }), tq7::err::Overflow);

  EXPECT_EQ(h.FindLast(QStringLiteral("t WHERE x ORDER BY y ORDER BY z"), QStringLiteral(" ORDER BY ")), 21);
  EXPECT_EQ(h.FindLast(QStringLiteral("abc"), QStringLiteral("x")), 0);
  EXPECT_EQ(h.FindLast(QStringLiteral("abc"), QString()), 0);

  EXPECT_EQ(h.MachineName(), QStringLiteral("TESTPC"));
  EXPECT_EQ(h.KeyText(QStringLiteral("  A01 ")), QStringLiteral("A01"));

  fake.answers.push_back(QStringLiteral("line 1\nline 2"));
  EXPECT_EQ(h.MultiLineInput(QStringLiteral("Notes"), QStringLiteral("old"), QStringLiteral("พิมพ์ข้อความ"), true, 0,
                             200, true, 5775, 4000, true),
            QStringLiteral("line 1\nline 2"));
  // Read-only: the box is shown, what comes back is the text as it was.
  fake.answers.push_back(QStringLiteral("changed"));
  EXPECT_EQ(h.MultiLineInput(QStringLiteral("Notes"), QStringLiteral("old"), QStringLiteral("พิมพ์ข้อความ"), true, 0,
                             200, true, 5775, 4000, false),
            QStringLiteral("old"));
  EXPECT_EQ(fake.count(QStringLiteral("multiLineInput")), 2);
  EXPECT_EQ(fake.calls.first(), QStringLiteral("multiLineInput: Notes | พิมพ์ข้อความ | 200"));
}
