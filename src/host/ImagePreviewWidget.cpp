#include "host/ImagePreviewWidget.h"

#include "host/HostColours.h"
#include "host/HostFonts.h"
#include "host/SurfaceView.h"

#include <QAction>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QResizeEvent>

namespace tq7 {

namespace {
int16_t buttonOf(Qt::MouseButton b) {
  return b == Qt::LeftButton ? 1 : b == Qt::RightButton ? 2 : b == Qt::MiddleButton ? 4 : 0;
}
int16_t buttonsOf(Qt::MouseButtons b) {
  return int16_t((b & Qt::LeftButton ? 1 : 0) | (b & Qt::RightButton ? 2 : 0) | (b & Qt::MiddleButton ? 4 : 0));
}
QRect pixels(double l, double t, double w, double h) {
  return QRect(twipsToPixels(l), twipsToPixels(t), twipsToPixels(w), twipsToPixels(h));
}
}  // namespace

ImagePreviewWidget::ImagePreviewWidget(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  preview_.setListener(this);
  preview_.setChangeCallback([this] { update(); });
  preview_.onPopupMenu = [this] { popUp(); };
  // The core hears of a size first at the widget's first resize: the frame it keeps for its life
  // is taken then, at the size the form gives it, not at a widget's provisional size.
}

ImagePreviewWidget::~ImagePreviewWidget() {
  preview_.setChangeCallback(nullptr);
  preview_.onPopupMenu = nullptr;
}

QRect ImagePreviewWidget::imageRect() const {
  const PictureBox& i = preview_.Image1;
  return pixels(i.Left(), i.Top(), i.Width(), i.Height());
}

QRect ImagePreviewWidget::labelRect(const Label& l) const {
  return pixels(l.Left(), l.Top(), l.Width(), l.Height());
}

void ImagePreviewWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), toQColor(preview_.BackColor(), palette()));
  const QRect img = imageRect();
  if (!preview_.Picture().isNull() && img.isValid()) {
    p.setRenderHint(QPainter::SmoothPixmapTransform);
    p.drawImage(img, preview_.Picture());
  }
  if (preview_.Image1Border()) {
    p.setPen(palette().color(QPalette::Dark));
    p.drawRect(img.adjusted(0, 0, -1, -1));
  }
  for (const Label* l : {&preview_.lblFilename, &preview_.lblSize}) {
    if (!l->Visible() || l->Caption().isEmpty()) continue;
    const QRect r = labelRect(*l);
    p.fillRect(r, toQColor(l->BackColor(), palette()));
    p.setPen(toQColor(l->ForeColor(), palette()));
    p.setFont(toQFont(l->Font()));
    p.drawText(r, Qt::AlignCenter | Qt::TextDontClip, l->Caption());
  }
}

void ImagePreviewWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  preview_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
}

// Positions go to the core in twips, relative to Image1.
void ImagePreviewWidget::mousePressEvent(QMouseEvent* e) {
  setFocus(Qt::MouseFocusReason);
  const QPointF at = e->position() - QPointF(imageRect().topLeft());
  preview_.Image1_MouseDown(buttonOf(e->button()), SurfaceView::shiftStateOf(e->modifiers()),
                            float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
}

void ImagePreviewWidget::mouseMoveEvent(QMouseEvent* e) {
  const QPointF at = e->position() - QPointF(imageRect().topLeft());
  preview_.Image1_MouseMove(buttonsOf(e->buttons()), SurfaceView::shiftStateOf(e->modifiers()),
                            float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
}

void ImagePreviewWidget::mouseReleaseEvent(QMouseEvent* e) {
  const QPointF at = e->position() - QPointF(imageRect().topLeft());
  const QPointer<ImagePreviewWidget> self(this);
  preview_.Image1_MouseUp(buttonOf(e->button()), SurfaceView::shiftStateOf(e->modifiers()),
                          float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
  if (self && e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) preview_.Image1_Click();
}

void ImagePreviewWidget::mouseDoubleClickEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton) preview_.Image1_DblClick();
}

void ImagePreviewWidget::keyPressEvent(QKeyEvent* e) {
  int16_t code = SurfaceView::virtualKeyOf(e->key(), e->modifiers());
  int16_t shift = SurfaceView::shiftStateOf(e->modifiers());
  if (code) preview_.UserControl_KeyDown(code, shift);
}

// ImageMenu at the pointer: the items in their order with the two separators.
void ImagePreviewWidget::popUp() {
  QMenu menu(this);
  auto add = [&](Menu& item) {
    QAction* a = menu.addAction(item.Caption());
    a->setEnabled(item.Enabled());
    return a;
  };
  QAction* view = add(preview_.mnuViewImage);
  menu.addSeparator();
  QAction* change = add(preview_.mnuChangeImage);
  QAction* changeOld = add(preview_.mnuChangeImageBOS);
  menu.addSeparator();
  QAction* clear = add(preview_.mnuClearImage);
  menu_ = &menu;
  const QPointer<ImagePreviewWidget> self(this);
  QAction* chosen = menu.exec(QCursor::pos());
  if (!self) return;
  menu_ = nullptr;
  if (chosen == view) preview_.mnuViewImage.Click();
  else if (chosen == change) preview_.mnuChangeImage.Click();
  else if (chosen == changeOld) preview_.mnuChangeImageBOS.Click();
  else if (chosen == clear) preview_.mnuClearImage.Click();
}

void ImagePreviewWidget::Click() {
  if (appListener_) appListener_->Click();
  emit click();
}
void ImagePreviewWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
}
void ImagePreviewWidget::MouseDown(int16_t Button, int16_t Shift, float X, float Y) {
  if (appListener_) appListener_->MouseDown(Button, Shift, X, Y);
  emit mouseDown(Button, Shift, X, Y);
}
void ImagePreviewWidget::MouseMove(int16_t Button, int16_t Shift, float X, float Y) {
  if (appListener_) appListener_->MouseMove(Button, Shift, X, Y);
  emit mouseMove(Button, Shift, X, Y);
}
void ImagePreviewWidget::MouseUp(int16_t Button, int16_t Shift, float X, float Y) {
  if (appListener_) appListener_->MouseUp(Button, Shift, X, Y);
  emit mouseUp(Button, Shift, X, Y);
}
void ImagePreviewWidget::Change() {
  if (appListener_) appListener_->Change();
  emit change();
}

}  // namespace tq7
