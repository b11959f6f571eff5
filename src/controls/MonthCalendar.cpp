#include "controls/MonthCalendar.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/GridSurface.h"

#include <QDate>
#include <algorithm>

namespace tq7 {

namespace {

// The first day of a month, with months beyond 1..12 carried into the year.
QDate firstOfMonth(int32_t year, int32_t month) {
  const int64_t months = int64_t(year) * 12 + (month - 1);
  const int64_t y = months >= 0 ? months / 12 : -((-months + 11) / 12);
  return QDate(int(y), int(months - y * 12) + 1, 1);
}

}  // namespace

MonthCalendar::MonthCalendar(QString name)
    : Widget(std::move(name)), minDate_(vb::MinDateSerial), maxDate_(vb::MaxDateSerial) {}

void MonthCalendar::setValue(double date) {
  const QDate d = vb::serialToDate(date);  // error 6 outside the range, before anything moves
  const double day = vb::dateToSerial(d);
  if (day == value_ && d.year() == year_ && d.month() == month_) return;
  value_ = day;
  year_ = d.year();
  month_ = d.month();
  changed();
}

void MonthCalendar::setShownMonth(int32_t year, int32_t month) {
  const QDate first = firstOfMonth(year, month);
  const double serial = vb::dateToSerial(first);
  if (!first.isValid() || serial < vb::MinDateSerial || serial > vb::MaxDateSerial) throw Error{err::Overflow, {}};
  if (first.year() == year_ && first.month() == month_) return;
  year_ = first.year();
  month_ = first.month();
  changed();
}

void MonthCalendar::PreviousMonth() {
  step([&] { setShownMonth(year_, month_ - 1); });
}

void MonthCalendar::NextMonth() {
  step([&] { setShownMonth(year_, month_ + 1); });
}

void MonthCalendar::setMinDate(double d) {
  if (minDate_ == d) return;
  minDate_ = d;
  changed();
}

void MonthCalendar::setMaxDate(double d) {
  if (maxDate_ == d) return;
  maxDate_ = d;
  changed();
}

void MonthCalendar::setLanguage(int16_t language) {
  if (language_ == language) return;
  language_ = language;
  changed();
}

double MonthCalendar::CellDate(int row, int column) const {
  const QDate first = firstOfMonth(year_, month_);
  const int lead = first.dayOfWeek() % 7;  // Sunday 0
  return vb::dateToSerial(first) - lead + row * Columns + column;
}

bool MonthCalendar::InShownMonth(double date) const {
  const QDate d = vb::serialToDate(date);
  return d.year() == year_ && d.month() == month_;
}

QString MonthCalendar::TitleText() const {
  StandardHelper helper;
  return helper.MonthText(int16_t(month_), true, language_) + QLatin1Char(' ') +
         QString::number(year_ + StandardHelper::YearOffset());
}

QString MonthCalendar::DayName(int column) const {
  static const char* const thai[] = {"อา", "จ", "อ", "พ", "พฤ", "ศ", "ส"};
  static const char* const english[] = {"Su", "Mo", "Tu", "We", "Th", "Fr", "Sa"};
  if (column < 0 || column >= Columns) return {};
  return QString::fromUtf8(language_ == 0 ? thai[column] : english[column]);
}

double MonthCalendar::clamp(double date) const { return std::clamp(date, minDate_, maxDate_); }

void MonthCalendar::select(double date) {
  step([&] { setValue(clamp(date)); });
}

void MonthCalendar::inputClick(double date) {
  select(date);
  if (onDateClick) onDateClick(value_);
}

void MonthCalendar::inputDblClick(double date) {
  select(date);
  if (onDateDblClick) onDateDblClick(value_);
}

void MonthCalendar::inputKeyDown(int16_t KeyCode, int16_t Shift) {
  if (onKeyDown) onKeyDown(KeyCode, Shift);
  switch (KeyCode) {
    case key::Left: select(value_ - 1); break;
    case key::Right: select(value_ + 1); break;
    case key::Up: select(value_ - 7); break;
    case key::Down: select(value_ + 7); break;
    case key::PageUp:
    case key::PageDown: {
      // The same day of the month before or after, or that month's last day when it is shorter.
      step([&] {
        const QDate d = vb::serialToDate(value_);
        const QDate first = firstOfMonth(d.year(), d.month() + (KeyCode == key::PageUp ? -1 : 1));
        const int day = std::min(d.day(), first.daysInMonth());
        select(vb::dateToSerial(first) + day - 1);
      });
      break;
    }
    case key::Home: select(vb::dateToSerial(firstOfMonth(year_, month_))); break;
    case key::End: {
      const QDate first = firstOfMonth(year_, month_);
      select(vb::dateToSerial(first) + first.daysInMonth() - 1);
      break;
    }
    default: break;
  }
}

}  // namespace tq7
