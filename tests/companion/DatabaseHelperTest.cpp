#include "companion/DatabaseHelper.h"
#include "companion/db/DbTestSupport.h"
#include "frame/FakePlatform.h"
#include "frame/SpreadSurface.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace tq7;
using tq7::test::errorOf;
using tq7::test::PgDatabase;
using tq7::test::SqliteFile;

namespace {

const char* kSchema = R"(
CREATE TABLE Items(ItemID INTEGER PRIMARY KEY, ItemName TEXT);
CREATE TABLE Codes(Code TEXT PRIMARY KEY);
CREATE TABLE Groups(ItemID INTEGER PRIMARY KEY);
CREATE TABLE Sales(SaleID INTEGER PRIMARY KEY, ItemRef INTEGER REFERENCES Items(ItemID));
CREATE TABLE Labels(LabelID INTEGER PRIMARY KEY, CodeRef TEXT REFERENCES Codes);
CREATE TABLE Members(MemberID INTEGER PRIMARY KEY, GroupRef INTEGER REFERENCES Groups(ItemID));
CREATE TABLE TQ7TTable(TTblName TEXT, TTblAlias TEXT);
INSERT INTO Items VALUES (1, 'ปากกา'), (2, 'ดินสอ');
INSERT INTO Codes VALUES ('A''B'), ('C');
INSERT INTO Groups VALUES (1), (2), (7);
INSERT INTO Sales VALUES (10, 2);
INSERT INTO Labels VALUES (1, 'A''B');
INSERT INTO Members VALUES (1, 7);
INSERT INTO TQ7TTable VALUES ('Sales', 'ใบขายสินค้า'), ('O''Brien', 'quoted'), ('Labels', NULL), ('Sales', 'second');
)";

}  // namespace

TEST(DbHelper, SqlTextDoublesQuotes) {
  EXPECT_EQ(DatabaseHelper::SqlText(QStringLiteral("O'Brien's")), QStringLiteral("O''Brien''s"));
  EXPECT_EQ(DatabaseHelper::SqlText(QString()), QString());
}

TEST(DbHelper, ReferencesTablesAndLookupsOnSqlite) {
  SqliteFile f(kSchema);
  DatabaseHelper h;
  const QString conn = f.conn();
  // Item 2 is sold; item 1 is not. The key field matches without regard to case.
  EXPECT_EQ(h.CheckReferences(2.0, conn, QStringLiteral("itemid")), QStringLiteral("Sales"));
  EXPECT_EQ(h.CheckReferences(1, conn, QStringLiteral("ItemID")), QString());
  // Group 7 is referred to through a key that also names ItemID, but on Groups.
  EXPECT_EQ(h.CheckReferences(7, conn, QStringLiteral("ItemID")), QStringLiteral("Members"));
  EXPECT_EQ(h.CheckReferences(7, conn, QStringLiteral("ItemID"), QStringLiteral("Items")), QString());
  EXPECT_EQ(h.CheckReferences(2, conn, QStringLiteral("ItemID"), QStringLiteral("main.Items")), QStringLiteral("Sales"));
  // A text key with a quote, through the implied primary key of Codes.
  EXPECT_EQ(h.CheckReferences(QStringLiteral("A'B"), conn, QStringLiteral("Code")), QStringLiteral("Labels"));
  EXPECT_EQ(h.CheckReferences(QStringLiteral("C"), conn, QStringLiteral("Code")), QString());
  EXPECT_NE(errorOf([&] { h.CheckReferences(1, QStringLiteral("Data Source=/nonexistent/x.db"), "ItemID"); }).number, 0);

  QString message = QStringLiteral("ถูกอ้างอิงถึงจาก ");
  h.CheckReferencedMessage(QStringLiteral("Groups; Sales"), 2, QStringLiteral("ItemID"), message, conn);
  EXPECT_EQ(message, QStringLiteral("ถูกอ้างอิงถึงจาก Groups"));
  message.clear();
  h.CheckReferencedMessage(QStringLiteral("Sales"), 2, QStringLiteral("SaleID"), message, conn);
  EXPECT_EQ(message, QString());

  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", QStringLiteral("Sales"), "TTblName", "TQ7TTable", conn),
            QStringLiteral("ใบขายสินค้า"));
  EXPECT_EQ(h.LookupValue(QStringLiteral("TTblAlias <> 'ใบขายสินค้า'"), 0, 0, "TTblAlias", QStringLiteral("Sales"),
                          "TTblName", "TQ7TTable", conn),
            QStringLiteral("second"));
  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", QStringLiteral("O'Brien"), "TTblName", "TQ7TTable", conn),
            QStringLiteral("quoted"));
  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", QStringLiteral("Labels"), "TTblName", "TQ7TTable", conn), QString());
  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", QStringLiteral("Nope"), "TTblName", "TQ7TTable", conn), QString());
  EXPECT_EQ(h.LookupValue({}, 0, 0, "ItemName", 2, "ItemID", "Items", conn), QStringLiteral("ดินสอ"));
  EXPECT_EQ(h.LookupValue({}, 0, 0, "NoField", 2, "ItemID", "Items", conn), QString());
  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", "Sales", "TTblName", "TQ7TTable", QString()), QString());

  EXPECT_EQ(h.TableExists(QStringLiteral("tq7ttable"), conn, 0), 1);
  EXPECT_EQ(h.TableExists(QStringLiteral("Nothing"), conn, 0), 0);
  EXPECT_EQ(h.TableExists(QStringLiteral("Items"), QStringLiteral("Data Source=/nonexistent/x.db"), 0), 0);
  EXPECT_EQ(h.FieldExists(QStringLiteral("ttblalias"), QStringLiteral("TQ7TTABLE"), conn, 0), 1);
  EXPECT_EQ(h.FieldExists(QStringLiteral("TTblAlias"), QStringLiteral("Items"), conn, 0), 0);
  EXPECT_EQ(h.FieldExists(QStringLiteral("ItemID"), QStringLiteral("Nothing"), conn, 0), 0);

  // A load asks for the same fields again and again: a field once found needs no new connection,
  // one not found yet is looked for afresh.
  SqliteFile g("CREATE TABLE T(a, b);");
  DatabaseHelper k;
  EXPECT_EQ(k.FieldExists(QStringLiteral("a"), QStringLiteral("T"), g.conn(), 0), 1);
  {
    db::Connection c;
    c.Open(g.conn());
    c.Execute(QStringLiteral("ALTER TABLE T ADD COLUMN c"));
  }
  EXPECT_EQ(k.FieldExists(QStringLiteral("C"), QStringLiteral("t"), g.conn(), 0), 1);
  ASSERT_TRUE(QFile::remove(g.path));
  EXPECT_EQ(k.FieldExists(QStringLiteral("B"), QStringLiteral("T"), g.conn(), 0), 1);
  EXPECT_EQ(k.FieldExists(QStringLiteral("d"), QStringLiteral("T"), g.conn(), 0), 0);
}

TEST(DbHelper, ReferencesTablesAndLookupsOnPostgres) {
  TQ7_REQUIRE_PG();
  PgDatabase pg;
  {
    db::Connection c;
    c.Open(pg.conn);
    c.Execute(QString::fromUtf8(kSchema).replace(QStringLiteral("INTEGER PRIMARY KEY"), QStringLiteral("int PRIMARY KEY")));
  }
  DatabaseHelper h;
  EXPECT_EQ(h.CheckReferences(2.0, pg.conn, QStringLiteral("ItemID")), QStringLiteral("sales"));
  EXPECT_EQ(h.CheckReferences(1, pg.conn, QStringLiteral("ItemID")), QString());
  EXPECT_EQ(h.CheckReferences(7, pg.conn, QStringLiteral("itemid"), QStringLiteral("Items")), QString());
  EXPECT_EQ(h.CheckReferences(7, pg.conn, QStringLiteral("itemid"), QStringLiteral("public.groups")),
            QStringLiteral("members"));
  EXPECT_EQ(h.CheckReferences(QStringLiteral("A'B"), pg.conn, QStringLiteral("Code")), QStringLiteral("labels"));
  EXPECT_EQ(h.LookupValue({}, 0, 0, "TTblAlias", QStringLiteral("O'Brien"), "TTblName", "TQ7TTable", pg.conn),
            QStringLiteral("quoted"));
  EXPECT_EQ(h.TableExists(QStringLiteral("TQ7TTable"), pg.conn, 0), 1);
  EXPECT_EQ(h.TableExists(QStringLiteral("public.items"), pg.conn, 0), 1);
  EXPECT_EQ(h.TableExists(QStringLiteral("Nothing"), pg.conn, 0), 0);
  EXPECT_EQ(h.FieldExists(QStringLiteral("TTblAlias"), QStringLiteral("TQ7TTable"), pg.conn, 0), 1);
  EXPECT_EQ(h.FieldExists(QStringLiteral("Nope"), QStringLiteral("TQ7TTable"), pg.conn, 0), 0);
}

TEST(DbHelper, ReferencesThroughOdbc) {
  SqliteFile f(kSchema);
  DatabaseHelper h;
  const QString conn = QStringLiteral("Driver={SQLite3};Database=") + f.path;
  EXPECT_EQ(h.CheckReferences(2, conn, QStringLiteral("ItemID")), QStringLiteral("Sales"));
  EXPECT_EQ(h.CheckReferences(1, conn, QStringLiteral("ItemID")), QString());
  EXPECT_EQ(h.TableExists(QStringLiteral("sales"), conn, 0), 1);
  EXPECT_EQ(h.FieldExists(QStringLiteral("itemref"), QStringLiteral("Sales"), conn, 0), 1);
}

TEST(DbHelperSurface, FindRowSearchesOnwardsRoundAndAsksWhenEmpty) {
  FakePlatform fake;
  SpreadSurface s;
  s.setMaxCols(2);
  s.setMaxRows(5);
  const char* names[] = {"Apple", "pear", "Plum", "Peach", "apricot"};
  for (int r = 1; r <= 5; ++r) s.SetText(2, r, QString::fromUtf8(names[r - 1]));
  s.setRowHeight(4, 0);  // a removed record is passed over
  DatabaseHelper h;
  EXPECT_EQ(h.FindRow(s, 1, 2, QStringLiteral("p"), 5, 1), 2);
  EXPECT_EQ(h.FindRow(s, 2, 2, QStringLiteral("p"), 5, 1), 3);
  EXPECT_EQ(h.FindRow(s, 3, 2, QStringLiteral("P"), 5, 1), 2);  // round past the end, row 4 hidden
  EXPECT_EQ(h.FindRow(s, 5, 2, QStringLiteral("a"), 10, 1), 1);
  EXPECT_EQ(h.FindRow(s, 1, 2, QStringLiteral("a"), 10, 1), 5);
  EXPECT_EQ(h.FindRow(s, 3, 2, QStringLiteral("zz"), 5, 1), 3);
  EXPECT_TRUE(fake.calls.isEmpty());

  fake.answers.push_back(QStringLiteral("pl"));
  EXPECT_EQ(h.FindRow(s, 1, 2, QString(), 5, 1), 3);
  ASSERT_EQ(fake.count(QStringLiteral("inputBox")), 1);
  EXPECT_TRUE(fake.calls[0].contains(QStringLiteral("ค้นหา")));
  // The second question offers the last text; cancelling leaves the cursor where it was.
  fake.answers.push_back(QString());
  EXPECT_EQ(h.FindRow(s, 2, 2, QString(), 5, 1), 2);
  h.LanguageID = 1;
  EXPECT_EQ(h.FindRow(s, 4, 2, QString(), 5, 1), 3);  // no answer queued: the box's default "pl"
  EXPECT_TRUE(fake.calls.last().contains(QStringLiteral("Find")));
}

namespace {
QStringList numbers(const GridSurface& s) {
  QStringList out;
  for (int r = 1; r <= s.MaxRows(); ++r) out << s.GetText(0, r);
  return out;
}
}  // namespace

TEST(DbHelperSurface, NumberRowsSkipsHiddenRowsAndWritesOverTextInColumnZero) {
  SpreadSurface s;
  DatabaseHelper h;
  s.setMaxCols(3);
  // A text written into column 0 between appends is numbered over by the next numbering, however
  // far above the new row it stands.
  const QString mark = QStringLiteral("mark");
  for (int r = 1; r <= 500; ++r) {
    s.setMaxRows(r);
    h.NumberRows(s, 1, -1, 0, 0, 0, 1);
    if (r == 3) s.SetText(0, 1, mark);
  }
  EXPECT_EQ(s.GetText(0, 1), QStringLiteral("1"));
  EXPECT_EQ(s.GetText(0, 2), QStringLiteral("2"));
  EXPECT_EQ(s.GetText(0, 500), QStringLiteral("500"));

  s.setMaxRows(6);
  s.setRowHeight(2, 0);
  s.setRowHeight(5, 0);
  h.NumberRows(s, 1, -1, 0, 0, 0, 1);
  EXPECT_EQ(numbers(s), (QStringList{"1", "", "2", "3", "", "4"}));
  s.SetText(0, 3, mark);
  h.NumberRows(s, 1, -1, 0, 0, 0, 1);  // from row 3 on, going on from row 1's number
  EXPECT_EQ(numbers(s), (QStringList{"1", "", "2", "3", "", "4"}));
  s.setRowHeight(5, 240);
  h.NumberRows(s, 1, -1, 0, 0, 0, 1);
  EXPECT_EQ(numbers(s), (QStringList{"1", "", "2", "3", "4", "5"}));

  // Numbers wiped by hand (numbering switched off, then on) come back whole.
  for (int r = 1; r <= 6; ++r) s.SetText(0, r, QString());
  h.NumberRows(s, 1, -1, 0, 0, 0, 1);
  EXPECT_EQ(numbers(s), (QStringList{"1", "", "2", "3", "4", "5"}));
  s.setRowHeight(2, 240);
  h.NumberRows(s, 1, -1, 0, 0, 0, 1);
  EXPECT_EQ(numbers(s), (QStringList{"1", "2", "3", "4", "5", "6"}));
}

TEST(DbHelperSurface, SetupColumnFillBlockAndSetupGridShapeTheSheetAndKeepThePointer) {
  SpreadSurface s;
  s.setMaxCols(4);
  s.setMaxRows(6);
  s.setRow(3), s.setCol(2), s.setRow2(4), s.setCol2(3);
  DatabaseHelper h;
  auto pointerKept = [&] { return s.Row() == 3 && s.Col() == 2 && s.Row2() == 4 && s.Col2() == 3 && !s.BlockMode(); };

  h.SetupColumn(s, QStringLiteral("ราคา"), 2, 3, 6, 1200, 1, 1);
  h.SetupColumn(s, QStringLiteral("ชื่อ"), 3, 3, 3, 0, 4, 1);
  EXPECT_TRUE(pointerKept());
  EXPECT_EQ(s.GetText(2, 0), QStringLiteral("ราคา"));
  EXPECT_DOUBLE_EQ(s.ColWidth(2), 1200);
  EXPECT_DOUBLE_EQ(s.ColWidth(3), 0);
  s.setRow(5), s.setCol(2);
  EXPECT_EQ(s.TypeHAlign(), 1);
  EXPECT_TRUE(s.Lock());
  EXPECT_EQ(s.CellType(), celltype::StaticText);
  s.setCol(3);
  EXPECT_EQ(s.TypeHAlign(), 0);
  s.setRow(0);
  EXPECT_EQ(s.TypeHAlign(), 2);  // heading centred by code 3

  s.setRow(3), s.setCol(2);
  const Colour yellow = rgb(255, 255, 0), red = rgb(255, 0, 0);
  h.FillBlock(s, QVariant(qlonglong(yellow)), QVariant(), 4, 3, 1, 1, 1, 1, QString(), 1);
  EXPECT_TRUE(pointerKept());
  auto back = [&](int r, int c) {
    s.setRow(r), s.setCol(c);
    const Colour v = s.BackColor();
    s.setRow(3), s.setCol(2);
    return v;
  };
  auto fore = [&](int r, int c) {
    s.setRow(r), s.setCol(c);
    const Colour v = s.ForeColor();
    s.setRow(3), s.setCol(2);
    return v;
  };
  const Colour plain = back(6, 4);
  const Colour plainFore = fore(6, 4);
  // Stripes of one row coloured, one row passed over, corners given in reverse.
  EXPECT_EQ(back(1, 1), yellow);
  EXPECT_EQ(back(1, 3), yellow);
  EXPECT_EQ(back(2, 2), plain);
  EXPECT_EQ(back(3, 2), yellow);
  EXPECT_EQ(back(4, 3), plain);
  EXPECT_EQ(back(1, 4), plain);
  EXPECT_EQ(fore(1, 1), plainFore);  // an empty fore colour leaves it alone
  // A column list limits the columns inside the block.
  h.FillBlock(s, QVariant(), QVariant(qlonglong(red)), 5, 1, 6, 4, 0, 0, QStringLiteral("2;4,9"), 1);
  EXPECT_EQ(fore(5, 2), red);
  EXPECT_EQ(fore(6, 4), red);
  EXPECT_EQ(fore(5, 3), plainFore);
  EXPECT_EQ(fore(5, 1), plainFore);
  EXPECT_EQ(back(5, 2), plain);

  s.setGridShowHoriz(false);
  s.setGridShowVert(false);
  h.SetupGrid(s, 1);
  EXPECT_TRUE(pointerKept());
  EXPECT_TRUE(s.GridShowHoriz());
  EXPECT_TRUE(s.GridShowVert());
  s.setRow(4), s.setCol(0);
  EXPECT_EQ(s.TypeHAlign(), 2);
}
