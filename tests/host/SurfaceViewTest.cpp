// The surface view with real key, mouse and wheel events under the offscreen platform; what it
// paints is read back from the window's pixels.
#include "frame/SpreadSurface.h"
#include "host/HostColours.h"
#include "host/HostFonts.h"
#include "host/SurfaceView.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QRawFont>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Recorder : GridSurfaceEvents {
  QStringList log;
  // The log without the Shift and Ctrl keys themselves, which the test driver presses too.
  QStringList keys() const {
    QStringList out;
    for (const QString& l : log)
      if (!l.startsWith("KeyDown 16,") && !l.startsWith("KeyDown 17,") && !l.startsWith("KeyUp 16,") &&
          !l.startsWith("KeyUp 17,"))
        out << l;
    return out;
  }
  void Click(int32_t c, int32_t r) override { log << QStringLiteral("Click %1,%2").arg(c).arg(r); }
  void DblClick(int32_t c, int32_t r) override { log << QStringLiteral("DblClick %1,%2").arg(c).arg(r); }
  void ColWidthChange(int32_t a, int32_t b) override { log << QStringLiteral("ColWidthChange %1,%2").arg(a).arg(b); }
  void KeyDown(int16_t& k, int16_t& s) override { log << QStringLiteral("KeyDown %1,%2").arg(k).arg(s); }
  void KeyPress(int16_t& k) override { log << QStringLiteral("KeyPress %1").arg(k); }
  void KeyUp(int16_t& k, int16_t& s) override { log << QStringLiteral("KeyUp %1,%2").arg(k).arg(s); }
};

bool dark(QRgb p) { return qGray(p) < 110; }

// Pixels of a rectangle that satisfy a test, with the mean x of those found.
struct Count {
  int n = 0;
  double meanX = 0;
};
template <class F>
Count count(const QImage& img, const QRect& r, F test) {
  Count c;
  double sx = 0;
  for (int y = r.top(); y <= r.bottom(); ++y)
    for (int x = r.left(); x <= r.right(); ++x)
      if (test(img.pixel(x, y))) {
        ++c.n;
        sx += x;
      }
  if (c.n) c.meanX = sx / c.n;
  return c;
}

class SurfaceViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    // As a grid sets its surface up: the caption row alone above, running numbers to the left.
    s.setMaxCols(6);
    s.setMaxRows(200);
    for (int r = -999; r <= GridSurface::LastHeaderRow; ++r) s.setRowHeight(r, r == -997 ? 300 : 0);
    s.setRowHeight(0, 0);
    for (int c = -999; c <= GridSurface::LastHeaderCol; ++c) s.setColWidth(c, 0);
    s.setColWidth(0, 600);    // 40 pixels
    s.setColWidth(-1, 1200);  // 80 pixels: column c spans 40 + 80 (c - 1) ...
    s.setRowHeight(-1, 300);  // 20 pixels: row r spans 20 r ...
    for (int r = 1; r <= 200; ++r) s.SetText(0, r, QString::number(r));
    s.Move(0, 0, 600 * TwipsPerPixel, 300 * TwipsPerPixel);
    s.setListener(&events);
    // The view on a form, as an owner places it.
    form.resize(800, 600);
    view = new SurfaceView(s, &form);
    view->sync();
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    view->setFocus();
    QApplication::processEvents();
  }

  QImage shot() { return view->viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32); }
  QRgb pixel(QPoint p) { return shot().pixel(p); }
  QRgb base() { return view->palette().color(QPalette::Base).rgb(); }
  QRgb frame() { return view->palette().color(QPalette::Dark).rgb(); }
  QWidget* vp() { return view->viewport(); }

  void mouse(QEvent::Type type, QPoint pos, Qt::MouseButton button, Qt::MouseButtons buttons) {
    QMouseEvent e(type, QPointF(pos), QPointF(vp()->mapToGlobal(pos)), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(vp(), &e);
  }
  void wheel(int delta) {
    const QPoint pos(200, 100);
    QWheelEvent e(QPointF(pos), QPointF(vp()->mapToGlobal(pos)), QPoint(), QPoint(0, delta), Qt::NoButton,
                  Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(vp(), &e);
  }

  SpreadSurface s;
  Recorder events;
  QWidget form;
  SurfaceView* view = nullptr;
};

TEST_F(SurfaceViewTest, CellColoursFillTheirCellsAndAHiddenColumnTakesNoPixels) {
  s.setRow(3);
  s.setCol(2);
  s.setBackColor(rgb(0, 200, 0));
  s.setBlockMode(true);  // all of column 3 blue
  s.setRow(-1);
  s.setRow2(-1);
  s.setCol(3);
  s.setCol2(3);
  s.setBackColor(rgb(0, 0, 255));
  s.setBlockMode(false);
  view->sync();
  EXPECT_EQ(view->cellRect(2, 3), QRect(120, 60, 80, 20));
  EXPECT_EQ(pixel(view->cellRect(2, 3).center()), qRgb(0, 200, 0));
  EXPECT_EQ(pixel(view->cellRect(2, 4).center()), base());  // the window colour, through the palette
  EXPECT_EQ(pixel(QPoint(240, 90)), qRgb(0, 0, 255));

  s.setColWidth(2, 0);
  view->sync();
  // Column 3 now starts where column 2 did.
  EXPECT_EQ(pixel(QPoint(159, 69)), qRgb(0, 0, 255));
  EXPECT_TRUE(view->cellRect(2, 3).isEmpty());
  s.setColWidth(2, 1200);
  s.setCol(2);
  s.setColHidden(true);
  view->sync();
  EXPECT_EQ(pixel(QPoint(159, 69)), qRgb(0, 0, 255));
}

TEST_F(SurfaceViewTest, GridLinesFollowTheirSwitches) {
  // The line under row 3 and the one right of column 1, away from texts and the cursor.
  const QPoint under(100, 79), right(119, 70);
  EXPECT_NE(pixel(under), base());
  EXPECT_NE(pixel(right), base());
  s.setGridShowHoriz(false);
  view->sync();
  EXPECT_EQ(pixel(under), base());
  EXPECT_NE(pixel(right), base());
  s.setGridShowVert(false);
  view->sync();
  EXPECT_EQ(pixel(right), base());
  // Header cells keep their frames in a report style.
  EXPECT_EQ(pixel(QPoint(100, 19)), frame());
}

TEST_F(SurfaceViewTest, CheckBoxesNotesCursorAndSelectionAreDrawn) {
  s.setRow(2);
  s.setCol(4);
  s.setCellType(celltype::CheckBox);
  s.setTypeHAlign(2);
  s.setRow(3);
  s.setCellType(celltype::CheckBox);
  s.setTypeHAlign(2);
  s.setValue(1);
  s.setRow(2);
  s.setCol(5);
  s.setCellNote(QStringLiteral("ดูที่นี่"));
  view->sync();
  QImage img = shot();
  const QRect open = view->cellRect(4, 2), ticked = view->cellRect(4, 3);
  const Count a = count(img, open.adjusted(0, 0, -1, -1), dark);
  const Count b = count(img, ticked.adjusted(0, 0, -1, -1), dark);
  EXPECT_GE(a.n, 40);                                  // the frame of a 13-pixel box
  EXPECT_GT(b.n, a.n + 8);                             // and the tick
  EXPECT_NEAR(a.meanX, open.center().x(), 1.5);        // centred
  const QRect noted = view->cellRect(5, 2);
  EXPECT_EQ(img.pixel(noted.right() - 1, noted.top() + 1), qRgb(255, 0, 0));
  EXPECT_NE(img.pixel(noted.left() + 1, noted.top() + 1), qRgb(255, 0, 0));

  // The cursor frame, and a block tinted apart from its active cell.
  s.SetActiveCell(2, 6);
  s.SetSelection(1, 6, 2, 7);
  view->sync();
  img = shot();
  const QRect active = view->cellRect(2, 6);
  EXPECT_TRUE(dark(img.pixel(active.left(), active.center().y())));
  EXPECT_EQ(img.pixel(active.center()), base());
  EXPECT_NE(img.pixel(view->cellRect(1, 7).center()), base());
  EXPECT_EQ(img.pixel(view->cellRect(3, 7).center()), base());
}

TEST_F(SurfaceViewTest, ThaiTextIsDrawnWithAThaiFamilyAndAligned) {
  const QString family = defaultThaiFamily();
  EXPECT_TRUE(QFontDatabase::writingSystems(family).contains(QFontDatabase::Thai)) << family.toStdString();
  EXPECT_EQ(hostFontFamily(QStringLiteral("MS Sans Serif")), family);
  EXPECT_EQ(hostFontFamily(QStringLiteral("Tahoma")), family);
  EXPECT_EQ(hostFontFamily(QStringLiteral("No Such Face")), family);
  const QString serif = hostFontFamily(QStringLiteral("MS Serif"));
  EXPECT_NE(serif, family);
  EXPECT_TRUE(QFontDatabase::writingSystems(serif).contains(QFontDatabase::Thai));
  // The family is really there, not a substitute, and has the Thai letters.
  const QFont f = toQFont(tq7::Font{});
  EXPECT_EQ(QFontInfo(f).family(), family);
  EXPECT_DOUBLE_EQ(f.pointSizeF(), 8.25);
  EXPECT_TRUE(QRawFont::fromFont(f, QFontDatabase::Thai).supportsCharacter(QChar(0x0E01)));

  s.SetText(2, 4, QStringLiteral("ภาษาไทย"));
  s.SetText(3, 4, QStringLiteral("12.50"));
  s.setRow(4);
  s.setCol(3);
  s.setTypeHAlign(1);
  s.setCol(4);
  s.setTypeHAlign(0);
  s.SetText(4, 4, QStringLiteral("12.50"));
  view->sync();
  const QImage img = shot();
  const QRect thai = view->cellRect(2, 4).adjusted(0, 0, -1, -1);
  EXPECT_GT(count(img, thai, dark).n, 25);
  EXPECT_EQ(count(img, view->cellRect(2, 5).adjusted(0, 0, -1, -1), dark).n, 0);
  // The same number to the right and to the left of its cell.
  const QRect right = view->cellRect(3, 4).adjusted(0, 0, -1, -1), left = view->cellRect(4, 4).adjusted(0, 0, -1, -1);
  const Count r = count(img, right, dark), l = count(img, left, dark);
  EXPECT_EQ(r.n, l.n);
  EXPECT_GT(r.meanX - right.left(), right.width() / 2 + 10);
  EXPECT_LT(l.meanX - left.left(), left.width() / 2 - 10);
}

TEST_F(SurfaceViewTest, ASpanIsPaintedOnceAcrossItsColumns) {
  s.setRowHeight(-998, 300);  // a group caption row above the captions
  s.SetText(1, -998, QStringLiteral("ยอดขาย"));
  s.SetText(2, -998, QStringLiteral("x"));  // covered by the span: never shown
  s.AddCellSpan(1, -998, 2, 1);
  s.setRow(-998);
  s.setCol(1);
  s.setTypeHAlign(2);
  s.setFontBold(true);
  view->sync();
  const QImage img = shot();
  // Row -998 is on top, 20 pixels high; columns 1 and 2 meet at x 119.
  const Count caption = count(img, QRect(41, 1, 157, 17), dark);
  EXPECT_GT(caption.n, 20);
  EXPECT_NEAR(caption.meanX, 120, 6);
  // No frame inside the span (the caption may cross that line, a frame would fill it), the
  // frame at its end, and the caption row below is not joined.
  const QRgb line = frame();
  auto isFrame = [line](QRgb p) { return p == line; };
  EXPECT_LT(count(img, QRect(119, 1, 1, 18), isFrame).n, 12);
  EXPECT_EQ(count(img, QRect(199, 1, 1, 18), isFrame).n, 18);
  EXPECT_EQ(count(img, QRect(119, 21, 1, 18), isFrame).n, 18);
}

TEST_F(SurfaceViewTest, KeysReachTheSurfaceAsTheClassicKeySet) {
  QTest::keyClick(view, Qt::Key_Down);
  EXPECT_EQ(s.ActiveRow(), 2);
  EXPECT_EQ(events.log, (QStringList{"KeyDown 40,0", "KeyUp 40,0"}));

  events.log.clear();
  QTest::keyClick(view, Qt::Key_Right, Qt::ShiftModifier);
  EXPECT_EQ(s.ActiveCol(), 2);
  EXPECT_EQ(s.SelBlockCol(), 1);
  EXPECT_EQ(s.SelBlockCol2(), 2);
  EXPECT_EQ(events.keys().first(), "KeyDown 39,1");

  // Tab stays in the sheet.
  events.log.clear();
  QTest::keyClick(view, Qt::Key_Tab);
  EXPECT_EQ(s.ActiveCol(), 3);
  EXPECT_TRUE(view->hasFocus());

  events.log.clear();
  QTest::keyClick(view, Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(view, Qt::Key_Return);
  QTest::keyClick(view, Qt::Key_F2);
  QTest::keyClick(view, Qt::Key_A);
  EXPECT_EQ(events.keys(), (QStringList{"KeyDown 67,2", "KeyPress 3", "KeyUp 67,2", "KeyDown 13,0", "KeyPress 13",
                                     "KeyUp 13,0", "KeyDown 113,0", "KeyUp 113,0", "KeyDown 65,0", "KeyPress 97",
                                     "KeyUp 65,0"}));

  // Every key has its code. A Thai letter from an input method names its key on the Kedmanee
  // layout (ก is on the D key); where the window system tells the key's place, the place decides
  // (ด on the F key, and "/" typed on the Thai layout's 2 key is the 2 key); shifted digits are
  // their digits' keys.
  events.log.clear();
  QKeyEvent press(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, QStringLiteral("ก"));
  QApplication::sendEvent(view, &press);
  EXPECT_EQ(events.log, (QStringList{"KeyDown 68,0", "KeyPress 3585"}));
  events.log.clear();
  const quint32 fKey = 41, twoKey = 11;  // X11 key codes
  QKeyEvent doDek(QEvent::KeyPress, 0x0E14, Qt::NoModifier, fKey, 0, 0, QStringLiteral("ด"));
  QApplication::sendEvent(view, &doDek);
  QKeyEvent slash(QEvent::KeyPress, Qt::Key_Slash, Qt::NoModifier, twoKey, 0, 0, QStringLiteral("/"));
  QApplication::sendEvent(view, &slash);
  QTest::keyClick(view, Qt::Key_Exclam, Qt::ShiftModifier, -1);
  EXPECT_EQ(events.keys(), (QStringList{"KeyDown 70,0", "KeyPress 3604", "KeyDown 50,0", "KeyPress 47",
                                     "KeyDown 49,1", "KeyPress 33", "KeyUp 49,1"}));
}

TEST_F(SurfaceViewTest, ClicksMoveTheCursorAndDoubleClicksAreTold) {
  QTest::mouseClick(vp(), Qt::LeftButton, {}, view->cellRect(3, 4).center());
  EXPECT_EQ(s.ActiveCol(), 3);
  EXPECT_EQ(s.ActiveRow(), 4);
  EXPECT_TRUE(events.log.contains("Click 3,4"));
  events.log.clear();
  QTest::mouseDClick(vp(), Qt::LeftButton, {}, view->cellRect(2, 5).center());
  EXPECT_EQ(events.log, QStringList{"DblClick 2,5"});
  // Double clicks on a header edge belong to the sizing, not to the cells.
  events.log.clear();
  QTest::mouseDClick(vp(), Qt::LeftButton, {}, QPoint(120, 10));
  EXPECT_TRUE(events.log.isEmpty());
}

TEST_F(SurfaceViewTest, DraggingAHeaderEdgeSizesTheColumn) {
  // The right edge of column 1 in the caption row, at x 120.
  mouse(QEvent::MouseMove, QPoint(120, 10), Qt::NoButton, Qt::NoButton);
  EXPECT_EQ(vp()->cursor().shape(), Qt::SplitHCursor);
  mouse(QEvent::MouseMove, QPoint(80, 60), Qt::NoButton, Qt::NoButton);
  EXPECT_EQ(vp()->cursor().shape(), Qt::ArrowCursor);

  mouse(QEvent::MouseButtonPress, QPoint(120, 10), Qt::LeftButton, Qt::LeftButton);
  mouse(QEvent::MouseMove, QPoint(150, 10), Qt::NoButton, Qt::LeftButton);
  mouse(QEvent::MouseButtonRelease, QPoint(150, 10), Qt::LeftButton, Qt::NoButton);
  EXPECT_DOUBLE_EQ(s.ColWidth(1), 1200 + 30 * TwipsPerPixel);
  EXPECT_TRUE(events.log.contains("ColWidthChange 1,1"));
  // Column 2 now starts 30 pixels further right.
  EXPECT_EQ(view->cellRect(2, 1).left(), 150);
}

TEST_F(SurfaceViewTest, TheWheelScrollsThreeRowsANotchUnlessTaken) {
  wheel(-120);
  EXPECT_EQ(s.TopRow(), 4);
  wheel(120);
  EXPECT_EQ(s.TopRow(), 1);
  wheel(-60);  // half notches add up
  EXPECT_EQ(s.TopRow(), 1);
  wheel(-60);
  EXPECT_EQ(s.TopRow(), 4);

  int seen = 0;
  view->wheelOverride = [&](int rotation, QPoint) {
    seen = rotation;
    return true;
  };
  wheel(-240);
  EXPECT_EQ(seen, -240);
  EXPECT_EQ(s.TopRow(), 4);
  view->wheelOverride = [](int, QPoint) { return false; };
  wheel(-120);
  EXPECT_EQ(s.TopRow(), 7);
}

TEST_F(SurfaceViewTest, SyncMirrorsGeometryScrollingFocusAndTip) {
  // The view takes exactly the surface's rectangle; its scroll bar stands inside it, and the
  // sheet knows the room the bar takes.
  const int bar = view->verticalScrollBar()->sizeHint().width();
  EXPECT_EQ(view->size(), QSize(600, 300));
  EXPECT_EQ(vp()->size(), QSize(600 - bar, 300));
  EXPECT_DOUBLE_EQ(s.viewWidth(), (600 - bar) * 15.0);
  EXPECT_TRUE(view->verticalScrollBar()->isVisible());
  EXPECT_FALSE(view->horizontalScrollBar()->isVisible());  // six columns fit
  EXPECT_EQ(s.rowsInView(), 14);                             // (300 - 20) / 20

  s.Move(150, 300, 4500, 3000);
  s.setToolTipText(QStringLiteral("ตารางสินค้า"));
  view->sync();
  QApplication::processEvents();
  EXPECT_EQ(view->pos(), QPoint(10, 20));
  EXPECT_EQ(view->size(), QSize(300, 200));
  EXPECT_EQ(vp()->size(), QSize(300 - bar, 200 - view->horizontalScrollBar()->sizeHint().height()));
  EXPECT_EQ(view->toolTip(), QStringLiteral("ตารางสินค้า"));
  EXPECT_TRUE(view->horizontalScrollBar()->isVisible());  // now they do not

  s.setTopRow(50);
  view->sync();
  EXPECT_EQ(view->verticalScrollBar()->value(), 50);
  view->verticalScrollBar()->setValue(80);
  EXPECT_EQ(s.TopRow(), 80);
  EXPECT_EQ(s.shownDataRows().front(), 80);
  view->horizontalScrollBar()->setValue(3);
  EXPECT_EQ(s.LeftCol(), 3);

  int focused = 0;
  view->onFocusIn = [&] { ++focused; };
  view->clearFocus();
  view->setFocus(Qt::OtherFocusReason);
  EXPECT_EQ(focused, 1);

  s.setVisible(false);
  view->sync();
  EXPECT_FALSE(view->isVisible());
}

TEST(HostColours, SystemColoursComeFromThePalette) {
  QPalette pal;
  pal.setColor(QPalette::Base, QColor(1, 2, 3));
  pal.setColor(QPalette::Text, QColor(4, 5, 6));
  pal.setColor(QPalette::Button, QColor(7, 8, 9));
  pal.setColor(QPalette::ButtonText, QColor(10, 11, 12));
  pal.setColor(QPalette::Highlight, QColor(13, 14, 15));
  pal.setColor(QPalette::ToolTipBase, QColor(16, 17, 18));
  EXPECT_EQ(toQColor(syscolor::Window, pal), QColor(1, 2, 3));
  EXPECT_EQ(toQColor(syscolor::WindowText, pal), QColor(4, 5, 6));
  EXPECT_EQ(toQColor(syscolor::ButtonFace, pal), QColor(7, 8, 9));
  EXPECT_EQ(toQColor(syscolor::ButtonText, pal), QColor(10, 11, 12));
  EXPECT_EQ(toQColor(syscolor::Highlight, pal), QColor(13, 14, 15));
  EXPECT_EQ(toQColor(syscolor::InfoBackground, pal), QColor(16, 17, 18));
  // 0x00BBGGRR: the light blue of a locked cell.
  EXPECT_EQ(toQColor(0xFFC0C0), QColor(0xC0, 0xC0, 0xFF));
  EXPECT_EQ(fromQColor(QColor(0x12, 0x34, 0x56)), 0x563412u);
}

}  // namespace
