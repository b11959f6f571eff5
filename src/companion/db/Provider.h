#pragma once
// One database engine behind a Connection. A provider runs statements, fetches a result whole
// into a ResultTable and answers questions about the catalog. Failures throw tq7::Error with a
// record-set style number and the engine's own text.
#include "companion/db/ResultTable.h"

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace tq7::db {

class ConnectionString;

// A foreign key column: table.column refers to refTable.refColumn.
struct ForeignKey {
  QString table;
  QString column;
  QString refTable;
  QString refColumn;
};

class Provider {
 public:
  virtual ~Provider() = default;
  virtual QString name() const = 0;
  // Runs a statement that gives rows and fetches them all. A timeout of 0 means no limit.
  virtual std::unique_ptr<ResultTable> query(const QString& sql, int32_t timeoutSeconds) = 0;
  // Runs one or more statements that give no rows; answers the rows they changed.
  virtual int64_t execute(const QString& sql, int32_t timeoutSeconds) = 0;
  // Tables and views, in the catalog's order.
  virtual QStringList tables() = 0;
  // The columns of a table, empty when there is no such table. Names match without regard to case.
  virtual QStringList columns(const QString& table) = 0;
  virtual std::vector<ForeignKey> foreignKeys() = 0;
};

// Picks and opens the provider that the connection string names. user and password, when not
// empty, stand in for those of the string. Throws when the string names nothing we can open.
std::unique_ptr<Provider> openProvider(const ConnectionString& cs, const QString& user, const QString& password);

// True when the statement has the form "SELECT [DISTINCT] TOP n ...", blanks of any kind between.
bool hasTopClause(const QString& sql);
// The same statement with the TOP clause turned into a trailing LIMIT, for engines without TOP.
// Any other statement comes back unchanged.
QString topToLimit(const QString& sql);

// An identifier in double quotes, for the catalog statements.
QString quoteIdentifier(const QString& name);

// Catalog readers shared by the engines that speak the same catalog language, on top of a
// provider's own query.
using QueryFn = std::function<std::unique_ptr<ResultTable>(const QString&)>;
QStringList sqliteTables(const QueryFn& q);
QStringList sqliteColumns(const QueryFn& q, const QString& table);
std::vector<ForeignKey> sqliteForeignKeys(const QueryFn& q);
QStringList informationSchemaTables(const QueryFn& q);
QStringList informationSchemaColumns(const QueryFn& q, const QString& table);
std::vector<ForeignKey> informationSchemaForeignKeys(const QueryFn& q);

}  // namespace tq7::db
