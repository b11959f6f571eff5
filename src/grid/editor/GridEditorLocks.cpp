// GridEditor: locks of cells and records, kept in the lock table and shown by colour.
#include "grid/editor/GridEditor.h"

#include "frame/Error.h"

#include <cstdlib>

namespace tq7 {

int16_t GridEditor::CellLockMode(int32_t Record, int32_t Column, int16_t Mode) {
  return CellLockMode2(Record, Column, Mode);
}

int16_t GridEditor::CellLockMode2(int32_t Record, int32_t Column, int16_t Mode, Colour LockColor, Colour ClearColor) {
  SpreadSurface& s = mfgData;
  const int32_t row = Record2Row(Record), col = Column2Col(Column);
  if (std::abs(row) > s.MaxRows() || std::abs(col) > s.MaxCols()) return 0;  // outside: ignored without a word
  step([&] { locks().SetValue(row, col, Mode); });
  const int32_t keepRow = s.Row(), keepCol = s.Col();
  step([&] { s.setRow(row); });
  step([&] { s.setCol(col); });
  step([&] { s.setBackColor(Mode < 2 ? ClearColor : LockColor); });  // a lock of mode 1 does not show
  step([&] { s.setRow(keepRow); });
  step([&] { s.setCol(keepCol); });
  return 0;
}

int16_t GridEditor::RecordLockMode(int32_t Record, int16_t Mode) { return RecordLockMode2(Record, Mode); }

int16_t GridEditor::RecordLockMode2(int32_t Record, int16_t Mode, Colour LockColor, Colour ClearColor) {
  SpreadSurface& s = mfgData;
  const int32_t row = Record2Row(Record);
  const int32_t keepRow = s.Row(), keepCol = s.Col(), keepRow2 = s.Row2(), keepCol2 = s.Col2();
  const bool keepBlock = s.BlockMode();
  step([&] { s.setRow(row); });
  step([&] { s.setRow2(row); });
  step([&] { s.setCol(1); });
  step([&] { s.setCol2(s.MaxCols()); });
  step([&] { s.setBlockMode(true); });
  step([&] { s.setBackColor(Mode > 1 ? LockColor : ClearColor); });
  step([&] { s.setBlockMode(keepBlock); });
  step([&] { s.setRow(keepRow); });
  step([&] { s.setCol(keepCol); });
  step([&] { s.setRow2(keepRow2); });
  step([&] { s.setCol2(keepCol2); });
  step([&] { locks().SetValue(row, 0, Mode); });
  // Up to the last column but two: the two last columns keep their own lock modes.
  for (int32_t col = 1; col <= s.MaxCols() - 2; ++col) step([&] { locks().SetValue(row, col, Mode); });
  return 0;
}

}  // namespace tq7
