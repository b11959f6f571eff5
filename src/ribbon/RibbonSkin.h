#pragma once
// The ribbon's three built-in skins, "BLACK", "BLUE" and "SILVER": their colours, and their
// pictures, kept as resources of the library under the skin's name and the picture's number
// (101 to 141), each also drawn at twice its size for scaled screens.
#include "frame/Error.h"
#include "frame/Types.h"

#include <QImage>
#include <QString>

namespace tq7 {

struct SkinColours {
  Colour Cat_Caption;
  Colour TabCaptionColor;
  Colour TabCaptionColorActive;
  Colour Button_Caption;
  Colour BackColor;
  Colour ForeColor;
};

// Theme 0 "BLACK", 1 "BLUE", 2 "SILVER"; anything else reads as 0.
const SkinColours& skinColours(int16_t theme);
QString skinType(int16_t theme);

struct SkinPicture {
  QImage picture;    // the standard size
  QImage picture2x;  // twice the size, device pixel ratio 2; null when the skin has none
};

// A picture load's failure: the number, the system's text for it and the source the failure
// names (the program's name and ".cAniCursor" for a temporary file that could not be made,
// ".cLoadResPicture" for anything else).
struct RibbonPictureError : Error {
  QString source;
};

// Reads the picture id of the skin type through a temporary file "LRP..." in the platform's
// temporary folder, which is removed again. Throws RibbonPictureError.
SkinPicture LoadSkinPicture(int id, const QString& type);

// The name of the running program without its folder and extension.
QString programName();

}  // namespace tq7
