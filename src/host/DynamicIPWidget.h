#pragma once
// The public address tracker as a QWidget: its three labels, its progress bar and its two
// buttons, with its two timers run by real QTimers. Its events reach a listener and Qt signals.
#include "devices/DynamicIP.h"
#include "host/WidgetMirror.h"

#include <QWidget>
#include <memory>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;
class QTimer;

namespace tq7 {

class DynamicIPWidget : public QWidget, private DynamicIPEvents {
  Q_OBJECT
 public:
  // Without transfers of its own the tracker uses the real HTTP client.
  explicit DynamicIPWidget(QWidget* parent = nullptr, std::unique_ptr<HttpTransfer> inet1 = nullptr,
                           std::unique_ptr<HttpTransfer> inet2 = nullptr);
  ~DynamicIPWidget() override;

  DynamicIP& tracker() { return tracker_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(DynamicIPEvents* l) { appListener_ = l; }

  QLabel* label(int n) const { return labels_[size_t(n - 1)]; }  // 1 to 3
  QProgressBar* progressBar() const { return bar_; }
  QPushButton* startButton() const { return start_; }
  QPushButton* stopButton() const { return stop_; }
  // The real timer that runs Timer1 (1) or Timer2 (2).
  QTimer* timer(int n) const;

  // Brings the widgets and the timers in line with the core at once.
  void syncNow();

 signals:
  void wanIPChange(const QString& WANIP);
  void allIPChange(const QString& ALLIP);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;

 private:
  void WANIPChange(const QString& WANIP) override;
  void ALLIPChange(const QString& ALLIP) override;

  // A core Timer state run by a QTimer: ticking while enabled with an interval above 0.
  struct TimerRun {
    Timer* state;
    QTimer* timer;
  };
  void syncTimers();

  DynamicIP tracker_;
  WidgetMirror mirror_;
  std::vector<QLabel*> labels_;
  QProgressBar* bar_ = nullptr;
  QPushButton* start_ = nullptr;
  QPushButton* stop_ = nullptr;
  std::vector<TimerRun> timers_;
  DynamicIPEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
