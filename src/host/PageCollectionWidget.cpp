#include "host/PageCollectionWidget.h"

#include "host/SurfaceView.h"

#include <QKeyEvent>
#include <QAction>
#include <QLineEdit>
#include <QPainter>
#include <QResizeEvent>
#include <QToolBar>

namespace tq7 {

namespace {
// The navigator's images: triangles towards the first, previous, next and last page, with a bar
// for the two ends.
QIcon navigationIcon(const QString& key) {
  QPixmap pm(16, 16);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  p.setPen(Qt::NoPen);
  p.setBrush(QColor(0x1E, 0x5A, 0xA8));
  const bool left = key == QLatin1String("First") || key == QLatin1String("Back");
  const bool end = key == QLatin1String("First") || key == QLatin1String("Last");
  const QPolygonF tri = left ? QPolygonF{{12, 3}, {4, 8}, {12, 13}} : QPolygonF{{4, 3}, {12, 8}, {4, 13}};
  p.drawPolygon(tri);
  if (end) p.drawRect(left ? QRectF(2, 3, 2, 10) : QRectF(12, 3, 2, 10));
  return QIcon(pm);
}
}  // namespace

PageCollectionWidget::PageCollectionWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  pages_.setListener(this);
  left_ = mirror_.toolBar(pages_.tbrLeft);
  current_ = mirror_.lineEdit(pages_.txtCurrent);
  total_ = mirror_.lineEdit(pages_.txtTotal);
  right_ = mirror_.toolBar(pages_.TbrRight);
  for (QToolBar* bar : {left_, right_}) {
    // Two small buttons side by side in the bar's fixed width: no handle, no margins.
    bar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    bar->setMovable(false);
    bar->setFloatable(false);
    bar->setIconSize(QSize(12, 12));
    bar->setContentsMargins(0, 0, 0, 0);
    bar->setStyleSheet(QStringLiteral("QToolBar { spacing: 0px; padding: 0px; border: 0px; } "
                                      "QToolButton { padding: 1px; margin: 0px; }"));
  }
  for (QLineEdit* box : {current_, total_}) {
    box->setFrame(true);
    box->setAlignment(Qt::AlignCenter);
    box->installEventFilter(this);
  }
  pages_.setChangeCallback([this] { sync_.request(); });
  setFixedHeight(twipsToPixels(PageCollection::FixedHeight));
  syncNow();
  for (QToolBar* bar : {left_, right_})
    for (QAction* a : bar->actions()) a->setIcon(navigationIcon(a->data().toString()));
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
