#pragma once
// The button grid as a QWidget: the sheet of buttons on a SurfaceView, its events relayed to a
// listener and as Qt signals.
#include "controls/GridButton.h"
#include "host/WidgetMirror.h"

#include <QWidget>

namespace tq7 {

class SurfaceView;

class GridButtonWidget : public QWidget, private GridButtonEvents {
  Q_OBJECT
 public:
  explicit GridButtonWidget(QWidget* parent = nullptr);
  ~GridButtonWidget() override;

  GridButton& buttons() { return grid_; }
  SurfaceView* surfaceView() const { return view_; }
  void setListener(GridButtonEvents* l) { appListener_ = l; }
  void syncNow();

 signals:
  void buttonClicked(int32_t COL, int32_t Row, int16_t ButtonDown);
  void keyDown(int16_t& KeyCode, int16_t& Shift);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void showEvent(QShowEvent* e) override;

 private:
  void ButtonClicked(int32_t COL, int32_t Row, int16_t ButtonDown) override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;

  GridButton grid_;
  WidgetMirror mirror_;
  SurfaceView* view_ = nullptr;
  GridButtonEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
