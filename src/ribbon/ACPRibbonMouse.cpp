// How the ribbon answers the mouse. There is no hover variable and no timer: the looks are the
// visibility of the pieces, kept up by moves over the hit pieces and taken away by moves over the
// background. Each routine below shows the look of one tab, category or button and clears the rest.
#include "ribbon/ACPRibbon.h"

#include "companion/VbText.h"

namespace tq7 {

bool ACPRibbon::visible(Piece a, int i) const { return pieces_.at(a, i).Visible; }

void ACPRibbon::show(Piece a, int i, bool v) { pieces_.at(a, i).Visible = v; }

void ACPRibbon::hideTabHover(int k) {
  step([&] {
    if (!visible(Piece::Tab_center_over, k)) return;
    for (Piece a : {Piece::Tab_center_over, Piece::Tab_left_over, Piece::Tab_right_over})
      step([&] { show(a, k, false); });
  });
}

void ACPRibbon::hideCatHover(int k) {
  step([&] {
    if (!visible(Piece::Cat_Center_on, k)) return;
    for (Piece a : {Piece::Cat_Center_on, Piece::Cat_Left_on, Piece::Cat_Right_on}) step([&] { show(a, k, false); });
  });
  step([&] {
    if (!visible(Piece::Cat_Dlg, k)) return;
    step([&] { show(Piece::Cat_Dlg_on, k, false); });
    step([&] { show(Piece::Cat_Dlg_over, k, false); });
  });
}

void ACPRibbon::hideButtonHover(int k) {
  step([&] {
    if (!visible(Piece::Button_center, k)) return;
    for (Piece a : {Piece::Button_left, Piece::Button_right, Piece::Button_center}) step([&] { show(a, k, false); });
  });
  step([&] {
    if (visible(Piece::Glip_off, k)) show(Piece::Glip_on, k, false);
  });
}

void ACPRibbon::TabHover(int index) {
  const int last = pieces_.ubound(Piece::TabMouse);
  if (index == -1) {
    for (int k = 0; k <= last; ++k) hideTabHover(k);
    return;
  }
  for (int k = 0; k < index; ++k) hideTabHover(k);
  step([&] {
    if (visible(Piece::Tab_center, index)) return;  // the selected tab has no hover look
    for (Piece a : {Piece::Tab_center_over, Piece::Tab_left_over, Piece::Tab_right_over})
      step([&] { show(a, index, true); });
  });
  for (int k = index + 1; k <= last; ++k) hideTabHover(k);
}

void ACPRibbon::CatHover(int index) {
  const int last = pieces_.ubound(Piece::CatMouse);
  if (index == -1) {
    for (int k = 0; k <= last; ++k) hideCatHover(k);
    return;
  }
  for (int k = 0; k < index; ++k) hideCatHover(k);
  for (Piece a : {Piece::Cat_Center_on, Piece::Cat_Left_on, Piece::Cat_Right_on}) step([&] { show(a, index, true); });
  step([&] {
    if (!visible(Piece::Cat_Dlg, index)) return;
    step([&] { show(Piece::Cat_Dlg_on, index, true); });
    step([&] { show(Piece::Cat_Dlg_over, index, false); });
  });
  for (int k = index + 1; k <= last; ++k) hideCatHover(k);
}

void ACPRibbon::ButtonHover(int index) {
  const int last = pieces_.ubound(Piece::ButMouse);
  if (index == -1) {
    for (int k = 0; k <= last; ++k) hideButtonHover(k);
    return;
  }
  for (int k = 0; k < index; ++k) hideButtonHover(k);
  step([&] {
    if (visible(Piece::Button_left, index)) return;
    for (Piece a : {Piece::Button_left, Piece::Button_center, Piece::Button_right}) step([&] { show(a, index, true); });
    step([&] {
      if (visible(Piece::Glip_off, index)) show(Piece::Glip_on, index, true);
    });
  });
  for (int k = index + 1; k <= last; ++k) hideButtonHover(k);
}

// ---- Handlers of the pieces ------------------------------------------------------------------------

void ACPRibbon::pieceMouseMove(PieceRef p) {
  const int i = p.index;
  switch (p.array) {
    case Piece::Barra2:
    case Piece::BarraLeft:
    case Piece::BarraRight:
      TabHover(-1);
      CatHover(-1);
      ButtonHover(-1);
      break;
    case Piece::TabMouse:
      TabHover(i);
      CatHover(-1);
      ButtonHover(-1);
      break;
    case Piece::CatMouse:
    case Piece::Cat_Dlg:
      TabHover(-1);
      CatHover(i);
      ButtonHover(-1);
      break;
    case Piece::Cat_Dlg_on:
      TabHover(-1);
      CatHover(i);
      ButtonHover(-1);
      step([&] { show(Piece::Cat_Dlg_over, i, true); });
      break;
    case Piece::ButMouse: {
      TabHover(-1);
      // The button's category stays lit while the button is hovered.
      int n = 0;
      const int32_t failed = step([&] { n = int(vb::Val(pieces_.at(Piece::Button_center, i).Tag)); });
      if (!failed) CatHover(n);
      ButtonHover(i);
      break;
    }
    default:
      break;  // the other pieces have no move handler
  }
}

void ACPRibbon::pieceMouseDown(PieceRef p) {
  if (p.array != Piece::ButMouse) return;
  for (Piece a : {Piece::Button_left_over, Piece::Button_center_over, Piece::Button_right_over})
    step([&] { show(a, p.index, true); });
}

void ACPRibbon::pieceMouseUp(PieceRef p) {
  if (p.array != Piece::ButMouse) return;
  for (Piece a : {Piece::Button_left_over, Piece::Button_center_over, Piece::Button_right_over})
    step([&] { show(a, p.index, false); });
}

void ACPRibbon::pieceClick(PieceRef p) {
  const int i = p.index;
  switch (p.array) {
    case Piece::ButMouse: {
      QString id, caption;
      const int32_t failed = step([&] {
        id = pieces_.at(Piece::ButMouse, i).Tag;
        caption = pieces_.at(Piece::Button_Caption, i).Caption;  // with any line break of the caption
      });
      if (!failed && listener_) listener_->ButtonClick(id, caption);
      break;
    }
    case Piece::Cat_Dlg_over: {
      // The launcher clicks only on its top piece; the two below it have no click handler.
      QString id, caption;
      const int32_t failed = step([&] {
        id = pieces_.at(Piece::Cat_Caption, i).Tag;
        caption = pieces_.at(Piece::Cat_Caption, i).Caption;
      });
      if (!failed && listener_) listener_->CatClick(id, caption);
      break;
    }
    case Piece::TabMouse:
      TabMouse_Click(i);
      break;
    default:
      break;
  }
}

void ACPRibbon::TabMouse_Click(int i) {
  TabHover(-1);
  for (int k = 0, last = pieces_.ubound(Piece::TabMouse); k <= last; ++k) {
    if (k == i) continue;
    for (Piece a : {Piece::Tab_center, Piece::Tab_left, Piece::Tab_right}) step([&] { show(a, k, false); });
    step([&] { pieces_.at(Piece::Tab_caption, k).ForeColor = tabCaptionColor_; });
  }
  step([&] { pieces_.at(Piece::Tab_caption, i).ForeColor = tabCaptionColorActive_; });
  for (Piece a : {Piece::Tab_center, Piece::Tab_left, Piece::Tab_right}) step([&] { show(a, i, true); });
  step([&] {
    if (!inRange(i, kTabs)) throw Error{err::SubscriptOutOfRange, QStringLiteral("Subscript out of range")};
    currentTab_ = tabs_[size_t(i)].id;
  });
  LayoutCategories();
  notifyChanged();
  // After the new categories stand, so that the application sees the finished bar.
  if (inRange(i, kTabs) && listener_) {
    const TabEntry tab = tabs_[size_t(i)];
    listener_->TabClick(tab.id, tab.caption);
  }
}

// ---- Mouse input -------------------------------------------------------------------------------------

PieceRef ACPRibbon::mouseTarget(double x, double y) const {
  if (pressedButtons_ != 0) return pressed_;
  return pieces_.pieceAt(x, y);
}

void ACPRibbon::inputMouseMove(double x, double y) {
  const PieceRef target = mouseTarget(x, y);
  if (!target.valid()) return;
  pieceMouseMove(target);
  notifyChanged();
}

void ACPRibbon::inputMouseDown(int button, double x, double y) {
  if (pressedButtons_ == 0) pressed_ = pieces_.pieceAt(x, y);
  pressedButtons_ |= button;
  if (!pressed_.valid()) return;
  pieceMouseDown(pressed_);
  notifyChanged();
}

void ACPRibbon::inputMouseUp(int button, double x, double y) {
  const PieceRef target = pressedButtons_ != 0 ? pressed_ : pieces_.pieceAt(x, y);
  pressedButtons_ &= ~button;
  if (pressedButtons_ == 0) pressed_ = {};
  if (!target.valid()) return;
  pieceMouseUp(target);
  notifyChanged();
  // A click is a left press and release over the same piece.
  if (button == vbLeftButton && pieces_.pieceAt(x, y) == target) pieceClick(target);
}

}  // namespace tq7
