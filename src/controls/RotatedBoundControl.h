#pragma once
// One line of text at any angle drawn straight on the control, from its bottom left corner. Its
// text can follow a field of a data control of the same form: at each move of that control's
// current record the caption takes the field's value.
#include "controls/DataControl.h"
#include "controls/RotLabel.h"
#include "frame/Control.h"

#include <vector>

namespace tq7 {

class RotatedBoundControl : public Control {
 public:
  RotatedBoundControl();
  ~RotatedBoundControl() override;

  // The form's controls among which DataControlName is looked up (not owned).
  void setContainer(const std::vector<DataControl*>* controls) { container_ = controls; }

  float Angle() const { return angle_; }
  void setAngle(float a);
  const QString& Caption() const { return caption_; }
  void setCaption(const QString& c);
  const tq7::Font& Font() const { return font_; }
  void setFont(const tq7::Font& f);
  const QString& DataControlName() const { return dataControlName_; }
  void setDataControlName(const QString& name);
  const QString& DataFieldName() const { return dataFieldName_; }
  void setDataFieldName(const QString& name);
  // The data control found by name; null when none was.
  DataControl* m_DataControl() const { return dataControl_; }

  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // The redraw: the surface is cleared and the text drawn from the bottom left corner.
  void Redraw();
  // The data control's current record moved.
  void m_DataControl_Reposition();

  const RotatedText& lastDrawing() const { return drawn_; }
  int32_t drawCount() const { return drawCount_; }
  // Whether a changed property waits to be saved.
  bool PropertyChanged() const { return propertyChanged_; }

 protected:
  void onResize() override { Redraw(); }

 private:
  void unbind();

  const std::vector<DataControl*>* container_ = nullptr;
  DataControl* dataControl_ = nullptr;
  int handlerId_ = 0;
  float angle_ = 0;
  QString caption_;
  tq7::Font font_;
  QString dataControlName_;
  QString dataFieldName_;
  RotatedText drawn_;
  int32_t drawCount_ = 0;
  bool propertyChanged_ = false;
};

}  // namespace tq7
