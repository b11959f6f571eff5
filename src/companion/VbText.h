#pragma once
// The language-level text, number and date operations the controls were written against, done
// once for the whole library so that no control re-invents a Trim or a Val inline.
//
// Texts are QString, so lengths and 1-based positions count UTF-16 units as the classic strings
// did. Where the classic language fails, these throw tq7::Error with its runtime number:
// 5 invalid procedure call, 6 overflow, 13 type mismatch. The number locale is fixed: "." for
// decimals, "," for groups.
#include <QDate>
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <cstdint>

namespace tq7::vb {

enum class Compare { Binary, Text };  // Text ignores case

// ---- text --------------------------------------------------------------------------------------

// Blanks (U+0020) only; tabs and line breaks stay.
QString Trim(const QString& s);
QString LTrim(const QString& s);
QString RTrim(const QString& s);

QString UCase(const QString& s);
QString LCase(const QString& s);

// 1-based and clamped. A negative length, or a Mid start below 1, is error 5.
QString Left(const QString& s, int32_t length);
QString Right(const QString& s, int32_t length);
QString Mid(const QString& s, int32_t start);
QString Mid(const QString& s, int32_t start, int32_t length);

// Splits at each delimiter, empty pieces kept. An empty text gives no entry at all; an empty
// delimiter gives the whole text as one entry. limit > 0 caps the entries, the last holding the
// rest; -1 means no limit.
QStringList Split(const QString& s, const QString& delimiter = QStringLiteral(" "), int32_t limit = -1,
                  Compare compare = Compare::Binary);

// 1-based position of find in s, 0 when absent. An empty s gives 0; a start beyond s gives 0; an
// empty find gives start. A start below 1 is error 5.
int32_t InStr(const QString& s, const QString& find, Compare compare = Compare::Binary);
int32_t InStr(int32_t start, const QString& s, const QString& find, Compare compare = Compare::Binary);
// 1-based position of the last find that lies wholly within the first `start` units of s
// (start -1: all of s); 0 when absent. An empty find gives start (the length for -1).
int32_t InStrRev(const QString& s, const QString& find, int32_t start = -1, Compare compare = Compare::Binary);

// Replaces find by replacement. As the classic function does, the result begins at `start`: the
// part of s in front of it is dropped. count -1 replaces all. An empty find returns s from start.
QString Replace(const QString& s, const QString& find, const QString& replacement, int32_t start = 1,
                int32_t count = -1, Compare compare = Compare::Binary);

// ---- numbers -----------------------------------------------------------------------------------

// The leading number of a text: blanks, tabs and line feeds are skipped anywhere, an optional
// sign, digits with at most one ".", an exponent (E or D); &H and &O read hexadecimal and octal
// (16-bit when short enough, as the classic reading does). Stops at the first other character,
// so "1,234" gives 1 and "abc" gives 0.
double Val(const QString& s);

// Whether CDbl would succeed.
bool IsNumeric(const QString& s);
// IsNumeric and CDbl in one reading: false, value untouched, where IsNumeric says no.
bool TryNumeric(const QString& s, double& value);
// A numeric text to double: blanks around, a sign in front or behind ("5-"), a negative in
// parentheses, "," groups in the whole part, "." decimals, an E or D exponent, &H/&O. Not numeric:
// error 13. Beyond the double range: error 6.
double CDbl(const QString& s);

// Whole numbers round halves to even; outside the type's range is error 6.
int16_t CInt(double v);
int32_t CLng(double v);
int16_t CInt(const QString& s);  // CDbl, then CInt
int32_t CLng(const QString& s);

// Fixed decimals, "," groups when asked, "." decimals, a leading zero, "-" in front. Halves round
// away from zero on the decimal digits of the value as it reads (1.005 to 2 decimals is 1.01).
// A value that rounds to zero has no sign. Negative decimals count as 0.
QString formatNumber(double v, int decimals, bool groups);

// The shortest text that reads back (through CDbl or Val) to exactly the same double: plain digits
// for moderate magnitudes ("0.1", "123456789012345"), an exponent beyond ("1E+20", "1E-07").
QString shortestText(double v);
// The language's own number-to-text form, as a number put into a text gets it: the same layout,
// kept to 15 significant digits, so 12345678901234567 reads "1.23456789012346E+16".
QString CStr(double v);

// Rounds to so many decimals, halves away from zero, on the decimal digits of the value as it
// reads. Negative decimals round to tens, hundreds, ...
double roundDecimal(double v, int decimals);

// ---- dates -------------------------------------------------------------------------------------
// A date is a double serial: whole days since 30 December 1899, the time as the fraction. Before
// that day the whole part counts back and the fraction still runs forward from midnight, so -1.25
// is 29 December 1899 06:00. The classic range is 1 January 100 to 31 December 9999; a serial
// outside it is error 6.

constexpr double MinDateSerial = -657434.0;  // 1 January 100
constexpr double MaxDateSerial = 2958465.0;  // 31 December 9999; its times lie up to one day above

QDate serialToDate(double serial);          // the day; times are rounded to the second first
QDateTime serialToDateTime(double serial);
// The day and the seconds into it, after the rounding to the second.
void splitSerial(double serial, QDate& day, int& seconds);  // wall-clock, in UTC so that no zone rule shifts it
double dateToSerial(const QDate& d);
double dateTimeToSerial(const QDateTime& dt);
double timeSerial(int hour, int minute, int second);  // the fraction only, may exceed a day
// The classic DateSerial: months and days beyond their range carry over (month 13 is January of
// the next year, day 0 the last day of the month before); years 0 to 29 are 2000 to 2029 and 30 to
// 99 are 1930 to 1999. A result outside the range is error 6. The year is the calendar year,
// with no offset.
double DateSerial(int32_t year, int32_t month, int32_t day);

// The calendar in which dates are typed and shown: years shown are the calendar year plus this
// offset (543 for the Thai solar calendar). One setting for the whole process.
int16_t calendarYearOffset();
void setCalendarYearOffset(int16_t offset);

// Reading typed dates and times, as a Thai clerk types them (years in the shown calendar).
// Dates: d/m/yyyy, d-m-yyyy, d.m.yyyy, with a month by number or by name (Thai or English, long or
// short: "1/ม.ค./2567", "15 มีนาคม 2567", "15 Mar 2567"); two-digit years fall in the window of the
// 80 years before and 19 after the current shown year; d/m alone takes the current year; digits
// alone are ddmmyyyy, ddmmyy or ddmm. The year shown minus the offset must lie in 100..9999.
// Times: H:mm, H:mm:ss, with "." also taken as separator, an optional AM/PM or "น." behind.
// Date-times: a date, blanks, a time.
bool parseDateText(const QString& text, double& serial);      // whole days
bool parseTimeText(const QString& text, double& serial);      // the fraction, 0 <= t < 1
bool parseDateTimeText(const QString& text, double& serial);  // a date and a time, both needed
// A month of a year, as the serial of its first day: m/yyyy, m-yyyy, m.yyyy, m/yy, a month name
// and a year ("มี.ค. 2567", "March/2567"), digits mmyyyy or mmyy, or a whole date (its month).
bool parsePeriodText(const QString& text, double& serial);

// Month names, month 1 to 12; empty for any other month.
QString thaiMonthName(int32_t month, bool longForm);     // มกราคม / ม.ค.
QString englishMonthName(int32_t month, bool longForm);  // January / Jan

// A text the system reads as a date: a date, a date and a time, or a time (tried in that order).
bool IsDate(const QString& s);
// The serial of such a text; error 13 when it is none.
double CDate(const QString& s);
// A number taken as a date: itself when it names a moment from 1 January 100 to the end of
// 31 December 9999; error 6 beyond.
double CDate(double v);
// A Variant as a number, as the language reads one: a date gives its serial, True -1, a text is
// read by CDbl (error 13 when it is none), an empty one 0.
double CDbl(const QVariant& v);

}  // namespace tq7::vb
