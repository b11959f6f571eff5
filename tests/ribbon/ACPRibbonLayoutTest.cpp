// The ribbon's piece stack after a layout: places and sizes in twips, visibility, stacking order.
#include "RibbonFixture.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;

namespace {

struct RibbonLayout : ::testing::Test {
  FakePlatform fake;
  ACPRibbon r;
  double left(Piece a, int i) { return r.piece(a, i) ? r.piece(a, i)->Left : -1; }
  double top(Piece a, int i) { return r.piece(a, i) ? r.piece(a, i)->Top : -1; }
  double width(Piece a, int i) { return r.piece(a, i) ? r.piece(a, i)->Width : -1; }
  uint32_t place(Piece a, int i) { return r.piece(a, i)->place; }
};

}  // namespace

TEST_F(RibbonLayout, TheBarKeepsItsHeightAndAnEmptyBarShowsOnlyItsBackground) {
  EXPECT_EQ(r.Height(), 1740);
  r.setSize(9000, 100);
  EXPECT_EQ(r.Height(), 1740);
  EXPECT_EQ(r.Width(), 9000);
  EXPECT_EQ(top(Piece::Barra2, 0), -390);
  EXPECT_EQ(width(Piece::Barra2, 0), 30720);
  EXPECT_EQ(left(Piece::BarraRight, 0), 480);
  r.Refresh();
  r.setWidth(20000);
  EXPECT_EQ(left(Piece::BarraRight, 0), 480);  // never moved sideways
  for (PieceRef p : r.pieces().order()) {
    const bool background = p.array == Piece::Barra2 || p.array == Piece::BarraLeft || p.array == Piece::BarraRight;
    EXPECT_EQ(r.piece(p.array, p.index)->Visible, background) << pieceName(p.array);
  }
}

TEST_F(RibbonLayout, TabsStandSideBySideAndTheFirstIsDrawnSelected) {
  fillSmallBar(r);
  r.Refresh();
  EXPECT_EQ(left(Piece::Tab_left, 0), 90);
  EXPECT_EQ(left(Piece::Tab_center, 0), 240);
  EXPECT_EQ(width(Piece::Tab_center, 0), 585);  // the caption's width
  EXPECT_EQ(left(Piece::Tab_caption, 0), 240);
  EXPECT_EQ(top(Piece::Tab_caption, 0), 60);
  EXPECT_EQ(left(Piece::Tab_right, 0), 825);
  EXPECT_EQ(width(Piece::TabMouse, 0), 885);
  EXPECT_EQ(left(Piece::Tab_left, 1), 975);
  EXPECT_EQ(left(Piece::TabMouse, 1), 975);
  EXPECT_EQ(left(Piece::Tab_right_over, 1), 1710);
  EXPECT_EQ(width(Piece::Tab_center_over, 1), 585);
  EXPECT_TRUE(shown(r, Piece::Tab_center, 0));
  EXPECT_FALSE(shown(r, Piece::Tab_center, 1));
  EXPECT_FALSE(shown(r, Piece::Tab_center_over, 1));
  EXPECT_TRUE(shown(r, Piece::Tab_caption, 1));
  EXPECT_EQ(r.piece(Piece::Tab_caption, 0)->ForeColor, r.TabCaptionColorActive());
  EXPECT_EQ(r.piece(Piece::Tab_caption, 1)->ForeColor, r.TabCaptionColor());
  // The hit area lies above the caption, the caption above the hover look.
  EXPECT_GT(place(Piece::TabMouse, 1), place(Piece::Tab_caption, 1));
  EXPECT_GT(place(Piece::Tab_caption, 1), place(Piece::Tab_center_over, 1));
  EXPECT_EQ(r.pieces().pieceAt(1200, 200), (PieceRef{Piece::TabMouse, 1}));
  // Tab pieces stay between layouts; a second Refresh builds nothing new.
  const size_t loaded = r.pieces().loadedCount();
  r.Refresh();
  EXPECT_EQ(r.pieces().loadedCount(), loaded);
  EXPECT_EQ(r.pieces().ubound(Piece::TabMouse), 1);
}

TEST_F(RibbonLayout, CategoriesWidenToTheirButtonsOrCaptionAndCarryTheirLaunchers) {
  fillSmallBar(r);
  const int yields = fake.processEventsCount;
  r.Refresh();
  EXPECT_EQ(fake.processEventsCount, yields + 1);  // the one yield of a layout
  // Only the categories of the current tab: C1 and C2.
  EXPECT_EQ(r.pieces().ubound(Piece::CatMouse), 1);
  EXPECT_EQ(r.piece(Piece::Cat_Caption, 0)->Tag, QStringLiteral("C1"));
  EXPECT_EQ(r.piece(Piece::Cat_Caption, 1)->Tag, QStringLiteral("C2"));
  EXPECT_EQ(left(Piece::Cat_Left_off, 0), 120);
  EXPECT_EQ(left(Piece::Cat_Center_off, 0), 180);
  // Buttons 1215 - 30 wide: wider than caption (468) plus launcher (225), so the caption is centred.
  EXPECT_EQ(width(Piece::Cat_Center_off, 0), 1185);
  EXPECT_EQ(left(Piece::Cat_Caption, 0), 180 + (1185 - 468) / 2.0);
  EXPECT_EQ(top(Piece::Cat_Caption, 0), 1400);
  EXPECT_EQ(left(Piece::Cat_Right_off, 0), 1365);
  EXPECT_EQ(width(Piece::CatMouse, 0), 1320);
  EXPECT_EQ(width(Piece::Cat_Center_on, 0), 1185);
  EXPECT_EQ(left(Piece::Cat_Dlg, 0), 1365 - 225 + 15);  // overlaps the right frame by a pixel
  EXPECT_EQ(top(Piece::Cat_Dlg, 0), 360 + 1335 - 270);
  EXPECT_EQ(left(Piece::Cat_Dlg_over, 0), 1155);
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg, 0));
  EXPECT_FALSE(shown(r, Piece::Cat_Dlg_on, 0));
  // A category without buttons is as wide as its caption; no launcher, no width for one.
  EXPECT_EQ(left(Piece::Cat_Left_off, 1), 1365 + 75);
  EXPECT_EQ(width(Piece::Cat_Center_off, 1), 21 * 117);
  EXPECT_EQ(left(Piece::Cat_Caption, 1), 1500);
  EXPECT_FALSE(shown(r, Piece::Cat_Dlg, 1));
  EXPECT_FALSE(shown(r, Piece::Cat_Center_on, 0));
  // The templates the layout does not use stand hidden.
  EXPECT_FALSE(shown(r, Piece::Button_left, 0));
}

TEST_F(RibbonLayout, ButtonsFollowEachOtherWithTheirIconsCaptionsAndDropMarks) {
  fillSmallBar(r);
  r.Refresh();
  // Element 0 holds no button: buttons start at 1, numbered on across categories.
  EXPECT_EQ(r.pieces().ubound(Piece::ButMouse), 2);
  EXPECT_EQ(r.piece(Piece::ButMouse, 1)->Tag, QStringLiteral("B1"));
  EXPECT_EQ(r.piece(Piece::Button_center, 2)->Tag, QStringLiteral("0"));
  EXPECT_EQ(r.piece(Piece::ButMouse, 2)->ToolTipText, QStringLiteral("Print"));
  EXPECT_EQ(r.piece(Piece::ButMouse, 1)->ToolTipText, QStringLiteral("New"));
  EXPECT_EQ(left(Piece::ButMouse, 1), 180);
  EXPECT_EQ(top(Piece::ButMouse, 1), 420);
  EXPECT_EQ(top(Piece::Button_center_over, 1), 420);
  EXPECT_EQ(left(Piece::Button_center, 1), 225);
  EXPECT_EQ(width(Piece::Button_Icon, 1), 480);  // the icon's own size
  EXPECT_EQ(top(Piece::Button_Icon, 1), 510);
  EXPECT_EQ(top(Piece::Button_Caption, 1), 990);
  EXPECT_EQ(left(Piece::Button_Icon, 1), 225);
  EXPECT_EQ(left(Piece::Button_Caption, 1), 225 + 92);  // 91.5 rounds to the even 92
  EXPECT_EQ(width(Piece::Button_center, 1), 480);
  EXPECT_EQ(left(Piece::Button_right, 1), 705);
  EXPECT_EQ(width(Piece::ButMouse, 1), 2 * 45 + 480);
  // The second: two caption lines, wider than the icon, with its drop mark under the caption.
  EXPECT_EQ(left(Piece::ButMouse, 2), 180 + 570 + 30);
  EXPECT_EQ(r.piece(Piece::Button_Caption, 2)->Height, 2 * 198);
  EXPECT_EQ(r.piece(Piece::Button_Caption, 2)->Caption, QStringLiteral("Print\r\nAll"));
  EXPECT_EQ(left(Piece::Button_Caption, 2), 825);
  EXPECT_EQ(left(Piece::Button_Icon, 2), 825 + 8);  // 7.5 rounds to 8
  EXPECT_EQ(width(Piece::Button_center, 2), 495);
  EXPECT_EQ(top(Piece::Glip_off, 2), 990 + 396 + (396 - 60) / 2.0);
  EXPECT_EQ(left(Piece::Glip_on, 2), (495 - 75) / 2.0 + 825);
  EXPECT_TRUE(shown(r, Piece::Glip_off, 2));
  EXPECT_FALSE(shown(r, Piece::Glip_on, 2));
  EXPECT_FALSE(shown(r, Piece::Glip_off, 1));
  // At rest a button is its icon and caption; the frames wait for the mouse.
  EXPECT_TRUE(shown(r, Piece::Button_Icon, 1));
  EXPECT_TRUE(shown(r, Piece::ButMouse, 1));
  EXPECT_FALSE(shown(r, Piece::Button_center, 1));
  EXPECT_FALSE(shown(r, Piece::Button_center_over, 1));
  // Lifted above the frames of the category laid after them.
  EXPECT_GT(place(Piece::Button_Caption, 1), place(Piece::Cat_Center_off, 1));
  EXPECT_GT(place(Piece::ButMouse, 1), place(Piece::Glip_on, 1));
  EXPECT_EQ(r.pieces().pieceAt(400, 900), (PieceRef{Piece::ButMouse, 1}));
  EXPECT_EQ(r.pieces().pieceAt(150, 1500), (PieceRef{Piece::CatMouse, 0}));
  // The template's hit area stands below the bar, out of the mouse's reach.
  EXPECT_TRUE(shown(r, Piece::ButMouse, 0));
  EXPECT_GE(top(Piece::ButMouse, 0), r.Height());
  // A layout builds the category and button pieces anew.
  r.Refresh();
  EXPECT_EQ(r.pieces().ubound(Piece::ButMouse), 2);
  EXPECT_EQ(r.pieces().ubound(Piece::Cat_Dlg_over), 1);
}

TEST_F(RibbonLayout, ButtonCenterCentresIconAndCaptionAndLiftsThemForADropMark) {
  fillSmallBar(r);
  r.setButtonCenter(true);
  r.Refresh();
  EXPECT_EQ(top(Piece::Button_Icon, 1), 420 + (990 - (480 + 198)) / 2.0);
  EXPECT_EQ(top(Piece::Button_Caption, 1), 420 + 156 + 480);
  // free = 990 - (480 + 396) = 114; the drop mark takes a quarter of the caption's height.
  EXPECT_EQ(top(Piece::Button_Icon, 2), 420 + (114 - 396 / 2.0) / 2);
}

TEST_F(RibbonLayout, ResetToMarkLaysOutTheEntryJustAboveTheCount) {
  r.AddTab(QStringLiteral("T"), QStringLiteral("Tab"));
  r.AddCat(QStringLiteral("C"), QStringLiteral("T"), QStringLiteral("Cat"), false);
  r.AddButton(QStringLiteral("A"), QStringLiteral("C"), QStringLiteral("a"), 0);
  r.Mark();
  r.AddButton(QStringLiteral("X"), QStringLiteral("C"), QStringLiteral("x"), 0);
  r.AddButton(QStringLiteral("Y"), QStringLiteral("C"), QStringLiteral("y"), 0);
  r.ResetToMark();
  r.Refresh();
  // The layout reads from 0 to the count itself, so the entry one past the last shows too.
  ASSERT_EQ(r.pieces().ubound(Piece::ButMouse), 2);
  EXPECT_EQ(r.piece(Piece::ButMouse, 2)->Tag, QStringLiteral("X"));
  r.AddButton(QStringLiteral("N"), QStringLiteral("C"), QStringLiteral("n"), 0);
  r.Refresh();
  ASSERT_EQ(r.pieces().ubound(Piece::ButMouse), 3);
  EXPECT_EQ(r.piece(Piece::ButMouse, 2)->Tag, QStringLiteral("N"));
  EXPECT_EQ(r.piece(Piece::ButMouse, 3)->Tag, QStringLiteral("Y"));
}

TEST_F(RibbonLayout, OddInputLaysOutWithoutFailing) {
  // Empty ids, a category of an empty tab, more tabs than the bar holds, a font change.
  r.AddTab(QString(), QStringLiteral("ว่าง"));
  for (int i = 1; i < 33; ++i) {
    try {
      r.AddTab(QStringLiteral("T%1").arg(i), QStringLiteral("แท็บ %1").arg(i));
    } catch (const Error&) {
    }
  }
  r.AddCat(QStringLiteral("C"), QString(), QStringLiteral("no tab"), true);
  r.AddButton(QString(), QString(), QStringLiteral("\r\n"), -5, true);
  tq7::Font big = r.Font();
  big.Size = 12;
  r.setFont(big);
  r.Refresh();
  EXPECT_EQ(r.TotalTab(), 33);
  EXPECT_EQ(r.pieces().ubound(Piece::TabMouse), 32);  // pieces for the counted tabs, captions or not
  EXPECT_EQ(r.pieces().ubound(Piece::CatMouse), 0);
  EXPECT_EQ(r.CurrentTab(), QStringLiteral("T1"));  // an empty first id leaves the place to the next tab
  EXPECT_FALSE(shown(r, Piece::CatMouse, 0));        // a category of an empty tab matches nothing
  EXPECT_EQ(r.pieces().ubound(Piece::ButMouse), 0);
  // A tab click on a tab past the lists selects its look and keeps CurrentTab.
  r.inputMouseMove(left(Piece::TabMouse, 32) + 10, 100);
  r.inputMouseDown(ACPRibbon::vbLeftButton, left(Piece::TabMouse, 32) + 10, 100);
  r.inputMouseUp(ACPRibbon::vbLeftButton, left(Piece::TabMouse, 32) + 10, 100);
  EXPECT_TRUE(shown(r, Piece::Tab_center, 32));
  EXPECT_EQ(r.CurrentTab(), QStringLiteral("T1"));
}
