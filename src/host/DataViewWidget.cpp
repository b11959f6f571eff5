#include "host/DataViewWidget.h"

#include "host/FilterDataDialog.h"
#include "host/QtPlatform.h"
#include "host/SurfaceView.h"
#include "host/ToolBarIcons.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <QFocusEvent>
#include <QPixmap>
#include <QResizeEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QToolBar>

namespace tq7 {

DataViewWidget::DataViewWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  setFocusPolicy(Qt::StrongFocus);
  QtPlatform::setFormRunner(QStringLiteral("FilterData"), &FilterDataDialog::run);
  view_.setListener(this);
  // In the core's order of children, so that later ones stack above earlier ones.
  surface_ = new SurfaceView(view_.mfgData, this);
  surface_->onFocusIn = [this] { view_.setFocusTo(&view_.mfgData); };
  mirror_.plain(view_.mfgData, surface_);
  pageBar_ = new QScrollBar(Qt::Vertical, this);
  mirror_.plain(view_.VScroll1, pageBar_);
  connect(pageBar_, &QScrollBar::valueChanged, this, [this](int value) {
    view_.VScroll1.setValue(value);  // a new page
    syncNow();
  });
  toolBar_ = mirror_.toolBar(view_.TbrButton);
  mirror_.button(view_.cmdLegend);
  mirror_.button(view_.cmdOption);
  mirror_.list(view_.List2);
  mirror_.messageBox(view_.Text1);
  view_.setChangeCallback([this] { scheduleSync(); });
  view_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

DataViewWidget::~DataViewWidget() {
  view_.setChangeCallback(nullptr);
  view_.setListener(nullptr);
}

void DataViewWidget::scheduleSync() { sync_.request(); }

void DataViewWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  mirror_.sync();
  syncPageBar();
  syncIcons();
  surface_->sync();
  // The core's focus decides only while the keyboard is inside this control: a refresh must not
  // take it from another box of the form.
  QWidget* current = QApplication::focusWidget();
  if (view_.focusedChild() == &view_.mfgData && surface_->isVisible() && current &&
      (current == this || isAncestorOf(current)) && current != surface_)
    surface_->setFocus(Qt::OtherFocusReason);
}

// The page bar's range and position are the core's; moving them here tells the core nothing.
void DataViewWidget::syncPageBar() {
  const QSignalBlocker block(pageBar_);
  const ScrollBar& s = view_.VScroll1;
  pageBar_->setRange(s.Min(), std::max(s.Min(), s.Max()));
  pageBar_->setSingleStep(std::max(1, s.SmallChange()));
  pageBar_->setPageStep(std::max(1, s.LargeChange()));
  pageBar_->setValue(s.Value());
}

// The pictures an application gave the bar stand in for the drawn images.
void DataViewWidget::syncIcons() {
  const auto& buttons = view_.TbrButton.ButtonList();
  const QList<QAction*> actions = toolBar_->actions();
  if (actions.size() != qsizetype(buttons.size())) return;
  for (size_t i = 0; i < buttons.size(); ++i) {
    const QString& image = buttons[i].Image;
    QAction* a = actions[qsizetype(i)];
    if (a->property("tq7Image").toString() == image) continue;  // the image the action shows
    const auto own = view_.ImlIconPictures.constFind(image);
    a->setIcon(own != view_.ImlIconPictures.constEnd() ? QIcon(QPixmap::fromImage(*own)) : toolBarIcon(image));
    a->setProperty("tq7Image", image);
  }
}

void DataViewWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  view_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void DataViewWidget::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  view_.controlGotFocus();
  if (surface_->isVisible()) surface_->setFocus(Qt::OtherFocusReason);
  syncNow();
}

void DataViewWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  view_.UserControl_Show();
  syncNow();
}

void DataViewWidget::keyPressEvent(QKeyEvent* e) {
  if (!surface_->isVisible()) return QWidget::keyPressEvent(e);
  QKeyEvent copy(e->type(), e->key(), e->modifiers(), e->text(), e->isAutoRepeat(), ushort(e->count()));
  QApplication::sendEvent(surface_, &copy);
}

void DataViewWidget::keyReleaseEvent(QKeyEvent* e) {
  if (!surface_->isVisible()) return QWidget::keyReleaseEvent(e);
  QKeyEvent copy(e->type(), e->key(), e->modifiers(), e->text(), e->isAutoRepeat(), ushort(e->count()));
  QApplication::sendEvent(surface_, &copy);
}

// ---- Events: to the application's listener, then as signals --------------------------------------------------

#define TQ7_RELAY0(Name, signal)            \
  void DataViewWidget::Name() {             \
    if (appListener_) appListener_->Name(); \
    emit signal();                          \
    scheduleSync();                         \
  }
TQ7_RELAY0(AddCommandClick, addCommandClick)
TQ7_RELAY0(EditCommandClick, editCommandClick)
TQ7_RELAY0(DeleteCommandClick, deleteCommandClick)
TQ7_RELAY0(SelectCommandClick, selectCommandClick)
TQ7_RELAY0(OpenCommandClick, openCommandClick)
TQ7_RELAY0(CancelCommandClick, cancelCommandClick)
TQ7_RELAY0(PrintCommandClick, printCommandClick)
TQ7_RELAY0(ExportCommandClick, exportCommandClick)
TQ7_RELAY0(RecordCountChange, recordCountChange)
TQ7_RELAY0(ActionReady, actionReady)
TQ7_RELAY0(SelChange, selChange)
TQ7_RELAY0(Click, click)
#undef TQ7_RELAY0

#define TQ7_RELAY1(Name, signal, Type)         \
  void DataViewWidget::Name(Type a) {          \
    if (appListener_) appListener_->Name(a);   \
    emit signal(a);                            \
    scheduleSync();                            \
  }
TQ7_RELAY1(BeforeFillRecord, beforeFillRecord, int32_t)
TQ7_RELAY1(AfterFillRecord, afterFillRecord, int32_t)
TQ7_RELAY1(SetPageSize, setPageSize, int32_t)
TQ7_RELAY1(RowDeleted, rowDeleted, int32_t)
TQ7_RELAY1(SelectionChange, selectionChange, Matrix&)
TQ7_RELAY1(SelectAll, selectAll, Matrix&)
TQ7_RELAY1(DeSelectAll, deSelectAll, Matrix&)
#undef TQ7_RELAY1

}  // namespace tq7
