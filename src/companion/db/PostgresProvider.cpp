#include "companion/db/PostgresProvider.h"

#include "companion/db/ConnectionString.h"
#include "frame/Error.h"

#include <QByteArray>
#include <charconv>
#include <cstring>
#include <libpq-fe.h>
#include <vector>

namespace tq7::db {

namespace {

// Type numbers of the server's built-in types.
enum : Oid {
  kBool = 16, kBytea = 17, kInt8 = 20, kInt2 = 21, kInt4 = 23, kOid = 26, kFloat4 = 700, kFloat8 = 701,
  kMoney = 790, kDate = 1082, kTime = 1083, kTimestamp = 1114, kTimestampTz = 1184, kNumeric = 1700
};

struct Result {
  PGresult* r;
  ~Result() { PQclear(r); }
};

void quietNotices(void*, const char*) {}

QString serverText(const PGresult* r, PGconn* c) {
  const char* primary = r ? PQresultErrorField(r, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
  QString t = QString::fromUtf8(primary ? primary : (r ? PQresultErrorMessage(r) : PQerrorMessage(c)));
  if (t.isEmpty()) t = QString::fromUtf8(PQerrorMessage(c));
  return t.trimmed();
}

[[noreturn]] void fail(const PGresult* r, PGconn* c) {
  const char* state = r ? PQresultErrorField(r, PG_DIAG_SQLSTATE) : nullptr;
  const QByteArray s(state ? state : "");
  int32_t number = err::DbUnspecified;
  if (s == "57014")
    number = err::DbTimeout;  // canceled by statement_timeout
  else if (s == "42P01")
    number = err::DbNoSuchTable;
  else if (s.startsWith("42"))
    number = err::DbSyntax;
  throw Error{number, serverText(r, c)};
}

int64_t parseInt(const char* p, size_t n) {
  int64_t v = 0;
  std::from_chars(p, p + n, v);
  return v;
}

double parseDouble(const char* p, size_t n) {
  double v = 0;
  std::from_chars(p, p + n, v);
  return v;
}

// Days from the civil date to 30 December 1899.
int64_t serialDays(int64_t y, int64_t m, int64_t d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const int64_t yoe = y - era * 400;
  const int64_t doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468 + 25569;  // 25569: 1970-01-01 as a serial
}

double timeFraction(const char* p, size_t n) {
  // hh:mm:ss[.ffffff][+zz]
  if (n < 8) return 0;
  const double h = double(parseInt(p, 2)), m = double(parseInt(p + 3, 2));
  size_t i = 8;
  while (i < n && (p[i] == '.' || (p[i] >= '0' && p[i] <= '9'))) ++i;
  const double s = parseDouble(p + 6, i - 6);
  return (h * 3600.0 + m * 60.0 + s) / 86400.0;
}

// A date or time as the server writes it in ISO style, to a date serial; false for what is no
// calendar date (infinity, years before Christ).
bool dateSerial(Oid type, const char* p, size_t n, double& out) {
  if (type == kTime) {
    out = timeFraction(p, n);
    return true;
  }
  if (n < 10 || p[4] != '-' || p[7] != '-' || std::memchr(p, 'B', n)) return false;
  double v = double(serialDays(parseInt(p, 4), parseInt(p + 5, 2), parseInt(p + 8, 2)));
  if (type != kDate && n > 11) v += (v < 0 ? -1.0 : 1.0) * timeFraction(p + 11, n - 11);
  out = v;
  return true;
}

}  // namespace

PostgresProvider::PostgresProvider(const ConnectionString& cs, const QString& user, const QString& password) {
  std::vector<QByteArray> keys, values;
  auto add = [&](const char* key, const QString& v) {
    if (v.isEmpty()) return;
    keys.emplace_back(key);
    values.push_back(v.toUtf8());
  };
  add("host", cs.value({QStringLiteral("Host"), QStringLiteral("Server"), QStringLiteral("Data Source")}));
  add("port", cs.value(QStringLiteral("Port")));
  add("dbname", cs.value({QStringLiteral("Database"), QStringLiteral("Initial Catalog"), QStringLiteral("dbname")}));
  add("user", user.isEmpty() ? cs.value({QStringLiteral("User ID"), QStringLiteral("UID"), QStringLiteral("User"),
                                         QStringLiteral("Username")})
                             : user);
  add("password", password.isEmpty() ? cs.value({QStringLiteral("Password"), QStringLiteral("PWD")}) : password);
  QString connectTimeout = cs.value({QStringLiteral("Timeout"), QStringLiteral("Connect Timeout")});
  add("connect_timeout", connectTimeout.isEmpty() ? QStringLiteral("15") : connectTimeout);
  add("client_encoding", QStringLiteral("UTF8"));
  add("application_name", QStringLiteral("TQ7Designer"));
  // Dates are read as the ISO text, whatever the server's default style.
  add("options", QStringLiteral("-c DateStyle=ISO,YMD"));
  std::vector<const char*> k, v;
  for (size_t i = 0; i < keys.size(); ++i) k.push_back(keys[i].constData()), v.push_back(values[i].constData());
  k.push_back(nullptr), v.push_back(nullptr);

  conn_ = PQconnectdbParams(k.data(), v.data(), 0);
  if (!conn_) throw Error{err::DbUnspecified, QStringLiteral("out of memory")};
  if (PQstatus(conn_) != CONNECTION_OK) {
    const QString text = QString::fromUtf8(PQerrorMessage(conn_)).trimmed();
    PQfinish(conn_);
    conn_ = nullptr;
    throw Error{err::DbUnspecified, text};
  }
  PQsetNoticeProcessor(conn_, &quietNotices, nullptr);
}

PostgresProvider::~PostgresProvider() {
  if (conn_) PQfinish(conn_);
}

void PostgresProvider::applyTimeout(int32_t seconds) {
  if (seconds < 0) seconds = 0;
  if (seconds == timeout_) return;
  const QByteArray sql = "SET statement_timeout = " + QByteArray::number(int64_t(seconds) * 1000);
  Result r{PQexec(conn_, sql.constData())};
  if (PQresultStatus(r.r) != PGRES_COMMAND_OK) fail(r.r, conn_);
  timeout_ = seconds;
}

std::unique_ptr<ResultTable> PostgresProvider::query(const QString& sql, int32_t timeoutSeconds) {
  applyTimeout(timeoutSeconds);
  const QByteArray text = topToLimit(sql).toUtf8();
  Result r{PQexec(conn_, text.constData())};
  const ExecStatusType status = PQresultStatus(r.r);
  if (status == PGRES_COMMAND_OK || status == PGRES_EMPTY_QUERY) return std::make_unique<ResultTable>(QStringList{});
  if (status != PGRES_TUPLES_OK) fail(r.r, conn_);

  const int cols = PQnfields(r.r), rows = PQntuples(r.r);
  QStringList names;
  std::vector<Oid> types(static_cast<size_t>(cols));
  for (int c = 0; c < cols; ++c) {
    names << QString::fromUtf8(PQfname(r.r, c));
    types[size_t(c)] = PQftype(r.r, c);
  }
  auto table = std::make_unique<ResultTable>(names);
  for (int c = 0; c < cols; ++c) {
    switch (types[size_t(c)]) {
      case kBool: case kInt2: case kInt4: case kInt8: case kOid: table->setDeclaredType(c, FieldType::Integer); break;
      case kFloat4: case kFloat8: case kNumeric: case kMoney: table->setDeclaredType(c, FieldType::Double); break;
      case kDate: case kTime: case kTimestamp: case kTimestampTz: table->setDeclaredType(c, FieldType::Date); break;
      case kBytea: table->setDeclaredType(c, FieldType::Binary); break;
      default: table->setDeclaredType(c, FieldType::Text); break;
    }
  }
  for (int row = 0; row < rows; ++row) {
    for (int c = 0; c < cols; ++c) {
      if (PQgetisnull(r.r, row, c)) {
        table->appendNull(c);
        continue;
      }
      const char* p = PQgetvalue(r.r, row, c);
      const size_t n = size_t(PQgetlength(r.r, row, c));
      switch (types[size_t(c)]) {
        case kBool: table->appendInt(c, p[0] == 't' ? 1 : 0); break;
        case kInt2: case kInt4: case kInt8: case kOid: table->appendInt(c, parseInt(p, n)); break;
        case kFloat4: case kFloat8: case kNumeric: table->appendDouble(c, parseDouble(p, n)); break;
        case kDate: case kTime: case kTimestamp: case kTimestampTz: {
          double v = 0;
          if (dateSerial(types[size_t(c)], p, n, v)) table->appendDouble(c, v);
          else table->appendNull(c);
          break;
        }
        case kBytea: {
          size_t len = 0;
          unsigned char* raw = PQunescapeBytea(reinterpret_cast<const unsigned char*>(p), &len);
          table->appendBlob(c, reinterpret_cast<const char*>(raw), len);
          PQfreemem(raw);
          break;
        }
        default: table->appendText(c, p, n); break;
      }
    }
    table->endRow();
  }
  table->finish();
  return table;
}

int64_t PostgresProvider::execute(const QString& sql, int32_t timeoutSeconds) {
  applyTimeout(timeoutSeconds);
  const QByteArray text = sql.toUtf8();
  Result r{PQexec(conn_, text.constData())};
  const ExecStatusType status = PQresultStatus(r.r);
  if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK && status != PGRES_EMPTY_QUERY) fail(r.r, conn_);
  const char* n = PQcmdTuples(r.r);
  return n && *n ? parseInt(n, std::strlen(n)) : 0;
}

QStringList PostgresProvider::tables() {
  return informationSchemaTables([this](const QString& s) { return query(s, timeout_); });
}

QStringList PostgresProvider::columns(const QString& table) {
  return informationSchemaColumns([this](const QString& s) { return query(s, timeout_); }, table);
}

std::vector<ForeignKey> PostgresProvider::foreignKeys() {
  return informationSchemaForeignKeys([this](const QString& s) { return query(s, timeout_); });
}

}  // namespace tq7::db
