// GridEditor: record and column mapping, cell values, the rendering of a value into its text,
// and the default values of a row.
#include "grid/editor/GridEditor.h"

#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "grid/FieldKind.h"

#include <cmath>

namespace tq7 {

GridEditor::ColumnCache* GridEditor::cacheOf(int32_t col) const {
  if (col < 0 || col > mfgData.MaxCols()) return nullptr;
  if (size_t(col) >= columnCache_.size()) columnCache_.resize(size_t(col) + 1);
  return &columnCache_[size_t(col)];
}

const QStringList& GridEditor::labelsOf(int32_t col, QStringList& scratch) const {
  const QString& text = attribute(attr::Labels, col);
  ColumnCache* c = cacheOf(col);
  if (!c) return scratch = vb::Split(text, QStringLiteral(","));
  if (!c->labelsKnown || c->labelsText != text) {
    c->labelsKnown = true;
    c->labelsText = text;
    c->labels = vb::Split(text, QStringLiteral(","));
  }
  return c->labels;
}

// ---- Mapping ------------------------------------------------------------------------------------

int32_t GridEditor::Record2Row(int32_t Record) const {
  const int32_t r = Record < 0 ? -Record : Record;
  return std::min(r, mfgData.MaxRows());
}

int32_t GridEditor::Column2Col(int32_t Column) const {
  const int32_t c = Column < 0 ? -Column : Column;
  return std::min(c, mfgData.MaxCols());
}

void GridEditor::setRecord(int32_t v) {
  step([&] { mfgData.SetActiveCell(mfgData.ActiveCol(), Record2Row(v)); });
}

void GridEditor::setColumn(int32_t v) {
  step([&] { mfgData.SetActiveCell(Column2Col(v), mfgData.ActiveRow()); });
}

// ---- Values ----------------------------------------------------------------------------------------

QString GridEditor::GETText(int32_t iRecord, int32_t iColumn) const {
  if (iRecord > mfgData.MaxRows() || iColumn > mfgData.MaxCols()) return {};
  return TextMatrix(iRecord, iColumn);
}

int16_t GridEditor::SetText(int32_t Record, int32_t Column, const QString& StringValue) {
  if (Column == 0 && Record <= mfgData.MaxRows()) {
    mfgData.SetText(0, Record, StringValue);
    return 1;
  }
  if (Record <= mfgData.MaxRows() && Column <= mfgData.MaxCols()) {
    setTextMatrix(Record, Column, StringValue);
    return 1;
  }
  return 0;
}

double GridEditor::GETValue(int32_t iRecord, int32_t iColumn) {
  double v = 0;
  step([&] {
    if (iRecord < 0 && iColumn <= mfgData.MaxCols())
      v = helper().TextToDouble(TextMatrix(iRecord, iColumn));  // the attribute rows, read as numbers
    else if (iRecord <= mfgData.MaxRows() && iColumn <= mfgData.MaxCols())
      v = Matrix1.GetValue(iRecord, iColumn);
  });
  return v;
}

int16_t GridEditor::SetValue(int32_t iRecord, int32_t iColumn, double Value) {
  if (iRecord > mfgData.MaxRows() || iColumn > mfgData.MaxCols()) return 0;
  int16_t status = 0;
  step([&] {
    const FieldKind kind = fieldKind(attribute(attr::FieldType, iColumn));
    double v = Value;
    const bool keep = kind == FieldKind::None || kind == FieldKind::Time || kind == FieldKind::Period ||
                      kind == FieldKind::Date || kind == FieldKind::DateTime || kind == FieldKind::Hour ||
                      kind == FieldKind::DayTime;
    if (!keep) v = helper().RoundTo(Value, helper().TextToInteger(attribute(attr::DisplayDecimal, iColumn)));
    status = Matrix1.SetValue(iRecord, iColumn, v);
  });
  return status;
}

// ---- Rendering ---------------------------------------------------------------------------------------

QString GridEditor::labelAt(int32_t col, double position) const {
  QStringList scratch;
  const QStringList& labels = labelsOf(col, scratch);
  if (labels.isEmpty()) return {};
  const double p = std::abs(position);
  const qsizetype i = p >= double(labels.size()) ? labels.size() - 1 : qsizetype(vb::CLng(p));
  return labels.value(std::min(i, labels.size() - 1));
}

void GridEditor::showCheckCell(int32_t row, int32_t col, double value) {
  const int32_t keepRow = mfgData.Row(), keepCol = mfgData.Col();
  mfgData.setRow(row);
  mfgData.setCol(col);
  mfgData.setCellType(celltype::CheckBox);
  mfgData.setTypeCheckText(QString());
  mfgData.setTypeHAlign(2);
  mfgData.setValue(value);
  mfgData.setRow(keepRow);
  mfgData.setCol(keepCol);
}

// A date whose text holds one of three fixed years stands for "no date" and shows empty.
void GridEditor::emptyDateTest(int32_t row, int32_t col) {
  static int32_t offset = -1;
  static QString years[3];
  const int32_t y = StandardHelper::YearOffset();
  if (y != offset) {
    offset = y;
    years[0] = QString::number(y + 8888);
    years[1] = QString::number(y + 3333);
    years[2] = QString::number(y + 1899);
  }
  for (const QString& year : years) {
    if (vb::InStr(mfgData.cellText(col, row), year) > 0) mfgData.SetText(col, row, QString());
  }
}

void GridEditor::CellDataChange(int32_t& Row, int32_t& Column) {
  if (Row > mfgData.MaxRows()) return;
  const int32_t row = Row, col = Column;
  const int32_t keepRow = mfgData.Row(), keepCol = mfgData.Col();
  step([&] {
    const FieldKind kind = fieldKind(attribute(attr::FieldType, col));
    const double v = Matrix1.GetValue(row, col);
    const bool zero = v == 0 && !showZeroValueText_;
    StandardHelper& h = helper();
    auto text = [&](const QString& t) { mfgData.SetText(col, row, t); };
    switch (kind) {
      case FieldKind::Check: showCheckCell(row, col, v); break;
      case FieldKind::YesNo: text(v == 1 ? QStringLiteral("Y") : QStringLiteral("N")); break;
      case FieldKind::Period:
        text(v == 0 ? QString() : h.PeriodText(v));
        emptyDateTest(row, col);
        break;
      case FieldKind::Date:
        text(v == 0 ? QString() : h.DateText(v, 0, true));
        emptyDateTest(row, col);
        break;
      case FieldKind::DateTime:
        text(v == 0 ? QString() : h.DateText(v, 0, false) + QLatin1Char(' ') + h.TimeText(v));
        break;
      case FieldKind::Time: text(zero ? QString() : h.TimeText(v)); break;
      case FieldKind::LabelList:
        if (!attribute(attr::Labels, col).isEmpty()) text(labelAt(col, v));
        break;
      case FieldKind::Hour: text(v == 0 ? QString() : h.HourText(v)); break;
      case FieldKind::DayTime: text(v == 0 ? QString() : h.DayTimeText(v)); break;
      case FieldKind::Year: text(v == 0 ? QString() : vb::formatNumber(v + StandardHelper::YearOffset(), 0, false)); break;
      default:
        // Any other type shows the number, TEXT included: a value written to a TEXT column
        // replaces its text.
        text(zero ? QString() : h.NumberFormat(v, h.TextToInteger(attribute(attr::DisplayDecimal, col))));
        break;
    }
  });
  mfgData.setRow(keepRow);
  mfgData.setCol(keepCol);
  raise(&GridEditorEvents::GridDataChange);
}

// ---- Defaults of a row ----------------------------------------------------------------------------------

void GridEditor::FillINI() { FillINI2(); }

void GridEditor::FillINI2(std::optional<int32_t> iRow) {
  SpreadSurface& s = mfgData;
  int32_t row = iRow.value_or(0);
  if (row < 1 || row > s.MaxRows()) row = s.MaxRows();
  if (enableNumber_) step([&] { dbHelper().NumberRows(s, 1, -1, 0, 0, 0, 1); });
  s.setRow(row);
  s.setRow2(row);
  StandardHelper& h = helper();
  for (int32_t col = 1; col <= s.MaxCols(); ++col) {
    step([&] {
      s.setCol(col);
      // The alignment rows are read for every new row; their numbers are parsed once per text.
      const QString& hText = attribute(attr::HAlign, col);
      const QString& vText = attribute(attr::VAlign, col);
      ColumnCache* c = cacheOf(col);
      if (!c->alignKnown || c->hText != hText || c->vText != vText) {
        c->alignKnown = true;
        c->hText = hText;
        c->vText = vText;
        c->h = h.TextToInteger(hText);
        c->v = h.TextToInteger(vText);
      }
      s.setTypeHAlign(c->h);
      s.setTypeVAlign(c->v);
      s.setCellNote(QString());
      s.setBackColor(syscolor::Window);
      s.setForeColor(syscolor::WindowText);
    });
    const FieldKind kind = fieldKind(attribute(attr::FieldType, col));
    if (kind == FieldKind::None) continue;
    step([&] {
      auto defaultValue = [&] { return h.TextToDouble(attribute(attr::DefaultValue, col)); };
      auto text = [&](const QString& t) { s.SetText(col, row, t); };
      switch (kind) {
        case FieldKind::AutoNumber:
          SetValue(row, col, row);
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::AbsNumber:
          Matrix1.SetValue(row, col, std::abs(defaultValue()));
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::Number:
        case FieldKind::Year:
          Matrix1.SetValue(row, col, defaultValue());
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::Text: text(attribute(attr::DefaultText, col)); break;
        case FieldKind::Check:
          showCheckCell(row, col, 0);
          Matrix1.SetValue(row, col, defaultValue());
          break;
        case FieldKind::YesNo: Matrix1.SetValue(row, col, defaultValue()); break;
        case FieldKind::Period:
        case FieldKind::Date: {
          const double v = defaultValue();
          Matrix1.SetValue(row, col, v);
          if (v == 0)
            text(QString());
          else
            text(kind == FieldKind::Period ? h.PeriodText(v) : h.DateText(v, 0, false));
          emptyDateTest(row, col);
          break;
        }
        case FieldKind::DateTime: {
          double v = defaultValue();
          if (v == 0) v = platform().now();
          Matrix1.SetValue(row, col, v);
          text(h.DateText(v, 0, false) + QLatin1Char(' ') + h.TimeText(v));
          break;
        }
        case FieldKind::Time:
        case FieldKind::Hour: {
          const double v = defaultValue();
          Matrix1.SetValue(row, col, v);
          text(h.TimeText(v));
          break;
        }
        case FieldKind::DayTime: {
          const double v = defaultValue();
          Matrix1.SetValue(row, col, v);
          text(h.DayTimeText(v));
          break;
        }
        case FieldKind::LabelList: {
          const int16_t position = h.TextToInteger(attribute(attr::DefaultValue, col));
          Matrix1.SetValue(row, col, std::abs(double(position)));
          if (!attribute(attr::Labels, col).isEmpty()) text(labelAt(col, position));
          break;
        }
        default: break;
      }
    });
  }
}

}  // namespace tq7

namespace tq7 {

// ---- Active records ---------------------------------------------------------------------------------------

int32_t GridEditor::RecordActiveCount() const {
  int32_t n = 0;
  for (int32_t r = 1; r <= mfgData.MaxRows(); ++r)
    if (mfgData.GetText(attr::RecordState, r) != QLatin1String("D")) ++n;
  return n;
}

int32_t GridEditor::Record2RecordActive(int32_t iRecord) const {
  int32_t n = 0;
  const int32_t last = Record2Row(iRecord);
  for (int32_t r = 1; r <= last; ++r)
    if (mfgData.GetText(attr::RecordState, r) != QLatin1String("D")) ++n;
  return n;
}

// Counts up to the surface's pointer row, which inside a block operation is not the active row.
int32_t GridEditor::RecordActive() const {
  int32_t n = 0;
  for (int32_t r = 1; r <= std::min(mfgData.Row(), mfgData.MaxRows()); ++r)
    if (mfgData.GetText(attr::RecordState, r) != QLatin1String("D")) ++n;
  return n;
}

int32_t GridEditor::NextActiveRecord(int32_t BaseRecord) const {
  for (int32_t r = BaseRecord + 1; r <= mfgData.MaxRows(); ++r)
    if (!isRowWasMarkDeleted(r)) return r;
  return 0;
}

int32_t GridEditor::PreviousActiveRecord(int32_t BaseRecord) const {
  for (int32_t r = std::min(BaseRecord - 1, mfgData.MaxRows()); r >= 1; --r)
    if (!isRowWasMarkDeleted(r)) return r;
  return 0;
}

// ---- Reading by name and as dates ---------------------------------------------------------------------------

// Every match reads the grid's active column, not the column found: callers stand on the wanted
// column first, and the walk goes on to the end.
QString GridEditor::GETTextByColumnName(int32_t Record, const QString& ColumnName) const {
  QString result;
  for (int32_t c = 1; c <= mfgData.MaxCols(); ++c)
    if (attribute(attr::FieldName, c).compare(ColumnName, Qt::CaseInsensitive) == 0)
      result = TextMatrix(Record, mfgData.ActiveCol());
  return result;
}

double GridEditor::GETDate2(int32_t Record, int32_t Column) {
  if (Record > mfgData.MaxRows() || Column > mfgData.MaxCols()) return 0;
  return Matrix1.GetValue(Record, Column);
}

}  // namespace tq7
