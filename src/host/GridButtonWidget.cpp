#include "host/GridButtonWidget.h"

#include "host/SurfaceView.h"

#include <QApplication>
#include <QFocusEvent>
#include <QResizeEvent>

namespace tq7 {

GridButtonWidget::GridButtonWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  setFocusPolicy(Qt::StrongFocus);
  grid_.setListener(this);
  view_ = new SurfaceView(grid_.mfgData, this);
  view_->onFocusIn = [this] { grid_.setFocusTo(&grid_.mfgData); };
  setFocusProxy(view_);
  mirror_.plain(grid_.mfgData, view_);
  grid_.setChangeCallback([this] { sync_.request(); });
  // The core is sized at the widget's first resize, not at its provisional size: a menu laid out
  // too small for a moment would keep the scroll bars it needed then.
  syncNow();
}

GridButtonWidget::~GridButtonWidget() { grid_.setChangeCallback(nullptr); }

void GridButtonWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  mirror_.sync();
  view_->sync();
  if (grid_.focusedChild() == &grid_.mfgData && isAncestorOf(QApplication::focusWidget()) == false && hasFocus())
    view_->setFocus();
}

void GridButtonWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  grid_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void GridButtonWidget::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  grid_.controlGotFocus();
  syncNow();
}

void GridButtonWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

void GridButtonWidget::ButtonClicked(int32_t COL, int32_t Row, int16_t ButtonDown) {
  if (appListener_) appListener_->ButtonClicked(COL, Row, ButtonDown);
  emit buttonClicked(COL, Row, ButtonDown);
}

void GridButtonWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
}

}  // namespace tq7
