#include "frame/FakePlatform.h"
#include "frame/SpreadSurface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

using namespace tq7;

namespace {

struct Recorder : GridSurfaceEvents {
  std::vector<QString> log;
  bool refuseLeave = false;
  void Click(int32_t c, int32_t r) override { log.push_back(QStringLiteral("Click %1,%2").arg(c).arg(r)); }
  void DblClick(int32_t c, int32_t r) override { log.push_back(QStringLiteral("DblClick %1,%2").arg(c).arg(r)); }
  void ColWidthChange(int32_t a, int32_t b) override {
    log.push_back(QStringLiteral("ColWidthChange %1,%2").arg(a).arg(b));
  }
  void RowHeightChange(int32_t a, int32_t b) override {
    log.push_back(QStringLiteral("RowHeightChange %1,%2").arg(a).arg(b));
  }
  void LeaveCell(int32_t c, int32_t r, int32_t nc, int32_t nr, bool& cancel) override {
    log.push_back(QStringLiteral("LeaveCell %1,%2>%3,%4").arg(c).arg(r).arg(nc).arg(nr));
    cancel = refuseLeave;
  }
  void KeyDown(int16_t& k, int16_t& s) override {
    log.push_back(QStringLiteral("KeyDown %1,%2").arg(k).arg(s));
    if (k == key::Down && s == shift::Ctrl) k = 0;  // the owner swallows Ctrl+Down
  }
  void KeyPress(int16_t& a) override { log.push_back(QStringLiteral("KeyPress %1").arg(a)); }
};

// A sheet set up the way the grids use it: a caption row, a number column, 5 x 4 data cells.
struct Sheet : ::testing::Test {
  SpreadSurface s;
  Recorder rec;
  void SetUp() override {
    s.setListener(&rec);
    s.setMaxRows(5);
    s.setMaxCols(4);
    for (int32_t r = -999; r <= -965; ++r)
      if (r != -997) s.setRowHeight(r, 0);
    s.setRowHeight(0, 0);
    for (int32_t c = -999; c <= -985; ++c) s.setColWidth(c, 0);
    s.setColWidth(0, 300);
    for (int32_t c = 1; c <= 4; ++c) s.setColWidth(c, 1000);
    for (int32_t r = 1; r <= 5; ++r) s.setRowHeight(r, 300);
    s.Move(0, 0, 4300 + 60, 300 * 6 + 60);
    s.SetActiveCell(1, 1);
  }
};

}  // namespace

TEST_F(Sheet, HeaderAreaHoldsTextAtItsNegativeNumbersAndMinus1000IsLineZero) {
  s.SetText(3, -988, QStringLiteral("DATE"));
  s.SetText(-989, 2, QStringLiteral("KEY-7"));
  s.SetText(0, 4, QStringLiteral("4"));
  EXPECT_EQ(s.GetText(3, -988), "DATE");  // a hidden attribute row reads like any other
  EXPECT_EQ(s.GetText(-989, 2), "KEY-7");
  EXPECT_EQ(s.GetText(-1000, 4), "4");    // column -1000 is column 0
  s.SetText(2, -1000, QStringLiteral("head"));
  EXPECT_EQ(s.GetText(2, 0), "head");
  // Outside the sheet nothing is kept and nothing fails.
  s.SetText(9, 1, QStringLiteral("x"));
  s.SetText(1, 6, QStringLiteral("x"));
  s.SetText(1, -964, QStringLiteral("x"));
  EXPECT_EQ(s.GetText(9, 1), "");
  EXPECT_EQ(s.GetText(1, 6), "");
  EXPECT_EQ(s.GetText(1, -964), "");
  // Cutting the sheet drops what lay beyond; growing it again shows empty cells.
  s.SetText(2, 5, QStringLiteral("last"));
  s.setMaxRows(4);
  s.setMaxRows(5);
  EXPECT_EQ(s.GetText(2, 5), "");
  EXPECT_EQ(s.GetText(3, -988), "DATE");
}

TEST_F(Sheet, PointedPropertiesFollowTheLatestWriteAcrossCellColumnRowAndSheet) {
  s.setRow(2);
  s.setCol(3);
  s.setBackColor(0x0000FF);  // a cell
  s.setRow(-1);
  s.setCol(3);
  s.setLock(true);  // a whole column
  s.setRow(2);
  s.setCol(3);
  EXPECT_EQ(s.BackColor(), 0x0000FFu);
  EXPECT_TRUE(s.Lock());
  s.setRow(4);
  EXPECT_TRUE(s.Lock());
  EXPECT_EQ(s.BackColor(), syscolor::Window);
  // A later column write wins over the earlier cell write, and a later cell write over that.
  s.setRow(-1);
  s.setBackColor(0x00FF00);
  s.setRow(2);
  EXPECT_EQ(s.BackColor(), 0x00FF00u);
  s.setBackColor(0x123456);
  EXPECT_EQ(s.BackColor(), 0x123456u);
  s.setRow(3);
  EXPECT_EQ(s.BackColor(), 0x00FF00u);
  // A block: rows 1-2 of columns 1-2, then the whole sheet.
  s.setBlockMode(true);
  s.setRow(1);
  s.setRow2(2);
  s.setCol(1);
  s.setCol2(2);
  s.setFontBold(true);
  s.setBlockMode(false);
  s.setRow(2);
  s.setCol(2);
  EXPECT_TRUE(s.FontBold());
  s.setCol(3);
  EXPECT_FALSE(s.FontBold());
  s.setRow(-1);
  s.setCol(-1);
  s.setFontBold(false);
  s.setRow(1);
  s.setCol(1);
  EXPECT_FALSE(s.FontBold());
}

TEST_F(Sheet, RowByRowDefaultsSplitAndMergeRunsExactly) {
  // Many rows get the same alignment, one at a time, as new rows do.
  s.setMaxRows(1000);
  s.setRow(-1);
  s.setCol(-1);
  s.setTypeVAlign(2);
  for (int32_t r = 1; r <= 1000; ++r) {
    s.setRow(r);
    s.setCol(2);
    s.setTypeVAlign(0);
  }
  s.setRow(500);
  EXPECT_EQ(s.TypeVAlign(), 0);
  // One cell in the middle changes, its neighbours keep their value.
  s.setTypeVAlign(1);
  EXPECT_EQ(s.TypeVAlign(), 1);
  s.setRow(499);
  EXPECT_EQ(s.TypeVAlign(), 0);
  s.setRow(501);
  EXPECT_EQ(s.TypeVAlign(), 0);
  // A later column write covers all of them; a cell written after it wins again.
  s.setRow(-1);
  s.setTypeVAlign(2);
  s.setRow(500);
  EXPECT_EQ(s.TypeVAlign(), 2);
  s.setTypeVAlign(0);
  EXPECT_EQ(s.TypeVAlign(), 0);
  s.setRow(1000);
  EXPECT_EQ(s.TypeVAlign(), 2);
  s.setCol(1);
  EXPECT_EQ(s.TypeVAlign(), 2);  // the sheet's value in a column never written
}

TEST_F(Sheet, LayoutPlacesCellsAndHidesZeroSizedLines) {
  double x, y, w, h;
  ASSERT_TRUE(s.GetCellPos(2, 3, x, y, w, h));
  EXPECT_DOUBLE_EQ(x, 300 + 1000);
  EXPECT_DOUBLE_EQ(y, 300 + 600);  // the caption row, then rows 1 and 2
  EXPECT_DOUBLE_EQ(w, 1000);
  s.setColWidth(1, 0);
  s.setRow(2);
  s.setRowHidden(true);
  ASSERT_TRUE(s.GetCellPos(2, 3, x, y, w, h));
  EXPECT_DOUBLE_EQ(x, 300);
  EXPECT_DOUBLE_EQ(y, 300 + 300);
  EXPECT_EQ(s.shownHeaderRows(), std::vector<int32_t>{-997});
  EXPECT_EQ(s.shownHeaderCols(), std::vector<int32_t>{0});
  const auto hit = s.hitTest(300 + 10, 300 + 310);
  EXPECT_EQ(hit.area, SpreadSurface::Hit::Cell);
  EXPECT_EQ(hit.col, 2);
  EXPECT_EQ(hit.row, 3);
  // A span covers its neighbours.
  s.AddCellSpan(2, -997, 2, 1);
  ASSERT_NE(s.spanAt(3, -997), nullptr);
  EXPECT_EQ(s.spanAt(3, -997)->col, 2);
  EXPECT_EQ(s.spanAt(4, -997), nullptr);
}

TEST_F(Sheet, KeysRaiseKeyDownFirstAndMoveOverHiddenLinesWithLeaveCell) {
  s.setColWidth(2, 0);
  s.inputKeyDown(key::Right, 0);
  EXPECT_EQ(s.ActiveCol(), 3);  // column 2 is hidden
  EXPECT_EQ(rec.log.at(0), "KeyDown 39,0");
  EXPECT_EQ(rec.log.at(1), "LeaveCell 1,1>3,1");
  // The owner can swallow a key.
  s.inputKeyDown(key::Down, shift::Ctrl);
  EXPECT_EQ(s.ActiveRow(), 1);
  // The owner can refuse a move.
  rec.refuseLeave = true;
  s.inputKeyDown(key::Down, 0);
  EXPECT_EQ(s.ActiveRow(), 1);
  rec.refuseLeave = false;
  s.inputKeyDown(key::Down, shift::Shift);
  EXPECT_EQ(s.ActiveRow(), 2);
  EXPECT_EQ(s.SelBlockRow(), 1);
  EXPECT_EQ(s.SelBlockRow2(), 2);
  // Edges stay where they are.
  s.inputKeyDown(key::End, shift::Ctrl);
  EXPECT_EQ(s.ActiveRow(), 5);
  EXPECT_EQ(s.ActiveCol(), 4);
  s.inputKeyDown(key::Down, 0);
  EXPECT_EQ(s.ActiveRow(), 5);
}

TEST_F(Sheet, MouseClicksCellsAndDraggingAHeaderEdgeResizes) {
  s.inputMouseDown(MouseButton::Left, 0, 300 + 1000 + 500, 300 + 300 + 100);
  EXPECT_EQ(s.ActiveCol(), 2);
  EXPECT_EQ(s.ActiveRow(), 2);
  EXPECT_EQ(rec.log.back(), "Click 2,2");
  s.inputMouseUp(MouseButton::Left, 0, 0);
  // Drag the right edge of column 1's caption to the left, to nothing.
  rec.log.clear();
  s.inputMouseDown(MouseButton::Left, 0, 300 + 1000, 150);
  s.inputMouseMove(300, 150, true);
  s.inputMouseUp(MouseButton::Left, 300, 150);
  EXPECT_EQ(s.ColWidth(1), 0);
  ASSERT_EQ(rec.log.size(), 1u);
  EXPECT_EQ(rec.log.back(), "ColWidthChange 1,1");
  s.inputDblClick(300 + 500, 300 + 300 + 100);  // column 1 is gone: column 2 is there now
  EXPECT_EQ(rec.log.back(), "DblClick 2,2");
}

TEST_F(Sheet, CopyPutsTheSelectedBlockOnTheClipboard) {
  FakePlatform fake;
  s.SetText(1, 1, QStringLiteral("ก"));
  s.SetText(2, 1, QStringLiteral("b"));
  s.SetText(1, 2, QStringLiteral("c"));
  s.inputKeyDown(key::Down, shift::Shift);
  s.inputKeyDown(key::Right, shift::Shift);
  s.inputKeyDown('C', shift::Ctrl);
  EXPECT_EQ(fake.clipboard, QString::fromUtf8("ก\tb\r\nc\t\r\n"));
}

TEST_F(Sheet, RowLayoutMarkerFollowsAppendedAndChangedRows) {
  s.clearRowLayoutDirty();
  EXPECT_EQ(s.rowLayoutDirtyFrom(), 6);
  s.setMaxRows(7);
  EXPECT_EQ(s.rowLayoutDirtyFrom(), 6);
  s.clearRowLayoutDirty();
  s.setRowHeight(3, 0);
  EXPECT_EQ(s.rowLayoutDirtyFrom(), 3);
}

// Cell looks against a plain log of every write, resolved by "the latest write wins", through a
// random run of what grids do: rows appended one by one and given their defaults, cells, blocks,
// whole lines and the sheet written, rows and columns taken away and added again.
TEST(SpreadSurfaceLooks, FollowAPlainLogOfWritesThroughGrowingAndShrinking) {
  SpreadSurface s;
  s.setMaxCols(6);
  s.setMaxRows(1);
  struct Write {
    int32_t col, row;  // 0: the whole line (or the sheet when both are 0)
    int prop;
    int16_t value;
  };
  std::vector<Write> log;
  // Three looks, and the value a check box shows (cells only).
  auto set = [&](int prop, int16_t v) {
    if (prop == 0) s.setTypeHAlign(v);
    else if (prop == 1) s.setTypeVAlign(v);
    else if (prop == 2) s.setBackColor(Colour(v));
    else s.setValue(v);
  };
  auto get = [&](int prop) -> int64_t {
    if (prop == 0) return s.TypeHAlign();
    if (prop == 1) return s.TypeVAlign();
    if (prop == 2) return int64_t(s.BackColor());
    return int64_t(s.Value());
  };
  auto expected = [&](int32_t c, int32_t r, int prop) -> int64_t {
    int64_t v = prop == 2 ? int64_t(syscolor::Window) : 0;
    for (const Write& w : log)
      if (w.prop == prop && (w.col == 0 || w.col == c) && (w.row == 0 || w.row == r)) v = w.value;
    return v;
  };
  std::mt19937 rng(11);
  auto pick = [&](int n) { return int(rng() % uint32_t(n)); };
  for (int step = 0; step < 3000; ++step) {
    const int what = pick(100);
    if (what < 45) {  // a new row and its defaults, mostly the values it shows already
      s.setMaxRows(s.MaxRows() + 1);
      const int32_t r = s.MaxRows();
      s.setRow(r);
      for (int32_t c = 1; c <= s.MaxCols(); ++c) {
        s.setCol(c);
        const int prop = pick(3);
        const int16_t v = int16_t(pick(10) < 7 ? expected(c, r, prop) : pick(3));
        set(prop, v);
        log.push_back({c, r, prop, v});
      }
    } else if (what < 70) {  // one cell anywhere
      const int32_t c = 1 + pick(s.MaxCols()), r = 1 + pick(s.MaxRows());
      const int prop = pick(4);
      const int16_t v = int16_t(pick(3));
      s.setCol(c);
      s.setRow(r);
      set(prop, v);
      log.push_back({c, r, prop, v});
    } else if (what < 78) {  // a block of cells
      const int32_t c1 = 1 + pick(s.MaxCols()), c2 = 1 + pick(s.MaxCols());
      const int32_t r1 = 1 + pick(s.MaxRows()), r2 = 1 + pick(s.MaxRows());
      const int prop = pick(4);
      const int16_t v = int16_t(pick(3));
      s.setBlockMode(true);
      s.setCol(c1), s.setCol2(c2), s.setRow(r1), s.setRow2(r2);
      set(prop, v);
      s.setBlockMode(false);
      for (int32_t c = std::min(c1, c2); c <= std::max(c1, c2); ++c)
        for (int32_t r = std::min(r1, r2); r <= std::max(r1, r2); ++r) log.push_back({c, r, prop, v});
    } else if (what < 90) {  // a whole column, a whole row or the sheet
      const int32_t c = pick(3) ? 1 + pick(s.MaxCols()) : 0;
      const int32_t r = c == 0 && pick(2) ? 1 + pick(s.MaxRows()) : 0;
      const int prop = pick(3);
      const int16_t v = int16_t(pick(3));
      s.setCol(c == 0 ? -1 : c);
      s.setRow(c == 0 && r != 0 ? r : -1);
      set(prop, v);
      log.push_back({c, c == 0 ? r : 0, prop, v});
    } else if (what < 96) {  // rows taken away
      const int32_t n = 1 + pick(s.MaxRows());
      s.setMaxRows(n);
      std::erase_if(log, [n](const Write& w) { return w.row > n; });
    } else {  // columns taken away and given back empty
      const int32_t n = 1 + pick(6);
      s.setMaxCols(n);
      std::erase_if(log, [n](const Write& w) { return w.col > n; });
      s.setMaxCols(6);
    }
    if (step % 50 == 49 || step == 2999) {
      for (int32_t r = 1; r <= s.MaxRows(); ++r)
        for (int32_t c = 1; c <= s.MaxCols(); ++c) {
          s.setRow(r);
          s.setCol(c);
          for (int prop = 0; prop < 4; ++prop)
            ASSERT_EQ(get(prop), expected(c, r, prop)) << "step " << step << " cell " << c << "," << r << " prop " << prop;
        }
    }
  }
}

// Writing a new row's looks in one call leaves every cell as the same writes one by one do, with
// runs to join, cells and rows of their own, notes, and the pointer on a block.
TEST(SpreadSurfaceLooks, ARowsLooksInOneCallEqualTheirWritesOneByOne) {
  std::mt19937 rng(5);
  auto pick = [&](int n) { return int(rng() % uint32_t(n)); };
  for (int round = 0; round < 40; ++round) {
    SpreadSurface one, each;
    std::vector<SpreadSurface::RowLook> looks(8);
    for (auto* s : {&one, &each}) {
      s->setMaxCols(8);
      s->setMaxRows(3);
    }
    std::mt19937 history{uint32_t(round)};
    for (int step = 0; step < 30; ++step) {
      const int what = int(history() % 6);
      const int32_t c = 1 + int32_t(history() % 8), r = 1 + int32_t(history() % 3);
      const int16_t v = int16_t(history() % 3);
      for (auto* s : {&one, &each}) {
        s->setCol(what == 3 ? -1 : c);
        s->setRow(what == 4 ? -1 : r);
        if (what == 5) s->setCellNote(QStringLiteral("n"));
        else if (what % 2) s->setTypeVAlign(v);
        else s->setBackColor(Colour(v));
      }
    }
    for (auto& l : looks) l = {int16_t(pick(3)), int16_t(pick(3))};
    const bool block = round % 5 == 4;
    for (auto* s : {&one, &each}) {
      s->setMaxRows(4);
      if (round % 4 == 1) {  // a note in the row itself, to be cleared
        s->setRow(round % 3 ? 4 : 2);
        s->setCol(3 + round % 4);
        s->setCellNote(QStringLiteral("old"));
      }
      s->setRow(round % 3 ? 4 : 2);
      s->setRow2(3);
      s->setCol2(2);
      s->setBlockMode(block);
    }
    one.writeRowLooks(2, looks.data(), 6);
    for (int32_t i = 0; i < 6; ++i) {
      each.setCol(2 + i);
      each.setTypeHAlign(looks[size_t(i)].hAlign);
      each.setTypeVAlign(looks[size_t(i)].vAlign);
      each.setCellNote(QString());
      each.setBackColor(syscolor::Window);
      each.setForeColor(syscolor::WindowText);
    }
    EXPECT_EQ(one.Col(), each.Col());
    for (auto* s : {&one, &each}) s->setBlockMode(false);
    for (int32_t r = 1; r <= 4; ++r)
      for (int32_t c = 1; c <= 8; ++c) {
        one.setRow(r), one.setCol(c), each.setRow(r), each.setCol(c);
        ASSERT_EQ(one.TypeHAlign(), each.TypeHAlign()) << round << " " << c << "," << r;
        ASSERT_EQ(one.TypeVAlign(), each.TypeVAlign()) << round << " " << c << "," << r;
        ASSERT_EQ(one.BackColor(), each.BackColor()) << round << " " << c << "," << r;
        ASSERT_EQ(one.ForeColor(), each.ForeColor()) << round << " " << c << "," << r;
        ASSERT_EQ(one.CellNote(), each.CellNote()) << round << " " << c << "," << r;
      }
  }
}

// New rows one after the other, each with its looks in one call (the grid's load), between writes
// of every kind: the rows come out as the same writes one by one leave them, also where a row only
// lengthens the runs the row before it left.
TEST(SpreadSurfaceLooks, NewRowAfterNewRowEqualsTheWritesOneByOne) {
  for (int round = 0; round < 30; ++round) {
    std::mt19937 history{uint32_t(100 + round)};
    SpreadSurface one, each;
    for (auto* s : {&one, &each}) {
      s->setMaxCols(10);
      s->setMaxRows(1);
      s->setRow(-1), s->setCol(-1);
      s->setTypeVAlign(2);  // the sheet centres; the looks below top-align, so runs grow
    }
    std::vector<SpreadSurface::RowLook> looks(7, SpreadSurface::RowLook{0, 0});
    for (int32_t row = 1; row <= 40; ++row) {
      for (auto* s : {&one, &each}) s->setMaxRows(row);
      // Now and then something else between two new rows.
      const int what = int(history() % 9);
      const int32_t c = 1 + int32_t(history() % 10);
      const int16_t v = int16_t(history() % 3);
      const int32_t at = std::max(1, row - int32_t(history() % 2));
      if (what == 8) looks[history() % 7] = {int16_t(history() % 3), int16_t(history() % 3)};
      for (auto* s : {&one, &each}) {
        s->setRow(what == 4 ? -1 : at);
        s->setCol(what == 5 ? -1 : c);
        if (what == 1) s->setTypeVAlign(v);
        else if (what == 2) s->setBackColor(Colour(v));
        else if (what == 3) s->setTypeHAlign(v);
        else if (what == 4 || what == 5) s->setTypeVAlign(v);
      }
      for (auto* s : {&one, &each}) s->setRow(row);
      one.writeRowLooks(3, looks.data(), 7);
      for (int32_t i = 0; i < 7; ++i) {
        each.setCol(3 + i);
        each.setTypeHAlign(looks[size_t(i)].hAlign);
        each.setTypeVAlign(looks[size_t(i)].vAlign);
        each.setCellNote(QString());
        each.setBackColor(syscolor::Window);
        each.setForeColor(syscolor::WindowText);
      }
      ASSERT_EQ(one.Col(), each.Col());
    }
    for (int32_t r = 1; r <= 40; ++r)
      for (int32_t c = 1; c <= 10; ++c) {
        one.setRow(r), one.setCol(c), each.setRow(r), each.setCol(c);
        ASSERT_EQ(one.TypeHAlign(), each.TypeHAlign()) << round << " " << c << "," << r;
        ASSERT_EQ(one.TypeVAlign(), each.TypeVAlign()) << round << " " << c << "," << r;
        ASSERT_EQ(one.BackColor(), each.BackColor()) << round << " " << c << "," << r;
        ASSERT_EQ(one.ForeColor(), each.ForeColor()) << round << " " << c << "," << r;
      }
  }
}
