#include "companion/Matrix.h"

#include "frame/Error.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tq7 {

namespace {
constexpr int32_t OutOfMemory = 7;

[[noreturn]] void outOfMemory() { throw Error{OutOfMemory, QStringLiteral("Out of memory")}; }
}  // namespace

void Matrix::outOfRange() { throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")}; }

int16_t Matrix::Dimension(int32_t Rows, int32_t Columns, int32_t A, int32_t B) {
  if (Rows < 0 || Columns < 0) return 0;
  columns_.clear();
  columns_.shrink_to_fit();
  rows_ = static_cast<uint32_t>(Rows);
  cols_ = static_cast<uint32_t>(Columns);
  dimA_ = A;
  dimB_ = B;
  if (listener_) listener_->DataChange();
  return 1;
}

// A write beyond a column's storage. A zero needs no storage: the cell reads 0 already.
void Matrix::store(uint32_t r, uint32_t c, double value) {
  rows_ = std::max(rows_, r + 1);
  cols_ = std::max(cols_, c + 1);
  if (value == 0.0) return;
  try {
    if (c >= columns_.size()) columns_.resize(size_t(c) + 1);
    ColumnCells& column = columns_[c];
    while (column.blocks.size() <= (r >> kBlockBits)) column.blocks.push_back(std::make_unique<double[]>(kBlock));
    column.size = std::max(column.size, r + 1);
    column.at(r) = value;
  } catch (const std::bad_alloc&) {
    outOfMemory();
  } catch (const std::length_error&) {
    outOfMemory();
  }
}

void Matrix::ResetRow(int32_t& Row) {
  const auto r = static_cast<uint32_t>(Row);
  for (ColumnCells& column : columns_)
    if (r < column.size) column.at(r) = 0.0;
}

void Matrix::Clear() {
  for (ColumnCells& column : columns_)
    for (auto& block : column.blocks) std::fill(block.get(), block.get() + kBlock, 0.0);
  if (listener_) listener_->DataChange();
}

void Matrix::ClearRow(int32_t& Row) { ResetRow(Row); }

}  // namespace tq7
