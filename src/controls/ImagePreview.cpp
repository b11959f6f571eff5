#include "controls/ImagePreview.h"

#include "companion/VbText.h"
#include "frame/Error.h"
#include "frame/Platform.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cmath>

namespace tq7 {

namespace {
constexpr int32_t PermissionDenied = 70;
const QChar kSep = QLatin1Char('/');

bool endsWithSeparator(const QString& s) { return s.endsWith(kSep) || s.endsWith(QLatin1Char('\\')); }
QString withoutLeadingSeparator(QString s) {
  if (s.startsWith(kSep) || s.startsWith(QLatin1Char('\\'))) s.remove(0, 1);
  return s;
}
// A relative folder as the store keeps it: a trailing separator unless it is empty.
QString asRelativeFolder(const QString& s) { return s.isEmpty() || endsWithSeparator(s) ? s : s + kSep; }

constexpr int32_t InvalidPropertyValue = 380;

// A picture refuses a size below zero: the step that asks for one fails and is passed over, and
// the picture keeps the size it had.
void setHeightStep(Widget& w, double h) {
  step([&] {
    if (h < 0) throw Error{InvalidPropertyValue, QStringLiteral("Invalid property value")};
    w.setHeight(h);
  });
}

bool sameFile(const QString& a, const QString& b) {
  const QFileInfo fa(a), fb(b);
  return fa.exists() && fb.exists() && fa.canonicalFilePath() == fb.canonicalFilePath();
}

// Copies a file over whatever stands at the destination, failing as the file layer fails.
void copyFile(const QString& from, const QString& to) {
  if (sameFile(from, to)) return;  // a file copied onto itself is already there
  if (!QFileInfo::exists(from)) throw Error{err::FileNotFound, QStringLiteral("File not found")};
  if (!QFileInfo(to).absoluteDir().exists()) throw Error{err::PathNotFound, QStringLiteral("Path not found")};
  if (QFileInfo::exists(to) && !QFile::remove(to)) throw Error{PermissionDenied, QStringLiteral("Permission denied")};
  if (!QFile::copy(from, to)) throw Error{PermissionDenied, QStringLiteral("Permission denied")};
}
}  // namespace

ImagePreview::ImagePreview() : Control(QStringLiteral("ImagePreview")) {
  for (Widget* w : std::initializer_list<Widget*>{&Image1, &lblFilename, &lblSize, &mnuViewImage, &mnuChangeImage,
                                                 &mnuChangeImageBOS, &mnuClearImage})
    addChild(*w);
  caption_ = QStringLiteral("โปรดเลือกรูปภาพ");
  Image1.setToolTipText(QStringLiteral("เม้าส์ปุ่มขวาแสดงเมนู"));
  Image1.setBackColor(backColor_);
  setLabelText(lblFilename, QStringLiteral("<None>"));
  setLabelText(lblSize, QStringLiteral("0 x 0 x 0 bit"));
  lblFilename.setHeight(240);
  lblSize.setHeight(225);
  for (Label* l : {&lblFilename, &lblSize}) {
    l->setAlignment(2);
    l->setBackColor(labelBackColor_);
  }
  mnuViewImage.setCaption(QStringLiteral("แสดงรูปภาพขนาดจริง"));
  mnuChangeImage.setCaption(QStringLiteral("เปลี่ยนรูปภาพ"));
  mnuChangeImageBOS.setCaption(QStringLiteral("เปลี่ยนรูปภาพ (แบบเดิม)"));
  mnuClearImage.setCaption(QStringLiteral("ยกเลิกรูปภาพ"));
  // The menu is a pop-up: its items are never on the control itself.
  for (Menu* m : {&mnuViewImage, &mnuChangeImage, &mnuChangeImageBOS, &mnuClearImage}) m->setVisible(false);
  mnuViewImage.onClick = [this] { mnuViewImage_Click(); };
  mnuChangeImage.onClick = [this] { mnuChangeImage_Click(); };
  mnuChangeImageBOS.onClick = [this] { mnuChangeImageBOS_Click(); };
  mnuClearImage.onClick = [this] { mnuClearImage_Click(); };
}

ImagePreview::~ImagePreview() = default;

// Labels size themselves to their text, as auto-size labels do.
void ImagePreview::setLabelText(Label& label, const QString& text) {
  label.setCaption(text);
  double w = 0;
  step([&] { w = platform().textWidth(label.Font(), text); });
  label.setWidth(w);
}

QString ImagePreview::fullPath() const {
  return imageFolder_.isEmpty() ? fileName_ : imageFolder_ + kSep + fileName_;
}

void ImagePreview::raiseChange() {
  if (listener_) listener_->Change();
}

// ---- Properties ------------------------------------------------------------------------------

void ImagePreview::setBackColor(Colour c) {
  backColor_ = c;
  Image1.setBackColor(c);
  notifyChanged();
}

void ImagePreview::setLabelBackColor(Colour c) {
  labelBackColor_ = c;
  lblFilename.setBackColor(c);
  lblSize.setBackColor(c);
}

void ImagePreview::setFileName(const QString& f) {
  fileName_ = f;
  setLabelText(lblFilename, f);
  resizeStep();
}

void ImagePreview::setPreview(bool v) { preview_ = v; resizeStep(); }
void ImagePreview::setKeepRatio(bool v) { keepRatio_ = v; resizeStep(); }
void ImagePreview::setEditStatus(bool v) { editStatus_ = v; resizeStep(); }
void ImagePreview::setChangeFolder(bool v) { changeFolder_ = v; resizeStep(); }
void ImagePreview::setShowFilename(bool v) { showFilename_ = v; resizeStep(); }
void ImagePreview::setShowSize(bool v) { showSize_ = v; resizeStep(); }
void ImagePreview::setShowBorder(bool v) { showBorder_ = v; resizeStep(); }
void ImagePreview::setZoom(bool v) { zoom_ = v; resizeStep(); }

void ImagePreview::ReadProperties(const PropertyBag& bag) {
  step([&] { setBackColor(Colour(bag.ReadProperty(QStringLiteral("BackColor"), backColor_).toUInt())); });
  step([&] { setLabelBackColor(Colour(bag.ReadProperty(QStringLiteral("LabelBackColor"), labelBackColor_).toUInt())); });
  caption_ = bag.ReadProperty(QStringLiteral("Caption"), QStringLiteral("โปรดเลือกรูปภาพ")).toString();
  fileName_ = bag.ReadProperty(QStringLiteral("FileName"), QString()).toString();
  imageFolder_ = bag.ReadProperty(QStringLiteral("ImageFolder"), QString()).toString();
  imageWidth_ = bag.ReadProperty(QStringLiteral("Width"), 0).toInt();
  imageHeight_ = bag.ReadProperty(QStringLiteral("Height"), 0).toInt();
  imageDepth_ = int16_t(bag.ReadProperty(QStringLiteral("Depth"), 0).toInt());
  preview_ = bag.ReadProperty(QStringLiteral("Preview"), false).toBool();
  keepRatio_ = bag.ReadProperty(QStringLiteral("KeepRatio"), true).toBool();
  editStatus_ = bag.ReadProperty(QStringLiteral("EditStatus"), false).toBool();
  changeFolder_ = bag.ReadProperty(QStringLiteral("ChangeFolder"), true).toBool();
  showFilename_ = bag.ReadProperty(QStringLiteral("ShowFileName"), true).toBool();
  showSize_ = bag.ReadProperty(QStringLiteral("ShowSize"), true).toBool();
  showBorder_ = bag.ReadProperty(QStringLiteral("ShowBorder"), true).toBool();
  zoom_ = bag.ReadProperty(QStringLiteral("Zoom"), true).toBool();
  setLabelText(lblFilename, fileName_);
  resizeStep();
}

void ImagePreview::WriteProperties(PropertyBag& bag) const {
  bag.WriteProperty(QStringLiteral("BackColor"), backColor_);
  bag.WriteProperty(QStringLiteral("LabelBackColor"), labelBackColor_);
  bag.WriteProperty(QStringLiteral("Caption"), caption_);
  bag.WriteProperty(QStringLiteral("FileName"), fileName_);
  bag.WriteProperty(QStringLiteral("ImageFolder"), imageFolder_);
  bag.WriteProperty(QStringLiteral("Width"), imageWidth_);
  bag.WriteProperty(QStringLiteral("Height"), imageHeight_);
  bag.WriteProperty(QStringLiteral("Depth"), imageDepth_);
  bag.WriteProperty(QStringLiteral("Preview"), preview_);
  bag.WriteProperty(QStringLiteral("KeepRatio"), keepRatio_);
  bag.WriteProperty(QStringLiteral("EditStatus"), editStatus_);
  bag.WriteProperty(QStringLiteral("ChangeFolder"), changeFolder_);
  bag.WriteProperty(QStringLiteral("ShowFileName"), showFilename_);
  bag.WriteProperty(QStringLiteral("ShowSize"), showSize_);
  bag.WriteProperty(QStringLiteral("ShowBorder"), showBorder_);
  bag.WriteProperty(QStringLiteral("Zoom"), zoom_);
}

// ---- Layout and redraw -------------------------------------------------------------------------

void ImagePreview::onResize() { resizeStep(); }

void ImagePreview::resizeStep() {
  const double W = Width(), H = Height();
  Image1.Move(0, 0, W, H);
  lblSize.setVisible(showSize_);
  image1Border_ = showBorder_;
  if (showSize_) {
    setHeightStep(Image1, Image1.Height() - 225);
    lblSize.setTop(H - 225);
  }
  lblFilename.setVisible(showFilename_);
  if (showFilename_) {
    setHeightStep(Image1, Image1.Height() - 240);
    lblFilename.setTop(H - (lblSize.Visible() ? 465 : 225));
  }
  centreLabels();
  ImagePreview_();
}

void ImagePreview::centreLabels() {
  lblFilename.setLeft(Width() / 2 - lblFilename.Width() / 2);
  lblSize.setLeft(Width() / 2 - lblSize.Width() / 2);
}

void ImagePreview::ImagePreview_() {
  Image1.setPicture(QImage());
  // The frame is taken once, each measure while it is still 0, and kept for the control's life.
  if (frameW_ == 0) frameW_ = Image1.Width();
  if (frameH_ == 0) frameH_ = Image1.Height();
  if (frameL_ == 0) frameL_ = Image1.Left();
  if (frameT_ == 0) frameT_ = Image1.Top();
  const double cx = std::floor(frameL_ + frameW_ / 2), cy = std::floor(frameT_ + frameH_ / 2);

  const QString path = fullPath();
  setLabelText(lblSize, QString());
  bool exists = false;
  step([&] { exists = QFileInfo(path).isFile(); });
  if (!exists) {
    Image1.setPicture(QImage());
    notifyChanged();
    return;
  }
  step([&] { info_.ReadImageInfo(path); });
  if (preview_) {
    // The picture loader of old read no PNG: such a file shows its size line only.
    if (path.endsWith(QStringLiteral(".PNG"), Qt::CaseInsensitive))
      Image1.setPicture(QImage());
    else
      step([&] { Image1.setPicture(QImage(path)); });
  }
  const int32_t w = info_.Width(), h = info_.Height();
  if (w > 0 && h > 0)
    setLabelText(lblSize, QString::number(w) + QStringLiteral(" x ") + QString::number(h) + QStringLiteral(" x ") +
                              QString::number(info_.Depth()) + QStringLiteral("bit"));
  imageWidth_ = w;
  imageHeight_ = h;
  imageDepth_ = info_.Depth();
  if (keepRatio_ && w > 0 && h > 0 && frameW_ > 0 && frameH_ > 0) {
    // Image pixels against frame twips: a small picture is enlarged to the frame as well.
    const double rw = double(w) / frameW_, rh = double(h) / frameH_;
    const double r = rh > rw ? rh : rw;
    Image1.setWidth(std::floor(w / r));
    Image1.setHeight(std::floor(h / r));
  } else {
    Image1.setWidth(frameW_);
    Image1.setHeight(frameH_);
  }
  Image1.setLeft(cx - Image1.Width() / 2);
  Image1.setTop(cy - Image1.Height() / 2);
  centreLabels();
  notifyChanged();
}

// ---- Change, clear, view -----------------------------------------------------------------------

void ImagePreview::ChangeImage(bool modern) {
  if (!editStatus_) {
    platform().messageBox(QStringLiteral("ไม่สามารถเปลี่ยนภาพขณะนี้ได้"));
    return;
  }
  // One handler for the whole change: a failure ends it with the error's text.
  try {
    QString S;
    if (imageFolder_.isEmpty())
      S = fileName_;
    else if (!fileName_.isEmpty())
      S = imageFolder_ + kSep + fileName_;
    else
      S = imageFolder_;
    files_.LanguageID = LanguageID();
    const QString C = files_.OpenFileDialog(S, filter_, changeFolder_, modern);
    if (C.isEmpty() || C == S) return;
    const QString cFolder = FileHelper::FolderOf(C), cName = FileHelper::FileNameOf(C);

    if (imageFolder_.isEmpty()) {
      // No store: the file stays where it is. Its folder keeps its root, as a drive would.
      const QString R = asRelativeFolder(cFolder);
      if (QFileInfo::exists(C)) copyFile(C, R + cName);
      fileName_ = R + cName;
      setLabelText(lblFilename, fileName_);
      platform().messageBox(vb::Left(C, int32_t(imageFolder_.size())));
    } else if (C.toUpper().startsWith(imageFolder_.toUpper())) {
      // Already in the store.
      if (cFolder.toUpper() == imageFolder_.toUpper()) {
        fileName_ = cName;
      } else {
        const QString R = asRelativeFolder(withoutLeadingSeparator(cFolder.mid(imageFolder_.size())));
        fileName_ = R + cName;
        if (QFileInfo::exists(C)) copyFile(C, imageFolder_ + kSep + R + cName);
      }
      setLabelText(lblFilename, fileName_);
    } else {
      if (!QFileInfo(imageFolder_).isDir()) {
        platform().messageBox(
            QStringLiteral("ไม่พบแหล่งจัดเก็บข้อมูลที่กำหนด กรุณาตรวจสอบการกำหนดค่าระบบอีกครั้ง"));
        return;
      }
      const QString question = QStringLiteral("ไฟล์รูปภาพ ") + C +
                               QStringLiteral(" ไม่ได้จัดเก็บในโฟล์เดอร์ที่กำหนด") + QStringLiteral("\r\n") +
                               QStringLiteral("คุณต้องการจะ Copy มายังแหล่งจัดเก็บรูปภาพหรือไม่ ?");
      if (!platform().question(question, QStringLiteral("นำเข้าสู่ระบบรูปภาพ"), true)) return;
      QString folder = files_.FolderDialog(QStringLiteral("เลือกหมวดหมู่ ที่จัดเก็บ"), imageFolder_);
      if (folder.isEmpty()) folder = imageFolder_;
      const QString R = asRelativeFolder(withoutLeadingSeparator(vb::Replace(folder, imageFolder_, QString())));
      if (QFileInfo::exists(C)) copyFile(C, imageFolder_ + kSep + R + cName);
      fileName_ = R + cName;
      setLabelText(lblFilename, fileName_);
    }
    resizeStep();
    raiseChange();
  } catch (const Error& e) {
    platform().messageBox(e.description);
  } catch (const std::exception& e) {
    platform().messageBox(QString::fromLocal8Bit(e.what()));
  }
}

void ImagePreview::mnuClearImage_Click() {
  if (!editStatus_) {
    platform().messageBox(QStringLiteral("ไม่สามารถเปลี่ยนภาพขณะนี้ได้"));
    return;
  }
  fileName_.clear();
  setLabelText(lblFilename, QString());
  resizeStep();
  raiseChange();
}

void ImagePreview::mnuViewImage_Click() {
  // The viewer's path always joins the two, store or not.
  const QString path = vb::Trim(imageFolder_ + kSep + fileName_);
  if (!QFileInfo(path).isFile()) return;
  if (!platform().openInViewer(path)) platform().messageBox(QStringLiteral("File not found"));
}

// ---- Input -------------------------------------------------------------------------------------

void ImagePreview::Image1_Click() {
  if (listener_) listener_->Click();
}

void ImagePreview::Image1_DblClick() {
  if (zoom_) mnuViewImage_Click();
}

void ImagePreview::Image1_MouseDown(int16_t Button, int16_t Shift, float X, float Y) {
  if (Button == vbRightButton && zoom_ && !disableRightClick_) {
    mnuChangeImage.setEnabled(editStatus_);
    mnuChangeImageBOS.setEnabled(editStatus_);
    mnuClearImage.setEnabled(editStatus_);
    if (onPopupMenu) onPopupMenu();
  }
  if (listener_) listener_->MouseDown(Button, Shift, X, Y);
}

void ImagePreview::Image1_MouseMove(int16_t Button, int16_t Shift, float X, float Y) {
  if (listener_) listener_->MouseMove(Button, Shift, X, Y);
}

void ImagePreview::Image1_MouseUp(int16_t Button, int16_t Shift, float X, float Y) {
  if (listener_) listener_->MouseUp(Button, Shift, X, Y);
}

void ImagePreview::UserControl_KeyDown(int16_t& KeyCode, int16_t& Shift) {
  if (listener_) listener_->KeyDown(KeyCode, Shift);
}

}  // namespace tq7
