#include "companion/db/SqliteProvider.h"

#include "frame/Error.h"

#include <QByteArray>
#include <climits>
#include <sqlite3.h>

namespace tq7::db {

namespace {
// Virtual machine steps between two looks at the clock: often enough to stop within a few
// milliseconds, rare enough not to show in a fetch.
constexpr int kProgressSteps = 20000;

struct Finalize {
  sqlite3_stmt* st;
  ~Finalize() { sqlite3_finalize(st); }
};

FieldType declaredType(const char* decl) {
  if (!decl) return FieldType::Empty;
  const QByteArray d = QByteArray(decl).toUpper();
  if (d.contains("INT")) return FieldType::Integer;
  if (d.contains("CHAR") || d.contains("CLOB") || d.contains("TEXT")) return FieldType::Text;
  if (d.contains("BLOB")) return FieldType::Binary;
  if (d.contains("REAL") || d.contains("FLOA") || d.contains("DOUB")) return FieldType::Double;
  return FieldType::Empty;
}
}  // namespace

// Arms the time limit of one command: the busy wait and a progress handler that interrupts the
// engine once the deadline has passed. 0 seconds waits for ever.
class SqliteProvider::Deadline {
 public:
  Deadline(SqliteProvider& p, int32_t seconds) : p_(p) {
    p_.expired_ = false;
    if (seconds > 0) {
      p_.deadline_ = std::chrono::steady_clock::now() + std::chrono::seconds(seconds);
      sqlite3_busy_timeout(p_.db_, seconds > INT_MAX / 1000 ? INT_MAX : seconds * 1000);
      sqlite3_progress_handler(p_.db_, kProgressSteps, &Deadline::tick, &p_);
    } else {
      sqlite3_busy_timeout(p_.db_, INT_MAX);
    }
  }
  ~Deadline() { sqlite3_progress_handler(p_.db_, 0, nullptr, nullptr); }

 private:
  static int tick(void* self) {
    auto* p = static_cast<SqliteProvider*>(self);
    if (std::chrono::steady_clock::now() < p->deadline_) return 0;
    p->expired_ = true;
    return 1;
  }
  SqliteProvider& p_;
};

SqliteProvider::SqliteProvider(const QString& path) : path_(path) {
  const QByteArray file = path.toUtf8();
  const int rc = sqlite3_open_v2(file.constData(), &db_, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
  if (rc != SQLITE_OK) {
    const QString text = QString::fromUtf8(db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc));
    sqlite3_close(db_);
    db_ = nullptr;
    throw Error{err::DbUnspecified, QStringLiteral("%1: %2").arg(text, path)};
  }
  sqlite3_extended_result_codes(db_, 0);
  // Read the schema once, so that a file that is no database fails here and not at the first query.
  sqlite3_stmt* st = nullptr;
  int r = sqlite3_prepare_v2(db_, "PRAGMA schema_version", -1, &st, nullptr);
  if (r == SQLITE_OK) r = sqlite3_step(st);
  sqlite3_finalize(st);
  if (r != SQLITE_ROW) {
    const QString text = QString::fromUtf8(sqlite3_errmsg(db_));
    sqlite3_close(db_);
    db_ = nullptr;
    throw Error{err::DbUnspecified, QStringLiteral("%1: %2").arg(text, path)};
  }
}

SqliteProvider::~SqliteProvider() { sqlite3_close_v2(db_); }

void SqliteProvider::fail(int rc, const QString& context) {
  const QString text = QString::fromUtf8(sqlite3_errmsg(db_));
  int32_t number = err::DbUnspecified;
  if (expired_ || rc == SQLITE_INTERRUPT || rc == SQLITE_BUSY || rc == SQLITE_LOCKED)
    number = err::DbTimeout;
  else if (rc == SQLITE_ERROR)
    number = text.startsWith(QLatin1String("no such table")) ? err::DbNoSuchTable : err::DbSyntax;
  throw Error{number, context.isEmpty() ? text : text + QLatin1String(" (") + context + QLatin1Char(')')};
}

std::unique_ptr<ResultTable> SqliteProvider::query(const QString& sql, int32_t timeoutSeconds) {
  Deadline limit(*this, timeoutSeconds);
  const QByteArray text = topToLimit(sql).toUtf8();
  sqlite3_stmt* st = nullptr;
  int rc = sqlite3_prepare_v2(db_, text.constData(), int(text.size()), &st, nullptr);
  if (rc != SQLITE_OK) fail(rc);
  Finalize finalize{st};
  if (!st) return std::make_unique<ResultTable>(QStringList{});  // blank statement

  const int n = sqlite3_column_count(st);
  QStringList names;
  for (int c = 0; c < n; ++c) names << QString::fromUtf8(sqlite3_column_name(st, c));
  auto table = std::make_unique<ResultTable>(names);
  for (int c = 0; c < n; ++c) table->setDeclaredType(c, declaredType(sqlite3_column_decltype(st, c)));

  while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    for (int c = 0; c < n; ++c) {
      switch (sqlite3_column_type(st, c)) {
        case SQLITE_INTEGER: table->appendInt(c, sqlite3_column_int64(st, c)); break;
        case SQLITE_FLOAT: table->appendDouble(c, sqlite3_column_double(st, c)); break;
        case SQLITE_TEXT: {
          const auto* p = reinterpret_cast<const char*>(sqlite3_column_text(st, c));
          table->appendText(c, p, size_t(sqlite3_column_bytes(st, c)));
          break;
        }
        case SQLITE_BLOB: {
          const auto* p = static_cast<const char*>(sqlite3_column_blob(st, c));
          table->appendBlob(c, p, size_t(sqlite3_column_bytes(st, c)));
          break;
        }
        default: table->appendNull(c); break;
      }
    }
    table->endRow();
  }
  if (rc != SQLITE_DONE) fail(rc);
  table->finish();
  return table;
}

int64_t SqliteProvider::execute(const QString& sql, int32_t timeoutSeconds) {
  Deadline limit(*this, timeoutSeconds);
  const QByteArray text = sql.toUtf8();
  const char* at = text.constData();
  const char* end = at + text.size();
  const int64_t before = sqlite3_total_changes64(db_);
  while (at < end) {
    sqlite3_stmt* st = nullptr;
    const char* tail = nullptr;
    int rc = sqlite3_prepare_v2(db_, at, int(end - at), &st, &tail);
    if (rc != SQLITE_OK) fail(rc);
    at = tail;
    if (!st) continue;
    Finalize finalize{st};
    while ((rc = sqlite3_step(st)) == SQLITE_ROW) {
    }
    if (rc != SQLITE_DONE) fail(rc);
  }
  return sqlite3_total_changes64(db_) - before;
}

QStringList SqliteProvider::tables() {
  return sqliteTables([this](const QString& s) { return query(s, 0); });
}

QStringList SqliteProvider::columns(const QString& table) {
  return sqliteColumns([this](const QString& s) { return query(s, 0); }, table);
}

std::vector<ForeignKey> SqliteProvider::foreignKeys() {
  return sqliteForeignKeys([this](const QString& s) { return query(s, 0); });
}

}  // namespace tq7::db
