// A column whose CanEdit text lies outside the 16-bit range, on a Qt form: the keys a person
// presses on it reach the grid through Qt's event handlers, and no failure comes back out of
// them. The process lives on and the grid still answers.
#include "GridPixels.h"
#include "host/GridEditorWidget.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct GridEditorThrow : ::testing::Test {
  GridEditorWidget w;
  GridEditor& g = w.grid();
  void SetUp() override {
    w.resize(640, 300);
    g.SetFirst(3);
    g.addField3(1, "Code", "TEXT", 0, "Code", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 30, 1, 1, 1, 0, 2000);
    g.addField3(3, "Note", "TEXT", 0, "Note", 0, {}, 0, {}, 0, 30, 1, 1, 1, 0, 2000);
    g.SetLast3("/tmp", "grdThrow", "1", {}, {});
    g.setEditStatus(true);
    g.SetText(-986, 2, QStringLiteral("70000"));
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.activateWindow();
    w.surfaceView()->setFocus();
    w.syncNow();
  }
  QLineEdit* box() const {
    for (QLineEdit* e : w.findChildren<QLineEdit*>())
      if (e->parentWidget() == &w) return e;
    return nullptr;
  }
  void on(int col) {
    g.mfgData.SetActiveCell(col, 1);
    w.surfaceView()->setFocus();
    w.syncNow();
  }
};

}  // namespace

TEST_F(GridEditorThrow, KeysOnAColumnWhoseCanEditOverflowsLeaveNoFailureOut) {
  g.setTextMatrix(1, 2, QStringLiteral("kept"));
  QApplication::clipboard()->setText(QStringLiteral("pasted"));

  // A letter, Ctrl+V and F2 on the column: no editor opens, nothing is pasted.
  on(2);
  QTest::keyClick(w.surfaceView(), Qt::Key_X);
  w.syncNow();
  QLineEdit* e = box();
  ASSERT_NE(e, nullptr);
  EXPECT_FALSE(e->isVisible());
  QTest::keyClick(w.surfaceView(), Qt::Key_V, Qt::ControlModifier);
  QTest::keyClick(w.surfaceView(), Qt::Key_F2);
  w.syncNow();
  EXPECT_EQ(g.GETText(1, 2), "kept");

  // The grid answers as before: the next column takes typed Thai text, Enter commits it, the
  // cell shows ink, and the cursor's walk passes over the column that takes no input.
  on(1);
  QTest::keyClick(w.surfaceView(), Qt::Key_A);
  w.syncNow();
  ASSERT_TRUE(e->isVisible());
  QTest::keyClick(e, Qt::Key_Return);
  w.syncNow();
  EXPECT_EQ(g.GETText(1, 1), "a");
  EXPECT_EQ(g.Column(), 3);  // column 2 is no input column

  const QRect cell = pixels::onWidget(w, w.surfaceView()->cellRect(3, 1));
  ASSERT_FALSE(cell.isEmpty());
  QTest::sendKeyEvent(QTest::Click, w.surfaceView(), Qt::Key_unknown, QString::fromUtf8("ก"), Qt::NoModifier);
  w.syncNow();
  ASSERT_TRUE(e->isVisible());
  QTest::sendKeyEvent(QTest::Click, e, Qt::Key_unknown, QString::fromUtf8("ข"), Qt::NoModifier);
  QTest::keyClick(e, Qt::Key_Return);
  w.syncNow();
  EXPECT_EQ(g.GETText(1, 3), QString::fromUtf8("กข"));
  EXPECT_GT(pixels::ink(w.grab().toImage(), cell.adjusted(2, 2, -2, -2)), 0);

  // F3 still appends a record.
  const int32_t rows = g.Rows();
  on(1);
  QTest::keyClick(w.surfaceView(), Qt::Key_F3);
  w.syncNow();
  EXPECT_EQ(g.Rows(), rows + 1);
}
