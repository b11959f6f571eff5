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
#include <cstring>

namespace tq7 {

void GridEditor::renewColumnCache() const {
  columnCache_.assign(size_t(mfgData.MaxCols()) + 1, ColumnCache{});
  cacheEdits_ = mfgData.headerTextEdits();
  plainRunEnd_.clear();
  nextNamed_.clear();
}

int32_t GridEditor::nextNamedColumn(int32_t col) const {
  const int32_t last = mfgData.MaxCols();
  if (!cacheOf(col)) return last + 1;
  if (nextNamed_.empty()) {
    nextNamed_.assign(size_t(last) + 1, last + 1);
    for (int32_t c = last; c >= 1; --c) nextNamed_[size_t(c) - 1] = factsOf(c).named ? c : nextNamed_[size_t(c)];
  }
  return nextNamed_[size_t(col)];
}

int32_t GridEditor::plainRunEnd(int32_t col) const {
  if (!cacheOf(col)) return 0;
  if (plainRunEnd_.empty()) {
    const int32_t last = mfgData.MaxCols();
    plainRunEnd_.assign(size_t(last) + 2, 0);
    plainLooks_.assign(size_t(last) + 1, {});
    for (int32_t c = last; c >= 1; --c) {
      const ColumnFacts f = factsOf(c);
      if (f.kind != FieldKind::None || !f.alignOk) continue;
      plainLooks_[size_t(c)] = {f.h, f.v};
      plainRunEnd_[size_t(c)] = plainRunEnd_[size_t(c) + 1] ? plainRunEnd_[size_t(c) + 1] : c;
    }
  }
  return plainRunEnd_[size_t(col)];
}

int16_t GridEditor::decimalsOf(const ColumnFacts& f, int32_t col) const {
  return f.decimalsOk ? f.displayDecimal : helper().TextToInteger(attribute(attr::DisplayDecimal, col));
}

GridEditor::ColumnFacts GridEditor::readFacts(int32_t col) const {
  const StandardHelper& h = helper();
  auto whole = [&](int32_t row, int16_t& out) {
    try {
      out = h.TextToInteger(attribute(row, col));
      return true;
    } catch (const Error&) {
      return false;
    }
  };
  ColumnFacts f;
  f.kind = fieldKind(attribute(attr::FieldType, col));
  f.named = !attribute(attr::FieldName, col).isEmpty();
  f.primaryKey = attribute(attr::PrimaryKey, col) == QLatin1String("1");
  f.alignOk = whole(attr::HAlign, f.h) && whole(attr::VAlign, f.v);
  f.decimalsOk = whole(attr::DisplayDecimal, f.displayDecimal);
  f.positionOk = whole(attr::DefaultValue, f.defaultPosition);
  f.defaultValue = h.TextToDouble(attribute(attr::DefaultValue, col));
  return f;
}

const QStringList& GridEditor::labelsOf(int32_t col, QStringList& scratch) const {
  ColumnCache* c = cacheOf(col);
  if (!c) return scratch = vb::Split(attribute(attr::Labels, col), QStringLiteral(","));
  if (!c->labelsKnown) {
    c->labelsKnown = true;
    c->labels = vb::Split(attribute(attr::Labels, col), QStringLiteral(","));
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

const QString& GridEditor::shown(Form form, double v, int16_t arg) const {
  constexpr int kSlotBits = 12;  // 4096 slots
  if (shownTexts_.empty()) shownTexts_.resize(size_t(1) << kSlotBits);
  uint64_t bits = 0;
  std::memcpy(&bits, &v, sizeof bits);
  const int16_t yearOffset = StandardHelper::YearOffset();
  const uint64_t key = (bits ^ (uint64_t(form) << 56) ^ (uint64_t(uint16_t(arg)) << 40)) * 0x9E3779B97F4A7C15ull;
  ShownText& e = shownTexts_[size_t(key >> (64 - kSlotBits))];
  if (e.used && e.bits == bits && e.form == form && e.arg == arg && e.yearOffset == yearOffset) return e.text;
  const StandardHelper& h = helper();
  switch (form) {
    case Form::Number: e.text = h.NumberFormat(v, arg); break;
    case Form::Date: e.text = h.DateText(v, 0, arg != 0); break;
    case Form::Period: e.text = h.PeriodText(v); break;
    case Form::DateTime: e.text = h.DateText(v, 0, arg != 0) + QLatin1Char(' ') + h.TimeText(v); break;
    case Form::Time: e.text = h.TimeText(v); break;
    case Form::Hour: e.text = h.HourText(v); break;
    case Form::DayTime: e.text = h.DayTimeText(v); break;
    case Form::Year: e.text = vb::formatNumber(v + yearOffset, 0, false); break;
  }
  e.used = true;
  e.bits = bits;
  e.form = form;
  e.arg = arg;
  e.yearOffset = yearOffset;
  return e.text;
}

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
  const QString& text = mfgData.cellText(col, row);
  if (text.isEmpty()) return;
  // Answers are kept with the texts they were given for, by where the text lies: a date's text is
  // shared by every cell that shows that date, so it is tested once. Holding the text keeps it
  // unchanged and its place its own.
  constexpr size_t kSlots = 256;  // a power of two
  if (testedDates_.empty()) testedDates_.resize(kSlots);
  TestedDate& t = testedDates_[(reinterpret_cast<uintptr_t>(text.constData()) >> 4) & (kSlots - 1)];
  if (text.constData() != t.text.constData() || text.size() != t.text.size() || t.yearOffset != y) {
    t.text = text;
    t.yearOffset = y;
    t.empty = false;
    for (const QString& year : years) t.empty = t.empty || vb::InStr(text, year) > 0;
  }
  if (t.empty) mfgData.SetText(col, row, QString());
}

void GridEditor::CellDataChange(int32_t& Row, int32_t& Column) {
  if (Row > mfgData.MaxRows()) return;
  const int32_t row = Row, col = Column;
  const int32_t keepRow = mfgData.Row(), keepCol = mfgData.Col();
  step([&] {
    const ColumnFacts f = factsOf(col);
    const FieldKind kind = f.kind;
    const double v = Matrix1.GetValue(row, col);
    const bool zero = v == 0 && !showZeroValueText_;
    auto text = [&](const QString& t) { mfgData.SetText(col, row, t); };
    switch (kind) {
      case FieldKind::Check: showCheckCell(row, col, v); break;
      case FieldKind::YesNo: text(v == 1 ? QStringLiteral("Y") : QStringLiteral("N")); break;
      case FieldKind::Period:
        text(v == 0 ? noText() : shown(Form::Period, v));
        emptyDateTest(row, col);
        break;
      case FieldKind::Date:
        text(v == 0 ? noText() : shown(Form::Date, v, true));
        emptyDateTest(row, col);
        break;
      case FieldKind::DateTime:
        text(v == 0 ? noText() : shown(Form::DateTime, v, false));
        break;
      case FieldKind::Time: text(zero ? noText() : shown(Form::Time, v)); break;
      case FieldKind::LabelList:
        if (!attribute(attr::Labels, col).isEmpty()) text(labelAt(col, v));
        break;
      case FieldKind::Hour: text(v == 0 ? noText() : shown(Form::Hour, v)); break;
      case FieldKind::DayTime: text(v == 0 ? noText() : shown(Form::DayTime, v)); break;
      case FieldKind::Year: text(v == 0 ? noText() : shown(Form::Year, v)); break;
      default:
        // Any other type shows the number, TEXT included: a value written to a TEXT column
        // replaces its text.
        text(zero ? noText() : shown(Form::Number, v, decimalsOf(f, col)));
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
  if (enableNumber_) numberRows();
  s.setRow(row);
  s.setRow2(row);
  StandardHelper& h = helper();
  for (int32_t col = 1; col <= s.MaxCols(); ++col) {
    if (const int32_t end = plainRunEnd(col)) {
      s.writeRowLooks(col, &plainLooks_[size_t(col)], end - col + 1);
      col = end;
      continue;
    }
    const ColumnFacts f = factsOf(col);
    step([&] {
      s.setCol(col);
      if (f.alignOk) {
        s.setTypeHAlign(f.h);
        s.setTypeVAlign(f.v);
      } else {
        s.setTypeHAlign(h.TextToInteger(attribute(attr::HAlign, col)));
        s.setTypeVAlign(h.TextToInteger(attribute(attr::VAlign, col)));
      }
      s.setCellNote(QString());
      s.setBackColor(syscolor::Window);
      s.setForeColor(syscolor::WindowText);
    });
    const FieldKind kind = f.kind;
    if (kind == FieldKind::None) continue;
    step([&] {
      const double defaultValue = f.defaultValue;
      auto text = [&](const QString& t) { s.SetText(col, row, t); };
      switch (kind) {
        case FieldKind::AutoNumber:
          SetValue(row, col, row);
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::AbsNumber:
          Matrix1.SetValue(row, col, std::abs(defaultValue));
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::Number:
        case FieldKind::Year:
          Matrix1.SetValue(row, col, defaultValue);
          locks().SetValue(row, col, 0);
          break;
        case FieldKind::Text: text(attribute(attr::DefaultText, col)); break;
        case FieldKind::Check:
          showCheckCell(row, col, 0);
          Matrix1.SetValue(row, col, defaultValue);
          break;
        case FieldKind::YesNo: Matrix1.SetValue(row, col, defaultValue); break;
        case FieldKind::Period:
        case FieldKind::Date: {
          const double v = defaultValue;
          Matrix1.SetValue(row, col, v);
          if (v == 0)
            text(QString());
          else
            text(kind == FieldKind::Period ? shown(Form::Period, v) : shown(Form::Date, v, false));
          emptyDateTest(row, col);
          break;
        }
        case FieldKind::DateTime: {
          double v = defaultValue;
          if (v == 0) v = platform().now();
          Matrix1.SetValue(row, col, v);
          text(shown(Form::DateTime, v, false));
          break;
        }
        case FieldKind::Time:
        case FieldKind::Hour: {
          const double v = defaultValue;
          Matrix1.SetValue(row, col, v);
          text(shown(Form::Time, v));
          break;
        }
        case FieldKind::DayTime: {
          const double v = defaultValue;
          Matrix1.SetValue(row, col, v);
          text(shown(Form::DayTime, v));
          break;
        }
        case FieldKind::LabelList: {
          const int16_t position = f.positionOk ? f.defaultPosition : h.TextToInteger(attribute(attr::DefaultValue, col));
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
  double date = 0;  // the zero date, kept when the value names no date
  step([&] { date = vb::CDate(Matrix1.GetValue(Record, Column)); });
  return date;
}

}  // namespace tq7
