#include "frame/SpreadSurface.h"

#include "frame/Platform.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace tq7 {
namespace {

constexpr double kEdgeGrip = 45;  // three pixels either side of a header edge
constexpr int kHeaderRows = 36;
constexpr int kHeaderCols = 16;

uint64_t bitsOf(double d) {
  uint64_t u;
  std::memcpy(&u, &d, sizeof u);
  return u;
}
double doubleOf(uint64_t u) {
  double d;
  std::memcpy(&d, &u, sizeof d);
  return d;
}

}  // namespace

SpreadSurface::SpreadSurface(QString name) : GridSurface(std::move(name)) {
  static int32_t nextHandle = 0x10000;
  hwnd_ = nextHandle += 4;
  sheet_.mask = (1u << PCount) - 1;
  strings_.append(QString());  // text 0 is the empty text
  stringIndex_.insert(QString(), 0);
  sheet_.v[PCellType] = uint16_t(celltype::StaticText);
  sheet_.v[PBack] = syscolor::Window;
  sheet_.v[PFore] = syscolor::WindowText;
  sheet_.v[PFontSize] = bitsOf(0.0);
  hdrRowHeight_.fill(defaultRowHeight_);
  hdrColWidth_.fill(480);
  setMaxCols(500);
  setMaxRows(500);
}

SpreadSurface::~SpreadSurface() = default;

// ---- Size ------------------------------------------------------------------------------------

void SpreadSurface::setMaxRows(int32_t n) {
  if (n < 0) n = 0;
  const int32_t old = maxRows_;
  if (n == old) return;
  rowHeight_.resize(size_t(n) + 1, defaultRowHeight_);
  rowHidden_.resize(size_t(n) + 1, 0);
  if (n < old) {
    const size_t keep = size_t(rowSlot(n)) + 1;
    for (auto& c : columns_) {
      if (!c) continue;
      if (c->text.size > keep) c->text.cut(keep);
      if (c->value.size > keep) c->value.cut(keep);
    }
    if (rowStyles_.size() > keep) rowStyles_.resize(keep);
    settleFreshRows();
    rowLooksTail_.count = 0;  // runs are cut below
    auto beyond = [n](quint64 k) { return int32_t(uint32_t(k >> 32)) - 2000 > n; };
    for (auto& holder : cellStyles_) {
      for (auto& runs : holder.runs) {
        while (!runs.empty() && runs.back().r1 > n) runs.pop_back();
        if (!runs.empty() && runs.back().r2 > n) runs.back().r2 = n;
      }
    }
    for (auto it = notes_.begin(); it != notes_.end();) it = beyond(it.key()) ? notes_.erase(it) : std::next(it);
    for (auto it = formulas_.begin(); it != formulas_.end();) it = beyond(it.key()) ? formulas_.erase(it) : std::next(it);
    if (activeRow_ > n) activeRow_ = std::max(n, 1);
    if (topRow_ > std::max(n, 1)) topRow_ = std::max(n, 1);
  }
  maxRows_ = n;
  markRowLayoutDirty(std::min(old, n) + 1);
  changed();
}

void SpreadSurface::setMaxCols(int32_t n) {
  if (n < 0) n = 0;
  const int32_t old = maxCols_;
  if (n == old) return;
  colWidth_.resize(size_t(n) + 1, defaultColWidth_);
  colHidden_.resize(size_t(n) + 1, 0);
  cellStyles_.resize(size_t(colSlot(n)) + 1);
  ++levelWrites_;
  ++headerTextEdits_;
  if (n < old) {
    columns_.resize(std::min(columns_.size(), size_t(colSlot(n)) + 1));
    colStyles_.resize(std::min(colStyles_.size(), size_t(colSlot(n)) + 1));
    if (activeCol_ > n) activeCol_ = std::max(n, 1);
  }
  maxCols_ = n;
  changed();
}

void SpreadSurface::setScrollBarExtents(double vertical, double horizontal) {
  if (vbarExtent_ == vertical && hbarExtent_ == horizontal) return;
  vbarExtent_ = vertical;
  hbarExtent_ = horizontal;
  changed();
}

void SpreadSurface::markRowLayoutDirty(int32_t fromRow) {
  dirtyFrom_ = std::min(dirtyFrom_, std::max(fromRow, 1));
}

// ---- Cursor, selection, scrolling ---------------------------------------------------------------

void SpreadSurface::SetActiveCell(int32_t Col, int32_t Row) {
  activeCol_ = Col;
  activeRow_ = Row;
  anchorCol_ = Col;
  anchorRow_ = Row;
  selCol_ = selCol2_ = Col;
  selRow_ = selRow2_ = Row;
  changed();
  if (listener_) listener_->ActiveCellSet(Col, Row);
}

void SpreadSurface::SetSelection(int32_t Col, int32_t Row, int32_t Col2, int32_t Row2) {
  selCol_ = Col;
  selRow_ = Row;
  selCol2_ = Col2;
  selRow2_ = Row2;
  changed();
}

void SpreadSurface::setTopRow(int32_t r) {
  r = std::clamp(r, 1, std::max(maxRows_, 1));
  if (r == topRow_) return;
  topRow_ = r;
  changed();
  if (listener_) listener_->TopLeftChange();
}

void SpreadSurface::setLeftCol(int32_t c) {
  c = std::clamp(c, colsFrozen_ + 1, std::max(maxCols_, colsFrozen_ + 1));
  if (c == leftCol_) return;
  leftCol_ = c;
  changed();
  if (listener_) listener_->TopLeftChange();
}

void SpreadSurface::setColsFrozen(int32_t n) {
  colsFrozen_ = std::max(n, 0);
  if (leftCol_ <= colsFrozen_) leftCol_ = colsFrozen_ + 1;
  changed();
}

// ---- Line sizes -------------------------------------------------------------------------------

double& SpreadSurface::rowHeightRef(int32_t row) {
  static double scratch;
  row = normRow(row);
  if (row >= -999 && row <= LastHeaderRow) return hdrRowHeight_[size_t(row + 999)];
  if (row == 0) return hdrRowHeight_[35];
  if (row >= 1 && row <= maxRows_) return rowHeight_[size_t(row)];
  scratch = 0;
  return scratch;
}

double& SpreadSurface::colWidthRef(int32_t col) {
  static double scratch;
  col = normCol(col);
  if (col >= -999 && col <= LastHeaderCol) return hdrColWidth_[size_t(col + 999)];
  if (col == 0) return hdrColWidth_[15];
  if (col >= 1 && col <= maxCols_) return colWidth_[size_t(col)];
  scratch = 0;
  return scratch;
}

uint8_t* SpreadSurface::rowHiddenPtr(int32_t row) {
  row = normRow(row);
  if (row >= -999 && row <= LastHeaderRow) return &hdrRowHidden_[size_t(row + 999)];
  if (row == 0) return &hdrRowHidden_[35];
  if (row >= 1 && row <= maxRows_) return &rowHidden_[size_t(row)];
  return nullptr;
}

uint8_t* SpreadSurface::colHiddenPtr(int32_t col) {
  col = normCol(col);
  if (col >= -999 && col <= LastHeaderCol) return &hdrColHidden_[size_t(col + 999)];
  if (col == 0) return &hdrColHidden_[15];
  if (col >= 1 && col <= maxCols_) return &colHidden_[size_t(col)];
  return nullptr;
}

double SpreadSurface::ColWidth(int32_t col) const {
  if (col == -1) return defaultColWidth_;
  return const_cast<SpreadSurface*>(this)->colWidthRef(col);
}

void SpreadSurface::setColWidth(int32_t col, double w) {
  if (w < 0) w = 0;
  if (col == -1) {
    defaultColWidth_ = w;
    std::fill(colWidth_.begin() + 1, colWidth_.end(), w);
  } else {
    if (!validCol(col)) return;
    colWidthRef(col) = w;
  }
  changed();
}

double SpreadSurface::RowHeight(int32_t row) const {
  if (row == -1) return defaultRowHeight_;
  return const_cast<SpreadSurface*>(this)->rowHeightRef(row);
}

void SpreadSurface::setRowHeight(int32_t row, double h) {
  if (h < 0) h = 0;
  if (row == -1) {
    defaultRowHeight_ = h;
    std::fill(rowHeight_.begin() + 1, rowHeight_.end(), h);
    markRowLayoutDirty(1);
  } else {
    if (!validRow(row)) return;
    double& ref = rowHeightRef(row);
    if (ref == h) return;
    if (row > 0) markRowLayoutDirty(row);
    ref = h;
  }
  changed();
}

bool SpreadSurface::ColHidden() const {
  auto* p = const_cast<SpreadSurface*>(this)->colHiddenPtr(col_);
  return p && *p;
}

void SpreadSurface::setColHidden(bool h) {
  if (col_ == -1) {
    std::fill(colHidden_.begin() + 1, colHidden_.end(), uint8_t(h));
  } else if (auto* p = colHiddenPtr(col_)) {
    *p = h;
  }
  changed();
}

bool SpreadSurface::RowHidden() const {
  auto* p = const_cast<SpreadSurface*>(this)->rowHiddenPtr(row_);
  return p && *p;
}

void SpreadSurface::setRowHidden(bool h) {
  if (row_ == -1) {
    std::fill(rowHidden_.begin() + 1, rowHidden_.end(), uint8_t(h));
    markRowLayoutDirty(1);
  } else if (auto* p = rowHiddenPtr(row_)) {
    if (*p == uint8_t(h)) return;
    *p = h;
    if (normRow(row_) > 0) markRowLayoutDirty(row_);
  }
  changed();
}

// ---- Styles: the latest write wins -------------------------------------------------------------

uint64_t SpreadSurface::intern(const QString& s) {
  if (s.isEmpty()) return 0;  // text 0
  auto it = stringIndex_.constFind(s);
  if (it != stringIndex_.constEnd()) return it.value();
  const uint64_t i = uint64_t(strings_.size());
  strings_.append(s);
  stringIndex_.insert(s, i);
  return i;
}

const QString& SpreadSurface::text(uint64_t v) const { return strings_.at(qsizetype(v)); }

SpreadSurface::Run* SpreadSurface::Runs::insert(Run* at, const Run& run) {
  const size_t i = size_t(at - begin());
  if (n_ == cap_) {
    const uint32_t cap = cap_ * 2;
    auto grown = std::make_unique<Run[]>(cap);
    std::copy(begin(), end(), grown.get());
    more_ = std::move(grown);
    cap_ = cap;
  }
  Run* d = data();
  std::copy_backward(d + i, d + n_, d + n_ + 1);
  d[i] = run;
  ++n_;
  return d + i;
}

const SpreadSurface::Run* SpreadSurface::findRun(int32_t col, int32_t row, Prop p) const {
  const int cs = colSlot(col);
  if (cs < 0 || size_t(cs) >= cellStyles_.size()) return nullptr;
  const auto& runs = cellStyles_[size_t(cs)].runs[p];
  if (runs.empty()) return nullptr;
  // Last run that starts at or before the row.
  auto it = std::upper_bound(runs.begin(), runs.end(), row, [](int32_t r, const Run& run) { return r < run.r1; });
  if (it == runs.begin()) return nullptr;
  --it;
  return row <= it->r2 ? &*it : nullptr;
}

// A whole column (Row -1) covers the column's data cells and a whole row (Col -1) the row's data
// cells; the header lines keep what was written to them, as a caption keeps its own alignment.
uint64_t SpreadSurface::levelValue(int32_t col, int32_t row, Prop p, uint32_t& stamp) const {
  const uint32_t bit = 1u << p;
  stamp = sheet_.stamp[p];
  uint64_t best = sheet_.v[p];
  // Reading with the pointer on a whole line (-1) reads that line's own setting.
  const Style* cs = row > 0 || (row == -1 && col != -1) ? lineStyle(colStyles_, colSlot(col)) : nullptr;
  if (cs && (cs->mask & bit) && cs->stamp[p] > stamp) {
    stamp = cs->stamp[p];
    best = cs->v[p];
  }
  const Style* rs = col > 0 || (col == -1 && row != -1) ? lineStyle(rowStyles_, rowSlot(row)) : nullptr;
  if (rs && (rs->mask & bit) && rs->stamp[p] > stamp) {
    stamp = rs->stamp[p];
    best = rs->v[p];
  }
  return best;
}

void SpreadSurface::takeLevels(ColumnStyles& c, int32_t col) {
  uint32_t stamp = 0;
  // A row beyond the last has no settings of its own.
  for (int p = 0; p < PCount; ++p) c.level[size_t(p)] = levelValue(col, maxRows_ + 1, Prop(p), stamp);
  c.taken = levelWrites_;
}

uint64_t SpreadSurface::resolve(int32_t col, int32_t row, Prop p) const {
  col = normCol(col);
  row = normRow(row);
  uint32_t stamp = 0;
  const uint64_t level = levelValue(col, row, p, stamp);
  if (const Run* run = findRun(col, row, p); run && run->stamp > stamp) return run->v;
  return level;
}

void SpreadSurface::writeCellRun(int32_t col, int32_t row, Prop p, uint64_t v) {
  // A cell setting kept in a column of the remembered new-row looks may move their runs.
  if (uint32_t(col - rowLooksTail_.first) < uint32_t(rowLooksTail_.count)) rowLooksTail_.count = 0;
  auto& runs = cellStyles_[size_t(colSlot(col))].runs[p];
  auto it = std::upper_bound(runs.begin(), runs.end(), row, [](int32_t r, const Run& run) { return r < run.r1; });
  // Growing the run just above keeps its stamp, which is exact while no row, column or sheet
  // write of this property came after that run was last written.
  if (it != runs.begin()) {
    Run& prev = *(it - 1);
    if (row <= prev.r2) {
      if (prev.v == v && levelStamp_[p] < prev.stamp) return;  // already so, and nothing newer above it
      // Split the run around the row.
      const Run tail{row + 1, prev.r2, prev.stamp, prev.v};
      const int32_t headEnd = row - 1;
      const Run mid{row, row, ++stamp_, v};
      if (headEnd >= prev.r1) {
        prev.r2 = headEnd;
        it = runs.insert(it, mid);
      } else {
        *(it - 1) = mid;
        it = it - 1;
      }
      if (tail.r1 <= tail.r2) runs.insert(it + 1, tail);
      return;
    }
    if (prev.r2 == row - 1 && prev.v == v && levelStamp_[p] < prev.stamp &&
        (it == runs.end() || it->r1 > row)) {
      prev.r2 = row;
      return;
    }
  }
  runs.insert(it, Run{row, row, ++stamp_, v});
}

void SpreadSurface::writePropAt(int32_t col, int32_t row, Prop p, uint64_t v) {
  col = normCol(col);
  row = normRow(row);
  if (row != -1 && col != -1) {
    if (!validCol(col) || !validRow(row)) return;
    Runs& runs = cellStyles_[size_t(colSlot(col))].runs[p];
    if (runs.empty() || row > runs.back().r2) {
      // A row below every run of the column, as each new row is.
      // A cell that holds nothing of its own and would get the value it already shows needs no
      // entry: nothing written before this moment can win over it later.
      uint32_t stamp = 0;
      if (levelValue(col, row, p, stamp) == v) return;
      if (!runs.empty()) {
        Run& last = runs.back();
        if (last.r2 == row - 1 && last.v == v && levelStamp_[p] < last.stamp) {
          last.r2 = row;
          return;
        }
      }
    } else if (!findRun(col, row, p) && resolve(col, row, p) == v) {
      return;
    }
    writeCellRun(col, row, p, v);
    return;
  }
  Style* target = &sheet_;
  if (row != -1 || col != -1) {
    auto& styles = row == -1 ? colStyles_ : rowStyles_;
    const int slot = row == -1 ? colSlot(col) : rowSlot(row);
    if (slot < 0 || (row == -1 ? !validCol(col) : !validRow(row))) return;
    if (size_t(slot) >= styles.size()) {
      styles.resize(size_t(slot) + 1);
      settleFreshRows();
    }
    if (!styles[size_t(slot)]) styles[size_t(slot)] = std::make_unique<Style>();
    target = styles[size_t(slot)].get();
  }
  Style& s = *target;
  s.v[p] = v;
  s.mask |= 1u << p;
  s.stamp[p] = ++stamp_;
  levelStamp_[p] = stamp_;
  ++levelWrites_;
}

void SpreadSurface::writeRowLooks(int32_t FirstCol, const RowLook* looks, int32_t count) {
  if (count <= 0) return;
  const bool fresh = row_ >= freshRows_ && row_ <= maxRows_ && notes_.isEmpty() && FirstCol >= 1 &&
                     FirstCol + count - 1 <= maxCols_;
  RowLooksTail& tail = rowLooksTail_;
  if (fresh && tail.count == count && tail.first == FirstCol && tail.row + 1 == row_ &&
      tail.levelWrites == levelWrites_ &&
      std::equal(looks, looks + count, tail.looks.begin(),
                 [](const RowLook& a, const RowLook& b) { return a.hAlign == b.hAlign && a.vAlign == b.vAlign; })) {
    for (Run* end : tail.ends) end->r2 = row_;
    tail.row = row_;
    col_ = FirstCol + count - 1;
    if (!tail.ends.empty()) changed();
    return;
  }
  tail.count = 0;
  bool grown = false;
  for (int32_t i = 0; i < count; ++i) {
    col_ = FirstCol + i;
    const std::array<std::pair<Prop, uint64_t>, 4> writes{{{PHAlign, uint16_t(looks[i].hAlign)},
                                                           {PVAlign, uint16_t(looks[i].vAlign)},
                                                           {PBack, syscolor::Window},
                                                           {PFore, syscolor::WindowText}}};
    size_t done = 0;  // writes settled by the column's record, in order
    // The empty note between the alignments and the colours writes nothing while no cell has one.
    if (row_ >= freshRows_ && row_ <= maxRows_ && uint32_t(col_ - 1) < uint32_t(maxCols_) && notes_.isEmpty()) {
      ColumnStyles& c = cellStyles_[size_t(colSlot(col_))];
      if (c.taken != levelWrites_) takeLevels(c, col_);
      while (done < writes.size() && settle(c, writes[done].first, writes[done].second, grown)) ++done;
    }
    // What is left of this cell goes the general way.
    for (size_t k = done; k < writes.size(); ++k) {
      if (k == 2) setCellNote(QString());
      writeProp(writes[k].first, writes[k].second);
    }
  }
  if (grown) changed();
  if (fresh) keepRowLooksTail(FirstCol, looks, count);
}

void SpreadSurface::keepRowLooksTail(int32_t FirstCol, const RowLook* looks, int32_t count) {
  RowLooksTail& tail = rowLooksTail_;
  tail.ends.clear();
  for (int32_t i = 0; i < count; ++i) {
    const int32_t col = FirstCol + i;
    ColumnStyles& c = cellStyles_[size_t(colSlot(col))];
    if (c.taken != levelWrites_) takeLevels(c, col);
    const std::array<std::pair<Prop, uint64_t>, 4> writes{{{PHAlign, uint16_t(looks[i].hAlign)},
                                                           {PVAlign, uint16_t(looks[i].vAlign)},
                                                           {PBack, syscolor::Window},
                                                           {PFore, syscolor::WindowText}}};
    for (const auto& [p, v] : writes) {
      // As a next row's write would settle it: by the levels, or by lengthening the run above.
      Runs& runs = c.runs[p];
      if (!runs.empty() && runs.back().r2 > row_) return;
      if (c.level[p] == v) continue;
      if (runs.empty()) return;
      Run& last = runs.back();
      if (last.r2 != row_ || last.v != v || levelStamp_[p] >= last.stamp) return;
      tail.ends.push_back(&last);
    }
  }
  tail.first = FirstCol;
  tail.count = count;
  tail.row = row_;
  tail.levelWrites = levelWrites_;
  tail.looks.assign(looks, looks + count);
}

void SpreadSurface::writePropSlow(Prop p, uint64_t v) {
  // A data cell below every run of its column that shows the value already: nothing to keep,
  // nothing to repaint.
  if (!blockMode_ && row_ > 0 && col_ > 0 && row_ <= maxRows_ && col_ <= maxCols_) {
    const auto& runs = cellStyles_[size_t(colSlot(col_))].runs[p];
    uint32_t stamp = 0;
    if ((runs.empty() || row_ > runs.back().r2) && levelValue(col_, row_, p, stamp) == v) return;
  }
  if (!blockMode_) {
    writePropAt(col_, row_, p, v);
  } else {
    const bool allRows = row_ == -1 || row2_ == -1;
    const bool allCols = col_ == -1 || col2_ == -1;
    const int32_t r1 = std::min(row_, row2_), r2 = std::max(row_, row2_);
    const int32_t c1 = std::min(col_, col2_), c2 = std::max(col_, col2_);
    if (allRows && allCols) {
      writePropAt(-1, -1, p, v);
    } else if (allRows) {
      for (int32_t c = c1; c <= c2; ++c) writePropAt(c, -1, p, v);
    } else if (allCols) {
      for (int32_t r = r1; r <= r2; ++r) writePropAt(-1, r, p, v);
    } else {
      for (int32_t c = c1; c <= c2; ++c)
        for (int32_t r = r1; r <= r2; ++r) writePropAt(c, r, p, v);
    }
  }
  changed();
}

bool SpreadSurface::Lock() const { return resolve(col_, row_, PLock) != 0; }
int16_t SpreadSurface::CellType() const { return int16_t(resolve(col_, row_, PCellType)); }
int16_t SpreadSurface::TypeHAlign() const { return int16_t(resolve(col_, row_, PHAlign)); }
int16_t SpreadSurface::TypeVAlign() const { return int16_t(resolve(col_, row_, PVAlign)); }
int16_t SpreadSurface::TypeTextOrient() const { return int16_t(resolve(col_, row_, POrient)); }
bool SpreadSurface::TypeEditMultiLine() const { return resolve(col_, row_, PMultiLine) != 0; }
QString SpreadSurface::TypeCheckText() const { return text(resolve(col_, row_, PCheckText)); }
void SpreadSurface::setTypeCheckText(const QString& t) { writeProp(PCheckText, intern(t)); }
Colour SpreadSurface::BackColor() const { return Colour(resolve(col_, row_, PBack)); }
Colour SpreadSurface::ForeColor() const { return Colour(resolve(col_, row_, PFore)); }
bool SpreadSurface::FontBold() const { return resolve(col_, row_, PBold) != 0; }
QString SpreadSurface::FontName() const {
  const QString& n = text(resolve(col_, row_, PFontName));
  return n.isEmpty() ? Font().Name : n;
}
void SpreadSurface::setFontName(const QString& n) { writeProp(PFontName, intern(n)); }
double SpreadSurface::FontSize() const {
  const double z = doubleOf(resolve(col_, row_, PFontSize));
  return z > 0 ? z : Font().Size;
}
void SpreadSurface::setFontSize(double z) { writeProp(PFontSize, bitsOf(z)); }

void SpreadSurface::setTypeNumberFormat(const QString&, const QString&, bool, int16_t) {
  // The number cell type shows the text it is given; separators and signs are the grid's
  // formatting, so only the cell type itself matters to the look.
  changed();
}

// Value, formula and note belong to single cells.
double SpreadSurface::cellValue(int32_t col, int32_t row) const {
  if (!validCol(col) || !validRow(row)) return 0.0;
  const size_t cs = size_t(colSlot(col));
  if (cs >= columns_.size() || !columns_[cs]) return 0.0;
  const Blocks<double>& values = columns_[cs]->value;
  const size_t rs = size_t(rowSlot(row));
  return rs < values.size ? values.at(rs) : 0.0;
}
double SpreadSurface::Value() const { return cellValue(col_, row_); }
void SpreadSurface::setValue(double v) {
  auto put = [this, v](int32_t c, int32_t r) {
    if (!validCol(c) || !validRow(r)) return;
    const size_t cs = size_t(colSlot(c));
    if (cs >= columns_.size()) columns_.resize(cs + 1);
    if (!columns_[cs]) columns_[cs] = std::make_unique<Column>();
    Blocks<double>& values = columns_[cs]->value;
    values.reach(size_t(rowSlot(r)));
    values.at(size_t(rowSlot(r))) = v;
  };
  if (blockMode_ && col_ > 0 && row_ > 0 && col2_ > 0 && row2_ > 0) {
    for (int32_t r = std::min(row_, row2_); r <= std::max(row_, row2_); ++r)
      for (int32_t c = std::min(col_, col2_); c <= std::max(col_, col2_); ++c) put(c, r);
  } else {
    put(col_, row_);
  }
  changed();
}
QString SpreadSurface::Formula() const { return formulas_.value(cellKey(normCol(col_), normRow(row_))); }
void SpreadSurface::setFormula(const QString& f) {
  if (!validCol(col_) || !validRow(row_)) return;
  if (f.isEmpty())
    formulas_.remove(cellKey(normCol(col_), normRow(row_)));
  else
    formulas_.insert(cellKey(normCol(col_), normRow(row_)), f);
  changed();
}
QString SpreadSurface::CellNote() const { return notes_.value(cellKey(normCol(col_), normRow(row_))).text; }
void SpreadSurface::writeNote(const QString& n) {
  const quint64 k = cellKey(normCol(col_), normRow(row_));
  if (n.isEmpty()) {
    auto it = notes_.find(k);
    if (it == notes_.end()) return;  // nothing to clear: no entry, no repaint
    it->text.clear();
  } else {
    if (!validCol(col_) || !validRow(row_)) return;
    notes_[k].text = n;
  }
  changed();
}
int16_t SpreadSurface::CellNoteIndicator() const { return notes_.value(cellKey(normCol(col_), normRow(row_))).indicator; }
void SpreadSurface::setCellNoteIndicator(int16_t i) {
  if (!validCol(col_) || !validRow(row_)) return;
  notes_[cellKey(normCol(col_), normRow(row_))].indicator = i;
  changed();
}
int16_t SpreadSurface::CellNoteIndicatorShape() const { return notes_.value(cellKey(normCol(col_), normRow(row_))).shape; }
void SpreadSurface::setCellNoteIndicatorShape(int16_t s) {
  if (!validCol(col_) || !validRow(row_)) return;
  notes_[cellKey(normCol(col_), normRow(row_))].shape = s;
  changed();
}
Colour SpreadSurface::CellNoteIndicatorColor() const {
  return notes_.value(cellKey(normCol(col_), normRow(row_))).colour;
}
void SpreadSurface::setCellNoteIndicatorColor(Colour c) {
  if (!validCol(col_) || !validRow(row_)) return;
  notes_[cellKey(normCol(col_), normRow(row_))].colour = c;
  changed();
}

void SpreadSurface::setGridShowHoriz(bool b) {
  showHoriz_ = b;
  changed();
}
void SpreadSurface::setGridShowVert(bool b) {
  showVert_ = b;
  changed();
}

// ---- Texts and spans ----------------------------------------------------------------------------

const QString SpreadSurface::emptyText_;

void SpreadSurface::SetText(int32_t Col, int32_t Row, const QString& text) {
  if (!validCol(Col) || !validRow(Row)) return;
  if (Row < 0) ++headerTextEdits_;
  const size_t cs = size_t(colSlot(Col));
  const size_t rs = size_t(rowSlot(Row));
  if (cs >= columns_.size()) columns_.resize(cs + 1);
  auto& column = columns_[cs];
  if (!column) {
    if (text.isEmpty()) return;  // an empty text in a column never written costs nothing
    column = std::make_unique<Column>();
  }
  Blocks<QString>& texts = column->text;
  if (rs >= texts.size) {
    if (text.isEmpty()) return;
    texts.reach(rs);
  }
  QString& cell = texts.at(rs);
  if (cell.constData() == text.constData() && cell.size() == text.size()) return;  // the very same text again
  cell = text;
  // A text written over a running number: the numbering is due again from that row.
  if (Col == 0 && Row > 0) markRowLayoutDirty(Row);
  changed();
}

void SpreadSurface::AddCellSpan(int32_t Col, int32_t Row, int32_t NumCols, int32_t NumRows) {
  Col = normCol(Col);
  Row = normRow(Row);
  for (auto& s : spans_)
    if (s.col == Col && s.row == Row) {
      s.numCols = NumCols;
      s.numRows = NumRows;
      changed();
      return;
    }
  spans_.push_back(Span{Col, Row, NumCols, NumRows});
  changed();
}

const SpreadSurface::Span* SpreadSurface::spanAt(int32_t Col, int32_t Row) const {
  Col = normCol(Col);
  Row = normRow(Row);
  for (const auto& s : spans_) {
    if (Col < s.col || Row < s.row) continue;
    if (Col < s.col + s.numCols && Row < s.row + s.numRows) return &s;
  }
  return nullptr;
}

// ---- Looks and layout ----------------------------------------------------------------------------

SpreadSurface::CellLook SpreadSurface::look(int32_t Col, int32_t Row) const {
  CellLook l;
  l.back = Colour(resolve(Col, Row, PBack));
  l.fore = Colour(resolve(Col, Row, PFore));
  l.bold = resolve(Col, Row, PBold) != 0;
  l.fontName = text(resolve(Col, Row, PFontName));
  l.fontSize = doubleOf(resolve(Col, Row, PFontSize));
  l.hAlign = int16_t(resolve(Col, Row, PHAlign));
  l.vAlign = int16_t(resolve(Col, Row, PVAlign));
  l.cellType = int16_t(resolve(Col, Row, PCellType));
  l.orient = int16_t(resolve(Col, Row, POrient));
  l.multiLine = resolve(Col, Row, PMultiLine) != 0;
  l.lock = resolve(Col, Row, PLock) != 0;
  l.checkText = text(resolve(Col, Row, PCheckText));
  const quint64 k = cellKey(normCol(Col), normRow(Row));
  auto n = notes_.constFind(k);
  if (n != notes_.constEnd() && !n->text.isEmpty()) {
    l.hasNote = true;
    l.noteIndicator = n->indicator;
    l.noteColour = n->colour;
  }
  l.value = cellValue(Col, Row);
  return l;
}

double SpreadSurface::shownColWidth(int32_t col) const {
  auto* h = const_cast<SpreadSurface*>(this)->colHiddenPtr(col);
  if (!h || *h) return 0;
  return ColWidth(col);
}

double SpreadSurface::shownRowHeight(int32_t row) const {
  auto* h = const_cast<SpreadSurface*>(this)->rowHiddenPtr(row);
  if (!h || *h) return 0;
  return RowHeight(row);
}

std::vector<int32_t> SpreadSurface::shownHeaderRows() const {
  std::vector<int32_t> out;
  for (int32_t r = SpreadHeader; r <= LastHeaderRow; ++r) {
    const int32_t row = r == SpreadHeader ? 0 : r;
    if (shownRowHeight(row) > 0) out.push_back(row);
  }
  return out;
}

std::vector<int32_t> SpreadSurface::shownHeaderCols() const {
  std::vector<int32_t> out;
  for (int32_t c = SpreadHeader; c <= LastHeaderCol; ++c) {
    const int32_t col = c == SpreadHeader ? 0 : c;
    if (shownColWidth(col) > 0) out.push_back(col);
  }
  return out;
}

double SpreadSurface::headerHeight() const {
  double h = 0;
  for (int32_t r : shownHeaderRows()) h += shownRowHeight(r);
  return h;
}

double SpreadSurface::rowHeaderWidth() const {
  double w = 0;
  for (int32_t c : shownHeaderCols()) w += shownColWidth(c);
  return w;
}

std::vector<int32_t> SpreadSurface::shownDataRows() const {
  std::vector<int32_t> out;
  double y = headerHeight();
  for (int32_t r = std::max(topRow_, 1); r <= maxRows_ && y < viewHeight(); ++r) {
    const double h = shownRowHeight(r);
    if (h <= 0) continue;
    out.push_back(r);
    y += h;
  }
  return out;
}

std::vector<int32_t> SpreadSurface::shownDataCols() const {
  std::vector<int32_t> out;
  double x = rowHeaderWidth();
  for (int32_t c = 1; c <= std::min(colsFrozen_, maxCols_) && x < viewWidth(); ++c) {
    const double w = shownColWidth(c);
    if (w <= 0) continue;
    out.push_back(c);
    x += w;
  }
  for (int32_t c = std::max(leftCol_, colsFrozen_ + 1); c <= maxCols_ && x < viewWidth(); ++c) {
    const double w = shownColWidth(c);
    if (w <= 0) continue;
    out.push_back(c);
    x += w;
  }
  return out;
}

int32_t SpreadSurface::rowsInView() const {
  const double avail = viewHeight() - headerHeight();
  double y = 0;
  int32_t n = 0;
  for (int32_t r = std::max(topRow_, 1); r <= maxRows_; ++r) {
    const double h = shownRowHeight(r);
    if (h <= 0) continue;
    if (y + h > avail) break;
    y += h;
    ++n;
  }
  return std::max(n, 1);
}

bool SpreadSurface::GetCellPos(int32_t Col, int32_t Row, double& x, double& y, double& w, double& h) const {
  Col = normCol(Col);
  Row = normRow(Row);
  // Vertical place.
  bool found = false;
  double yy = 0;
  if (Row <= 0) {
    for (int32_t r : shownHeaderRows()) {
      if (r == Row) { found = true; break; }
      yy += shownRowHeight(r);
    }
  } else {
    yy = headerHeight();
    for (int32_t r : shownDataRows()) {
      if (r == Row) { found = true; break; }
      yy += shownRowHeight(r);
    }
  }
  if (!found) return false;
  found = false;
  double xx = 0;
  if (Col <= 0) {
    for (int32_t c : shownHeaderCols()) {
      if (c == Col) { found = true; break; }
      xx += shownColWidth(c);
    }
  } else {
    xx = rowHeaderWidth();
    for (int32_t c : shownDataCols()) {
      if (c == Col) { found = true; break; }
      xx += shownColWidth(c);
    }
  }
  if (!found) return false;
  x = xx;
  y = yy;
  w = shownColWidth(Col);
  h = shownRowHeight(Row);
  return true;
}

SpreadSurface::Hit SpreadSurface::hitTest(double x, double y) const {
  Hit hit;
  const double hh = headerHeight();
  const double hw = rowHeaderWidth();
  // Column.
  int32_t col = 0;
  bool colFound = false;
  double xx = 0;
  auto scanCols = [&](const std::vector<int32_t>& cols) {
    for (int32_t c : cols) {
      const double w = shownColWidth(c);
      if (y < hh && std::abs(x - (xx + w)) <= kEdgeGrip) hit.resizeCol = c == 0 ? SpreadHeader : c;
      if (!colFound && x >= xx && x < xx + w) {
        col = c;
        colFound = true;
      }
      xx += w;
    }
  };
  scanCols(shownHeaderCols());
  scanCols(shownDataCols());
  // Row.
  int32_t row = 0;
  bool rowFound = false;
  double yy = 0;
  auto scanRows = [&](const std::vector<int32_t>& rows) {
    for (int32_t r : rows) {
      const double h = shownRowHeight(r);
      if (x < hw && r > 0 && std::abs(y - (yy + h)) <= kEdgeGrip) hit.resizeRow = r;
      if (!rowFound && y >= yy && y < yy + h) {
        row = r;
        rowFound = true;
      }
      yy += h;
    }
  };
  scanRows(shownHeaderRows());
  scanRows(shownDataRows());
  if (!colFound || !rowFound) {
    hit.area = Hit::None;
    return hit;
  }
  hit.col = col;
  hit.row = row;
  if (y < hh && x < hw)
    hit.area = Hit::Corner;
  else if (y < hh)
    hit.area = Hit::ColumnHeader;
  else if (x < hw)
    hit.area = Hit::RowHeader;
  else
    hit.area = Hit::Cell;
  return hit;
}

// ---- Input -----------------------------------------------------------------------------------------

int32_t SpreadSurface::stepRow(int32_t from, int32_t delta) const {
  int32_t r = from, best = from;
  const int32_t dir = delta > 0 ? 1 : -1;
  for (int32_t left = std::abs(delta); left > 0;) {
    r += dir;
    if (r < 1 || r > maxRows_) break;
    if (shownRowHeight(r) <= 0) continue;
    best = r;
    --left;
  }
  return best;
}

int32_t SpreadSurface::stepCol(int32_t from, int32_t delta) const {
  int32_t c = from, best = from;
  const int32_t dir = delta > 0 ? 1 : -1;
  for (int32_t left = std::abs(delta); left > 0;) {
    c += dir;
    if (c < 1 || c > maxCols_) break;
    if (shownColWidth(c) <= 0) continue;
    best = c;
    --left;
  }
  return best;
}

void SpreadSurface::raiseSelChange() {
  if (listener_) listener_->SelChange(selCol_, selRow_, selCol2_, selRow2_, activeCol_, activeRow_);
}

bool SpreadSurface::moveActive(int32_t col, int32_t row, bool extend) {
  if (col == activeCol_ && row == activeRow_ && !extend) return false;
  if (col != activeCol_ || row != activeRow_) {
    bool cancel = false;
    if (listener_) listener_->LeaveCell(activeCol_, activeRow_, col, row, cancel);
    if (cancel) return false;
  }
  activeCol_ = col;
  activeRow_ = row;
  if (extend) {
    selCol_ = std::min(anchorCol_, col);
    selCol2_ = std::max(anchorCol_, col);
    selRow_ = std::min(anchorRow_, row);
    selRow2_ = std::max(anchorRow_, row);
  } else {
    anchorCol_ = col;
    anchorRow_ = row;
    selCol_ = selCol2_ = col;
    selRow_ = selRow2_ = row;
  }
  ensureVisible(col, row);
  changed();
  raiseSelChange();
  return true;
}

void SpreadSurface::ensureVisible(int32_t col, int32_t row) {
  if (row >= 1 && row <= maxRows_) {
    if (row < topRow_) {
      setTopRow(row);
    } else {
      while (topRow_ < row) {
        const std::vector<int32_t> rows = shownDataRows();
        const int32_t full = rowsInView();
        if (int32_t(rows.size()) >= 1 && std::find(rows.begin(), rows.begin() + std::min<size_t>(rows.size(), size_t(full)), row) !=
                                           rows.begin() + std::min<size_t>(rows.size(), size_t(full)))
          break;
        const int32_t next = stepRow(topRow_, 1);
        if (next == topRow_) break;
        setTopRow(next);
      }
    }
  }
  if (col > colsFrozen_ && col <= maxCols_) {
    if (col < leftCol_) {
      setLeftCol(col);
    } else {
      while (leftCol_ < col) {
        double x = rowHeaderWidth();
        for (int32_t c = 1; c <= colsFrozen_; ++c) x += shownColWidth(c);
        for (int32_t c = leftCol_; c <= col; ++c) x += shownColWidth(c);
        if (x <= viewWidth() || viewWidth() <= 0) break;
        const int32_t next = stepCol(leftCol_, 1);
        if (next == leftCol_) break;
        setLeftCol(next);
      }
    }
  }
}

void SpreadSurface::inputKeyDown(int16_t keyCode, int16_t shiftState) {
  if (listener_) listener_->KeyDown(keyCode, shiftState);
  if (keyCode == 0) return;
  const bool ext = (shiftState & shift::Shift) != 0;
  const bool ctrl = (shiftState & shift::Ctrl) != 0;
  int32_t col = activeCol_, row = activeRow_;
  switch (keyCode) {
    case key::Up: row = stepRow(row, -1); break;
    case key::Down: row = stepRow(row, 1); break;
    case key::Left: col = stepCol(col, -1); break;
    case key::Right: col = stepCol(col, 1); break;
    case key::PageUp: row = stepRow(row, -rowsInView()); break;
    case key::PageDown: row = stepRow(row, rowsInView()); break;
    case key::Home:
      if (ctrl) row = stepRow(0, 1);
      col = stepCol(0, 1);
      break;
    case key::End:
      if (ctrl) row = stepRow(maxRows_ + 1, -1);
      col = stepCol(maxCols_ + 1, -1);
      break;
    case key::Tab:
      col = stepCol(col, ext ? -1 : 1);
      moveActive(col, row, false);
      return;
    case 'C':
      if (ctrl) copySelection();
      return;
    default: return;
  }
  if (row < 1 || col < 1) return;
  moveActive(col, row, ext);
}

void SpreadSurface::inputKeyPress(int16_t keyAscii) {
  if (listener_) listener_->KeyPress(keyAscii);
}

void SpreadSurface::inputKeyUp(int16_t keyCode, int16_t shiftState) {
  if (listener_) listener_->KeyUp(keyCode, shiftState);
}

void SpreadSurface::inputMouseDown(MouseButton button, int16_t shiftState, double x, double y) {
  if (listener_) listener_->MouseDown(int16_t(button), shiftState, x, y);
  const Hit hit = hitTest(x, y);
  if (button == MouseButton::Left && hit.resizingCol()) {
    dragCol_ = hit.resizeCol;
    dragOrigin_ = x;
    dragStartSize_ = ColWidth(dragCol_);
    return;
  }
  if (button == MouseButton::Left && hit.resizingRow()) {
    dragRow_ = hit.resizeRow;
    dragOrigin_ = y;
    dragStartSize_ = RowHeight(dragRow_);
    return;
  }
  if (hit.area == Hit::Cell) {
    const bool ext = (shiftState & shift::Shift) != 0;
    const bool moved = moveActive(hit.col, hit.row, ext);
    if (!moved && (hit.col != activeCol_ || hit.row != activeRow_)) return;  // the owner refused the move
    selecting_ = button == MouseButton::Left;
    if (listener_) listener_->Click(hit.col, hit.row);
  } else if (hit.area != Hit::None) {
    if (listener_) listener_->Click(hit.col, hit.row);
  }
}

void SpreadSurface::inputMouseMove(double x, double y, bool leftDown) {
  if (dragCol_) {
    setColWidth(dragCol_, std::max(0.0, dragStartSize_ + (x - dragOrigin_)));
    return;
  }
  if (dragRow_) {
    setRowHeight(dragRow_, std::max(0.0, dragStartSize_ + (y - dragOrigin_)));
    return;
  }
  if (selecting_ && leftDown) {
    const Hit hit = hitTest(x, y);
    if (hit.area != Hit::Cell) return;
    const int32_t c1 = std::min(anchorCol_, hit.col), c2 = std::max(anchorCol_, hit.col);
    const int32_t r1 = std::min(anchorRow_, hit.row), r2 = std::max(anchorRow_, hit.row);
    if (c1 != selCol_ || c2 != selCol2_ || r1 != selRow_ || r2 != selRow2_) {
      SetSelection(c1, r1, c2, r2);
      raiseSelChange();
    }
  }
}

void SpreadSurface::inputMouseUp(MouseButton button, double x, double y) {
  if (dragCol_) {
    const int32_t c = dragCol_;
    dragCol_ = 0;
    if (listener_) listener_->ColWidthChange(c, c);
  } else if (dragRow_) {
    const int32_t r = dragRow_;
    dragRow_ = 0;
    if (listener_) listener_->RowHeightChange(r, r);
  } else {
    if (selecting_ && (selCol_ != selCol2_ || selRow_ != selRow2_) && listener_)
      listener_->BlockSelected(selCol_, selRow_, selCol2_, selRow2_);
    selecting_ = false;
  }
  if (listener_) listener_->MouseUp(int16_t(button), 0, x, y);
}

void SpreadSurface::inputDblClick(double x, double y) {
  const Hit hit = hitTest(x, y);
  if (hit.area == Hit::None || hit.resizingCol() || hit.resizingRow()) return;
  if (listener_) listener_->DblClick(hit.col, hit.row);
}

void SpreadSurface::inputWheel(int32_t rows) {
  const int32_t target = stepRow(topRow_, rows);
  setTopRow(target);
}

void SpreadSurface::copySelection() {
  const int32_t c1 = selCol_ == -1 ? 1 : std::min(selCol_, selCol2_);
  const int32_t c2 = selCol_ == -1 ? maxCols_ : std::max(selCol_, selCol2_);
  const int32_t r1 = selRow_ == -1 ? 1 : std::min(selRow_, selRow2_);
  const int32_t r2 = selRow_ == -1 ? maxRows_ : std::max(selRow_, selRow2_);
  QString out;
  for (int32_t r = r1; r <= r2; ++r) {
    for (int32_t c = c1; c <= c2; ++c) {
      if (c > c1) out += QLatin1Char('\t');
      out += GetText(c, r);
    }
    out += QStringLiteral("\r\n");
  }
  platform().setClipboardText(out);
}

}  // namespace tq7
