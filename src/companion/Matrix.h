#pragma once
// The numeric side of a grid: a table of doubles by surface row and column, row 0 and column 0
// included. One instance holds the cell values (a date as its serial), a second one the locks.
//
// A grid dimensions the table once and then writes ever further down as records are added, so a
// write beyond the table grows it and a read beyond it answers 0. A load makes a few calls per
// cell, so GetValue and the in-range SetValue are a bounds test and an index, nothing more.
#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace tq7 {

// Listener of a Matrix. CellDataChange is how a written value reaches the cell's text.
class MatrixEvents {
 public:
  virtual ~MatrixEvents() = default;
  // One cell was written. Both by reference, as the event hands them; changing them has no effect.
  virtual void CellDataChange(int32_t& Row, int32_t& Column) { (void)Row, (void)Column; }
  // The table changed as a whole (Dimension, Clear).
  virtual void DataChange() {}
};

class Matrix {
 public:
  Matrix() = default;

  // Stored and otherwise unused: the grids pass 1 and nothing else.
  void SetMode(int32_t Mode) { mode_ = Mode; }
  int32_t Mode() const { return mode_; }

  // Makes a fresh table of Rows x Columns zeros (rows 0..Rows-1, columns 0..Columns-1).
  // The last two numbers are stored only. A negative size answers 0 and changes nothing.
  int16_t Dimension(int32_t Rows, int32_t Columns, int32_t A = 1, int32_t B = 1);

  // The cell, or 0 for any cell outside the table, negative indices included.
  double GetValue(int32_t Row, int32_t Column) const noexcept {
    const auto c = static_cast<uint32_t>(Column);
    if (c >= columns_.size()) return 0.0;
    const ColumnCells& column = columns_[c];
    const auto r = static_cast<uint32_t>(Row);
    return r < column.size ? column.at(r) : 0.0;
  }

  // Writes the cell, growing the table when it lies beyond it, then raises CellDataChange.
  // Answers 1. A negative row or column is out of range: throws tq7::Error 9 and writes nothing,
  // so a caller running it as a guarded step keeps its status at 0.
  int16_t SetValue(int32_t Row, int32_t Column, double Value) {
    const auto r = static_cast<uint32_t>(Row);
    const auto c = static_cast<uint32_t>(Column);
    if (Row < 0 || Column < 0) outOfRange();
    ColumnCells* column = c < columns_.size() ? &columns_[c] : nullptr;
    if (column && r < column->size) {
      column->at(r) = Value;
    } else if (column && r == column->size && r < column->blocks.size() * kBlock) {
      column->at(r) = Value;  // the next row of a column being filled down
      column->size = r + 1;
      if (r >= rows_) rows_ = r + 1;
    } else {
      store(r, c, Value);
    }
    if (listener_) {
      int32_t row = Row, column = Column;
      listener_->CellDataChange(row, column);
    }
    return 1;
  }

  // Sets every cell of the row to 0; no event. A row outside the table holds zeros already.
  void ResetRow(int32_t& Row);
  // Sets every cell to 0, keeping the size, then raises DataChange.
  void Clear();
  // The same as ResetRow; the grids use it on the lock table when a record goes.
  void ClearRow(int32_t& Row);

  void setListener(MatrixEvents* listener) { listener_ = listener; }
  MatrixEvents* listener() const { return listener_; }

  // The extent the table has been dimensioned or written to.
  int32_t rowCapacity() const { return static_cast<int32_t>(rows_); }
  int32_t columnCapacity() const { return static_cast<int32_t>(cols_); }

 private:
  [[noreturn]] static void outOfRange();
  void store(uint32_t r, uint32_t c, double value);

  // Columnar and sparse: a column holds storage only from its first non-zero write, and only as
  // far down as it was written. A grid of 200 columns of which 20 are used costs 20 columns. A
  // column grows in blocks of zeros that never move, so a grid adding records one by one copies
  // nothing and touches each page once.
  static constexpr uint32_t kBlockBits = 12, kBlock = 1u << kBlockBits;
  struct ColumnCells {
    std::vector<std::unique_ptr<double[]>> blocks;
    uint32_t size = 0;  // rows written or zeroed; a block holds zeros beyond it
    double& at(uint32_t r) { return blocks[r >> kBlockBits][r & (kBlock - 1)]; }
    double at(uint32_t r) const { return blocks[r >> kBlockBits][r & (kBlock - 1)]; }
  };
  std::vector<ColumnCells> columns_;
  uint32_t rows_ = 0;  // the extent the table has been dimensioned or written to
  uint32_t cols_ = 0;
  int32_t mode_ = 0;
  int32_t dimA_ = 0;
  int32_t dimB_ = 0;
  MatrixEvents* listener_ = nullptr;
};

}  // namespace tq7
