#pragma once
// The fields of a record set's current record. A Field stays bound to its record set and reads
// the record under the cursor at each Value(), so a caller may keep a Field& across moves.
#include "companion/db/ResultTable.h"

#include <QHash>
#include <QString>
#include <QVariant>
#include <cstdint>
#include <vector>

namespace tq7::db {

class Recordset;

class Field {
 public:
  Field(const Recordset* owner, int32_t index) : owner_(owner), index_(index) {}
  QString Name() const;
  // The value in the current record; a null QVariant for NULL. Throws when there is no current record.
  QVariant Value() const;
  // The value in the current record as a number, without a variant, when it is stored as one;
  // false for NULL, a text or bytes. Throws as Value does.
  bool numberValue(double& out) const;
  FieldType Type() const;

 private:
  const Recordset* owner_;
  int32_t index_;
};

class Fields {
 public:
  int32_t Count() const { return int32_t(items_.size()); }
  // By 0-based position, or by name with case ignored. Throws tq7::Error when there is no such field.
  Field& Item(int32_t Index);
  Field& Item(const QString& Name);
  Field& operator[](int32_t Index) { return Item(Index); }
  Field& operator[](const QString& Name) { return Item(Name); }

 private:
  friend class Recordset;
  void bind(const Recordset* owner, const ResultTable& table);
  void clear();

  std::vector<Field> items_;
  QHash<QString, int32_t> byName_;  // lower-case name -> position; the first of a name wins
};

}  // namespace tq7::db
