#include "companion/db/QtSqlProvider.h"

#include "companion/db/ConnectionString.h"
#include "frame/Error.h"

#include <QCoreApplication>
#include <QDate>
#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlDriver>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QTime>
#include <atomic>

namespace tq7::db {

namespace {

void ensureApplication() {
  if (QCoreApplication::instance()) return;
  static int argc = 1;
  static char name[] = "tq7";
  static char* argv[] = {name, nullptr};
  static QCoreApplication* app = new QCoreApplication(argc, argv);  // lives as long as the process
  (void)app;
}

double serialOf(const QDate& d, const QTime& t) {
  static const QDate epoch(1899, 12, 30);
  double v = double(epoch.daysTo(d));
  const double frac = t.isValid() ? double(t.msecsSinceStartOfDay()) / 86400000.0 : 0.0;
  return v + (v < 0 ? -frac : frac);
}

FieldType typeOf(QMetaType t) {
  switch (t.id()) {
    case QMetaType::Bool: case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong:
    case QMetaType::ULongLong: case QMetaType::Short: case QMetaType::UShort: case QMetaType::Char:
    case QMetaType::SChar: case QMetaType::UChar: case QMetaType::Long: case QMetaType::ULong:
      return FieldType::Integer;
    case QMetaType::Double: case QMetaType::Float: return FieldType::Double;
    case QMetaType::QDate: case QMetaType::QTime: case QMetaType::QDateTime: return FieldType::Date;
    case QMetaType::QByteArray: return FieldType::Binary;
    case QMetaType::UnknownType: return FieldType::Empty;
    default: return FieldType::Text;
  }
}

[[noreturn]] void fail(const QSqlError& e, bool connecting) {
  QString text = e.databaseText().trimmed();
  if (text.isEmpty()) text = e.text().trimmed();
  int32_t number = connecting ? err::DbUnspecified : err::DbSyntax;
  if (text.contains(QLatin1String("no such table"), Qt::CaseInsensitive) ||
      text.contains(QLatin1String("doesn't exist"), Qt::CaseInsensitive))
    number = err::DbNoSuchTable;
  if (text.contains(QLatin1String("timeout"), Qt::CaseInsensitive) ||
      text.contains(QLatin1String("timed out"), Qt::CaseInsensitive) || e.nativeErrorCode() == QLatin1String("HYT00"))
    number = err::DbTimeout;
  throw Error{number, text};
}

}  // namespace

QtSqlProvider::QtSqlProvider(Kind kind, const ConnectionString& cs, const QString& user, const QString& password)
    : kind_(kind) {
  ensureApplication();
  static std::atomic<int> serial{0};
  connectionName_ = QStringLiteral("tq7db-%1").arg(++serial);
  const QString driver = kind == Odbc ? QStringLiteral("QODBC") : QStringLiteral("QMYSQL");
  bool ok = false;
  QSqlError error;
  {
    QSqlDatabase db = QSqlDatabase::addDatabase(driver, connectionName_);
    if (!db.isValid()) {
      db = QSqlDatabase();
      QSqlDatabase::removeDatabase(connectionName_);
      throw Error{err::DbProviderNotFound, QStringLiteral("Provider cannot be found: the Qt driver %1 is missing")
                                               .arg(driver)};
    }
    if (kind == Odbc) {
      // The driver manager takes the whole string; only our own Provider key is left out.
      QStringList parts;
      for (const auto& [k, v] : cs.pairs()) {
        if (k.compare(QLatin1String("Provider"), Qt::CaseInsensitive) == 0) continue;
        QString value = v;
        if (value.contains(QLatin1Char(';')) || value.contains(QLatin1Char('{')) ||
            k.compare(QLatin1String("Driver"), Qt::CaseInsensitive) == 0)
          value = QLatin1Char('{') + value.replace(QLatin1Char('}'), QLatin1String("}}")) + QLatin1Char('}');
        parts << k + QLatin1Char('=') + value;
      }
      db.setDatabaseName(parts.join(QLatin1Char(';')));
    } else {
      db.setHostName(cs.value({QStringLiteral("Server"), QStringLiteral("Host"), QStringLiteral("Data Source")}));
      const QString port = cs.value(QStringLiteral("Port"));
      if (!port.isEmpty()) db.setPort(port.toInt());
      db.setDatabaseName(cs.value({QStringLiteral("Database"), QStringLiteral("Initial Catalog")}));
      db.setConnectOptions(QStringLiteral("MYSQL_OPT_CONNECT_TIMEOUT=15"));
    }
    db.setUserName(user.isEmpty() ? cs.value({QStringLiteral("User ID"), QStringLiteral("UID"), QStringLiteral("User")})
                                  : user);
    db.setPassword(password.isEmpty() ? cs.value({QStringLiteral("Password"), QStringLiteral("PWD")}) : password);
    ok = db.open();
    if (!ok) error = db.lastError();
    if (ok && kind == MySql) QSqlQuery(QStringLiteral("SET NAMES utf8mb4"), db);
  }
  if (!ok) {
    QSqlDatabase::removeDatabase(connectionName_);
    fail(error, true);
  }
}

QtSqlProvider::~QtSqlProvider() {
  {
    QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
    db.close();
  }
  QSqlDatabase::removeDatabase(connectionName_);
}

std::unique_ptr<ResultTable> QtSqlProvider::run(const QString& sql) {
  QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
  QSqlQuery q(db);
  q.setForwardOnly(true);
  if (!q.exec(sql)) fail(q.lastError(), false);
  const QSqlRecord rec = q.record();
  QStringList names;
  for (int c = 0; c < rec.count(); ++c) names << rec.fieldName(c);
  auto table = std::make_unique<ResultTable>(names);
  for (int c = 0; c < rec.count(); ++c) table->setDeclaredType(c, typeOf(rec.field(c).metaType()));
  if (!q.isSelect()) return table;
  while (q.next()) {
    for (int c = 0; c < rec.count(); ++c) {
      const QVariant v = q.value(c);
      if (v.isNull()) {
        table->appendNull(c);
        continue;
      }
      switch (v.typeId()) {
        case QMetaType::Bool: table->appendInt(c, v.toBool() ? 1 : 0); break;
        case QMetaType::Int: case QMetaType::UInt: case QMetaType::LongLong: case QMetaType::ULongLong:
        case QMetaType::Short: case QMetaType::UShort: case QMetaType::Char: case QMetaType::SChar:
        case QMetaType::UChar: case QMetaType::Long: case QMetaType::ULong:
          table->appendInt(c, v.toLongLong());
          break;
        case QMetaType::Double: case QMetaType::Float: table->appendDouble(c, v.toDouble()); break;
        case QMetaType::QDate: table->appendDouble(c, serialOf(v.toDate(), QTime())); break;
        case QMetaType::QTime: table->appendDouble(c, serialOf(QDate(1899, 12, 30), v.toTime())); break;
        case QMetaType::QDateTime: {
          const QDateTime t = v.toDateTime();
          table->appendDouble(c, serialOf(t.date(), t.time()));
          break;
        }
        case QMetaType::QByteArray: {
          const QByteArray b = v.toByteArray();
          table->appendBlob(c, b.constData(), size_t(b.size()));
          break;
        }
        default: {
          const QByteArray b = v.toString().toUtf8();
          table->appendText(c, b.constData(), size_t(b.size()));
          break;
        }
      }
    }
    table->endRow();
  }
  if (q.lastError().isValid()) fail(q.lastError(), false);
  table->finish();
  return table;
}

std::unique_ptr<ResultTable> QtSqlProvider::query(const QString& sql, int32_t) {
  // MySQL has no TOP; for ODBC it is the driver's engine that decides, so the text goes as it is
  // and only a refusal makes us try the LIMIT form.
  if (kind_ == MySql) return run(topToLimit(sql));
  if (!hasTopClause(sql)) return run(sql);
  try {
    return run(sql);
  } catch (const Error&) {
    return run(topToLimit(sql));
  }
}

int64_t QtSqlProvider::execute(const QString& sql, int32_t) {
  QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
  QSqlQuery q(db);
  if (!q.exec(sql)) fail(q.lastError(), false);
  return q.numRowsAffected() > 0 ? q.numRowsAffected() : 0;
}

QStringList QtSqlProvider::tables() {
  QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
  return db.tables(QSql::Tables) + db.tables(QSql::Views);
}

QStringList QtSqlProvider::columns(const QString& table) {
  QSqlDatabase db = QSqlDatabase::database(connectionName_, false);
  QString name = table;
  for (const QString& t : tables())
    if (t.compare(table, Qt::CaseInsensitive) == 0) name = t;
  const QSqlRecord rec = db.record(name);
  QStringList out;
  for (int c = 0; c < rec.count(); ++c) out << rec.fieldName(c);
  return out;
}

std::vector<ForeignKey> QtSqlProvider::foreignKeys() {
  const QueryFn q = [this](const QString& s) { return run(s); };
  if (kind_ == MySql) {
    const auto t = q(QStringLiteral(
        "SELECT TABLE_NAME, COLUMN_NAME, REFERENCED_TABLE_NAME, REFERENCED_COLUMN_NAME "
        "FROM information_schema.KEY_COLUMN_USAGE "
        "WHERE REFERENCED_TABLE_NAME IS NOT NULL AND TABLE_SCHEMA = DATABASE() ORDER BY TABLE_NAME"));
    std::vector<ForeignKey> out;
    for (int64_t r = 0; r < t->rowCount(); ++r)
      out.push_back({t->value(r, 0).toString(), t->value(r, 1).toString(), t->value(r, 2).toString(),
                     t->value(r, 3).toString()});
    return out;
  }
  // Behind ODBC any engine may stand: ask the standard catalog first, then SQLite's.
  try {
    return informationSchemaForeignKeys(q);
  } catch (const Error&) {
  }
  try {
    return sqliteForeignKeys(q);
  } catch (const Error&) {
  }
  return {};
}

}  // namespace tq7::db
