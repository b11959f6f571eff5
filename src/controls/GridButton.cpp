#include "controls/GridButton.h"

#include "frame/Error.h"

namespace tq7 {

GridButton::GridButton() : Control(QStringLiteral("GridButton")) {
  addChild(mfgData);
  mfgData.setListener(this);
  // The sheet is laid out as a menu: no header rows, no header columns.
  step([&] {
    for (int32_t r = GridSurface::SpreadHeader; r <= GridSurface::LastHeaderRow; ++r) mfgData.setRowHeight(r, 0);
    for (int32_t c = GridSurface::SpreadHeader; c <= GridSurface::LastHeaderCol; ++c) mfgData.setColWidth(c, 0);
  });
}

GridButton::~GridButton() { mfgData.setListener(nullptr); }

int16_t GridButton::SetFirst(int16_t Cols, int16_t Rows) {
  step([&] { mfgData.setMaxCols(Cols > 0 ? Cols : 1); });
  if (Rows > 0) step([&] { mfgData.setMaxRows(Rows); });
  return 0;
}

void GridButton::SetButton(const QString& ButtonTitle, int16_t COL, int16_t Row, std::optional<int16_t> ButtonType) {
  if (COL < 1 || Row < 1 || COL > mfgData.MaxCols() || Row > mfgData.MaxRows()) return;
  step([&] {
    mfgData.setCol(COL);
    mfgData.setRow(Row);
    mfgData.setCellType(celltype::Button);
    mfgData.SetText(COL, Row, ButtonTitle);
  });
  buttonTypes_.insert(cellKey(COL, Row), ButtonType.value_or(ButtonTypeNormal));
}

void GridButton::onResize() {
  mfgData.Move(0, 0, Width(), Height());
  step([&] { mfgData.setColWidth(1, Width() - 30); });
}

void GridButton::focusSurface() {
  if (mfgData.Visible()) mfgData.SetFocus();
}

void GridButton::onGotFocus() { focusSurface(); }

void GridButton::mfgData_ButtonClicked(int32_t COL, int32_t Row, int16_t ButtonDown) {
  if (listener_) listener_->ButtonClicked(COL, Row, ButtonDown);
  focusSurface();
}

// A press on a button cell uses the button: a normal one is pressed (1), a two-state one
// changes its state and tells the new one.
void GridButton::Click(int32_t Col, int32_t Row) {
  if (Col < 1 || Row < 1) return;
  const auto it = buttonTypes_.constFind(cellKey(Col, Row));
  if (it == buttonTypes_.constEnd()) return;
  int16_t down = 1;
  if (*it == ButtonTypeTwoState) {
    step([&] {
      mfgData.setCol(Col);
      mfgData.setRow(Row);
      down = mfgData.Value() != 0 ? 0 : 1;
      mfgData.setValue(down);
    });
  }
  mfgData_ButtonClicked(Col, Row, down);
}

void GridButton::LeaveCell(int32_t, int32_t, int32_t, int32_t NewRow, bool&) { currentRow_ = NewRow; }

void GridButton::KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (KeyCode == 13) {
    // No column is kept: Enter names column 0.
    if (listener_) listener_->ButtonClicked(0, currentRow_, 1);
  } else if (KeyCode >= 49 && KeyCode <= 57) {
    const int32_t digit = KeyCode - 48;
    if (mfgData.MaxRows() >= digit && listener_) listener_->ButtonClicked(1, digit, 1);
  } else {
    if (listener_) listener_->KeyDown(KeyCode, Shift);
  }
  focusSurface();
}

}  // namespace tq7
