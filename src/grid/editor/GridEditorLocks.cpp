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
  step([&] {
    const int32_t keepRow = s.Row(), keepCol = s.Col();
    s.setRow(row);
    s.setCol(col);
    s.setBackColor(Mode < 2 ? ClearColor : LockColor);  // a lock of mode 1 does not show
    s.setRow(keepRow);
    s.setCol(keepCol);
  });
  return 0;
}

int16_t GridEditor::RecordLockMode(int32_t Record, int16_t Mode) { return RecordLockMode2(Record, Mode); }

int16_t GridEditor::RecordLockMode2(int32_t Record, int16_t Mode, Colour LockColor, Colour ClearColor) {
  SpreadSurface& s = mfgData;
  const int32_t row = Record2Row(Record);
  step([&] {
    const int32_t keepRow = s.Row(), keepCol = s.Col(), keepRow2 = s.Row2(), keepCol2 = s.Col2();
    const bool keepBlock = s.BlockMode();
    s.setRow(row);
    s.setRow2(row);
    s.setCol(1);
    s.setCol2(s.MaxCols());
    s.setBlockMode(true);
    s.setBackColor(Mode > 1 ? LockColor : ClearColor);
    s.setBlockMode(keepBlock);
    s.setRow(keepRow);
    s.setCol(keepCol);
    s.setRow2(keepRow2);
    s.setCol2(keepCol2);
  });
  step([&] { locks().SetValue(row, 0, Mode); });
  // Up to the last column but two: the two last columns keep their own lock modes.
  for (int32_t col = 1; col <= s.MaxCols() - 2; ++col) step([&] { locks().SetValue(row, col, Mode); });
  return 0;
}

}  // namespace tq7
