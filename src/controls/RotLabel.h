#pragma once
// One line of text at any angle, on a label whose shape is the text itself: the control's back
// colour is its text colour, and only the letters drawn on picMask let the control show, so the
// container's background is seen between them. The host draws the text and applies the mask;
// the core decides where the text starts (the anchor grid) and with what font.
#include "frame/Control.h"

#include <QVariant>
#include <cstdint>

namespace tq7 {

class RotLabelEvents {
 public:
  virtual ~RotLabelEvents() = default;
  virtual void Click() {}
};

// What DrawRotatedText is given: the text's top left corner (X, Y, twips) and the font to make.
struct RotatedText {
  QString caption;
  double X = 0, Y = 0;
  int32_t height = 0;  // the font's height in pixels, rounded down
  int32_t weight = 400;
  float angle = 0;     // degrees, counter-clockwise
  bool italic = false, underline = false, strikeout = false;
  QString fontName;
};

class RotLabel : public Control {
 public:
  RotLabel();
  ~RotLabel() override;

  void setListener(RotLabelEvents* l) { listener_ = l; }

  float Angle() const { return angle_; }
  void setAngle(float a);
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  const tq7::Font& Font() const { return font_; }
  void setFont(const tq7::Font& f);
  Colour ForeColor() const { return foreColor_; }
  void setForeColor(Colour c);
  // The surface's colours: ForeColor sets both, so what shows through the mask is the text.
  Colour SurfaceForeColor() const { return surfaceFore_; }
  Colour SurfaceBackColor() const { return surfaceBack_; }
  int16_t RotationPoint() const { return rotationPoint_; }
  void setRotationPoint(int16_t p);

  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // The redraw, at each resize, show and property change.
  void PlaceRotatedText();
  // The host's show of the control.
  void UserControl_Show() { PlaceRotatedText(); }
  void UserControl_Click();

  // The last drawing handed to picMask; the host paints it and takes it as the shape.
  const RotatedText& lastDrawing() const { return drawn_; }
  // How many times the text was drawn (each redraw is one).
  int32_t drawCount() const { return drawCount_; }

  // +1 when text at this angle runs rightwards, else -1.
  static int sign(float angle);
  // The anchor of the text in a W x H control for a text T wide and F high.
  static void anchor(int16_t rotationPoint, int s, double W, double H, double T, double F, double& X, double& Y);
  // The font's height in the picture's unit (pixels), rounded down.
  static int32_t fontHeight(const tq7::Font& f);
  // 700 for a bold font, else 400.
  static int32_t weightOf(const tq7::Font& f) { return f.Bold ? 700 : 400; }
  // A font as a persisted value, and back (missing parts keep the defaults).
  static QVariant fontToVariant(const tq7::Font& f);
  static tq7::Font fontFromVariant(const QVariant& v, const tq7::Font& def);

  PictureBox picMask{QStringLiteral("picMask")};
  Label Label1{QStringLiteral("Label1")};

 protected:
  void onResize() override { PlaceRotatedText(); }

 private:
  RotLabelEvents* listener_ = nullptr;
  float angle_ = 0;
  QString caption_ = QStringLiteral("RotLabel");
  tq7::Font font_;
  Colour foreColor_ = syscolor::WindowText;
  Colour surfaceFore_ = syscolor::WindowText;
  Colour surfaceBack_ = syscolor::WindowText;
  int16_t rotationPoint_ = 5;
  RotatedText drawn_;
  int32_t drawCount_ = 0;
};

}  // namespace tq7
