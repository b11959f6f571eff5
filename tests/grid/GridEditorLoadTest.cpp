#include "companion/IniFile.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "companion/db/Connection.h"
#include "frame/Error.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Trace : GridEditorEvents {
  QStringList log;
  GridEditor* grid = nullptr;
  void MoveComplete(int32_t& r) override { log << QStringLiteral("MoveComplete %1").arg(r); }
  void BeforeMoveNext(int32_t& r) override { log << QStringLiteral("BeforeMoveNext %1").arg(r); }
  void BeforeAddClickProcess() override { log << QStringLiteral("BeforeAdd"); }
  void AddClick() override { log << QStringLiteral("AddClick"); }
};

// A real SQLite file with the grid's table and the control tables.
struct Loaded : ::testing::Test {
  QTemporaryDir dir;
  QString conn;
  FakePlatform fake;
  GridEditor g;
  Trace ev;

  void SetUp() override {
    ASSERT_TRUE(dir.isValid());
    conn = QStringLiteral("Data Source=") + dir.filePath("t.db");
    {
      // The file must exist before the provider opens it.
      QFile f(dir.filePath("t.db"));
      ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    }
    db::Connection c;
    c.Open(conn);
    c.Execute("CREATE TABLE Item (ItemID INTEGER PRIMARY KEY, Name TEXT, Price REAL, Kind INTEGER, "
              "Delivered REAL, Paid INTEGER, Made INTEGER)");
    const double d = vb::DateSerial(2024, 3, 15);
    c.Execute(QString::fromUtf8("INSERT INTO Item VALUES (1, 'ข้าวหอมมะลิ', 1234.5, 1, %1, 1, 2024)").arg(d));
    c.Execute("INSERT INTO Item VALUES (2, 'Fish sauce', NULL, -2, 0, 0, NULL)");
    c.Execute(QString::fromUtf8("INSERT INTO Item VALUES (3, 'กาแฟ', 0, 40, %1, 1, 2020)").arg(d + 1));
    c.Execute("CREATE TABLE Empty (ItemID INTEGER PRIMARY KEY, Name TEXT)");
    c.Execute("CREATE TABLE TQ7TSystemUser (TSyUName TEXT, TSyUUserID INTEGER, TSyUValue REAL)");
    c.Execute("INSERT INTO TQ7TSystemUser VALUES ('LanguageID', 2, 1)");
    c.Execute("INSERT INTO TQ7TSystemUser VALUES ('DisableEditHighlight', 2, 1)");
    c.Close();
    g.setListener(&ev);
  }

  void declare() {
    g.SetFirst(8);
    g.addField3(1, "ItemID", "NUMBER", 1, "No.", 0, {}, 0, {}, 0, 10, 0, 1, 0, 0, 600);
    g.addField3(2, "Name", "TEXT", 0, QString::fromUtf8("ชื่อ"), 0, {}, 0, {}, 0, 40, 1, 0, 1, 0, 2000);
    g.addField3(3, "Price", "NUMBER", 0, "Price", 2, {}, 0, {}, 0, 12, 1, 1, 1, 0, 1200, 0, 0, {}, 9.5, {}, {}, {}, 2);
    g.addField3(4, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 900, 0, 0, "A,B,C,D");
    g.addField3(5, "Delivered", "DATE", 0, "Delivered", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 1200);
    g.addField3(6, "Paid", "CHECK", 0, "Paid", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 500);
    g.addField3(7, "Made", "YEAR", 0, "Made", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 700);
    g.addField3(8, "NoSuchField", "TEXT", 0, "Ghost", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 700, 0, 0, {}, 0,
                "default");
  }
};

}  // namespace

TEST_F(Loaded, FillDataShowsTheRecordsByTypeWithKeysStatesAndEvents) {
  declare();
  g.SetData("Items", "Item", {}, "ItemID", {}, 0, conn, conn);
  g.SetLast3(dir.path(), "grdItem", "1", conn, conn);
  ev.log.clear();
  g.FillData3(true, true);
  EXPECT_EQ(g.ErrorNumber, 0);
  EXPECT_EQ(g.RecordCount, 3);
  ASSERT_EQ(g.Rows(), 3);
  EXPECT_EQ(g.GETText(1, 2), QString::fromUtf8("ข้าวหอมมะลิ"));
  EXPECT_EQ(g.GETText(1, 3), "1,234.50");
  EXPECT_EQ(g.GETValue(1, 3), 1234.5);
  EXPECT_EQ(g.GETText(1, 5), "15/03/2567");
  EXPECT_EQ(g.GETText(1, 7), "2567");
  EXPECT_EQ(g.GETValue(1, 6), 1);
  // Keys and record states.
  EXPECT_EQ(g.TextMatrix(1, -989), "1");
  EXPECT_EQ(g.TextMatrix(3, -989), "3");
  EXPECT_EQ(g.TextMatrix(2, -988), "E");
  // A null keeps what the row's defaults gave it.
  EXPECT_EQ(g.GETValue(2, 3), 9.5);
  EXPECT_EQ(g.GETText(2, 3), "9.50");
  // A label list value of -2 shows the label at position 2 and keeps 2.
  EXPECT_EQ(g.GETText(2, 4), "C");
  EXPECT_EQ(g.GETValue(2, 4), 2);
  EXPECT_EQ(g.GETText(3, 4), "D");  // beyond the list: the last label
  // Zero shows empty; a field the table lacks keeps the default text.
  EXPECT_EQ(g.GETText(3, 3), "");
  EXPECT_EQ(g.GETText(2, 8), "default");
  // Events: each record completes its row, then the set moves on.
  EXPECT_EQ(ev.log.mid(0, 2), (QStringList{"MoveComplete 1", "BeforeMoveNext 1"}));
  EXPECT_TRUE(ev.log.contains("MoveComplete 3"));
  EXPECT_EQ(g.TextMatrix(3, 0), "3");  // running numbers
  EXPECT_TRUE(g.mfgData.Visible());
  EXPECT_FALSE(g.Text1.Visible());
  EXPECT_FALSE(g.Loading());
  EXPECT_NE(g.GETRecordset(), nullptr);
  EXPECT_EQ(fake.pointer, MousePointer::Default);
}

TEST_F(Loaded, ALoadIntoAGridWithRowsWritesIntoTheLastRowAndGoesOnBehindIt) {
  declare();
  g.SetData("Items", "Item", {}, "ItemID", {}, 0, conn, conn);
  for (int i = 0; i < 4; ++i) g.cmdAppend_Click();
  ASSERT_EQ(g.Rows(), 5);
  g.setTextMatrix(1, -988, "E");
  g.SetText(2, 2, "kept");
  g.FillData();
  EXPECT_EQ(g.Rows(), 7);
  EXPECT_EQ(g.TextMatrix(1, -988), "");  // row 1 lost its state
  EXPECT_EQ(g.GETText(2, 2), "kept");    // rows beyond the first stay as they were
  EXPECT_EQ(g.GETText(5, 2), QString::fromUtf8("ข้าวหอมมะลิ"));
  EXPECT_EQ(g.GETText(7, 2), QString::fromUtf8("กาแฟ"));
}

TEST_F(Loaded, ADeclarationChangedBetweenRowsAndLoadsIsReadAgain) {
  declare();
  g.SetData("Items", "Item", {}, "ItemID", {}, 0, conn, conn);
  g.SetLast3(dir.path(), "grdItem", "1", conn, conn);
  g.FillData();
  ASSERT_EQ(g.Rows(), 3);
  // A new default, alignment and decimals reach the next new row.
  g.setTextMatrix(-980, 3, "7.25");
  g.setTextMatrix(-968, 2, "2");
  g.setTextMatrix(-977, 3, "1");
  g.cmdAdd_Click();
  ASSERT_EQ(g.Rows(), 4);
  EXPECT_EQ(g.GETValue(4, 3), 7.25);
  EXPECT_EQ(g.GETText(4, 3), "7.3");
  g.mfgData.setRow(4);
  g.mfgData.setCol(2);
  EXPECT_EQ(g.mfgData.TypeHAlign(), 2);
  // A field name given to the ghost column is looked up by the next load.
  g.setTextMatrix(-990, 8, "Name");
  g.setTextMatrix(-988, 3, "TEXT");
  g.FillData();
  ASSERT_EQ(g.Rows(), 6);  // the first record lands in the last row
  EXPECT_EQ(g.GETText(4, 8), QString::fromUtf8("ข้าวหอมมะลิ"));
  EXPECT_EQ(g.GETText(4, 3), "1234.5");  // now a text column: the field's own text
}

TEST_F(Loaded, EmptyTablesMissingTablesAndBrokenConnections) {
  declare();
  g.SetData("Empty", "Empty", {}, {}, {}, 0, conn, conn);
  g.FillData3();
  EXPECT_EQ(g.RecordCount, 0);
  EXPECT_EQ(g.Rows(), 1);
  EXPECT_EQ(g.GETValue(1, 3), 9.5);  // the input row keeps its defaults
  EXPECT_EQ(g.ErrorNumber, 0);

  // The table check: a message, view mode, and the please-wait screen left standing.
  g.setEditStatus(true);
  g.SetData("Nope", "Nope", {}, {}, {}, 0, conn, conn);
  g.FillData3(true, false);
  ASSERT_EQ(fake.messages().size(), 1);
  EXPECT_EQ(fake.messages().first(),
            QString::fromUtf8("ไม่พบตารางข้อมูล Nope   ในฐานข้อมูล โปรดติดต่อผู้ดูแลระบบ"));
  EXPECT_FALSE(g.EditStatus());
  EXPECT_EQ(g.RUNMODE, "EDIT");  // the mode follows at the next setbuttons
  EXPECT_TRUE(g.Text1.Visible());
  EXPECT_TRUE(g.Loading());

  // Without the check, a failing query leaves its number and cleans up.
  GridEditor h;
  h.SetFirst(2);
  h.addField3(1, "Name", "TEXT", 0, "Name");
  h.SetData("Nope", "Nope", {}, {}, {}, 0, conn, conn);
  h.FillData3();
  EXPECT_NE(h.ErrorNumber, 0);
  EXPECT_FALSE(h.Text1.Visible());
  EXPECT_TRUE(h.mfgData.Visible());
  // A missing database file: the first database call fails.
  h.SetData("x", "Item", {}, {}, {}, 0, QStringLiteral("Data Source=") + dir.filePath("missing.db"), {});
  h.FillData3();
  EXPECT_NE(h.ErrorNumber, 0);
  EXPECT_FALSE(QFile::exists(dir.filePath("missing.db")));
  // SetData left out entirely.
  GridEditor k;
  k.SetFirst(1);
  k.FillData3();
  EXPECT_NE(k.ErrorNumber, 0);
}

TEST_F(Loaded, AppendData4LeavesTheButtonsHiddenButShowsTheSurface) {
  declare();
  g.SetData("Items", "Item", {}, {}, {}, 0, conn, conn);
  g.AppendData4(false, false, true);
  EXPECT_FALSE(g.cmdOption.Visible());
  EXPECT_FALSE(g.TbrButton.Visible());
  EXPECT_TRUE(g.mfgData.Visible());
  EXPECT_EQ(g.Rows(), 3);
}

TEST_F(Loaded, SetDataKeepsTheOldOrderWhenGivenNone) {
  declare();
  g.SetData("Items", "Item", {}, "ItemID DESC", {}, 0, conn, conn);
  g.SetData("Items", "Item", "Price > 100 OR Price IS NULL", {}, {}, 0, conn, conn);
  g.FillData3();
  ASSERT_EQ(g.Rows(), 2);
  EXPECT_EQ(g.GETText(1, 2), "Fish sauce");
  EXPECT_EQ(g.GETText(2, 2), QString::fromUtf8("ข้าวหอมมะลิ"));
}

TEST_F(Loaded, SetLast3ReadsTheUsersLanguageAndFormatAndJoinsCaptions) {
  declare();
  IniFile().WriteKey(dir.filePath("TQ7UserFormat.ini"), "2:GRDITEM", "2,0;3,1500;;7,15");
  g.addField3(3, "Price", "NUMBER", 0, "Price", 2, {}, 0, {}, 0, 12, 1, 1, 1, 0, 1200, 0, 0, {}, 0, {}, {}, {}, 2, 0,
              QString::fromUtf8("เงิน"));
  g.addField3(4, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 900, 0, 0, "A,B", 0, {}, {}, {}, 0,
              0, QString::fromUtf8("เงิน"));
  g.SetData("Items", "Item", {}, {}, {}, 0, conn, conn);
  g.SetLast3(dir.path() + "/", "grdItem", "2", conn, conn);
  EXPECT_EQ(g.LanguageID(), 1);
  EXPECT_EQ(g.DisableEditHighlight(), 1);
  EXPECT_EQ(g.mfgData.ToolTipText(), "Press F1 for Help");
  EXPECT_TRUE(g.IsColHidden(2));
  EXPECT_EQ(g.mfgData.ColWidth(3), 1500);
  EXPECT_TRUE(g.IsColHidden(7));  // a width under 20 counts as 0
  EXPECT_TRUE(g.mfgData.Visible());
  // The first-level group caption shows and joins its two columns into one span.
  const auto* span = g.mfgData.spanAt(4, -998);
  ASSERT_NE(span, nullptr);
  EXPECT_EQ(span->col, 3);
  EXPECT_EQ(span->numCols, 2);
  // Another user falls back to the global format.
  GridEditor other;
  other.SetFirst(3);
  IniFile().WriteKey(dir.filePath("TQ7GlobalFormat.ini"), "GLOBAL:GRDITEM", "1,0");
  other.SetLast3(dir.path(), "grdItem", "9", {}, {});
  EXPECT_TRUE(other.IsColHidden(1));
  EXPECT_EQ(other.LanguageID(), 0);
}

TEST_F(Loaded, AppendingRespectsTheStandingStopSwitchExceptWhileLoading) {
  declare();
  g.mfgData.setVisible(true);
  g.setStopActionAdd(true);
  ev.log.clear();
  g.cmdAdd_Click();
  EXPECT_EQ(g.Rows(), 1);
  EXPECT_TRUE(ev.log.isEmpty());
  g.cmdAddNewNoCheck();
  EXPECT_EQ(g.Rows(), 2);
  EXPECT_EQ(ev.log, (QStringList{"BeforeAdd", "AddClick"}));
  EXPECT_EQ(g.Record(), 2);
  EXPECT_EQ(g.Column(), 1);  // the first column wider than 10
  EXPECT_EQ(g.GETValue(2, 3), 9.5);
  // A load is never stopped by the switch.
  g.SetData("Items", "Item", {}, {}, {}, 0, conn, conn);
  g.AppendData3();
  EXPECT_EQ(g.Rows(), 4);
  // With every column 10 wide or less the cursor keeps its column.
  GridEditor narrow;
  narrow.SetFirst(3);
  for (int c = 1; c <= 3; ++c) narrow.SetColumnWidth(c, 10);
  narrow.setColumn(3);
  narrow.cmdAppend_Click(true);
  EXPECT_EQ(narrow.Column(), 3);
  EXPECT_EQ(narrow.Record(), 2);
}

TEST(GridEditorMapping, RecordsAndColumnsMapWithAbsoluteValuesAndACapOneWay) {
  FakePlatform fake;
  GridEditor g;
  g.SetFirst(4);
  for (int i = 0; i < 4; ++i) g.cmdAppend_Click();
  EXPECT_EQ(g.Record2Row(-3), 3);
  EXPECT_EQ(g.Record2Row(0), 0);
  EXPECT_EQ(g.Record2Row(99), 5);
  EXPECT_EQ(g.Row2Record(99), 99);
  EXPECT_EQ(g.Column2Col(-9), 4);
  g.setRecord(99);
  EXPECT_EQ(g.Record(), 5);
  // Records 2 and 3 marked deleted.
  for (int r : {2, 3}) {
    g.setTextMatrix(r, -988, "D");
    g.mfgData.setRowHeight(r, 0);
  }
  EXPECT_EQ(g.NextActiveRecord(1), 4);
  EXPECT_EQ(g.PreviousActiveRecord(4), 1);
  EXPECT_EQ(g.NextActiveRecord(5), 0);
  EXPECT_EQ(g.PreviousActiveRecord(1), 0);
  EXPECT_EQ(g.RecordActiveCount(), 3);
  EXPECT_EQ(g.Record2RecordActive(5), 3);
  g.mfgData.setRow(4);
  EXPECT_EQ(g.RecordActive(), 2);
  // The height test and the state test are not the same.
  g.mfgData.setRowHeight(3, 300);
  EXPECT_FALSE(g.isRowWasMarkDeleted(3));
  EXPECT_EQ(g.RecordActiveCount(), 3);
  // Reading by column name reads the active column.
  g.addField3(2, "NAME", "TEXT", 0, "Name");
  g.SetText(1, 2, "by name");
  g.SetText(1, 4, "active");
  g.setRecord(1);
  g.setColumn(4);
  EXPECT_EQ(g.GETTextByColumnName(1, "name"), "active");
  EXPECT_EQ(g.GETTextByColumnName(1, "none"), "");
  EXPECT_EQ(g.GETDate2(99, 1), 0);
  // Turning the numbers off empties column 0; on again renumbers.
  g.setEnableNumber(false);
  EXPECT_EQ(g.TextMatrix(5, 0), "");
  g.setEnableNumber(true);
  EXPECT_EQ(g.TextMatrix(5, 0), "4");  // rows 1, 3, 4 and 5 have a height
}

// Rows of nothing but NULLs, a text of 100,000 characters, and numbers beyond any date or whole
// number: the load takes what it can, a failure ends it with its number as the load's failures
// do, and the grid stays usable.
TEST_F(Loaded, NullRowsHugeTextsAndInfiniteNumbersLeaveAUsableGrid) {
  {
    db::Connection c;
    c.Open(conn);
    c.Execute("CREATE TABLE Odd (K INTEGER, Name TEXT, Amount REAL, Day REAL, Yr INTEGER, Kind INTEGER)");
    c.Execute("INSERT INTO Odd VALUES (1, NULL, NULL, NULL, NULL, NULL)");
    c.Execute(QStringLiteral("INSERT INTO Odd VALUES (2, '%1', 1e300, 45366, 2024, 2)").arg(QString(100000, u'ก')));
    c.Execute("INSERT INTO Odd VALUES (3, 'inf', 9e999, 9e999, 9e999, 9e999)");
    c.Execute("INSERT INTO Odd VALUES (4, 'after', 1, 45367, 2020, 1)");
    c.Close();
  }
  g.SetFirst(6);
  g.addField3(1, "K", "NUMBER", 1, "K", 0, {}, 0, {}, 0, 10, 0, 1, 0, 0, 600);
  g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 2000);
  g.addField3(3, "Amount", "NUMBER", 0, "Amount", 2, {}, 0, {}, 0, 0, 1, 1, 1, 0, 1200, 0, 0, {}, 0, {}, {}, {}, 2);
  g.addField3(4, "Day", "DATE", 0, "Day", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 1200);
  g.addField3(5, "Yr", "YEAR", 0, "Yr", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 700);
  g.addField3(6, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 0, 1, 1, 1, 0, 900, 0, 0, "A,B,C");
  g.SetData("Odd", "Odd", {}, "K", {}, 0, conn, conn);
  g.SetLast3(dir.path(), "grdOdd", "1", {}, {});
  g.FillData3();

  // The NULL row keeps its defaults; the long text arrives whole; a huge amount is a number.
  ASSERT_GE(g.Rows(), 2);
  EXPECT_EQ(g.GETText(1, 2), "");
  EXPECT_EQ(g.GETValue(1, 3), 0);
  EXPECT_EQ(g.GETText(2, 2).size(), 100000);
  EXPECT_EQ(g.GETValue(2, 3), 1e300);
  EXPECT_FALSE(g.GETText(2, 3).isEmpty());
  EXPECT_EQ(g.GETText(2, 4), "15/03/2567");
  // The infinite row fails where a number cannot be a date: the load's one handler ends the load
  // there with the overflow's number, and what was loaded before stands.
  EXPECT_EQ(g.ErrorNumber, err::Overflow);
  EXPECT_EQ(g.Rows(), 3);
  EXPECT_EQ(g.GETText(3, 2), "inf");
  EXPECT_FALSE(g.Loading());
  EXPECT_TRUE(g.mfgData.Visible());

  // Usable: a record added, typed into and read back.
  g.setEditStatus(true);
  const int32_t rows = g.Rows();
  g.cmdAppend_Click();
  EXPECT_EQ(g.Rows(), rows + 1);
  EXPECT_EQ(g.SetText(rows + 1, 2, QStringLiteral("ใหม่")), 1);
  EXPECT_EQ(g.GETText(rows + 1, 2), QStringLiteral("ใหม่"));
  EXPECT_EQ(g.SetValue(rows + 1, 3, 12.5), 1);
  EXPECT_EQ(g.GETText(rows + 1, 3), "12.50");
}
