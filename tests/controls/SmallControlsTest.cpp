// The page navigator, the button grid, the task bar and the wheel hook, headless.
#include "controls/GridButton.h"
#include "controls/PageCollection.h"
#include "controls/Taskbar.h"
#include "controls/tq7MouseWheelControl.h"

#include "frame/Error.h"
#include "frame/FakePlatform.h"

#include <gtest/gtest.h>

using namespace tq7;

TEST(PageCollectionTest, KeepsItsHeightAndAFloorUnderItsWidth) {
  PageCollection p;
  EXPECT_EQ(p.Height(), 300);
  EXPECT_EQ(p.Width(), 3330);
  p.setSize(1000, 900);
  EXPECT_EQ(p.Width(), 3330);
  EXPECT_EQ(p.Height(), 300);
  p.setSize(5001, 300);
  EXPECT_EQ(p.Width(), 5001);
  EXPECT_EQ(p.tbrLeft.Left(), 0);
  EXPECT_EQ(p.txtCurrent.Left(), PageCollection::ToolBarWidth);
  EXPECT_EQ(p.TbrRight.Left(), 5001 - PageCollection::ToolBarWidth);
  // The boxes share what the bars leave, the fraction dropped.
  const double share = std::trunc((5001 - 2 * PageCollection::ToolBarWidth) / 2);
  EXPECT_EQ(p.txtCurrent.Width(), share);
  EXPECT_EQ(p.txtTotal.Left(), PageCollection::ToolBarWidth + share);
  EXPECT_EQ(p.txtTotal.Width(), share);
  for (Widget* w : p.children()) EXPECT_EQ(w->Top(), 0);
  EXPECT_EQ(p.txtCurrent.ToolTipText(), QStringLiteral("หน้าปัจจุบัน"));
  EXPECT_EQ(p.txtTotal.ToolTipText(), QStringLiteral("จำนวนหน้าทั้งหมด"));

  // The bars' buttons raise nothing; a key on the control is passed on.
  struct Events : PageCollectionEvents {
    QStringList log;
    void ButtonNextClick() override { log << "Next"; }
    void ButtonFirstClick() override { log << "First"; }
    void KeyDown(int16_t& k, int16_t& s) override { log << QStringLiteral("KeyDown %1 %2").arg(k).arg(s); }
  } events;
  p.setListener(&events);
  p.TbrRight.ButtonClick(QStringLiteral("Next"));
  p.tbrLeft.ButtonClick(QStringLiteral("First"));
  int16_t k = 33, s = 1;
  p.UserControl_KeyDown(k, s);
  EXPECT_EQ(events.log, QStringList{QStringLiteral("KeyDown 33 1")});
}

namespace {
struct ButtonEvents : GridButtonEvents {
  QStringList log;
  void ButtonClicked(int32_t c, int32_t r, int16_t down) override {
    log << QStringLiteral("ButtonClicked %1 %2 %3").arg(c).arg(r).arg(down);
  }
  void KeyDown(int16_t& k, int16_t& s) override { log << QStringLiteral("KeyDown %1 %2").arg(k).arg(s); }
};
}  // namespace

TEST(GridButtonTest, SizesTheGridAndPutsButtonsOnlyWithinIt) {
  GridButton g;
  ButtonEvents ev;
  g.setListener(&ev);
  g.SetFirst(3, 4);
  EXPECT_EQ(g.MaxCols(), 3);
  EXPECT_EQ(g.MaxRows(), 4);
  g.SetFirst(0, 0);  // one column, the rows as they were
  EXPECT_EQ(g.MaxCols(), 1);
  EXPECT_EQ(g.MaxRows(), 4);
  g.SetFirst(2, -1);
  EXPECT_EQ(g.MaxRows(), 4);
  g.SetButton(QStringLiteral("ขาย"), 1, 1);
  g.SetButton(QStringLiteral("ซื้อ"), 2, 4, GridButton::ButtonTypeTwoState);
  for (auto [c, r] : {std::pair{0, 1}, {3, 1}, {1, 0}, {1, 5}}) g.SetButton(QStringLiteral("x"), int16_t(c), int16_t(r));
  EXPECT_EQ(g.mfgData.GetText(1, 1), QStringLiteral("ขาย"));
  g.mfgData.setCol(1);
  g.mfgData.setRow(1);
  EXPECT_EQ(g.mfgData.CellType(), celltype::Button);
  g.mfgData.setCol(1);
  g.mfgData.setRow(4);
  EXPECT_NE(g.mfgData.CellType(), celltype::Button);
  EXPECT_EQ(g.buttonType(2, 4), GridButton::ButtonTypeTwoState);
  EXPECT_EQ(g.mfgData.GetText(2, 1), QString());
  EXPECT_TRUE(ev.log.isEmpty());

  g.setSize(2400, 1500);
  EXPECT_EQ(g.mfgData.Width(), 2400);
  EXPECT_EQ(g.mfgData.Height(), 1500);
  EXPECT_EQ(g.mfgData.ColWidth(1), 2370);
}

TEST(GridButtonTest, ButtonsAnswerTheMouseAndTheKeyboard) {
  FakePlatform fake;
  GridButton g;
  ButtonEvents ev;
  g.setListener(&ev);
  g.SetFirst(2, 3);
  g.setSize(3000, 1500);
  g.SetButton(QStringLiteral("หนึ่ง"), 1, 1);
  g.SetButton(QStringLiteral("สอง"), 1, 2);
  g.SetButton(QStringLiteral("สลับ"), 1, 3, GridButton::ButtonTypeTwoState);
  g.SetButton(QStringLiteral("นอกจอ"), 2, 3);
  // A click on a button cell; the new row is kept as the current row.
  double x, y, w, h;
  ASSERT_TRUE(g.mfgData.GetCellPos(1, 2, x, y, w, h));
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + w / 2, y + h / 2);
  g.mfgData.inputMouseUp(MouseButton::Left, x + w / 2, y + h / 2);
  EXPECT_EQ(g.CurrentRow(), 2);
  // Column 1 fills the control, but for a sliver: the second column starts there.
  ASSERT_TRUE(g.mfgData.GetCellPos(2, 3, x, y, w, h));
  EXPECT_EQ(x, 2970);
  ASSERT_TRUE(g.mfgData.GetCellPos(1, 3, x, y, w, h));
  EXPECT_EQ(x, 0);
  EXPECT_EQ(w, 2970);
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + 5, y + 5);
  g.mfgData.inputMouseDown(MouseButton::Left, 0, x + 5, y + 5);
  EXPECT_EQ(ev.log, QStringList({"ButtonClicked 1 2 1", "ButtonClicked 1 3 1", "ButtonClicked 1 3 0"}));
  ev.log.clear();
  // Enter names column 0 and the current row; digits name a row of column 1, when it exists.
  g.mfgData.inputKeyDown(13, 0);
  g.mfgData.inputKeyDown('2', 0);
  g.mfgData.inputKeyDown('3', 0);
  g.mfgData.inputKeyDown('4', 0);  // beyond the three rows: nothing
  g.mfgData.inputKeyDown(key::F2, shift::Ctrl);
  EXPECT_EQ(ev.log, QStringList({"ButtonClicked 0 3 1", "ButtonClicked 1 2 1", "ButtonClicked 1 3 1",
                                 "KeyDown 113 2"}));
  // The arrows move the cursor, and the current row follows it.
  g.mfgData.inputKeyDown(key::Up, 0);
  EXPECT_EQ(g.CurrentRow(), 2);
  EXPECT_EQ(g.mfgData.ActiveCol(), 1);
  ev.log.clear();
  g.mfgData.inputKeyDown(13, 0);
  EXPECT_EQ(ev.log, QStringList{"ButtonClicked 0 2 1"});
  EXPECT_EQ(g.focusedChild(), &g.mfgData);
}

namespace {
struct FakeWindows : TaskbarWindows {
  QStringList calls;
  bool visible = true;
  int64_t FindWindow(const QString& cls, const QString& title) override {
    calls << QStringLiteral("FindWindow %1 '%2'").arg(cls, title);
    return 77;
  }
  int32_t ShowWindow(int64_t hwnd, int32_t cmd) override {
    calls << QStringLiteral("ShowWindow %1 %2").arg(hwnd).arg(cmd);
    const bool was = visible;
    visible = cmd != 0;
    return was ? 1 : 0;
  }
};
}  // namespace

TEST(TaskbarTest, ShowEndsAfterOneCallAndHoldsTheSystemsAnswer) {
  Taskbar t;
  t.setShow(false);  // no window system: nothing found, nothing shown
  EXPECT_FALSE(t.Show());
  FakeWindows w;
  Taskbar::setWindows(&w);
  t.setShow(false);
  EXPECT_EQ(w.calls, QStringList({"FindWindow Shell_traywnd ''", "ShowWindow 77 0"}));
  EXPECT_TRUE(t.Show());  // the bar was visible before
  t.setShow(true);
  EXPECT_FALSE(t.Show());  // shown now, but the answer says it was hidden
  t.setShow(true);
  EXPECT_TRUE(t.Show());
  EXPECT_EQ(w.calls.size(), 6);
  Taskbar::setWindows(nullptr);
}

namespace {
struct WheelTarget {
  QString name = QStringLiteral("grdA");
  QStringList calls;
  bool fail = false;
  QString Name() const { return name; }
  void MouseWheel(int32_t k, int32_t r, int32_t x, int32_t y) {
    calls << QStringLiteral("%1 %2 %3 %4").arg(k).arg(r).arg(x).arg(y);
    if (fail) throw Error{5, QStringLiteral("boom")};
  }
};
}  // namespace

TEST(WheelHookTest, OneHookPerProcessAndTheFourValuesInTheirUnits) {
  namespace mw = tq7MouseWheelControl;
  SpreadSurface s1, s2;
  s1.setHWnd(101);
  s2.setHWnd(202);
  WheelTarget a, b;
  b.name = QStringLiteral("grdB");
  QStringList passedOn;
  mw::WheelHook(s1, a, [&](uint32_t msg, int32_t, int32_t) {
    passedOn << QString::number(msg, 16);
    return 7;
  });
  EXPECT_EQ(mw::hookedSurface(), &s1);
  EXPECT_EQ(mw::hookedWindow(), 101);
  // One notch towards the user with Ctrl held, at screen pixel (640, 400).
  EXPECT_EQ(mw::WindowProc(101, mw::WM_MOUSEWHEEL, mw::wheelWParam(-120, mw::MK_CONTROL), mw::wheelLParam(640, 400)),
            7);
  EXPECT_EQ(a.calls, QStringList{"8 -120 640 400"});
  mw::WindowProc(101, mw::WM_MOUSEWHEEL, mw::wheelWParam(240, 0), mw::wheelLParam(3, 2));
  EXPECT_EQ(a.calls.last(), QStringLiteral("0 240 3 2"));
  // The high word is rounded, not cut: an X beyond half the word carries into Y.
  mw::WindowProc(101, mw::WM_MOUSEWHEEL, mw::wheelWParam(120, 0), mw::wheelLParam(40000, 10));
  EXPECT_EQ(a.calls.last(), QStringLiteral("0 120 40000 11"));
  // Other messages only pass on; every message passes on, the wheel's too.
  mw::WindowProc(101, 0x200, 0, 0);
  EXPECT_EQ(a.calls.size(), 3);
  EXPECT_EQ(passedOn, QStringList({"20a", "20a", "20a", "200"}));
  // A failing callback breaks nothing.
  a.fail = true;
  EXPECT_EQ(mw::WindowProc(101, mw::WM_MOUSEWHEEL, mw::wheelWParam(120, 0), 0), 7);
  a.fail = false;

  // Hooking a second control unhooks the first.
  mw::WheelHook(s2, b);
  EXPECT_EQ(mw::hookedSurface(), &s2);
  mw::WindowProc(202, mw::WM_MOUSEWHEEL, mw::wheelWParam(-360, mw::MK_SHIFT | mw::MK_LBUTTON), mw::wheelLParam(1, 1));
  EXPECT_EQ(b.calls, QStringList{"5 -360 1 1"});
  EXPECT_EQ(a.calls.size(), 4);
  // The same one twice: unhooked, then hooked anew.
  mw::WheelHook(s2, b);
  EXPECT_TRUE(mw::hooked());
  mw::WheelUnhook();
  EXPECT_FALSE(mw::hooked());
  EXPECT_EQ(mw::hookedSurface(), nullptr);
}
