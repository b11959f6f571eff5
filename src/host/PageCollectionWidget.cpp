#include "host/PageCollectionWidget.h"

#include "host/SurfaceView.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QResizeEvent>
#include <QToolBar>

namespace tq7 {

PageCollectionWidget::PageCollectionWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  pages_.setListener(this);
  left_ = mirror_.toolBar(pages_.tbrLeft);
  current_ = mirror_.lineEdit(pages_.txtCurrent);
  total_ = mirror_.lineEdit(pages_.txtTotal);
  right_ = mirror_.toolBar(pages_.TbrRight);
  for (QToolBar* bar : {left_, right_}) {
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    bar->setContentsMargins(0, 0, 0, 0);
  }
  for (QLineEdit* box : {current_, total_}) {
    box->setFrame(true);
    box->setAlignment(Qt::AlignCenter);
    box->installEventFilter(this);
  }
  pages_.setChangeCallback([this] { sync_.request(); });
  setFixedHeight(twipsToPixels(PageCollection::FixedHeight));
  syncNow();
}

PageCollectionWidget::~PageCollectionWidget() { pages_.setChangeCallback(nullptr); }

QSize PageCollectionWidget::sizeHint() const {
  return QSize(twipsToPixels(PageCollection::MinWidth), twipsToPixels(PageCollection::FixedHeight));
}

void PageCollectionWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  mirror_.sync();
  const QSize want(twipsToPixels(pages_.Width()), twipsToPixels(pages_.Height()));
  setMinimumWidth(twipsToPixels(PageCollection::MinWidth));
  if (size() != want && isVisible() && width() < want.width()) resize(want);
}

void PageCollectionWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  pages_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void PageCollectionWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

// Keys typed into the page boxes reach the control's KeyDown before the box takes them.
bool PageCollectionWidget::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::KeyPress && (watched == current_ || watched == total_)) {
    auto* k = static_cast<QKeyEvent*>(e);
    int16_t code = SurfaceView::virtualKeyOf(k->key(), k->modifiers());
    int16_t shift = SurfaceView::shiftStateOf(k->modifiers());
    if (code) {
      pages_.UserControl_KeyDown(code, shift);
      if (code == 0) return true;
    }
  }
  return QWidget::eventFilter(watched, e);
}

void PageCollectionWidget::ButtonNextClick() {
  if (appListener_) appListener_->ButtonNextClick();
  emit buttonNextClick();
}
void PageCollectionWidget::ButtonBackClick() {
  if (appListener_) appListener_->ButtonBackClick();
  emit buttonBackClick();
}
void PageCollectionWidget::ButtonFirstClick() {
  if (appListener_) appListener_->ButtonFirstClick();
  emit buttonFirstClick();
}
void PageCollectionWidget::ButtonLastClick() {
  if (appListener_) appListener_->ButtonLastClick();
  emit buttonLastClick();
}
void PageCollectionWidget::ChangeCurrent() {
  if (appListener_) appListener_->ChangeCurrent();
  emit changeCurrent();
}
void PageCollectionWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
}

}  // namespace tq7
