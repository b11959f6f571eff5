// The date-time drop-down on a form: real mouse and keys reach the core, the chosen day is read
// back from the pixels.
#include "host/DateTimeViewWidget.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

double day(int y, int m, int d) { return vb::dateToSerial(QDate(y, m, d)); }
double at(int y, int m, int d, int hh, int mm) { return day(y, m, d) + vb::timeSerial(hh, mm, 0); }

struct DateTimeViewOnForm : ::testing::Test {
  FakePlatform fake;  // made first: the panel reads the clock as it is made
  std::unique_ptr<DateTimeViewWidget> w;
  void SetUp() override {
    StandardHelper::setYearOffset(543);
    fake.clock = at(2024, 3, 15, 9, 45);
    w = std::make_unique<DateTimeViewWidget>();
    w->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
    QApplication::setActiveWindow(w.get());
    w->syncNow();
  }
  QImage shot() {
    w->syncNow();
    return w->grab().toImage();
  }
  QPoint centreOf(double date) { return w->calendar()->dayRect(date).center(); }
  // How many pixels of the rectangle (in the panel's pixels) have the colour.
  static int count(const QImage& img, const QRect& r, const QColor& c) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
      for (int x = r.left(); x <= r.right(); ++x)
        if (img.pixelColor(x, y) == c) ++n;
    return n;
  }
  QRect onPanel(const QRect& r) { return r.translated(w->calendar()->mapTo(w.get(), QPoint(0, 0))); }
};

}  // namespace

TEST_F(DateTimeViewOnForm, KeepsItsSizeAndHighlightsTheDayOfTheValue) {
  w->resize(400, 400);
  w->syncNow();
  EXPECT_EQ(w->size(), QSize(164, 176));

  const QColor highlight = w->calendar()->palette().color(QPalette::Highlight);
  const QRect d15 = onPanel(w->calendar()->dayRect(day(2024, 3, 15)));
  const QRect d16 = onPanel(w->calendar()->dayRect(day(2024, 3, 16)));
  ASSERT_TRUE(d15.isValid());
  QImage img = shot();
  EXPECT_GT(count(img, d15, highlight), d15.width() * d15.height() / 3);
  EXPECT_EQ(count(img, d16, highlight), 0);
  // The title shows the Thai month and the Buddhist-era year as glyphs on the highlight.
  const QRect title = onPanel(w->calendar()->titleRect());
  const QRect middle = title.adjusted(title.height(), 2, -title.height(), -2);
  int light = 0;
  for (int y = middle.top(); y <= middle.bottom(); ++y)
    for (int x = middle.left(); x <= middle.right(); ++x)
      if (qGray(img.pixel(x, y)) > 200) ++light;
  EXPECT_GT(light, 40);
  EXPECT_TRUE(QFontMetrics(w->calendar()->font()).inFont(QChar(0x0E21)));  // ม

  // The core's new value moves the highlight.
  w->view().setValue(at(2024, 3, 16, 10, 0));
  img = shot();
  EXPECT_EQ(count(img, d15, highlight), 0);
  EXPECT_GT(count(img, d16, highlight), d16.width() * d16.height() / 3);
  EXPECT_EQ(w->timeBox()->text(), QStringLiteral("10:00"));
}

TEST_F(DateTimeViewOnForm, AClickTakesTheDayADoubleClickChooses) {
  QSignalSpy clicks(w.get(), &DateTimeViewWidget::dateClick);
  QTest::mouseClick(w->calendar(), Qt::LeftButton, {}, centreOf(day(2024, 3, 20)));
  EXPECT_EQ(w->view().MonthView2.Value(), day(2024, 3, 20));
  EXPECT_DOUBLE_EQ(w->view().Value(), at(2024, 3, 20, 9, 45));
  EXPECT_EQ(clicks.count(), 0);

  // A double click as the system delivers it: a click, then the second press as a double click.
  QTest::mouseClick(w->calendar(), Qt::LeftButton, {}, centreOf(day(2024, 3, 22)));
  QTest::mouseDClick(w->calendar(), Qt::LeftButton, {}, centreOf(day(2024, 3, 22)));
  ASSERT_EQ(clicks.count(), 1);
  EXPECT_DOUBLE_EQ(clicks.at(0).at(0).toDouble(), at(2024, 3, 22, 9, 45));

  // The arrow of the title turns to the month before; the grid follows.
  QTest::mouseClick(w->calendar(), Qt::LeftButton, {}, w->calendar()->previousRect().center());
  EXPECT_EQ(w->view().MonthView2.Month(), 2);
  EXPECT_TRUE(w->calendar()->dayRect(day(2024, 2, 1)).isValid());
  QTest::mouseClick(w->calendar(), Qt::LeftButton, {}, centreOf(day(2024, 2, 29)));
  EXPECT_DOUBLE_EQ(w->view().Value(), at(2024, 2, 29, 9, 45));

  // OK chooses the value as it stands; Now the moment of the click.
  QTest::mouseClick(w->okButton(), Qt::LeftButton);
  fake.clock = at(2024, 5, 1, 13, 13) + 0.3 / 86400;
  QTest::mouseClick(w->nowButton(), Qt::LeftButton);
  ASSERT_EQ(clicks.count(), 3);
  EXPECT_DOUBLE_EQ(clicks.at(1).at(0).toDouble(), at(2024, 2, 29, 9, 45));
  EXPECT_EQ(clicks.at(2).at(0).toDouble(), fake.clock);
  EXPECT_EQ(w->timeBox()->text(), QStringLiteral("09:45"));
}

TEST_F(DateTimeViewOnForm, TypedTimesAndKeys) {
  QStringList order;
  QObject::connect(w.get(), &DateTimeViewWidget::dateClick, [&](double) { order << QStringLiteral("DateClick"); });
  QObject::connect(w.get(), &DateTimeViewWidget::keyDown,
          [&](int16_t& k, int16_t&) { order << QStringLiteral("KeyDown %1").arg(k); });

  // Into the box by mouse: the core selects the whole text.
  QTest::mouseClick(w->timeBox(), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_TRUE(w->timeBox()->hasFocus());
  EXPECT_EQ(w->view().focusedChild(), &w->view().txtTime);
  EXPECT_EQ(w->timeBox()->selectedText(), QStringLiteral("09:45"));

  w->timeBox()->selectAll();
  QTest::keyClicks(w->timeBox(), QStringLiteral("8.15"));
  EXPECT_EQ(w->view().txtTime.Text(), QStringLiteral("8.15"));
  order.clear();
  QTest::keyClick(w->timeBox(), Qt::Key_Return);
  EXPECT_EQ(order.mid(order.size() - 2), (QStringList{"DateClick", "KeyDown 13"}));
  QApplication::processEvents();
  EXPECT_EQ(w->timeBox()->text(), QStringLiteral("08:15"));
  EXPECT_DOUBLE_EQ(w->view().Value(), at(2024, 3, 15, 8, 15));

  // A bad time, then the calendar takes the focus: the old time comes back.
  w->timeBox()->selectAll();
  QTest::keyClicks(w->timeBox(), QStringLiteral("99:99"));
  QTest::mouseClick(w->calendar(), Qt::LeftButton, {}, centreOf(day(2024, 3, 18)));
  QApplication::processEvents();
  EXPECT_TRUE(w->calendar()->hasFocus());
  EXPECT_EQ(w->timeBox()->text(), QStringLiteral("08:15"));
  EXPECT_DOUBLE_EQ(w->view().Value(), at(2024, 3, 18, 8, 15));

  // Keys in the calendar reach the owner and move the calendar's day, not the value.
  order.clear();
  QTest::keyClick(w->calendar(), Qt::Key_Right);
  QTest::keyClick(w->calendar(), Qt::Key_Escape);
  EXPECT_EQ(order, (QStringList{"KeyDown 39", "KeyDown 27"}));
  EXPECT_EQ(w->view().MonthView2.Value(), day(2024, 3, 19));
  EXPECT_DOUBLE_EQ(w->view().Value(), at(2024, 3, 18, 8, 15));
}
