// DataView: the query open, the fill of one page, the page moves.
#include "companion/DatabaseHelper.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"
#include "frame/Platform.h"
#include "view/DataView.h"

#include <QDate>
#include <QDateTime>
#include <cmath>

namespace tq7 {

namespace {

// A field's value as a number: a stored number as it is, a date as its serial, a text that holds
// a date in the form the engines write ("2024-01-31", with or without a time) as that date, any
// other text by the numeric conversion, which fails on a text that holds no number.
double numberOf(const QVariant& v) {
  switch (v.typeId()) {
    case QMetaType::QDate: return vb::dateToSerial(v.toDate());
    case QMetaType::QDateTime: return vb::dateTimeToSerial(v.toDateTime());
    case QMetaType::QString: {
      const QString s = v.toString();
      if (s.size() >= 10 && s[4] == u'-' && s[7] == u'-') {
        QDateTime dt = QDateTime::fromString(s.left(19), Qt::ISODate);
        if (dt.isValid()) return vb::dateTimeToSerial(dt);
        const QDate d = QDate::fromString(s.left(10), Qt::ISODate);
        if (d.isValid()) return vb::dateToSerial(d);
      }
      return vb::CDbl(s);
    }
    case QMetaType::Bool: return v.toBool() ? -1 : 0;
    default: return v.toDouble();
  }
}

// The position of a field by its name, case ignored; the first of a name wins. Throws when the
// result has no such field.
int32_t fieldPosition(db::Fields& fs, const QString& name) {
  fs.Item(name);
  for (int32_t k = 0; k < fs.Count(); ++k)
    if (fs.Item(k).Name().compare(name, Qt::CaseInsensitive) == 0) return k;
  return -1;
}

QString rawText(const QVariant& v) {
  if (v.typeId() == QMetaType::Double) return vb::shortestText(v.toDouble());
  return v.toString();
}

}  // namespace

// ---- The query open -----------------------------------------------------------------------------------------------

void DataView::openQuery() {
  // Dates stand between "#$" in the statement; the server sees single quotes, and only here.
  const QString sent = vb::Replace(selectText_, QStringLiteral("#$"), QStringLiteral("'"));
  try {
    if (!speedMode_) {
      Text1.setText(QStringLiteral("Loading Data Please wait..."));
      Text1.setVisible(true);
    }
    auto connection = std::make_unique<db::Connection>();
    connection->setCursorLocation(db::cursor::UseClient);
    connection->setCommandTimeout(0);
    connection->Open(iConnectionString, QString(), QString());
    auto rs = std::make_unique<db::Recordset>();
    try {
      rs->Open(sent, *connection, 3, 1, -1);
    } catch (...) {
      connection->Close();  // nothing of a failed open stays connected
      throw;
    }
    if (rs->State() == 0)
      throw Error{err::DbConnectionClosed, QStringLiteral("Operation is not allowed when the object is closed.")};
    rsid_ = std::move(rs);
    connection_ = std::move(connection);
    RecordCount = rsid_->RecordCount();
    raise(&DataViewEvents::RecordCountChange);
    if (PageSize == 0) PageSize = 100;
    if (PageSize < 100) PageSize = 100;  // the floor, whatever the application asked for
    VScroll1.setVisible(RecordCount > PageSize);
    rsid_->setPageSize(PageSize);
    layout();
    VScroll1.setMax(rsid_->PageCount());
    queryOpened_ = true;
    fill();
    Text1.setText(QString());
    if (!speedMode_) Text1.setVisible(false);
    ErrorNumber = 0;
  } catch (const Error& e) {
    queryFailed(e.number ? e.number : err::DbUnspecified, e.description, sent);
  } catch (const std::exception& e) {
    queryFailed(err::InvalidProcedureCall, QString::fromUtf8(e.what()), sent);
  }
}

void DataView::queryFailed(int32_t number, const QString& description, const QString& sent) {
  if (number == err::DbTimeout) {
    step([&] {
      Text1.setText(QStringLiteral("Timeout expired.") + u'\n' +
                    QStringLiteral("Your Server may busy or Configure expire time too small.") + u'\n' +
                    QStringLiteral("Try to REFRESH again, or contact your administrator."));
    });
    layout();
    setbuttons(false);
  } else {
    step([&] {
      Text1.setText(QStringLiteral("Query : ") + u'\n' + sent + u'\n' + QStringLiteral("Error:  ") + description);
    });
  }
  step([&] { Text1.setVisible(true); });
  ErrorNumber = number;
  platform().setMousePointer(MousePointer::Default);
}

// ---- The fill ----------------------------------------------------------------------------------------------------------

void DataView::DataRefresh() { fill(); }

void DataView::fill() {
  if (!queryOpened_) {
    raise(&DataViewEvents::ActionReady);
    return;
  }
  SpreadSurface& s = mfgData;
  if (!speedMode_) step([&] { s.setVisible(false); });
  const QStringList fields = vb::Split(iFieldList, QStringLiteral(","));
  const QStringList labels = vb::Split(iFieldLabelList, QStringLiteral(","));
  const QStringList widths = vb::Split(iFieldWidthList, QStringLiteral(","));
  const QStringList types = vb::Split(iFieldTypeList, QStringLiteral(","));
  const int32_t n = int32_t(std::min({fields.size(), labels.size(), widths.size(), types.size()})) - 1;
  step([&] { Matrix1_.Dimension(10, 100); });
  step([&] {
    s.setMaxCols(1);
    s.setMaxCols(n + 1);
  });
  step([&] {
    s.setMaxRows(1);
    int32_t rows = 1;
    if (PageSize <= RecordCount - firstRecord_)
      rows = PageSize;
    else if (RecordCount - firstRecord_ >= 1)
      rows = RecordCount - firstRecord_ + 1;
    s.setMaxRows(rows == 0 ? 1 : rows);
  });
  // The shrink to one row keeps that row: what a fill leaves of a mark goes with it too.
  step([&] { markRow(1, false); });
  step([&] {
    for (int32_t c = 1; c <= s.MaxCols(); ++c) s.setColWidth(c, 0);
    s.setColWidth(0, numberWidth_);
    s.setRow(-1);
    s.setCol(-1);
    s.setBackColor(0xFFFFFF);
  });
  db::Recordset* rs = rsid_.get();
  fillColumns_.resize(size_t(std::max(0, n + 1)));
  const int32_t keepCol = s.Col();
  for (int32_t i = 1; i <= n + 1; ++i) {
    FillColumn& fc = fillColumns_[size_t(i - 1)];
    fc = FillColumn{};
    const QString& label = labels[i - 1];
    const int32_t semi = int32_t(label.indexOf(u';'));
    const QString heading = semi < 0 ? label : label.left(semi);
    int16_t type = 0;
    step([&] { type = int16_t(vb::CLng(vb::Val(types[i - 1]))); });
    fc.type = type;
    double width = 0;
    step([&] { width = vb::Val(widths[i - 1]); });
    const int16_t align = (type == 1 || type == 2 || type == 5 || type == 7 || type == 8 || type == 9 ||
                           type == 14 || type == 15 || type == 16)
                              ? 6
                          : (type >= 1 && type <= 17) ? 3
                                                      : 0;
    step([&] { dbHelper().SetupColumn(s, heading, i, 3, align, width, type, 1); });
    step([&] { s.SetText(i, 0, heading); });
    step([&] {
      s.setCol(i);
      s.setColHidden(width == 0);
    });
    step([&] { s.setColWidth(i, width); });
    if (type == 13) fc.labels = vb::Split(label, QStringLiteral(";"));
    // The field is found once per fill; a name the result lacks leaves the column's cells empty.
    step([&] {
      if (type == 12)  // a year column reads the field at the ordinal its entry makes with the offset
        fc.field = int32_t(vb::CDbl(fields[i - 1])) + StandardHelper::YearOffset();
      else if (rs)
        fc.field = fieldPosition(rs->Fields(), fields[i - 1]);
    });
  }
  step([&] { s.setCol(keepCol); });
  int32_t total = 0;
  step([&] { total = rs ? rs->RecordCount() : 0; });
  if (total <= 0) {
    RecordCount = 0;
    const int32_t last = s.MaxRows();
    for (int32_t c = 1; c <= s.MaxCols(); ++c) {
      step([&] { Matrix1_.SetValue(last, c, 0); });
      step([&] { s.SetText(c, last, QString()); });
    }
  } else {
    dataLoaded_ = true;
    firstRecord_ = std::min(std::max(firstRecord_, 1), total);
    const int32_t cols = n + 1;
    for (int32_t p = firstRecord_; p <= firstRecord_ + PageSize - 1 && p <= total; ++p) {
      if (step([&] { rs->setAbsolutePosition(p); })) continue;
      const int32_t r = p - firstRecord_ + 1;
      if (listener_) listener_->BeforeFillRecord(r);
      const QString position = QString::number(p);
      for (int32_t c = 1; c <= cols; ++c) {
        step([&] { s.SetText(kPositionCol, r, position); });
        step([&] {
          const FillColumn& fc = fillColumns_[size_t(c - 1)];
          s.SetText(c, r, cellText(fc.type, fc.field, c));
        });
      }
      if (listener_) listener_->AfterFillRecord(r);
    }
  }
  step([&] {
    if (!TextResult.isEmpty()) s.setTopRow(std::max(1, s.ActiveRow() - 1));
  });
  step([&] { s.SetActiveCell(1, s.ActiveRow()); });
  setbuttons(true);
  if (!speedMode_) step([&] { s.setVisible(true); });
  raise(&DataViewEvents::ActionReady);
}

void DataView::blankEmptyDate(QString& text) const {
  const int32_t offset = StandardHelper::YearOffset();
  for (int32_t year : {8888, 3333, 1899}) {
    if (text.isEmpty()) return;
    if (text.contains(QString::number(offset + year))) text.clear();
  }
}

// The text of a field of the current record. A failure (no such field, a value that does not
// convert) leaves the cell empty.
QString DataView::cellText(int16_t type, int32_t field, int32_t col) {
  if (field < 0) throw Error{err::DbItemNotFound, QStringLiteral("Item cannot be found.")};
  db::Field& f = rsid_->Fields(field);
  double v = 0;
  QVariant value;
  if (!f.numberValue(v)) {
    value = f.Value();
    if (value.isNull()) return QString();
  }
  auto num = [&]() -> double { return value.isValid() ? numberOf(value) : v; };
  const StandardHelper& h = helper();
  switch (type) {
    case 1: return h.NumberFormat(num(), 2);
    case 2: return h.NumberFormat(num(), 0);
    case 3: return num() == 1 ? QStringLiteral("True") : QStringLiteral("False");
    case 4: {
      const double x = num();
      return x == 1 ? QStringLiteral("Yes") : x == 2 ? QStringLiteral("Reject") : QStringLiteral("No");
    }
    case 5: return h.NumberFormat(num(), 4);
    case 6:
    case 10:
    case 11: {
      const double d = num();
      if (type == 6 && d == 0) return QString();
      QString text = h.DateText(d);
      blankEmptyDate(text);
      if (text.isEmpty()) return text;
      if (type == 10) return text + u' ' + h.TimeText(d);
      if (type == 11) return h.TimeText(d);
      return text;
    }
    case 7: return h.NumberFormat(std::abs(num()), 0);
    case 8: return h.NumberFormat(std::abs(num()), 2);
    case 9: return h.NumberFormat(std::abs(num()), 4);
    case 12: return h.NumberFormat(num(), 0);
    case 13: {
      const QStringList& parts = fillColumns_[size_t(col - 1)].labels;
      const int32_t k = vb::CLng(num());
      if (k + 1 > int32_t(parts.size()) - 1) return value.isValid() ? rawText(value) : vb::shortestText(v);
      if (k + 1 < 0) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
      return parts[k + 1];
    }
    case 14: return h.NumberFormat(num(), 6);
    case 15: return h.NumberFormat(std::abs(num()), 6);
    case 16: return h.NumberFormat(std::abs(num()), 9);
    case 17: {
      QString text = h.PeriodText(num());
      blankEmptyDate(text);
      return text;
    }
    default: return value.isValid() ? rawText(value) : vb::shortestText(v);
  }
}

// ---- Page moves ------------------------------------------------------------------------------------------------------------

void DataView::VScroll1_Change() {
  firstRecord_ = std::max(1, (VScroll1.Value() - 1) * PageSize + 1);
  fill();
}

}  // namespace tq7
