#include "frame/PropertyBag.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace tq7 {

QVariant PropertyBag::ReadProperty(const QString& name, const QVariant& def) const {
  auto it = values_.constFind(name);
  return it == values_.constEnd() ? def : it.value();
}

void PropertyBag::WriteProperty(const QString& name, const QVariant& value) {
  if (!values_.contains(name)) order_.append(name);
  values_.insert(name, value);
}

// Kept as a list of pairs so that the order of writing survives the round trip.
QByteArray PropertyBag::toJson() const {
  QJsonArray arr;
  for (const QString& n : order_) {
    QJsonObject o;
    o.insert(QStringLiteral("name"), n);
    o.insert(QStringLiteral("value"), QJsonValue::fromVariant(values_.value(n)));
    arr.append(o);
  }
  return QJsonDocument(arr).toJson(QJsonDocument::Compact);
}

PropertyBag PropertyBag::fromJson(const QByteArray& json) {
  PropertyBag bag;
  const QJsonDocument doc = QJsonDocument::fromJson(json);
  for (const QJsonValue& v : doc.array()) {
    const QJsonObject o = v.toObject();
    bag.WriteProperty(o.value(QStringLiteral("name")).toString(), o.value(QStringLiteral("value")).toVariant());
  }
  return bag;
}

}  // namespace tq7
