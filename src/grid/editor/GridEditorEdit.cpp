// GridEditor: editing a cell through the overlays laid over it (the text box, the label list and
// the pickers), and the commit that converts, checks, writes and moves on.
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/FieldKind.h"
#include "grid/editor/GridEditor.h"

#include <cmath>

namespace tq7 {

namespace {
constexpr double kCalendarWidth = 2460;
constexpr double kCalendarHeight = 2130;
constexpr double kOverlayInset = 18;  // the box stands inside the cell's grid lines
}  // namespace

void GridEditor::setUpPickers() {
  for (Widget* w : std::initializer_list<Widget*>{&MonthView1, &DateTimeView1, &MonthYearView1}) {
    addChild(*w);
    w->setVisible(false);
  }
  MonthView1.setWidth(kCalendarWidth);
  MonthView1.setHeight(kCalendarHeight);
  MonthView1.onDateDblClick = [this](double d) { MonthView1_DateDblClick(d); };
  MonthView1.onKeyDown = [this](int16_t& k, int16_t& s) { MonthView1_KeyDown(k, s); };
  dateTimeView1Events_.g = this;
  DateTimeView1->setListener(&dateTimeView1Events_);
  monthYearView1Events_.g = this;
  MonthYearView1->setListener(&monthYearView1Events_);
}

// ---- The text box follows the selection ------------------------------------------------------------

// The box always holds the active cell's text, so that a picker closed without a choice commits
// what the cell had: it follows the cursor however it moves, by the user or by code.
void GridEditor::loadTextBox(int32_t col, int32_t row) {
  step([&] { Text.setMaxLength(helper().TextToInteger(attribute(attr::MaxLength, col))); });
  step([&] { Text.setText(mfgData.GetText(col, row)); });
}

void GridEditor::SelChange(int32_t, int32_t, int32_t, int32_t, int32_t CurCol, int32_t CurRow) {
  loadTextBox(CurCol, CurRow);
  raise(&GridEditorEvents::SelChange);
}

void GridEditor::ActiveCellSet(int32_t Col, int32_t Row) { loadTextBox(Col, Row); }

void GridEditor::Text_GotFocus() {
  const int n = int(Text.Text().size());
  Text.setSelLength(n);
  Text.setSelStart(n);
}

void GridEditor::onChildLostFocus(Widget& w) {
  if (&w == &List1)
    List1_LostFocus();
  else if (&w == &MonthView1 || &w == &DateTimeView1 || &w == &MonthYearView1)
    w.setVisible(false);  // a picker that loses the focus closes and does nothing else
}

// ---- Opening an editor -----------------------------------------------------------------------------

QString GridEditor::SelectQuickForm(QString& QuickFormAlias) {
  (void)QuickFormAlias;
  QString answer;  // no quick form is registered: the hook answers empty
  if (!answer.isEmpty()) {
    Text.setText(answer);
    NextColumnInput();
  }
  return answer;
}

void GridEditor::startCellEditor(int16_t KeyAscii) {
  const int32_t col = mfgData.ActiveCol();
  StandardHelper& h = helper();
  if (h.TextToInteger(attribute(attr::CanEdit, col)) == 0) return;
  QString shell = attribute(attr::ShellCommand, col);
  if (!shell.isEmpty()) {
    SelectQuickForm(shell);
    return;
  }
  const FieldKind kind = fieldKind(attribute(attr::FieldType, col));
  if (kind == FieldKind::LabelList && !attribute(attr::Labels, col).isEmpty()) {
    openList(mfgData);
    return;
  }
  if (kind == FieldKind::Check) {
    if (KeyAscii == key::Space || KeyAscii == key::Return) {
      int16_t code = key::F2, none = 0;
      RunAction_KeyDown(code, none);
    }
    return;
  }
  if (attribute(attr::CanEdit, col) == QLatin1String("1")) BeginTextEdit(mfgData, Text, KeyAscii);
}

void GridEditor::BeginTextEdit(GridSurface& surface, TextBox& textBox, int16_t KeyAscii) {
  // The control character that follows a clipboard key opens nothing.
  if (DOINGCLIP) {
    DOINGCLIP = false;
    return;
  }
  const int32_t row = surface.ActiveRow(), col = surface.ActiveCol();
  if (locks().GetValue(row, col) == 1) return;
  step([&] {
    tq7::Font f = textBox.Font();
    f.Name = surface.Font().Name;
    f.Size = surface.Font().Size;
    textBox.setFont(f);
  });
  step([&] { textBox.setMaxLength(helper().TextToInteger(attribute(attr::MaxLength, col))); });
  step([&] {
    if (KeyAscii < 0 || KeyAscii > key::Space)
      textBox.setText(QString(QChar(char16_t(uint16_t(KeyAscii)))));  // typing replaces the cell
    else
      textBox.setText(surface.GetText(col, row));
  });
  platform().processEvents();
  step([&] {
    if (!surface.BlockMode() && (surface.Row2() != row || surface.Col2() != col)) {
      surface.setRow2(row);
      surface.setCol2(col);
    }
  });
  step([&] {
    double x = 0, y = 0, w = 0, hgt = 0;
    surface.GetCellPos(col, row, x, y, w, hgt);
    textBox.Move(surface.Left() + x, surface.Top() + y, std::abs(surface.ColWidth(col)) - kOverlayInset,
                 std::abs(surface.RowHeight(row)) - kOverlayInset);
  });
  step([&] {
    textBox.setVisible(true);
    textBox.SetFocus();
  });
  DOINGCLIP = false;
}

// ---- The text box's keys ---------------------------------------------------------------------------

void GridEditor::Text_KeyDown(int16_t& KeyCode, int16_t& Shift) { TextKeyAction(mfgData, Text, KeyCode, Shift); }

// Characters go into the box as typed; the grid has nothing to add.
void GridEditor::Text_KeyPress(int16_t& KeyAscii) { (void)KeyAscii; }

void GridEditor::TextKeyAction(GridSurface& surface, TextBox& textBox, int16_t& KeyCode, int16_t& Shift) {
  const int32_t row = surface.ActiveRow(), col = surface.ActiveCol();
  if (locks().GetValue(row, col) >= 1) return;
  switch (KeyCode) {
    case key::Escape:
      textBox.setVisible(false);
      surface.SetFocus();
      return;
    case key::Return:
      commitText(surface, textBox);
      return;
    case key::F2: break;
    default: return;
  }
  switch (fieldKind(attribute(attr::FieldType, col))) {
    case FieldKind::DateTime: openPicker(surface, DateTimeView1); return;
    case FieldKind::Date: openPicker(surface, MonthView1); return;
    case FieldKind::Period: openPicker(surface, MonthYearView1); return;
    case FieldKind::Check:
      step([&] { Matrix1.SetValue(row, col, std::abs(1 - Matrix1.GetValue(row, col))); });
      if (enableCheckAutoMoveNextRow_) {
        const int32_t next = row == surface.MaxRows() ? 1 : NextActiveRecord(row);
        step([&] { surface.SetActiveCell(col, next); });
      }
      return;
    default: break;
  }
  // Any other type, TIME included, commits its text as it stands.
  QString shell = attribute(attr::ShellCommand, col);
  if (helper().TextToInteger(attribute(attr::CanEdit, col)) != 0 && !shell.isEmpty()) {
    const QString answer = SelectQuickForm(shell);
    if (!answer.isEmpty()) textBox.setText(answer);
  }
  surface.SetFocus();
  int16_t enter = key::Return;
  TextKeyAction(surface, textBox, enter, Shift);
}

// ---- The commit ------------------------------------------------------------------------------------

void GridEditor::commitText(GridSurface& surface, TextBox& textBox) {
  const int32_t startCol = surface.ActiveCol();
  const int32_t row = surface.ActiveRow(), col = startCol;
  // The record counts as edited even when the commit is refused below.
  step([&] { surface.SetText(attr::RecordState, row, QStringLiteral("E")); });
  // Each type's value goes to Matrix1 and its canonical text back into the box; a text the
  // type cannot read puts the cell's text back, without a word.
  StandardHelper& h = helper();
  step([&] {
    const QString text = textBox.Text();
    auto put = [&](double v) {
      Matrix1.SetValue(row, col, v);
      return Matrix1.GetValue(row, col);
    };
    auto revert = [&] { textBox.setText(surface.GetText(col, row)); };
    auto number = [&] {
      const int16_t decimals = h.TextToInteger(attribute(attr::NumberOfDecimal, col));
      if (decimals == 0) return h.TextToDouble(vb::CStr(h.TextToDouble(text)));
      return h.TextToRounded(vb::CStr(h.TextToRounded(text, decimals)), decimals);
    };
    auto numberText = [&](double v) {
      return h.NumberFormat(v, int16_t(std::abs(h.TextToInteger(attribute(attr::DisplayDecimal, col)))));
    };
    switch (fieldKind(attribute(attr::FieldType, col))) {
      case FieldKind::Period:
        if (!h.IsPeriodText(text)) return revert();
        textBox.setText(h.PeriodText(put(h.TextToPeriod(text)), true));
        break;
      case FieldKind::Date:
        if (!h.IsDateText(text)) return revert();
        textBox.setText(h.DateText(put(h.TextToDate(text)), 0, false));
        break;
      case FieldKind::DateTime: {
        if (!h.IsDateTimeText(text)) return revert();
        const double v = put(vb::CDate(text));
        textBox.setText(h.DateText(v, 0, false) + QLatin1Char(' ') + h.TimeText(v, true));
        break;
      }
      case FieldKind::Time:
        if (!h.IsTimeText(text)) return revert();
        textBox.setText(h.TimeText(put(h.TextToTime(text)), true));
        break;
      case FieldKind::Hour:
        if (!h.IsHourText(text)) return revert();
        textBox.setText(h.HourText(put(h.TextToHour(text))));
        break;
      case FieldKind::DayTime:
        if (!h.IsDayTimeText(text)) return revert();
        textBox.setText(h.DayTimeText(put(h.TextToDayTime(text))));
        break;
      case FieldKind::AbsNumber: textBox.setText(numberText(put(std::abs(number())))); break;
      case FieldKind::Number: textBox.setText(numberText(put(number()))); break;
      case FieldKind::Year: {
        const int32_t offset = StandardHelper::YearOffset();
        int32_t year = vb::CLng(std::abs(h.TextToDouble(text)) - offset);
        if (year < offset && year > 9456) year = 0;  // as the rule is written: it never holds
        const double v = put(year);
        textBox.setText(h.NumberFormat(v + offset, 0).remove(QLatin1Char(',')));
        break;
      }
      case FieldKind::YesNo: {
        const QString upper = text.toUpper();
        const bool yes = upper == QLatin1String("Y") || upper == QLatin1String("1");
        textBox.setText(put(yes ? 1 : 0) == 1 ? QStringLiteral("Y") : QStringLiteral("N"));
        break;
      }
      default: break;
    }
  });
  if (attribute(attr::PrimaryKey, col) == QLatin1String("1")) textBox.setText(h.KeyText(textBox.Text()));
  // Texts are compared whatever the type; a refusal leaves the value just converted in Matrix1.
  if (attribute(attr::CanDuplicate, col) != QLatin1String("1")) {
    const QString mine = textBox.Text().toUpper();
    for (int32_t r = 1; r <= surface.MaxRows(); ++r) {
      if (r == row || surface.cellText(attr::RecordState, r) == QLatin1String("D")) continue;
      if (surface.cellText(col, r).toUpper() == mine) {
        platform().messageBox(QString::fromUtf8("ข้อมูล ไม่สามารถซ้ำได้"));
        surface.SetFocus();
        return;
      }
    }
  }
  step([&] { surface.SetText(surface.ActiveCol(), surface.ActiveRow(), textBox.Text()); });
  raise(&GridEditorEvents::ValidData);
  if (surface.Visible()) surface.SetFocus();
  // A ValidData handler that moved to another column has the last word.
  if (surface.ActiveCol() == startCol) {
    const int16_t stopBlankMove = h.TextToInteger(attribute(attr::StopBlankMove, startCol));
    if (!surface.GetText(surface.ActiveCol(), surface.ActiveRow()).isEmpty() || stopBlankMove == 0)
      NextColumnInput();
  }
}

// ---- The label list --------------------------------------------------------------------------------

void GridEditor::openList(GridSurface& surface) {
  const int32_t row = surface.ActiveRow(), col = surface.ActiveCol();
  step([&] {
    List1.Clear();
    for (const QString& entry : vb::Split(attribute(attr::LabelDataList, col), QStringLiteral(","))) {
      const QStringList pieces = vb::Split(entry, QStringLiteral(";"));
      if (pieces.size() < 2)
        List1.AddItem(entry);
      else
        List1.AddItem(pieces[0] + QStringLiteral(" (") + pieces[1] + QLatin1Char(')'));
    }
  });
  // A value past the end of the list is pulled back to its last entry, in the record too.
  step([&] {
    double position = Matrix1.GetValue(row, col);
    if (position > List1.ListCount() - 1) {
      position = List1.ListCount() - 1;
      Matrix1.SetValue(row, col, position);
    }
    List1.setListIndex(int(position));
  });
  // Below the cell, or on top of it when it would reach past the surface's bottom.
  const double rowHeight = surface.RowHeight(row);
  step([&] {
    double x = 0, y = 0, w = 0, hgt = 0;
    surface.GetCellPos(col, row, x, y, w, hgt);
    List1.setLeft(surface.Left() + x);
    List1.setTop(surface.Top() + y + rowHeight);
    List1.setHeight(std::abs(rowHeight) * (List1.ListCount() + 1));
  });
  step([&] {
    if (List1.Top() + List1.Height() >= surface.Top() + surface.Height())
      List1.setTop(List1.Top() - List1.Height() - rowHeight);
  });
  step([&] { List1.setWidth(std::abs(surface.ColWidth(col)) - kOverlayInset); });
  step([&] {
    List1.setVisible(true);
    List1.SetFocus();
  });
}

// The cell gets the whole shown entry, "first (second)", not only the label. The position is
// written first: its rendering would put the bare label into the cell.
void GridEditor::List1_DblClick() {
  const int32_t row = mfgData.ActiveRow(), col = mfgData.ActiveCol();
  const int index = List1.ListIndex();
  step([&] { Matrix1.SetValue(row, col, index); });
  step([&] { mfgData.SetText(col, row, List1.List(index)); });
  raise(&GridEditorEvents::ValidData);
  NextColumnInput();
}

void GridEditor::List1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode == key::Return)
    List1_DblClick();
  else if (KeyCode == key::Escape)
    mfgData.SetFocus();
}

void GridEditor::List1_LostFocus() { List1.setVisible(false); }

// ---- The pickers -----------------------------------------------------------------------------------

void GridEditor::openPicker(GridSurface& surface, Widget& picker) {
  const int32_t row = surface.ActiveRow(), col = surface.ActiveCol();
  // An empty cell opens the picker on today, or on the current time for a date and time.
  double value = Matrix1.GetValue(row, col);
  if (value == 0) value = &picker == &DateTimeView1 ? platform().now() : std::floor(platform().now());
  step([&] {
    if (&picker == &DateTimeView1) {
      DateTimeView1->setLanguageID(LanguageID());
      DateTimeView1->setValue(value);
      DateTimeView1.setWidth(DateTimeView1->Width());
      DateTimeView1.setHeight(DateTimeView1->Height());
    } else if (&picker == &MonthView1) {
      MonthView1.setLanguage(LanguageID());
      MonthView1.setValue(std::floor(value));
    } else {
      const QDate day = vb::serialToDate(value);
      MonthYearView1->setLanguageID(LanguageID());
      MonthYearView1->setEYear(int16_t(day.year()));
      MonthYearView1->setEMonth(int16_t(day.month()));
      MonthYearView1.setWidth(MonthYearView1->Width());
      MonthYearView1.setHeight(MonthYearView1->Height());
    }
  });
  // Below the cell, pulled up to end at the surface's bottom when it would pass it.
  step([&] {
    double x = 0, y = 0, w = 0, hgt = 0;
    surface.GetCellPos(col, row, x, y, w, hgt);
    picker.setLeft(surface.Left() + x);
    picker.setTop(surface.Top() + y + surface.RowHeight(row));
    if (picker.Top() + picker.Height() > surface.Top() + surface.Height())
      picker.setTop(surface.Top() + surface.Height() - picker.Height());
  });
  step([&] {
    picker.setVisible(true);
    picker.SetFocus();
  });
}

void GridEditor::pickerChosen(Widget& picker, const QString& text) {
  // The month-and-year picker hides the calendar here and closes itself when it loses the focus.
  if (&picker == &MonthYearView1)
    MonthView1.setVisible(false);
  else
    picker.setVisible(false);
  Text.setText(text);
  mfgData.SetFocus();
  int16_t enter = key::Return, none = 0;
  TextKeyAction(mfgData, Text, enter, none);
}

// Escape commits what the box holds, the cell's own text: the record is marked edited and the
// cursor moves on as after any commit.
void GridEditor::pickerEscape(Widget& picker) {
  picker.setVisible(false);
  mfgData.SetFocus();
  int16_t enter = key::Return, none = 0;
  TextKeyAction(mfgData, Text, enter, none);
}

void GridEditor::MonthView1_DateDblClick(double DateDblClicked) {
  pickerChosen(MonthView1, helper().DateText(DateDblClicked, 0, false));
}

void GridEditor::MonthView1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode == key::Return)
    pickerChosen(MonthView1, helper().DateText(MonthView1.Value(), 0, false));
  else if (KeyCode == key::Escape)
    pickerEscape(MonthView1);
}

void GridEditor::DateTimeView1_DateClick(double DateClicked) {
  StandardHelper& h = helper();
  pickerChosen(DateTimeView1, h.DateText(DateClicked, 0, false) + QLatin1Char(' ') + h.TimeText(DateClicked, true));
}

void GridEditor::DateTimeView1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode == key::Escape) {
    pickerEscape(DateTimeView1);
  } else if (KeyCode == key::Return && DateTimeView1.Visible()) {
    // Enter in the time box has chosen already (DateClick). Enter elsewhere chooses the picker's
    // Value, which follows clicks on the calendar, not the arrow keys that move its day.
    DateTimeView1_DateClick(DateTimeView1->Value());
  }
}

// The view's value is the first day of the month it shows, which the click has just set.
void GridEditor::MonthYearView1_MonthClick(int16_t EMonth, int16_t EYear) {
  (void)EMonth, (void)EYear;
  pickerChosen(MonthYearView1, helper().PeriodText(MonthYearView1->Value(), true));
}

void GridEditor::MonthYearView1_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode == key::Return)
    MonthYearView1_MonthClick(MonthYearView1->EMonth(), MonthYearView1->EYear());
  else if (KeyCode == key::Escape)
    pickerEscape(MonthYearView1);
}

}  // namespace tq7
