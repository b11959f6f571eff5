#pragma once
// The month calendar a picker drops down: one month on show as six weeks of seven days, one day
// selected, arrows to the month before and after. A core state like any other child: the host
// paints it from the cells below and hands mouse and keys back through the input methods.
#include "frame/Widget.h"

#include <QString>
#include <cstdint>
#include <functional>

namespace tq7 {

class MonthCalendar : public Widget {
 public:
  explicit MonthCalendar(QString name);

  // The selected day, a whole serial. Setting it brings its month on show; a serial outside the
  // date range fails with error 6 and changes nothing.
  double Value() const { return value_; }
  void setValue(double date);

  // The month on show, in the calendar year (no offset).
  int32_t Year() const { return year_; }
  int32_t Month() const { return month_; }
  void setShownMonth(int32_t year, int32_t month);  // carries over like DateSerial
  void PreviousMonth();
  void NextMonth();

  // The days a person may select; input outside them is pulled back to the nearest.
  double MinDate() const { return minDate_; }
  double MaxDate() const { return maxDate_; }
  void setMinDate(double d);
  void setMaxDate(double d);

  // 0 Thai, anything else English, as LanguageID.
  int16_t Language() const { return language_; }
  void setLanguage(int16_t language);

  // What the host paints. Weeks start on Sunday; row 0 holds the first of the month.
  static constexpr int Rows = 6;
  static constexpr int Columns = 7;
  double CellDate(int row, int column) const;
  bool InShownMonth(double date) const;
  // "มีนาคม 2567": the long month name and the shown year (calendar year plus YearOffset).
  QString TitleText() const;
  QString DayName(int column) const;  // อา จ อ พ พฤ ศ ส / Su Mo Tu We Th Fr Sa

  // Input from the host. A click selects the day (and brings a day of the month before or after
  // on show), then tells the owner; a double click is told after the click that began it.
  void inputClick(double date);
  void inputDblClick(double date);
  // The owner hears the key first and may swallow it by setting KeyCode to 0; the calendar then
  // moves the selection: arrows by a day or a week, Page Up/Down by a month, Home/End to the
  // month's first and last day.
  void inputKeyDown(int16_t KeyCode, int16_t Shift);

  std::function<void(double date)> onDateClick;
  std::function<void(double date)> onDateDblClick;
  std::function<void(int16_t& KeyCode, int16_t& Shift)> onKeyDown;

 private:
  double clamp(double date) const;
  void select(double date);

  double value_ = 0;
  int32_t year_ = 1899, month_ = 12;
  double minDate_;
  double maxDate_;
  int16_t language_ = 0;
};

}  // namespace tq7
