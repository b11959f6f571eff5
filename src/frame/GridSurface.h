#pragma once
// The abstract sheet the grids and views draw on, with the operation names of the spreadsheet it
// stands for. Data rows and columns count from 1; row 0 and column 0 are the headers; the header
// area has rows -1000 to -965 and columns -1000 to -985, where -1000 is the same line as 0.
// Cell properties are written by pointing Row and Col (and Row2, Col2 with BlockMode) first.
// Lengths are twips.
#include "frame/Types.h"
#include "frame/Widget.h"

#include <QString>
#include <cstdint>

namespace tq7 {

// What the surface tells its owner. Arguments by reference are read back after the call.
class GridSurfaceEvents {
 public:
  virtual ~GridSurfaceEvents() = default;
  virtual void Click(int32_t Col, int32_t Row) { (void)Col, (void)Row; }
  virtual void DblClick(int32_t Col, int32_t Row) { (void)Col, (void)Row; }
  virtual void ColWidthChange(int32_t Col1, int32_t Col2) { (void)Col1, (void)Col2; }
  virtual void RowHeightChange(int32_t Row1, int32_t Row2) { (void)Row1, (void)Row2; }
  virtual void LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) {
    (void)Col, (void)Row, (void)NewCol, (void)NewRow, (void)Cancel;
  }
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
  virtual void KeyPress(int16_t& KeyAscii) { (void)KeyAscii; }
  virtual void KeyUp(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
  virtual void TextTipFetch(int32_t Col, int32_t Row, int16_t& MultiLine, int32_t& TipWidth, QString& TipText,
                            bool& ShowTip) {
    (void)Col, (void)Row, (void)MultiLine, (void)TipWidth, (void)TipText, (void)ShowTip;
  }
  virtual void BlockSelected(int32_t BlockCol, int32_t BlockRow, int32_t BlockCol2, int32_t BlockRow2) {
    (void)BlockCol, (void)BlockRow, (void)BlockCol2, (void)BlockRow2;
  }
  virtual void SelChange(int32_t BlockCol, int32_t BlockRow, int32_t BlockCol2, int32_t BlockRow2, int32_t CurCol,
                         int32_t CurRow) {
    (void)BlockCol, (void)BlockRow, (void)BlockCol2, (void)BlockRow2, (void)CurCol, (void)CurRow;
  }
  // The scroll position moved (for hosts and owners that place overlays).
  virtual void TopLeftChange() {}
  // A mouse button went down or came up over the sheet (Button 1 left, 2 right, 4 middle), at a
  // position in twips; raised before the sheet's own handling of the press, after that of the release.
  virtual void MouseDown(int16_t Button, int16_t Shift, double X, double Y) { (void)Button, (void)Shift, (void)X, (void)Y; }
  virtual void MouseUp(int16_t Button, int16_t Shift, double X, double Y) { (void)Button, (void)Shift, (void)X, (void)Y; }
  // The cursor was put on a cell by code (SetActiveCell), which raises no SelChange; for owners
  // that keep an editor in line with the active cell.
  virtual void ActiveCellSet(int32_t Col, int32_t Row) { (void)Col, (void)Row; }
};

// Key codes of the classic key set, as the surface and the grids see them.
namespace key {
constexpr int16_t Back = 8, Tab = 9, Return = 13, Shift = 16, Control = 17, Escape = 27, Space = 32;
constexpr int16_t PageUp = 33, PageDown = 34, End = 35, Home = 36, Left = 37, Up = 38, Right = 39, Down = 40;
constexpr int16_t Insert = 45, Delete = 46;
constexpr int16_t F1 = 112, F2 = 113, F3 = 114, F4 = 115, F5 = 116, F6 = 117, F7 = 118, F8 = 119, F9 = 120,
                  F10 = 121, F11 = 122, F12 = 123;
}  // namespace key
// Shift states, as a bit set.
namespace shift {
constexpr int16_t Shift = 1, Ctrl = 2, Alt = 4;
}

enum class MouseButton { Left = 1, Right = 2, Middle = 4 };

// Cell types of the sheet.
namespace celltype {
constexpr int16_t Date = 0, Edit = 1, Float = 2, Integer = 3, Pic = 4, StaticText = 5, Time = 6, Button = 7,
                  ComboBox = 8, Picture = 9, CheckBox = 10, Owner = 11, Currency = 12, Number = 13, Percent = 14;
}

class GridSurface : public Widget {
 public:
  using Widget::Widget;
  ~GridSurface() override = default;

  // Header numbers.
  static constexpr int32_t SpreadHeader = -1000;
  static constexpr int32_t LastHeaderRow = -965;  // 36 column-header rows
  static constexpr int32_t LastHeaderCol = -985;  // 16 row-header columns

  virtual void setListener(GridSurfaceEvents* l) = 0;

  // Size. Writing grows or cuts the sheet.
  virtual int32_t MaxRows() const = 0;
  virtual void setMaxRows(int32_t n) = 0;
  virtual int32_t MaxCols() const = 0;
  virtual void setMaxCols(int32_t n) = 0;

  // The pointer for cell and block properties; independent of the active cell.
  virtual int32_t Row() const = 0;
  virtual void setRow(int32_t r) = 0;
  virtual int32_t Col() const = 0;
  virtual void setCol(int32_t c) = 0;
  virtual int32_t Row2() const = 0;
  virtual void setRow2(int32_t r) = 0;
  virtual int32_t Col2() const = 0;
  virtual void setCol2(int32_t c) = 0;
  virtual bool BlockMode() const = 0;
  virtual void setBlockMode(bool b) = 0;

  // The cursor and the selection (-1 means all).
  virtual int32_t ActiveRow() const = 0;
  virtual int32_t ActiveCol() const = 0;
  virtual void SetActiveCell(int32_t Col, int32_t Row) = 0;
  virtual int32_t SelBlockCol() const = 0;
  virtual int32_t SelBlockCol2() const = 0;
  virtual int32_t SelBlockRow() const = 0;
  virtual int32_t SelBlockRow2() const = 0;
  virtual void SetSelection(int32_t Col, int32_t Row, int32_t Col2, int32_t Row2) = 0;

  // Scroll position.
  virtual int32_t TopRow() const = 0;
  virtual void setTopRow(int32_t r) = 0;
  virtual int32_t LeftCol() const = 0;
  virtual void setLeftCol(int32_t c) = 0;
  virtual int32_t ColsFrozen() const = 0;
  virtual void setColsFrozen(int32_t n) = 0;

  // Sizes; 0 hides the line on screen.
  virtual double ColWidth(int32_t col) const = 0;
  virtual void setColWidth(int32_t col, double w) = 0;
  virtual double RowHeight(int32_t row) const = 0;
  virtual void setRowHeight(int32_t row, double h) = 0;
  // Hidden state of the pointed column (Col) or row (Row).
  virtual bool ColHidden() const = 0;
  virtual void setColHidden(bool h) = 0;
  virtual bool RowHidden() const = 0;
  virtual void setRowHidden(bool h) = 0;

  // Properties of the pointed cells.
  virtual bool Lock() const = 0;
  virtual void setLock(bool l) = 0;
  virtual int16_t CellType() const = 0;
  virtual void setCellType(int16_t t) = 0;
  virtual double Value() const = 0;  // a check box cell's state
  virtual void setValue(double v) = 0;
  virtual int16_t TypeHAlign() const = 0;  // 0 left, 1 right, 2 centre
  virtual void setTypeHAlign(int16_t a) = 0;
  virtual int16_t TypeVAlign() const = 0;  // 0 top, 1 bottom, 2 centre
  virtual void setTypeVAlign(int16_t a) = 0;
  virtual int16_t TypeTextOrient() const = 0;
  virtual void setTypeTextOrient(int16_t o) = 0;
  virtual bool TypeEditMultiLine() const = 0;
  virtual void setTypeEditMultiLine(bool m) = 0;
  virtual QString TypeCheckText() const = 0;
  virtual void setTypeCheckText(const QString& t) = 0;
  // Number display of the pointed cells (separators, hiding of zero, sign of negatives).
  virtual void setTypeNumberFormat(const QString& thousands, const QString& decimal, bool hideZero,
                                   int16_t negativeStyle) = 0;
  virtual Colour BackColor() const = 0;
  virtual void setBackColor(Colour c) = 0;
  virtual Colour ForeColor() const = 0;
  virtual void setForeColor(Colour c) = 0;
  virtual bool FontBold() const = 0;
  virtual void setFontBold(bool b) = 0;
  virtual QString FontName() const = 0;
  virtual void setFontName(const QString& n) = 0;
  virtual double FontSize() const = 0;
  virtual void setFontSize(double s) = 0;
  virtual QString Formula() const = 0;
  virtual void setFormula(const QString& f) = 0;
  virtual QString CellNote() const = 0;
  virtual void setCellNote(const QString& n) = 0;
  virtual int16_t CellNoteIndicator() const = 0;
  virtual void setCellNoteIndicator(int16_t i) = 0;
  virtual int16_t CellNoteIndicatorShape() const = 0;
  virtual void setCellNoteIndicatorShape(int16_t s) = 0;
  virtual Colour CellNoteIndicatorColor() const = 0;
  virtual void setCellNoteIndicatorColor(Colour c) = 0;

  // Sheet switches for lines (report style draws none).
  virtual bool GridShowHoriz() const = 0;
  virtual void setGridShowHoriz(bool b) = 0;
  virtual bool GridShowVert() const = 0;
  virtual void setGridShowVert(bool b) = 0;

  virtual int32_t hWnd() const = 0;

  // Texts; header rows and columns accept text too.
  virtual QString GetText(int32_t Col, int32_t Row) const = 0;
  // The same text without a copy, for readers that look at many cells; valid until the next write.
  virtual const QString& cellText(int32_t Col, int32_t Row) const = 0;
  virtual void SetText(int32_t Col, int32_t Row, const QString& text) = 0;
  // Joins cells; used for captions that repeat.
  virtual void AddCellSpan(int32_t Col, int32_t Row, int32_t NumCols, int32_t NumRows) = 0;
  // A cell's position and size on screen, relative to the surface; false when not in view.
  virtual bool GetCellPos(int32_t Col, int32_t Row, double& x, double& y, double& w, double& h) const = 0;

  // Marker of the first data row whose layout (count, height, hidden state) changed since the
  // running numbers were last written; MaxRows + 1 when nothing changed.
  virtual int32_t rowLayoutDirtyFrom() const = 0;
  virtual void clearRowLayoutDirty() = 0;
  virtual void markRowLayoutDirty(int32_t fromRow) = 0;
};

}  // namespace tq7
