#include "host/MonthYearViewWidget.h"

#include "host/HostFonts.h"
#include "host/SurfaceView.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTimer>
#include <algorithm>

namespace tq7 {

namespace {

// A row of the list with its text at the font's own height. The rows share the list's height
// as the classic list's rows do, which is less than a Thai line: the marks above and below the
// letters reach into the next rows instead of being cut off.
class RowDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;
  void paint(QPainter* p, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
    const bool selected = option.state & QStyle::State_Selected;
    if (selected) p->fillRect(option.rect, option.palette.color(QPalette::Highlight));
    const QFontMetrics fm(option.font);
    QRect text = option.rect.adjusted(2, 0, -2, 0);
    text.setTop(option.rect.center().y() - fm.height() / 2);
    text.setHeight(fm.height());
    p->save();
    p->setClipping(false);
    p->setFont(option.font);
    p->setPen(option.palette.color(selected ? QPalette::HighlightedText : QPalette::Text));
    p->drawText(text, Qt::AlignLeft | Qt::AlignVCenter, index.data().toString());
    p->restore();
  }
};

}  // namespace

MonthYearViewWidget::MonthYearViewWidget(QWidget* parent) : QWidget(parent), mirror_(this) {
  setFocusPolicy(Qt::StrongFocus);

  // In the core's order of children, so that later ones stack above earlier ones.
  year_ = mirror_.lineEdit(view_.Text1);
  year_->setFrame(true);
  previous_ = mirror_.button(view_.cmdPrevious);
  next_ = mirror_.button(view_.cmdNext);
  list_ = mirror_.list(view_.List1);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  list_->setItemDelegate(new RowDelegate(list_));
  list_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // A row's marks stand in its neighbours: a new selection repaints the whole list.
  connect(list_, &QListWidget::currentRowChanged, list_->viewport(), qOverload<>(&QWidget::update));
  // The mirror carries the selection; a click on the row already selected is the list's click
  // all the same, and a double click raises MonthClick after the click that began it.
  connect(list_, &QListWidget::itemClicked, this, [this] { view_.List1_Click(); });
  connect(list_, &QListWidget::itemDoubleClicked, this, [this] { view_.List1_DblClick(); });
  for (QWidget* w : std::initializer_list<QWidget*>{previous_, next_, list_}) {
    w->setFocusPolicy(Qt::StrongFocus);
    w->installEventFilter(this);
  }

  view_.setListener(this);
  view_.setChangeCallback([this] { scheduleSync(); });
  syncNow();
}

MonthYearViewWidget::~MonthYearViewWidget() {
  view_.setChangeCallback(nullptr);
  view_.setListener(nullptr);
}

void MonthYearViewWidget::scheduleSync() { sync_.request(); }

void MonthYearViewWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  const QSize fixed(twipsToPixels(view_.Width()), twipsToPixels(view_.Height()));
  if (size() != fixed) setFixedSize(fixed);
  {
    // A list filled anew passes through "nothing selected"; that is not the user's choice.
    const QSignalBlocker quiet(list_);
    mirror_.sync();
  }
  list_->viewport()->update();
  // The rows share the list's height: twelve months or four quarters without a scroll bar.
  if (list_->count() > 0) {
    const int rowHeight = std::max(1, list_->viewport()->height() / list_->count());
    for (int i = 0; i < list_->count(); ++i)
      if (list_->item(i)->sizeHint().height() != rowHeight) list_->item(i)->setSizeHint(QSize(0, rowHeight));
  }
  const int16_t a = view_.Text1.Alignment();
  year_->setAlignment(a == 2 ? Qt::AlignCenter : a == 1 ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignLeft | Qt::AlignVCenter);
  year_->setFont(toQFont(view_.Text1.Font()));
  previous_->setFont(toQFont(view_.cmdPrevious.Font()));
  next_->setFont(toQFont(view_.cmdNext.Font()));
  if (list_->currentItem()) list_->scrollToItem(list_->currentItem());
}

void MonthYearViewWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  const QSize core(twipsToPixels(view_.Width()), twipsToPixels(view_.Height()));
  if (e->size() != core) view_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void MonthYearViewWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

void MonthYearViewWidget::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  view_.controlGotFocus();
  list_->setFocus(e->reason());
}

bool MonthYearViewWidget::eventFilter(QObject* watched, QEvent* e) {
  if (e->type() == QEvent::KeyPress) {
    auto* ke = static_cast<QKeyEvent*>(e);
    int16_t vk = SurfaceView::virtualKeyOf(*ke);
    int16_t sh = SurfaceView::shiftStateOf(ke->modifiers());
    if (vk) {
      const QPointer<QObject> self(watched);
      if (watched == list_)
        view_.List1_KeyDown(vk, sh);
      else if (watched == previous_)
        view_.cmdPrevious_KeyDown(vk, sh);
      else if (watched == next_)
        view_.cmdNext_KeyDown(vk, sh);
      if (!self) return true;
    }
  }
  return QWidget::eventFilter(watched, e);
}

// ---- Events: to the application's listener, then as signals ------------------------------------

void MonthYearViewWidget::Resize() {
  if (appListener_) appListener_->Resize();
  emit resized();
  scheduleSync();
}

void MonthYearViewWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
  scheduleSync();
}

void MonthYearViewWidget::MonthClick(int16_t EMonth, int16_t EYear) {
  if (appListener_) appListener_->MonthClick(EMonth, EYear);
  emit monthClick(EMonth, EYear);
  scheduleSync();
}

}  // namespace tq7
