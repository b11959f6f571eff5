#pragma once
// The image preview as a QWidget: paints the picture into Image1's place with its border and the
// two labels under it, turns the mouse and keys into the core's handlers, pops the right
// button's menu up, and relays the events to a listener and as Qt signals.
#include "controls/ImagePreview.h"
#include "host/WidgetMirror.h"

#include <QWidget>

class QMenu;

namespace tq7 {

class ImagePreviewWidget : public QWidget, private ImagePreviewEvents {
  Q_OBJECT
 public:
  explicit ImagePreviewWidget(QWidget* parent = nullptr);
  ~ImagePreviewWidget() override;

  ImagePreview& preview() { return preview_; }
  void setListener(ImagePreviewEvents* l) { appListener_ = l; }
  void syncNow() { update(); }

  // Image1's place and the labels' places, in this widget's pixels.
  QRect imageRect() const;
  QRect labelRect(const Label& l) const;
  // The menu while it is up (null otherwise).
  QMenu* popupMenu() const { return menu_; }

 signals:
  void click();
  void keyDown(int16_t& KeyCode, int16_t& Shift);
  void mouseDown(int16_t Button, int16_t Shift, float X, float Y);
  void mouseMove(int16_t Button, int16_t Shift, float X, float Y);
  void mouseUp(int16_t Button, int16_t Shift, float X, float Y);
  void change();

 protected:
  void paintEvent(QPaintEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;

 private:
  void popUp();

  void Click() override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void MouseDown(int16_t Button, int16_t Shift, float X, float Y) override;
  void MouseMove(int16_t Button, int16_t Shift, float X, float Y) override;
  void MouseUp(int16_t Button, int16_t Shift, float X, float Y) override;
  void Change() override;

  ImagePreview preview_;
  ImagePreviewEvents* appListener_ = nullptr;
  QMenu* menu_ = nullptr;
};

}  // namespace tq7
