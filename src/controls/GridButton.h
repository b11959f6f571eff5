#pragma once
// A menu of buttons standing in the cells of a spreadsheet surface. The application sizes the
// grid, puts a button in each cell it wants and hears ButtonClicked with the cell, from a click
// or from the keyboard: Enter uses the current row, the digits 1 to 9 name a row of column 1.
#include "frame/Control.h"
#include "frame/SpreadSurface.h"

#include <QHash>
#include <cstdint>
#include <optional>

namespace tq7 {

class GridButtonEvents {
 public:
  virtual ~GridButtonEvents() = default;
  virtual void ButtonClicked(int32_t COL, int32_t Row, int16_t ButtonDown) { (void)COL, (void)Row, (void)ButtonDown; }
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
};

class GridButton : public Control, private GridSurfaceEvents {
 public:
  // Button types of a button cell.
  static constexpr int16_t ButtonTypeNormal = 0, ButtonTypeTwoState = 1;

  GridButton();
  ~GridButton() override;

  void setListener(GridButtonEvents* l) { listener_ = l; }

  int16_t SetFirst(int16_t Cols, int16_t Rows);
  void SetButton(const QString& ButtonTitle, int16_t COL, int16_t Row, std::optional<int16_t> ButtonType = {});
  int32_t MaxCols() const { return mfgData.MaxCols(); }
  void setMaxCols(int32_t n) { mfgData.setMaxCols(n); }
  int32_t MaxRows() const { return mfgData.MaxRows(); }
  void setMaxRows(int32_t n) { mfgData.setMaxRows(n); }
  int32_t CurrentRow() const { return currentRow_; }
  // The button type of a cell; 0 for a cell that is no button.
  int16_t buttonType(int32_t COL, int32_t Row) const { return buttonTypes_.value(cellKey(COL, Row), 0); }

  // The surface's button event: a button cell was used.
  void mfgData_ButtonClicked(int32_t COL, int32_t Row, int16_t ButtonDown);

  SpreadSurface mfgData{QStringLiteral("mfgData")};

 protected:
  void onResize() override;
  void onGotFocus() override;

 private:
  static quint64 cellKey(int32_t c, int32_t r) { return (quint64(uint32_t(r)) << 32) | uint32_t(c); }
  // The sheet's events.
  void Click(int32_t Col, int32_t Row) override;
  void LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) override;
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override;
  void focusSurface();

  GridButtonEvents* listener_ = nullptr;
  int32_t currentRow_ = 1;
  QHash<quint64, int16_t> buttonTypes_;
};

}  // namespace tq7
