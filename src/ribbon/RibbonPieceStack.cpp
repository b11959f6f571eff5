#include "ribbon/RibbonPieceStack.h"

#include "frame/Error.h"

#include <algorithm>

namespace tq7 {

namespace {
constexpr int32_t kElementMissing = 340;
constexpr int32_t kAlreadyLoaded = 360;
constexpr int32_t kDesignElement = 362;

const char* const kNames[kPieceArrays] = {
    "Barra2", "BarraLeft", "BarraRight",
    "Tab_left", "Tab_center", "Tab_right", "Tab_left_over", "Tab_center_over", "Tab_right_over", "Tab_caption",
    "TabMouse",
    "Cat_Left_off", "Cat_Center_off", "Cat_Right_off", "Cat_Left_on", "Cat_Center_on", "Cat_Right_on", "Cat_Dlg",
    "Cat_Dlg_on", "Cat_Dlg_over", "Cat_Caption", "CatMouse",
    "Button_left", "Button_center", "Button_right", "Button_left_over", "Button_center_over", "Button_right_over",
    "Button_Icon", "Glip_on", "Glip_off", "Button_Caption", "ButMouse"};

[[noreturn]] void missing(int i) {
  throw Error{kElementMissing, QStringLiteral("Control array element '%1' doesn't exist").arg(i)};
}
}  // namespace

const char* pieceName(Piece p) { return p < Piece::Count ? kNames[size_t(p)] : ""; }

RibbonPieceStack::RibbonPieceStack() {
  for (int a = 0; a < kPieceArrays; ++a) {
    arrays_[size_t(a)].resize(1);
    RibbonPiece& t = arrays_[size_t(a)][0];
    t.exists = true;
    t.place = ++top_;
  }
}

RibbonPiece& RibbonPieceStack::load(Piece a, int i) {
  auto& arr = arrays_[size_t(a)];
  if (i < 0) throw Error{9, QStringLiteral("Subscript out of range")};
  if (size_t(i) < arr.size() && arr[size_t(i)].exists) throw Error{kAlreadyLoaded, QStringLiteral("Object already loaded")};
  if (size_t(i) >= arr.size()) arr.resize(size_t(i) + 1);
  const RibbonPiece& t = arr[0];
  RibbonPiece& e = arr[size_t(i)];
  e.kind = t.kind;
  e.exists = true;
  e.Visible = false;
  e.Left = t.Left;
  e.Top = t.Top;
  e.Width = t.Width;
  e.Height = t.Height;
  e.Picture = t.Picture;
  e.Picture2x = t.Picture2x;
  e.Stretch = t.Stretch;
  e.SizesToPicture = t.SizesToPicture;
  e.Caption = t.Caption;
  e.Tag = t.Tag;
  e.ToolTipText = t.ToolTipText;
  e.ForeColor = t.ForeColor;
  e.font = t.font;
  e.AutoSize = t.AutoSize;
  e.Centred = t.Centred;
  e.place = ++top_;
  ubound_[size_t(a)] = std::max(ubound_[size_t(a)], i);
  orderDirty_ = true;
  return e;
}

void RibbonPieceStack::unload(Piece a, int i) {
  auto& arr = arrays_[size_t(a)];
  if (i == 0) throw Error{kDesignElement, QStringLiteral("Can't unload controls created at design time")};
  if (i < 0 || size_t(i) >= arr.size() || !arr[size_t(i)].exists) missing(i);
  RibbonPiece& e = arr[size_t(i)];
  e.exists = false;
  e.Visible = false;
  // The picture's memory goes with the element; the text buffers stay for the next load.
  e.Picture = QImage();
  e.Picture2x = QImage();
  int& ub = ubound_[size_t(a)];
  if (i == ub) {
    while (ub > 0 && !arr[size_t(ub)].exists) --ub;
  }
  orderDirty_ = true;
}

RibbonPiece& RibbonPieceStack::at(Piece a, int i) {
  auto& arr = arrays_[size_t(a)];
  if (i < 0 || size_t(i) >= arr.size() || !arr[size_t(i)].exists) missing(i);
  return arr[size_t(i)];
}

const RibbonPiece& RibbonPieceStack::at(Piece a, int i) const {
  return const_cast<RibbonPieceStack*>(this)->at(a, i);
}

const RibbonPiece* RibbonPieceStack::find(Piece a, int i) const {
  const auto& arr = arrays_[size_t(a)];
  if (i < 0 || size_t(i) >= arr.size() || !arr[size_t(i)].exists) return nullptr;
  return &arr[size_t(i)];
}

const std::vector<PieceRef>& RibbonPieceStack::order() const {
  if (!orderDirty_) return order_;
  order_.clear();
  for (int a = 0; a < kPieceArrays; ++a) {
    const auto& arr = arrays_[size_t(a)];
    for (size_t i = 0; i < arr.size(); ++i)
      if (arr[i].exists) order_.push_back(PieceRef{Piece(a), int16_t(i)});
  }
  std::sort(order_.begin(), order_.end(), [this](const PieceRef& l, const PieceRef& r) {
    return arrays_[size_t(l.array)][size_t(l.index)].place < arrays_[size_t(r.array)][size_t(r.index)].place;
  });
  orderDirty_ = false;
  return order_;
}

PieceRef RibbonPieceStack::pieceAt(double x, double y) const {
  const auto& o = order();
  for (auto it = o.rbegin(); it != o.rend(); ++it) {
    const RibbonPiece& p = arrays_[size_t(it->array)][size_t(it->index)];
    if (p.Visible && x >= p.Left && x < p.Left + p.Width && y >= p.Top && y < p.Top + p.Height) return *it;
  }
  return {};
}

size_t RibbonPieceStack::loadedCount() const { return order().size(); }

}  // namespace tq7
