// DataView: marks, the selection Matrix, the result text, and what the surface's events become.
#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "companion/db/Fields.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "view/DataView.h"

#include <cmath>

namespace tq7 {

// ---- Marks ----------------------------------------------------------------------------------------------------

void DataView::markRow(int32_t r, bool mark) {
  SpreadSurface& s = mfgData;
  const int32_t last = s.MaxCols();
  if (mark) {
    step([&] { s.SetText(kMarkCol, r, QStringLiteral("Y")); });
    step([&] { dbHelper().FillBlock(s, QVariant(qlonglong(kMarkBack)), QVariant(qlonglong(kMarkFore)), r, 1, r, last); });
    for (int32_t c = 1; c <= last; ++c) step([&] { Matrix1_.SetValue(r, c, helper().TextToDouble(s.cellText(c, r))); });
  } else {
    step([&] { s.SetText(kMarkCol, r, QString()); });
    step([&] {
      dbHelper().FillBlock(s, QVariant(qlonglong(syscolor::Window)), QVariant(qlonglong(syscolor::WindowText)), r, 1, r,
                           last);
    });
    for (int32_t c = 1; c <= last; ++c) step([&] { Matrix1_.SetValue(r, c, 0); });
  }
}

void DataView::cmdMark_Click(int32_t sRecord) {
  if (!iMultiRowSelect) return;
  SpreadSurface& s = mfgData;
  int32_t first = s.ActiveRow(), last = s.ActiveRow();
  if (sRecord > 0) {
    first = last = sRecord;
    step([&] { s.SetSelection(s.SelBlockCol(), sRecord, s.SelBlockCol2(), sRecord); });
  } else if (s.SelBlockRow() >= 1 && s.SelBlockRow2() >= 1) {
    // A block selected upward is walked upward: from the anchor, where the cursor is not.
    first = s.SelBlockRow();
    last = s.SelBlockRow2();
    if (s.ActiveRow() == first && first != last) std::swap(first, last);
  }
  const int32_t dir = first <= last ? 1 : -1;
  for (int32_t r = first;; r += dir) {
    markRow(r, !isMarked(r));
    if (r == last) break;
  }
  if (listener_) listener_->SelectionChange(Matrix1_);
}

void DataView::markAll(bool mark) {
  step([&] { mfgData.setVisible(false); });
  step([&] { TbrButton.setVisible(false); });
  for (int32_t r = 1; r <= mfgData.MaxRows(); ++r) markRow(r, mark);
  step([&] { mfgData.setVisible(true); });
  step([&] { TbrButton.setVisible(true); });
  step([&] { mfgData.SetFocus(); });
  if (!listener_) return;
  if (mark)
    listener_->SelectAll(Matrix1_);
  else
    listener_->DeSelectAll(Matrix1_);
}

void DataView::FillColorRectangle(Colour BackColor, Colour ForeColor, int32_t FromRecord, int32_t FromColumn,
                                  int32_t ToRecord, int32_t ToColumn, int16_t FillHeight, int16_t SkipHeight,
                                  const QString& ColumnList) {
  step([&] {
    dbHelper().FillBlock(mfgData, QVariant(qlonglong(BackColor)), QVariant(qlonglong(ForeColor)),
                         Record2Row(FromRecord), Column2Col(FromColumn), Record2Row(ToRecord), Column2Col(ToColumn),
                         FillHeight, SkipHeight, ColumnList);
  });
}

// ---- The result text ---------------------------------------------------------------------------------------------

// The key of a row as the surface shows it: a numeric key comes back with its decimals and groups.
QString DataView::rowKey(int32_t r) const {
  const QStringList fields = vb::Split(iFieldList, QStringLiteral(","));
  QString key;
  for (const QString& k : vb::Split(iPrimaryName, QStringLiteral(";"))) {
    for (int i = 0; i < fields.size(); ++i) {
      if (fields[i].compare(k, Qt::CaseInsensitive) != 0) continue;
      if (!key.isEmpty()) key += u';';
      key += mfgData.cellText(i + 1, r);
      break;
    }
  }
  return key;
}

void DataView::GetSelect() {
  int32_t total = 0;
  step([&] { total = rsid_ ? rsid_->RecordCount() : 0; });
  if (dataLoaded_ && total >= 1) {
    QString box;
    auto append = [&box](const QString& key) {
      if (key.isEmpty()) return;
      if (!box.isEmpty()) box += QStringLiteral("#,");
      box += key;
    };
    if (iMultiRowSelect) {
      for (int32_t r = 1; r <= mfgData.MaxRows(); ++r)
        if (isMarked(r)) append(rowKey(r));
    } else {
      append(rowKey(mfgData.ActiveRow()));
    }
    txtResult.setText(box);
  }
  TextResult = txtResult.Text();
}

// The one place that takes the key from the data rather than from the screen.
QString DataView::GetSelectATCursor() {
  QString key;
  step([&] {
    if (!dataLoaded_ || !rsid_ || rsid_->RecordCount() < 1) return;
    rsid_->setAbsolutePosition(firstRecord_ + mfgData.ActiveRow() - 1);
    if (rsid_->EOF_()) return;
    QStringList parts;
    for (const QString& k : vb::Split(iPrimaryName, QStringLiteral(";"))) {
      const QVariant v = rsid_->Fields(k).Value();
      parts << (v.typeId() == QMetaType::Double ? vb::shortestText(v.toDouble()) : v.toString());
    }
    key = parts.join(u';');
  });
  return key;
}

void DataView::RemoveActiveRow() {
  SpreadSurface& s = mfgData;
  const int32_t r = s.ActiveRow();
  step([&] { s.setRowHeight(r, 0); });
  step([&] { dbHelper().NumberRows(s, 1, -1, 0, 0, 0, 1); });
  step([&] {
    int32_t row = s.ActiveRow();
    const int32_t rows = s.MaxRows();
    if (row <= rows) {
      while (s.RowHeight(row) == 0 && row < rows) ++row;
      while (s.RowHeight(row) == 0 && row > 1) --row;
    } else {
      row = row == 1 ? rows : row - 1;
    }
    s.SetActiveCell(s.ActiveCol(), row);
  });
  if (listener_) listener_->RowDeleted(r);
}

// ---- Surface events ---------------------------------------------------------------------------------------------------

void DataView::Click(int32_t Col, int32_t Row) {
  // In sum mode a heading click selects its column, and the release totals it.
  if (clickMode_ == 0 && SpreadSurface::normRow(Row) == 0 && Col >= 1)
    step([&] { mfgData.SetSelection(Col, -1, Col, -1); });
  raise(&DataViewEvents::SelChange);
  raise(&DataViewEvents::Click);
}

void DataView::DblClick(int32_t Col, int32_t Row) {
  (void)Col, (void)Row;
  if (!SelectStatus) return;
  if (iMultiRowSelect)
    cmdMark_Click(0);
  else
    cmdSelect_Click();
}

void DataView::ColWidthChange(int32_t Col1, int32_t Col2) {
  SpreadSurface& s = mfgData;
  const int32_t keep = s.Col();
  for (int32_t c = std::min(Col1, Col2); c <= std::max(Col1, Col2); ++c) {
    step([&] {
      s.setCol(c);
      s.setColHidden(s.ColWidth(c) == 0);
    });
  }
  s.setCol(keep);
}

void DataView::LeaveCell(int32_t Col, int32_t Row, int32_t NewCol, int32_t NewRow, bool& Cancel) {
  (void)Col, (void)Row, (void)NewCol, (void)NewRow, (void)Cancel;
  raise(&DataViewEvents::SelChange);
}

void DataView::KeyPress(int16_t& KeyAscii) {
  if (KeyAscii == key::Space) {
    if (SelectStatus) cmdMark_Click(0);
    return;
  }
  // Incremental find: the next row whose text in the active column begins with the character.
  SpreadSurface& s = mfgData;
  step([&] {
    const int32_t row = dbHelper().FindRow(s, s.ActiveRow(), s.ActiveCol(), QString(QChar(char16_t(KeyAscii))), 10, 1);
    s.SetActiveCell(s.ActiveCol(), row);
  });
}

void DataView::KeyUp(int16_t& KeyCode, int16_t& Shift) {
  (void)Shift;
  if (KeyCode >= key::Left && KeyCode <= key::Down) raise(&DataViewEvents::SelChange);
}

// The right button on a heading flips the heading click between sort and sum.
void DataView::MouseDown(int16_t Button, int16_t Shift, double X, double Y) {
  (void)Shift;
  if (Button != int16_t(MouseButton::Right)) return;
  const SpreadSurface::Hit hit = mfgData.hitTest(X, Y);
  if (hit.area == SpreadSurface::Hit::ColumnHeader) clickMode_ = clickMode_ == 1 ? 0 : 1;
}

void DataView::MouseUp(int16_t Button, int16_t Shift, double X, double Y) {
  (void)Shift;
  if (Button != int16_t(MouseButton::Left)) return;
  const SpreadSurface::Hit hit = mfgData.hitTest(X, Y);
  if (hit.area != SpreadSurface::Hit::Cell && hit.area != SpreadSurface::Hit::ColumnHeader) return;
  dragSummary();
}

// The total of the dragged cells in the tooltip, with as many decimals as the most precise of them.
void DataView::dragSummary() {
  SpreadSurface& s = mfgData;
  int32_t r1 = s.SelBlockRow(), r2 = s.SelBlockRow2(), c1 = s.SelBlockCol(), c2 = s.SelBlockCol2();
  const bool wholeColumns = r1 == -1;
  if (!wholeColumns && r1 == r2 && c1 == c2) {
    step([&] { s.setToolTipText(helpHint_); });
    return;
  }
  if (wholeColumns) r1 = 1, r2 = s.MaxRows();
  if (c1 == -1) c1 = 1, c2 = s.MaxCols();
  if (r1 > r2) std::swap(r1, r2);
  if (c1 > c2) std::swap(c1, c2);
  double total = 0;
  int decimals = 0;
  for (int32_t r = r1; r <= r2; ++r) {
    for (int32_t c = c1; c <= c2; ++c) {
      const QString& text = s.cellText(c, r);
      const double v = helper().TextToDouble(text);
      if (v == 0) continue;
      total += v;
      const int32_t point = int32_t(helper().NumberText(text).indexOf(u'.'));
      decimals = std::max(decimals, point < 0 ? 0 : point);
    }
  }
  step([&] { s.setToolTipText(helper().NumberFormat(total, int16_t(decimals))); });
}

}  // namespace tq7
