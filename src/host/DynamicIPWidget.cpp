#include "host/DynamicIPWidget.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QResizeEvent>
#include <QTimer>
#include <cmath>

namespace tq7 {

DynamicIPWidget::DynamicIPWidget(QWidget* parent, std::unique_ptr<HttpTransfer> inet1,
                                 std::unique_ptr<HttpTransfer> inet2)
    : QWidget(parent), tracker_(std::move(inet1), std::move(inet2)), mirror_(this) {
  tracker_.setListener(this);
  for (Label* state : {&tracker_.Label1, &tracker_.Label2, &tracker_.Label3}) {
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    mirror_.plain(*state, label);
    labels_.push_back(label);
  }
  bar_ = new QProgressBar(this);
  bar_->setTextVisible(false);
  mirror_.plain(tracker_.ProgressBar1, bar_);
  start_ = mirror_.button(tracker_.btnStartDL);
  stop_ = mirror_.button(tracker_.Command1);
  for (Timer* state : {&tracker_.Timer1, &tracker_.Timer2}) {
    auto* timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, [state] { state->Tick(); });
    timers_.push_back(TimerRun{state, timer});
  }
  tracker_.setChangeCallback([this] { sync_.request(); });
  tracker_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

DynamicIPWidget::~DynamicIPWidget() {
  for (TimerRun& t : timers_) t.timer->stop();
  tracker_.setChangeCallback(nullptr);
  tracker_.setListener(nullptr);
}

QTimer* DynamicIPWidget::timer(int n) const { return timers_[size_t(n - 1)].timer; }

void DynamicIPWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  mirror_.sync();
  const Label* states[] = {&tracker_.Label1, &tracker_.Label2, &tracker_.Label3};
  for (size_t i = 0; i < labels_.size(); ++i)
    if (labels_[i]->text() != states[i]->Caption()) labels_[i]->setText(states[i]->Caption());
  const ProgressBar& p = tracker_.ProgressBar1;
  bar_->setRange(int(std::lround(p.Min())), int(std::lround(p.Max())));
  bar_->setValue(int(std::lround(p.Value())));
  syncTimers();
}

void DynamicIPWidget::syncTimers() {
  for (TimerRun& t : timers_) {
    const bool run = t.state->Enabled() && t.state->Interval() > 0;
    if (!run) {
      t.timer->stop();
    } else if (!t.timer->isActive() || t.timer->interval() != t.state->Interval()) {
      t.timer->start(t.state->Interval());
    }
  }
}

void DynamicIPWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  tracker_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void DynamicIPWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

void DynamicIPWidget::WANIPChange(const QString& WANIP) {
  if (appListener_) appListener_->WANIPChange(WANIP);
  emit wanIPChange(WANIP);
}

void DynamicIPWidget::ALLIPChange(const QString& ALLIP) {
  if (appListener_) appListener_->ALLIPChange(ALLIP);
  emit allIPChange(ALLIP);
}

}  // namespace tq7
