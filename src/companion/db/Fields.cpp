#include "companion/db/Fields.h"

#include "companion/db/Recordset.h"
#include "frame/Error.h"

namespace tq7::db {

QString Field::Name() const { return owner_->open().name(index_); }

QVariant Field::Value() const { return owner_->valueAt(index_); }
bool Field::numberValue(double& out) const { return owner_->numberAt(index_, out); }

FieldType Field::Type() const { return owner_->open().type(index_); }

Field& Fields::Item(int32_t Index) {
  if (Index < 0 || Index >= Count())
    throw Error{err::DbItemNotFound, QStringLiteral("No field at position %1 in this record set.").arg(Index)};
  return items_[size_t(Index)];
}

Field& Fields::Item(const QString& Name) {
  const auto it = byName_.constFind(Name.toLower());
  if (it == byName_.constEnd())
    throw Error{err::DbItemNotFound, QStringLiteral("No field named %1 in this record set.").arg(Name)};
  return items_[size_t(*it)];
}

void Fields::bind(const Recordset* owner, const ResultTable& table) {
  clear();
  items_.reserve(size_t(table.columnCount()));
  for (int32_t c = 0; c < table.columnCount(); ++c) {
    items_.emplace_back(owner, c);
    const QString key = table.name(c).toLower();
    if (!byName_.contains(key)) byName_.insert(key, c);
  }
}

void Fields::clear() {
  items_.clear();
  byName_.clear();
}

}  // namespace tq7::db
