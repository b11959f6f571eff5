// The month-and-year drop-down on a form: real mouse and keys reach the core, the chosen month
// is read back from the pixels.
#include "host/MonthYearViewWidget.h"

#include "companion/StandardHelper.h"
#include "companion/VbText.h"
#include "frame/FakePlatform.h"

#include <QApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct MonthYearViewOnForm : ::testing::Test {
  FakePlatform fake;
  std::unique_ptr<MonthYearViewWidget> w;
  void SetUp() override {
    StandardHelper::setYearOffset(543);
    fake.clock = vb::dateToSerial(QDate(2024, 3, 15));
    w = std::make_unique<MonthYearViewWidget>();
    w->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
    QApplication::setActiveWindow(w.get());
    w->syncNow();
  }
  QImage shot() {
    w->syncNow();
    return w->grab().toImage();
  }
  QRect rowOnPanel(int row) {
    QListWidget* l = w->list();
    return l->visualItemRect(l->item(row)).translated(l->viewport()->mapTo(w.get(), QPoint(0, 0)));
  }
  QPoint rowCentre(int row) { return w->list()->visualItemRect(w->list()->item(row)).center(); }
  static int count(const QImage& img, const QRect& r, const std::function<bool(QColor)>& pred) {
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
      for (int x = r.left(); x <= r.right(); ++x)
        if (pred(img.pixelColor(x, y))) ++n;
    return n;
  }
};

}  // namespace

TEST_F(MonthYearViewOnForm, TheChosenMonthIsHighlightedAndThaiNamesAreDrawn) {
  EXPECT_EQ(w->size(), QSize(133, 178));
  EXPECT_EQ(w->yearBox()->text(), QStringLiteral("2567"));
  ASSERT_EQ(w->list()->count(), 12);
  EXPECT_EQ(w->list()->item(2)->text(), QStringLiteral("มีนาคม"));
  EXPECT_TRUE(QFontMetrics(w->list()->font()).inFont(QChar(0x0E21)));  // ม

  const QColor highlight = w->list()->palette().color(QPalette::Highlight);
  auto isHighlight = [&](QColor c) { return c == highlight; };
  auto isInk = [](QColor c) { return qGray(c.rgb()) < 110; };
  QImage img = shot();
  const QRect march = rowOnPanel(2), april = rowOnPanel(3);
  EXPECT_GT(count(img, march, isHighlight), march.width() * march.height() / 3);
  EXPECT_EQ(count(img, april, isHighlight), 0);
  EXPECT_GT(count(img, april, isInk), 20);  // the Thai name in dark glyphs

  // The core moves the selection; the highlight follows.
  w->view().setEMonth(4);
  img = shot();
  EXPECT_EQ(count(img, march, isHighlight), 0);
  EXPECT_GT(count(img, april, isHighlight), april.width() * april.height() / 3);
}

TEST_F(MonthYearViewOnForm, MouseOnTheListAndTheButtons) {
  QSignalSpy months(w.get(), &MonthYearViewWidget::monthClick);
  QTest::mouseClick(w->list()->viewport(), Qt::LeftButton, {}, rowCentre(4));
  EXPECT_EQ(w->view().EMonth(), 5);
  EXPECT_EQ(months.count(), 0);
  // A double click as the system delivers it: a click, then the second press as a double click.
  QTest::mouseClick(w->list()->viewport(), Qt::LeftButton, {}, rowCentre(1));
  QTest::mouseDClick(w->list()->viewport(), Qt::LeftButton, {}, rowCentre(1));
  ASSERT_EQ(months.count(), 1);
  EXPECT_EQ(months.at(0).at(0).value<int16_t>(), 2);
  EXPECT_EQ(months.at(0).at(1).value<int16_t>(), 2024);

  QTest::mouseClick(w->nextButton(), Qt::LeftButton);
  QTest::mouseClick(w->nextButton(), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_EQ(w->yearBox()->text(), QStringLiteral("2569"));
  QTest::mouseClick(w->previousButton(), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_EQ(w->view().EYear(), 2025);
  EXPECT_EQ(w->yearBox()->text(), QStringLiteral("2568"));
  EXPECT_EQ(w->view().FullText(), QStringLiteral("กุมภาพันธ์ 2568"));
}

TEST_F(MonthYearViewOnForm, OnlyEnterAndEscapeReachTheOwnerAndQuartersShrinkThePanel) {
  QStringList keys;
  QObject::connect(w.get(), &MonthYearViewWidget::keyDown, [&](int16_t& k, int16_t&) { keys << QString::number(k); });
  w->list()->setFocus();
  QTest::keyClick(w->list(), Qt::Key_Down);  // moves the list, as a click would
  EXPECT_EQ(w->view().EMonth(), 4);
  QTest::keyClick(w->list(), Qt::Key_A);
  QTest::keyClick(w->list(), Qt::Key_Return);
  QTest::keyClick(w->nextButton(), Qt::Key_Escape);
  QTest::keyClick(w->previousButton(), Qt::Key_F4);
  EXPECT_EQ(keys, (QStringList{"13", "27"}));

  QSignalSpy resized(w.get(), &MonthYearViewWidget::resized);
  w->view().setStyle(3);
  EXPECT_GE(resized.count(), 1);
  QApplication::processEvents();
  EXPECT_EQ(w->size(), QSize(133, 74));
  ASSERT_EQ(w->list()->count(), 4);
  EXPECT_EQ(w->list()->currentRow(), 2);  // April was cut to the third quarter
  EXPECT_EQ(w->view().EMonth(), 3);
  EXPECT_EQ(w->list()->item(3)->text(), QStringLiteral("Quarter 4"));
  // Every quarter can be seen without scrolling.
  EXPECT_LE(w->list()->visualItemRect(w->list()->item(3)).bottom(), w->list()->viewport()->height());
}
