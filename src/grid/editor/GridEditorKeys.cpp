// GridEditor: the key dispatcher behind the surface's key, click and wheel input. One function key
// per command, the same in every screen; what a typed character opens in a cell is the editing's.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/FieldKind.h"

#include <cmath>

namespace tq7 {

namespace {
constexpr int16_t kNone = 0, kShift = shift::Shift, kCtrl = shift::Ctrl;
constexpr int16_t kKeyC = 67, kKeyV = 86, kKeyX = 88;
}  // namespace

// A key on a cell outside the sheet or on a locked cell is not the grid's business at all.
bool GridEditor::keyOnForeignCell() {
  const int32_t row = mfgData.ActiveRow(), col = mfgData.ActiveCol();
  if (col < 1 || row < 1 || col > mfgData.MaxCols() || row > mfgData.MaxRows()) return true;
  return locks().GetValue(row, col) >= 1;
}

// Keys the grid has no use for go to the application only when it asked for them.
void GridEditor::relayKey(int16_t& KeyCode, int16_t& Shift) {
  if (enableCustomFunctionKey_ && listener_) listener_->KeyDown(KeyCode, Shift);
}

void GridEditor::RunAction_KeyDown(int16_t& KeyCode, int16_t& Shift) { KeyDown(KeyCode, Shift); }

void GridEditor::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (keyOnForeignCell()) return;
  // While the cell is being typed into, the keys belong to the editor.
  if (Text.Visible()) {
    Text.SetFocus();
    return;
  }
  const bool edit = RUNMODE == QLatin1String("EDIT");
  switch (KeyCode) {
    case key::Delete:
      if (edit)
        clearBlockByKey();
      else if (RUNMODE != QLatin1String("VIEW") && enableDeleteEventOnReadOnlyField_ &&
               attribute(attr::CanEdit, mfgData.ActiveCol()) == QLatin1String("0") &&
               attribute(attr::Labels, mfgData.ActiveCol()).isEmpty())
        raise(&GridEditorEvents::DeleteKeyProcessOnReadOnly);  // never reached in view mode; kept so
      break;
    case key::F1: ShowHelp(); break;
    case key::F2:
      if (Shift != kNone)
        relayKey(KeyCode, Shift);
      else if (edit)
        openCellByKey(KeyCode, Shift);
      break;
    case key::F3:
      if (!edit) break;
      if (Shift == kCtrl)
        cmdInsertAfter_Click();
      else if (Shift == kShift)
        cmdInsert_Click();
      else
        cmdAdd_Click();
      break;
    case key::F4:
      if (Shift != kNone)
        relayKey(KeyCode, Shift);
      else
        multiLineByKey();
      break;
    case key::F5:
      if (Shift != kNone)
        relayKey(KeyCode, Shift);
      else if (edit)
        cmdDelete_Click();
      break;
    case key::F7:
      if (Shift != kNone)
        relayKey(KeyCode, Shift);
      else
        findByKey(QString());  // an empty text makes the search ask for one
      break;
    case key::F8:
      if (Shift != kNone)
        relayKey(KeyCode, Shift);
      else
        cmdFreeze_Click();
      break;
    case key::F11:
      if (Shift == kCtrl)
        relayKey(KeyCode, Shift);
      else if (!edit)
        break;
      else if (Shift == kShift)
        cmdMoveFirst_Click();
      else
        cmdMoveUp_Click();
      break;
    case key::F12:
      if (Shift == kCtrl)
        relayKey(KeyCode, Shift);
      else if (!edit)
        break;
      else if (Shift == kShift)
        cmdMoveLast_Click();
      else
        cmdMoveDown_Click();
      break;
    case kKeyC:
      if (Shift == kCtrl) {
        // The surface copies the selection itself once this handler returns.
        DOINGCLIP = true;
        if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
      } else {
        relayKey(KeyCode, Shift);
      }
      break;
    case kKeyX:
      if (Shift == kCtrl) {
        DOINGCLIP = true;
        step([&] { mfgData.copySelection(); });
        // Cutting follows EditStatus, not the mode in force.
        if (editStatus_) step([&] { mfgData.SetText(mfgData.ActiveCol(), mfgData.ActiveRow(), QString()); });
      } else {
        relayKey(KeyCode, Shift);
      }
      break;
    case kKeyV:
      if (!edit) break;
      if (Shift == kCtrl) {
        if (pasteAllowed()) pasteByKey();
      } else if (pasteAllowed()) {
        relayKey(KeyCode, Shift);
      }
      break;
    default: relayKey(KeyCode, Shift); break;  // F6, F9, F10, arrows, Enter, characters
  }
}

// F2 in edit mode: the column's own editor, or the application's when the column has none.
void GridEditor::openCellByKey(int16_t& KeyCode, int16_t& Shift) {
  const int32_t row = mfgData.ActiveRow(), col = mfgData.ActiveCol();
  if (attribute(attr::CanEdit, col) == QLatin1String("0")) return;
  switch (fieldKind(attribute(attr::FieldType, col))) {
    case FieldKind::LabelList:
      if (!attribute(attr::Labels, col).isEmpty()) {
        int16_t one = '1';
        KeyPress(one);
        return;
      }
      break;
    case FieldKind::Color: {
      // The value is turned over as a check box's is, and that 0 or 1 is the colour the dialog
      // opens with; applications have always seen it so.
      const double turned = Matrix1.GetValue(row, col) == 1 ? 0 : 1;
      step([&] { Matrix1.SetValue(row, col, turned); });
      const Colour initial = Colour(turned);
      const Colour chosen = platform().colorDialog(initial).value_or(initial);
      step([&] { Matrix1.SetValue(row, col, double(chosen)); });
      step([&] { dbHelper().FillBlock(mfgData, QVariant::fromValue(chosen), QVariant(), row, col, row, col); });
      step([&] { mfgData.SetText(col, row, QString()); });
      return;
    }
    case FieldKind::Period:
    case FieldKind::Date:
    case FieldKind::DateTime:
    case FieldKind::Time: {
      // What the application wrote into the cell since the cursor came is what Escape keeps.
      loadTextBox(col, row);
      int16_t f2 = key::F2;
      TextKeyAction(mfgData, Text, f2, Shift);
      return;
    }
    case FieldKind::Check: {
      const double turned = Matrix1.GetValue(row, col) == 1 ? 0 : 1;
      step([&] { Matrix1.SetValue(row, col, turned); });
      step([&] { showCheckCell(row, col, turned); });
      if (enableCheckAutoMoveNextRow_) {
        step([&] {
          const int32_t next = row == mfgData.MaxRows() ? 1 : Record2Row(NextActiveRecord(Row2Record(row)));
          mfgData.SetActiveCell(col, next);
        });
      }
      return;
    }
    default: break;
  }
  // A plain column: F2 is the application's call to open its own selection list.
  if (listener_) listener_->KeyDown(KeyCode, Shift);
  if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
}

// F4: the multi-line box over a TEXT cell, titled with the column's caption; read only unless the
// column may be edited in edit mode.
void GridEditor::multiLineByKey() {
  const int32_t row = mfgData.ActiveRow(), col = mfgData.ActiveCol();
  if (fieldKind(attribute(attr::FieldType, col)) != FieldKind::Text) return;
  const bool editable = RUNMODE == QLatin1String("EDIT") && helper().TextToInteger(attribute(attr::CanEdit, col)) != 0;
  step([&] {
    const int32_t maxLength = helper().TextToInteger(attribute(attr::MaxLength, col));
    const QString answer = helper().MultiLineInput(attribute(attr::Caption, col), mfgData.GetText(col, row),
                                                   QString::fromUtf8("พิมพ์ข้อความ"), true, 0, maxLength, true, 5775,
                                                   4000, editable);
    mfgData.SetText(col, row, answer);
  });
}

// F7 (empty text: the search asks) and a character typed in view mode.
void GridEditor::findByKey(const QString& text) {
  step([&] {
    const int32_t col = mfgData.ActiveCol();
    const int32_t row = dbHelper().FindRow(mfgData, mfgData.ActiveRow(), col, text, 5, 1);
    mfgData.SetActiveCell(col, row);
  });
}

// Delete in edit mode: empties every editable plain cell of the selected block, quietly passing
// over the others. The record state stays as it was.
void GridEditor::clearBlockByKey() {
  const int32_t r1 = std::max(1, std::min(mfgData.ActiveRow(), mfgData.SelBlockRow2()));
  const int32_t r2 = std::max(mfgData.ActiveRow(), mfgData.SelBlockRow2());
  const int32_t c1 = std::max(1, std::min(mfgData.ActiveCol(), mfgData.SelBlockCol2()));
  const int32_t c2 = std::max(mfgData.ActiveCol(), mfgData.SelBlockCol2());
  for (int32_t r = r1; r <= r2; ++r) {
    for (int32_t c = c1; c <= c2; ++c) {
      if (attribute(attr::CanEdit, c) == QLatin1String("0") || !attribute(attr::Labels, c).isEmpty()) continue;
      step([&] {
        Matrix1.SetValue(r, c, 0);
        mfgData.SetText(c, r, QString());
      });
      raise(&GridEditorEvents::ValidData);
    }
  }
}

// The active cell decides for the whole block.
bool GridEditor::pasteAllowed() {
  const int32_t row = mfgData.ActiveRow(), col = mfgData.ActiveCol();
  return helper().TextToInteger(attribute(attr::CanEdit, col)) == 1 && editStatus_ &&
         locks().GetValue(row, col) == 0;
}

// Ctrl+V: the one clipboard text into every cell of the block, read by each column's type. No
// splitting at tabs or lines, no formatting, and a text that does not fit leaves its cell alone.
void GridEditor::pasteByKey() {
  DOINGCLIP = true;
  const QString clip = platform().clipboardText();
  if (mfgData.ActiveRow() < 1) step([&] { mfgData.SetActiveCell(mfgData.ActiveCol(), 1); });
  int32_t r1 = mfgData.SelBlockRow(), r2 = mfgData.SelBlockRow2();
  int32_t c1 = mfgData.SelBlockCol(), c2 = mfgData.SelBlockCol2();
  if (r1 < 1) r1 = 1;
  if (c1 < 1) c1 = 1;
  if (r2 < 1) r2 = mfgData.MaxRows();
  if (c2 < 1) c2 = mfgData.MaxCols();
  const int32_t rStep = r1 < r2 ? 1 : -1, cStep = c1 < c2 ? 1 : -1;
  const int32_t activeCol = mfgData.ActiveCol();
  StandardHelper& h = helper();
  for (int32_t r = r1; rStep > 0 ? r <= r2 : r >= r2; r += rStep) {
    for (int32_t c = c1; cStep > 0 ? c <= c2 : c >= c2; c += cStep) {
      step([&] {
        auto put = [&](std::optional<double> value) {
          if (value) Matrix1.SetValue(r, c, *value);
          mfgData.SetText(c, r, clip);
        };
        switch (fieldKind(attribute(attr::FieldType, c))) {
          case FieldKind::AbsNumber: put(std::abs(h.TextToDouble(clip))); break;
          case FieldKind::Number: put(h.TextToDouble(clip)); break;
          case FieldKind::Year: put(h.TextToDouble(clip) - StandardHelper::YearOffset()); break;
          case FieldKind::Period:
          case FieldKind::Date: {
            double value = 0;
            QString shown;
            if (h.IsDateText(clip, value, shown)) put(value);
            break;
          }
          case FieldKind::DateTime:
          case FieldKind::Time:
            if (vb::IsDate(clip)) put(vb::CDate(clip));
            break;
          case FieldKind::LabelList: {
            QStringList scratch;
            const qsizetype at = labelsOf(c, scratch).indexOf(clip);
            if (at >= 0) put(double(at));
            break;
          }
          case FieldKind::YesNo: {
            const QString first = vb::UCase(vb::Left(clip, 1));
            put(first == QLatin1String("N") || first == QLatin1String("0") ? 0 : 1);
            break;
          }
          default: put(std::nullopt); break;
        }
      });
      step([&] { mfgData.SetActiveCell(activeCol, r); });
      raise(&GridEditorEvents::ValidData);
    }
  }
  if (mfgData.Visible() && mfgData.Enabled()) mfgData.SetFocus();
}

void GridEditor::KeyPress(int16_t& KeyAscii) {
  // Nothing is typed into a row the user cannot see.
  const int32_t row = mfgData.ActiveRow();
  if (row < 1) return;
  bool hidden = false;
  step([&] {
    const int32_t keepRow = mfgData.Row();
    mfgData.setRow(row);
    hidden = mfgData.RowHidden();
    mfgData.setRow(keepRow);
  });
  if (hidden || mfgData.RowHeight(row) <= 0) return;
  if (keyOnForeignCell()) return;
  if (Text.Visible()) return;
  // In view mode a character looks for the next row that begins with it.
  if (RUNMODE != QLatin1String("EDIT")) {
    findByKey(QString(QChar(char16_t(KeyAscii))));
    return;
  }
  if (helper().TextToInteger(attribute(attr::CanEdit, mfgData.ActiveCol())) == 0) return;
  startCellEditor(KeyAscii);
}

void GridEditor::KeyUp(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode >= key::Left && KeyCode <= key::Down) raise(&GridEditorEvents::SelChange);
}

void GridEditor::DblClick(int32_t Col, int32_t Row) {
  if (Col < 0 || Row < 0) return;
  if (locks().GetValue(Row, Col) >= 1) return;
  if (editStatus_) {
    int16_t none = kNone;
    switch (fieldKind(attribute(attr::FieldType, Col))) {
      case FieldKind::Check: {
        int16_t f2 = key::F2;
        KeyDown(f2, none);
        break;
      }
      case FieldKind::YesNo:
        step([&] {
          const bool no = Matrix1.GetValue(Row, Col) == 0;
          Matrix1.SetValue(Row, Col, no ? 1 : 0);
          mfgData.SetText(Col, Row, no ? QStringLiteral("Y") : QStringLiteral("N"));
        });
        break;
      default: {
        int16_t code = doubleClickEventKeyCode_;
        KeyDown(code, none);
        break;
      }
    }
  } else if (doubleClickNoAction_) {
    raise(&GridEditorEvents::DoubleClick);
  } else if (listener_) {
    int16_t code = doubleClickEventKeyCode_, none = kNone;
    listener_->KeyDown(code, none);
  }
}

void GridEditor::NextColumnInput() {
  const int32_t next = mfgData.ActiveCol() + 1;
  int32_t target = 0;
  // The walk starts only below the last column, so from the last but one it finds nothing.
  if (next < mfgData.MaxCols()) {
    for (int32_t c = next; c <= mfgData.MaxCols(); ++c) {
      if (helper().TextToInteger(attribute(attr::CanEdit, c)) != 0 && mfgData.ColWidth(c) > 15) {
        target = c;
        break;
      }
    }
  }
  Text.setVisible(false);
  if (target) step([&] { mfgData.SetActiveCell(target, mfgData.ActiveRow()); });
  if (mfgData.Visible()) mfgData.SetFocus();
}

void GridEditor::MouseWheel(int32_t MouseKeys, int32_t Rotation, int32_t Xpos, int32_t Ypos) {
  (void)MouseKeys, (void)Xpos, (void)Ypos;
  // A notch scrolls by a page, counted in rows as tall as the first one.
  const double rowHeight = mfgData.RowHeight(1);
  if (rowHeight <= 0) return;
  // A short surface still scrolls by ten rows a notch.
  int32_t n = int32_t(std::floor(mfgData.Height() / rowHeight)) - 1;
  if (n < 10) n = 10;
  const int32_t top = Rotation > 0 ? std::max(1, mfgData.TopRow() - n) : std::min(mfgData.MaxRows(), mfgData.TopRow() + n);
  // A notch that would put a closed row at the top does nothing.
  if (mfgData.RowHeight(top) > 0) step([&] { mfgData.setTopRow(top); });
}

}  // namespace tq7
