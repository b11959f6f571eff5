// GridEditor: the record commands of the tool bar and the function keys.
#include "grid/editor/GridEditor.h"

#include "frame/Error.h"

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
  SpreadSurface& s = mfgData;
  // 1. A standing switch, read before any event; a load is never stopped by it.
  if (stopActionAdd_ && !loading_) return;
  // 2.
  raise(&GridEditorEvents::BeforeAddClickProcess);
  // 3. - 5.
  step([&] { s.setMaxRows(s.MaxRows() + 1); });
  FillINI();
  step([&] { s.SetActiveCell(s.ActiveCol(), s.MaxRows()); });
  // 6. - 9.
  if (defaultRowHeight_ > 0) step([&] { s.setRowHeight(s.MaxRows(), defaultRowHeight_); });
  for (int32_t c = 1; c <= s.MaxCols(); ++c) {
    if (s.ColWidth(c) > 10) {
      step([&] { s.SetActiveCell(c, s.ActiveRow()); });
      break;
    }
  }
  if (s.Visible()) s.SetFocus();
  raise(&GridEditorEvents::AddClick);
}

void GridEditor::cmdAddNewNoCheck() {
  SpreadSurface& s = mfgData;
  hideOverlays();
  raise(&GridEditorEvents::BeforeAddClickProcess);
  step([&] { s.setMaxRows(s.MaxRows() + 1); });
  step([&] { s.SetActiveCell(s.ActiveCol(), s.MaxRows()); });
  FillINI();
  if (defaultRowHeight_ > 0) step([&] { s.setRowHeight(s.MaxRows(), defaultRowHeight_); });
  for (int32_t c = 1; c <= s.MaxCols(); ++c) {
    if (s.ColWidth(c) > 10) {
      step([&] { s.SetActiveCell(c, s.ActiveRow()); });
      break;
    }
  }
  if (s.Visible()) s.SetFocus();
  raise(&GridEditorEvents::AddClick);
}

void GridEditor::cmdDelete_Click() {}

}  // namespace tq7
