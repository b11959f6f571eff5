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

// The pieces of a DateTimeView on a form: its frame, the painted calendar, the label, the time box
// and the two buttons, wired both ways. Focus moving between the pieces, and leaving them, reaches
// the core as the pieces' gained and lost focus; every key typed into a piece reaches the core. The
// stand-alone widget and the grid's date-time drop-down are both this panel.
class DateTimeViewPanel : public QWidget {
  Q_OBJECT
 public:
  DateTimeViewPanel(DateTimeView& view, QWidget* parent);

  MonthCalendarView* calendar() const { return calendar_; }
  QLineEdit* timeBox() const { return time_; }
  QPushButton* nowButton() const { return now_; }
  QPushButton* okButton() const { return ok_; }
  // The piece that stands for a core child, or null.
  QWidget* widgetOf(Widget* state) const;

  // Brings the pieces in line with the core.
  void syncNow();
  // Run after the core has handled a key typed into a piece (the owner syncs there).
  std::function<void()> afterKey;

 protected:
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  Widget* stateOf(QWidget* w) const;

  DateTimeView& view_;
  WidgetMirror mirror_;
  QWidget* frame_ = nullptr;
  MonthCalendarView* calendar_ = nullptr;
  QLabel* label_ = nullptr;
  QLineEdit* time_ = nullptr;
  QPushButton* now_ = nullptr;
  QPushButton* ok_ = nullptr;
  int shownSelStart_ = -1, shownSelLength_ = -1;
};

class DateTimeViewWidget : public QWidget, private DateTimeViewEvents {
  Q_OBJECT
 public:
  explicit DateTimeViewWidget(QWidget* parent = nullptr);
  ~DateTimeViewWidget() override;

  DateTimeView& view() { return view_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(DateTimeViewEvents* l) { appListener_ = l; }

  MonthCalendarView* calendar() const { return panel_->calendar(); }
  QLineEdit* timeBox() const { return panel_->timeBox(); }
  QPushButton* nowButton() const { return panel_->nowButton(); }
  QPushButton* okButton() const { return panel_->okButton(); }

  // Brings the widgets in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 signals:
  void keyDown(int16_t& KeyCode, int16_t& Shift);
  void dateClick(double DateClicked);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;

 private:
  void scheduleSync();

  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void DateClick(double DateClicked) override;

  DateTimeView view_;
  DateTimeViewPanel* panel_ = nullptr;
  DateTimeViewEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
