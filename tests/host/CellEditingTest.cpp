// Typing into a cell on a Qt form: the editor opens over the cell, takes the keyboard, commits
// with Enter and drops the input with Escape; the committed cell shows ink.
#include "GridPixels.h"
#include "companion/VbText.h"
#include "host/DateTimeViewWidget.h"
#include "host/GridEditorWidget.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QDate>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <QTest>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct CellEditing : ::testing::Test {
  GridEditorWidget w;
  GridEditor& g = w.grid();
  void SetUp() override {
    w.resize(640, 300);
    g.SetFirst(4);
    g.addField3(1, "Day", "DATE", 0, "Day", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    g.addField3(2, "Note", "TEXT", 0, "Note", 0, {}, 0, {}, 0, 30, 1, 1, 1, 0, 2000);
    g.addField3(3, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500, 0, 0, "a;b,c");
    g.addField3(4, "Qty", "NUMBER", 0, "Qty", 0, {}, 0, {}, 0, 10, 1, 1, 1, 0, 1200);
    g.SetLast3("/tmp", "grdCellEditing", "1", {}, {});
    g.setEditStatus(true);
    w.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
    w.activateWindow();
    g.mfgData.SetActiveCell(1, 1);
    w.surfaceView()->setFocus();
    w.syncNow();
  }
  QLineEdit* box() const {
    for (QLineEdit* e : w.findChildren<QLineEdit*>())
      if (e->parentWidget() == &w) return e;
    return nullptr;
  }
  // Types the first character on the surface, which opens the editor, and the rest into whatever
  // has the keyboard then.
  void type(const QString& text) {
    for (qsizetype i = 0; i < text.size(); ++i) {
      QWidget* to = i == 0 ? w.surfaceView() : QApplication::focusWidget();
      const QChar c = text.at(i);
      if (c.unicode() < 128)
        QTest::keyClick(to, c.toLatin1());
      else  // a key the test's ASCII table has no name for: the character alone, as an input method gives it
        QTest::sendKeyEvent(QTest::Click, to, Qt::Key_unknown, QString(c), Qt::NoModifier);
      w.syncNow();
    }
  }
  int ink(const QRect& r) {
    w.syncNow();
    return pixels::ink(w.grab().toImage(), r);
  }
  QRect onWidget(const QRect& cell) { return pixels::onWidget(w, cell); }
};

}  // namespace

TEST_F(CellEditing, ATypedDateCommitsWithEnterAndShowsItsCanonicalText) {
  ASSERT_GE(g.Rows(), 1);
  const QRect cell = onWidget(w.surfaceView()->cellRect(1, 1));
  ASSERT_FALSE(cell.isEmpty());
  EXPECT_EQ(ink(cell.adjusted(2, 2, -2, -2)), 0);
  type("15/3/2567");
  QLineEdit* e = box();
  ASSERT_NE(e, nullptr);
  EXPECT_TRUE(e->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), e);
  EXPECT_EQ(e->text(), "15/3/2567");
  EXPECT_TRUE(cell.contains(e->geometry().topLeft()));
  QTest::keyClick(e, Qt::Key_Return);
  w.syncNow();
  EXPECT_FALSE(e->isVisible());
  EXPECT_EQ(g.TextMatrix(1, 1), "15/03/2567");
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), vb::dateToSerial(QDate(2024, 3, 15)));
  EXPECT_EQ(g.TextMatrix(1, attr::RecordState), "E");
  EXPECT_EQ(QApplication::focusWidget(), w.surfaceView());
  EXPECT_EQ(g.COL(), 2);
  EXPECT_GT(ink(cell.adjusted(2, 2, -2, -2)), 20);
}

TEST_F(CellEditing, EscapeDropsTheInputAndThaiTextCommits) {
  g.mfgData.SetActiveCell(2, 1);
  g.SetText(1, 2, "old");
  type("xyz");
  QLineEdit* e = box();
  ASSERT_NE(e, nullptr);
  ASSERT_EQ(QApplication::focusWidget(), e);
  QTest::keyClick(e, Qt::Key_Escape);
  w.syncNow();
  EXPECT_FALSE(e->isVisible());
  EXPECT_EQ(g.TextMatrix(1, 2), "old");
  EXPECT_EQ(g.TextMatrix(1, attr::RecordState), "");
  EXPECT_EQ(QApplication::focusWidget(), w.surfaceView());

  const QString thai = QString::fromUtf8("สวัสดีครับ");
  type(thai);
  ASSERT_EQ(QApplication::focusWidget(), e);
  EXPECT_EQ(g.Text.Text(), thai);
  QTest::keyClick(e, Qt::Key_Enter);
  w.syncNow();
  EXPECT_EQ(g.TextMatrix(1, 2), thai);
  EXPECT_GT(ink(onWidget(w.surfaceView()->cellRect(2, 1)).adjusted(2, 2, -2, -2)), 20);
}

TEST_F(CellEditing, TheListTakesTheKeyboardAndEnterWritesTheWholeEntry) {
  g.mfgData.SetActiveCell(3, 1);
  QTest::keyClick(w.surfaceView(), 'x');
  w.syncNow();
  auto* list = qobject_cast<QListWidget*>(QApplication::focusWidget());
  ASSERT_NE(list, nullptr);
  EXPECT_EQ(list->count(), 2);
  EXPECT_EQ(list->item(0)->text(), "a (b)");
  QTest::keyClick(list, Qt::Key_Up);
  QTest::keyClick(list, Qt::Key_Return);
  w.syncNow();
  EXPECT_EQ(g.TextMatrix(1, 3), "a (b)");
  EXPECT_FALSE(list->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), w.surfaceView());
}

TEST_F(CellEditing, F2OpensTheCalendarOverTheGridAndADoubleClickCommitsTheDay) {
  QTest::keyClick(w.surfaceView(), Qt::Key_F2);
  w.syncNow();
  ASSERT_TRUE(g.MonthView1.Visible());
  auto* cal = qobject_cast<MonthCalendarView*>(QApplication::focusWidget());
  ASSERT_NE(cal, nullptr);
  EXPECT_TRUE(cal->isVisible());
  const double day = g.MonthView1.Value() + 1;
  const QRect r = cal->dayRect(day);
  ASSERT_FALSE(r.isEmpty());
  // Painted: the calendar has ink of its own on the form.
  EXPECT_GT(ink(QRect(cal->mapTo(&w, QPoint(0, 0)), cal->size())), 50);
  QTest::mouseDClick(cal, Qt::LeftButton, {}, r.center());
  w.syncNow();
  EXPECT_FALSE(g.MonthView1.Visible());
  EXPECT_EQ(g.Matrix1.GetValue(1, 1), day);
  EXPECT_EQ(QApplication::focusWidget(), w.surfaceView());
}

// On a form with other buttons, hiding the editor after Enter must not hand the keyboard to the
// next button of the form: the clerk goes on typing into the next cell.
TEST(CellEditingOnAForm, AfterEnterTheKeyboardStaysWithTheGrid) {
  QWidget form;
  auto* layout = new QVBoxLayout(&form);
  auto* grid = new GridEditorWidget;
  auto* other = new QPushButton(QStringLiteral("Save"));
  layout->addWidget(grid, 1);
  layout->addWidget(other);
  GridEditor& g = grid->grid();
  g.SetFirst(3);  // the last column is never the next one's target: three, so that B is
  g.addField3(1, "A", "TEXT", 0, "A", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
  g.addField3(2, "B", "TEXT", 0, "B", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
  g.addField3(3, "C", "TEXT", 0, "C", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
  g.SetLast3("/tmp", "grdOnForm", "1", {}, {});
  g.setEditStatus(true);
  form.resize(640, 300);
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  form.activateWindow();
  g.mfgData.SetActiveCell(1, 1);
  grid->surfaceView()->setFocus();
  grid->syncNow();
  auto typeKeys = [&](const char* keys) {
    for (const char* k = keys; *k; ++k) {
      QTest::keyClick(QApplication::focusWidget(), *k);
      grid->syncNow();
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    grid->syncNow();
  };
  typeKeys("ab");
  EXPECT_NE(QApplication::focusWidget(), other);
  typeKeys("cd");
  EXPECT_EQ(g.GETText(1, 1), "ab");
  EXPECT_EQ(g.GETText(1, 2), "cd");
}
