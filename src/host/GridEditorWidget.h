#pragma once
// The data-entry grid as a QWidget an application puts on its form. It owns the core GridEditor,
// renders its children and relays its events both to a listener and as Qt signals.
#include "grid/editor/GridEditor.h"
#include "host/WidgetMirror.h"

#include <QWidget>
#include <memory>

class QLineEdit;
class QListWidget;

namespace tq7 {

class SurfaceView;
class MonthCalendarView;
class DateTimeViewPanel;

class GridEditorWidget : public QWidget, private GridEditorEvents {
  Q_OBJECT
 public:
  explicit GridEditorWidget(QWidget* parent = nullptr);
  ~GridEditorWidget() override;

  GridEditor& grid() { return grid_; }
  SurfaceView* surfaceView() const { return view_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(GridEditorEvents* l) { appListener_ = l; }

  // Brings the widgets in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 signals:
  void keyDown(int16_t& KeyCode, int16_t& Shift);
  void gridDataChange();
  void selChange();
  void validData();
  void addClick();
  void deleteClick();
  void beforeAddClickProcess();
  void beforeDeleteClickProcess();
  void beforeMoveNext(int32_t& Row);
  void moveComplete(int32_t& Row);
  void afterDeleteKeyProcess();
  void deleteKeyProcessOnReadOnly();
  void doubleClick();
  void leaveCell(int32_t COL, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel);
  void click(int32_t COL, int32_t Row);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void showEvent(QShowEvent* e) override;

 private:
  void scheduleSync();
  // The cell overlays: the core's focused child decides the Qt focus, and keys typed into the
  // overlays go to the core before the Qt widget sees them.
  void setUpOverlays();
  QWidget* widgetOfFocus() const;
  void followFocus();
  bool eventFilter(QObject* watched, QEvent* e) override;

  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void GridDataChange() override;
  void SelChange() override;
  void ValidData() override;
  void AddClick() override;
  void DeleteClick() override;
  void BeforeAddClickProcess() override;
  void BeforeDeleteClickProcess() override;
  void BeforeMoveNext(int32_t& Row) override;
  void MoveComplete(int32_t& Row) override;
  void AfterDeleteKeyProcess() override;
  void DeleteKeyProcessOnReadOnly() override;
  void DoubleClick() override;
  void LeaveCell(int32_t COL, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) override;
  void Click(int32_t COL, int32_t Row) override;

  GridEditor grid_;
  WidgetMirror mirror_;
  SurfaceView* view_ = nullptr;
  GridEditorEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
  bool keyboardWasInside_ = false;
  bool syncing_ = false;
  QMetaObject::Connection focusWatch_;
  QLineEdit* text_ = nullptr;
  QListWidget* list1_ = nullptr;
  MonthCalendarView* monthView1_ = nullptr;
  DateTimeViewPanel* dateTimeView1_ = nullptr;
  QWidget* monthYearView1_ = nullptr;
  QListWidget* monthYearList_ = nullptr;
  std::unique_ptr<WidgetMirror> monthYearMirror_;
};

}  // namespace tq7
