#pragma once
// One piece of the ribbon: a picture or a text label with a place, a size, a visibility flag and a
// place in the stack. What the user sees of the ribbon is nothing but these pieces, drawn from the
// lowest place to the highest.
#include "frame/Types.h"

#include <QImage>
#include <QString>
#include <cstdint>

namespace tq7 {

enum class PieceKind : uint8_t { Image, Label };

struct RibbonPiece {
  PieceKind kind = PieceKind::Image;
  bool exists = false;  // element of its array is loaded
  bool Visible = false;
  double Left = 0, Top = 0, Width = 0, Height = 0;  // twips, relative to the bar
  uint32_t place = 0;  // place in the stack: a higher place lies on top

  // Images. A stretched picture fills the piece; any other stands at its own size at the top left.
  QImage Picture;
  QImage Picture2x;  // the same picture drawn at twice the size, for screens scaled above 100%
  bool Stretch = false;
  bool SizesToPicture = false;  // takes the size of each picture it is given

  // Labels. A transparent label without text is a hit area.
  QString Caption;
  QString Tag;
  QString ToolTipText;
  Colour ForeColor = 0;
  tq7::Font font;
  bool AutoSize = false;  // Width and Height follow the text
  bool Centred = false;   // each line centred; otherwise left aligned
};

}  // namespace tq7
