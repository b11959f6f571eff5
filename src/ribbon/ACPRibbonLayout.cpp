// The ribbon's layout: the resize step, the tab row, the category row and each category's buttons.
// Each layout runs with every failure skipped statement by statement, as the bar always has: a
// piece that is already loaded, or a list entry past the end, costs that statement only.
#include "ribbon/ACPRibbon.h"

#include "companion/VbText.h"
#include "frame/Platform.h"

namespace tq7 {

namespace {

constexpr Piece kTabPieces[] = {Piece::Tab_caption, Piece::Tab_left,  Piece::Tab_center,
                                Piece::Tab_right,   Piece::Tab_left_over, Piece::Tab_center_over,
                                Piece::Tab_right_over, Piece::TabMouse};
constexpr Piece kTabFront[] = {Piece::Tab_center,      Piece::Tab_left,       Piece::Tab_right,
                               Piece::Tab_center_over, Piece::Tab_left_over,  Piece::Tab_right_over,
                               Piece::Tab_caption,     Piece::TabMouse};
constexpr Piece kCatPieces[] = {Piece::Cat_Left_off,  Piece::Cat_Left_on,    Piece::Cat_Right_off, Piece::Cat_Right_on,
                                Piece::Cat_Center_off, Piece::Cat_Center_on, Piece::Cat_Caption,   Piece::CatMouse,
                                Piece::Cat_Dlg,       Piece::Cat_Dlg_on,     Piece::Cat_Dlg_over};
constexpr Piece kCatFront[] = {Piece::Cat_Center_off, Piece::Cat_Left_off, Piece::Cat_Right_off, Piece::Cat_Center_on,
                               Piece::Cat_Left_on,    Piece::Cat_Right_on, Piece::Cat_Caption,   Piece::CatMouse};
constexpr Piece kButtonPieces[] = {Piece::Button_left,      Piece::Button_center,      Piece::Button_right,
                                   Piece::Button_left_over, Piece::Button_center_over, Piece::Button_right_over,
                                   Piece::Button_Caption,   Piece::Button_Icon,        Piece::Glip_on,
                                   Piece::Glip_off,         Piece::ButMouse};
constexpr Piece kButtonFront[] = {Piece::Button_left,      Piece::Button_right,      Piece::Button_center,
                                  Piece::Button_left_over, Piece::Button_right_over, Piece::Button_center_over,
                                  Piece::Button_Icon,      Piece::Button_Caption,    Piece::Glip_off,
                                  Piece::Glip_on,          Piece::ButMouse};
constexpr Piece kHiddenTemplates[] = {
    Piece::Button_left,   Piece::Button_center,  Piece::Button_right,   Piece::Button_Caption, Piece::Button_Icon,
    Piece::ButMouse,      Piece::Cat_Left_off,   Piece::Cat_Left_on,    Piece::Cat_Right_off,  Piece::Cat_Right_on,
    Piece::Cat_Center_off, Piece::Cat_Center_on, Piece::Cat_Caption,    Piece::CatMouse,       Piece::Cat_Dlg,
    Piece::Cat_Dlg_on,    Piece::Cat_Dlg_over};

}  // namespace

void ACPRibbon::onResize() { resizeStep(); }

void ACPRibbon::resizeStep() {
  // Whatever the container asked for, the bar is the strip less the part lifted above it.
  const double h = pieces_.design(Piece::Barra2).Height - 390;
  if (Height() != h) setSize(Width(), h);
}

void ACPRibbon::Resize() {
  resizeStep();
  notifyChanged();
}

void ACPRibbon::Refresh() {
  resizeStep();
  LayoutTabs();
  LayoutCategories();
  notifyChanged();
}

void ACPRibbon::LayoutTabs() {
  auto P = [this](Piece a, int i) -> RibbonPiece& { return pieces_.at(a, i); };
  for (int i = 0; i < totalTab_; ++i) {
    if (i != 0) {
      // Tab pieces stay from one layout to the next; loading one that exists fails and is skipped.
      for (Piece a : kTabPieces) step([&] { pieces_.load(a, i); });
      step([&] { P(Piece::Tab_left, i).Left = P(Piece::Tab_right, i - 1).Left + P(Piece::Tab_right, i).Width; });
    } else {
      step([&] { P(Piece::Tab_left, 0).Left = 90; });
    }
    step([&] { P(Piece::TabMouse, i).Left = P(Piece::Tab_left, i).Left; });
    step([&] { P(Piece::Tab_caption, i).Top = 60; });
    for (Piece a : {Piece::Tab_center, Piece::Tab_left, Piece::Tab_right, Piece::Tab_center_over, Piece::Tab_left_over,
                    Piece::Tab_right_over, Piece::TabMouse})
      step([&] { P(a, i).Top = 0; });
    step([&] {
      if (!inRange(i, kTabs)) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
      setCaption(P(Piece::Tab_caption, i), tabs_[size_t(i)].caption);
    });
    step([&] { P(Piece::Tab_center, i).Width = P(Piece::Tab_caption, i).Width; });
    step([&] { P(Piece::Tab_center, i).Left = P(Piece::Tab_left, i).Left + P(Piece::Tab_left, i).Width; });
    step([&] { P(Piece::Tab_caption, i).Left = P(Piece::Tab_center, i).Left; });
    step([&] { P(Piece::Tab_right, i).Left = P(Piece::Tab_center, i).Left + P(Piece::Tab_center, i).Width; });
    step([&] { P(Piece::Tab_center_over, i).Width = P(Piece::Tab_center, i).Width; });
    step([&] { P(Piece::Tab_center_over, i).Left = P(Piece::Tab_center, i).Left; });
    step([&] { P(Piece::Tab_left_over, i).Left = P(Piece::Tab_left, i).Left; });
    step([&] { P(Piece::Tab_right_over, i).Left = P(Piece::Tab_right, i).Left; });
    step([&] {
      P(Piece::TabMouse, i).Width = P(Piece::Tab_left, i).Width + P(Piece::Tab_right, i).Width + P(Piece::Tab_center, i).Width;
    });
    step([&] { P(Piece::Tab_caption, i).ForeColor = tabCaptionColor_; });
    step([&] { P(Piece::Tab_caption, i).Visible = true; });
    if (i == 0) {
      // The first tab is drawn selected at each layout, whatever CurrentTab holds; only a click
      // moves the selected look.
      for (Piece a : {Piece::Tab_center, Piece::Tab_left, Piece::Tab_right}) step([&] { P(a, 0).Visible = true; });
      step([&] { P(Piece::Tab_caption, 0).ForeColor = tabCaptionColorActive_; });
    }
    step([&] { P(Piece::TabMouse, i).Visible = true; });
    for (Piece a : kTabFront) step([&] { pieces_.bringToFront(a, i); });
  }
}

void ACPRibbon::LayoutCategories() {
  auto P = [this](Piece a, int i) -> RibbonPiece& { return pieces_.at(a, i); };
  for (Piece a : {Piece::Cat_Center_off, Piece::Cat_Center_on, Piece::Cat_Left_off, Piece::Cat_Left_on,
                  Piece::Cat_Right_off, Piece::Cat_Right_on, Piece::CatMouse})
    pieces_.design(a).Top = 360;
  pieces_.design(Piece::Cat_Caption).Top = 1400;

  // The categories of the current tab, in list order. The index one past the last is visited too.
  localCats_.clear();
  for (int i = 0; i <= totalCat_; ++i) {
    step([&] {
      if (!inRange(i, kCats)) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
      const CatEntry& c = cats_[size_t(i)];
      if (c.tab == currentTab_ && !currentTab_.isEmpty() && !c.tab.isEmpty()) localCats_.push_back(i);
    });
  }

  for (Piece a : kCatPieces)
    for (int k = 1, n = pieces_.ubound(a); k <= n; ++k) step([&] { pieces_.unload(a, k); });
  for (Piece a : kButtonPieces)
    for (int k = 1, n = pieces_.ubound(a); k <= n; ++k) step([&] { pieces_.unload(a, k); });
  for (Piece a : kHiddenTemplates) pieces_.design(a).Visible = false;

  for (int i = 0; i < int(localCats_.size()); ++i) {
    const CatEntry& cat = cats_[size_t(localCats_[size_t(i)])];
    if (i != 0) {
      for (Piece a : kCatPieces) step([&] { pieces_.load(a, i); });
      step([&] {
        P(Piece::Cat_Left_off, i).Left = P(Piece::Cat_Right_off, i - 1).Left + P(Piece::Cat_Right_off, i).Width;
      });
    } else {
      step([&] { P(Piece::Cat_Left_off, 0).Left = 120; });
    }
    step([&] { P(Piece::CatMouse, i).Left = P(Piece::Cat_Left_off, i).Left; });
    step([&] { setCaption(P(Piece::Cat_Caption, i), cat.caption); });
    step([&] { P(Piece::Cat_Caption, i).Tag = cat.id; });
    step([&] { P(Piece::Cat_Center_off, i).Left = P(Piece::Cat_Left_off, i).Left + P(Piece::Cat_Left_off, i).Width; });
    int32_t w = 0;
    step([&] { w = LayoutButtons(cat.id, vb::CLng(P(Piece::Cat_Center_off, i).Left), i); });
    step([&] {
      RibbonPiece& centre = P(Piece::Cat_Center_off, i);
      centre.Width = cat.dlg ? P(Piece::Cat_Caption, i).Width + P(Piece::Cat_Dlg, i).Width : P(Piece::Cat_Caption, i).Width;
    });
    step([&] {
      RibbonPiece& centre = P(Piece::Cat_Center_off, i);
      RibbonPiece& caption = P(Piece::Cat_Caption, i);
      if (centre.Width < w) {
        centre.Width = w;
        caption.Left = (centre.Width - caption.Width) / 2 + centre.Left;  // centred over its buttons
      } else {
        caption.Left = centre.Left;
      }
    });
    step([&] { P(Piece::Cat_Right_off, i).Left = P(Piece::Cat_Center_off, i).Left + P(Piece::Cat_Center_off, i).Width; });
    step([&] { P(Piece::Cat_Center_on, i).Width = P(Piece::Cat_Center_off, i).Width; });
    step([&] { P(Piece::Cat_Center_on, i).Left = P(Piece::Cat_Center_off, i).Left; });
    step([&] { P(Piece::Cat_Left_on, i).Left = P(Piece::Cat_Left_off, i).Left; });
    step([&] { P(Piece::Cat_Right_on, i).Left = P(Piece::Cat_Right_off, i).Left; });
    step([&] {
      P(Piece::CatMouse, i).Width =
          P(Piece::Cat_Left_off, i).Width + P(Piece::Cat_Right_off, i).Width + P(Piece::Cat_Center_off, i).Width;
    });
    for (Piece a : {Piece::Cat_Caption, Piece::Cat_Center_off, Piece::Cat_Left_off, Piece::Cat_Right_off, Piece::CatMouse})
      step([&] { P(a, i).Visible = true; });
    for (Piece a : kCatFront) step([&] { pieces_.bringToFront(a, i); });
    // The launcher overlaps the right frame by one pixel and sits 60 twips above its bottom.
    step([&] { P(Piece::Cat_Dlg, i).Left = P(Piece::Cat_Right_off, i).Left - P(Piece::Cat_Dlg, i).Width + 15; });
    step([&] {
      const RibbonPiece& right = P(Piece::Cat_Right_off, i);
      P(Piece::Cat_Dlg, i).Top = right.Top + right.Height - (P(Piece::Cat_Dlg, i).Height + 60);
    });
    for (Piece a : {Piece::Cat_Dlg_on, Piece::Cat_Dlg_over}) {
      step([&] { P(a, i).Left = P(Piece::Cat_Dlg, i).Left; });
      step([&] { P(a, i).Top = P(Piece::Cat_Dlg, i).Top; });
    }
    if (cat.dlg) step([&] { P(Piece::Cat_Dlg, i).Visible = true; });
    for (Piece a : {Piece::Cat_Dlg, Piece::Cat_Dlg_on, Piece::Cat_Dlg_over}) step([&] { pieces_.bringToFront(a, i); });
  }

  platform().processEvents();

  // Lifts every button above the category frames laid after it, and clears the hover and pressed looks.
  for (int k = 0, n = pieces_.ubound(Piece::Button_left); k <= n; ++k) {
    for (Piece a : {Piece::Button_left, Piece::Button_right, Piece::Button_center, Piece::Button_left_over,
                    Piece::Button_right_over, Piece::Button_center_over})
      step([&] { P(a, k).Visible = false; });
    for (Piece a : kButtonFront) step([&] { pieces_.bringToFront(a, k); });
  }
}

int32_t ACPRibbon::LayoutButtons(const QString& categoryID, int32_t leftPos, int categoryIndex) {
  auto P = [this](Piece a, int i) -> RibbonPiece& { return pieces_.at(a, i); };
  localButtons_.clear();
  for (int b = 0; b <= totalButton_; ++b) {
    step([&] {
      if (!inRange(b, kButtons)) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
      if (buttons_[size_t(b)].cat == categoryID) localButtons_.push_back(b);
    });
  }
  for (Piece a : {Piece::Button_left, Piece::Button_center, Piece::Button_right}) pieces_.design(a).Visible = false;
  for (Piece a : {Piece::Button_Caption, Piece::Button_Icon, Piece::ButMouse}) pieces_.design(a).Visible = true;

  int32_t total = 0;
  const int first = pieces_.ubound(Piece::ButMouse) + 1;  // numbering goes on where the last category ended
  for (int k = 0; k < int(localButtons_.size()); ++k) {
    const int i = first + k;
    const ButtonEntry& but = buttons_[size_t(localButtons_[size_t(k)])];
    for (Piece a : kButtonPieces) step([&] { pieces_.load(a, i); });
    step([&] { P(Piece::ButMouse, i).Tag = but.id; });
    step([&] { P(Piece::Button_center, i).Tag = QString::number(categoryIndex); });  // how a hover finds its category
    step([&] {
      const double top = P(Piece::Cat_Left_off, 0).Top + 60;
      P(Piece::ButMouse, i).Top = top;
      for (Piece a : {Piece::Button_left, Piece::Button_center, Piece::Button_right, Piece::Button_left_over,
                      Piece::Button_center_over, Piece::Button_right_over})
        P(a, i).Top = top;
    });
    step([&] {
      if (k == 0) {
        P(Piece::ButMouse, i).Left = leftPos;
      } else {
        const RibbonPiece& before = P(Piece::ButMouse, i - 1);
        P(Piece::ButMouse, i).Left = vb::CLng(before.Left + before.Width + 30);
      }
    });
    step([&] { P(Piece::Button_left, i).Left = P(Piece::ButMouse, i).Left; });
    step([&] { P(Piece::Button_left_over, i).Left = P(Piece::ButMouse, i).Left; });
    step([&] { P(Piece::Button_center, i).Left = P(Piece::Button_left, i).Left + P(Piece::Button_left, i).Width; });
    step([&] { P(Piece::Button_center_over, i).Left = P(Piece::Button_center, i).Left; });
    step([&] { setCaption(P(Piece::Button_Caption, i), but.caption); });
    step([&] { setPicture(P(Piece::Button_Icon, i), but.picture); });
    step([&] {
      RibbonPiece& icon = P(Piece::Button_Icon, i);
      const RibbonPiece& centre = P(Piece::Button_center, i);
      const RibbonPiece& caption = P(Piece::Button_Caption, i);
      if (buttonCenter_) {
        const int32_t free = vb::CLng(centre.Height - (icon.Height + caption.Height));
        // With a drop mark the icon stands higher, so that the mark finds room under the caption.
        icon.Top = but.more ? centre.Top + (free - caption.Height / 2) / 2 : centre.Top + free / 2.0;
      } else {
        icon.Top = centre.Top + 90;
      }
    });
    step([&] { P(Piece::Button_Caption, i).Top = P(Piece::Button_Icon, i).Top + P(Piece::Button_Icon, i).Height; });
    step([&] {
      const RibbonPiece& caption = P(Piece::Button_Caption, i);
      P(Piece::Glip_off, i).Top = caption.Top + caption.Height + (caption.Height - P(Piece::Glip_off, i).Height) / 2;
    });
    step([&] { P(Piece::Glip_on, i).Top = P(Piece::Glip_off, i).Top; });
    double inner = 0;
    step([&] {
      RibbonPiece& caption = P(Piece::Button_Caption, i);
      RibbonPiece& icon = P(Piece::Button_Icon, i);
      if (caption.Width > icon.Width) {
        caption.Left = P(Piece::Button_center, i).Left;
        icon.Left = caption.Left + vb::CLng((caption.Width - icon.Width) / 2);
        inner = caption.Width;
      } else {
        icon.Left = P(Piece::Button_center, i).Left;
        caption.Left = icon.Left + vb::CLng((icon.Width - caption.Width) / 2);
        inner = icon.Width;
      }
    });
    step([&] {
      const RibbonPiece& caption = P(Piece::Button_Caption, i);
      P(Piece::Glip_off, i).Left = (caption.Width - P(Piece::Glip_on, i).Width) / 2 + caption.Left;
    });
    step([&] { P(Piece::Glip_on, i).Left = P(Piece::Glip_off, i).Left; });
    step([&] { P(Piece::Button_center, i).Width = inner; });
    step([&] { P(Piece::Button_center_over, i).Width = inner; });
    step([&] { P(Piece::Button_right, i).Left = P(Piece::Button_center, i).Left + P(Piece::Button_center, i).Width; });
    step([&] { P(Piece::Button_right_over, i).Left = P(Piece::Button_right, i).Left; });
    // The right piece counts twice here, where tabs and categories add the left and the right.
    step([&] { P(Piece::ButMouse, i).Width = 2 * P(Piece::Button_right, i).Width + P(Piece::Button_center, i).Width; });
    step([&] { P(Piece::ButMouse, i).ToolTipText = but.toolTip; });
    // At rest a button is its icon and caption only; the frames are the hover and pressed looks.
    for (Piece a : {Piece::Button_Icon, Piece::Button_Caption, Piece::ButMouse}) step([&] { P(a, i).Visible = true; });
    if (but.more) {
      step([&] { P(Piece::Glip_off, i).Visible = true; });
      step([&] { pieces_.bringToFront(Piece::Glip_off, i); });
      step([&] { pieces_.bringToFront(Piece::Glip_on, i); });
    }
    step([&] { total = vb::CLng(double(total) + P(Piece::ButMouse, i).Width + 30); });
  }
  return total - 30;  // without the gap after the last button
}

}  // namespace tq7
