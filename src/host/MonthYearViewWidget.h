#pragma once
// The month-and-year drop-down as a QWidget: owns the core MonthYearView, mirrors its year box,
// its two buttons and its list, and relays its events to a listener and as Qt signals.
#include "controls/MonthYearView.h"
#include "host/WidgetMirror.h"

#include <QWidget>

class QLineEdit;
class QListWidget;
class QPushButton;

namespace tq7 {

class MonthYearViewWidget : public QWidget, private MonthYearViewEvents {
  Q_OBJECT
 public:
  explicit MonthYearViewWidget(QWidget* parent = nullptr);
  ~MonthYearViewWidget() override;

  MonthYearView& view() { return view_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(MonthYearViewEvents* l) { appListener_ = l; }

  QLineEdit* yearBox() const { return year_; }
  QPushButton* previousButton() const { return previous_; }
  QPushButton* nextButton() const { return next_; }
  QListWidget* list() const { return list_; }

  // Brings the widgets in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 signals:
  void resized();
  void keyDown(int16_t& KeyCode, int16_t& Shift);
  void monthClick(int16_t EMonth, int16_t EYear);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  bool eventFilter(QObject* watched, QEvent* e) override;

 private:
  void scheduleSync();

  void Resize() override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void MonthClick(int16_t EMonth, int16_t EYear) override;

  MonthYearView view_;
  WidgetMirror mirror_;
  QLineEdit* year_ = nullptr;
  QPushButton* previous_ = nullptr;
  QPushButton* next_ = nullptr;
  QListWidget* list_ = nullptr;
  MonthYearViewEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
