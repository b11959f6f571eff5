#include "controls/frmActual.h"

namespace tq7 {

namespace {
constexpr int16_t vbLeftButton = 1;
constexpr int16_t vbKeyEscape = 27;
}  // namespace

frmActual::frmActual() : Form(QStringLiteral("frmActual")) {
  setCaption(QStringLiteral("Image Preview Size 1:1"));
  addChild(Picture1);
  Picture1.Move(0, 0, 0, 0);
}

void frmActual::setPicture(const QImage& picture) {
  Picture1.setPicture(picture);
  Picture1.Move(0, 0, picture.width() * TwipsPerPixel, picture.height() * TwipsPerPixel);
  setWidth(Picture1.Width());
  setHeight(Picture1.Height());
}

void frmActual::setPointer(Pointer p) {
  if (pointer_ == p) return;
  pointer_ = p;
  changed();
}

void frmActual::Form_KeyDown(int16_t KeyCode) {
  if (KeyCode == vbKeyEscape) Hide();
}

// A move over the window, off the picture, ends any drag look.
void frmActual::Form_MouseMove(int16_t, float, float) {
  ++seen_;
  setPointer(Pointer::Default);
}

void frmActual::Picture1_MouseDown(int16_t Button, float X, float Y) {
  // The first two events arrive as the window opens; they are no press of the user's.
  if (Button == vbLeftButton && seen_ >= 2) {
    pressX_ = X;
    pressY_ = Y;
    setPointer(Pointer::SizeAll);
  }
  ++seen_;
}

void frmActual::Picture1_MouseMove(int16_t Button, float X, float Y) {
  ++seen_;
  if (Button != vbLeftButton) return;
  Picture1.setLeft(Picture1.Left() + X - pressX_);
  Picture1.setTop(Picture1.Top() + Y - pressY_);
}

void frmActual::Picture1_MouseUp(int16_t, float, float) {
  ++seen_;
  setPointer(Pointer::Default);
}

}  // namespace tq7
