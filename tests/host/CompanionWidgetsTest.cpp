// The companion controls on Qt forms: real mouse, wheel and key events reach the cores, and what
// they show is read back from the pixels: the rotated text at each angle with the form seen
// between its letters, the picture of the image preview, the button grid's faces.
#include "host/frmActualWindow.h"
#include "host/GridButtonWidget.h"
#include "host/GridEditorWidget.h"
#include "host/ImagePreviewWidget.h"
#include "host/PageCollectionWidget.h"
#include "host/RotLabelWidget.h"
#include "host/RotatedBoundControlWidget.h"
#include "host/SurfaceView.h"

#include "controls/tq7MouseWheelControl.h"
#include "frame/FakePlatform.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWheelEvent>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

// A form with a checkered background, so that what shows between letters can be told apart.
class PatternForm : public QWidget {
 public:
  static constexpr QRgb A = 0xFF30C030, B = 0xFFF0F0A0;
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    for (int y = 0; y < height(); y += 8)
      for (int x = 0; x < width(); x += 8) p.fillRect(x, y, 8, 8, QColor::fromRgba(((x + y) / 8) % 2 ? A : B));
  }
};

struct Ink {
  int count = 0;
  QRect box;
  int other = 0;  // pixels that are neither the text colour nor the form's pattern
};

Ink inkOf(const QImage& img, QRgb text) {
  Ink ink;
  int x1 = INT_MAX, y1 = INT_MAX, x2 = -1, y2 = -1;
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x) {
      const QRgb c = img.pixel(x, y) | 0xFF000000;
      if (c == text) {
        ++ink.count;
        x1 = std::min(x1, x), y1 = std::min(y1, y), x2 = std::max(x2, x), y2 = std::max(y2, y);
      } else if (c != PatternForm::A && c != PatternForm::B) {
        ++ink.other;
      }
    }
  if (ink.count) ink.box = QRect(QPoint(x1, y1), QPoint(x2, y2));
  return ink;
}

// Types text as a keyboard with a Thai layout would: one key event per character.
void typeText(QWidget* w, const QString& text) {
  for (const QChar ch : text) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(ch));
    QApplication::sendEvent(w, &press);
    QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(ch));
    QApplication::sendEvent(w, &release);
  }
}

// Counts a signal with by-reference arguments, which QSignalSpy cannot hold.
template <class W, class S>
std::shared_ptr<int> countOf(W* w, S signal) {
  auto n = std::make_shared<int>(0);
  QObject::connect(w, signal, w, [n](int16_t&, int16_t&) { ++*n; });
  return n;
}

}  // namespace

TEST(RotLabelOnForm, TheTextAtEachAngleIsTheShapeAndTheFormShowsBetweenTheLetters) {
  PatternForm form;
  form.resize(400, 400);
  auto* w = new RotLabelWidget(&form);
  w->setGeometry(0, 0, 400, 400);
  RotLabel& l = w->label();
  tq7::Font f;
  f.Name = QStringLiteral("Tahoma");
  f.Size = 24;
  f.Bold = true;
  l.setFont(f);
  l.setCaption(QStringLiteral("HHHHHH"));
  l.setForeColor(rgb(200, 0, 0));
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  const QRgb red = qRgb(200, 0, 0);
  auto shot = [&](float angle, int16_t point) {
    l.setAngle(angle);
    l.setRotationPoint(point);
    w->syncNow();
    return inkOf(form.grab().toImage(), red);
  };

  // 0 degrees from the top left: a wide, low band that starts at the corner.
  const Ink a0 = shot(0, 1);
  ASSERT_GT(a0.count, 300);
  EXPECT_EQ(a0.other, 0);  // only letters and the form: no rectangle of background
  EXPECT_LT(a0.box.left(), 8);
  EXPECT_LT(a0.box.top(), 20);  // the cell's top holds the leading above the capitals
  EXPECT_GT(a0.box.width(), 3 * a0.box.height());
  // The letters are not filled boxes: the form shows inside the band.
  EXPECT_LT(a0.count, a0.box.width() * a0.box.height() * 3 / 4);

  // 90 degrees from the bottom left (7): the text runs upwards from above the bottom.
  const Ink a90 = shot(90, 7);
  EXPECT_EQ(a90.other, 0);
  EXPECT_GT(a90.box.height(), 3 * a90.box.width());
  EXPECT_LT(a90.box.left(), 20);
  EXPECT_LT(a90.box.bottom(), 400 - 24 * 20 / 15 + 4);
  EXPECT_NEAR(a90.count, a0.count, a0.count / 5);

  // 180 degrees in the centre (5): s is -1, so the upside-down text stands where the upright one
  // would, mirrored through the centre (whatever error the measured width has, it has twice).
  const Ink c0 = shot(0, 5);
  const Ink a180 = shot(180, 5);
  EXPECT_EQ(a180.other, 0);
  EXPECT_GT(a180.box.width(), 3 * a180.box.height());
  EXPECT_NEAR(a180.box.center().x() + c0.box.center().x(), 400, 6);
  EXPECT_NEAR(a180.box.center().y() + c0.box.center().y(), 400, 6);
  EXPECT_NEAR(a180.count, c0.count, c0.count / 10);

  // 270 degrees in the centre: runs downwards from the anchor right of the middle.
  const Ink a270 = shot(270, 5);
  EXPECT_EQ(a270.other, 0);
  EXPECT_GT(a270.box.height(), 3 * a270.box.width());
  EXPECT_GT(a270.box.top(), 190);
  EXPECT_GT(a270.box.left(), 200);

  // 45 degrees from the bottom left: a diagonal band rising to the right.
  const Ink a45 = shot(45, 7);
  EXPECT_EQ(a45.other, 0);
  EXPECT_NEAR(double(a45.box.width()) / a45.box.height(), 1.0, 0.35);
  EXPECT_LT(a45.box.left(), 20);
  // Rising: ink near the bottom lies to the left, ink near the top to the right.
  const QImage img = form.grab().toImage();
  int lowX = 0, lowN = 0, highX = 0, highN = 0;
  for (int y = a45.box.top(); y <= a45.box.bottom(); ++y)
    for (int x = a45.box.left(); x <= a45.box.right(); ++x)
      if ((img.pixel(x, y) | 0xFF000000) == red) {
        if (y > a45.box.center().y()) lowX += x, ++lowN;
        else highX += x, ++highN;
      }
  ASSERT_GT(lowN, 0);
  ASSERT_GT(highN, 0);
  EXPECT_LT(lowX / lowN, highX / highN);

  // A click between the letters reaches the form, not the label.
  QSignalSpy clicks(w, &RotLabelWidget::click);
  shot(0, 1);
  QTest::mouseClick(w, Qt::LeftButton, {}, QPoint(a0.box.left() + 2, a0.box.center().y()));
  const QPoint empty(390, 390);
  QTest::mouseClick(&form, Qt::LeftButton, {}, empty);
  EXPECT_LE(clicks.count(), 1);
}

TEST(ImagePreviewOnForm, ShowsThePictureAndClearsItFromTheRightButtonsMenu) {
  FakePlatform fake;
  QTemporaryDir dir;
  QImage green(200, 100, QImage::Format_RGB32);
  green.fill(qRgb(0, 160, 0));
  ASSERT_TRUE(green.save(dir.filePath(QStringLiteral("ผัก สด.bmp")), "BMP"));
  QWidget form;
  auto* w = new ImagePreviewWidget(&form);
  w->setGeometry(10, 10, 200, 231);
  auto* other = new QLineEdit(&form);
  other->setGeometry(10, 250, 100, 24);
  form.resize(240, 290);
  ImagePreview& p = w->preview();
  form.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  p.setImageFolder(dir.path());
  p.setPreview(true);
  p.setFileName(QStringLiteral("ผัก สด.bmp"));
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("200 x 100 x 24bit"));
  // The frame is 200 x 200 pixels: the picture fills its width and is centred on it.
  EXPECT_EQ(w->imageRect(), QRect(0, 50, 200, 100));
  QImage shot = w->grab().toImage();
  EXPECT_EQ(shot.pixel(100, 100) | 0xFF000000, qRgb(0, 160, 0));
  EXPECT_NE(shot.pixel(100, 20) | 0xFF000000, qRgb(0, 160, 0));
  // The size line has ink under the frame.
  int ink = 0;
  const QRect size = w->labelRect(p.lblSize);
  for (int y = size.top(); y <= size.bottom(); ++y)
    for (int x = 0; x < 200; ++x) ink += qGray(shot.pixel(x, y)) < 110;
  EXPECT_GT(ink, 20);

  // Right button: the menu pops up, its change items off while not editing; Escape closes it.
  QStringList seen;
  QTimer::singleShot(50, [&] {
    QMenu* m = w->popupMenu();
    if (!m) return;
    for (QAction* a : m->actions())
      if (!a->isSeparator()) seen << a->text() + (a->isEnabled() ? "" : " (off)");
    m->close();
  });
  QTest::mouseClick(w, Qt::RightButton, {}, QPoint(100, 100));
  EXPECT_EQ(seen, QStringList({"แสดงรูปภาพขนาดจริง", "เปลี่ยนรูปภาพ (off)", "เปลี่ยนรูปภาพ (แบบเดิม) (off)",
                               "ยกเลิกรูปภาพ (off)"}));

  // In edit mode the last item clears the picture and raises Change.
  p.setEditStatus(true);
  QSignalSpy changes(w, &ImagePreviewWidget::change);
  QTimer::singleShot(50, [&] {
    QMenu* m = w->popupMenu();
    if (!m) return;
    m->setActiveAction(m->actions().last());
    QTest::keyClick(m, Qt::Key_Return);
  });
  QTest::mouseClick(w, Qt::RightButton, {}, QPoint(100, 100));
  EXPECT_EQ(changes.count(), 1);
  EXPECT_EQ(p.FileName(), QString());
  shot = w->grab().toImage();
  EXPECT_NE(shot.pixel(100, 100) | 0xFF000000, qRgb(0, 160, 0));

  // A double click opens the viewer; a key reaches KeyDown; the user leaves for another box.
  p.setFileName(QStringLiteral("ผัก สด.bmp"));
  QTest::mouseDClick(w, Qt::LeftButton, {}, QPoint(100, 100));
  EXPECT_EQ(fake.count(QStringLiteral("openInViewer: ") + dir.path() + QStringLiteral("/ผัก สด.bmp")), 1);
  const auto keys = countOf(w, &ImagePreviewWidget::keyDown);
  w->setFocus();
  QTest::keyClick(w, Qt::Key_F2);
  EXPECT_EQ(*keys, 1);
  QTest::mouseClick(other, Qt::LeftButton);
  typeText(other, QStringLiteral("ต่อ"));
  EXPECT_EQ(*keys, 1);
  EXPECT_EQ(other->text(), QStringLiteral("ต่อ"));
}

TEST(frmActualOnScreen, ShowsThePictureAtItsSizeAndDragsIt) {
  frmActualWindow win;
  QImage blue(120, 80, QImage::Format_RGB32);
  blue.fill(qRgb(0, 0, 220));
  win.showPicture(blue);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&win));
  EXPECT_EQ(win.size(), QSize(120, 80));
  EXPECT_EQ(win.windowTitle(), QStringLiteral("Image Preview Size 1:1"));
  EXPECT_EQ(win.grab().toImage().pixel(60, 40) | 0xFF000000, qRgb(0, 0, 220));
  // The first events pass; then a drag moves the picture with the pointer.
  QTest::mouseMove(&win, QPoint(10, 10));
  QTest::mouseMove(&win, QPoint(20, 20));
  QTest::mousePress(&win, Qt::LeftButton, {}, QPoint(50, 40));
  EXPECT_EQ(QApplication::overrideCursor() ? QApplication::overrideCursor()->shape() : Qt::ArrowCursor,
            Qt::SizeAllCursor);
  QMouseEvent move(QEvent::MouseMove, QPointF(70, 50), win.mapToGlobal(QPointF(70, 50)), Qt::NoButton,
                   Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&win, &move);
  EXPECT_EQ(win.pictureRect().topLeft(), QPoint(20, 10));
  QTest::mouseRelease(&win, Qt::LeftButton, {}, QPoint(70, 50));
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  const QImage img = win.grab().toImage();
  EXPECT_NE(img.pixel(5, 5) | 0xFF000000, qRgb(0, 0, 220));
  EXPECT_EQ(img.pixel(25, 15) | 0xFF000000, qRgb(0, 0, 220));
  QTest::keyClick(&win, Qt::Key_Escape);
  EXPECT_FALSE(win.isVisible());
}

TEST(GridButtonOnForm, ButtonsAnswerClicksAndKeys) {
  FakePlatform fake;
  GridButtonWidget w;
  GridButton& g = w.buttons();
  w.resize(240, 120);
  g.SetFirst(1, 4);
  g.SetButton(QStringLiteral("ขายสินค้า"), 1, 1);
  g.SetButton(QStringLiteral("รับสินค้า"), 1, 2);
  g.SetButton(QStringLiteral("รายงาน"), 1, 3);
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  QApplication::setActiveWindow(&w);
  w.syncNow();
  QSignalSpy clicked(&w, &GridButtonWidget::buttonClicked);
  QWidget* vp = w.surfaceView()->viewport();
  const QRect second = w.surfaceView()->cellRect(1, 2);
  ASSERT_FALSE(second.isEmpty());
  EXPECT_GT(second.width(), 200);  // column 1 fills the control
  QTest::mouseClick(vp, Qt::LeftButton, {}, second.center());
  ASSERT_EQ(clicked.count(), 1);
  EXPECT_EQ(clicked.at(0).at(0).toInt(), 1);
  EXPECT_EQ(clicked.at(0).at(1).toInt(), 2);
  EXPECT_EQ(clicked.at(0).at(2).toInt(), 1);
  EXPECT_EQ(g.CurrentRow(), 2);
  // Keys: "3" names row 3 of column 1, Enter the current row with column 0, "4" a row without a
  // button but within the grid, "5" nothing.
  const auto keys = countOf(&w, &GridButtonWidget::keyDown);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_3, {}, 10);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_5);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_F4);
  ASSERT_EQ(clicked.count(), 3);
  EXPECT_EQ(clicked.at(1).at(0).toInt(), 1);
  EXPECT_EQ(clicked.at(1).at(1).toInt(), 3);
  EXPECT_EQ(clicked.at(2).at(0).toInt(), 0);
  EXPECT_EQ(clicked.at(2).at(1).toInt(), 2);
  EXPECT_EQ(*keys, 1);
  // Button faces: the button colour, with the caption's ink in the middle.
  w.syncNow();
  const QImage img = w.grab().toImage();
  const QRect cell = second.translated(vp->mapTo(&w, QPoint(0, 0)));
  EXPECT_EQ(img.pixel(cell.left() + 4, cell.top() + 3) | 0xFF000000,
            w.palette().color(QPalette::Button).rgb() | 0xFF000000);
  int ink = 0;
  for (int y = cell.top(); y <= cell.bottom(); ++y)
    for (int x = cell.left(); x <= cell.right(); ++x) ink += qGray(img.pixel(x, y)) < 100;
  EXPECT_GT(ink, 15);
}

TEST(PageCollectionOnForm, KeepsItsHeightAndRelaysKeys) {
  PageCollectionWidget w;
  w.resize(100, 60);
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  w.syncNow();
  EXPECT_EQ(w.height(), 20);
  EXPECT_GE(w.width(), 222);
  EXPECT_EQ(w.currentBox()->toolTip(), QStringLiteral("หน้าปัจจุบัน"));
  EXPECT_EQ(w.currentBox()->geometry().left(), w.leftBar()->geometry().right() + 1);
  EXPECT_EQ(w.totalBox()->width(), w.currentBox()->width());
  const auto keys = countOf(&w, &PageCollectionWidget::keyDown);
  QSignalSpy next(&w, &PageCollectionWidget::buttonNextClick);
  QTest::mouseClick(w.currentBox(), Qt::LeftButton);
  QTest::keyClicks(w.currentBox(), QStringLiteral("12"));
  EXPECT_EQ(*keys, 2);
  EXPECT_EQ(w.pages().txtCurrent.Text(), QStringLiteral("12"));
  // The bars' buttons raise nothing.
  QAction* a = w.rightBar()->actions().first();
  QTest::mouseClick(w.rightBar()->widgetForAction(a), Qt::LeftButton);
  EXPECT_EQ(next.count(), 0);
}

TEST(WheelOnGrid, TheGridUnderThePointerTakesTheWheelThroughTheHook) {
  GridEditorWidget w;
  GridEditor& g = w.grid();
  w.resize(500, 300);
  g.SetFirst(2);
  g.addField3(1, "Name", "TEXT", 0, "Name", 0, {}, 0, {}, 0, 20, 1, 0, 1, 0, 1500);
  g.addField3(2, "Qty", "NUMBER", 0, "Qty", 2, {}, 0, {}, 0, 10, 1, 1, 1, 0, 1200);
  g.SetLast3("/tmp", "grdWheel", "1", {}, {});
  g.mfgData.setMaxRows(200);
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  w.syncNow();
  QWidget* vp = w.surfaceView()->viewport();
  const double rh = g.mfgData.RowHeight(1);
  ASSERT_GT(rh, 0);
  const int32_t n = std::max<int32_t>(10, int32_t(std::floor(g.mfgData.Height() / rh)) - 1);
  auto wheel = [&](int delta) {
    const QPoint pos(50, 60);
    QWheelEvent e(QPointF(pos), QPointF(vp->mapToGlobal(pos)), QPoint(), QPoint(0, delta), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(vp, &e);
    w.syncNow();
  };
  wheel(-120);
  EXPECT_EQ(tq7MouseWheelControl::hookedSurface(), &g.mfgData);
  EXPECT_EQ(g.mfgData.TopRow(), 1 + n);  // a page of rows, not the sheet's three
  wheel(-120);
  EXPECT_EQ(g.mfgData.TopRow(), 1 + 2 * n);
  wheel(120);
  EXPECT_EQ(g.mfgData.TopRow(), 1 + n);

  // A second grid takes the hook from the first.
  {
    GridEditorWidget w2;
    w2.resize(300, 200);
    w2.grid().SetFirst(1);
    w2.grid().mfgData.setMaxRows(50);
    w2.show();
    QWidget* vp2 = w2.surfaceView()->viewport();
    QWheelEvent e(QPointF(10, 40), QPointF(vp2->mapToGlobal(QPoint(10, 40))), QPoint(), QPoint(0, -120),
                  Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(vp2, &e);
    EXPECT_EQ(tq7MouseWheelControl::hookedSurface(), &w2.grid().mfgData);
  }
  // Its end takes the hook with it; the first grid hooks itself again at its next turn.
  EXPECT_FALSE(tq7MouseWheelControl::hooked());
  wheel(-120);
  EXPECT_EQ(g.mfgData.TopRow(), 1 + 2 * n);
}

TEST(RotatedBoundOnForm, DrawsFromTheBottomLeftOnItsOwnBackground) {
  RotatedBoundControlWidget w;
  w.resize(300, 200);
  QPalette pal = w.palette();
  pal.setColor(QPalette::Window, Qt::white);
  pal.setColor(QPalette::WindowText, Qt::black);
  w.setPalette(pal);
  RotatedBoundControl& c = w.control();
  tq7::Font f;
  f.Size = 18;
  c.setFont(f);
  c.setCaption(QStringLiteral("ราคา 245"));
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  auto inkBox = [&] {
    const QImage img = w.grab().toImage();
    int x1 = INT_MAX, y1 = INT_MAX, x2 = -1, y2 = -1;
    for (int y = 0; y < img.height(); ++y)
      for (int x = 0; x < img.width(); ++x)
        if (qGray(img.pixel(x, y)) < 128) x1 = std::min(x1, x), y1 = std::min(y1, y), x2 = std::max(x2, x), y2 = std::max(y2, y);
    return x2 < 0 ? QRect() : QRect(QPoint(x1, y1), QPoint(x2, y2));
  };
  // Upright: a line along the bottom, starting at the left edge.
  const QRect flat = inkBox();
  ASSERT_TRUE(flat.isValid());
  EXPECT_LT(flat.left(), 6);
  EXPECT_GT(flat.top(), 200 - 2 * 24);
  EXPECT_GT(flat.width(), 2 * flat.height());
  // At 90 degrees it rises from the same corner.
  c.setAngle(90);
  const QRect up = inkBox();
  EXPECT_GT(up.height(), 2 * up.width());
  EXPECT_LT(up.left(), 40);
  EXPECT_LT(up.bottom(), 200 - 24 + 4);
}
