#include "companion/SystemValues.h"
#include "companion/db/DbTestSupport.h"

#include <gtest/gtest.h>

using namespace tq7;
using tq7::test::PgDatabase;
using tq7::test::SqliteFile;

namespace {
const char* kSettings = R"(
CREATE TABLE TQ7TSystemUser(TSyUName TEXT, TSyUUserID INTEGER, TSyUValue TEXT);
CREATE TABLE TQ7TSystem(TSysName TEXT, TSysValue REAL);
INSERT INTO TQ7TSystemUser VALUES ('LanguageID', 12, '1'), ('LanguageID', 13, '0'), ('Rate', 12, '2.5'),
  ('it''s', 12, '7'), ('Empty', 12, NULL), ('Word', 12, 'abc');
INSERT INTO TQ7TSystem VALUES ('ColorOK', 65280), ('Half', 0.5), ('Nothing', NULL), ('x''y', 3);
)";
}

TEST(SystemValues, ReadsUserAndSystemSettingsAndAnswersZeroForAnythingMissing) {
  SqliteFile f(kSettings);
  const QString conn = f.conn();
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("LanguageID"), conn), 1.0);
  EXPECT_EQ(GetUserSystemValue(13, QStringLiteral("LanguageID"), conn), 0.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("Rate"), conn), 2.5);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("it's"), conn), 7.0);  // the name is escaped
  EXPECT_EQ(GetUserSystemValue(14, QStringLiteral("LanguageID"), conn), 0.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("Empty"), conn), 0.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("Word"), conn), 0.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("LanguageID"), QString()), 0.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("LanguageID"), QStringLiteral("Data Source=/nonexistent.db")), 0.0);

  EXPECT_EQ(GetSystemValue(QStringLiteral("ColorOK"), conn), 65280.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("Half"), conn), 0.5);
  EXPECT_EQ(GetSystemValue(QStringLiteral("x'y"), conn), 3.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("Nothing"), conn), 0.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("Absent"), conn), 0.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("ColorOK"), QString()), 0.0);
  // A database without the tables is no failure of the caller's.
  SqliteFile bare("CREATE TABLE Other(x);");
  EXPECT_EQ(GetSystemValue(QStringLiteral("ColorOK"), bare.conn()), 0.0);
}

TEST(SystemValues, ReadFromPostgres) {
  TQ7_REQUIRE_PG();
  PgDatabase pg;
  {
    db::Connection c;
    c.Open(pg.conn);
    c.Execute(QString::fromUtf8(kSettings).replace(QStringLiteral("REAL"), QStringLiteral("float8")));
  }
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("LanguageID"), pg.conn), 1.0);
  EXPECT_EQ(GetUserSystemValue(12, QStringLiteral("it's"), pg.conn), 7.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("ColorOK"), pg.conn), 65280.0);
  EXPECT_EQ(GetSystemValue(QStringLiteral("Nothing"), pg.conn), 0.0);
}
