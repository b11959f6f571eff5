#include "host/RotatedBoundControlWidget.h"

#include "host/RotLabelWidget.h"

#include <QPainter>
#include <QResizeEvent>

namespace tq7 {

RotatedBoundControlWidget::RotatedBoundControlWidget(QWidget* parent) : QWidget(parent) {
  setAutoFillBackground(false);
  control_.setChangeCallback([this] { update(); });
  control_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
}

RotatedBoundControlWidget::~RotatedBoundControlWidget() { control_.setChangeCallback(nullptr); }

void RotatedBoundControlWidget::paintEvent(QPaintEvent*) {
  // Cleared first, then printed.
  QPainter p(this);
  p.fillRect(rect(), palette().color(QPalette::Window));
  p.setPen(palette().color(QPalette::WindowText));
  p.setRenderHint(QPainter::TextAntialiasing);
  drawRotatedText(p, control_.lastDrawing());
}

void RotatedBoundControlWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  control_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
}

}  // namespace tq7
