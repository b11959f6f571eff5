#pragma once
// The bound rotated text as a QWidget: its own background with the text drawn on it from the
// bottom left corner.
#include "controls/RotatedBoundControl.h"
#include "host/WidgetMirror.h"

#include <QWidget>

namespace tq7 {

class RotatedBoundControlWidget : public QWidget {
  Q_OBJECT
 public:
  explicit RotatedBoundControlWidget(QWidget* parent = nullptr);
  ~RotatedBoundControlWidget() override;

  RotatedBoundControl& control() { return control_; }
  void syncNow() { update(); }

 protected:
  void paintEvent(QPaintEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;

 private:
  RotatedBoundControl control_;
};

}  // namespace tq7
