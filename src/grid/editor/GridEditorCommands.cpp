// GridEditor: the record commands of the tool bar and the function keys.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/FieldKind.h"

namespace tq7 {

// Drops whatever the user was typing, without a commit.
void GridEditor::hideOverlays() {
  if (RUNMODE != QLatin1String("EDIT")) return;
  lastActiveRow_ = mfgData.ActiveRow();
  if (Text.Visible()) {
    Text.setVisible(false);
    List1.setVisible(false);
  }
}

// ---- Append ---------------------------------------------------------------------------------------------

void GridEditor::cmdAdd_Click() { cmdAppend_Click(true); }

void GridEditor::cmdAppend_Click(bool /*WithColor: no effect*/) {
  // A standing switch, read before any event; a load is never stopped by it.
  if (stopActionAdd_ && !loading_) return;
  appendRecord(false);
}

// Adds a record whatever StopActionAdd says; the cursor goes to the new row before its defaults.
void GridEditor::cmdAddNewNoCheck() {
  hideOverlays();
  appendRecord(true);
}

void GridEditor::appendRecord(bool cursorFirst) {
  SpreadSurface& s = mfgData;
  raise(&GridEditorEvents::BeforeAddClickProcess);
  step([&] { s.setMaxRows(s.MaxRows() + 1); });
  if (!cursorFirst) FillINI();
  step([&] { s.SetActiveCell(s.ActiveCol(), s.MaxRows()); });
  if (cursorFirst) FillINI();
  if (defaultRowHeight_ > 0) step([&] { s.setRowHeight(s.MaxRows(), defaultRowHeight_); });
  // The first column wide enough to be seen; none, and the cursor keeps its column.
  for (int32_t c = 1; c <= s.MaxCols(); ++c) {
    if (s.ColWidth(c) > 10) {
      step([&] { s.SetActiveCell(c, s.ActiveRow()); });
      break;
    }
  }
  if (s.Visible()) s.SetFocus();
  raise(&GridEditorEvents::AddClick);
}

// ---- Insert --------------------------------------------------------------------------------------------

void GridEditor::cmdInsert_Click() {
  SpreadSurface& s = mfgData;
  step([&] { s.setVisible(false); });  // hides the work
  const int32_t r = s.ActiveRow();
  cmdAdd_Click();
  bubbleUpTo(r);
}

void GridEditor::cmdInsertAfter_Click() {
  SpreadSurface& s = mfgData;
  if (s.ActiveRow() > s.MaxRows()) {
    cmdAdd_Click();
    return;
  }
  step([&] { s.setVisible(false); });
  hideOverlays();
  const int32_t r = s.ActiveRow() + 1;
  cmdAppend_Click(false);
  bubbleUpTo(r);
}

// The new record climbs one exchange at a time to row r; then the surface shows again.
void GridEditor::bubbleUpTo(int32_t r) {
  SpreadSurface& s = mfgData;
  while (r < s.ActiveRow()) {
    const int32_t before = s.ActiveRow();
    cmdMoveUp_Click();
    if (s.ActiveRow() == before) break;  // nowhere left to go
  }
  step([&] { s.setVisible(true); });
  s.SetFocus();
}

// ---- Moves ----------------------------------------------------------------------------------------------

// Exchanges two rows through row 0, which keeps the last column's copy. Writing a value renders
// the cell's text (a TEXT cell shows the number), so the texts are taken first and put back after.
void GridEditor::exchangeRows(int32_t a, int32_t b, bool recordColumns) {
  SpreadSurface& s = mfgData;
  for (int32_t col = 1; col <= s.MaxCols(); ++col) {
    const QString textA = s.GetText(col, a), textB = s.GetText(col, b);
    step([&] {
      Matrix1.SetValue(0, col, Matrix1.GetValue(a, col));
      Matrix1.SetValue(a, col, Matrix1.GetValue(b, col));
      Matrix1.SetValue(b, col, Matrix1.GetValue(0, col));
    });
    step([&] {
      s.SetText(col, 0, textA);
      s.SetText(col, a, textB);
      s.SetText(col, b, s.cellText(col, 0));
    });
  }
  if (!recordColumns) return;
  // The stored key and the record state move with the data.
  for (int32_t col = attr::StoredKey; col <= -985; ++col) {  // the hidden record columns
    step([&] {
      s.SetText(col, 0, s.cellText(col, a));
      s.SetText(col, a, s.cellText(col, b));
      s.SetText(col, b, s.cellText(col, 0));
    });
  }
}

bool GridEditor::moveStep(bool down, bool asCommand) {
  SpreadSurface& s = mfgData;
  const int32_t active = s.ActiveRow();
  // The nearest live, visible row in that direction; removed and filtered rows are jumped over.
  int32_t target = 0;
  for (int32_t r = down ? active + 1 : active - 1; down ? r <= s.MaxRows() : r >= 1; r += down ? 1 : -1) {
    if (s.cellText(attr::RecordState, r) == QLatin1String("D")) continue;
    if (s.RowHeight(r) == 0) continue;
    s.setRow(r);
    if (s.RowHidden()) continue;
    target = r;
    break;
  }
  // A single move hides the overlays; a run of moves hid them once before it started.
  if (asCommand) hideOverlays();
  // The lock table stays with the row.
  if (target) {
    exchangeRows(active, target, true);
    step([&] { s.SetActiveCell(s.ActiveCol(), target); });
  }
  if (s.Visible()) s.SetFocus();
  return target != 0;
}

void GridEditor::cmdMoveUp_Click() { moveStep(false, true); }
void GridEditor::cmdMoveDown_Click() { moveStep(true, true); }

void GridEditor::cmdMoveFirst_Click() { moveToEnd(false); }
void GridEditor::cmdMoveLast_Click() { moveToEnd(true); }

// Repeats the step, hiding the overlays once, while the height test sees a live record that way.
void GridEditor::moveToEnd(bool down) {
  SpreadSurface& s = mfgData;
  step([&] { s.setVisible(false); });
  hideOverlays();
  while ((down ? NextActiveRecord(Record()) : PreviousActiveRecord(Record())) >= 1)
    if (!moveStep(down, false)) break;  // a row the height test calls live but the step does not
  step([&] { s.setVisible(true); });
  s.SetFocus();
}

void GridEditor::SwitchRecord(int32_t FromRecord, int32_t ToRecord) {
  const int32_t from = Record2Row(FromRecord), to = Record2Row(ToRecord);
  if (from > 0) exchangeRows(from, to, false);
  if (mfgData.Visible()) mfgData.SetFocus();
}

void GridEditor::cmdFreeze_Click() {
  SpreadSurface& s = mfgData;
  const int32_t row = s.ActiveRow(), col = s.ActiveCol();
  step([&] { s.setColsFrozen(s.ColsFrozen() == 0 ? col : 0); });
  step([&] { s.SetActiveCell(col, row); });
}

// ---- Removal ------------------------------------------------------------------------------------------------

// The record stays in the surface: marked, its locks cleared, its row closed and renumbered.
void GridEditor::markDeleted(int32_t row) {
  SpreadSurface& s = mfgData;
  step([&] { s.SetText(attr::RecordState, row, QStringLiteral("D")); });
  step([&] { locks().ClearRow(row); });
  step([&] {
    s.setRowHeight(row, 0);
    RowHeightChange(row, row);
  });
  numberRows();
}

void GridEditor::cmdDelete_Click() {
  SpreadSurface& s = mfgData;
  // The application answers inside the event.
  stopActionDelete_ = false;
  raise(&GridEditorEvents::BeforeDeleteClickProcess);
  if (stopActionDelete_) return;
  const int32_t row = s.ActiveRow();
  // A locked record is never removed, whatever UseManualDeleteCheck says.
  if (locks().GetValue(row, 0) > 0) {
    platform().messageBox(QString::fromUtf8("ไม่สามารถลบรายการที่เลือกได้ "));
    return;
  }
  // A saved record still referred to by another table is refused.
  QString refusal;
  step([&] {
    const QString keyText = s.GetText(attr::StoredKey, row);
    if (keyText.isEmpty() || useManualDeleteCheck_) return;
    QVariant key;
    switch (fieldKind(attribute(attr::FieldType, primaryKeyColumn_))) {
      case FieldKind::Text: key = keyText; break;
      case FieldKind::Period:
      case FieldKind::Date:
      case FieldKind::DateTime:
      case FieldKind::Time: key = vb::serialToDateTime(vb::CDate(keyText)); break;
      default: key = helper().TextToDouble(keyText); break;
    }
    const QString table = dbHelper().CheckReferences(key, dataConnection_, primaryKeyName_);
    if (table.isEmpty()) return;
    QString alias = dbHelper().LookupValue(QString(), 0, 0, QStringLiteral("TTblAlias"), table,
                                           QStringLiteral("TTblName"), QStringLiteral("TQ7TTable"), appConnection_);
    if (alias.isEmpty()) alias = table;
    refusal = QString::fromUtf8("ไม่สามารถลบข้อมูลนี้ได้เพราะ ถูกอ้างอิงถึงจาก ข้อมูล") + alias;
  });
  if (!refusal.isEmpty()) {
    platform().messageBox(refusal);
    return;
  }
  hideOverlays();
  markDeleted(row);
  // A place for the cursor: down over closed rows, then up.
  step([&] {
    int32_t r = s.ActiveRow();
    const int32_t col = s.ActiveCol();
    if (r <= s.MaxRows()) {
      while (s.RowHeight(r) == 0 && r < s.MaxRows()) s.SetActiveCell(col, ++r);
      while (s.RowHeight(r) == 0 && r >= 2) s.SetActiveCell(col, --r);
    } else if (r == 1) {
      cmdAdd_Click();
      s.SetActiveCell(col, s.MaxRows());
    } else {
      s.SetActiveCell(col, r - 1);
    }
  });
  raise(&GridEditorEvents::DeleteClick);
}

void GridEditor::cmdDeleteNoCheck(int32_t iRecord) { markDeleted(iRecord); }

void GridEditor::SetButtonOpenCaption(const QString& iLabel) {
  step([&] { TbrButton.setButtonCaption(QStringLiteral("Enter"), iLabel); });
}

}  // namespace tq7
