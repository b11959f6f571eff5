// Saving the invoice page, as an application does it: ask the grid whether each record may be
// saved, word the refusal, and otherwise write the records back to the table by their state.
#include "Pages.h"

#include "companion/DatabaseHelper.h"
#include "companion/db/Connection.h"
#include "grid/editor/GridEditor.h"

namespace gallery {

namespace {

// A cell as an SQL literal: the value for numeric columns, the quoted text for texts.
QString literal(tq7::GridEditor& g, int32_t record, int32_t column, bool text) {
  if (text) return QLatin1Char('\'') + tq7::DatabaseHelper::SqlText(g.GETText(record, column)) + QLatin1Char('\'');
  return QString::number(g.GETValue(record, column), 'g', 17);
}

}  // namespace

QString saveInvoice(tq7::GridEditor& g, const QString& connection, const QString& invoiceNo) {
  // The required columns of the confirmed records first, in the grid's own words.
  const QString missing = g.CheckData();
  if (!missing.isEmpty()) return missing;
  int32_t live = 0;
  for (int32_t r = 1; r <= g.Rows(); ++r) {
    const QString state = g.TextMatrix(r, -988);
    if (state != QLatin1String("E")) continue;
    ++live;
    // -1 is a complete record whose key is still blank: a new line, which the table numbers itself.
    const int16_t status = g.CheckRecordStatus(r);
    if (status == -2 || status == -3) {
      // Name the first required column of the record that is empty, and put the cursor there.
      int32_t column = 2;
      for (int32_t c = 1; c <= 10; ++c)
        if (g.TextMatrix(-982, c) != QLatin1String("1") && g.GETText(r, c).isEmpty() && !g.TextMatrix(-988, c).isEmpty()) {
          column = c;
          break;
        }
      return g.GETErrorMessage(r, column, g.Rows());
    }
  }
  if (live == 0 && g.RecordActiveCount() == 0) return g.GETErrorMessage(0, 0, 0);

  tq7::db::Connection db;
  db.Open(connection);
  int written = 0, removed = 0;
  for (int32_t r = 1; r <= g.Rows(); ++r) {
    const QString state = g.TextMatrix(r, -988);
    const QString key = g.TextMatrix(r, -989);
    if (state == QLatin1String("D")) {
      if (!key.isEmpty()) removed += int(db.Execute(QStringLiteral("DELETE FROM InvoiceLine WHERE LineID=") + key));
      continue;
    }
    if (state != QLatin1String("E")) continue;
    const QString values = QStringLiteral("ItemCode=%1, ItemName=%2, Qty=%3, UnitPrice=%4, Amount=%5, "
                                          "DeliveryDate=%6, PayType=%7, Paid=%8, Remark=%9")
                               .arg(literal(g, r, 2, true), literal(g, r, 3, true), literal(g, r, 4, false),
                                    literal(g, r, 5, false),
                                    QString::number(g.GETValue(r, 4) * g.GETValue(r, 5), 'g', 17),
                                    literal(g, r, 7, false), literal(g, r, 8, false), literal(g, r, 9, false),
                                    literal(g, r, 10, true));
    if (!key.isEmpty()) {
      written += int(db.Execute(QStringLiteral("UPDATE InvoiceLine SET ") + values +
                                QStringLiteral(" WHERE LineID=") + key));
    } else {
      db.Execute(QStringLiteral("INSERT INTO InvoiceLine (InvoiceNo) VALUES ('") +
                 tq7::DatabaseHelper::SqlText(invoiceNo) + QStringLiteral("')"));
      written += int(db.Execute(QStringLiteral("UPDATE InvoiceLine SET ") + values +
                                QStringLiteral(" WHERE LineID=(SELECT MAX(LineID) FROM InvoiceLine)")));
    }
  }
  db.Close();
  return QStringLiteral("บันทึกแล้ว %1 รายการ, ลบ %2 รายการ · Saved %1 lines, removed %2").arg(written).arg(removed);
}

}  // namespace gallery
