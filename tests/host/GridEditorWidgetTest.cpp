// The grid on a Qt form: real mouse and key events reach the core, and what the core shows is
// read back from the widget's pixels.
#include "GridPixels.h"
#include "host/GridEditorWidget.h"
#include "host/QtPlatform.h"
#include "host/SurfaceView.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QToolBar>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct GridOnForm : ::testing::Test {
  GridEditorWidget w;
  GridEditor& g = w.grid();
  void SetUp() override {
    w.resize(640, 300);
    g.SetFirst(4);
    g.addField3(1, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 0, 1, 0, 1500);  // required
    g.addField3(2, "Name2", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);  // optional
    g.addField3(3, "Hidden", "TEXT", 0, "Hidden", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 0);
    g.addField3(4, "Qty", "NUMBER", 0, "Qty", 2, {}, 0, {}, 0, 10, 1, 1, 1, 0, 1200);
    g.SetLast3("/tmp", "grdTest", "1", {}, {});
    g.setEditStatus(true);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.syncNow();
  }
  QImage shot() {
    w.syncNow();
    return w.grab().toImage();
  }
  int ink(const QImage& img, const QRect& r) { return pixels::ink(img, r); }
  QRect onWidget(const QRect& cell) { return pixels::onWidget(w, cell); }
};

}  // namespace

TEST_F(GridOnForm, TheToolBarAnswersTheMouse) {
  auto* bar = w.findChild<QToolBar*>();
  ASSERT_NE(bar, nullptr);
  QAction* append = nullptr;
  for (QAction* a : bar->actions())
    if (a->data().toString() == "NewList") append = a;
  ASSERT_NE(append, nullptr);
  ASSERT_TRUE(append->isVisible());
  QWidget* button = bar->widgetForAction(append);
  ASSERT_NE(button, nullptr);
  g.setStopActionAdd(true);  // the button adds all the same
  QTest::mouseClick(button, Qt::LeftButton);
  EXPECT_EQ(g.Rows(), 2);
  EXPECT_EQ(g.Record(), 2);
}

TEST_F(GridOnForm, RequiredCaptionsAreBoldAndHiddenColumnsTakeNoRoom) {
  const QImage img = shot();
  const QRect required = onWidget(w.surfaceView()->cellRect(1, -997));
  const QRect optional = onWidget(w.surfaceView()->cellRect(2, -997));
  ASSERT_TRUE(required.isValid());
  ASSERT_EQ(required.width(), optional.width());
  EXPECT_GT(ink(img, required.adjusted(1, 1, -1, -1)), ink(img, optional.adjusted(1, 1, -1, -1)));
  // Column 3 is hidden: column 4 begins where column 2 ends.
  EXPECT_EQ(w.surfaceView()->cellRect(4, 1).left(), w.surfaceView()->cellRect(2, 1).right() + 1);
  EXPECT_FALSE(w.surfaceView()->cellRect(3, 1).isValid());
}

TEST_F(GridOnForm, KeysAndClicksReachTheGridAndThePleaseWaitScreenShows) {
  g.cmdAddNewNoCheck();
  g.cmdAddNewNoCheck();
  g.setRecord(1);
  g.setColumn(1);
  w.syncNow();
  const QRect cell = w.surfaceView()->cellRect(4, 3);
  QTest::mouseClick(w.surfaceView()->viewport(), Qt::LeftButton, {}, cell.center());
  EXPECT_EQ(g.Record(), 3);
  EXPECT_EQ(g.Column(), 4);
  QTest::keyClick(w.surfaceView()->viewport(), Qt::Key_Up);
  EXPECT_EQ(g.Record(), 2);
  // A value written in the core shows in its cell.
  g.SetValue(2, 4, 1234.5);
  const QImage before = shot();
  EXPECT_GT(ink(before, onWidget(w.surfaceView()->cellRect(4, 2)).adjusted(2, 2, -2, -2)), 0);

  g.SpeedProcess2(true, QString());
  w.syncNow();
  QLabel* wait = nullptr;
  for (QLabel* l : w.findChildren<QLabel*>())
    if (l->isVisible() && l->text() == "Processing Please wait...") wait = l;
  ASSERT_NE(wait, nullptr);
  EXPECT_FALSE(w.surfaceView()->isVisible());
  g.SpeedProcess2(false);
  w.syncNow();
  EXPECT_FALSE(wait->isVisible());
  EXPECT_TRUE(w.surfaceView()->isVisible());
}

TEST_F(GridOnForm, FunctionKeysReshapeTheRecords) {
  QWidget* keys = w.surfaceView();
  g.setRecord(1);
  g.setColumn(1);
  g.SetText(1, 1, "first");
  QTest::keyClick(keys, Qt::Key_F3);  // append
  QTest::keyClick(keys, Qt::Key_F3);
  ASSERT_EQ(g.Rows(), 3);
  g.SetText(2, 1, "second");
  g.SetText(3, 1, "third");
  g.setRecord(3);
  QTest::keyClick(keys, Qt::Key_F11);  // up
  EXPECT_EQ(g.GETText(2, 1), "third");
  EXPECT_EQ(g.Record(), 2);
  QTest::keyClick(keys, Qt::Key_F12);  // down again
  EXPECT_EQ(g.GETText(3, 1), "third");
  g.setRecord(1);
  QTest::keyClick(keys, Qt::Key_F3, Qt::ShiftModifier);  // insert before
  EXPECT_EQ(g.Rows(), 4);
  EXPECT_EQ(g.GETText(2, 1), "first");
  EXPECT_EQ(g.Record(), 1);
  g.setRecord(2);
  QTest::keyClick(keys, Qt::Key_F5);  // remove
  EXPECT_EQ(g.TextMatrix(2, -988), "D");
  w.syncNow();
  EXPECT_FALSE(w.surfaceView()->cellRect(1, 2).isValid());  // its row is gone from the screen
}

// Scrolled to record 11,201 of a grid on the Qt platform, the row header shows all five digits:
// the column widened as the count of digits grew. An application's NumberWidth stands.
TEST(GridRowNumbers, FiveDigitNumbersShowWhole) {
  installQtPlatform();
  GridEditorWidget w;
  GridEditor& g = w.grid();
  w.resize(640, 300);
  g.SetFirst(2);
  g.addField3(1, "Code", "TEXT", 0, "Code", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
  g.addField3(2, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
  g.SetLast3("/tmp", "grdNumbers", "1", {}, {});
  g.setEditStatus(true);
  const double oneDigit = g.mfgData.ColWidth(0);
  for (int i = 1; i < 11205; ++i) g.cmdAppend_Click();
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  g.setRecord(11201);
  g.TopRecord(11201);
  w.syncNow();
  EXPECT_GT(g.mfgData.ColWidth(0), oneDigit);

  const QRect header = pixels::onWidget(w, w.surfaceView()->cellRect(0, 11201));
  ASSERT_FALSE(header.isEmpty());
  const QImage img = w.grab().toImage();
  // The digits as separate runs of ink across the cell, inside its grid lines: "11201" is five.
  int runs = 0;
  bool inRun = false;
  for (int x = header.left() + 1; x < header.right() - 1; ++x) {
    const bool ink = pixels::ink(img, QRect(x, header.top() + 1, 1, header.height() - 2)) > 0;
    if (ink && !inRun) ++runs;
    inRun = ink;
  }
  EXPECT_EQ(runs, 5);
  EXPECT_EQ(g.TextMatrix(11201, 0), "11201");

  // The application's width stands, and a new digit count does not widen it.
  g.setNumberWidth(300);
  for (int i = 0; i < 3; ++i) g.cmdAppend_Click();
  EXPECT_EQ(g.mfgData.ColWidth(0), 300);
  setPlatform(nullptr);
}
