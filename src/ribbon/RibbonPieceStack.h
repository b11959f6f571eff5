#pragma once
// The ribbon's stack of pieces: arrays of pictures and labels, each with its template at index 0,
// further elements loaded by copying the template and unloaded one by one. Bringing a piece to the
// front gives it the next place in the stack; the host draws in the order of places and gives the
// mouse to the topmost visible piece under it.
#include "ribbon/RibbonPiece.h"

#include <array>
#include <vector>

namespace tq7 {

// The piece arrays. The three parts of the background are arrays of one element.
enum class Piece : uint8_t {
  Barra2, BarraLeft, BarraRight,
  Tab_left, Tab_center, Tab_right, Tab_left_over, Tab_center_over, Tab_right_over, Tab_caption, TabMouse,
  Cat_Left_off, Cat_Center_off, Cat_Right_off, Cat_Left_on, Cat_Center_on, Cat_Right_on,
  Cat_Dlg, Cat_Dlg_on, Cat_Dlg_over, Cat_Caption, CatMouse,
  Button_left, Button_center, Button_right, Button_left_over, Button_center_over, Button_right_over,
  Button_Icon, Glip_on, Glip_off, Button_Caption, ButMouse,
  Count
};
constexpr int kPieceArrays = int(Piece::Count);

// An element of an array: which array, which index.
struct PieceRef {
  Piece array = Piece::Count;
  int16_t index = -1;
  bool valid() const { return array != Piece::Count; }
  bool operator==(const PieceRef&) const = default;
};

const char* pieceName(Piece p);

class RibbonPieceStack {
 public:
  RibbonPieceStack();

  // The template, made at design time; the stack order of the templates is the order of the enum.
  RibbonPiece& design(Piece a) { return arrays_[size_t(a)][0]; }
  const RibbonPiece& design(Piece a) const { return arrays_[size_t(a)][0]; }

  // Loads element i as a copy of the template (picture, place, size, font, colour, text and tag),
  // hidden, on top of the stack. Error 360 when it is loaded already, 9 for a negative index.
  RibbonPiece& load(Piece a, int i);
  // Error 340 when the element is not loaded; the template cannot be unloaded (error 362).
  void unload(Piece a, int i);
  // The element; error 340 when it is not loaded.
  RibbonPiece& at(Piece a, int i);
  const RibbonPiece& at(Piece a, int i) const;
  // The element, or nullptr.
  const RibbonPiece* find(Piece a, int i) const;
  // The highest loaded index (0: the template alone).
  int ubound(Piece a) const { return ubound_[size_t(a)]; }

  void bringToFront(Piece a, int i) { at(a, i).place = ++top_; orderDirty_ = true; }

  // Every loaded element from the lowest place to the highest, hidden ones included.
  const std::vector<PieceRef>& order() const;
  // The topmost visible piece that holds the point (twips); invalid when none does.
  PieceRef pieceAt(double x, double y) const;
  size_t loadedCount() const;

 private:
  std::array<std::vector<RibbonPiece>, kPieceArrays> arrays_;
  std::array<int, kPieceArrays> ubound_{};
  uint32_t top_ = 0;
  mutable std::vector<PieceRef> order_;
  mutable bool orderDirty_ = true;
};

}  // namespace tq7
