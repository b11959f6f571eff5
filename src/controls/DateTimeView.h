#pragma once
// The panel a grid drops down for a date-time cell: a month calendar, a time box, "Now" and "OK".
// It holds one value and tells its owner with DateClick when the user has chosen. Its size is
// fixed; nothing is persisted.
#include "companion/StandardHelper.h"
#include "controls/MonthCalendar.h"
#include "frame/Control.h"

#include <cstdint>

namespace tq7 {

class DateTimeViewEvents {
 public:
  virtual ~DateTimeViewEvents() = default;
  // A key in the calendar, in txtTime or on Command1 (after the control's own step for Enter).
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode; (void)Shift; }
  // The user has chosen DateClicked.
  virtual void DateClick(double DateClicked) { (void)DateClicked; }
};

class DateTimeView : public Control {
 public:
  static constexpr double FixedWidth = 2460;
  static constexpr double FixedHeight = 2640;

  DateTimeView();
  ~DateTimeView() override;

  void setListener(DateTimeViewEvents* l) { listener_ = l; }
  // The owner's language: the calendar's month and day names follow it.
  void setLanguageID(int16_t id);

  // The date and time held. Setting it shows its day in the calendar and its time in txtTime and
  // raises nothing.
  double Value() const { return value_; }
  void setValue(double v);

  // Value from the calendar's day and txtTime's text, read as one date text.
  void UpdateValue();

  // Handlers the host calls, by the pieces' names.
  void MonthView2_DateClick(double DateClicked);
  void MonthView2_DateDblClick(double DateDblClicked);
  void MonthView2_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void Command1_Click();
  void Command1_KeyDown(int16_t& KeyCode, int16_t& Shift);
  void Command2_Click();
  void txtTime_GotFocus();
  void txtTime_LostFocus();
  void txtTime_KeyDown(int16_t& KeyCode, int16_t& Shift);

  // Pieces, in stacking order.
  PictureBox picDateTime{QStringLiteral("picDateTime")};
  MonthCalendar MonthView2{QStringLiteral("MonthView2")};
  Label Label1{QStringLiteral("Label1")};
  TextBox txtTime{QStringLiteral("txtTime")};
  Button Command1{QStringLiteral("Command1")};
  Button Command2{QStringLiteral("Command2")};

 protected:
  void onResize() override;
  void onChildGotFocus(Widget& w) override;
  void onChildLostFocus(Widget& w) override;

 private:
  void raiseDateClick();

  StandardHelper helper_;
  DateTimeViewEvents* listener_ = nullptr;
  double value_ = 0;
};

}  // namespace tq7
