#include "host/WeightMachineWidget.h"

#include "host/HostColours.h"

#include <QLineEdit>
#include <QResizeEvent>

namespace tq7 {

WeightMachineWidget::WeightMachineWidget(QWidget* parent, std::unique_ptr<SerialPort> port)
    : QWidget(parent), machine_(std::move(port)), mirror_(this) {
  box_ = mirror_.lineEdit(machine_.TxtRegis);
  box_->setFrame(true);
  box_->setAutoFillBackground(true);
  machine_.setChangeCallback([this] { sync_.request(); });
  machine_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

WeightMachineWidget::~WeightMachineWidget() { machine_.setChangeCallback(nullptr); }

void WeightMachineWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  mirror_.sync();
  const TextBox& s = machine_.TxtRegis;
  const Qt::Alignment align = s.Alignment() == 1 ? Qt::AlignRight : s.Alignment() == 2 ? Qt::AlignHCenter : Qt::AlignLeft;
  if (box_->alignment() != (align | Qt::AlignVCenter)) box_->setAlignment(align | Qt::AlignVCenter);
  QPalette pal = box_->palette();
  const QColor back = toQColor(s.BackColor()), fore = toQColor(s.ForeColor());
  if (pal.color(QPalette::Base) != back || pal.color(QPalette::Text) != fore) {
    pal.setColor(QPalette::Base, back);
    pal.setColor(QPalette::Window, back);
    pal.setColor(QPalette::Text, fore);
    box_->setPalette(pal);
  }
}

void WeightMachineWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  machine_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void WeightMachineWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

}  // namespace tq7
