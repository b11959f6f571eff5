#include "companion/db/Connection.h"
#include "companion/db/Recordset.h"
#include "companion/db/DbTestSupport.h"

#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::db;
using tq7::test::errorOf;
using tq7::test::SqliteFile;

namespace {
const char* kItems = R"(
CREATE TABLE Items(ItemID INTEGER PRIMARY KEY, ItemName TEXT, Price REAL, Qty INTEGER, Sold DATE, Note TEXT);
INSERT INTO Items VALUES (1, 'ปากกา', 12.5, 10, 45000, NULL);
INSERT INTO Items VALUES (2, 'Pencil', 3.25, NULL, 45001.75, 'soft');
INSERT INTO Items VALUES (3, 'ยางลบ', NULL, 7, NULL, '');
)";
}

TEST(DbSqlite, StaticResultReadsTypedValuesAndKeepsNulls) {
  SqliteFile f(kItems);
  Connection c;
  c.setCursorLocation(cursor::UseClient);
  c.setCommandTimeout(0);
  c.Open(f.conn(), "", "", -1);
  EXPECT_EQ(c.State(), state::Open);
  EXPECT_EQ(c.providerName(), QStringLiteral("SQLite"));

  Recordset rs;
  rs.Open(QStringLiteral("SELECT * FROM Items ORDER BY ItemID"), c, 3, 1, -1);
  ASSERT_EQ(rs.State(), state::Open);
  EXPECT_EQ(rs.RecordCount(), 3);
  ASSERT_EQ(rs.Fields().Count(), 6);
  EXPECT_EQ(rs.Fields().Item(1).Name(), QStringLiteral("ItemName"));
  EXPECT_EQ(rs.Fields().Item(0).Type(), FieldType::Integer);
  EXPECT_EQ(rs.Fields().Item(2).Type(), FieldType::Double);
  EXPECT_EQ(rs.Fields().Item(1).Type(), FieldType::Text);

  Field& name = rs.Fields().Item(QStringLiteral("itemname"));  // case ignored, kept across moves
  Field& note = rs.Fields(QStringLiteral("NOTE"));
  EXPECT_FALSE(rs.BOF());
  EXPECT_EQ(rs.AbsolutePosition(), 1);
  EXPECT_EQ(name.Value().toString(), QStringLiteral("ปากกา"));
  EXPECT_EQ(rs.Fields(0).Value().toLongLong(), 1);
  EXPECT_DOUBLE_EQ(rs.Fields(2).Value().toDouble(), 12.5);
  EXPECT_TRUE(note.Value().isNull());
  // A stored number reads as a number without a variant; a text or a null does not.
  double number = 0;
  EXPECT_TRUE(rs.Fields(0).numberValue(number));
  EXPECT_EQ(number, 1.0);
  EXPECT_TRUE(rs.Fields(2).numberValue(number));
  EXPECT_EQ(number, 12.5);
  EXPECT_FALSE(name.numberValue(number));
  EXPECT_FALSE(note.numberValue(number));
  rs.MoveNext();
  EXPECT_TRUE(rs.Fields(QStringLiteral("Qty")).Value().isNull());
  EXPECT_DOUBLE_EQ(rs.Fields(QStringLiteral("Sold")).Value().toDouble(), 45001.75);
  EXPECT_EQ(note.Value().toString(), QStringLiteral("soft"));
  rs.MoveNext();
  EXPECT_EQ(name.Value().toString(), QStringLiteral("ยางลบ"));
  EXPECT_TRUE(rs.Fields(2).Value().isNull());
  // An empty text is a text, not a null.
  EXPECT_FALSE(note.Value().isNull());
  EXPECT_EQ(note.Value().toString(), QString());
  rs.MoveNext();
  EXPECT_TRUE(rs.EOF_());
  EXPECT_EQ(rs.AbsolutePosition(), pos::EOF_);
  EXPECT_EQ(errorOf([&] { (void)name.Value(); }).number, err::DbEofOrBof);
  EXPECT_EQ(errorOf([&] { (void)rs.Fields(0).numberValue(number); }).number, err::DbEofOrBof);
  EXPECT_EQ(errorOf([&] { rs.MoveNext(); }).number, err::DbEofOrBof);
  EXPECT_EQ(errorOf([&] { rs.Fields(QStringLiteral("Nope")); }).number, err::DbItemNotFound);
  EXPECT_EQ(errorOf([&] { rs.Fields(6); }).number, err::DbItemNotFound);

  // The record set lives on after its connection has gone.
  c.Close();
  EXPECT_EQ(c.State(), state::Closed);
  rs.MoveFirst();
  EXPECT_EQ(name.Value().toString(), QStringLiteral("ปากกา"));
  rs.Close();
  EXPECT_EQ(rs.State(), state::Closed);
  EXPECT_EQ(errorOf([&] { (void)rs.RecordCount(); }).number, err::DbConnectionClosed);
  EXPECT_EQ(errorOf([&] { c.Close(); }).number, err::DbConnectionClosed);
}

TEST(DbSqlite, PagingAndPositioning) {
  SqliteFile f(R"(CREATE TABLE n(v INTEGER);
    WITH RECURSIVE s(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM s WHERE i<101) INSERT INTO n SELECT i FROM s;)");
  Connection c;
  c.Open(f.conn());
  Recordset rs;
  rs.Open(QStringLiteral("SELECT v FROM n ORDER BY v"), c);
  EXPECT_EQ(rs.PageSize(), 10);
  EXPECT_EQ(rs.PageCount(), 11);
  rs.setPageSize(100);
  EXPECT_EQ(rs.PageCount(), 2);
  rs.setAbsolutePosition(101);
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 101);
  EXPECT_EQ(errorOf([&] { rs.setAbsolutePosition(102); }).number, err::DbBadArgument);
  EXPECT_EQ(errorOf([&] { rs.setAbsolutePosition(0); }).number, err::DbBadArgument);
  EXPECT_EQ(rs.AbsolutePosition(), 101);  // a refused move leaves the cursor where it was
  rs.Move(-100);
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 1);
  rs.Move(-1);
  EXPECT_TRUE(rs.BOF());
  EXPECT_FALSE(rs.EOF_());
  EXPECT_EQ(rs.AbsolutePosition(), pos::BOF);
  EXPECT_EQ(errorOf([&] { rs.MovePrevious(); }).number, err::DbEofOrBof);
  rs.Move(50);  // from before the first record
  EXPECT_EQ(rs.AbsolutePosition(), 50);
  rs.Move(1000);
  EXPECT_TRUE(rs.EOF_());
  rs.MovePrevious();
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 101);
  rs.MoveLast();
  EXPECT_EQ(rs.AbsolutePosition(), 101);
  EXPECT_EQ(errorOf([&] { rs.setPageSize(0); }).number, err::DbBadArgument);
  EXPECT_EQ(errorOf([&] { rs.Open(QStringLiteral("SELECT 1"), c); }).number, err::DbObjectOpen);

  // An empty result is at BOF and EOF at once, with nothing to move to.
  Recordset empty;
  empty.Open(QStringLiteral("SELECT v FROM n WHERE v < 0"), c);
  EXPECT_TRUE(empty.EOF_());
  EXPECT_TRUE(empty.BOF());
  EXPECT_EQ(empty.RecordCount(), 0);
  EXPECT_EQ(empty.PageCount(), 0);
  EXPECT_EQ(empty.Fields().Count(), 1);
  EXPECT_EQ(errorOf([&] { empty.MoveFirst(); }).number, err::DbEofOrBof);
}

TEST(DbSqlite, TopStatementRunsAsLimitAndTheSourceStaysAsWritten) {
  SqliteFile f(kItems);
  Connection c;
  c.Open(f.conn());
  const QString sql = QStringLiteral("SELECT  TOP 2 ItemID, ItemName FROM Items ORDER BY ItemID DESC");
  Recordset rs;
  rs.Open(sql, c);
  EXPECT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 3);
  EXPECT_EQ(rs.Source(), sql);
}

TEST(DbSqlite, LooselyTypedColumnsKeepEachValue) {
  SqliteFile f(R"(CREATE TABLE m(id INTEGER, v);
    INSERT INTO m VALUES (1, NULL), (2, 5), (3, 2.5), (4, 'ห้า'), (5, x'00ff'), (6, NULL), (7, 9);)");
  Connection c;
  c.Open(f.conn());
  Recordset rs;
  rs.Open(QStringLiteral("SELECT v, CAST(v AS REAL) AS r FROM m ORDER BY id"), c);
  QVariantList v;
  for (; !rs.EOF_(); rs.MoveNext()) v << rs.Fields(0).Value();
  ASSERT_EQ(v.size(), 7);
  EXPECT_TRUE(v[0].isNull());
  EXPECT_EQ(v[1].toLongLong(), 5);
  EXPECT_DOUBLE_EQ(v[2].toDouble(), 2.5);
  EXPECT_EQ(v[3].toString(), QStringLiteral("ห้า"));
  EXPECT_EQ(v[4].toByteArray(), QByteArray("\x00\xff", 2));
  EXPECT_TRUE(v[5].isNull());
  EXPECT_EQ(v[6].toLongLong(), 9);
  EXPECT_EQ(rs.Fields(0).Type(), FieldType::Variant);
  // Integers before the first real of a column read back as the same numbers.
  rs.MoveFirst();
  rs.Move(1);
  EXPECT_DOUBLE_EQ(rs.Fields(1).Value().toDouble(), 5.0);
  EXPECT_EQ(rs.Fields(1).Type(), FieldType::Double);
}

TEST(DbSqlite, FailuresCarryNumberAndTextAndCreateNothing) {
  SqliteFile f(kItems);
  {
    // A file that is not there stays not there.
    const QString missing = f.dir.filePath(QStringLiteral("nothing.db"));
    Connection c;
    const Error e = errorOf([&] { c.Open(QStringLiteral("Provider=SQLite;Data Source=") + missing); });
    EXPECT_EQ(e.number, err::DbUnspecified);
    EXPECT_TRUE(e.description.contains(QStringLiteral("unable to open"))) << e.description.toStdString();
    EXPECT_EQ(c.State(), state::Closed);
    EXPECT_FALSE(QFile::exists(missing));
  }
  {
    // A file that is no database is refused at the open, not later.
    const QString junk = f.dir.filePath(QStringLiteral("junk.db"));
    QFile j(junk);
    ASSERT_TRUE(j.open(QIODevice::WriteOnly));
    j.write(QByteArray(4096, 'x'));
    j.close();
    Connection c;
    const Error e = errorOf([&] { c.Open(QStringLiteral("Data Source=") + junk); });
    EXPECT_TRUE(e.description.contains(QStringLiteral("not a database"))) << e.description.toStdString();
    EXPECT_EQ(c.State(), state::Closed);
  }
  Connection c;
  c.Open(f.conn());
  Recordset rs;
  Error e = errorOf([&] { rs.Open(QStringLiteral("SELEC ItemID FROM Items"), c); });
  EXPECT_EQ(e.number, err::DbSyntax);
  EXPECT_TRUE(e.description.contains(QStringLiteral("syntax error")));
  e = errorOf([&] { rs.Open(QStringLiteral("SELECT * FROM NoSuchTable"), c); });
  EXPECT_EQ(e.number, err::DbNoSuchTable);
  EXPECT_TRUE(e.description.contains(QStringLiteral("NoSuchTable")));
  EXPECT_EQ(rs.State(), state::Closed);
  // The connection survives a bad statement.
  rs.Open(QStringLiteral("SELECT count(*) FROM Items"), c);
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 3);
  e = errorOf([&] {
    Recordset r;
    Connection closed;
    r.Open(QStringLiteral("SELECT 1"), closed);
  });
  EXPECT_EQ(e.number, err::DbConnectionClosed);
}

TEST(DbSqlite, CommandTimeoutStopsARunawayQuery) {
  SqliteFile f(kItems);
  Connection c;
  c.setCommandTimeout(1);
  c.Open(f.conn());
  Recordset rs;
  QElapsedTimer t;
  t.start();
  const Error e = errorOf([&] {
    rs.Open(QStringLiteral("WITH RECURSIVE s(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM s) SELECT max(i) FROM s"), c);
  });
  EXPECT_EQ(e.number, err::DbTimeout);
  EXPECT_FALSE(e.description.isEmpty());
  EXPECT_LT(t.elapsed(), 5000);
  EXPECT_EQ(rs.State(), state::Closed);
  // The next command has its own second and runs.
  rs.Open(QStringLiteral("SELECT count(*) FROM Items"), c);
  EXPECT_EQ(rs.Fields(0).Value().toInt(), 3);
}

TEST(DbSqlite, ExecuteAndCatalog) {
  SqliteFile f(kItems);
  Connection c;
  c.Open(f.conn());
  EXPECT_EQ(c.Execute(QStringLiteral("CREATE TABLE Sales(SaleID INTEGER PRIMARY KEY, "
                                     "ItemRef INTEGER REFERENCES Items(ItemID), Other INTEGER REFERENCES Items);"
                                     "INSERT INTO Sales VALUES (1, 2, 3); INSERT INTO Sales VALUES (2, 2, 2);")),
            2);
  EXPECT_EQ(c.tables(), (QStringList{QStringLiteral("Items"), QStringLiteral("Sales")}));
  EXPECT_EQ(c.columns(QStringLiteral("sales")),
            (QStringList{QStringLiteral("SaleID"), QStringLiteral("ItemRef"), QStringLiteral("Other")}));
  EXPECT_TRUE(c.columns(QStringLiteral("Nope")).isEmpty());
  const auto fks = c.foreignKeys();
  ASSERT_EQ(fks.size(), 2u);
  EXPECT_EQ(fks[0].table, QStringLiteral("Sales"));
  EXPECT_EQ(fks[0].refTable, QStringLiteral("Items"));
  // Both the named parent column and the implied primary key are found.
  QStringList refs;
  for (const auto& k : fks) refs << k.column + QLatin1Char('>') + k.refColumn;
  refs.sort();
  EXPECT_EQ(refs, (QStringList{QStringLiteral("ItemRef>ItemID"), QStringLiteral("Other>ItemID")}));
  EXPECT_EQ(errorOf([&] { c.Execute(QStringLiteral("INSERT INTO Nowhere VALUES (1)")); }).number, err::DbNoSuchTable);
}
