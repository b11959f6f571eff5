#include "controls/RotatedBoundControl.h"

#include "companion/VbText.h"
#include "frame/Error.h"

namespace tq7 {

namespace {
constexpr int32_t InvalidUseOfNull = 94;

// The text a caption takes from a field's value; a null cannot be a text.
QString captionOf(const QVariant& v) {
  if (v.isNull() || !v.isValid()) throw Error{InvalidUseOfNull, QStringLiteral("Invalid use of Null")};
  if (v.typeId() == QMetaType::Double || v.typeId() == QMetaType::Float) return vb::shortestText(v.toDouble());
  if (v.typeId() == QMetaType::Bool) return v.toBool() ? QStringLiteral("True") : QStringLiteral("False");
  return v.toString();
}
}  // namespace

RotatedBoundControl::RotatedBoundControl() : Control(QStringLiteral("RotatedBoundControl")) {}

RotatedBoundControl::~RotatedBoundControl() { unbind(); }

void RotatedBoundControl::unbind() {
  if (dataControl_ && handlerId_) dataControl_->removeRepositionHandler(handlerId_);
  dataControl_ = nullptr;
  handlerId_ = 0;
}

void RotatedBoundControl::setAngle(float a) {
  angle_ = a;
  propertyChanged_ = true;
  Redraw();
}

void RotatedBoundControl::setCaption(const QString& c) {
  caption_ = c;
  propertyChanged_ = true;
  Redraw();
}

void RotatedBoundControl::setFont(const tq7::Font& f) {
  font_ = f;
  propertyChanged_ = true;
  Redraw();
}

void RotatedBoundControl::setDataFieldName(const QString& name) {
  dataFieldName_ = name;
  propertyChanged_ = true;
}

void RotatedBoundControl::setDataControlName(const QString& name) {
  dataControlName_ = name;
  propertyChanged_ = true;
  if (!container_) return;
  // The first control of that exact name; none found keeps the one held before.
  for (DataControl* c : *container_) {
    if (c && c->Name() == name) {
      unbind();
      dataControl_ = c;
      handlerId_ = c->addRepositionHandler([this] { m_DataControl_Reposition(); });
      break;
    }
  }
}

void RotatedBoundControl::m_DataControl_Reposition() {
  if (dataFieldName_.isEmpty() || !dataControl_) return;
  // A bad field name or a record set with no current record leaves the caption as it is.
  step([&] {
    db::Recordset* rs = dataControl_->Recordset();
    if (!rs) throw Error{err::ObjectRequired, QStringLiteral("Object required")};
    setCaption(captionOf(rs->Fields(dataFieldName_).Value()));
  });
}

void RotatedBoundControl::ReadProperties(const PropertyBag& bag) {
  angle_ = bag.ReadProperty(QStringLiteral("Angle"), 0.0f).toFloat();
  caption_ = bag.ReadProperty(QStringLiteral("Caption"), QString()).toString();
  font_ = RotLabel::fontFromVariant(bag.ReadProperty(QStringLiteral("Font")), font_);
  // The field first, so that the search by the control's name finds it ready.
  dataFieldName_ = bag.ReadProperty(QStringLiteral("DataFieldName"), QString()).toString();
  setDataControlName(bag.ReadProperty(QStringLiteral("DataControlName"), QString()).toString());
  propertyChanged_ = false;
  Redraw();
}

void RotatedBoundControl::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("Angle"), angle_);
  bag.WriteProperty(QStringLiteral("Caption"), caption_);
  bag.WriteProperty(QStringLiteral("Font"), RotLabel::fontToVariant(font_));
  bag.WriteProperty(QStringLiteral("DataControlName"), dataControlName_);
  bag.WriteProperty(QStringLiteral("DataFieldName"), dataFieldName_);
}

void RotatedBoundControl::Redraw() {
  // From the bottom left corner at any angle; there is no anchor grid here.
  const double F = font_.Size * 20.0;
  drawn_ = RotatedText{caption_, 0, Height() - F, RotLabel::fontHeight(font_), RotLabel::weightOf(font_), angle_,
                       font_.Italic, font_.Underline, font_.Strikethrough, font_.Name};
  ++drawCount_;
  notifyChanged();
}

}  // namespace tq7
