#include "companion/db/Connection.h"

#include "companion/db/ConnectionString.h"
#include "companion/db/Provider.h"
#include "frame/Error.h"

namespace tq7::db {

Connection::Connection() = default;
Connection::~Connection() = default;

void Connection::Open(const QString& ConnectionString, const QString& UserID, const QString& Password,
                      int32_t Options) {
  (void)Options;
  if (provider_)
    throw Error{err::DbObjectOpen, QStringLiteral("Operation is not allowed when the object is open.")};
  if (!ConnectionString.isEmpty()) connectionString_ = ConnectionString;
  const auto cs = db::ConnectionString::parse(connectionString_);
  provider_ = openProvider(cs, UserID, Password);
}

void Connection::Close() {
  if (!provider_)
    throw Error{err::DbConnectionClosed, QStringLiteral("Operation is not allowed when the object is closed.")};
  provider_.reset();
}

Provider& Connection::provider() {
  if (!provider_)
    throw Error{err::DbConnectionClosed, QStringLiteral("Operation is not allowed when the object is closed.")};
  return *provider_;
}

int64_t Connection::Execute(const QString& CommandText) { return provider().execute(CommandText, commandTimeout_); }

QString Connection::providerName() const { return provider_ ? provider_->name() : QString(); }

QStringList Connection::tables() { return provider().tables(); }

QStringList Connection::columns(const QString& table) { return provider().columns(table); }

std::vector<ForeignKey> Connection::foreignKeys() { return provider().foreignKeys(); }

}  // namespace tq7::db
