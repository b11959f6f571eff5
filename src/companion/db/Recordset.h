#pragma once
// A static, read-only record set: Open fetches the whole result onto the client, after which the
// record set needs its connection no more. Positions count from 1 as the classic API counts them.
// Nothing is ever written back through it.
//
// EOF is a macro of the C library, so that one property is spelled EOF_().
#include "companion/db/Fields.h"
#include "companion/db/ResultTable.h"

#include <QString>
#include <cstdint>
#include <memory>

namespace tq7::db {

class Connection;

namespace pos {
constexpr int32_t Unknown = -1;
constexpr int32_t BOF = -2;
constexpr int32_t EOF_ = -3;
}  // namespace pos

class Recordset {
 public:
  Recordset() = default;
  Recordset(const Recordset&) = delete;
  Recordset& operator=(const Recordset&) = delete;

  // CursorType, LockType and Options are accepted as the callers pass them (3, 1, -1: static,
  // read-only); the result is always static and read-only. A statement that gives no columns
  // leaves the record set closed.
  void Open(const QString& Source, Connection& ActiveConnection, int32_t CursorType = 3, int32_t LockType = 1,
            int32_t Options = -1);
  void Close();
  int32_t State() const;
  // The statement as the caller gave it, before any rewriting for the engine.
  QString Source() const { return source_; }

  bool EOF_() const;
  bool BOF() const;
  void MoveFirst();
  void MoveNext();
  void MovePrevious();
  void MoveLast();
  // Moves NumRecords from the current record; moving past either end stops at EOF or BOF.
  void Move(int32_t NumRecords);
  // 1-based position of the current record, or pos::BOF / pos::EOF_.
  int32_t AbsolutePosition() const;
  void setAbsolutePosition(int32_t Position);
  int32_t RecordCount() const;
  int32_t PageSize() const { return pageSize_; }
  void setPageSize(int32_t n);
  int32_t PageCount() const;

  db::Fields& Fields();
  Field& Fields(int32_t Index) { return Fields().Item(Index); }
  Field& Fields(const QString& Name) { return Fields().Item(Name); }

  // Bytes held by the fetched result.
  size_t memoryBytes() const { return table_ ? table_->memoryBytes() : 0; }

 private:
  friend class Field;
  const ResultTable& open() const;
  // The open result, with a current record; throws when there is none.
  const ResultTable& current() const;
  QVariant valueAt(int32_t column) const;
  bool numberAt(int32_t column, double& out) const;

  std::shared_ptr<const ResultTable> table_;
  db::Fields fields_;
  QString source_;
  int64_t pos_ = 0;  // 0-based current record; -1 is BOF, RecordCount is EOF
  int32_t pageSize_ = 10;
};

}  // namespace tq7::db
