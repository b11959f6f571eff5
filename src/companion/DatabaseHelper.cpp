#include "companion/DatabaseHelper.h"

#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "companion/db/Provider.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/GridSurface.h"
#include "frame/Platform.h"

#include <QDate>
#include <QDateTime>
#include <algorithm>
#include <cmath>

namespace tq7 {

namespace {

// A connection for one task, with the client cursor the helpers always ask for.
struct TaskConnection {
  db::Connection c;
  explicit TaskConnection(const QString& connectionString) {
    c.setCursorLocation(db::cursor::UseClient);
    c.Open(connectionString, QString(), QString(), -1);
  }
};

QString literal(const QVariant& v) {
  if (v.isNull() || !v.isValid()) return QStringLiteral("NULL");
  switch (v.typeId()) {
    case QMetaType::Bool: return v.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
    case QMetaType::Short: case QMetaType::UShort: case QMetaType::Long: case QMetaType::ULong:
      return QString::number(v.toLongLong());
    case QMetaType::Double: case QMetaType::Float: {
      const double d = v.toDouble();
      if (std::isfinite(d) && d == std::trunc(d) && std::fabs(d) < 1e15) return QString::number(qint64(d));
      return QString::number(d, 'g', 17);
    }
    case QMetaType::QDate:
      return QLatin1Char('\'') + v.toDate().toString(QStringLiteral("yyyy-MM-dd")) + QLatin1Char('\'');
    case QMetaType::QDateTime:
      return QLatin1Char('\'') + v.toDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")) + QLatin1Char('\'');
    default: return QLatin1Char('\'') + DatabaseHelper::SqlText(v.toString()) + QLatin1Char('\'');
  }
}

// A name from the catalog, quoted the way the engine quotes names.
QString catalogName(const db::Connection& c, const QString& name) {
  if (c.providerName() == QLatin1String("MySQL")) return QLatin1Char('`') + name + QLatin1Char('`');
  return db::quoteIdentifier(name);
}

bool sameName(const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) == 0; }

// The last part of a schema-qualified name.
QString bareName(const QString& name) {
  const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
  return dot < 0 ? name : name.mid(dot + 1);
}

bool anyRow(db::Connection& c, const QString& sql) {
  db::Recordset rs;
  rs.Open(sql, c, 3, 1, -1);
  return rs.State() == db::state::Open && !rs.EOF_();
}

// Puts the sheet's pointer back however the chore ends.
struct PointerKeeper {
  GridSurface& s;
  int32_t row, col, row2, col2;
  bool block;
  explicit PointerKeeper(GridSurface& g)
      : s(g), row(g.Row()), col(g.Col()), row2(g.Row2()), col2(g.Col2()), block(g.BlockMode()) {}
  ~PointerKeeper() {
    s.setBlockMode(block);
    s.setRow(row);
    s.setCol(col);
    s.setRow2(row2);
    s.setCol2(col2);
  }
};

int16_t horizontalOf(int16_t gridAlign) {
  if (gridAlign >= 3 && gridAlign <= 5) return 2;
  if (gridAlign >= 6 && gridAlign <= 8) return 1;
  return 0;
}

}  // namespace

QString DatabaseHelper::SqlText(const QString& Text) {
  return vb::Replace(Text, QStringLiteral("'"), QStringLiteral("''"));
}

QString DatabaseHelper::CheckReferences(const QVariant& KeyValue, const QString& ConnectionString,
                                        const QString& KeyFieldName, const QString& TableName) {
  TaskConnection t(ConnectionString);
  for (const db::ForeignKey& k : t.c.foreignKeys()) {
    if (!sameName(k.refColumn, KeyFieldName)) continue;
    if (!TableName.isEmpty() && !sameName(k.refTable, bareName(TableName))) continue;
    const QString column = catalogName(t.c, k.column);
    const QString sql = QStringLiteral("SELECT  TOP 1 %1 FROM %2 WHERE %1=%3")
                            .arg(column, catalogName(t.c, k.table), literal(KeyValue));
    if (anyRow(t.c, sql)) return k.table;
  }
  return {};
}

void DatabaseHelper::CheckReferencedMessage(const QString& ReferenceList, const QVariant& KeyValue,
                                            const QString& KeyFieldName, QString& Message,
                                            const QString& ConnectionString) {
  QString list = ReferenceList;
  list.replace(QLatin1Char(';'), QLatin1Char(','));
  const QStringList tables = vb::Split(list, QStringLiteral(","));
  if (tables.isEmpty()) return;
  TaskConnection t(ConnectionString);
  for (const QString& raw : tables) {
    const QString table = vb::Trim(raw);
    if (table.isEmpty()) continue;
    const QString sql =
        QStringLiteral("SELECT  TOP 1 %1 FROM %2 WHERE %1=%3").arg(KeyFieldName, table, literal(KeyValue));
    if (anyRow(t.c, sql)) {
      Message += table;
      return;
    }
  }
}

QString DatabaseHelper::LookupValue(const QString& Filter, int32_t A1, int32_t A2, const QString& ResultField,
                                    const QVariant& Value, const QString& KeyField, const QString& TableName,
                                    const QString& ConnectionString) {
  (void)A1, (void)A2;
  QString answer;
  step([&] {
    TaskConnection t(ConnectionString);
    QString sql = QStringLiteral("SELECT %1 FROM %2 WHERE %3=%4").arg(ResultField, TableName, KeyField, literal(Value));
    if (!vb::Trim(Filter).isEmpty()) sql += QStringLiteral(" AND (%1)").arg(Filter);
    db::Recordset rs;
    rs.Open(sql, t.c, 3, 1, -1);
    if (rs.State() == db::state::Open && !rs.EOF_()) answer = rs.Fields(0).Value().toString();
  });
  return answer;
}

int16_t DatabaseHelper::TableExists(const QString& TableName, const QString& ConnectionString, int16_t Mode) {
  (void)Mode;
  int16_t found = 0;
  step([&] {
    TaskConnection t(ConnectionString);
    const QString wanted = bareName(vb::Trim(TableName));
    for (const QString& name : t.c.tables())
      if (sameName(bareName(name), wanted)) found = 1;
  });
  return found;
}

int16_t DatabaseHelper::FieldExists(const QString& FieldName, const QString& TableName,
                                    const QString& ConnectionString, int16_t Mode) {
  (void)Mode;
  const QString field = vb::Trim(FieldName).toLower();
  const QString table = vb::Trim(TableName);
  const QString key = ConnectionString + QChar(0x1F) + table.toLower();
  if (columnsSeen_.value(key).contains(field)) return 1;
  int16_t found = 0;
  step([&] {
    TaskConnection t(ConnectionString);
    QStringList columns;
    for (const QString& name : t.c.columns(table)) columns << name.toLower();
    if (!columns.isEmpty()) columnsSeen_.insert(key, columns);
    if (columns.contains(field)) found = 1;
  });
  return found;
}

int32_t DatabaseHelper::FindRow(GridSurface& Surface, int32_t Row, int32_t Col, const QString& Text, int16_t Mode,
                                int16_t Flag) {
  (void)Mode, (void)Flag;
  QString find = Text;
  if (find.isEmpty()) {
    const bool thai = LanguageID == 0;
    find = platform().inputBox(thai ? QStringLiteral("พิมพ์ข้อความที่ต้องการค้นหา") : QStringLiteral("Enter the text to find"),
                               thai ? QStringLiteral("ค้นหา") : QStringLiteral("Find"), lastFind_);
    if (find.isEmpty()) return Row;
    lastFind_ = find;
  }
  const int32_t rows = Surface.MaxRows();
  if (rows < 1) return Row;
  const int32_t start = std::clamp(Row, 0, rows);
  for (int32_t i = 1; i <= rows; ++i) {
    const int32_t r = (start + i - 1) % rows + 1;
    if (Surface.RowHeight(r) <= 0) continue;
    if (Surface.GetText(Col, r).startsWith(find, Qt::CaseInsensitive)) return r;
  }
  return Row;
}

void DatabaseHelper::SetupColumn(GridSurface& Surface, const QString& Heading, int32_t Col, int16_t HeadingAlign,
                                 int16_t Alignment, double Width, int16_t FieldType, int16_t Flag) {
  (void)FieldType, (void)Flag;
  PointerKeeper keep(Surface);
  Surface.setBlockMode(false);
  Surface.setCol(Col);
  Surface.setRow(-1);
  Surface.setCellType(celltype::StaticText);
  Surface.setTypeHAlign(Alignment == 6 ? 1 : 0);
  Surface.setLock(true);
  Surface.setColWidth(Col, Width);
  Surface.SetText(Col, 0, Heading);
  if (HeadingAlign != 9) {
    Surface.setRow(0);
    Surface.setTypeHAlign(horizontalOf(HeadingAlign));
  }
}

void DatabaseHelper::FillBlock(GridSurface& Surface, const QVariant& BackColor, const QVariant& ForeColor,
                               int32_t Row1, int32_t Col1, int32_t Row2, int32_t Col2, int16_t FillHeight,
                               int16_t SkipHeight, const QString& ColumnList, int16_t Flag) {
  (void)Flag;
  const bool back = BackColor.isValid() && !BackColor.isNull();
  const bool fore = ForeColor.isValid() && !ForeColor.isNull();
  const Colour backColour = back ? Colour(uint32_t(BackColor.toLongLong())) : 0;
  const Colour foreColour = fore ? Colour(uint32_t(ForeColor.toLongLong())) : 0;
  if (Row1 > Row2) std::swap(Row1, Row2);
  if (Col1 > Col2) std::swap(Col1, Col2);

  // Column spans to colour: the whole width, or the listed columns that lie inside it.
  std::vector<std::pair<int32_t, int32_t>> spans;
  if (vb::Trim(ColumnList).isEmpty()) {
    spans.emplace_back(Col1, Col2);
  } else {
    QString list = ColumnList;
    list.replace(QLatin1Char(';'), QLatin1Char(','));
    for (const QString& part : vb::Split(list, QStringLiteral(","))) {
      if (vb::Trim(part).isEmpty()) continue;
      const int32_t c = int32_t(vb::Val(part));
      if (c >= Col1 && c <= Col2) spans.emplace_back(c, c);
    }
  }
  // Row bands: the whole height, or stripes.
  std::vector<std::pair<int32_t, int32_t>> bands;
  if (FillHeight > 0) {
    const int32_t stride = int32_t(FillHeight) + std::max<int32_t>(SkipHeight, 0);
    for (int64_t r = Row1; r <= Row2; r += stride)
      bands.emplace_back(int32_t(r), int32_t(std::min<int64_t>(r + FillHeight - 1, Row2)));
  } else {
    bands.emplace_back(Row1, Row2);
  }

  PointerKeeper keep(Surface);
  for (const auto& [ra, rb] : bands) {
    for (const auto& [ca, cb] : spans) {
      Surface.setRow(ra);
      Surface.setCol(ca);
      Surface.setRow2(rb);
      Surface.setCol2(cb);
      Surface.setBlockMode(true);
      if (back) Surface.setBackColor(backColour);
      if (fore) Surface.setForeColor(foreColour);
      Surface.setBlockMode(false);
    }
  }
}

void DatabaseHelper::SetupGrid(GridSurface& Surface, int16_t Flag) {
  (void)Flag;
  PointerKeeper keep(Surface);
  Surface.setGridShowHoriz(true);
  Surface.setGridShowVert(true);
  Surface.setBlockMode(false);
  Surface.setCol(0);
  Surface.setRow(-1);
  Surface.setTypeHAlign(2);
}

void DatabaseHelper::NumberRows(GridSurface& Surface, int16_t A1, int32_t A2, int32_t A3, int32_t A4, int32_t A5,
                                int16_t A6) {
  (void)A1, (void)A2, (void)A3, (void)A4, (void)A5, (void)A6;
  const int32_t rows = Surface.MaxRows();
  int32_t from = std::max(Surface.rowLayoutDirtyFrom(), 1);
  int32_t n = 0;
  auto lastShownAbove = [&](int32_t r) {
    while (r >= 1 && Surface.RowHeight(r) <= 0) --r;
    return r;
  };
  if (from > rows) {
    // No row changed its layout. The numbers may still have been wiped (numbering switched off
    // and on again): the last shown row tells.
    const int32_t r = lastShownAbove(rows);
    bool ok = false;
    if (r < 1 || Surface.GetText(0, r).toInt(&ok) > 0) {
      Surface.clearRowLayoutDirty();
      return;
    }
    from = 1;
  } else if (from > 1) {
    // Go on from the number of the nearest shown row above; if that is not a number (someone
    // emptied the column), number everything again.
    const int32_t r = lastShownAbove(from - 1);
    if (r >= 1) {
      bool ok = false;
      n = Surface.GetText(0, r).toInt(&ok);
      if (!ok || n < 1) from = 1, n = 0;
    }
  }
  for (int32_t r = from; r <= rows; ++r)
    Surface.SetText(0, r, Surface.RowHeight(r) > 0 ? QString::number(++n) : QString());
  Surface.clearRowLayoutDirty();
}

}  // namespace tq7
