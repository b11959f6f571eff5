// The image preview on real files in a temporary image store: the picture and its size line,
// the layout quirks, and the change of the picture with its copy into the store.
#include "controls/ImagePreview.h"
#include "controls/frmActual.h"

#include "ImageSamples.h"
#include "frame/FakePlatform.h"

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct Recorder : ImagePreviewEvents {
  QStringList log;
  void Change() override { log << QStringLiteral("Change"); }
  void MouseDown(int16_t Button, int16_t, float, float) override { log << QStringLiteral("MouseDown %1").arg(Button); }
  void Click() override { log << QStringLiteral("Click"); }
};

struct ImagePreviewTest : ::testing::Test {
  FakePlatform fake;
  QTemporaryDir dir;
  QString store, outside;
  ImagePreview p;
  Recorder events;
  void SetUp() override {
    store = dir.filePath(QStringLiteral("store"));
    outside = dir.filePath(QStringLiteral("outside"));
    QDir().mkpath(store + QStringLiteral("/food"));
    QDir().mkpath(outside);
    p.setListener(&events);
    p.setSize(3000, 3465);  // a frame of 3000 x 3000 twips under two labels
  }
  // A real picture of w x h pixels.
  QString picture(const QString& path, int w, int h, const char* format) {
    QImage img(w, h, QImage::Format_RGB32);
    img.fill(QColor(10, 120, 200));
    EXPECT_TRUE(img.save(path, format));
    return path;
  }
};

}  // namespace

TEST_F(ImagePreviewTest, LaysTheLabelsOutUnderTheFrameAsTheSwitchesSay) {
  EXPECT_EQ(p.Caption(), QStringLiteral("โปรดเลือกรูปภาพ"));
  EXPECT_EQ(p.Image1.ToolTipText(), QStringLiteral("เม้าส์ปุ่มขวาแสดงเมนู"));
  EXPECT_EQ(p.Image1.Height(), 3465 - 225 - 240);
  EXPECT_EQ(p.lblSize.Top(), 3465 - 225);
  EXPECT_EQ(p.lblFilename.Top(), 3465 - 465);
  p.setShowSize(false);
  EXPECT_FALSE(p.lblSize.Visible());
  EXPECT_EQ(p.lblFilename.Top(), 3465 - 225);
  p.setShowFilename(false);
  EXPECT_FALSE(p.lblFilename.Visible());
  // The frame was taken at the first redraw and stays through every resize.
  EXPECT_EQ(p.frameWidth(), 3000);
  EXPECT_EQ(p.frameHeight(), 3000);
  p.setSize(6000, 6000);
  EXPECT_EQ(p.frameWidth(), 3000);
  EXPECT_EQ(p.frameHeight(), 3000);
  // A control too small for the labels keeps the picture's height at 0 rather than below it, so
  // the frame is still taken at the first real size.
  ImagePreview small;
  small.setFileName(QStringLiteral("x.jpg"));
  EXPECT_EQ(small.Image1.Height(), 0);
  EXPECT_EQ(small.frameHeight(), 0);
  small.setSize(1500, 1965);
  EXPECT_EQ(small.frameHeight(), 1500);
  // Labels are centred on the control.
  p.setShowFilename(true);
  p.setFileName(QStringLiteral("abc.jpg"));
  EXPECT_DOUBLE_EQ(p.lblFilename.Left(), 3000 - p.lblFilename.Width() / 2);
}

TEST_F(ImagePreviewTest, ShowsThePictureFromTheStoreWithItsSizeLine) {
  picture(store + QStringLiteral("/food/rice.bmp"), 200, 100, "BMP");
  picture(store + QStringLiteral("/tea.png"), 50, 80, "PNG");
  p.setImageFolder(store);
  p.setPreview(true);
  p.setFileName(QStringLiteral("food/rice.bmp"));
  EXPECT_EQ(p.lblFilename.Caption(), QStringLiteral("food/rice.bmp"));
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("200 x 100 x 24bit"));
  EXPECT_EQ(p.ImageWidth(), 200);
  EXPECT_EQ(p.ImageHeight(), 100);
  EXPECT_EQ(p.ImageDepth(), 24);
  EXPECT_EQ(p.Picture().size(), QSize(200, 100));
  // Pixels against twips: the picture fills the frame's width, keeps its proportions and is
  // centred on the frame.
  EXPECT_EQ(p.Image1.Width(), 3000);
  EXPECT_EQ(p.Image1.Height(), 1500);
  EXPECT_EQ(p.Image1.Left(), 0);
  EXPECT_EQ(p.Image1.Top(), 1500 - 750);

  // A PNG shows no picture, but its size line is right; its height decides the fit.
  p.setFileName(QStringLiteral("tea.png"));
  EXPECT_TRUE(p.Picture().isNull());
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("50 x 80 x 24bit"));
  EXPECT_EQ(p.Image1.Height(), 3000);
  EXPECT_EQ(p.Image1.Width(), 1874);  // 1874.99..., rounded down

  // Without Preview only the size line shows; without KeepRatio the picture takes the frame.
  p.setPreview(false);
  p.setKeepRatio(false);
  p.setFileName(QStringLiteral("food/rice.bmp"));
  EXPECT_TRUE(p.Picture().isNull());
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("200 x 100 x 24bit"));
  EXPECT_EQ(p.Image1.Width(), 3000);
  EXPECT_EQ(p.Image1.Height(), 3000);

  // A missing file: an empty frame, no size text, no event; the numbers of the last picture stay.
  p.setPreview(true);
  p.setFileName(QStringLiteral("food/gone.bmp"));
  EXPECT_TRUE(p.Picture().isNull());
  EXPECT_EQ(p.lblSize.Caption(), QString());
  EXPECT_EQ(p.ImageWidth(), 200);
  // A file that is no image: no size line, zeros.
  samples::write(store + QStringLiteral("/note.jpg"), QByteArray("not a picture"));
  p.setFileName(QStringLiteral("note.jpg"));
  EXPECT_EQ(p.lblSize.Caption(), QString());
  EXPECT_EQ(p.ImageWidth(), 0);
  EXPECT_TRUE(events.log.isEmpty());

  // No store: the name is a plain path.
  ImagePreview plain;
  plain.setSize(3000, 3465);
  plain.setFileName(store + QStringLiteral("/tea.png"));
  EXPECT_EQ(plain.lblSize.Caption(), QStringLiteral("50 x 80 x 24bit"));
}

TEST_F(ImagePreviewTest, ChangeRefusedOrAbandonedRaisesNothing) {
  p.setImageFolder(store);
  p.ChangeImage(true);
  EXPECT_EQ(fake.messages(), QStringList{QStringLiteral("ไม่สามารถเปลี่ยนภาพขณะนี้ได้")});
  p.mnuClearImage_Click();
  EXPECT_EQ(fake.messages().size(), 2);
  p.setEditStatus(true);
  // The dialog starts at the store, then at the picture; a cancel or the same file changes nothing.
  p.ChangeImage(true);
  p.setFileName(QStringLiteral("a.png"));
  fake.answers.push_back(store + QStringLiteral("/a.png"));
  p.ChangeImage(false);
  EXPECT_EQ(fake.count(QStringLiteral("openFileDialog: ")), 2);
  EXPECT_TRUE(fake.calls[fake.calls.size() - 1].endsWith(QStringLiteral(" | ") + store + QStringLiteral("/a.png")));
  EXPECT_EQ(p.FileName(), QStringLiteral("a.png"));
  EXPECT_TRUE(events.log.isEmpty());
  // A store that does not exist.
  p.setImageFolder(dir.filePath(QStringLiteral("no-store")));
  fake.answers.push_back(picture(outside + QStringLiteral("/x.bmp"), 4, 4, "BMP"));
  p.ChangeImage(true);
  EXPECT_EQ(fake.messages().last(),
            QStringLiteral("ไม่พบแหล่งจัดเก็บข้อมูลที่กำหนด กรุณาตรวจสอบการกำหนดค่าระบบอีกครั้ง"));
  EXPECT_TRUE(events.log.isEmpty());
}

TEST_F(ImagePreviewTest, AFileInTheStoreIsNamedRelativeToIt) {
  p.setImageFolder(store);
  p.setEditStatus(true);
  fake.answers.push_back(picture(store + QStringLiteral("/top.bmp"), 8, 8, "BMP"));
  p.ChangeImage(true);
  EXPECT_EQ(p.FileName(), QStringLiteral("top.bmp"));
  fake.answers.push_back(picture(store + QStringLiteral("/food/ข้าว หอม.bmp"), 8, 6, "BMP"));
  p.ChangeImage(true);
  EXPECT_EQ(p.FileName(), QStringLiteral("food/ข้าว หอม.bmp"));
  EXPECT_EQ(p.lblFilename.Caption(), QStringLiteral("food/ข้าว หอม.bmp"));
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("8 x 6 x 24bit"));
  EXPECT_EQ(events.log, QStringList({QStringLiteral("Change"), QStringLiteral("Change")}));
  EXPECT_TRUE(fake.messages().isEmpty());
  EXPECT_EQ(fake.count(QStringLiteral("question: ")), 0);
}

TEST_F(ImagePreviewTest, AFileOutsideIsCopiedIntoTheChosenFolderOfTheStore) {
  p.setImageFolder(store);
  p.setEditStatus(true);
  const QString chosen = picture(outside + QStringLiteral("/ขนม.bmp"), 12, 9, "BMP");
  // No: nothing happens.
  fake.answers = {chosen, false};
  p.ChangeImage(true);
  EXPECT_TRUE(events.log.isEmpty());
  EXPECT_EQ(fake.count(QStringLiteral("question: ไฟล์รูปภาพ ") + chosen +
                       QStringLiteral(" ไม่ได้จัดเก็บในโฟล์เดอร์ที่กำหนด\r\nคุณต้องการจะ Copy มายังแหล่งจัดเก็บรูปภาพหรือไม่ ? | นำเข้าสู่ระบบรูปภาพ")),
            1);
  // Yes, and the folder "food" of the store.
  fake.answers = {chosen, true, store + QStringLiteral("/food")};
  p.ChangeImage(true);
  EXPECT_EQ(fake.count(QStringLiteral("folderDialog: เลือกหมวดหมู่ ที่จัดเก็บ | ") + store), 1);
  EXPECT_EQ(p.FileName(), QStringLiteral("food/ขนม.bmp"));
  EXPECT_TRUE(QFile::exists(store + QStringLiteral("/food/ขนม.bmp")));
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("12 x 9 x 24bit"));
  EXPECT_EQ(events.log, QStringList{QStringLiteral("Change")});
  // A collision overwrites what the store held; an empty folder answer is the store itself.
  picture(store + QStringLiteral("/ขนม.bmp"), 2, 2, "BMP");
  fake.answers = {chosen, true, QString()};
  p.ChangeImage(true);
  EXPECT_EQ(p.FileName(), QStringLiteral("ขนม.bmp"));
  EXPECT_EQ(QImage(store + QStringLiteral("/ขนม.bmp")).size(), QSize(12, 9));
  EXPECT_EQ(events.log.size(), 2);
}

TEST_F(ImagePreviewTest, FailuresOfTheCopyEndTheChangeWithTheirText) {
  p.setImageFolder(store);
  p.setEditStatus(true);
  // The file vanishes between the choice and the copy: the name is taken, nothing is copied.
  const QString gone = picture(outside + QStringLiteral("/gone.bmp"), 3, 3, "BMP");
  fake.answers = {gone, true, store};
  fake.onShowModal = nullptr;
  QFile::remove(gone);
  p.ChangeImage(true);
  EXPECT_EQ(p.FileName(), QStringLiteral("gone.bmp"));
  EXPECT_FALSE(QFile::exists(store + QStringLiteral("/gone.bmp")));
  EXPECT_EQ(p.lblSize.Caption(), QString());
  EXPECT_EQ(events.log.size(), 1);

  // A copy that cannot be made: a folder stands where the file would go. The box shows the
  // failure's text, the name stays, and no event is raised.
  const QString chosen = picture(outside + QStringLiteral("/b.bmp"), 3, 3, "BMP");
  QDir().mkpath(store + QStringLiteral("/food/b.bmp"));
  fake.answers = {chosen, true, store + QStringLiteral("/food")};
  p.ChangeImage(true);
  EXPECT_EQ(fake.messages().last(), QStringLiteral("Permission denied"));
  EXPECT_EQ(p.FileName(), QStringLiteral("gone.bmp"));
  // A folder of the store that does not exist (typed into the folder dialog).
  fake.answers = {chosen, true, store + QStringLiteral("/drinks")};
  p.ChangeImage(true);
  EXPECT_EQ(fake.messages().last(), QStringLiteral("Path not found"));
  EXPECT_EQ(p.FileName(), QStringLiteral("gone.bmp"));
  EXPECT_EQ(events.log.size(), 1);
}

TEST_F(ImagePreviewTest, WithoutAStoreTheChosenFileIsKeptWhereItIs) {
  p.setEditStatus(true);
  const QString chosen = picture(outside + QStringLiteral("/plain.bmp"), 5, 7, "BMP");
  fake.answers = {chosen};
  p.ChangeImage(true);
  EXPECT_EQ(p.FileName(), chosen);
  EXPECT_EQ(p.lblSize.Caption(), QStringLiteral("5 x 7 x 24bit"));
  // The box shows as many characters of the choice as the (empty) store's name has.
  EXPECT_EQ(fake.messages(), QStringList{QString()});
  EXPECT_EQ(events.log, QStringList{QStringLiteral("Change")});
  p.mnuClearImage_Click();
  EXPECT_EQ(p.FileName(), QString());
  EXPECT_EQ(p.lblFilename.Caption(), QString());
  EXPECT_EQ(events.log.size(), 2);
}

TEST_F(ImagePreviewTest, TheRightButtonMenuAndTheViewer) {
  int popups = 0;
  p.onPopupMenu = [&] { ++popups; };
  p.Image1_MouseDown(ImagePreview::vbRightButton, 0, 10, 10);
  EXPECT_EQ(popups, 1);
  EXPECT_FALSE(p.mnuChangeImage.Enabled());
  EXPECT_FALSE(p.mnuClearImage.Enabled());
  EXPECT_TRUE(p.mnuViewImage.Enabled());
  p.setEditStatus(true);
  p.Image1_MouseDown(ImagePreview::vbRightButton, 0, 10, 10);
  EXPECT_TRUE(p.mnuChangeImageBOS.Enabled());
  p.setDisableRightClick(true);
  p.Image1_MouseDown(ImagePreview::vbRightButton, 0, 10, 10);
  p.setDisableRightClick(false);
  p.setZoom(false);
  p.Image1_MouseDown(ImagePreview::vbRightButton, 0, 10, 10);
  p.Image1_MouseDown(ImagePreview::vbLeftButton, 0, 10, 10);
  EXPECT_EQ(popups, 2);
  EXPECT_EQ(events.log.count(QStringLiteral("MouseDown 2")), 4);

  // A double click opens the picture in the system's viewer, only with Zoom and an existing file.
  picture(store + QStringLiteral("/v.bmp"), 2, 2, "BMP");
  p.setImageFolder(store);
  p.setFileName(QStringLiteral("v.bmp"));
  p.Image1_DblClick();
  EXPECT_EQ(fake.count(QStringLiteral("openInViewer")), 0);
  p.setZoom(true);
  p.Image1_DblClick();
  EXPECT_EQ(fake.count(QStringLiteral("openInViewer: ") + store + QStringLiteral("/v.bmp")), 1);
  fake.answers.push_back(false);
  p.mnuViewImage.Click();
  EXPECT_EQ(fake.messages(), QStringList{QStringLiteral("File not found")});
}

TEST_F(ImagePreviewTest, PersistsItsPropertiesUnderTheirNames) {
  p.setImageFolder(store);
  p.setFileName(QStringLiteral("x.jpg"));
  p.setShowFilename(false);
  p.setBackColor(rgb(1, 2, 3));
  PropertyBag bag;
  p.WriteProperties(bag);
  EXPECT_EQ(bag.names(), QStringList({"BackColor", "LabelBackColor", "Caption", "FileName", "ImageFolder", "Width",
                                      "Height", "Depth", "Preview", "KeepRatio", "EditStatus", "ChangeFolder",
                                      "ShowFileName", "ShowSize", "ShowBorder", "Zoom"}));
  ImagePreview q;
  q.ReadProperties(PropertyBag::fromJson(bag.toJson()));
  EXPECT_EQ(q.FileName(), QStringLiteral("x.jpg"));
  EXPECT_EQ(q.ImageFolder(), store);
  EXPECT_FALSE(q.ShowFilename());
  EXPECT_TRUE(q.KeepRatio());
  EXPECT_EQ(q.BackColor(), rgb(1, 2, 3));
}

TEST(frmActualTest, DragsThePictureAfterTheOpeningEventsAndClosesOnEscape) {
  frmActual f;
  QImage img(120, 80, QImage::Format_RGB32);
  img.fill(Qt::red);
  f.setPicture(img);
  EXPECT_EQ(f.Caption(), QStringLiteral("Image Preview Size 1:1"));
  EXPECT_EQ(f.Picture1.Width(), 1800);
  EXPECT_EQ(f.Width(), 1800);
  // The window's first two events are passed over: a press then stores nothing.
  f.Picture1_MouseDown(1, 30, 30);
  EXPECT_EQ(f.ScreenPointer(), frmActual::Pointer::Default);
  f.Form_MouseMove(0, 5, 5);
  f.Picture1_MouseDown(1, 300, 150);
  EXPECT_EQ(f.ScreenPointer(), frmActual::Pointer::SizeAll);
  f.Picture1_MouseMove(1, 450, 100);
  EXPECT_EQ(f.Picture1.Left(), 150);
  EXPECT_EQ(f.Picture1.Top(), -50);
  f.Picture1_MouseMove(0, 900, 900);  // no button: no move
  EXPECT_EQ(f.Picture1.Left(), 150);
  f.Picture1_MouseUp(1, 450, 100);
  EXPECT_EQ(f.ScreenPointer(), frmActual::Pointer::Default);
  f.Show();
  f.Form_KeyDown(13);
  EXPECT_TRUE(f.Visible());
  f.Form_KeyDown(27);
  EXPECT_FALSE(f.Visible());
}
