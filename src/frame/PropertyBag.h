#pragma once
// Persisted properties of a control: typed key/value pairs, read with a default, JSON round trip.
#include <QByteArray>
#include <QString>
#include <QVariant>
#include <QVariantMap>

namespace tq7 {

class PropertyBag {
 public:
  // The saved value, or def when the bag has none of that name.
  QVariant ReadProperty(const QString& name, const QVariant& def = {}) const;
  void WriteProperty(const QString& name, const QVariant& value);
  bool contains(const QString& name) const { return values_.contains(name); }
  // Names in the order of writing.
  const QStringList& names() const { return order_; }

  QByteArray toJson() const;
  static PropertyBag fromJson(const QByteArray& json);

 private:
  QVariantMap values_;
  QStringList order_;
};

}  // namespace tq7
