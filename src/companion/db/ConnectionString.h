#pragma once
// A connection string as applications write them: "key=value;" pairs, keys without regard to
// case, values bare, in double or single quotes (a doubled quote stands for one) or in braces
// (for driver names such as {SQLite3}; "}}" stands for one brace).
#include <QMap>
#include <QString>
#include <QStringList>

namespace tq7::db {

class ConnectionString {
 public:
  // Throws tq7::Error when the text is not a list of pairs.
  static ConnectionString parse(const QString& text);

  bool has(const QString& key) const { return values_.contains(key.toLower()); }
  // The first of the keys that is present, or empty.
  QString value(const QStringList& keys) const;
  QString value(const QString& key) const { return values_.value(key.toLower()); }
  // The pairs in the order written, keys as written, values unquoted.
  const QList<QPair<QString, QString>>& pairs() const { return pairs_; }

 private:
  QMap<QString, QString> values_;  // key in lower case -> value; the first pair of a key wins
  QList<QPair<QString, QString>> pairs_;
};

}  // namespace tq7::db
