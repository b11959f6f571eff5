#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/FakePlatform.h"

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <cstring>
#include <random>

namespace vb = tq7::vb;
using tq7::err::InvalidProcedureCall;
using tq7::err::Overflow;
using tq7::err::TypeMismatch;

namespace {
template <class F>
int32_t errorOf(F&& f) {
  return tq7::step(std::forward<F>(f));
}
}  // namespace

TEST(VbText, TrimTouchesBlanksOnlyAndSplitGivesNothingForEmptyText) {
  EXPECT_EQ(vb::Trim(QStringLiteral("  a b \t ")), QStringLiteral("a b \t"));
  EXPECT_EQ(vb::LTrim(QStringLiteral("\t a ")), QStringLiteral("\t a "));
  EXPECT_EQ(vb::RTrim(QStringLiteral(" a \n")), QStringLiteral(" a \n"));
  EXPECT_EQ(vb::Trim(QStringLiteral("   ")), QString());

  EXPECT_TRUE(vb::Split(QString(), QStringLiteral(",")).isEmpty());
  EXPECT_EQ(vb::Split(QStringLiteral(",a,,b,"), QStringLiteral(",")),
            (QStringList{QString(), "a", QString(), "b", QString()}));
  EXPECT_EQ(vb::Split(QStringLiteral("a][b][c"), QStringLiteral("][")), (QStringList{"a", "b", "c"}));
  EXPECT_EQ(vb::Split(QStringLiteral("a,b,c"), QStringLiteral(","), 2), (QStringList{"a", "b,c"}));
  EXPECT_EQ(vb::Split(QStringLiteral("a,b"), QString()), (QStringList{"a,b"}));
  EXPECT_EQ(vb::Split(QStringLiteral("1X2x3"), QStringLiteral("x"), -1, vb::Compare::Text),
            (QStringList{"1", "2", "3"}));
  EXPECT_EQ(vb::Split(QStringLiteral("a b")), (QStringList{"a", "b"}));
}

TEST(VbText, PositionsAreOneBasedAndClamped) {
  const QString s = QStringLiteral("abcabc");
  EXPECT_EQ(vb::InStr(s, QStringLiteral("c")), 3);
  EXPECT_EQ(vb::InStr(4, s, QStringLiteral("c")), 6);
  EXPECT_EQ(vb::InStr(s, QStringLiteral("C")), 0);
  EXPECT_EQ(vb::InStr(s, QStringLiteral("C"), vb::Compare::Text), 3);
  EXPECT_EQ(vb::InStr(3, s, QString()), 3);
  EXPECT_EQ(vb::InStr(7, s, QStringLiteral("a")), 0);
  EXPECT_EQ(vb::InStr(QString(), QString()), 0);
  EXPECT_EQ(errorOf([&] { vb::InStr(0, s, QStringLiteral("a")); }), InvalidProcedureCall);

  EXPECT_EQ(vb::InStrRev(s, QStringLiteral("bc")), 5);
  EXPECT_EQ(vb::InStrRev(s, QStringLiteral("bc"), 5), 2);  // the match must end within the start
  EXPECT_EQ(vb::InStrRev(s, QStringLiteral("bc"), 6), 5);
  EXPECT_EQ(vb::InStrRev(s, QStringLiteral("x")), 0);
  EXPECT_EQ(vb::InStrRev(s, QStringLiteral("AB"), -1, vb::Compare::Text), 4);
  EXPECT_EQ(vb::InStrRev(s, QString()), 6);

  EXPECT_EQ(vb::Left(s, 2), QStringLiteral("ab"));
  EXPECT_EQ(vb::Left(s, 99), s);
  EXPECT_EQ(vb::Right(s, 2), QStringLiteral("bc"));
  EXPECT_EQ(vb::Mid(s, 2, 3), QStringLiteral("bca"));
  EXPECT_EQ(vb::Mid(s, 5), QStringLiteral("bc"));
  EXPECT_EQ(vb::Mid(s, 9), QString());
  EXPECT_EQ(errorOf([&] { vb::Mid(s, 0); }), InvalidProcedureCall);
  EXPECT_EQ(errorOf([&] { vb::Left(s, -1); }), InvalidProcedureCall);

  // The classic Replace drops what stands before its start.
  EXPECT_EQ(vb::Replace(QStringLiteral("a#$b#$c"), QStringLiteral("#$"), QStringLiteral("'")),
            QStringLiteral("a'b'c"));
  EXPECT_EQ(vb::Replace(QStringLiteral("xaxa"), QStringLiteral("a"), QStringLiteral("b"), 3),
            QStringLiteral("xb"));
  EXPECT_EQ(vb::Replace(QStringLiteral("aaa"), QStringLiteral("a"), QStringLiteral("b"), 1, 2),
            QStringLiteral("bba"));
  EXPECT_EQ(vb::Replace(QStringLiteral("AbA"), QStringLiteral("a"), QString(), 1, -1, vb::Compare::Text),
            QStringLiteral("b"));
  EXPECT_EQ(vb::UCase(QStringLiteral("abc ไทย")), QStringLiteral("ABC ไทย"));
}

TEST(VbText, ValReadsTheLeadingNumber) {
  EXPECT_EQ(vb::Val(QStringLiteral("  12 34abc")), 1234.0);
  EXPECT_EQ(vb::Val(QStringLiteral("-1.5e2x")), -150.0);
  EXPECT_EQ(vb::Val(QStringLiteral("1.2.3")), 1.2);
  EXPECT_EQ(vb::Val(QStringLiteral("1,234")), 1.0);
  EXPECT_EQ(vb::Val(QStringLiteral("abc")), 0.0);
  EXPECT_EQ(vb::Val(QString()), 0.0);
  EXPECT_EQ(vb::Val(QStringLiteral(".5")), 0.5);
  EXPECT_EQ(vb::Val(QStringLiteral("2e")), 2.0);
  EXPECT_EQ(vb::Val(QStringLiteral("1D3")), 1000.0);
  EXPECT_EQ(vb::Val(QStringLiteral("&HFF")), 255.0);
  EXPECT_EQ(vb::Val(QStringLiteral("&HFFFF")), -1.0);  // a short hex number is 16-bit
  EXPECT_EQ(vb::Val(QStringLiteral("&H10000")), 65536.0);
  EXPECT_EQ(vb::Val(QStringLiteral("&O17z")), 15.0);
  EXPECT_EQ(errorOf([] { vb::Val(QStringLiteral("1e400")); }), Overflow);
}

TEST(VbText, CDblAcceptsTheClassicNumericForms) {
  EXPECT_EQ(vb::CDbl(QStringLiteral(" 1,234.50 ")), 1234.5);
  EXPECT_EQ(vb::CDbl(QStringLiteral("-5")), -5.0);
  EXPECT_EQ(vb::CDbl(QStringLiteral("5-")), -5.0);
  EXPECT_EQ(vb::CDbl(QStringLiteral("+ 5")), 5.0);
  EXPECT_EQ(vb::CDbl(QStringLiteral("(12.5)")), -12.5);
  EXPECT_EQ(vb::CDbl(QStringLiteral(".25")), 0.25);
  EXPECT_EQ(vb::CDbl(QStringLiteral("1E3")), 1000.0);
  EXPECT_EQ(vb::CDbl(QStringLiteral("&H1F")), 31.0);
  for (const char* bad : {"", "  ", "abc", "12abc", "1.2.3", ",5", "1,", "1 000", "--5", "e5", "1.5,0", "&H", "&HZ"}) {
    EXPECT_FALSE(vb::IsNumeric(QString::fromUtf8(bad))) << bad;
    EXPECT_EQ(errorOf([&] { vb::CDbl(QString::fromUtf8(bad)); }), TypeMismatch) << bad;
  }
  EXPECT_FALSE(vb::IsNumeric(QStringLiteral("1e400")));
  EXPECT_EQ(errorOf([] { vb::CDbl(QStringLiteral("1e400")); }), Overflow);
  EXPECT_EQ(vb::CDbl(QStringLiteral("1e-400")), 0.0);
}

TEST(VbText, WholeNumbersRoundHalvesToEvenAndOverflow) {
  EXPECT_EQ(vb::CInt(2.5), 2);
  EXPECT_EQ(vb::CInt(3.5), 4);
  EXPECT_EQ(vb::CInt(-2.5), -2);
  EXPECT_EQ(vb::CInt(2.500001), 3);
  EXPECT_EQ(vb::CInt(32767.4), 32767);
  EXPECT_EQ(vb::CInt(-32768.5), -32768);
  EXPECT_EQ(errorOf([] { vb::CInt(32767.5); }), Overflow);
  EXPECT_EQ(errorOf([] { vb::CInt(-32769.0); }), Overflow);
  EXPECT_EQ(vb::CLng(2147483647.4), 2147483647);
  EXPECT_EQ(errorOf([] { vb::CLng(2147483647.5); }), Overflow);
  EXPECT_EQ(errorOf([] { vb::CLng(std::nan("")); }), Overflow);
  EXPECT_EQ(vb::CLng(QStringLiteral("1,000,000.5")), 1000000);
  EXPECT_EQ(errorOf([] { vb::CInt(QStringLiteral("x")); }), TypeMismatch);
}

TEST(VbText, FormatNumberRoundsOnTheDecimalDigits) {
  EXPECT_EQ(vb::formatNumber(1234567.891, 2, true), QStringLiteral("1,234,567.89"));
  EXPECT_EQ(vb::formatNumber(-1234.5, 0, true), QStringLiteral("-1,235"));
  EXPECT_EQ(vb::formatNumber(0.5, 0, false), QStringLiteral("1"));
  EXPECT_EQ(vb::formatNumber(1.005, 2, false), QStringLiteral("1.01"));
  EXPECT_EQ(vb::formatNumber(0.125, 2, false), QStringLiteral("0.13"));
  EXPECT_EQ(vb::formatNumber(.05, 3, true), QStringLiteral("0.050"));
  EXPECT_EQ(vb::formatNumber(0, 2, true), QStringLiteral("0.00"));
  EXPECT_EQ(vb::formatNumber(-0.001, 2, true), QStringLiteral("0.00"));  // no "-0.00"
  EXPECT_EQ(vb::formatNumber(999.996, 2, true), QStringLiteral("1,000.00"));
  EXPECT_EQ(vb::formatNumber(123456, 0, true), QStringLiteral("123,456"));
  EXPECT_EQ(vb::formatNumber(1e20, 1, true), QStringLiteral("100,000,000,000,000,000,000.0"));
  EXPECT_EQ(vb::formatNumber(12.5, -3, false), QStringLiteral("13"));

  EXPECT_EQ(vb::roundDecimal(1.005, 2), 1.01);
  EXPECT_EQ(vb::roundDecimal(-2.675, 2), -2.68);
  EXPECT_EQ(vb::roundDecimal(1250, -2), 1300.0);
  EXPECT_EQ(vb::roundDecimal(0.0004, 3), 0.0);
  EXPECT_EQ(vb::roundDecimal(0.1 + 0.2, 2), 0.3);
}

TEST(VbText, ShortestTextReadsBackToTheSameDouble) {
  EXPECT_EQ(vb::shortestText(0.1), QStringLiteral("0.1"));
  EXPECT_EQ(vb::shortestText(-2.5), QStringLiteral("-2.5"));
  EXPECT_EQ(vb::shortestText(100), QStringLiteral("100"));
  EXPECT_EQ(vb::shortestText(0), QStringLiteral("0"));
  EXPECT_EQ(vb::shortestText(1e20), QStringLiteral("1E+20"));
  EXPECT_EQ(vb::shortestText(1.5e-7), QStringLiteral("1.5E-07"));
  EXPECT_EQ(vb::shortestText(0.1 + 0.2), QStringLiteral("0.30000000000000004"));
  std::mt19937_64 rng(7);
  std::uniform_real_distribution<double> mag(-30, 30);
  for (int i = 0; i < 5000; ++i) {
    uint64_t bits = rng();
    double v;
    std::memcpy(&v, &bits, sizeof v);
    if (!std::isfinite(v)) continue;
    const double w = (i % 2) ? v : std::pow(10.0, mag(rng)) * ((i % 4) ? 1 : -1);
    const QString t = vb::shortestText(w);
    ASSERT_EQ(vb::CDbl(t), w) << t.toStdString();
    ASSERT_EQ(vb::Val(t), w) << t.toStdString();
  }
  // Amounts, prices, quantities and what arithmetic makes of them, on both sides of the short
  // decimal forms (1e9, six decimals): the digits are those of the standard library's shortest form.
  std::uniform_int_distribution<int64_t> whole(0, 2000000000000000);
  for (int i = 0; i < 20000; ++i) {
    const int k = i % 9;
    double w = double(whole(rng) % (i % 3 ? 100000000 : 2000000000000000)) / std::pow(10.0, k);
    if (i % 5 == 0) w = w * 1.07;
    if (i % 7 == 0) w = -w;
    if (std::fabs(w) < 1e-5 || std::fabs(w) >= 1e15) continue;  // beyond these it writes an exponent
    char buf[64];
    const auto end = std::to_chars(buf, buf + sizeof buf, w, std::chars_format::fixed).ptr;
    ASSERT_EQ(vb::shortestText(w), QString::fromLatin1(buf, end - buf)) << buf;
  }
  EXPECT_EQ(vb::shortestText(999999999.999999), QStringLiteral("999999999.999999"));
  EXPECT_EQ(vb::shortestText(0.000015), QStringLiteral("0.000015"));
  EXPECT_EQ(vb::formatNumber(17 * 110.25, 2, true), QStringLiteral("1,874.25"));
}

TEST(VbText, DateSerialsFollowTheClassicDateType) {
  EXPECT_EQ(vb::serialToDate(0), QDate(1899, 12, 30));
  EXPECT_EQ(vb::serialToDate(2), QDate(1900, 1, 1));
  EXPECT_EQ(vb::serialToDate(60), QDate(1900, 2, 28));  // no 29 February 1900
  EXPECT_EQ(vb::serialToDate(45366), QDate(2024, 3, 15));
  EXPECT_EQ(vb::dateToSerial(QDate(2024, 3, 15)), 45366.0);
  // Before the epoch the whole part counts back and the fraction is still the time.
  EXPECT_EQ(vb::serialToDateTime(-1.25), QDateTime(QDate(1899, 12, 29), QTime(6, 0), Qt::UTC));
  EXPECT_EQ(vb::serialToDateTime(-0.5), QDateTime(QDate(1899, 12, 30), QTime(12, 0), Qt::UTC));
  EXPECT_EQ(vb::dateTimeToSerial(QDateTime(QDate(1899, 12, 29), QTime(6, 0), Qt::UTC)), -1.25);
  EXPECT_EQ(vb::dateTimeToSerial(QDateTime(QDate(2024, 3, 15), QTime(18, 0), Qt::UTC)), 45366.75);
  // Times round to the second; a time that rounds to midnight is the next day.
  EXPECT_EQ(vb::serialToDateTime(45366.0 + 0.4 / 86400), QDateTime(QDate(2024, 3, 15), QTime(0, 0), Qt::UTC));
  EXPECT_EQ(vb::serialToDateTime(45366.9999999), QDateTime(QDate(2024, 3, 16), QTime(0, 0), Qt::UTC));
  EXPECT_EQ(vb::serialToDate(vb::MinDateSerial), QDate(100, 1, 1));
  EXPECT_EQ(vb::serialToDate(vb::MaxDateSerial + 0.5), QDate(9999, 12, 31));
  EXPECT_EQ(errorOf([] { vb::serialToDate(vb::MaxDateSerial + 1); }), Overflow);
  EXPECT_EQ(errorOf([] { vb::serialToDate(vb::MinDateSerial - 1); }), Overflow);

  EXPECT_EQ(vb::DateSerial(2024, 3, 15), 45366.0);
  EXPECT_EQ(vb::DateSerial(2023, 15, 15), 45366.0);  // month 15 of 2023 is March 2024
  EXPECT_EQ(vb::DateSerial(2024, 3, 0), vb::dateToSerial(QDate(2024, 2, 29)));
  EXPECT_EQ(vb::DateSerial(2024, 0, 1), vb::dateToSerial(QDate(2023, 12, 1)));
  EXPECT_EQ(vb::DateSerial(24, 1, 1), vb::dateToSerial(QDate(2024, 1, 1)));
  EXPECT_EQ(vb::DateSerial(45, 1, 1), vb::dateToSerial(QDate(1945, 1, 1)));
  EXPECT_EQ(errorOf([] { vb::DateSerial(10000, 1, 1); }), Overflow);
  EXPECT_NEAR(vb::timeSerial(18, 0, 0), 0.75, 1e-15);
}

TEST(VbText, IsDateAndCDateReadWhatTheClerkTypes) {
  tq7::FakePlatform fake;  // 45000.5: 15 March 2023, shown as 2566
  vb::setCalendarYearOffset(543);
  EXPECT_EQ(vb::CDate(QStringLiteral("15/03/2567")), 45366.0);
  EXPECT_EQ(vb::CDate(QStringLiteral("15/03/2567 18:00")), 45366.75);
  EXPECT_NEAR(vb::CDate(QStringLiteral("18:00")), 0.75, 1e-12);
  EXPECT_EQ(vb::CDate(QStringLiteral("1/ม.ค./2567")), vb::dateToSerial(QDate(2024, 1, 1)));
  EXPECT_EQ(vb::CDate(QStringLiteral("15/03")), vb::dateToSerial(QDate(2023, 3, 15)));
  EXPECT_TRUE(vb::IsDate(QStringLiteral(" 2/1/2567 ")));
  for (const char* bad : {"", "abc", "31/02/2567", "12", "15/13/2567", "25:00", "15/03/2567 25:00"})
    EXPECT_FALSE(vb::IsDate(QString::fromUtf8(bad))) << bad;
  EXPECT_EQ(errorOf([] { vb::CDate(QStringLiteral("x")); }), TypeMismatch);

  // A date before 1899 with a time: whole days back, time forward.
  double v = 0;
  ASSERT_TRUE(vb::parseDateTimeText(QStringLiteral("29/12/2442 06:00"), v));
  EXPECT_EQ(v, -1.25);
}
