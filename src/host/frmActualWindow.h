#pragma once
// The 1:1 picture window as a top-level QWidget: paints Picture1 where the core puts it, turns
// the mouse and Escape into the form's handlers, and shows the screen's pointer the form asks for.
#include "controls/frmActual.h"

#include <QWidget>

namespace tq7 {

class frmActualWindow : public QWidget, private WidgetObserver {
  Q_OBJECT
 public:
  explicit frmActualWindow(QWidget* parent = nullptr);
  ~frmActualWindow() override;

  frmActual& form() { return form_; }
  // Shows the picture at its own size.
  void showPicture(const QImage& picture);
  QRect pictureRect() const;

 protected:
  void paintEvent(QPaintEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;

 private:
  void widgetChanged(Widget& w) override;
  void follow();

  frmActual form_;
  bool overriding_ = false;
};

}  // namespace tq7
