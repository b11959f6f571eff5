#include "companion/db/Recordset.h"

#include "companion/db/Connection.h"
#include "companion/db/Provider.h"
#include "frame/Error.h"

namespace tq7::db {

namespace {
[[noreturn]] void noCurrentRecord() {
  throw Error{err::DbEofOrBof,
              QStringLiteral("There is no current record: the position is before the first or after the last.")};
}
}  // namespace

void Recordset::Open(const QString& Source, Connection& ActiveConnection, int32_t CursorType, int32_t LockType,
                     int32_t Options) {
  (void)CursorType, (void)LockType, (void)Options;
  if (table_) throw Error{err::DbObjectOpen, QStringLiteral("Operation is not allowed when the object is open.")};
  Provider& p = ActiveConnection.provider();
  std::shared_ptr<const ResultTable> t = p.query(Source, ActiveConnection.CommandTimeout());
  if (t->columnCount() == 0) return;
  table_ = std::move(t);
  source_ = Source;
  pos_ = 0;
  fields_.bind(this, *table_);
}

void Recordset::Close() {
  open();
  fields_.clear();
  table_.reset();
  pos_ = 0;
}

int32_t Recordset::State() const { return table_ ? state::Open : state::Closed; }

const ResultTable& Recordset::open() const {
  if (!table_)
    throw Error{err::DbConnectionClosed, QStringLiteral("Operation is not allowed when the object is closed.")};
  return *table_;
}

db::Fields& Recordset::Fields() {
  open();
  return fields_;
}

const ResultTable& Recordset::current() const {
  const ResultTable& t = open();
  if (pos_ < 0 || pos_ >= t.rowCount()) noCurrentRecord();
  return t;
}

QVariant Recordset::valueAt(int32_t column) const { return current().value(pos_, column); }

bool Recordset::numberAt(int32_t column, double& out) const { return current().number(pos_, column, out); }

bool Recordset::EOF_() const {
  const ResultTable& t = open();
  return t.rowCount() == 0 || pos_ >= t.rowCount();
}

bool Recordset::BOF() const {
  const ResultTable& t = open();
  return t.rowCount() == 0 || pos_ < 0;
}

void Recordset::MoveFirst() {
  if (open().rowCount() == 0) noCurrentRecord();
  pos_ = 0;
}

void Recordset::MoveLast() {
  const int64_t n = open().rowCount();
  if (n == 0) noCurrentRecord();
  pos_ = n - 1;
}

void Recordset::MoveNext() {
  if (EOF_()) noCurrentRecord();
  ++pos_;
}

void Recordset::MovePrevious() {
  if (BOF()) noCurrentRecord();
  --pos_;
}

void Recordset::Move(int32_t NumRecords) {
  const int64_t n = open().rowCount();
  if (n == 0 || (NumRecords > 0 && pos_ >= n) || (NumRecords < 0 && pos_ < 0) ||
      (NumRecords == 0 && (pos_ < 0 || pos_ >= n)))
    noCurrentRecord();
  int64_t to = pos_ + NumRecords;
  if (to < 0) to = -1;
  if (to > n) to = n;
  pos_ = to;
}

int32_t Recordset::AbsolutePosition() const {
  const ResultTable& t = open();
  if (t.rowCount() == 0) return pos::Unknown;
  if (pos_ < 0) return pos::BOF;
  if (pos_ >= t.rowCount()) return pos::EOF_;
  return int32_t(pos_ + 1);
}

void Recordset::setAbsolutePosition(int32_t Position) {
  const int64_t n = open().rowCount();
  if (Position < 1 || Position > n)
    throw Error{err::DbBadArgument,
                QStringLiteral("Position %1 lies outside the record set of %2 records.").arg(Position).arg(n)};
  pos_ = Position - 1;
}

int32_t Recordset::RecordCount() const { return int32_t(open().rowCount()); }

void Recordset::setPageSize(int32_t n) {
  if (n < 1) throw Error{err::DbBadArgument, QStringLiteral("A page size must be at least 1, not %1.").arg(n)};
  pageSize_ = n;
}

int32_t Recordset::PageCount() const {
  const int64_t n = open().rowCount();
  return int32_t((n + pageSize_ - 1) / pageSize_);
}

}  // namespace tq7::db
