#pragma once
// Shared value types: colours 0x00BBGGRR (top bit: a system colour), fonts by name, date serials.
#include <QString>
#include <cstdint>

namespace tq7 {

using Colour = uint32_t;

namespace syscolor {
constexpr Colour ScrollBars = 0x80000000u;
constexpr Colour ButtonFace = 0x8000000Fu;
constexpr Colour ButtonText = 0x80000012u;
constexpr Colour Window = 0x80000005u;
constexpr Colour WindowText = 0x80000008u;
constexpr Colour Highlight = 0x8000000Du;
constexpr Colour HighlightText = 0x8000000Eu;
constexpr Colour InfoBackground = 0x80000018u;
constexpr Colour InfoText = 0x80000017u;
constexpr Colour GrayText = 0x80000011u;
}  // namespace syscolor

inline bool isSystemColour(Colour c) { return (c & 0x80000000u) != 0; }
// 0x00BBGGRR to its parts; a system colour is resolved by the host, not here.
inline int red(Colour c) { return int(c & 0xFF); }
inline int green(Colour c) { return int((c >> 8) & 0xFF); }
inline int blue(Colour c) { return int((c >> 16) & 0xFF); }
inline Colour rgb(int r, int g, int b) { return Colour(r & 0xFF) | (Colour(g & 0xFF) << 8) | (Colour(b & 0xFF) << 16); }

struct Font {
  QString Name = QStringLiteral("MS Sans Serif");
  double Size = 8.25;  // points
  bool Bold = false;
  bool Italic = false;
  bool Underline = false;
  bool Strikethrough = false;
  int16_t Charset = 222;  // Thai
  bool operator==(const Font&) const = default;
};

// Lengths on screen are twips, 15 to the pixel at the standard resolution.
constexpr double TwipsPerPixel = 15.0;

}  // namespace tq7
