// The browse view on a Qt form: real keys and clicks reach the core, the filter dialog is a real
// dialog a person types Thai into, and what the view shows is read back from its pixels.
#include "GridPixels.h"
#include "companion/db/DbTestSupport.h"
#include "host/DataViewWidget.h"
#include "host/FilterDataDialog.h"
#include "host/QtPlatform.h"
#include "host/SurfaceView.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

const char* kItems =
    "CREATE TABLE Items(ItemID INTEGER, ItemName TEXT, Price REAL, DocDate TEXT);"
    "INSERT INTO Items WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i+1 FROM n WHERE i<250)"
    " SELECT i, CASE WHEN i % 2 = 0 THEN 'ข้าวหอม ' || i ELSE 'Rice ' || i END, i * 2.5,"
    " date('2024-01-01', '+' || (i - 1) || ' day') FROM n;";

struct ViewOnForm : ::testing::Test {
  test::SqliteFile db{kItems};
  DataViewWidget w;
  DataView& v = w.view();

  void SetUp() override {
    installQtPlatform();
    w.resize(720, 420);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  }
  void TearDown() override { setPlatform(nullptr); }
  void open(bool multi) {
    v.showData("Items", "ItemID", "ItemID,ItemName,Price,DocDate", "No,Name,Price,Date", "700,2400,1300,1400",
               "2,0,1,6", "Items", db.conn(), 1, 1, 1, 1, 1, 0, 0, 0, 0, false, multi);
    w.syncNow();
  }
  QImage shot() {
    w.syncNow();
    return w.grab().toImage();
  }
  QRect cell(int32_t col, int32_t row) {
    w.syncNow();
    return w.surfaceView()->cellRect(col, row).translated(w.surfaceView()->viewport()->mapTo(&w, QPoint(0, 0)));
  }
  void key(int k, Qt::KeyboardModifiers m = Qt::NoModifier) {
    QTest::keyClick(w.surfaceView(), Qt::Key(k), m);
    w.syncNow();
  }
  QAction* action(const QString& key) {
    for (QAction* a : w.toolBar()->actions())
      if (a->data().toString() == key) return a;
    return nullptr;
  }
};

// Types a text one character at a time as the window system delivers it: Thai arrives as text
// with no key code of its own.
void typeText(QWidget* w, const QString& text) {
  for (const QChar ch : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(ch));
    QApplication::sendEvent(w, &release);
  }
}

// Runs `act` inside the next modal dialog; ends it after a while so that a failure cannot hang.
void insideDialog(std::function<void(FilterDataDialog&)> act, bool& looked) {
  QTimer::singleShot(50, [act, &looked] {
    auto* d = qobject_cast<FilterDataDialog*>(QApplication::activeModalWidget());
    ASSERT_NE(d, nullptr);
    looked = true;
    act(*d);
  });
  QTimer::singleShot(5000, [] {
    if (auto* d = qobject_cast<QDialog*>(QApplication::activeModalWidget())) d->reject();
  });
}

}  // namespace

TEST_F(ViewOnForm, PagesWithTheScrollBarAndTheKeysMoveOnThePage) {
  open(false);
  ASSERT_EQ(v.RecordCount, 250);
  ASSERT_TRUE(w.pageBar()->isVisible());
  EXPECT_EQ(w.pageBar()->maximum(), 3);
  const QImage first = shot();
  const QRect nameCell = cell(2, 1);
  ASSERT_FALSE(nameCell.isEmpty());
  EXPECT_GT(pixels::ink(first, nameCell), 20);  // "Rice 1" is painted

  // PageDown moves the cursor within the page: the surface's own move.
  w.surfaceView()->setFocus();
  key(Qt::Key_PageDown);
  EXPECT_GT(v.Row(), 1);
  EXPECT_EQ(v.FirstRecord(), 1);

  // A click below the scroll bar's handle is the next page.
  QScrollBar* bar = w.pageBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, QPoint(bar->width() / 2, bar->height() - 25));
  w.syncNow();
  EXPECT_EQ(bar->value(), 2);
  EXPECT_EQ(v.FirstRecord(), 101);
  EXPECT_EQ(v.TextMatrix(1, 1), "101");
  const QImage second = shot();
  EXPECT_NE(second.copy(cell(1, 1)), first.copy(cell(1, 1)));  // the page's first row was painted anew
}

TEST_F(ViewOnForm, F6OpensTheFilterDialogAPersonTypesThaiInto) {
  open(false);
  bool looked = false;
  insideDialog(
      [](FilterDataDialog& d) {
        EXPECT_EQ(d.windowTitle(), "Filter Data Tool");
        EXPECT_TRUE(d.findChild<QPushButton*>() != nullptr);
        // Choose the name field by a click, type Thai into the value box, press Enter.
        QListWidget* fields = d.fieldList();
        ASSERT_EQ(fields->count(), 4);
        QTest::mouseClick(fields->viewport(), Qt::LeftButton, {}, fields->visualItemRect(fields->item(1)).center());
        EXPECT_EQ(d.operatorList()->currentItem()->text(), "CONTAIN");
        typeText(d.valueBox(), QString::fromUtf8("ข้าวหอม 2"));
        EXPECT_EQ(d.valueBox()->text(), QString::fromUtf8("ข้าวหอม 2"));
        EXPECT_TRUE(d.searchButton()->isEnabled());
        QTest::keyClick(d.valueBox(), Qt::Key_Return);
      },
      looked);
  w.surfaceView()->setFocus();
  key(Qt::Key_F6);  // returns when the dialog has closed
  EXPECT_TRUE(looked);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(v.SelectText(), QString::fromUtf8("SELECT ItemID,ItemName,Price,DocDate FROM Items WHERE ItemName LIKE '%ข้าวหอม 2%'"));
  // 2, 20-28 even, 200-250 even: 1 + 5 + 26.
  EXPECT_EQ(v.RecordCount, 32);
  EXPECT_GT(pixels::ink(shot(), cell(2, 1)), 20);  // Thai painted, not empty

  // Escape in the value box cancels: nothing runs.
  looked = false;
  insideDialog([](FilterDataDialog& d) { QTest::keyClick(d.valueBox(), Qt::Key_Escape); }, looked);
  key(Qt::Key_F6);
  EXPECT_TRUE(looked);
  EXPECT_EQ(v.RecordCount, 32);
  // F6 inside the dialog resets the filter.
  looked = false;
  insideDialog([](FilterDataDialog& d) { QTest::keyClick(d.valueBox(), Qt::Key_F6); }, looked);
  key(Qt::Key_F6);
  EXPECT_TRUE(looked);
  EXPECT_EQ(v.RecordCount, 250);
}

TEST_F(ViewOnForm, MarkingKeysColourTheRowsAndEnterTellsTheKeys) {
  open(true);
  QSignalSpy selected(&w, &DataViewWidget::selectCommandClick);
  int changed = 0;
  QObject::connect(&w, &DataViewWidget::selectionChange, &w, [&changed](Matrix&) { ++changed; });
  w.surfaceView()->setFocus();
  QTest::mouseClick(w.surfaceView()->viewport(), Qt::LeftButton, {},
                    w.surfaceView()->cellRect(1, 3).center());
  key(Qt::Key_Space);
  EXPECT_TRUE(v.isMarked(3));
  EXPECT_EQ(changed, 1);
  // The marked row is painted in the mark colour; the one below it is not.
  const QImage img = shot();
  const QRect marked = cell(3, 3), plain = cell(3, 4);
  EXPECT_EQ(QColor(img.pixel(marked.left() + 3, marked.top() + 3)), QColor(0xC0, 0xC0, 0xFF));
  EXPECT_NE(QColor(img.pixel(plain.left() + 3, plain.top() + 3)), QColor(0xC0, 0xC0, 0xFF));
  // A double click marks the row under the pointer (apart from the click before it).
  QTest::qWait(QApplication::doubleClickInterval() + 50);
  // (QTest sends the double click alone: the press before it comes first, as a person's does.)
  QTest::mouseClick(w.surfaceView()->viewport(), Qt::LeftButton, {}, w.surfaceView()->cellRect(1, 5).center());
  QTest::mouseDClick(w.surfaceView()->viewport(), Qt::LeftButton, {}, w.surfaceView()->cellRect(1, 5).center());
  w.syncNow();
  EXPECT_TRUE(v.isMarked(5));
  key(Qt::Key_Return);
  ASSERT_EQ(selected.count(), 1);
  EXPECT_EQ(v.TextResult, "3#,5");
  key(Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(v.isMarked(1) && v.isMarked(100));
  key(Qt::Key_Z, Qt::ControlModifier);
  EXPECT_FALSE(v.isMarked(3));
}

TEST_F(ViewOnForm, TheToolBarAnswersTheMouseAndF2SearchesWithoutTheReset) {
  open(false);
  QSignalSpy added(&w, &DataViewWidget::addCommandClick);
  QAction* add = action("Add");
  ASSERT_NE(add, nullptr);
  ASSERT_TRUE(add->isVisible());
  EXPECT_FALSE(action("Export")->isVisible());
  QTest::mouseClick(w.surfaceView()->viewport(), Qt::LeftButton, {}, w.surfaceView()->cellRect(1, 7).center());
  QTest::mouseClick(w.toolBar()->widgetForAction(add), Qt::LeftButton);
  w.syncNow();
  ASSERT_EQ(added.count(), 1);
  EXPECT_EQ(v.iActionCommandID, -1);
  EXPECT_EQ(v.TextResult, "7");

  bool looked = false;
  insideDialog(
      [](FilterDataDialog& d) {
        EXPECT_EQ(d.windowTitle(), "Search Data Tool (Without Top Filter Effect)");
        for (QPushButton* b : d.findChildren<QPushButton*>())
          if (b->text() == "F6 - Reset") EXPECT_FALSE(b->isVisible());
        QListWidget* fields = d.fieldList();
        QTest::mouseClick(fields->viewport(), Qt::LeftButton, {}, fields->visualItemRect(fields->item(0)).center());
        QTest::keyClicks(d.valueBox(), "abc");  // a text in a number field
        QStringList shown;
        for (QLabel* l : d.findChildren<QLabel*>())
          if (l->isVisible()) shown << l->text();
        EXPECT_TRUE(shown.contains("Not correct input data type, Please type numeric"));
        EXPECT_FALSE(d.searchButton()->isEnabled());
        d.valueBox()->clear();
        QTest::keyClicks(d.valueBox(), "42");
        QTest::mouseClick(d.searchButton(), Qt::LeftButton);
      },
      looked);
  w.surfaceView()->setFocus();
  key(Qt::Key_F2);
  EXPECT_TRUE(looked);
  EXPECT_EQ(v.SelectText(), "SELECT ItemID,ItemName,Price,DocDate FROM Items WHERE ItemID = 42");
  EXPECT_EQ(v.RecordCount, 1);
  EXPECT_EQ(v.TextMatrix(1, 2), QString::fromUtf8("ข้าวหอม 42"));
}

// A clerk leaves the view for another box of the form: a refresh of the view does not take the
// keyboard back, and a click brings it to the view's surface again.
TEST(ViewAmongOtherWidgets, ARefreshLeavesTheKeyboardWhereThePersonPutIt) {
  installQtPlatform();
  test::SqliteFile db{kItems};
  QWidget form;
  auto* view = new DataViewWidget(&form);
  auto* other = new QLineEdit(&form);
  view->setGeometry(0, 0, 600, 300);
  other->setGeometry(0, 310, 200, 24);
  form.resize(600, 340);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  QApplication::setActiveWindow(&form);
  DataView& v = view->view();
  v.showData("Items", "ItemID", "ItemID,ItemName", "No,Name", "700,2400", "2,0", "Items", db.conn(), 1, 1, 1, 1, 1);
  view->syncNow();
  QTest::mouseClick(view->surfaceView()->viewport(), Qt::LeftButton, {}, view->surfaceView()->cellRect(2, 2).center());
  EXPECT_TRUE(view->surfaceView()->hasFocus());
  other->setFocus(Qt::TabFocusReason);
  typeText(other, QString::fromUtf8("ลูกค้า"));
  v.DataRefresh();
  v.VScroll1.setValue(2);
  QTest::qWait(20);
  view->syncNow();
  EXPECT_TRUE(other->hasFocus());
  EXPECT_EQ(other->text(), QString::fromUtf8("ลูกค้า"));
  EXPECT_EQ(v.FirstRecord(), 101);
  QTest::mouseClick(view->surfaceView()->viewport(), Qt::LeftButton, {}, view->surfaceView()->cellRect(1, 3).center());
  EXPECT_TRUE(view->surfaceView()->hasFocus());
  QTest::keyClick(view->surfaceView(), Qt::Key_Down);
  EXPECT_EQ(v.Row(), 4);
  setPlatform(nullptr);
}
