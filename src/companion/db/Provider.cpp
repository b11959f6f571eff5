#include "companion/db/Provider.h"

#include "companion/db/ConnectionString.h"
#include "companion/db/PostgresProvider.h"
#include "companion/db/QtSqlProvider.h"
#include "companion/db/SqliteProvider.h"
#include "frame/Error.h"

#include <QRegularExpression>

namespace tq7::db {

namespace {

const QRegularExpression& topPattern() {
  static const QRegularExpression re(
      QStringLiteral(R"(^\s*SELECT\s+(DISTINCT\s+)?TOP\s+(\d+)\s+(.*?)[\s;]*$)"),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
  return re;
}

QString cell(const ResultTable& t, int64_t r, int32_t c) { return t.value(r, c).toString(); }

QStringList firstColumn(const ResultTable& t) {
  QStringList out;
  for (int64_t r = 0; r < t.rowCount(); ++r) out << cell(t, r, 0);
  return out;
}

QString literal(const QString& s) {
  QString q = s;
  q.replace(QLatin1Char('\''), QLatin1String("''"));
  return QLatin1Char('\'') + q + QLatin1Char('\'');
}

}  // namespace

bool hasTopClause(const QString& sql) { return topPattern().match(sql).hasMatch(); }

QString topToLimit(const QString& sql) {
  const auto m = topPattern().match(sql);
  if (!m.hasMatch()) return sql;
  return QLatin1String("SELECT ") + m.captured(1) + m.captured(3) + QLatin1String(" LIMIT ") + m.captured(2);
}

QString quoteIdentifier(const QString& name) {
  QString q = name;
  q.replace(QLatin1Char('"'), QLatin1String("\"\""));
  return QLatin1Char('"') + q + QLatin1Char('"');
}

std::unique_ptr<Provider> openProvider(const ConnectionString& cs, const QString& user, const QString& password) {
  const QString provider = cs.value(QStringLiteral("Provider")).trimmed().toLower();
  const bool odbcKeys = cs.has(QStringLiteral("DSN")) || cs.has(QStringLiteral("Driver"));
  if (provider.startsWith(QLatin1String("sqlite")) || (provider.isEmpty() && !odbcKeys)) {
    const QString path = cs.value({QStringLiteral("Data Source"), QStringLiteral("DataSource"),
                                   QStringLiteral("Database")});
    if (path.isEmpty())
      throw Error{provider.isEmpty() ? err::DbProviderNotFound : err::DbUnspecified,
                  QStringLiteral("The connection string names no provider and no Data Source.")};
    return std::make_unique<SqliteProvider>(path);
  }
  if (provider.startsWith(QLatin1String("postgres")) || provider == QLatin1String("pgsql") ||
      provider == QLatin1String("npgsql"))
    return std::make_unique<PostgresProvider>(cs, user, password);
  if (provider.startsWith(QLatin1String("mysql")))
    return std::make_unique<QtSqlProvider>(QtSqlProvider::MySql, cs, user, password);
  if (provider.isEmpty() || provider.startsWith(QLatin1String("msdasql")))
    return std::make_unique<QtSqlProvider>(QtSqlProvider::Odbc, cs, user, password);
  throw Error{err::DbProviderNotFound,
              QStringLiteral("Provider cannot be found: %1").arg(cs.value(QStringLiteral("Provider")))};
}

QStringList sqliteTables(const QueryFn& q) {
  return firstColumn(*q(QStringLiteral(
      "SELECT name FROM sqlite_master WHERE type IN ('table','view') AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'")));
}

QStringList sqliteColumns(const QueryFn& q, const QString& table) {
  const auto t = q(QStringLiteral("PRAGMA table_info(%1)").arg(quoteIdentifier(table)));
  QStringList out;
  for (int64_t r = 0; r < t->rowCount(); ++r) out << cell(*t, r, 1);
  return out;
}

std::vector<ForeignKey> sqliteForeignKeys(const QueryFn& q) {
  std::vector<ForeignKey> out;
  for (const QString& table : sqliteTables(q)) {
    // id, seq, table, from, to, ...
    const auto fk = q(QStringLiteral("PRAGMA foreign_key_list(%1)").arg(quoteIdentifier(table)));
    for (int64_t r = 0; r < fk->rowCount(); ++r) {
      ForeignKey k{table, cell(*fk, r, 3), cell(*fk, r, 2), cell(*fk, r, 4)};
      if (fk->isNull(r, 4)) {
        // A key written without the parent's column refers to the parent's primary key.
        const int64_t seq = fk->value(r, 1).toLongLong();
        const auto info = q(QStringLiteral("PRAGMA table_info(%1)").arg(quoteIdentifier(k.refTable)));
        for (int64_t i = 0; i < info->rowCount(); ++i)
          if (info->value(i, 5).toLongLong() == seq + 1) k.refColumn = cell(*info, i, 1);
      }
      out.push_back(k);
    }
  }
  return out;
}

QStringList informationSchemaTables(const QueryFn& q) {
  return firstColumn(*q(QStringLiteral(
      "SELECT table_name FROM information_schema.tables "
      "WHERE table_schema NOT IN ('pg_catalog','information_schema') ORDER BY table_schema, table_name")));
}

QStringList informationSchemaColumns(const QueryFn& q, const QString& table) {
  const qsizetype dot = table.lastIndexOf(QLatin1Char('.'));
  QString where = QStringLiteral("lower(table_name)=lower(%1)").arg(literal(dot < 0 ? table : table.mid(dot + 1)));
  if (dot >= 0) where += QStringLiteral(" AND lower(table_schema)=lower(%1)").arg(literal(table.left(dot)));
  return firstColumn(*q(QStringLiteral("SELECT column_name FROM information_schema.columns WHERE %1 "
                                       "AND table_schema NOT IN ('pg_catalog','information_schema') "
                                       "ORDER BY table_schema, ordinal_position")
                            .arg(where)));
}

std::vector<ForeignKey> informationSchemaForeignKeys(const QueryFn& q) {
  const auto t = q(QStringLiteral(
      "SELECT kcu.table_name, kcu.column_name, pk.table_name, pk.column_name "
      "FROM information_schema.referential_constraints rc "
      "JOIN information_schema.key_column_usage kcu ON kcu.constraint_schema = rc.constraint_schema "
      "AND kcu.constraint_name = rc.constraint_name "
      "JOIN information_schema.key_column_usage pk ON pk.constraint_schema = rc.unique_constraint_schema "
      "AND pk.constraint_name = rc.unique_constraint_name "
      "AND pk.ordinal_position = kcu.position_in_unique_constraint "
      "ORDER BY kcu.table_name, kcu.ordinal_position"));
  std::vector<ForeignKey> out;
  for (int64_t r = 0; r < t->rowCount(); ++r)
    out.push_back({cell(*t, r, 0), cell(*t, r, 1), cell(*t, r, 2), cell(*t, r, 3)});
  return out;
}

}  // namespace tq7::db
