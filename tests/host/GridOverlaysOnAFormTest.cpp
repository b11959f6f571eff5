// The grid's overlays on a form beside other widgets, as a clerk uses them: the date-time drop-down's
// time box and buttons, the cursor moved by the grid itself, the keyboard leaving for another box,
// a text longer than the column's limit, typing into the middle of a text, and keys of the Thai
// layout.
#include "GridPixels.h"
#include "support/QtPrinters.h"
#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"
#include "host/DateTimeViewWidget.h"
#include "host/GridEditorWidget.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

double at(int y, int m, int d, int hh = 0, int mm = 0) {
  return vb::dateToSerial(QDate(y, m, d)) + vb::timeSerial(hh, mm, 0);
}

struct GridOverlaysOnAForm : ::testing::Test, GridEditorEvents {
  FakePlatform fake;  // the clock and the message boxes
  QWidget form;
  GridEditorWidget* w = nullptr;
  QLineEdit* other = nullptr;
  QStringList keys;  // KeyDown events the application heard

  void SetUp() override {
    StandardHelper::setYearOffset(543);
    fake.clock = at(2024, 3, 1, 8, 0);
    auto* layout = new QVBoxLayout(&form);
    w = new GridEditorWidget;
    other = new QLineEdit;
    other->setObjectName(QStringLiteral("txtRemark"));
    layout->addWidget(w, 1);
    layout->addWidget(other);
    GridEditor& g = grid();
    g.SetFirst(5);
    g.addField3(1, "Day", "DATE", 0, "Day", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500);
    g.addField3(2, "At", "DATETIME", 0, "At", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 2200);
    g.addField3(3, "Kind", "LABELLIST", 0, "Kind", 0, {}, 0, {}, 0, 20, 1, 1, 1, 0, 1500, 0, 0, "a;b,c");
    g.addField3(4, "City", "TEXT", 0, "City", 0, {}, 0, {}, 0, 5, 1, 1, 1, 0, 1800);
    g.addField3(5, "Remark", "TEXT", 0, "Remark", 0, {}, 0, {}, 0, 40, 1, 1, 1, 0, 2400);
    g.SetLast3("/tmp", "grdOverlays", "1", {}, {});
    g.setEditStatus(true);
    w->setListener(this);
    form.resize(900, 480);
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    QApplication::setActiveWindow(&form);
    g.mfgData.SetActiveCell(1, 1);
    w->surfaceView()->setFocus();
    w->syncNow();
  }
  void KeyDown(int16_t& KeyCode, int16_t& Shift) override { keys << QStringLiteral("%1,%2").arg(KeyCode).arg(Shift); }

  GridEditor& grid() { return w->grid(); }
  DateTimeViewPanel* picker() const { return w->findChild<DateTimeViewPanel*>(); }
  QLineEdit* box() const {
    for (QLineEdit* e : w->findChildren<QLineEdit*>())
      if (e->parentWidget() == w) return e;
    return nullptr;
  }
  void settle() {
    QApplication::processEvents();
    w->syncNow();
  }
  void key(int qtKey) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(qtKey));
    settle();
  }
  void typeText(const QString& text) {
    QTest::keyClicks(QApplication::focusWidget(), text);
    settle();
  }
  // The first character on the surface opens the cell's editor; the rest go where the keyboard is.
  void typeIntoCell(const QString& text) {
    QTest::keyClick(w->surfaceView(), text.at(0).toLatin1());
    settle();
    typeText(text.mid(1));
  }
};

}  // namespace

// The time typed into the drop-down's box is in the value that OK hands back; the box's text is
// selected when it gains the focus; a bad time is put back when the calendar takes the focus.
TEST_F(GridOverlaysOnAForm, TheDateTimeDropDownKeepsATypedTime) {
  GridEditor& g = grid();
  g.SetValue(1, 2, at(2024, 3, 15, 10, 30));
  ASSERT_EQ(g.GETText(1, 2), "15/03/2567 10:30");
  g.mfgData.SetActiveCell(2, 1);
  settle();
  key(Qt::Key_F2);
  DateTimeViewPanel* p = picker();
  ASSERT_NE(p, nullptr);
  ASSERT_TRUE(p->isVisible());

  QTest::mouseClick(p->timeBox(), Qt::LeftButton);
  settle();
  EXPECT_EQ(QApplication::focusWidget(), p->timeBox());
  EXPECT_EQ(p->timeBox()->selectedText(), "10:30");
  typeText("14:30");
  EXPECT_EQ(p->timeBox()->text(), "14:30");
  QTest::mouseClick(p->okButton(), Qt::LeftButton);
  settle();
  EXPECT_FALSE(p->isVisible());
  EXPECT_EQ(g.GETText(1, 2), "15/03/2567 14:30");
  EXPECT_DOUBLE_EQ(g.GETValue(1, 2), at(2024, 3, 15, 14, 30));
  EXPECT_EQ(QApplication::focusWidget(), w->surfaceView());

  // Again, with a time that does not read, then a double click on the 20th: the old time stays.
  g.mfgData.SetActiveCell(2, 1);
  g.SetValue(1, 2, at(2024, 3, 15, 10, 30));
  settle();
  key(Qt::Key_F2);
  ASSERT_TRUE(p->isVisible());
  QTest::mouseClick(p->timeBox(), Qt::LeftButton);
  settle();
  typeText("99:99");
  const QPoint day20 = p->calendar()->dayRect(at(2024, 3, 20)).center();
  QTest::mouseClick(p->calendar(), Qt::LeftButton, {}, day20);
  settle();
  QTest::mouseDClick(p->calendar(), Qt::LeftButton, {}, day20);
  settle();
  EXPECT_FALSE(p->isVisible());
  EXPECT_EQ(g.GETText(1, 2), "20/03/2567 10:30");

  // Enter in the box chooses as well.
  g.mfgData.SetActiveCell(2, 1);
  settle();
  key(Qt::Key_F2);
  ASSERT_TRUE(p->isVisible());
  QTest::mouseClick(p->timeBox(), Qt::LeftButton);
  settle();
  ASSERT_EQ(QApplication::focusWidget(), p->timeBox());
  typeText("7.05");
  ASSERT_EQ(g.DateTimeView1->txtTime.Text(), "7.05");
  key(Qt::Key_Return);
  EXPECT_FALSE(p->isVisible());
  EXPECT_EQ(g.GETText(1, 2), "20/03/2567 07:05");
}

// The cursor moved by the grid (the next column after a commit) brings that cell's text into the
// box behind the pickers, so Escape from a picker keeps the cell as it is.
TEST_F(GridOverlaysOnAForm, EscapeFromAPickerKeepsTheCellTheCursorWasMovedTo) {
  GridEditor& g = grid();
  g.SetValue(1, 2, 0);  // the new row's "now" taken out: an empty date-time cell
  ASSERT_EQ(g.GETText(1, 2), "");
  typeIntoCell("15/3/2567");
  key(Qt::Key_Return);
  ASSERT_EQ(g.GETText(1, 1), "15/03/2567");
  ASSERT_EQ(g.COL(), 2);
  EXPECT_EQ(g.Text.Text(), "");
  key(Qt::Key_F2);
  ASSERT_TRUE(picker()->isVisible());
  key(Qt::Key_Escape);
  EXPECT_FALSE(picker()->isVisible());
  EXPECT_EQ(g.GETText(1, 2), "");
  EXPECT_EQ(g.GETValue(1, 2), 0);

  // A text the application writes into the active cell is what Escape keeps.
  g.mfgData.SetActiveCell(2, 1);
  g.SetValue(1, 2, at(2024, 3, 15, 10, 30));
  settle();
  key(Qt::Key_F2);
  key(Qt::Key_Escape);
  EXPECT_EQ(g.GETText(1, 2), "15/03/2567 10:30");
}

// The keyboard leaving the grid for another box of the form closes the list and the pickers and
// does nothing else.
TEST_F(GridOverlaysOnAForm, LeavingTheGridClosesTheListAndThePickers) {
  GridEditor& g = grid();
  g.mfgData.SetActiveCell(3, 1);
  settle();
  const QString kindBefore = g.GETText(1, 3);
  QTest::keyClick(w->surfaceView(), 'x');
  settle();
  auto* list = qobject_cast<QListWidget*>(QApplication::focusWidget());
  ASSERT_NE(list, nullptr);
  QTest::keyClick(list, Qt::Key_Down);  // a different entry chosen but not taken
  QTest::mouseClick(other, Qt::LeftButton);
  settle();
  EXPECT_EQ(QApplication::focusWidget(), other);
  EXPECT_FALSE(list->isVisible());
  EXPECT_FALSE(g.List1.Visible());
  EXPECT_EQ(g.GETText(1, 3), kindBefore);

  for (int col : {1, 2}) {
    g.mfgData.SetActiveCell(col, 1);
    w->surfaceView()->setFocus();
    settle();
    const QString before = g.GETText(1, col);
    key(Qt::Key_F2);
    Widget& shown = col == 1 ? static_cast<Widget&>(g.MonthView1) : g.DateTimeView1;
    ASSERT_TRUE(shown.Visible()) << col;
    const QRect where(shown.Left() / 15, shown.Top() / 15, shown.Width() / 15, shown.Height() / 15);
    EXPECT_GT(pixels::ink(w->grab().toImage(), where), 50) << col;
    QTest::mouseClick(other, Qt::LeftButton);
    settle();
    EXPECT_EQ(QApplication::focusWidget(), other) << col;
    EXPECT_FALSE(shown.Visible()) << col;
    EXPECT_EQ(g.GETText(1, col), before) << col;
    EXPECT_EQ(g.TextMatrix(1, attr::RecordState), "") << col;
  }
  // Back in the grid, the keyboard works as before.
  w->surfaceView()->setFocus();
  settle();
  g.mfgData.SetActiveCell(5, 1);
  typeIntoCell("ok");
  key(Qt::Key_Return);
  EXPECT_EQ(g.GETText(1, 5), "ok");
}

// What the box shows is what the cell gets: a text longer than the column's limit shows whole and
// commits whole; only typing past the limit is refused.
TEST_F(GridOverlaysOnAForm, ALongerTextThanTheLimitIsShownAndCommittedWhole) {
  GridEditor& g = grid();
  g.SetText(1, 4, "Bangkok");
  g.mfgData.SetActiveCell(4, 1);
  settle();
  key(Qt::Key_Space);
  QLineEdit* e = box();
  ASSERT_NE(e, nullptr);
  ASSERT_EQ(QApplication::focusWidget(), e);
  EXPECT_EQ(e->text(), "Bangkok");
  key(Qt::Key_Return);
  EXPECT_EQ(g.GETText(1, 4), "Bangkok");

  g.mfgData.SetActiveCell(4, 1);
  settle();
  key(Qt::Key_Space);
  key(Qt::Key_Backspace);
  EXPECT_EQ(e->text(), "Bangko");
  EXPECT_EQ(g.Text.Text(), "Bangko");
  typeText("xy");  // longer than the limit and than before: refused
  EXPECT_EQ(e->text(), "Bangko");
  key(Qt::Key_Return);
  EXPECT_EQ(g.GETText(1, 4), "Bangko");

  // A short text grows to the limit and no further.
  g.SetText(1, 4, "abc");
  g.mfgData.SetActiveCell(4, 1);
  settle();
  key(Qt::Key_Space);
  typeText("defgh");
  EXPECT_EQ(e->text(), "abcde");
  key(Qt::Key_Return);
  EXPECT_EQ(g.GETText(1, 4), "abcde");
}

// Typing into the middle of a text leaves the caret where the person typed.
TEST_F(GridOverlaysOnAForm, TypingInTheMiddleKeepsTheCaret) {
  GridEditor& g = grid();
  g.SetText(1, 5, "abcdef");
  g.mfgData.SetActiveCell(5, 1);
  settle();
  key(Qt::Key_Space);
  QLineEdit* e = box();
  ASSERT_EQ(QApplication::focusWidget(), e);
  e->setCursorPosition(3);
  typeText("XY");
  EXPECT_EQ(e->text(), "abcXYdef");
  EXPECT_EQ(e->cursorPosition(), 5);
  key(Qt::Key_Return);
  EXPECT_EQ(g.GETText(1, 5), "abcXYdef");
}

// Thai letters and shifted digits raise KeyDown with the code of their key, so an application
// that asked for the keys hears them.
TEST_F(GridOverlaysOnAForm, KeysOfTheThaiLayoutReachTheApplication) {
  GridEditor& g = grid();
  g.setEditStatus(false);  // in view mode a character searches; the key is relayed first
  g.setEnableCustomFunctionKey(true);
  settle();
  keys.clear();
  const quint32 fKey = 41;  // X11 key code of the F key
  QKeyEvent doDek(QEvent::KeyPress, 0x0E14, Qt::NoModifier, fKey, 0, 0, QStringLiteral("ด"));
  QApplication::sendEvent(w->surfaceView(), &doDek);
  QKeyEvent ko(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QStringLiteral("ก"));
  QApplication::sendEvent(w->surfaceView(), &ko);
  QTest::keyClick(w->surfaceView(), Qt::Key_Exclam, Qt::ShiftModifier);
  keys.removeAll(QStringLiteral("16,1"));  // the Shift key itself
  EXPECT_EQ(keys, (QStringList{"70,0", "68,0", "49,1"}));
}
