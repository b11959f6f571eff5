#include "companion/Matrix.h"
#include "frame/Error.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

using tq7::Matrix;

namespace {

struct Recorder : tq7::MatrixEvents {
  std::vector<std::pair<int32_t, int32_t>> cells;
  int dataChanges = 0;
  void CellDataChange(int32_t& Row, int32_t& Column) override {
    cells.emplace_back(Row, Column);
    Row = -77;  // a handler may scribble on its arguments; nothing may depend on them
    Column = -77;
  }
  void DataChange() override { ++dataChanges; }
};

// As a grid makes its tables: two rows, MaxCols + 1 columns, cleared, mode 1.
Matrix gridTable(int32_t maxCols) {
  Matrix m;
  EXPECT_EQ(m.Dimension(2, maxCols + 1, 1, 1), 1);
  m.Clear();
  m.SetMode(1);
  return m;
}

}  // namespace

TEST(Matrix, ReadsBeyondTheTableAsZeroAndGrowsOnWrite) {
  Matrix m = gridTable(5);
  Recorder r;
  m.setListener(&r);
  EXPECT_EQ(m.GetValue(5000, 3), 0.0);
  EXPECT_EQ(m.GetValue(1, 400), 0.0);
  EXPECT_TRUE(r.cells.empty());

  m.SetValue(1, 2, 7.25);
  EXPECT_EQ(m.SetValue(5000, 3, 1.5), 1);
  ASSERT_EQ(r.cells.size(), 2u);
  EXPECT_EQ(r.cells[1], std::make_pair(5000, 3));
  EXPECT_EQ(m.GetValue(5000, 3), 1.5);
  EXPECT_EQ(m.GetValue(4999, 3), 0.0);
  EXPECT_EQ(m.GetValue(1, 2), 7.25);  // survives the growth

  // Growing the columns re-lays every row: old values must stay where they were.
  EXPECT_EQ(m.SetValue(3, 250, -4.0), 1);
  EXPECT_EQ(m.GetValue(3, 250), -4.0);
  EXPECT_EQ(m.GetValue(1, 2), 7.25);
  EXPECT_EQ(m.GetValue(5000, 3), 1.5);
  EXPECT_EQ(m.GetValue(5000, 250), 0.0);
}

TEST(Matrix, RowAndColumnZeroAreCellsOfTheirOwn) {
  Matrix locks = gridTable(3);
  locks.SetValue(7, 0, 1);  // the lock of record 7 as a whole
  locks.SetValue(0, 2, 3);
  EXPECT_EQ(locks.GetValue(7, 0), 1.0);
  EXPECT_EQ(locks.GetValue(0, 2), 3.0);
  EXPECT_EQ(locks.GetValue(7, 1), 0.0);
  EXPECT_EQ(locks.GetValue(0, 0), 0.0);
}

TEST(Matrix, NegativeIndicesReadZeroAndFailToWrite) {
  Matrix m = gridTable(3);
  Recorder r;
  m.setListener(&r);
  m.SetValue(0, 0, 9);
  EXPECT_EQ(m.GetValue(-1, 0), 0.0);
  EXPECT_EQ(m.GetValue(0, -1), 0.0);
  EXPECT_EQ(m.GetValue(-2147483647 - 1, 1), 0.0);
  const int32_t before = m.rowCapacity();
  int16_t status = 0;
  EXPECT_EQ(tq7::step([&] { status = m.SetValue(-1, 2, 5); }), tq7::err::SubscriptOutOfRange);
  EXPECT_EQ(tq7::step([&] { status = m.SetValue(2, -3, 5); }), tq7::err::SubscriptOutOfRange);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(r.cells.size(), 1u);  // only the good write raised the event
  EXPECT_EQ(m.rowCapacity(), before);
  EXPECT_EQ(m.GetValue(0, 0), 9.0);
}

TEST(Matrix, ResetRowAndClearRowZeroOneRowQuietlyAndClearEverything) {
  Matrix m = gridTable(4);
  for (int32_t row = 0; row < 6; ++row)
    for (int32_t col = 0; col < 5; ++col) m.SetValue(row, col, row * 10 + col + 1);
  Recorder r;
  m.setListener(&r);
  int32_t row = 3;
  m.ResetRow(row);
  for (int32_t col = 0; col < 5; ++col) EXPECT_EQ(m.GetValue(3, col), 0.0) << col;
  EXPECT_EQ(m.GetValue(2, 4), 25.0);
  EXPECT_EQ(m.GetValue(4, 0), 41.0);
  EXPECT_TRUE(r.cells.empty());
  EXPECT_EQ(r.dataChanges, 0);

  row = 4;
  m.ClearRow(row);
  EXPECT_EQ(m.GetValue(4, 0), 0.0);
  EXPECT_EQ(m.GetValue(5, 0), 51.0);
  int32_t far = 90000, negative = -5;
  m.ResetRow(far);  // beyond the table: already zeros, nothing to do and no growth
  m.ClearRow(negative);
  EXPECT_LT(m.rowCapacity(), 90000);

  m.Clear();
  EXPECT_EQ(r.dataChanges, 1);
  EXPECT_EQ(m.GetValue(5, 0), 0.0);
  EXPECT_EQ(m.GetValue(2, 4), 0.0);
  EXPECT_TRUE(r.cells.empty());
}

TEST(Matrix, DimensionMakesAFreshTableAndRefusesNegativeSizes) {
  Matrix m;
  Recorder r;
  m.setListener(&r);
  EXPECT_EQ(m.GetValue(0, 0), 0.0);  // never dimensioned: still readable
  m.SetValue(0, 0, 2);              // and writable
  EXPECT_EQ(m.GetValue(0, 0), 2.0);
  EXPECT_EQ(m.Dimension(-1, 5, 1, 1), 0);
  EXPECT_EQ(m.GetValue(0, 0), 2.0);
  EXPECT_EQ(m.Dimension(3, 3, 1, 1), 1);
  EXPECT_EQ(r.dataChanges, 1);
  EXPECT_EQ(m.GetValue(0, 0), 0.0);
  EXPECT_EQ(m.rowCapacity(), 3);
  EXPECT_EQ(m.columnCapacity(), 3);
}

TEST(Matrix, ReentrantHandlerMayWriteAndGrowTheTable) {
  // The grid's rendering answers CellDataChange and may itself write values: a write that grows
  // the table from inside the event must not disturb the write that raised it.
  struct Echo : tq7::MatrixEvents {
    Matrix* m = nullptr;
    int depth = 0;
    void CellDataChange(int32_t& Row, int32_t& Column) override {
      if (depth++ == 0) m->SetValue(Row + 10000, Column + 100, m->GetValue(Row, Column) * 2);
      --depth;
    }
  } echo;
  Matrix m = gridTable(2);
  echo.m = &m;
  m.setListener(&echo);
  m.SetValue(1, 1, 21);
  EXPECT_EQ(m.GetValue(1, 1), 21.0);
  EXPECT_EQ(m.GetValue(10001, 101), 42.0);
}

TEST(Matrix, LoadPatternKeepsEveryValue) {
  // Records arrive one row at a time beyond the two rows the table was made with.
  Matrix m = gridTable(20);
  const int32_t rows = 3000, cols = 21;
  for (int32_t row = 1; row <= rows; ++row) {
    int32_t r = row;
    m.ResetRow(r);
    for (int32_t col = 1; col < cols; ++col) m.SetValue(row, col, row * 100.0 + col);
  }
  // Growth is geometric: far fewer reallocations than rows, so capacity runs ahead.
  EXPECT_GE(m.rowCapacity(), rows + 1);
  EXPECT_LT(m.rowCapacity(), 2 * rows);
  for (int32_t row = 1; row <= rows; ++row)
    for (int32_t col = 1; col < cols; ++col) ASSERT_EQ(m.GetValue(row, col), row * 100.0 + col) << row << "," << col;
}
