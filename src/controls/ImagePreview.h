#pragma once
// One picture of a record, shown from the application's image store (ImageFolder) with its file
// name and size below it. In edit mode the user changes it (the chosen file is copied into the
// store where needed) or clears it from the right button's menu; a double click opens the
// picture in the system's viewer.
//
// Paths: the store and the names in it use "/" as separator; a stored FileName is relative to
// ImageFolder, or a full path when no store is set.
#include "companion/FileHelper.h"
#include "controls/CImageInfo.h"
#include "frame/Control.h"

#include <QImage>
#include <cstdint>
#include <functional>

namespace tq7 {

class ImagePreviewEvents {
 public:
  virtual ~ImagePreviewEvents() = default;
  virtual void Click() {}
  virtual void KeyDown(int16_t& KeyCode, int16_t& Shift) { (void)KeyCode, (void)Shift; }
  virtual void MouseDown(int16_t Button, int16_t Shift, float X, float Y) { (void)Button, (void)Shift, (void)X, (void)Y; }
  virtual void MouseMove(int16_t Button, int16_t Shift, float X, float Y) { (void)Button, (void)Shift, (void)X, (void)Y; }
  virtual void MouseUp(int16_t Button, int16_t Shift, float X, float Y) { (void)Button, (void)Shift, (void)X, (void)Y; }
  // The user has changed or cleared the image.
  virtual void Change() {}
};

class ImagePreview : public Control {
 public:
  // Mouse buttons as the events pass them.
  static constexpr int16_t vbLeftButton = 1, vbRightButton = 2, vbMiddleButton = 4;

  ImagePreview();
  ~ImagePreview() override;

  void setListener(ImagePreviewEvents* l) { listener_ = l; }

  // ---- Properties -----------------------------------------------------------------------------
  Colour BackColor() const { return backColor_; }
  void setBackColor(Colour c);
  Colour LabelBackColor() const { return labelBackColor_; }
  void setLabelBackColor(Colour c);
  const QString& Caption() const { return caption_; }  // held only
  void setCaption(const QString& c) { caption_ = c; }
  const QString& FileName() const { return fileName_; }
  void setFileName(const QString& f);
  const QString& ImageFolder() const { return imageFolder_; }
  void setImageFolder(const QString& f) { imageFolder_ = f; }
  int32_t ImageWidth() const { return imageWidth_; }
  int32_t ImageHeight() const { return imageHeight_; }
  int16_t ImageDepth() const { return imageDepth_; }
  bool Preview() const { return preview_; }
  void setPreview(bool v);
  bool KeepRatio() const { return keepRatio_; }
  void setKeepRatio(bool v);
  bool EditStatus() const { return editStatus_; }
  void setEditStatus(bool v);
  bool ChangeFolder() const { return changeFolder_; }
  void setChangeFolder(bool v);
  bool ShowFilename() const { return showFilename_; }
  void setShowFilename(bool v);
  bool ShowSize() const { return showSize_; }
  void setShowSize(bool v);
  bool ShowBorder() const { return showBorder_; }
  void setShowBorder(bool v);
  bool Zoom() const { return zoom_; }
  void setZoom(bool v);
  bool DisableRightClick() const { return disableRightClick_; }
  void setDisableRightClick(bool v) { disableRightClick_ = v; }
  // The picture on show; null when none is.
  const QImage& Picture() const { return Image1.Picture(); }

  // The public redraw.
  void ImagePreview_();
  void ReadProperties(const PropertyBag& bag) override;
  void WriteProperties(PropertyBag& bag) const override;

  // ---- Actions and handlers the host calls ----------------------------------------------------
  void ChangeImage(bool modern);
  void mnuViewImage_Click();
  void mnuChangeImage_Click() { ChangeImage(true); }
  void mnuChangeImageBOS_Click() { ChangeImage(false); }
  void mnuClearImage_Click();
  void Image1_Click();
  void Image1_DblClick();
  void Image1_MouseDown(int16_t Button, int16_t Shift, float X, float Y);
  void Image1_MouseMove(int16_t Button, int16_t Shift, float X, float Y);
  void Image1_MouseUp(int16_t Button, int16_t Shift, float X, float Y);
  void UserControl_KeyDown(int16_t& KeyCode, int16_t& Shift);

  // The host pops ImageMenu up at the pointer and clicks the item chosen, if any.
  std::function<void()> onPopupMenu;

  // The frame the picture is fitted into, remembered at the first redraw (twips).
  double frameWidth() const { return frameW_; }
  double frameHeight() const { return frameH_; }
  bool Image1Border() const { return showBorder_ && image1Border_; }

  // Pieces, in stacking order.
  PictureBox Image1{QStringLiteral("Image1")};
  Label lblFilename{QStringLiteral("lblFilename")};
  Label lblSize{QStringLiteral("lblSize")};
  Menu mnuViewImage{QStringLiteral("mnuViewImage")};
  Menu mnuChangeImage{QStringLiteral("mnuChangeImage")};
  Menu mnuChangeImageBOS{QStringLiteral("mnuChangeImageBOS")};
  Menu mnuClearImage{QStringLiteral("mnuClearImage")};

 protected:
  void onResize() override;

 private:
  void resizeStep();
  void centreLabels();
  void setLabelText(Label& label, const QString& text);
  QString fullPath() const;
  void raiseChange();

  ImagePreviewEvents* listener_ = nullptr;
  CImageInfo info_;
  FileHelper files_;
  Colour backColor_ = syscolor::ButtonFace;
  Colour labelBackColor_ = syscolor::ButtonFace;
  QString caption_;
  QString fileName_;
  QString imageFolder_;
  int32_t imageWidth_ = 0, imageHeight_ = 0;
  int16_t imageDepth_ = 0;
  bool preview_ = false;
  bool keepRatio_ = true;
  bool editStatus_ = false;
  bool changeFolder_ = true;
  bool showFilename_ = true;
  bool showSize_ = true;
  bool showBorder_ = true;
  bool zoom_ = true;
  bool disableRightClick_ = false;
  bool image1Border_ = true;
  double frameW_ = 0, frameH_ = 0, frameL_ = 0, frameT_ = 0;
  // The filter handed to the file dialog; nothing sets it.
  QString filter_;
};

}  // namespace tq7
