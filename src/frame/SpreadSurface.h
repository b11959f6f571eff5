#pragma once
// The spreadsheet surface. Storage is columnar and sparse: a column's texts allocate only when
// something is written to it, and cell properties live in sparse maps that are resolved by
// "the latest write wins" across cell, row, column and sheet, as the spreadsheet does.
#include "frame/GridSurface.h"

#include <QHash>
#include <algorithm>
#include <array>
#include <memory>
#include <vector>

namespace tq7 {

class SpreadSurface final : public GridSurface {
 public:
  explicit SpreadSurface(QString name = QStringLiteral("mfgData"));
  ~SpreadSurface() override;

  void setListener(GridSurfaceEvents* l) override { listener_ = l; }

  int32_t MaxRows() const override { return maxRows_; }
  void setMaxRows(int32_t n) override;
  int32_t MaxCols() const override { return maxCols_; }
  void setMaxCols(int32_t n) override;

  int32_t Row() const override { return row_; }
  void setRow(int32_t r) override { row_ = r; }
  int32_t Col() const override { return col_; }
  void setCol(int32_t c) override { col_ = c; }
  int32_t Row2() const override { return row2_; }
  void setRow2(int32_t r) override { row2_ = r; }
  int32_t Col2() const override { return col2_; }
  void setCol2(int32_t c) override { col2_ = c; }
  bool BlockMode() const override { return blockMode_; }
  void setBlockMode(bool b) override {
    blockMode_ = b;
    settleFreshRows();
  }

  int32_t ActiveRow() const override { return activeRow_; }
  int32_t ActiveCol() const override { return activeCol_; }
  void SetActiveCell(int32_t Col, int32_t Row) override;
  int32_t SelBlockCol() const override { return selCol_; }
  int32_t SelBlockCol2() const override { return selCol2_; }
  int32_t SelBlockRow() const override { return selRow_; }
  int32_t SelBlockRow2() const override { return selRow2_; }
  void SetSelection(int32_t Col, int32_t Row, int32_t Col2, int32_t Row2) override;

  int32_t TopRow() const override { return topRow_; }
  void setTopRow(int32_t r) override;
  int32_t LeftCol() const override { return leftCol_; }
  void setLeftCol(int32_t c) override;
  int32_t ColsFrozen() const override { return colsFrozen_; }
  void setColsFrozen(int32_t n) override;

  double ColWidth(int32_t col) const override;
  void setColWidth(int32_t col, double w) override;
  double RowHeight(int32_t row) const override;
  void setRowHeight(int32_t row, double h) override;
  bool ColHidden() const override;
  void setColHidden(bool h) override;
  bool RowHidden() const override;
  void setRowHidden(bool h) override;

  bool Lock() const override;
  void setLock(bool l) override { writeProp(PLock, l); }
  int16_t CellType() const override;
  void setCellType(int16_t t) override { writeProp(PCellType, uint16_t(t)); }
  double Value() const override;
  void setValue(double v) override;
  int16_t TypeHAlign() const override;
  void setTypeHAlign(int16_t a) override { writeProp(PHAlign, uint16_t(a)); }
  int16_t TypeVAlign() const override;
  void setTypeVAlign(int16_t a) override { writeProp(PVAlign, uint16_t(a)); }
  int16_t TypeTextOrient() const override;
  void setTypeTextOrient(int16_t o) override { writeProp(POrient, uint16_t(o)); }
  bool TypeEditMultiLine() const override;
  void setTypeEditMultiLine(bool m) override { writeProp(PMultiLine, m); }
  QString TypeCheckText() const override;
  void setTypeCheckText(const QString& t) override;
  void setTypeNumberFormat(const QString& thousands, const QString& decimal, bool hideZero,
                           int16_t negativeStyle) override;
  Colour BackColor() const override;
  void setBackColor(Colour c) override { writeProp(PBack, c); }
  Colour ForeColor() const override;
  void setForeColor(Colour c) override { writeProp(PFore, c); }
  bool FontBold() const override;
  void setFontBold(bool b) override { writeProp(PBold, b); }
  QString FontName() const override;
  void setFontName(const QString& n) override;
  double FontSize() const override;
  void setFontSize(double s) override;
  QString Formula() const override;
  void setFormula(const QString& f) override;
  QString CellNote() const override;
  void setCellNote(const QString& n) override {
    if (n.isEmpty() && notes_.isEmpty()) return;  // nothing to clear: no entry, no repaint
    writeNote(n);
  }
  int16_t CellNoteIndicator() const override;
  void setCellNoteIndicator(int16_t i) override;
  int16_t CellNoteIndicatorShape() const override;
  void setCellNoteIndicatorShape(int16_t s) override;
  Colour CellNoteIndicatorColor() const override;
  void setCellNoteIndicatorColor(Colour c) override;

  bool GridShowHoriz() const override { return showHoriz_; }
  void setGridShowHoriz(bool b) override;
  bool GridShowVert() const override { return showVert_; }
  void setGridShowVert(bool b) override;

  int32_t hWnd() const override { return hwnd_; }
  void setHWnd(int32_t h) { hwnd_ = h; }

  QString GetText(int32_t Col, int32_t Row) const override { return cellText(Col, Row); }
  const QString& cellText(int32_t Col, int32_t Row) const override {
    if (!validCol(Col) || !validRow(Row)) return emptyText_;
    const size_t cs = size_t(colSlot(Col));
    if (cs >= columns_.size() || !columns_[cs]) return emptyText_;
    const Blocks<QString>& t = columns_[cs]->text;
    const size_t rs = size_t(rowSlot(Row));
    return rs < t.size ? t.at(rs) : emptyText_;
  }
  void SetText(int32_t Col, int32_t Row, const QString& text) override;
  // Counts the changes that may alter a header line's text (a write to one, a change of MaxCols):
  // whoever keeps what the header texts say knows by it when to read them again.
  uint32_t headerTextEdits() const { return headerTextEdits_; }
  void AddCellSpan(int32_t Col, int32_t Row, int32_t NumCols, int32_t NumRows) override;
  bool GetCellPos(int32_t Col, int32_t Row, double& x, double& y, double& w, double& h) const override;

  int32_t rowLayoutDirtyFrom() const override { return dirtyFrom_; }
  void clearRowLayoutDirty() override { dirtyFrom_ = maxRows_ + 1; }
  void markRowLayoutDirty(int32_t fromRow) override;

  // ---- What a painter and an input translator need -------------------------------------------

  // A cell's resolved look.
  struct CellLook {
    Colour back = syscolor::Window;
    Colour fore = syscolor::WindowText;
    bool bold = false;
    QString fontName;  // empty: the surface's font
    double fontSize = 0;  // 0: the surface's font
    int16_t hAlign = 0;
    int16_t vAlign = 2;
    int16_t cellType = celltype::StaticText;
    int16_t orient = 0;
    bool multiLine = false;
    bool lock = false;
    QString checkText;
    bool hasNote = false;
    int16_t noteIndicator = 0;
    Colour noteColour = 0x0000FF;
    double value = 0;
  };
  CellLook look(int32_t Col, int32_t Row) const;

  struct Span {
    int32_t col = 0, row = 0, numCols = 1, numRows = 1;
  };
  // The span that covers a cell, if any.
  const Span* spanAt(int32_t Col, int32_t Row) const;

  // Header lines on screen, top to bottom and left to right.
  std::vector<int32_t> shownHeaderRows() const;
  std::vector<int32_t> shownHeaderCols() const;
  double headerHeight() const;
  double rowHeaderWidth() const;
  // Screen size of a line: 0 when hidden.
  double shownColWidth(int32_t col) const;
  double shownRowHeight(int32_t row) const;
  // Room the host's scroll bars take inside the surface's rectangle, in twips; the lines in view
  // are those that fit in what is left.
  void setScrollBarExtents(double vertical, double horizontal);
  double viewWidth() const { return Width() > vbarExtent_ ? Width() - vbarExtent_ : 0.0; }
  double viewHeight() const { return Height() > hbarExtent_ ? Height() - hbarExtent_ : 0.0; }
  // Data lines in view for the surface's current size, in screen order.
  std::vector<int32_t> shownDataRows() const;
  std::vector<int32_t> shownDataCols() const;

  struct Hit {
    enum Area { None, Corner, ColumnHeader, RowHeader, Cell } area = None;
    int32_t col = 0, row = 0;
    int32_t resizeCol = 0;  // non-zero: the pointer is on the right edge of this column's header
    int32_t resizeRow = 0;  // non-zero: the pointer is on the bottom edge of this row's header
    bool resizingCol() const { return resizeCol != 0; }
    bool resizingRow() const { return resizeRow != 0; }
  };
  Hit hitTest(double x, double y) const;

  // ---- Input, in the order a user's actions arrive; positions in twips -----------------------
  void inputKeyDown(int16_t keyCode, int16_t shiftState);
  void inputKeyPress(int16_t keyAscii);
  void inputKeyUp(int16_t keyCode, int16_t shiftState);
  void inputMouseDown(MouseButton button, int16_t shiftState, double x, double y);
  void inputMouseMove(double x, double y, bool leftDown);
  void inputMouseUp(MouseButton button, double x, double y);
  void inputDblClick(double x, double y);
  // Positive rows scroll down.
  void inputWheel(int32_t rows);
  // The rows fully in view from TopRow, at least 1; used for paging.
  int32_t rowsInView() const;

  // Copies the selected block as tab-separated lines to the clipboard, as the sheet's own copy does.
  void copySelection();

  // The look a grid gives each cell of a new row: an alignment, no note, the window's colours.
  struct RowLook {
    int16_t hAlign = 0, vAlign = 0;
  };
  // Points at the cells of the pointed row from FirstCol on, one after the other, and writes
  // each its TypeHAlign and TypeVAlign from `looks`, an empty CellNote, BackColor Window and
  // ForeColor WindowText: the same as those writes one by one, with what they share looked up
  // once per cell. The pointer is left on the last cell.
  void writeRowLooks(int32_t FirstCol, const RowLook* looks, int32_t count);

  // Lines of the header area kept by number, as the spreadsheet numbers them.
  static int32_t normRow(int32_t r) { return r == SpreadHeader ? 0 : r; }
  static int32_t normCol(int32_t c) { return c == SpreadHeader ? 0 : c; }

 private:
  enum Prop : uint8_t {
    PLock, PCellType, PHAlign, PVAlign, POrient, PMultiLine, PBack, PFore, PBold, PFontName, PFontSize,
    PCheckText, PCount
  };
  // Every property value is kept as 64 bits: flags, numbers and colours as they are, doubles by
  // their bits, texts as an index into the surface's interned texts.
  struct Style {
    uint32_t mask = 0;
    std::array<uint32_t, PCount> stamp{};
    std::array<uint64_t, PCount> v{};
  };
  // Cell-level values of one property in one column, as runs of rows that got the same value
  // with nothing of another level written in between: a column of 100,000 new rows that all
  // get their defaults costs one run, not 100,000 entries.
  struct Run {
    int32_t r1, r2;
    uint32_t stamp;
    uint64_t v;
  };
  // The runs of one property in one column, in row order. Most columns hold one run of a
  // property (every row alike), kept inline, so that a new row that joins it touches nothing
  // beyond the column's own record.
  class Runs {
   public:
    Runs() = default;
    Runs(Runs&&) noexcept = default;
    Runs& operator=(Runs&&) noexcept = default;
    bool empty() const { return n_ == 0; }
    Run* begin() { return data(); }
    Run* end() { return data() + n_; }
    const Run* begin() const { return data(); }
    const Run* end() const { return data() + n_; }
    Run& back() { return data()[n_ - 1]; }
    const Run& back() const { return data()[n_ - 1]; }
    void pop_back() { --n_; }
    Run* insert(Run* at, const Run& run);

   private:
    Run* data() { return more_ ? more_.get() : &one_; }
    const Run* data() const { return more_ ? more_.get() : &one_; }
    uint32_t n_ = 0, cap_ = 1;
    Run one_{};
    std::unique_ptr<Run[]> more_;
  };
  // A column's cell settings, and what its data cells resolve to below them when their row has
  // no setting of its own: the latest of the sheet's and the column's writes, taken anew after
  // any sheet, column or row write.
  struct ColumnStyles {
    std::array<Runs, PCount> runs;
    uint32_t taken = 0;  // levelWrites_ when `level` was taken; 0: never
    std::array<uint64_t, PCount> level{};
  };
  struct Note {
    QString text;
    int16_t indicator = 0;
    int16_t shape = 0;
    Colour colour = 0x0000FF;
  };
  // Cells of one column by row slot, in blocks of a fixed size: a column that grows row by row
  // never moves what it holds, and a read is two indexes.
  template <class T>
  struct Blocks {
    static constexpr size_t kBlock = 512;
    std::vector<std::unique_ptr<T[]>> blocks;
    size_t size = 0;  // slots that may hold something; the rest read as T()
    T& at(size_t rs) { return blocks[rs / kBlock][rs % kBlock]; }
    const T& at(size_t rs) const { return blocks[rs / kBlock][rs % kBlock]; }
    // Makes the slot writable.
    void reach(size_t rs) {
      while (blocks.size() * kBlock <= rs) blocks.push_back(std::make_unique<T[]>(kBlock));
      size = std::max(size, rs + 1);
    }
    // Empties every slot from `keep` on and gives back the blocks that held only those.
    void cut(size_t keep) {
      const size_t kept = (keep + kBlock - 1) / kBlock;
      for (size_t rs = keep; rs < std::min(size, kept * kBlock); ++rs) at(rs) = T();
      if (blocks.size() > kept) blocks.resize(kept);
      size = std::min(size, keep);
    }
  };
  struct Column {
    Blocks<QString> text;
    Blocks<double> value;  // a check box's state
  };

  static quint64 cellKey(int32_t col, int32_t row) {
    return (quint64(uint32_t(row + 2000)) << 32) | quint64(uint32_t(col + 2000));
  }
  // Slots of the stores: the header lines first, then line 0, then the data lines; -1 for a
  // number that is no line.
  static int rowSlot(int32_t r) {
    if (r >= 0) return 35 + r;
    if (r == SpreadHeader) return 35;
    if (r >= -999 && r <= LastHeaderRow) return r + 999;
    return -1;
  }
  static int colSlot(int32_t c) {
    if (c >= 0) return 15 + c;
    if (c == SpreadHeader) return 15;
    if (c >= -999 && c <= LastHeaderCol) return c + 999;
    return -1;
  }
  bool validRow(int32_t r) const { return r <= maxRows_ && rowSlot(r) >= 0; }
  bool validCol(int32_t c) const { return c <= maxCols_ && colSlot(c) >= 0; }
  const Style* lineStyle(const std::vector<std::unique_ptr<Style>>& styles, int slot) const {
    return slot >= 0 && size_t(slot) < styles.size() ? styles[size_t(slot)].get() : nullptr;
  }

  // The effective style property at a cell: the latest write among cell, row, column, sheet.
  uint64_t resolve(int32_t col, int32_t row, Prop p) const;
  // The value of the sheet, column and row levels alone, with the stamp it was written at.
  uint64_t levelValue(int32_t col, int32_t row, Prop p, uint32_t& stamp) const;
  void takeLevels(ColumnStyles& c, int32_t col);
  void writeNote(const QString& n);
  // The value of a cell, 0 when it holds none.
  double cellValue(int32_t col, int32_t row) const;
  // A write to the pointed cells. A data cell below every cell setting of its column, in a row
  // with no setting of its own, that gets what the sheet and its column give it already changes
  // nothing; such are most of the defaults each new row gets, so they are told apart first, from
  // one record per column.
  void writeProp(Prop p, uint64_t v) {
    if (row_ >= freshRows_ && row_ <= maxRows_ && uint32_t(col_ - 1) < uint32_t(maxCols_)) {
      ColumnStyles& c = cellStyles_[size_t(colSlot(col_))];
      if (c.taken != levelWrites_) takeLevels(c, col_);
      bool grown = false;
      if (settle(c, p, v, grown)) {
        if (grown) changed();
        return;
      }
    }
    writePropSlow(p, v);
  }
  void writePropSlow(Prop p, uint64_t v);
  // A new row's cell write that the column's record settles alone: true when the cell shows the
  // value already or the run just above it took the row (then `grown`); false when it needs the
  // general path.
  bool settle(ColumnStyles& c, Prop p, uint64_t v, bool& grown) {
    Runs& runs = c.runs[p];
    if (!runs.empty() && row_ <= runs.back().r2) return false;
    if (c.level[p] == v) return true;
    if (runs.empty()) return false;
    Run& last = runs.back();
    if (last.r2 != row_ - 1 || last.v != v || levelStamp_[p] >= last.stamp) return false;
    last.r2 = row_;
    grown = true;
    return true;
  }
  void writePropAt(int32_t col, int32_t row, Prop p, uint64_t v);
  void writeCellRun(int32_t col, int32_t row, Prop p, uint64_t v);
  const Run* findRun(int32_t col, int32_t row, Prop p) const;
  uint64_t intern(const QString& s);
  const QString& text(uint64_t v) const;

  double& rowHeightRef(int32_t row);
  double& colWidthRef(int32_t col);
  uint8_t* rowHiddenPtr(int32_t row);
  uint8_t* colHiddenPtr(int32_t col);

  bool moveActive(int32_t col, int32_t row, bool extend);
  void ensureVisible(int32_t col, int32_t row);
  int32_t stepRow(int32_t from, int32_t delta) const;
  int32_t stepCol(int32_t from, int32_t delta) const;
  void raiseSelChange();

  static const QString emptyText_;
  GridSurfaceEvents* listener_ = nullptr;
  int32_t maxRows_ = 0, maxCols_ = 0;
  int32_t row_ = 0, col_ = 0, row2_ = 0, col2_ = 0;
  bool blockMode_ = false;
  int32_t activeRow_ = 1, activeCol_ = 1;
  int32_t selCol_ = 1, selRow_ = 1, selCol2_ = 1, selRow2_ = 1;
  int32_t anchorCol_ = 1, anchorRow_ = 1;
  int32_t topRow_ = 1, leftCol_ = 1, colsFrozen_ = 0;
  bool showHoriz_ = true, showVert_ = true;
  int32_t hwnd_ = 0;
  int32_t dirtyFrom_ = 1;
  uint32_t stamp_ = 0;

  std::vector<std::unique_ptr<Column>> columns_;  // by column slot; null until written
  std::array<double, 36> hdrRowHeight_{};
  std::array<uint8_t, 36> hdrRowHidden_{};
  std::array<double, 16> hdrColWidth_{};
  std::array<uint8_t, 16> hdrColHidden_{};
  std::vector<double> rowHeight_;   // data rows, index = row; [0] unused
  std::vector<uint8_t> rowHidden_;
  std::vector<double> colWidth_;    // data columns, index = col; [0] unused
  std::vector<uint8_t> colHidden_;
  double vbarExtent_ = 0, hbarExtent_ = 0;
  double defaultRowHeight_ = 300;
  double defaultColWidth_ = 960;

  Style sheet_;
  std::vector<std::unique_ptr<Style>> colStyles_;  // by column slot
  std::vector<std::unique_ptr<Style>> rowStyles_;  // by row slot
  std::vector<ColumnStyles> cellStyles_;  // by column slot, header columns included
  std::array<uint32_t, PCount> levelStamp_{};  // latest write of each property to a row, column or sheet
  uint32_t levelWrites_ = 1;   // counts writes to a row, a column or the sheet
  // What the last writeRowLooks left, when every cell of its columns then showed its look from
  // the levels or as the end of the run just above it: the next row's same looks, with no level
  // written since and no cell setting of those columns but by this, only lengthen those runs.
  struct RowLooksTail {
    int32_t first = 0, count = 0, row = 0;
    uint32_t levelWrites = 0;
    std::vector<RowLook> looks;
    std::vector<Run*> ends;  // the runs a next row lengthens; stable until a cell setting is kept
  } rowLooksTail_;
  void keepRowLooksTail(int32_t FirstCol, const RowLook* looks, int32_t count);
  // The first data row from which no row has settings of its own, as new rows are; out of
  // reach while the pointer covers a block.
  int32_t freshRows_ = 1;
  void settleFreshRows() {
    freshRows_ = blockMode_ ? INT32_MAX : std::max<int32_t>(1, int32_t(rowStyles_.size()) - rowSlot(0));
  }
  uint32_t headerTextEdits_ = 0;
  QStringList strings_;
  QHash<QString, uint64_t> stringIndex_;
  QHash<quint64, QString> formulas_;
  QHash<quint64, Note> notes_;
  std::vector<Span> spans_;

  // Drag state of a header edge.
  int32_t dragCol_ = 0, dragRow_ = 0;
  double dragOrigin_ = 0, dragStartSize_ = 0;
  bool selecting_ = false;
};

}  // namespace tq7
