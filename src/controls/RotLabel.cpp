#include "controls/RotLabel.h"

#include "frame/Error.h"
#include "frame/Platform.h"

#include <QVariantMap>
#include <cmath>

namespace tq7 {

RotLabel::RotLabel() : Control(QStringLiteral("RotLabel")) {
  addChild(picMask);
  addChild(Label1);
  picMask.setVisible(false);
  Label1.setVisible(false);
}

RotLabel::~RotLabel() = default;

int RotLabel::sign(float angle) {
  return ((angle <= 90 || angle > 270) && (angle >= -90 || angle < -270)) ? 1 : -1;
}

void RotLabel::anchor(int16_t rotationPoint, int s, double W, double H, double T, double F, double& X, double& Y) {
  const double centreX = W / 2 - s * T / 2, rightX = W - s * T;
  const double middleY = H / 2 - s * F / 2, bottomY = H - s * F;
  switch (rotationPoint) {
    case 1: X = 0, Y = 0; break;
    case 2: X = centreX, Y = 0; break;
    case 3: X = rightX, Y = 0; break;
    case 4: X = 0, Y = middleY; break;
    case 5: X = centreX, Y = middleY; break;
    case 6: X = rightX, Y = middleY; break;
    case 8: X = centreX, Y = bottomY; break;
    case 9: X = rightX, Y = bottomY; break;
    default: X = 0, Y = bottomY; break;  // 7 and any other value
  }
}

int32_t RotLabel::fontHeight(const tq7::Font& f) {
  return int32_t(std::floor(f.Size * 20.0 / TwipsPerPixel));
}

QVariant RotLabel::fontToVariant(const tq7::Font& f) {
  return QVariantMap{{QStringLiteral("Name"), f.Name},           {QStringLiteral("Size"), f.Size},
                     {QStringLiteral("Bold"), f.Bold},           {QStringLiteral("Italic"), f.Italic},
                     {QStringLiteral("Underline"), f.Underline}, {QStringLiteral("Strikethrough"), f.Strikethrough},
                     {QStringLiteral("Charset"), f.Charset}};
}

tq7::Font RotLabel::fontFromVariant(const QVariant& v, const tq7::Font& def) {
  const QVariantMap m = v.toMap();
  tq7::Font f = def;
  f.Name = m.value(QStringLiteral("Name"), def.Name).toString();
  f.Size = m.value(QStringLiteral("Size"), def.Size).toDouble();
  f.Bold = m.value(QStringLiteral("Bold"), def.Bold).toBool();
  f.Italic = m.value(QStringLiteral("Italic"), def.Italic).toBool();
  f.Underline = m.value(QStringLiteral("Underline"), def.Underline).toBool();
  f.Strikethrough = m.value(QStringLiteral("Strikethrough"), def.Strikethrough).toBool();
  f.Charset = int16_t(m.value(QStringLiteral("Charset"), def.Charset).toInt());
  return f;
}

void RotLabel::setAngle(float a) {
  angle_ = a;
  PlaceRotatedText();
}

void RotLabel::setCaption(const QString& c) {
  caption_ = c;
  PlaceRotatedText();
}

void RotLabel::setFont(const tq7::Font& f) {
  font_ = f;
  PlaceRotatedText();
}

void RotLabel::setForeColor(Colour c) {
  foreColor_ = c;
  surfaceFore_ = c;
  surfaceBack_ = c;
  PlaceRotatedText();
}

void RotLabel::setRotationPoint(int16_t p) {
  rotationPoint_ = p;
  PlaceRotatedText();
}

void RotLabel::ReadProperties(const PropertyBag& bag) {
  angle_ = bag.ReadProperty(QStringLiteral("Angle"), 0.0f).toFloat();
  caption_ = bag.ReadProperty(QStringLiteral("Caption"), QStringLiteral("RotLabel")).toString();
  font_ = fontFromVariant(bag.ReadProperty(QStringLiteral("Font")), font_);
  foreColor_ = Colour(bag.ReadProperty(QStringLiteral("ForeColor"), foreColor_).toUInt());
  surfaceFore_ = surfaceBack_ = foreColor_;
  rotationPoint_ = int16_t(bag.ReadProperty(QStringLiteral("RotationPoint"), 5).toInt());
  PlaceRotatedText();
}

void RotLabel::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("Angle"), angle_);
  bag.WriteProperty(QStringLiteral("Caption"), caption_);
  bag.WriteProperty(QStringLiteral("Font"), fontToVariant(font_));
  bag.WriteProperty(QStringLiteral("ForeColor"), foreColor_);
  bag.WriteProperty(QStringLiteral("RotationPoint"), rotationPoint_);
}

void RotLabel::PlaceRotatedText() {
  // Measure on the hidden auto-size label.
  Label1.setFont(font_);
  Label1.setCaption(caption_);
  double T = 0;
  step([&] { T = platform().textWidth(font_, caption_); });
  Label1.setWidth(T);
  const int s = sign(angle_);
  const double F = font_.Size * 20.0;  // points to twips, vertically
  double X = 0, Y = 0;
  anchor(rotationPoint_, s, Width(), Height(), T, F, X, Y);

  // DrawRotatedText: picMask is cleared, the text drawn from (X, Y), and the drawing becomes the
  // control's shape.
  picMask.setFont(font_);
  drawn_ = RotatedText{caption_, X, Y, fontHeight(font_), weightOf(font_), angle_, font_.Italic, font_.Underline,
                       font_.Strikethrough, font_.Name};
  ++drawCount_;
  notifyChanged();
}

void RotLabel::UserControl_Click() {
  if (listener_) listener_->Click();
}

}  // namespace tq7
