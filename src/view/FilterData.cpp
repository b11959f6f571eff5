// FilterData: one condition from a field, an operator and a value.
#include "view/FilterData.h"

#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/GridSurface.h"

#include <cmath>

namespace tq7 {

namespace {
const QString kContain = QStringLiteral("CONTAIN");
const QString kLike = QStringLiteral("LIKE");
}  // namespace

FilterData::FilterData() : Form(QStringLiteral("FilterData")) {
  setCaption(QStringLiteral("Filter Data Tool"));
  Move(0, 0, 7200, 5100);
  // Form order.
  for (Widget* w : std::initializer_list<Widget*>{&Frame1, &cmdReset, &lstFieldName, &lstType, &txtResult, &cmdSearch,
                                                  &cmdCancel, &txtValue, &lstOperator, &lstFields, &lblError,
                                                  &lblFields, &lblCondition, &lblValue, &lblLegend}) {
    addChild(*w);
    w->setObserver(this);
  }
  Frame1.setCaption(QStringLiteral("Filter Detail"));
  Frame1.Move(120, 60, 6900, 285);
  lblFields.setCaption(QStringLiteral("Fields:"));
  lblFields.Move(240, 360, 2600, 285);
  lstFields.Move(240, 660, 2600, 2160);
  lblCondition.setCaption(QStringLiteral("Condition:"));
  lblCondition.Move(2960, 360, 1300, 285);
  lstOperator.Move(2960, 660, 1300, 2160);
  for (const char* op : {"=", "<>", ">=", "<=", ">", "<", "LIKE"}) lstOperator.AddItem(QString::fromUtf8(op));
  lblLegend.setCaption(QString::fromUtf8("LIKE = ขึ้นต้นด้วย\nCONTAIN = มีคำว่า\n<> = ไม่เท่ากับ\n"
                                         ">= = มากกว่าหรือเท่ากับ\n<= = น้อยกว่าหรือเท่ากับ\n< = น้อยกว่า\n"
                                         "> = มากกว่า"));
  lblLegend.Move(4380, 660, 2640, 2160);
  lblValue.setCaption(QStringLiteral("Value or Expression : (Excluded ', %, #)"));
  lblValue.Move(240, 2940, 6780, 285);
  txtValue.Move(240, 3240, 6780, 375);
  lblError.setCaption(QStringLiteral("Status"));
  lblError.Move(240, 3690, 6780, 285);
  cmdSearch.setCaption(QStringLiteral("Enter - Search Now"));
  cmdSearch.Move(240, 4140, 2400, 450);
  cmdReset.setCaption(QStringLiteral("F6 - Reset"));
  cmdReset.Move(2760, 4140, 1800, 450);
  cmdCancel.setCaption(QStringLiteral("ESC - Cancel"));
  cmdCancel.Move(4680, 4140, 2340, 450);
  for (Widget* w : std::initializer_list<Widget*>{&lstFieldName, &lstType, &txtResult}) w->setVisible(false);
  cmdSearch.onClick = [this] { cmdSearch_Click(); };
  cmdCancel.onClick = [this] { cmdCancel_Click(); };
  cmdReset.onClick = [this] { cmdReset_Click(); };
}

FilterData::~FilterData() {
  for (Widget* w : Children()) w->setObserver(nullptr);
}

void FilterData::setLists(const QString& FieldList, const QString& LabelList, const QString& TypeList) {
  for (const QString& s : vb::Split(FieldList, QStringLiteral(","))) lstFieldName.AddItem(s);
  for (const QString& s : vb::Split(LabelList, QStringLiteral(","))) lstFields.AddItem(s);
  for (const QString& s : vb::Split(TypeList, QStringLiteral(","))) lstType.AddItem(s);
}

// The classic events: a new text runs Change, a new choice runs Click.
void FilterData::widgetChanged(Widget& w) {
  if (&w == &txtValue && txtValue.Text() != seenValue_) {
    seenValue_ = txtValue.Text();
    txtValue_Change();
  } else if (&w == &lstFields && lstFields.ListIndex() != seenField_) {
    seenField_ = lstFields.ListIndex();
    lstFields_Click();
  } else if (&w == &lstOperator && lstOperator.ListIndex() != seenOperator_) {
    seenOperator_ = lstOperator.ListIndex();
    lstOperator_Click();
  }
}

void FilterData::Form_Load() { lblError.setCaption(QString()); }

void FilterData::Form_Activate() {
  step([&] {
    if (DefaultIndex > lstFields.ListCount() - 1) DefaultIndex = lstFields.ListCount() - 1;
  });
  step([&] {
    if (lstFields.ListIndex() < 0) lstFields.setListIndex(DefaultIndex);
  });
  step([&] {
    if (lstOperator.ListIndex() < 0) lstOperator.setListIndex(0);
  });
  step([&] {
    txtValue.setSelStart(0);
    txtValue.setSelLength(int(txtValue.Text().size()));
    txtValue.SetFocus();
  });
  const bool any = lstFields.ListCount() > 0;
  cmdReset.setEnabled(any);
  cmdSearch.setEnabled(any);
}

// The unload path copies the result onto itself; nothing changes.
void FilterData::Form_Unload() { txtResult.setText(txtResult.Text()); }

int16_t FilterData::chosenType() const {
  return int16_t(vb::Val(lstType.List(lstFields.ListIndex())));
}

void FilterData::lstFields_Click() {
  const int16_t t = chosenType();
  auto fill = [this](std::initializer_list<const char*> ops, const char* chosen) {
    lstOperator.Clear();
    for (const char* op : ops) lstOperator.AddItem(QString::fromUtf8(op));
    lstOperator.setListIndex(int(lstOperator.Items().indexOf(QString::fromUtf8(chosen))));
  };
  switch (t) {
    case 0: fill({"LIKE", "CONTAIN", "=", "<>"}, "CONTAIN"); break;
    case 1: case 2: case 5: case 6: fill({"=", "<>", ">", ">=", "<", "<="}, "="); break;
    case 3: case 4: case 13: fill({"=", "<>"}, "="); break;
    default: lstOperator.setListIndex(0); break;
  }
  checkValue();
}

void FilterData::lstOperator_Click() { checkValue(); }

void FilterData::txtValue_Change() { checkValue(); }

void FilterData::checkValue() {
  const int16_t t = chosenType();
  const QString text = txtValue.Text();
  if (vb::Trim(text).isEmpty()) {
    lblError.setCaption(QString());
    cmdSearch.setEnabled(false);
    return;
  }
  if (t == 0 || t == 13) {
    lblError.setCaption(QString());
    cmdSearch.setEnabled(true);
    return;
  }
  if (t == 6) {
    const bool date = helper_.IsDateText(text);
    lblError.setCaption(QString());
    cmdSearch.setEnabled(date);
    return;
  }
  double v = 0;
  if (!vb::TryNumeric(text, v)) {
    lblError.setCaption(QStringLiteral("Not correct input data type, Please type numeric"));
    cmdSearch.setEnabled(false);
    return;
  }
  if (t == 2 && v != std::nearbyint(v)) {
    lblError.setCaption(QStringLiteral("Invalid input decimal"));
    cmdSearch.setEnabled(false);
    return;
  }
  lblError.setCaption(QString());
  cmdSearch.setEnabled(true);
}

void FilterData::txtValue_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode == key::Escape) {
    cmdCancel_Click();
  } else if (KeyCode == key::F6) {
    if (cmdReset.Visible()) cmdReset_Click();
  } else if (KeyCode == key::Return) {
    if (!txtValue.Text().isEmpty() && cmdSearch.Enabled()) cmdSearch_Click();
  }
}

void FilterData::cmdCancel_Click() {
  txtResult.setText(QString());
  Hide();
}

void FilterData::cmdReset_Click() {
  txtResult.setText(QStringLiteral("RESET"));
  Hide();
}

void FilterData::cmdSearch_Click() {
  txtResult.setText(vb::Replace(txtValue.Text(), QStringLiteral("'"), QString()));
  step([&] { buildCondition(); });
  if (!txtResult.Text().isEmpty()) {
    Hide();
  } else {
    lblError.setCaption(QStringLiteral("Please type something in Value box"));
    txtValue.SetFocus();
  }
}

void FilterData::buildCondition() {
  QString text = txtValue.Text();
  for (const char* bad : {"'", "%", "#$"}) text = vb::Replace(text, QString::fromUtf8(bad), QString());
  txtValue.setText(text);
  const int16_t t = chosenType();
  const QString op = lstOperator.List(lstOperator.ListIndex());
  QString q, v;
  switch (t) {
    case 0:
      q = QStringLiteral("'");
      v = text;
      if (op == kContain) {
        if (!v.startsWith(u'%')) v.prepend(u'%');
        if (!v.endsWith(u'%')) v.append(u'%');
      } else if (op == kLike) {
        if (!v.endsWith(u'%')) v.append(u'%');
      }
      break;
    case 4: {
      const QString first = vb::UCase(vb::Left(text, 1));
      v = first == u"Y" ? QStringLiteral("1") : first == u"N" ? QStringLiteral("0")
          : first == u"R" ? QStringLiteral("2") : QString();
      break;
    }
    case 6: {
      double date = 0;
      QString shown;
      if (!helper_.IsDateText(text, date, shown)) return;  // the bare text stays the result
      q = QStringLiteral("#$");
      v = helper_.SqlDateText(date);
      break;
    }
    case 13: {
      const QStringList parts = vb::Split(lstFields.List(lstFields.ListIndex()), QStringLiteral(";"));
      int found = -1;
      for (int i = 1; i < parts.size() && found < 0; ++i)
        if (parts[i] == text) found = i;
      for (int i = 1; i < parts.size() && found < 0; ++i)
        if (parts[i].contains(text)) found = i;
      v = QString::number(found < 0 ? -1 : found - 1);
      break;
    }
    default: {
      const double n = helper_.TextToDouble(text);
      v = n == 0 ? QStringLiteral("0") : vb::shortestText(n);
      break;
    }
  }
  const QString shownOp = op == kContain ? kLike : op;
  txtResult.setText(lstFieldName.List(lstFields.ListIndex()) + u' ' + shownOp + u' ' + q + v + q);
}

}  // namespace tq7
