#pragma once
// Colours of the core (0x00BBGGRR, the top bit naming a system colour) as Qt colours.
#include "frame/Types.h"

#include <QColor>
#include <QPalette>

namespace tq7 {

// A plain colour as it is; a system colour through the application's palette.
QColor toQColor(Colour c);
// The same with a given palette, for painters that already hold one.
QColor toQColor(Colour c, const QPalette& palette);
// A Qt colour back to 0x00BBGGRR (never a system colour).
Colour fromQColor(const QColor& c);

}  // namespace tq7
