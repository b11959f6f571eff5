#include "host/FilterDataDialog.h"

#include "frame/GridSurface.h"
#include "host/HostFonts.h"
#include "host/SurfaceView.h"
#include "host/WidgetMirror.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace tq7 {

namespace {
void fillList(QListWidget* view, const ListBox& list) {
  bool same = view->count() == list.ListCount();
  for (int i = 0; same && i < view->count(); ++i) same = view->item(i)->text() == list.List(i);
  if (!same) {
    view->clear();
    view->addItems(list.Items());
  }
  if (view->currentRow() != list.ListIndex()) view->setCurrentRow(list.ListIndex());
}
}  // namespace

FilterDataDialog::FilterDataDialog(FilterData& form, QWidget* parent) : QDialog(parent), form_(form) {
  setFont(QFont(defaultThaiFamily(), font().pointSize()));
  setModal(true);
  for (Label* l : {&form.Frame1, &form.lblFields, &form.lblCondition, &form.lblValue, &form.lblLegend}) {
    auto* q = new QLabel(this);
    q->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    labels_.append({q, l});
  }
  error_ = new QLabel(this);
  error_->setStyleSheet(QStringLiteral("color: #B00020;"));
  fields_ = new QListWidget(this);
  operators_ = new QListWidget(this);
  value_ = new QLineEdit(this);
  search_ = new QPushButton(this);
  reset_ = new QPushButton(this);
  cancel_ = new QPushButton(this);
  for (QPushButton* b : {search_, reset_, cancel_}) b->setAutoDefault(false);
  connect(fields_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (pulling_) return;
    form_.lstFields.setListIndex(row);
    pull();
  });
  connect(operators_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (pulling_) return;
    form_.lstOperator.setListIndex(row);
    pull();
  });
  connect(value_, &QLineEdit::textEdited, this, [this](const QString& t) {
    form_.txtValue.setText(t);
    pull();
  });
  connect(search_, &QPushButton::clicked, this, [this] {
    form_.cmdSearch_Click();
    pull();
  });
  connect(reset_, &QPushButton::clicked, this, [this] {
    form_.cmdReset_Click();
    pull();
  });
  connect(cancel_, &QPushButton::clicked, this, [this] {
    form_.cmdCancel_Click();
    pull();
  });
  value_->installEventFilter(this);
  pull();
  value_->setFocus(Qt::OtherFocusReason);
  value_->selectAll();
}

void FilterDataDialog::place(QWidget* w, const Widget& state) {
  w->setGeometry(twipsToPixels(state.Left()), twipsToPixels(state.Top()), twipsToPixels(state.Width()),
                 twipsToPixels(state.Height()));
  if (w->isVisibleTo(this) != state.Visible()) w->setVisible(state.Visible());
  if (w->isEnabled() != state.Enabled()) w->setEnabled(state.Enabled());
}

void FilterDataDialog::pull() {
  if (pulling_) return;
  pulling_ = true;
  setWindowTitle(form_.Caption());
  setFixedSize(twipsToPixels(form_.Width()), twipsToPixels(form_.Height()));
  for (const auto& [q, l] : labels_) {
    if (q->text() != l->Caption()) q->setText(l->Caption());
    place(q, *l);
  }
  if (error_->text() != form_.lblError.Caption()) error_->setText(form_.lblError.Caption());
  place(error_, form_.lblError);
  fillList(fields_, form_.lstFields);
  place(fields_, form_.lstFields);
  fillList(operators_, form_.lstOperator);
  place(operators_, form_.lstOperator);
  if (value_->text() != form_.txtValue.Text()) value_->setText(form_.txtValue.Text());
  place(value_, form_.txtValue);
  const std::pair<QPushButton*, Button*> buttons[] = {
      {search_, &form_.cmdSearch}, {reset_, &form_.cmdReset}, {cancel_, &form_.cmdCancel}};
  for (const auto& [q, b] : buttons) {
    if (q->text() != b->Caption()) q->setText(b->Caption());
    place(q, *b);
  }
  pulling_ = false;
  if (!form_.Visible() && isVisible()) accept();
}

// Escape, F6 and Enter in the value box are the form's own keys.
bool FilterDataDialog::eventFilter(QObject* watched, QEvent* e) {
  if (watched != value_ || e->type() != QEvent::KeyPress) return QDialog::eventFilter(watched, e);
  auto* ke = static_cast<QKeyEvent*>(e);
  int16_t code = SurfaceView::virtualKeyOf(ke->key(), ke->modifiers());
  int16_t shiftState = SurfaceView::shiftStateOf(ke->modifiers());
  if (code != key::Escape && code != key::F6 && code != key::Return) return false;
  form_.txtValue_KeyDown(code, shiftState);
  pull();
  return true;
}

// Closed from the window frame: a cancel.
void FilterDataDialog::reject() {
  if (form_.Visible()) form_.cmdCancel_Click();
  QDialog::reject();
}

void FilterDataDialog::run(Form& form, QWidget* parent) {
  auto* filter = dynamic_cast<FilterData*>(&form);
  if (!filter) return;
  FilterDataDialog dialog(*filter, parent);
  if (filter->Visible()) dialog.exec();
}

}  // namespace tq7
