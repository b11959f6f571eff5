#pragma once
// The date-time drop-down as a QWidget: owns the core DateTimeView, paints its month calendar,
// mirrors the time box and the buttons, and relays its events to a listener and as Qt signals.
#include "controls/DateTimeView.h"
#include "host/WidgetMirror.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tq7 {

// Paints a MonthCalendar state (a title with the arrows, the day names, six weeks) and hands
// clicks, double clicks and keys back to it.
class MonthCalendarView : public QWidget {
  Q_OBJECT
 public:
  MonthCalendarView(MonthCalendar& state, QWidget* parent);

  // In this widget's pixels; empty for a day not on show.
  QRect dayRect(double date) const;
  QRect previousRect() const;
  QRect nextRect() const;
  QRect titleRect() const;

  std::function<void()> onFocusIn;

 protected:
  void paintEvent(QPaintEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;

 private:
  int titleHeight() const;
  int namesHeight() const;
  QRect cellRect(int row, int column) const;
  bool dayAt(const QPoint& p, double& date) const;
  bool turnPage(const QPoint& pos);

  MonthCalendar& state_;
};

class DateTimeViewWidget : public QWidget, private DateTimeViewEvents {
  Q_OBJECT
 public:
  explicit DateTimeViewWidget(QWidget* parent = nullptr);
  ~DateTimeViewWidget() override;

  DateTimeView& view() { return view_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(DateTimeViewEvents* l) { appListener_ = l; }

  MonthCalendarView* calendar() const { return calendar_; }
  QLineEdit* timeBox() const { return time_; }
  QPushButton* nowButton() const { return now_; }
  QPushButton* okButton() const { return ok_; }

  // Brings the widgets in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 signals:
  void keyDown(int16_t& KeyCode, int16_t& Shift);
  void dateClick(double DateClicked);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void scheduleSync();
  Widget* stateOf(QWidget* w) const;
  QWidget* widgetOf(Widget* state) const;

  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void DateClick(double DateClicked) override;

  DateTimeView view_;
  WidgetMirror mirror_;
  QWidget* frame_ = nullptr;
  MonthCalendarView* calendar_ = nullptr;
  QLabel* label_ = nullptr;
  QLineEdit* time_ = nullptr;
  QPushButton* now_ = nullptr;
  QPushButton* ok_ = nullptr;
  DateTimeViewEvents* appListener_ = nullptr;
  int shownSelStart_ = -1, shownSelLength_ = -1;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
