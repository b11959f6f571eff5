// The ribbon under the mouse: hover kept by moves on the hit pieces and cleared by moves on the
// background, the pressed look, and the events with their arguments.
#include "RibbonFixture.h"

#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;

namespace {

constexpr int L = ACPRibbon::vbLeftButton;

struct RibbonMouse : ::testing::Test {
  FakePlatform fake;
  ACPRibbon r;
  EventLog log;
  void SetUp() override {
    fillSmallBar(r);
    r.setListener(&log);
    r.setSize(9000, 1740);
    r.Refresh();
  }
  void click(double x, double y) {
    r.inputMouseMove(x, y);
    r.inputMouseDown(L, x, y);
    r.inputMouseUp(L, x, y);
  }
  bool buttonHovered(int i) { return shown(r, Piece::Button_left, i) && shown(r, Piece::Button_center, i); }
  bool buttonPressed(int i) { return shown(r, Piece::Button_center_over, i) && shown(r, Piece::Button_right_over, i); }
  bool catHovered(int i) { return shown(r, Piece::Cat_Center_on, i) && shown(r, Piece::Cat_Left_on, i); }
  bool tabHovered(int i) { return shown(r, Piece::Tab_center_over, i) && shown(r, Piece::Tab_right_over, i); }
};

// Points in twips: the first and second button, a category's frame, its launcher, the tabs and
// the bare background.
constexpr double kButton1X = 400, kButton2X = 1000, kButtonY = 900;
constexpr double kFrameX = 150, kFrameY = 1500, kLauncherX = 1200, kLauncherY = 1500;
constexpr double kTab0X = 300, kTab1X = 1200, kTabY = 200;
constexpr double kBackX = 8000, kBackY = 1000;

}  // namespace

TEST_F(RibbonMouse, AButtonLightsItselfAndItsCategoryAndTheBackgroundClearsAllAtOnce) {
  r.inputMouseMove(kTab1X, kTabY);
  EXPECT_TRUE(tabHovered(1));
  r.inputMouseMove(kButton2X, kButtonY);
  EXPECT_TRUE(buttonHovered(2));
  EXPECT_TRUE(shown(r, Piece::Glip_on, 2));  // the drop mark lights with its button
  EXPECT_TRUE(catHovered(0));                // the button's category stays lit
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg_on, 0));
  EXPECT_FALSE(tabHovered(1));
  r.inputMouseMove(kButton1X, kButtonY);
  EXPECT_TRUE(buttonHovered(1));
  EXPECT_FALSE(buttonHovered(2));
  EXPECT_FALSE(shown(r, Piece::Glip_on, 2));
  // Leaving sideways without a move on the background keeps the look: there is no time-out.
  EXPECT_TRUE(buttonHovered(1));
  r.inputMouseMove(kBackX, kBackY);
  EXPECT_FALSE(buttonHovered(1));
  EXPECT_FALSE(catHovered(0));
  EXPECT_FALSE(shown(r, Piece::Cat_Dlg_on, 0));
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg, 0));
  EXPECT_TRUE(log.events.isEmpty());
}

TEST_F(RibbonMouse, TheSelectedTabHasNoHoverLookAndClearsTheOthers) {
  r.inputMouseMove(kTab1X, kTabY);
  EXPECT_TRUE(tabHovered(1));
  r.inputMouseMove(kTab0X, kTabY);
  EXPECT_FALSE(tabHovered(0));
  EXPECT_FALSE(tabHovered(1));
  r.inputMouseMove(kFrameX, kFrameY);
  EXPECT_TRUE(catHovered(0));
  EXPECT_FALSE(catHovered(1));
  r.inputMouseMove(kTab1X, kTabY);
  EXPECT_FALSE(catHovered(0));
}

TEST_F(RibbonMouse, APressShowsThePressedLookAndAClickNamesTheButtonWithItsCaption) {
  r.inputMouseMove(kButton2X, kButtonY);
  r.inputMouseDown(L, kButton2X, kButtonY);
  EXPECT_TRUE(buttonPressed(2));
  EXPECT_TRUE(buttonHovered(2));
  r.inputMouseUp(L, kButton2X, kButtonY);
  EXPECT_FALSE(buttonPressed(2));
  EXPECT_EQ(log.events, QStringList{QStringLiteral("ButtonClick B2|Print\r\nAll")});

  // Released outside: the release still reaches the button, and no click follows. The moves in
  // between go to the pressed button too, so it stays lit.
  log.events.clear();
  r.inputMouseDown(L, kButton1X, kButtonY);
  r.inputMouseMove(kBackX, kBackY);
  EXPECT_TRUE(buttonHovered(1));
  EXPECT_TRUE(buttonPressed(1));
  r.inputMouseUp(L, kBackX, kBackY);
  EXPECT_FALSE(buttonPressed(1));
  EXPECT_TRUE(log.events.isEmpty());
  r.inputMouseMove(kBackX, kBackY);
  EXPECT_FALSE(buttonHovered(1));

  // The right button presses but does not click.
  r.inputMouseDown(ACPRibbon::vbRightButton, kButton1X, kButtonY);
  EXPECT_TRUE(buttonPressed(1));
  r.inputMouseUp(ACPRibbon::vbRightButton, kButton1X, kButtonY);
  EXPECT_FALSE(buttonPressed(1));
  EXPECT_TRUE(log.events.isEmpty());
}

TEST_F(RibbonMouse, OnlyTheLauncherRaisesCatClickAndOnlyOnItsTopPiece) {
  click(kFrameX, kFrameY);  // a click on the frame does nothing
  EXPECT_TRUE(log.events.isEmpty());
  r.inputMouseMove(kLauncherX, kLauncherY);  // onto the launcher's hover piece: the top piece shows
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg_over, 0));
  click(kLauncherX, kLauncherY);
  EXPECT_EQ(log.events, QStringList{QStringLiteral("CatClick C1|Docs")});
  // Back on the frame the launcher returns to its category-hover look.
  r.inputMouseMove(kFrameX, kFrameY);
  EXPECT_FALSE(shown(r, Piece::Cat_Dlg_over, 0));
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg_on, 0));

  // Straight from the background onto the launcher: the first move lights the category, only a
  // second move reaches the hover piece, and a click before it does nothing.
  log.events.clear();
  r.inputMouseMove(kBackX, kBackY);
  r.inputMouseMove(kLauncherX, kLauncherY);
  EXPECT_TRUE(shown(r, Piece::Cat_Dlg_on, 0));
  EXPECT_FALSE(shown(r, Piece::Cat_Dlg_over, 0));
  r.inputMouseDown(L, kLauncherX, kLauncherY);
  r.inputMouseUp(L, kLauncherX, kLauncherY);
  EXPECT_TRUE(log.events.isEmpty());
}

TEST_F(RibbonMouse, ATabClickRebuildsTheCategoriesBeforeItsEvent) {
  int catsAtEvent = -1;
  log.onTabClick = [&] { catsAtEvent = r.pieces().ubound(Piece::CatMouse); };
  r.inputMouseMove(kButton1X, kButtonY);
  click(kTab1X, kTabY);
  EXPECT_EQ(log.events, QStringList{QStringLiteral("TabClick T2|Stock")});
  EXPECT_EQ(r.CurrentTab(), QStringLiteral("T2"));
  EXPECT_EQ(catsAtEvent, 0);  // the one category of T2 stood when the event came
  EXPECT_EQ(r.piece(Piece::Cat_Caption, 0)->Tag, QStringLiteral("C3"));
  EXPECT_TRUE(shown(r, Piece::Tab_center, 1));
  EXPECT_FALSE(shown(r, Piece::Tab_center, 0));
  EXPECT_FALSE(tabHovered(1));
  EXPECT_EQ(r.piece(Piece::Tab_caption, 1)->ForeColor, r.TabCaptionColorActive());
  EXPECT_EQ(r.piece(Piece::Tab_caption, 0)->ForeColor, r.TabCaptionColor());
  // The button hovered before the click was rebuilt and stands at rest.
  EXPECT_FALSE(buttonHovered(1));
  EXPECT_EQ(r.piece(Piece::ButMouse, 1)->Tag, QStringLiteral("B3"));

  // The same tab again: the whole layout and the event again.
  click(kTab1X, kTabY);
  EXPECT_EQ(log.events.size(), 2);

  // Refresh draws the first tab selected again, above the categories of T2; the clicked tab's
  // selected look is not taken away by a layout.
  r.Refresh();
  EXPECT_TRUE(shown(r, Piece::Tab_center, 0));
  EXPECT_TRUE(shown(r, Piece::Tab_center, 1));
  EXPECT_EQ(r.piece(Piece::Cat_Caption, 0)->Tag, QStringLiteral("C3"));
}

TEST_F(RibbonMouse, AClickHandlerMayRebuildTheBar) {
  struct Rebuilder : ACPRibbonEvents {
    ACPRibbon* r = nullptr;
    int clicks = 0;
    void ButtonClick(const QString&, const QString&) override {
      ++clicks;
      r->ResetToMark();
      r->AddButton(QStringLiteral("Z"), QStringLiteral("C1"), QStringLiteral("Zoom"), 1);
      r->Refresh();
    }
  } rebuilder;
  rebuilder.r = &r;
  r.setListener(&rebuilder);
  click(kButton1X, kButtonY);
  EXPECT_EQ(rebuilder.clicks, 1);
  EXPECT_EQ(r.TotalButton(), 1);
  EXPECT_EQ(r.piece(Piece::ButMouse, 1)->Tag, QStringLiteral("Z"));
  r.inputMouseMove(kButton1X, kButtonY);
  EXPECT_TRUE(buttonHovered(1));
}
