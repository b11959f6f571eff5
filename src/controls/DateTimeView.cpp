#include "controls/DateTimeView.h"

#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/GridSurface.h"
#include "frame/Platform.h"

namespace tq7 {

DateTimeView::DateTimeView() : Control(QStringLiteral("DateTimeView")) {
  for (Widget* w : std::initializer_list<Widget*>{&picDateTime, &MonthView2, &Label1, &txtTime, &Command1, &Command2})
    addChild(*w);

  picDateTime.setBackColor(syscolor::ButtonFace);
  // The calendar takes the top; the time and the two buttons share one line below it.
  MonthView2.Move(0, 0, FixedWidth, 2130);
  Label1.Move(45, 2205, 420, 240);
  Label1.setCaption(QStringLiteral("Time:"));
  txtTime.Move(480, 2160, 645, 330);
  txtTime.setText(QStringLiteral("00:00"));
  Command1.Move(1170, 2160, 660, 330);
  Command1.setCaption(QStringLiteral("Now"));
  Command2.Move(1875, 2160, 540, 330);
  Command2.setCaption(QStringLiteral("OK"));

  MonthView2.onDateClick = [this](double d) { MonthView2_DateClick(d); };
  MonthView2.onDateDblClick = [this](double d) { MonthView2_DateDblClick(d); };
  MonthView2.onKeyDown = [this](int16_t& k, int16_t& s) { MonthView2_KeyDown(k, s); };
  Command1.onClick = [this] { Command1_Click(); };
  Command2.onClick = [this] { Command2_Click(); };

  setSize(FixedWidth, FixedHeight);

  value_ = platform().now();
  step([&] { MonthView2.setValue(value_); });
  step([&] { txtTime.setText(helper_.TimeText(value_, true)); });
}

DateTimeView::~DateTimeView() = default;

void DateTimeView::setLanguageID(int16_t id) {
  Control::setLanguageID(id);
  MonthView2.setLanguage(id);
}

void DateTimeView::onResize() {
  if (Width() != FixedWidth || Height() != FixedHeight) setSize(FixedWidth, FixedHeight);
  picDateTime.Move(0, 0, Width(), Height());
}

void DateTimeView::setValue(double v) {
  step([&] { MonthView2.setValue(v); });
  value_ = v;
  step([&] { txtTime.setText(helper_.TimeText(v, true)); });
  notifyChanged();
}

void DateTimeView::UpdateValue() {
  step([&] { value_ = vb::CDate(helper_.DateText(MonthView2.Value()) + QLatin1Char(' ') + txtTime.Text()); });
  notifyChanged();
}

void DateTimeView::raiseDateClick() {
  if (listener_) listener_->DateClick(value_);
}

void DateTimeView::MonthView2_DateClick(double) { UpdateValue(); }

void DateTimeView::MonthView2_DateDblClick(double) {
  UpdateValue();
  raiseDateClick();
}

void DateTimeView::MonthView2_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (listener_) listener_->KeyDown(KeyCode, Shift);
}

// "Now" hands back the moment of the click; the calendar and the time box stay as they were.
void DateTimeView::Command1_Click() {
  value_ = platform().now();
  raiseDateClick();
}

void DateTimeView::Command1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (listener_) listener_->KeyDown(KeyCode, Shift);
}

void DateTimeView::Command2_Click() { raiseDateClick(); }

void DateTimeView::txtTime_GotFocus() {
  txtTime.setSelStart(0);
  txtTime.setSelLength(int(txtTime.Text().size()));
}

// A time that does not read is put back to the value's own; one that reads is shown in the
// standard form. Either way the value is then made again from the calendar and the box.
void DateTimeView::txtTime_LostFocus() {
  if (!helper_.IsTimeText(txtTime.Text()))
    step([&] { txtTime.setText(helper_.TimeText(value_, true)); });
  else
    step([&] { txtTime.setText(helper_.TimeText(helper_.TextToTime(txtTime.Text()), true)); });
  UpdateValue();
}

void DateTimeView::txtTime_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (KeyCode == key::Return) {
    txtTime_LostFocus();
    raiseDateClick();
  }
  if (listener_) listener_->KeyDown(KeyCode, Shift);
}

void DateTimeView::onChildGotFocus(Widget& w) {
  if (&w == &txtTime) txtTime_GotFocus();
}

void DateTimeView::onChildLostFocus(Widget& w) {
  if (&w == &txtTime) txtTime_LostFocus();
}

}  // namespace tq7
