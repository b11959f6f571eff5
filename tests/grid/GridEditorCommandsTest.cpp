#include "companion/db/Connection.h"
#include "frame/FakePlatform.h"
#include "grid/editor/GridEditor.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Trace : GridEditorEvents {
  QStringList log;
  bool stopDelete = false;
  GridEditor* grid = nullptr;
  void BeforeDeleteClickProcess() override {
    log << "BeforeDelete";
    if (stopDelete) grid->setStopActionDelete(true);
  }
  void DeleteClick() override { log << "DeleteClick"; }
  void BeforeAddClickProcess() override { log << "BeforeAdd"; }
  void AddClick() override { log << "AddClick"; }
};

// Five records with a key, a name and an amount, in edit mode; record r holds "n<r>" and r * 10.
struct Commands : ::testing::Test {
  FakePlatform fake;
  GridEditor g;
  Trace ev;
  void SetUp() override {
    ev.grid = &g;
    g.setListener(&ev);
    g.SetFirst(3);
    g.addField3(1, "ItemID", "NUMBER", 1, "ID", 0, {}, 0, {}, 0, 10, 0, 1, 0, 0, 600);
    g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    g.addField3(3, "Amount", "NUMBER", 0, "Amount", 2, {}, 0, {}, 0, 10, 1, 1, 1, 0, 1200);
    g.setEditStatus(true);
    g.mfgData.setVisible(true);
    for (int r = 1; r <= 5; ++r) {
      if (r > 1) g.cmdAppend_Click();
      g.SetValue(r, 1, r);
      g.SetText(r, 2, QStringLiteral("n%1").arg(r));
      g.SetValue(r, 3, r * 10);
      g.setTextMatrix(r, -988, "E");
      g.setTextMatrix(r, -989, QString::number(r));
    }
    ev.log.clear();
  }
  QString names() {
    QStringList out;
    for (int r = 1; r <= g.Rows(); ++r) out << g.GETText(r, 2);
    return out.join(',');
  }
};

}  // namespace

TEST_F(Commands, MovesCarryTextValueKeyAndStateButNotTheLockAndJumpRemovedRows) {
  g.setRecord(2);
  g.setColumn(3);
  g.cmdMoveDown_Click();
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  EXPECT_EQ(g.GETValue(3, 3), 20);
  EXPECT_EQ(g.GETText(3, 3), "20.00");
  EXPECT_EQ(g.TextMatrix(3, -989), "2");
  EXPECT_EQ(g.Record(), 3);
  EXPECT_EQ(g.Column(), 3);
  // A removed row is jumped over, and keeps its place.
  g.cmdDeleteNoCheck(4);
  g.setRecord(3);
  g.cmdMoveDown_Click();
  EXPECT_EQ(names(), "n1,n3,n5,n4,n2");
  EXPECT_EQ(g.TextMatrix(4, -988), "D");
  EXPECT_EQ(g.Record(), 5);
  // On the last live row nothing moves.
  g.cmdMoveDown_Click();
  EXPECT_EQ(g.Record(), 5);
  g.cmdMoveFirst_Click();
  EXPECT_EQ(names(), "n2,n1,n3,n4,n5");
  EXPECT_EQ(g.Record(), 1);
  EXPECT_TRUE(g.mfgData.Visible());
  g.cmdMoveLast_Click();
  EXPECT_EQ(names(), "n1,n3,n5,n4,n2");
  // SwitchRecord moves data but not the record columns, and not the cursor.
  g.setRecord(1);
  g.SwitchRecord(1, 2);
  EXPECT_EQ(names(), "n3,n1,n5,n4,n2");
  EXPECT_EQ(g.TextMatrix(1, -989), "1");
  EXPECT_EQ(g.Record(), 1);
}

TEST_F(Commands, TheLockStaysWithTheRowWhenItsRecordMoves) {
  g.RecordLockMode(2, 1);
  g.setRecord(2);
  g.cmdMoveDown_Click();
  EXPECT_EQ(names(), "n1,n3,n2,n4,n5");
  g.setRecord(2);  // n3 now stands on the locked row
  g.cmdDelete_Click();
  EXPECT_EQ(fake.messages().size(), 1);
  EXPECT_EQ(g.TextMatrix(2, -988), "E");
  g.setRecord(3);
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(3, -988), "D");
}

TEST_F(Commands, InsertBubblesANewRecordUpToTheCursor) {
  g.setRecord(2);
  g.cmdInsert_Click();
  EXPECT_EQ(g.Rows(), 6);
  EXPECT_EQ(names(), "n1,,n2,n3,n4,n5");
  EXPECT_EQ(g.Record(), 2);
  EXPECT_EQ(g.TextMatrix(2, -988), "");
  g.cmdInsertAfter_Click();
  EXPECT_EQ(names(), "n1,,,n2,n3,n4,n5");
  EXPECT_EQ(g.Record(), 3);
  // With the standing stop switch nothing is added; the surface only blinks.
  g.setStopActionAdd(true);
  ev.log.clear();
  g.cmdInsert_Click();
  EXPECT_EQ(g.Rows(), 7);
  EXPECT_TRUE(ev.log.isEmpty());
  EXPECT_TRUE(g.mfgData.Visible());
}

TEST_F(Commands, RemovalMarksClosesRenumbersAndPlacesTheCursor) {
  g.setRecord(5);
  g.cmdDelete_Click();
  EXPECT_EQ(ev.log, (QStringList{"BeforeDelete", "DeleteClick"}));
  EXPECT_EQ(g.TextMatrix(5, -988), "D");
  EXPECT_EQ(g.mfgData.RowHeight(5), 0);
  g.mfgData.setRow(5);
  EXPECT_TRUE(g.mfgData.RowHidden());
  EXPECT_EQ(g.Record(), 4);  // nothing below: one up
  EXPECT_EQ(g.RecordActiveCount(), 4);
  // The application stops one removal inside the event; the next one clears the flag again.
  ev.stopDelete = true;
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(4, -988), "E");
  ev.stopDelete = false;
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(4, -988), "D");
  // Refresh is the same command.
  g.setRecord(2);
  g.Refresh();
  EXPECT_EQ(g.TextMatrix(2, -988), "D");
  EXPECT_EQ(g.Record(), 3);  // down over closed rows first
  EXPECT_EQ(g.TextMatrix(3, 0), "2");
  // A locked record is refused whatever UseManualDeleteCheck says.
  g.setUseManualDeleteCheck(true);
  g.RecordLockMode(3, 1);
  g.cmdDelete_Click();
  EXPECT_EQ(fake.messages().last(), QString::fromUtf8("ไม่สามารถลบรายการที่เลือกได้ "));
  EXPECT_EQ(g.TextMatrix(3, -988), "E");
}

TEST_F(Commands, ASavedRecordStillReferredToIsRefusedWithTheTablesAlias) {
  QTemporaryDir dir;
  const QString path = dir.filePath("shop.db");
  {
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
  }
  const QString conn = "Data Source=" + path;
  db::Connection c;
  c.Open(conn);
  c.Execute("CREATE TABLE Item (ItemID INTEGER PRIMARY KEY, Name TEXT)");
  c.Execute("CREATE TABLE SaleLine (LineID INTEGER PRIMARY KEY, ItemID INTEGER REFERENCES Item(ItemID))");
  c.Execute("INSERT INTO Item VALUES (1, 'n1'), (2, 'n2'), (3, 'n3')");
  c.Execute("INSERT INTO SaleLine VALUES (10, 2)");
  c.Execute("CREATE TABLE TQ7TTable (TTblName TEXT, TTblAlias TEXT)");
  c.Execute(QString::fromUtf8("INSERT INTO TQ7TTable VALUES ('SaleLine', 'รายการขาย')"));
  c.Close();
  g.SetData("Items", "Item", {}, "ItemID", {}, 0, conn, conn);

  g.setRecord(2);
  g.cmdDelete_Click();
  EXPECT_EQ(fake.messages().last(), QString::fromUtf8("ไม่สามารถลบข้อมูลนี้ได้เพราะ ถูกอ้างอิงถึงจาก ข้อมูลรายการขาย"));
  EXPECT_EQ(g.TextMatrix(2, -988), "E");
  // Not referred to: removed.
  g.setRecord(3);
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(3, -988), "D");
  // The application checks for itself.
  g.setUseManualDeleteCheck(true);
  g.setRecord(2);
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(2, -988), "D");
  // A new record (no stored key) needs no query at all, even with the database gone.
  g.setUseManualDeleteCheck(false);
  g.SetData("Items", "Item", {}, {}, {}, 0, "Data Source=" + dir.filePath("gone.db"), {});
  g.setTextMatrix(1, -989, "");
  g.setRecord(1);
  g.cmdDelete_Click();
  EXPECT_EQ(g.TextMatrix(1, -988), "D");
}

TEST_F(Commands, FreezeTogglesTheFrozenColumnsAndTheBarWiresItsButtons) {
  g.setColumn(2);
  g.cmdFreeze_Click();
  EXPECT_EQ(g.mfgData.ColsFrozen(), 2);
  g.TbrButton.ButtonClick("Freeze");
  EXPECT_EQ(g.mfgData.ColsFrozen(), 0);
  g.setRecord(1);
  g.TbrButton.ButtonClick("MoveDown");
  EXPECT_EQ(names(), "n2,n1,n3,n4,n5");
  g.TbrButton.ButtonClick("DeleteList");
  EXPECT_EQ(g.TextMatrix(2, -988), "D");
  g.SetButtonOpenCaption(QString::fromUtf8("เลือก"));
  EXPECT_EQ(g.TbrButton.Buttons("Enter").Caption, QString::fromUtf8("เลือก"));
}
