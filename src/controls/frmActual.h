#pragma once
// The window that shows a picture at its own size. The user drags the picture about with the
// left button; Escape closes the window.
#include "frame/Widget.h"

#include <QImage>
#include <cstdint>

namespace tq7 {

class frmActual : public Form {
 public:
  // The screen's pointer while a drag runs.
  enum class Pointer { Default, SizeAll };

  frmActual();

  // Puts the picture in Picture1 at its own size, at the window's top left; the window takes the
  // picture's size.
  void setPicture(const QImage& picture);

  // Handlers the host calls; positions in twips, relative to Picture1 for the picture's events.
  void Form_KeyDown(int16_t KeyCode);
  void Form_MouseMove(int16_t Button, float X, float Y);
  void Picture1_MouseDown(int16_t Button, float X, float Y);
  void Picture1_MouseMove(int16_t Button, float X, float Y);
  void Picture1_MouseUp(int16_t Button, float X, float Y);

  Pointer ScreenPointer() const { return pointer_; }
  // Mouse events the window has seen; a press counts only after the first two.
  int32_t mouseEventsSeen() const { return seen_; }

  PictureBox Picture1{QStringLiteral("Picture1")};

 private:
  void setPointer(Pointer p);

  Pointer pointer_ = Pointer::Default;
  int32_t seen_ = 0;
  float pressX_ = 0, pressY_ = 0;
};

}  // namespace tq7
