#include "companion/SystemValues.h"

#include "companion/DatabaseHelper.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "frame/Error.h"

namespace tq7 {

namespace {

// The first row's field as a double; a text value converts as the language converts a text.
double readFirst(const QString& sql, const QString& field, const QString& connectionString) {
  if (connectionString.isEmpty()) return 0;
  double value = 0;
  // What was opened is closed even when the value does not read as a number.
  db::Connection c;
  db::Recordset rs;
  step([&] { c.setCursorLocation(db::cursor::UseClient); });
  step([&] { c.Open(connectionString, QString(), QString(), -1); });
  step([&] { rs.Open(sql, c, 3, 1, -1); });
  step([&] {
    if (!rs.EOF_()) {
      const QVariant v = rs.Fields(field).Value();
      if (!v.isNull()) value = v.typeId() == QMetaType::QString ? vb::CDbl(v.toString()) : v.toDouble();
    }
  });
  step([&] { rs.Close(); });
  step([&] { c.Close(); });
  return value;
}

}  // namespace

double GetUserSystemValue(int32_t userNumber, const QString& name, const QString& connectionString) {
  const QString sql = QStringLiteral("SELECT TSyUValue FROM TQ7TSystemUser WHERE TSyUName='") +
                      DatabaseHelper::SqlText(name) + QStringLiteral("' AND TSyUUserID=") + QString::number(userNumber);
  return readFirst(sql, QStringLiteral("TSyUValue"), connectionString);
}

double GetSystemValue(const QString& name, const QString& connectionString) {
  const QString sql = QStringLiteral("SELECT TSysValue FROM TQ7TSystem WHERE TSysName='") +
                      DatabaseHelper::SqlText(name) + QStringLiteral("'");
  return readFirst(sql, QStringLiteral("TSysValue"), connectionString);
}

}  // namespace tq7
