#include "companion/StandardHelper.h"

#include <charconv>

#include "companion/VbText.h"
#include "frame/Platform.h"

#include <algorithm>
#include <cmath>

namespace tq7 {

namespace {

bool digitsOnly(const QString& s, int maxLength) {
  if (s.isEmpty() || s.size() > maxLength) return false;
  return std::all_of(s.begin(), s.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

// Hours and minutes as the number the hour text shows: 8 and 30 are 8.30.
bool readHour(const QString& text, double& value) {
  const QString s = vb::Trim(text);
  const qsizetype dot = s.indexOf(u'.');
  const qsizetype colon = s.indexOf(u':');
  if (dot >= 0 && colon >= 0) return false;
  const qsizetype at = dot >= 0 ? dot : colon;
  const QString hours = at >= 0 ? s.left(at) : s;
  const QString minutes = at >= 0 ? s.mid(at + 1) : QStringLiteral("0");
  if (!digitsOnly(hours, 6) || !digitsOnly(minutes, 2)) return false;
  // After a point the digits are decimals ("8.5" is 8.50); after a colon they count minutes.
  const int m = (dot >= 0 && minutes.size() == 1) ? minutes.toInt() * 10 : minutes.toInt();
  if (m > 59) return false;
  value = vb::CDbl(QStringLiteral("%1.%2").arg(hours.toInt()).arg(m, 2, 10, QChar(u'0')));
  return true;
}

bool readClock(const QString& s, int& minutes) {
  const qsizetype at = std::max(s.indexOf(u':'), s.indexOf(u'.'));
  if (at < 0) return false;
  const QString h = s.left(at), m = s.mid(at + 1);
  if (!digitsOnly(h, 2) || !digitsOnly(m, 2)) return false;
  if (h.toInt() > 23 || m.toInt() > 59) return false;
  minutes = h.toInt() * 60 + m.toInt();
  return true;
}

// Days and a clock time as a span on the date scale.
bool readDayTime(const QString& text, double& value) {
  QString s = vb::Trim(text);
  bool negative = false;
  if (s.startsWith(u'-')) {
    negative = true;
    s = vb::Trim(s.mid(1));
  }
  if (s.isEmpty()) return false;
  qint64 days = 0;
  int minutes = 0;
  const qsizetype blank = s.indexOf(u' ');
  if (blank >= 0) {
    const QString d = s.left(blank);
    if (!digitsOnly(d, 7) || !readClock(vb::Trim(s.mid(blank + 1)), minutes)) return false;
    days = d.toLongLong();
  } else if (digitsOnly(s, 7)) {
    days = s.toLongLong();
  } else if (!readClock(s, minutes)) {
    return false;
  }
  const double v = double(days) + minutes / 1440.0;
  value = negative ? -v : v;
  return true;
}

}  // namespace

QString StandardHelper::MultiLineInput(const QString& Caption, const QString& Text, const QString& Prompt, bool,
                                       int32_t, int32_t MaxLength, bool, double Width, double Height,
                                       bool Editable) const {
  const QString answer = platform().multiLineInput(Caption, Text, Prompt, MaxLength, Width, Height);
  return Editable ? answer : Text;
}

QString StandardHelper::NumberText(const QString& Text) const {
  QString out;
  for (qsizetype i = Text.size() - 1; i >= 0; --i) {
    const QChar c = Text[i];
    if ((c >= u'0' && c <= u'9') || c == u'.') out.append(c);
  }
  return out;
}

int16_t StandardHelper::TextToInteger(const QString& Text, bool) const {
  double v = 0;
  return vb::TryNumeric(Text, v) ? vb::CInt(v) : int16_t(0);
}

int32_t StandardHelper::TextToLong(const QString& Text, bool) const {
  double v = 0;
  return vb::TryNumeric(Text, v) ? vb::CLng(v) : 0;
}

double StandardHelper::TextToDouble(const QString& Text) const {
  double v = 0;
  return vb::TryNumeric(Text, v) ? v : 0.0;
}

double StandardHelper::TextToRounded(const QString& Text, int16_t Decimals) const {
  return RoundTo(TextToDouble(Text), Decimals);
}

double StandardHelper::MinutesToSpan(double Minutes) const { return Minutes / 1440.0; }

double StandardHelper::RoundTo(double Value, int16_t Decimals) const { return vb::roundDecimal(Value, Decimals); }

int16_t StandardHelper::YearOffset() { return vb::calendarYearOffset(); }
void StandardHelper::setYearOffset(int16_t Offset) { vb::setCalendarYearOffset(Offset); }

QString StandardHelper::MachineName() const { return platform().machineName(); }

QString StandardHelper::MonthText(int16_t Month, bool LongForm, int16_t Language) const {
  return Language == 0 ? vb::thaiMonthName(Month, LongForm) : vb::englishMonthName(Month, LongForm);
}

QString StandardHelper::SqlDateText(double Date) const {
  return vb::serialToDate(Date).toString(QStringLiteral("yyyy-MM-dd"));
}

int32_t StandardHelper::FindLast(const QString& Text, const QString& Find) const {
  if (Find.isEmpty()) return 0;
  return vb::InStrRev(Text, Find);
}

bool StandardHelper::IsDateTimeText(const QString& Text) const {
  double v = 0;
  return vb::parseDateTimeText(Text, v) || vb::parseDateText(Text, v);
}

double StandardHelper::TextToDateTime(const QString& Text) const {
  double v = 0;
  if (vb::parseDateTimeText(Text, v) || vb::parseDateText(Text, v)) return v;
  return 0.0;
}

bool StandardHelper::IsTimeText(const QString& Text) const {
  double v = 0;
  return vb::parseTimeText(Text, v);
}

double StandardHelper::TextToTime(const QString& Text) const {
  double v = 0;
  return vb::parseTimeText(Text, v) ? v : 0.0;
}

bool StandardHelper::IsDateText(const QString& Text, double& DateValue, QString& DateString) const {
  double v = 0;
  if (!vb::parseDateText(Text, v)) {
    DateValue = 0;
    DateString.clear();
    return false;
  }
  DateValue = v;
  DateString = DateText(v);
  return true;
}

bool StandardHelper::IsDateText(const QString& Text) const {
  double v = 0;
  return vb::parseDateText(Text, v);
}

double StandardHelper::TextToDate(const QString& Text, double& DateValue, QString& DateString) const {
  IsDateText(Text, DateValue, DateString);
  return DateValue;
}

double StandardHelper::TextToDate(const QString& Text) const {
  double v = 0;
  return vb::parseDateText(Text, v) ? v : 0.0;
}

namespace {
// Writes n as `width` digits at out (zero-padded); a wider number keeps all its digits.
qsizetype putNumber(char16_t* out, int n, int width) {
  char buf[12];
  const auto r = std::to_chars(buf, buf + sizeof buf, n < 0 ? -n : n);
  qsizetype len = r.ptr - buf, at = 0;
  if (n < 0) out[at++] = u'-';
  for (qsizetype k = len; k < width; ++k) out[at++] = u'0';
  for (qsizetype k = 0; k < len; ++k) out[at++] = char16_t(buf[k]);
  return at;
}
}  // namespace

// Dates and times are shown on every cell of a load: formatted by hand, without a format parser.
QString StandardHelper::DateText(double Date, int16_t, bool) const {
  const QDate d = vb::serialToDate(Date);
  char16_t out[24];
  qsizetype n = putNumber(out, d.day(), 2);
  out[n++] = u'/';
  n += putNumber(out + n, d.month(), 2);
  out[n++] = u'/';
  n += putNumber(out + n, d.year() + YearOffset(), 4);
  return QString(reinterpret_cast<const QChar*>(out), n);
}

QString StandardHelper::TimeText(double Date, bool) const {
  QDate day;
  int seconds = 0;
  vb::splitSerial(Date, day, seconds);
  char16_t out[8];
  qsizetype n = putNumber(out, seconds / 3600, 2);
  out[n++] = u':';
  n += putNumber(out + n, seconds / 60 % 60, 2);
  return QString(reinterpret_cast<const QChar*>(out), n);
}

double StandardHelper::TextToHour(const QString& Text) const {
  double v = 0;
  return readHour(Text, v) ? v : 0.0;
}

QString StandardHelper::HourText(double Value, bool) const { return vb::formatNumber(Value, 2, false); }

bool StandardHelper::IsHourText(const QString& Text, bool) const {
  double v = 0;
  return readHour(Text, v);
}

double StandardHelper::TextToPeriod(const QString& Text) const {
  double v = 0;
  return vb::parsePeriodText(Text, v) ? v : 0.0;
}

QString StandardHelper::PeriodText(double Date, bool) const {
  const QDate d = vb::serialToDate(Date);
  char16_t out[16];
  qsizetype n = putNumber(out, d.month(), 2);
  out[n++] = u'/';
  n += putNumber(out + n, d.year() + YearOffset(), 4);
  return QString(reinterpret_cast<const QChar*>(out), n);
}

bool StandardHelper::IsPeriodText(const QString& Text) const {
  double v = 0;
  return vb::parsePeriodText(Text, v);
}

double StandardHelper::TextToDayTime(const QString& Text) const {
  double v = 0;
  return readDayTime(Text, v) ? v : 0.0;
}

QString StandardHelper::DayTimeText(double Value) const {
  const long long total = std::llround(std::fabs(Value) * 1440.0);  // to the nearest minute
  const long long days = total / 1440;
  const int minutes = int(total % 1440);
  return QStringLiteral("%1%2 %3:%4")
      .arg(Value < 0 && total > 0 ? QStringLiteral("-") : QString())
      .arg(days)
      .arg(minutes / 60, 2, 10, QChar(u'0'))
      .arg(minutes % 60, 2, 10, QChar(u'0'));
}

bool StandardHelper::IsDayTimeText(const QString& Text, bool) const {
  double v = 0;
  return readDayTime(Text, v);
}

QString StandardHelper::KeyText(const QString& Text, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t, int32_t,
                                int32_t, int32_t, int32_t) const {
  return vb::Trim(Text);
}

QString StandardHelper::NumberFormat(double Value, int16_t Decimals) const {
  return vb::formatNumber(Value, Decimals, true);
}

}  // namespace tq7
