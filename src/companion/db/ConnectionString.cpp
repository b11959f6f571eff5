#include "companion/db/ConnectionString.h"

#include "frame/Error.h"

namespace tq7::db {

namespace {
[[noreturn]] void malformed(const QString& text, const QString& why) {
  throw Error{err::DbUnspecified, QStringLiteral("Invalid connection string (%1): %2").arg(why, text)};
}
}  // namespace

ConnectionString ConnectionString::parse(const QString& text) {
  ConnectionString cs;
  const qsizetype n = text.size();
  qsizetype i = 0;
  auto skipBlanks = [&] {
    while (i < n && text[i].isSpace()) ++i;
  };
  while (i < n) {
    skipBlanks();
    if (i < n && text[i] == u';') {  // empty segment
      ++i;
      continue;
    }
    if (i >= n) break;
    const qsizetype eq = text.indexOf(u'=', i);
    const qsizetype semi = text.indexOf(u';', i);
    if (eq < 0 || (semi >= 0 && semi < eq)) malformed(text, QStringLiteral("a part without '='"));
    const QString key = text.mid(i, eq - i).trimmed();
    if (key.isEmpty()) malformed(text, QStringLiteral("a value without a key"));
    i = eq + 1;
    skipBlanks();
    QString value;
    if (i < n && (text[i] == u'"' || text[i] == u'\'' || text[i] == u'{')) {
      const QChar open = text[i];
      const QChar close = open == u'{' ? QChar(u'}') : open;
      ++i;
      bool closed = false;
      while (i < n) {
        if (text[i] == close) {
          if (i + 1 < n && text[i + 1] == close) {
            value += close;
            i += 2;
            continue;
          }
          ++i;
          closed = true;
          break;
        }
        value += text[i++];
      }
      if (!closed) malformed(text, QStringLiteral("a value opened with %1 is never closed").arg(open));
      skipBlanks();
      if (i < n && text[i] != u';') malformed(text, QStringLiteral("text after a quoted value"));
    } else {
      const qsizetype end = semi < 0 ? n : semi;
      value = text.mid(i, end - i).trimmed();
      i = end;
    }
    if (i < n && text[i] == u';') ++i;
    const QString lower = key.toLower();
    if (!cs.values_.contains(lower)) cs.values_.insert(lower, value);
    cs.pairs_.append({key, value});
  }
  if (cs.pairs_.isEmpty()) malformed(text, QStringLiteral("no key=value pair"));
  return cs;
}

QString ConnectionString::value(const QStringList& keys) const {
  for (const QString& k : keys) {
    auto it = values_.constFind(k.toLower());
    if (it != values_.constEnd()) return *it;
  }
  return {};
}

}  // namespace tq7::db
