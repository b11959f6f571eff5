#include "host/DateTimeViewWidget.h"

#include "companion/VbText.h"
#include "host/HostColours.h"
#include "host/HostFonts.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QResizeEvent>
#include <QTimer>

namespace tq7 {

// ---- The month calendar ------------------------------------------------------------------------

MonthCalendarView::MonthCalendarView(MonthCalendar& state, QWidget* parent) : QWidget(parent), state_(state) {
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_OpaquePaintEvent);
}

int MonthCalendarView::titleHeight() const { return fontMetrics().height() + 6; }
int MonthCalendarView::namesHeight() const { return fontMetrics().height() + 3; }

QRect MonthCalendarView::titleRect() const { return QRect(0, 0, width(), titleHeight()); }
QRect MonthCalendarView::previousRect() const { return QRect(0, 0, titleHeight(), titleHeight()); }
QRect MonthCalendarView::nextRect() const {
  return QRect(width() - titleHeight(), 0, titleHeight(), titleHeight());
}

QRect MonthCalendarView::cellRect(int row, int column) const {
  const int top = titleHeight() + namesHeight();
  const int w = width() / MonthCalendar::Columns;
  const int h = (height() - top) / MonthCalendar::Rows;
  const int left = (width() - w * MonthCalendar::Columns) / 2;
  return QRect(left + column * w, top + row * h, w, h);
}

QRect MonthCalendarView::dayRect(double date) const {
  const double offset = date - state_.CellDate(0, 0);
  if (offset < 0 || offset >= MonthCalendar::Rows * MonthCalendar::Columns) return {};
  const int n = int(offset);
  return cellRect(n / MonthCalendar::Columns, n % MonthCalendar::Columns);
}

bool MonthCalendarView::dayAt(const QPoint& p, double& date) const {
  for (int r = 0; r < MonthCalendar::Rows; ++r)
    for (int c = 0; c < MonthCalendar::Columns; ++c)
      if (cellRect(r, c).contains(p)) {
        date = state_.CellDate(r, c);
        return true;
      }
  return false;
}

void MonthCalendarView::paintEvent(QPaintEvent*) {
  QPainter p(this);
  const QPalette& pal = palette();
  p.setFont(font());
  p.fillRect(rect(), toQColor(state_.BackColor(), pal));

  // Title: the month and the shown year between the two arrows.
  const QRect title = titleRect();
  p.fillRect(title, pal.color(QPalette::Highlight));
  p.setPen(pal.color(QPalette::HighlightedText));
  p.drawText(title, Qt::AlignCenter, state_.TitleText());
  p.setRenderHint(QPainter::Antialiasing);
  p.setBrush(pal.color(QPalette::HighlightedText));
  for (const bool left : {true, false}) {
    const QRectF r = QRectF(left ? previousRect() : nextRect()).adjusted(6, 5, -6, -5);
    const QPolygonF arrow = left ? QPolygonF{{r.right(), r.top()}, {r.left(), r.center().y()}, {r.right(), r.bottom()}}
                                 : QPolygonF{{r.left(), r.top()}, {r.right(), r.center().y()}, {r.left(), r.bottom()}};
    p.drawPolygon(arrow);
  }
  p.setRenderHint(QPainter::Antialiasing, false);

  // Day names, a rule under them.
  const QColor text = toQColor(state_.ForeColor(), pal);
  p.setPen(text);
  for (int c = 0; c < MonthCalendar::Columns; ++c) {
    const QRect cell = cellRect(0, c);
    p.drawText(QRect(cell.left(), titleHeight(), cell.width(), namesHeight()), Qt::AlignCenter, state_.DayName(c));
  }
  p.drawLine(2, titleHeight() + namesHeight() - 1, width() - 3, titleHeight() + namesHeight() - 1);

  // Six weeks; the days of the months around in grey; the selected day highlighted.
  const QColor grey = pal.color(QPalette::Disabled, QPalette::WindowText);
  for (int r = 0; r < MonthCalendar::Rows; ++r)
    for (int c = 0; c < MonthCalendar::Columns; ++c) {
      const double date = state_.CellDate(r, c);
      const QRect cell = cellRect(r, c);
      QColor pen = state_.InShownMonth(date) ? text : grey;
      if (date == state_.Value()) {
        p.fillRect(cell.adjusted(1, 0, -1, 0), pal.color(QPalette::Highlight));
        pen = pal.color(QPalette::HighlightedText);
      }
      p.setPen(pen);
      p.drawText(cell, Qt::AlignCenter, QString::number(vb::serialToDate(date).day()));
    }
  if (hasFocus()) {
    const QRect sel = dayRect(state_.Value());
    if (sel.isValid()) {
      p.setPen(QPen(pal.color(QPalette::HighlightedText), 1, Qt::DotLine));
      p.setBrush(Qt::NoBrush);
      p.drawRect(sel.adjusted(1, 0, -2, -1));
    }
  }
}

// The arrows of the title turn the page; true when the press was on one of them.
bool MonthCalendarView::turnPage(const QPoint& pos) {
  if (previousRect().contains(pos))
    state_.PreviousMonth();
  else if (nextRect().contains(pos))
    state_.NextMonth();
  else
    return false;
  return true;
}

void MonthCalendarView::mousePressEvent(QMouseEvent* e) {
  setFocus(Qt::MouseFocusReason);
  if (e->button() != Qt::LeftButton) return;
  const QPoint pos = e->position().toPoint();
  double date = 0;
  if (!turnPage(pos) && dayAt(pos, date)) state_.inputClick(date);
  update();
}

void MonthCalendarView::mouseDoubleClickEvent(QMouseEvent* e) {
  if (e->button() != Qt::LeftButton) return;
  const QPoint pos = e->position().toPoint();
  double date = 0;
  // A quick second press on an arrow turns the page again, as a click would.
  if (!turnPage(pos) && dayAt(pos, date)) state_.inputDblClick(date);
  update();
}

void MonthCalendarView::keyPressEvent(QKeyEvent* e) {
  const int16_t vk = SurfaceView::virtualKeyOf(*e);
  if (vk) state_.inputKeyDown(vk, SurfaceView::shiftStateOf(e->modifiers()));
  update();
}

void MonthCalendarView::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  if (onFocusIn) onFocusIn();
  update();
}

// ---- The panel's pieces -----------------------------------------------------------------------

DateTimeViewPanel::DateTimeViewPanel(DateTimeView& view, QWidget* parent)
    : QWidget(parent), view_(view), mirror_(this) {
  // In the core's order of children, so that later ones stack above earlier ones.
  frame_ = new QWidget(this);
  frame_->setAutoFillBackground(true);
  mirror_.plain(view_.picDateTime, frame_);

  calendar_ = new MonthCalendarView(view_.MonthView2, this);
  calendar_->installEventFilter(this);
  mirror_.plain(view_.MonthView2, calendar_);

  label_ = new QLabel(this);
  mirror_.plain(view_.Label1, label_);

  time_ = mirror_.lineEdit(view_.txtTime);
  time_->setFrame(true);
  time_->setAlignment(Qt::AlignCenter);
  time_->installEventFilter(this);

  // The buttons take the focus when pressed, so that the time box loses it first and its typed
  // time is in the value they hand back.
  now_ = mirror_.button(view_.Command1);
  ok_ = mirror_.button(view_.Command2);
  for (QPushButton* b : {now_, ok_}) {
    b->setFocusPolicy(Qt::StrongFocus);
    b->installEventFilter(this);
  }
}

Widget* DateTimeViewPanel::stateOf(QWidget* w) const {
  if (w == calendar_) return &view_.MonthView2;
  if (w == time_) return &view_.txtTime;
  if (w == now_) return &view_.Command1;
  if (w == ok_) return &view_.Command2;
  return nullptr;
}

QWidget* DateTimeViewPanel::widgetOf(Widget* state) const {
  if (state == &view_.MonthView2) return calendar_;
  if (state == &view_.txtTime) return time_;
  if (state == &view_.Command1) return now_;
  if (state == &view_.Command2) return ok_;
  return nullptr;
}

void DateTimeViewPanel::syncNow() {
  mirror_.sync();
  const QColor back = toQColor(view_.picDateTime.BackColor(), palette());
  if (frame_->palette().color(QPalette::Window) != back) {
    QPalette framePal = frame_->palette();
    framePal.setColor(QPalette::Window, back);
    frame_->setPalette(framePal);
  }
  if (label_->text() != view_.Label1.Caption()) label_->setText(view_.Label1.Caption());
  const auto setFont = [](QWidget* w, const QFont& f) {
    if (w->font() != f) w->setFont(f);
  };
  setFont(label_, toQFont(view_.Label1.Font()));
  setFont(calendar_, toQFont(view_.MonthView2.Font()));
  for (QPushButton* b : {now_, ok_}) setFont(b, toQFont(stateOf(b)->Font()));

  // The core's selection in the time box, when the core has moved it (select-all on focus).
  const TextBox& t = view_.txtTime;
  if (t.SelStart() != shownSelStart_ || t.SelLength() != shownSelLength_) {
    shownSelStart_ = t.SelStart();
    shownSelLength_ = t.SelLength();
    time_->setSelection(t.SelStart(), t.SelLength());
  }

  // The core's focus decides which piece has the keyboard while the panel has it.
  QWidget* focused = QApplication::focusWidget();
  if (focused && (focused == this || isAncestorOf(focused))) {
    QWidget* wanted = widgetOf(view_.focusedChild());
    if (wanted && wanted != focused && wanted->isVisible()) wanted->setFocus(Qt::OtherFocusReason);
  }
  calendar_->update();
}

bool DateTimeViewPanel::eventFilter(QObject* watched, QEvent* e) {
  auto* w = qobject_cast<QWidget*>(watched);
  Widget* state = w ? stateOf(w) : nullptr;
  if (!state) return QWidget::eventFilter(watched, e);
  switch (e->type()) {
    case QEvent::FocusIn:
      // The core selects the box's text as it gains the focus, after the press that gave the
      // focus has placed the caret: the next sync shows the core's selection whatever it was.
      if (w == time_) shownSelStart_ = shownSelLength_ = -1;
      view_.setFocusTo(state);
      break;
    case QEvent::FocusOut: {
      // Leaving the panel altogether runs the piece's lost-focus step; a window that merely
      // goes to the background does not.
      const auto reason = static_cast<QFocusEvent*>(e)->reason();
      if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) break;
      QWidget* next = QApplication::focusWidget();
      if (!next || !stateOf(next)) {
        view_.setFocusTo(nullptr);
        view_.controlLostFocus();
      }
      break;
    }
    case QEvent::KeyPress: {
      if (w == calendar_) break;  // the calendar hands its keys to its own state
      auto* ke = static_cast<QKeyEvent*>(e);
      int16_t vk = SurfaceView::virtualKeyOf(*ke);
      int16_t sh = SurfaceView::shiftStateOf(ke->modifiers());
      if (!vk) break;
      const QPointer<QWidget> self(w);
      if (w == time_)
        view_.txtTime_KeyDown(vk, sh);
      else if (w == now_)
        view_.Command1_KeyDown(vk, sh);
      if (!self) return true;
      if (afterKey) afterKey();
      // Enter and Escape were the panel's: they go no further up the form (to a dialog's
      // default button, say).
      if (w == time_ && (ke->key() == Qt::Key_Return || ke->key() == Qt::Key_Enter || ke->key() == Qt::Key_Escape))
        return true;
      break;
    }
    default: break;
  }
  return QWidget::eventFilter(watched, e);
}

// ---- The stand-alone drop-down ---------------------------------------------------------------------

DateTimeViewWidget::DateTimeViewWidget(QWidget* parent) : QWidget(parent) {
  setFocusPolicy(Qt::StrongFocus);
  view_.setListener(this);
  panel_ = new DateTimeViewPanel(view_, this);
  panel_->afterKey = [this] { scheduleSync(); };
  view_.setChangeCallback([this] { scheduleSync(); });
  syncNow();
}

DateTimeViewWidget::~DateTimeViewWidget() { view_.setChangeCallback(nullptr); }

void DateTimeViewWidget::scheduleSync() { sync_.request(); }

void DateTimeViewWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  const QSize fixed(twipsToPixels(view_.Width()), twipsToPixels(view_.Height()));
  if (size() != fixed) setFixedSize(fixed);
  if (panel_->geometry() != rect()) panel_->setGeometry(rect());
  panel_->syncNow();
}

void DateTimeViewWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  view_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void DateTimeViewWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  syncNow();
}

void DateTimeViewWidget::focusInEvent(QFocusEvent* e) {
  QWidget::focusInEvent(e);
  view_.controlGotFocus();
  // The panel passes the keyboard on to its calendar unless the core has chosen a piece.
  QWidget* wanted = panel_->widgetOf(view_.focusedChild());
  (wanted ? wanted : panel_->calendar())->setFocus(e->reason());
}

// ---- Events: to the application's listener, then as signals ------------------------------------

void DateTimeViewWidget::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (appListener_) appListener_->KeyDown(KeyCode, Shift);
  emit keyDown(KeyCode, Shift);
  scheduleSync();
}

void DateTimeViewWidget::DateClick(double DateClicked) {
  if (appListener_) appListener_->DateClick(DateClicked);
  emit dateClick(DateClicked);
  scheduleSync();
}

}  // namespace tq7
