#include "companion/Matrix.h"

#include "frame/Error.h"

#include <algorithm>
#include <new>
#include <stdexcept>

namespace tq7 {

namespace {
constexpr int32_t OutOfMemory = 7;
constexpr uint32_t MaxExtent = 0x80000000u;  // rows or columns 0 .. INT32_MAX

// The next extent holding index i: at least half as much again, so that a grid adding records
// one by one reallocates only a logarithmic number of times.
uint32_t nextExtent(uint32_t current, uint32_t i) {
  const uint64_t wanted = std::max<uint64_t>(uint64_t(i) + 1, uint64_t(current) + current / 2 + 8);
  return static_cast<uint32_t>(std::min<uint64_t>(wanted, MaxExtent));
}
}  // namespace

int16_t Matrix::Dimension(int32_t Rows, int32_t Columns, int32_t A, int32_t B) {
  if (Rows < 0 || Columns < 0) return 0;
  std::vector<double> fresh;
  try {
    fresh.assign(static_cast<size_t>(Rows) * static_cast<size_t>(Columns), 0.0);
  } catch (const std::bad_alloc&) {
    throw Error{OutOfMemory, QStringLiteral("Out of memory")};
  } catch (const std::length_error&) {
    throw Error{OutOfMemory, QStringLiteral("Out of memory")};
  }
  data_.swap(fresh);
  rows_ = static_cast<uint32_t>(Rows);
  cols_ = static_cast<uint32_t>(Columns);
  dimA_ = A;
  dimB_ = B;
  if (listener_) listener_->DataChange();
  return 1;
}

void Matrix::grow(int32_t Row, int32_t Column) {
  if (Row < 0 || Column < 0) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
  const auto r = static_cast<uint32_t>(Row);
  const auto c = static_cast<uint32_t>(Column);
  const uint32_t newRows = r < rows_ ? rows_ : nextExtent(rows_, r);
  const uint32_t newCols = c < cols_ ? cols_ : nextExtent(cols_, c);
  try {
    if (newCols == cols_) {
      // Rows only: row-major storage just gets longer.
      data_.resize(static_cast<size_t>(newRows) * newCols, 0.0);
    } else {
      std::vector<double> wider(static_cast<size_t>(newRows) * newCols, 0.0);
      for (size_t row = 0; row < rows_; ++row)
        std::copy_n(data_.begin() + static_cast<ptrdiff_t>(row * cols_), cols_,
                    wider.begin() + static_cast<ptrdiff_t>(row * newCols));
      data_.swap(wider);
    }
  } catch (const std::bad_alloc&) {
    throw Error{OutOfMemory, QStringLiteral("Out of memory")};
  } catch (const std::length_error&) {
    throw Error{OutOfMemory, QStringLiteral("Out of memory")};
  }
  rows_ = newRows;
  cols_ = newCols;
}

void Matrix::ResetRow(int32_t& Row) {
  const auto r = static_cast<uint32_t>(Row);
  if (r >= rows_) return;
  std::fill_n(data_.begin() + static_cast<ptrdiff_t>(size_t(r) * cols_), cols_, 0.0);
}

void Matrix::Clear() {
  std::fill(data_.begin(), data_.end(), 0.0);
  if (listener_) listener_->DataChange();
}

void Matrix::ClearRow(int32_t& Row) { ResetRow(Row); }

}  // namespace tq7
