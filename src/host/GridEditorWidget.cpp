#include "host/GridEditorWidget.h"

#include "host/SurfaceView.h"

#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QResizeEvent>
#include <QTimer>
#include <QToolBar>

namespace tq7 {

GridEditorWidget::GridEditorWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  setFocusPolicy(Qt::StrongFocus);
  grid_.setListener(this);
  // In the core's order of children, so that later ones stack above earlier ones.
  view_ = new SurfaceView(grid_.mfgData, this);
  view_->onFocusIn = [this] { grid_.setFocusTo(&grid_.mfgData); };
  mirror_.plain(grid_.mfgData, view_);
  mirror_.toolBar(grid_.TbrButton);
  mirror_.button(grid_.cmdLegend);
  mirror_.button(grid_.cmdOption);
  mirror_.button(grid_.cmdSelect);
  mirror_.list(grid_.List1);
  mirror_.list(grid_.List2);
  mirror_.lineEdit(grid_.Text);
  mirror_.messageBox(grid_.Text1);
  grid_.setChangeCallback([this] { scheduleSync(); });
  grid_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

GridEditorWidget::~GridEditorWidget() { grid_.setChangeCallback(nullptr); }

void GridEditorWidget::scheduleSync() {
  if (syncPending_ || syncing_) return;
  syncPending_ = true;
  QTimer::singleShot(0, this, [this] {
    if (syncPending_) syncNow();
  });
}

void GridEditorWidget::syncNow() {
  syncPending_ = false;
  syncing_ = true;
  mirror_.sync();
  view_->sync();
  // The core's focus decides which widget has the keyboard.
  if (hasFocus() || (view_->hasFocus() && grid_.focusedChild() != &grid_.mfgData)) {
    if (grid_.focusedChild() == &grid_.mfgData && view_->isVisible()) view_->setFocus(Qt::OtherFocusReason);
  }
  syncing_ = false;
}

void GridEditorWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  grid_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void GridEditorWidget::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  grid_.controlGotFocus();
  syncNow();
}

void GridEditorWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

// ---- Events: to the application's listener, then as signals ------------------------------------------

#define TQ7_RELAY0(Name, signal)            \
  void GridEditorWidget::Name() {           \
    if (appListener_) appListener_->Name(); \
    emit signal();                          \
    scheduleSync();                         \
  }
TQ7_RELAY0(GridDataChange, gridDataChange)
TQ7_RELAY0(SelChange, selChange)
TQ7_RELAY0(ValidData, validData)
TQ7_RELAY0(AddClick, addClick)
TQ7_RELAY0(DeleteClick, deleteClick)
TQ7_RELAY0(BeforeAddClickProcess, beforeAddClickProcess)
TQ7_RELAY0(BeforeDeleteClickProcess, beforeDeleteClickProcess)
TQ7_RELAY0(AfterDeleteKeyProcess, afterDeleteKeyProcess)
TQ7_RELAY0(DeleteKeyProcessOnReadOnly, deleteKeyProcessOnReadOnly)
TQ7_RELAY0(DoubleClick, doubleClick)
#undef TQ7_RELAY0

void GridEditorWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
}
void GridEditorWidget::BeforeMoveNext(int32_t& Row) {
  if (appListener_) appListener_->BeforeMoveNext(Row);
  emit beforeMoveNext(Row);
}
void GridEditorWidget::MoveComplete(int32_t& Row) {
  if (appListener_) appListener_->MoveComplete(Row);
  emit moveComplete(Row);
}
void GridEditorWidget::LeaveCell(int32_t COL, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) {
  if (appListener_) appListener_->LeaveCell(COL, Row, NewCol, NewRow, Cancel);
  emit leaveCell(COL, Row, NewCol, NewRow, Cancel);
}
void GridEditorWidget::Click(int32_t COL, int32_t Row) {
  if (appListener_) appListener_->Click(COL, Row);
  emit click(COL, Row);
  scheduleSync();
}

}  // namespace tq7
