#include "host/frmActualWindow.h"

#include "host/WidgetMirror.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

namespace tq7 {

namespace {
int16_t buttonsOf(Qt::MouseButtons b) {
  return int16_t((b & Qt::LeftButton ? 1 : 0) | (b & Qt::RightButton ? 2 : 0) | (b & Qt::MiddleButton ? 4 : 0));
}
int16_t buttonOf(Qt::MouseButton b) { return buttonsOf(Qt::MouseButtons(b)); }
}  // namespace

frmActualWindow::frmActualWindow(QWidget* parent) : QWidget(parent, Qt::Window) {
  setAttribute(Qt::WA_DeleteOnClose, false);
  setMouseTracking(true);
  setFocusPolicy(Qt::StrongFocus);
  form_.setObserver(this);
  form_.Picture1.setObserver(this);
  form_.Hide();
  follow();
}

frmActualWindow::~frmActualWindow() {
  form_.setObserver(nullptr);
  form_.Picture1.setObserver(nullptr);
  if (overriding_) QApplication::restoreOverrideCursor();
}

void frmActualWindow::showPicture(const QImage& picture) {
  form_.setPicture(picture);
  form_.Show();
}

QRect frmActualWindow::pictureRect() const {
  const PictureBox& p = form_.Picture1;
  return QRect(twipsToPixels(p.Left()), twipsToPixels(p.Top()), twipsToPixels(p.Width()), twipsToPixels(p.Height()));
}

void frmActualWindow::widgetChanged(Widget&) { follow(); }

void frmActualWindow::follow() {
  setWindowTitle(form_.Caption());
  const QSize size(twipsToPixels(form_.Width()), twipsToPixels(form_.Height()));
  if (size.isValid() && !size.isEmpty() && size != this->size()) resize(size);
  const bool sizeAll = form_.ScreenPointer() == frmActual::Pointer::SizeAll;
  if (sizeAll != overriding_) {
    if (sizeAll)
      QApplication::setOverrideCursor(Qt::SizeAllCursor);
    else
      QApplication::restoreOverrideCursor();
    overriding_ = sizeAll;
  }
  if (form_.Visible() != isVisible()) setVisible(form_.Visible());
  update();
}

void frmActualWindow::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), palette().color(QPalette::Window));
  if (!form_.Picture1.Picture().isNull()) p.drawImage(pictureRect().topLeft(), form_.Picture1.Picture());
}

void frmActualWindow::keyPressEvent(QKeyEvent* e) {
  if (e->key() == Qt::Key_Escape) form_.Form_KeyDown(27);
}

void frmActualWindow::mousePressEvent(QMouseEvent* e) {
  const QPointF at = e->position() - QPointF(pictureRect().topLeft());
  if (pictureRect().contains(e->position().toPoint()))
    form_.Picture1_MouseDown(buttonOf(e->button()), float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
}

void frmActualWindow::mouseMoveEvent(QMouseEvent* e) {
  const QPointF at = e->position() - QPointF(pictureRect().topLeft());
  if (pictureRect().contains(e->position().toPoint()) || (e->buttons() & Qt::LeftButton))
    form_.Picture1_MouseMove(buttonsOf(e->buttons()), float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
  else
    form_.Form_MouseMove(buttonsOf(e->buttons()), float(e->position().x() * TwipsPerPixel),
                         float(e->position().y() * TwipsPerPixel));
}

void frmActualWindow::mouseReleaseEvent(QMouseEvent* e) {
  const QPointF at = e->position() - QPointF(pictureRect().topLeft());
  form_.Picture1_MouseUp(buttonOf(e->button()), float(at.x() * TwipsPerPixel), float(at.y() * TwipsPerPixel));
}

}  // namespace tq7
