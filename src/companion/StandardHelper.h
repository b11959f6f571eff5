#pragma once
// The companion library's text helper: how dates, times, periods, hours and numbers read and show
// in every control. One stateless instance per control, made on first use; the text forms are
// decided here and nowhere else.
//
// Text forms (years shown are the calendar year plus YearOffset, 543 by default: the Thai solar
// calendar):
//   DateText     "dd/MM/yyyy"   15/03/2567 for 15 March 2024
//   TimeText     "HH:mm"        24-hour, seconds dropped
//   PeriodText   "MM/yyyy"      03/2567
//   HourText     hours.minutes  "8.30" is 8 hours 30 minutes; the value is the number 8.30 itself,
//                               so the value is the number the text shows
//   DayTimeText  "d HH:mm"      a span on the date scale: 1.5 is "1 12:00", -0.25 is "-0 06:00"
//   numbers      "," groups, "." decimals, a leading zero, "-" in front (NumberFormat)
//
// Typed input accepted (blanks around are ignored):
//   dates      d/m/yyyy, d-m-yyyy, d.m.yyyy with the shown (Buddhist-era) year; the month as a
//              number or a Thai or English name, long or short ("1/ม.ค./2567", "15 มีนาคม 2567",
//              "15 Mar 2567"); two-digit years in the window from 80 years before to 19 after the
//              current shown year; d/m alone for the current year; digits ddmmyyyy, ddmmyy, ddmm
//   times      H:mm, H:mm:ss, "." also as separator, optional AM/PM or "น." behind
//   date-times a date, blanks, a time; a date alone is that day at 00:00
//   periods    m/yyyy, m/yy, m-yyyy, m.yyyy, a month name and a year, digits mmyyyy or mmyy,
//              or a whole date (its month)
//   hours      h, h.m, h.mm, h:m, h:mm with minutes below 60 ("8.5" is the number 8.5, so 8.50)
//   day-times  d, d H:mm, H:mm ("." also as separator), an optional "-" in front
#include <QString>
#include <cstdint>

namespace tq7 {

class StandardHelper {
 public:
  // The multi-line box. Editable false shows the text for reading: the answer is the text given.
  // The flags and the 0 in between are the callers' and have no further effect.
  QString MultiLineInput(const QString& Caption, const QString& Text, const QString& Prompt, bool Flag1 = true,
                         int32_t Reserved = 0, int32_t MaxLength = 0, bool Flag2 = true, double Width = 5775,
                         double Height = 4000, bool Editable = true) const;

  // The digits and the decimal point of a number text, in reverse order, groups and signs left
  // out: "1,234.50" gives "05.4321". Callers count decimals as the position of the point less one.
  QString NumberText(const QString& Text) const;

  // The classic conversions of a typed number: an empty or non-numeric text is 0; whole numbers
  // round halves to even. A value outside the type's range is a failure (tq7::Error 6), which
  // callers take as a failed step. The flag is the callers' and has no effect.
  int16_t TextToInteger(const QString& Text, bool Flag = true) const;
  int32_t TextToLong(const QString& Text, bool Flag = true) const;
  double TextToDouble(const QString& Text) const;
  // TextToDouble, then RoundTo.
  double TextToRounded(const QString& Text, int16_t Decimals) const;

  // So many minutes on the date scale (a day is 1).
  double MinutesToSpan(double Minutes) const;
  // Halves away from zero, on the decimal digits of the value as it reads: 1.005 to 2 is 1.01.
  double RoundTo(double Value, int16_t Decimals) const;

  // Years added to a calendar year where a date shows as text; one setting for the process.
  static int16_t YearOffset();
  static void setYearOffset(int16_t Offset);

  QString MachineName() const;

  // Month 1 to 12; another month gives an empty text. Language as LanguageID: 0 Thai
  // (มกราคม / ม.ค.), anything else English (January / Jan).
  QString MonthText(int16_t Month, bool LongForm = true, int16_t Language = 0) const;

  // 'yyyy-MM-dd' in the Gregorian calendar, without the quotes: what SQLite and PostgreSQL take
  // between quotes.
  QString SqlDateText(double Date) const;

  // 1-based position of the last Find in Text, 0 when absent.
  int32_t FindLast(const QString& Text, const QString& Find) const;

  bool IsDateTimeText(const QString& Text) const;
  // The value of a date-time text (a date alone is its midnight); 0 when it is none.
  double TextToDateTime(const QString& Text) const;

  bool IsTimeText(const QString& Text) const;
  // The time as the fraction of a day; 0 when the text is no time.
  double TextToTime(const QString& Text) const;

  // A typed date. DateValue gets its serial and DateString its DateText; both 0 and empty when
  // the text is no date.
  bool IsDateText(const QString& Text, double& DateValue, QString& DateString) const;
  bool IsDateText(const QString& Text) const;
  double TextToDate(const QString& Text, double& DateValue, QString& DateString) const;
  double TextToDate(const QString& Text) const;

  // Style and Flag are the callers' and leave the form as it is, so that every caller shows the
  // same text for the same date. A serial outside the date range fails with error 6.
  QString DateText(double Date, int16_t Style = 0, bool Flag = true) const;
  QString TimeText(double Date, bool Flag = true) const;

  double TextToHour(const QString& Text) const;  // 0 when the text is no hour
  QString HourText(double Value, bool Flag = true) const;
  bool IsHourText(const QString& Text, bool Flag = true) const;

  double TextToPeriod(const QString& Text) const;  // the first day of the month; 0 when none
  QString PeriodText(double Date, bool Flag = true) const;
  bool IsPeriodText(const QString& Text) const;

  double TextToDayTime(const QString& Text) const;  // 0 when the text is no day-time
  QString DayTimeText(double Value) const;
  bool IsDayTimeText(const QString& Text, bool Flag = true) const;

  // The text of a key column as it is kept: the blanks around it removed. The ten further
  // numbers are the callers' zeros.
  QString KeyText(const QString& Text, int32_t A1 = 0, int32_t A2 = 0, int32_t A3 = 0, int32_t A4 = 0,
                  int32_t A5 = 0, int32_t A6 = 0, int32_t A7 = 0, int32_t A8 = 0, int32_t A9 = 0,
                  int32_t A10 = 0) const;

  // A number shown with so many decimals (negative counts as 0), "," groups, "." decimals, a
  // leading zero and "-" in front: the one number form of the grids and views.
  QString NumberFormat(double Value, int16_t Decimals) const;
};

}  // namespace tq7
