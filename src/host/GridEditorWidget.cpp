#include "host/GridEditorWidget.h"

#include "host/DateTimeViewWidget.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
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
  list1_ = mirror_.list(grid_.List1);
  mirror_.list(grid_.List2);
  text_ = mirror_.lineEdit(grid_.Text);
  setUpOverlays();
  mirror_.messageBox(grid_.Text1);
  grid_.setChangeCallback([this] { scheduleSync(); });
  // The keyboard going to another widget of the form is the grid's loss of focus: the list and the
  // pickers close. A window of its own (a message box) or another application is not.
  focusWatch_ = connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
    const auto inside = [this](QWidget* w) { return w == this || isAncestorOf(w); };
    // A sync that hides the overlay holding the keyboard moves it on by itself; that is no
    // leaving, and the sync brings the keyboard back.
    if (syncing_ || !old || !now || !inside(old) || inside(now) || now->window() != window()) return;
    grid_.setFocusTo(nullptr);
    grid_.controlLostFocus();
    syncNow();
  });
  grid_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

GridEditorWidget::~GridEditorWidget() {
  // The children hide after this body, and the keyboard moves with them: none of that is the grid's.
  disconnect(focusWatch_);
  grid_.setChangeCallback(nullptr);
}

void GridEditorWidget::scheduleSync() { sync_.request(); }

void GridEditorWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  // Hiding the overlay that has the keyboard hands the keyboard to the next widget of the form;
  // when it was inside the grid before this sync, it stays with the grid's focused child.
  QWidget* const before = QApplication::focusWidget();
  keyboardWasInside_ = before && (before == this || isAncestorOf(before));
  const bool wasSyncing = syncing_;
  syncing_ = true;
  mirror_.sync();
  dateTimeView1_->syncNow();
  monthYearMirror_->sync();
  view_->sync();
  followFocus();  // the core's focus decides which widget has the keyboard
  syncing_ = wasSyncing;
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

// ---- Cell overlays ----------------------------------------------------------------------------------

void GridEditorWidget::setUpOverlays() {
  // The pickers, each a frame in the grid's stacking order with the picker's pieces inside.
  monthView1_ = new MonthCalendarView(grid_.MonthView1, this);
  mirror_.plain(grid_.MonthView1, monthView1_);
  dateTimeView1_ = new DateTimeViewPanel(*grid_.DateTimeView1, this);
  dateTimeView1_->setAutoFillBackground(true);
  dateTimeView1_->afterKey = [this] { syncNow(); };
  mirror_.plain(grid_.DateTimeView1, dateTimeView1_);
  grid_.DateTimeView1->setChangeCallback([this] { scheduleSync(); });
  monthYearView1_ = new QWidget(this);
  monthYearView1_->setAutoFillBackground(true);
  mirror_.plain(grid_.MonthYearView1, monthYearView1_);
  monthYearMirror_ = std::make_unique<WidgetMirror>(monthYearView1_);
  MonthYearView& myv = *grid_.MonthYearView1;
  monthYearMirror_->lineEdit(myv.Text1)->setReadOnly(true);
  monthYearMirror_->button(myv.cmdPrevious);
  monthYearMirror_->button(myv.cmdNext);
  monthYearList_ = monthYearMirror_->list(myv.List1);
  connect(monthYearList_, &QListWidget::itemClicked, this, [this] { grid_.MonthYearView1->List1_Click(); });
  connect(monthYearList_, &QListWidget::itemDoubleClicked, this, [this] {
    grid_.MonthYearView1->List1_DblClick();
    syncNow();
  });
  myv.setChangeCallback([this] { scheduleSync(); });
  // The in-cell overlays: keys first to the core; a focus taken by the mouse is the core's too.
  connect(list1_, &QListWidget::itemDoubleClicked, this, [this] {
    grid_.List1_DblClick();
    syncNow();
  });
  for (QWidget* w : std::initializer_list<QWidget*>{text_, list1_, monthYearList_}) w->installEventFilter(this);
}

QWidget* GridEditorWidget::widgetOfFocus() const {
  Widget* f = grid_.focusedChild();
  if (f == &grid_.Text) return text_;
  if (f == &grid_.List1) return list1_;
  if (f == &grid_.MonthView1) return monthView1_;
  if (f == &grid_.DateTimeView1) return dateTimeView1_->calendar();
  if (f == &grid_.MonthYearView1) return monthYearList_;
  if (f == &grid_.mfgData) return view_;
  return nullptr;
}

// Only while the keyboard is somewhere in this control: a sync must not pull the focus from
// another control of the form.
void GridEditorWidget::followFocus() {
  QWidget* target = widgetOfFocus();
  QWidget* current = QApplication::focusWidget();
  if (!target || target == current || !target->isVisible()) return;
  if (current && current != this && !isAncestorOf(current) && !keyboardWasInside_) return;
  // A picker's inner box keeps the keyboard while its picker is the focused child.
  if (current && target->parentWidget() != this && target->parentWidget()->isAncestorOf(current)) return;
  target->setFocus(Qt::OtherFocusReason);
}

bool GridEditorWidget::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::FocusIn) {
    if (watched == text_) grid_.setFocusTo(&grid_.Text);
    else if (watched == list1_) grid_.setFocusTo(&grid_.List1);
    return false;
  }
  if (e->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, e);
  auto* ke = static_cast<QKeyEvent*>(e);
  int16_t code = SurfaceView::virtualKeyOf(*ke);
  int16_t shift = SurfaceView::shiftStateOf(ke->modifiers());
  const bool own = code == key::Return || code == key::Escape || code == key::F2;
  if (watched == text_) {
    grid_.Text_KeyDown(code, shift);
    for (int16_t a : SurfaceView::keyAsciiOf(*ke)) grid_.Text_KeyPress(a);
  } else if (watched == list1_) {
    if (!own) return false;
    grid_.List1_KeyDown(code, shift);
  } else {
    if (code != key::Return && code != key::Escape) return false;
    grid_.MonthYearView1->List1_KeyDown(code, shift);
  }
  if (!own) return false;  // the line edit types the character itself
  syncNow();
  return true;
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
