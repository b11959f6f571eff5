#include "host/HostColours.h"

#include <QGuiApplication>

namespace tq7 {
namespace {

// The classic system colour indexes, by the role each plays on a Qt palette.
QColor systemColour(int index, const QPalette& pal) {
  using P = QPalette;
  switch (index) {
    case 0: return pal.color(P::Button);                 // scroll bars
    case 1: return pal.color(P::Dark);                   // desktop
    case 2: return pal.color(P::Highlight);              // active caption
    case 3: return pal.color(P::Mid);                    // inactive caption
    case 4: return pal.color(P::Window);                 // menu
    case 5: return pal.color(P::Base);                   // window
    case 6: return pal.color(P::Shadow);                 // window frame
    case 7: return pal.color(P::WindowText);             // menu text
    case 8: return pal.color(P::Text);                   // window text
    case 9: return pal.color(P::HighlightedText);        // caption text
    case 10:                                             // active border
    case 11: return pal.color(P::Button);                // inactive border
    case 12: return pal.color(P::Mid);                   // application workspace
    case 13: return pal.color(P::Highlight);
    case 14: return pal.color(P::HighlightedText);
    case 15: return pal.color(P::Button);                // button face
    case 16: return pal.color(P::Dark);                  // button shadow
    case 17: return pal.color(P::Disabled, P::Text);     // grey text
    case 18: return pal.color(P::ButtonText);
    case 19: return pal.color(P::Disabled, P::WindowText);  // inactive caption text
    case 20: return pal.color(P::Light);                 // button highlight
    case 21: return pal.color(P::Shadow);                // 3D dark shadow
    case 22: return pal.color(P::Midlight);              // 3D light
    case 23: return pal.color(P::ToolTipText);           // info text
    case 24: return pal.color(P::ToolTipBase);           // info background
    case 26: return pal.color(P::Link);                  // hot-tracked item
    case 27: return pal.color(P::Highlight);             // gradient of the active caption
    case 28: return pal.color(P::Mid);                   // gradient of the inactive caption
    case 29: return pal.color(P::Highlight);             // menu highlight
    case 30: return pal.color(P::Window);                // menu bar
    default: return pal.color(P::Window);
  }
}

}  // namespace

QColor toQColor(Colour c, const QPalette& palette) {
  if (isSystemColour(c)) return systemColour(int(c & 0xFF), palette);
  return QColor(red(c), green(c), blue(c));
}

QColor toQColor(Colour c) {
  if (!isSystemColour(c)) return QColor(red(c), green(c), blue(c));
  return toQColor(c, QGuiApplication::palette());
}

Colour fromQColor(const QColor& c) { return rgb(c.red(), c.green(), c.blue()); }

}  // namespace tq7
