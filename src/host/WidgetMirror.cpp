#include "host/WidgetMirror.h"

#include "host/HostColours.h"
#include "host/HostFonts.h"
#include "host/ToolBarIcons.h"

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QToolBar>
#include <QTimer>
#include <QToolButton>
#include <QValidator>
#include <cmath>

namespace tq7 {

void CoalescedSync::request() {
  if (pending_ || running_) return;
  pending_ = true;
  QTimer::singleShot(0, context_, [this] {
    if (pending_) sync_();
  });
}

int twipsToPixels(double twips) { return int(std::lround(twips / TwipsPerPixel)); }
double pixelsToTwips(int pixels) { return pixels * TwipsPerPixel; }

void WidgetMirror::add(Widget& state, QWidget* widget, std::function<void()> specific) {
  entries_.push_back(Entry{&state, widget, std::move(specific)});
}

void WidgetMirror::plain(Widget& state, QWidget* widget) { add(state, widget, nullptr); }

QLabel* WidgetMirror::messageBox(TextBox& state) {
  auto* label = new QLabel(parent_);
  label->setAlignment(Qt::AlignCenter);
  label->setWordWrap(true);
  label->setAutoFillBackground(true);
  add(state, label, [label, &state] {
    if (label->text() != state.Text()) label->setText(state.Text());
    QPalette pal = label->palette();
    pal.setColor(QPalette::Window, toQColor(state.BackColor()));
    pal.setColor(QPalette::WindowText, toQColor(state.ForeColor()));
    label->setPalette(pal);
  });
  return label;
}

namespace {
// A text box's MaxLength binds the person typing, not the text the program puts in: a longer text
// shows whole and is committed whole, and only an edit that would make it longer than both the
// limit and what it was is refused. (QLineEdit's own limit cuts the text it is given.) The guard
// keeps its own copy of the limit: the line edit may outlive the core's text box.
class MaxLengthGuard : public QValidator {
 public:
  using QValidator::QValidator;
  int limit = 0;
  mutable qsizetype lastLength = 0;
  State validate(QString& input, int&) const override {
    if (limit > 0 && input.size() > limit && input.size() > lastLength) return Invalid;
    lastLength = input.size();
    return Acceptable;
  }
};
}  // namespace

QLineEdit* WidgetMirror::lineEdit(TextBox& state) {
  auto* edit = new QLineEdit(parent_);
  edit->setFrame(false);
  auto* guard = new MaxLengthGuard(edit);
  edit->setValidator(guard);
  QObject::connect(edit, &QLineEdit::textEdited, edit, [&state](const QString& t) { state.setText(t); });
  // Only what differs is set: setting a line edit's text again moves its caret and drops the
  // selection of the person typing into it.
  add(state, edit, [edit, guard, &state] {
    if (edit->text() != state.Text()) edit->setText(state.Text());
    guard->limit = state.MaxLength();
    guard->lastLength = edit->text().size();
    if (edit->isReadOnly() != state.Locked()) edit->setReadOnly(state.Locked());
    const QFont font = toQFont(state.Font());
    if (edit->font() != font) edit->setFont(font);
  });
  return edit;
}

QListWidget* WidgetMirror::list(ListBox& state) {
  auto* lw = new QListWidget(parent_);
  QObject::connect(lw, &QListWidget::currentRowChanged, lw, [&state](int row) {
    if (row != state.ListIndex() && row < state.ListCount()) state.setListIndex(row);
  });
  add(state, lw, [lw, &state] {
    // Refilling the list passes through "nothing chosen": that is no choice of the user's.
    const QSignalBlocker quiet(lw);
    QStringList shown;
    shown.reserve(lw->count());
    for (int i = 0; i < lw->count(); ++i) shown.append(lw->item(i)->text());
    if (shown != state.Items()) {
      lw->clear();
      lw->addItems(state.Items());
    }
    if (lw->currentRow() != state.ListIndex()) lw->setCurrentRow(state.ListIndex());
    lw->setFont(toQFont(state.Font()));
  });
  return lw;
}

QPushButton* WidgetMirror::button(Button& state) {
  auto* b = new QPushButton(parent_);
  b->setFocusPolicy(Qt::NoFocus);
  QObject::connect(b, &QPushButton::clicked, b, [&state] { state.Click(); });
  add(state, b, [b, &state] {
    if (b->text() != state.Caption()) b->setText(state.Caption());
    if (!state.Picture().isEmpty()) b->setIcon(toolBarIcon(state.Picture()));
  });
  return b;
}

QToolBar* WidgetMirror::toolBar(ToolBar& state) {
  auto* bar = new QToolBar(parent_);
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  bar->setIconSize(QSize(16, 16));
  bar->setFocusPolicy(Qt::NoFocus);
  add(state, bar, [bar, &state] {
    const auto& buttons = state.ButtonList();
    QList<QAction*> actions = bar->actions();
    if (actions.size() != qsizetype(buttons.size())) {
      bar->clear();
      for (const ToolButton& b : buttons) {
        QAction* a = bar->addAction(toolBarIcon(b.Image), b.Caption);
        a->setData(b.Key);
        QObject::connect(a, &QAction::triggered, bar, [&state, key = b.Key] { state.ButtonClick(key); });
      }
      actions = bar->actions();
    }
    for (size_t i = 0; i < buttons.size(); ++i) {
      QAction* a = actions[qsizetype(i)];
      const ToolButton& b = buttons[i];
      if (a->text() != b.Caption) a->setText(b.Caption);
      a->setVisible(b.Visible);
      a->setEnabled(b.Enabled);
      a->setToolTip(b.ToolTipText.isEmpty() ? b.Caption.trimmed() : b.ToolTipText);
    }
  });
  return bar;
}

void WidgetMirror::sync() {
  for (Entry& e : entries_) {
    if (!e.widget) continue;
    const Widget& s = *e.state;
    if (e.syncSpecific) e.syncSpecific();
    const QRect r(twipsToPixels(s.Left()), twipsToPixels(s.Top()), twipsToPixels(s.Width()),
                  twipsToPixels(s.Height()));
    if (e.widget->geometry() != r) e.widget->setGeometry(r);
    if (e.widget->isEnabled() != s.Enabled()) e.widget->setEnabled(s.Enabled());
    if (e.widget->toolTip() != s.ToolTipText()) e.widget->setToolTip(s.ToolTipText());
    if (e.widget->isVisibleTo(parent_) != s.Visible()) e.widget->setVisible(s.Visible());
    if (s.Visible()) e.widget->raise();
  }
}

}  // namespace tq7
