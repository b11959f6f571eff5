#pragma once
// The browse view as a QWidget an application puts on its form. It owns the core DataView,
// paints its surface, tool bar and page scroll bar, hands real keys and clicks to the core, and
// relays the view's events both to a listener and as Qt signals.
#include "host/WidgetMirror.h"
#include "view/DataView.h"

#include <QWidget>

class QScrollBar;
class QToolBar;

namespace tq7 {

class SurfaceView;

class DataViewWidget : public QWidget, private DataViewEvents {
  Q_OBJECT
 public:
  explicit DataViewWidget(QWidget* parent = nullptr);
  ~DataViewWidget() override;

  DataView& view() { return view_; }
  SurfaceView* surfaceView() const { return surface_; }
  QScrollBar* pageBar() const { return pageBar_; }
  QToolBar* toolBar() const { return toolBar_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(DataViewEvents* l) { appListener_ = l; }

  // Brings the widgets in line with the core at once (normally done once per event-loop turn).
  void syncNow();

 signals:
  void addCommandClick();
  void editCommandClick();
  void deleteCommandClick();
  void selectCommandClick();
  void openCommandClick();
  void cancelCommandClick();
  void printCommandClick();
  void exportCommandClick();
  void recordCountChange();
  void beforeFillRecord(int32_t Row);
  void afterFillRecord(int32_t Row);
  void actionReady();
  void setPageSize(int32_t iPageSize);
  void selectionChange(tq7::Matrix& MatrixData);
  void selectAll(tq7::Matrix& MatrixData);
  void deSelectAll(tq7::Matrix& MatrixData);
  void selChange();
  void click();
  void rowDeleted(int32_t Row);

 protected:
  void resizeEvent(QResizeEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void showEvent(QShowEvent* e) override;
  // Keys that reach the control itself are the surface's.
  void keyPressEvent(QKeyEvent* e) override;
  void keyReleaseEvent(QKeyEvent* e) override;

 private:
  void scheduleSync();
  void syncPageBar();
  void syncIcons();

  void AddCommandClick() override;
  void EditCommandClick() override;
  void DeleteCommandClick() override;
  void SelectCommandClick() override;
  void OpenCommandClick() override;
  void CancelCommandClick() override;
  void PrintCommandClick() override;
  void ExportCommandClick() override;
  void RecordCountChange() override;
  void BeforeFillRecord(int32_t Row) override;
  void AfterFillRecord(int32_t Row) override;
  void ActionReady() override;
  void SetPageSize(int32_t iPageSize) override;
  void SelectionChange(Matrix& MatrixData) override;
  void SelectAll(Matrix& MatrixData) override;
  void DeSelectAll(Matrix& MatrixData) override;
  void SelChange() override;
  void Click() override;
  void RowDeleted(int32_t Row) override;

  DataView view_;
  WidgetMirror mirror_;
  SurfaceView* surface_ = nullptr;
  QScrollBar* pageBar_ = nullptr;
  QToolBar* toolBar_ = nullptr;
  DataViewEvents* appListener_ = nullptr;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
