// The companion controls' page: a product card whose picture comes from a sample image store
// that the gallery draws for itself, labels at several angles over a patterned panel, a page
// navigator and a menu of buttons.
#include "Pages.h"

#include "host/GridButtonWidget.h"
#include "host/ImagePreviewWidget.h"
#include "host/PageCollectionWidget.h"
#include "host/RotLabelWidget.h"
#include "host/frmActualWindow.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPushButton>
#include <QVBoxLayout>

namespace gallery {
namespace {

QString u(const char* s) { return QString::fromUtf8(s); }

// A bag of rice on a shelf, drawn rather than shipped.
QImage drawRiceBag(int w, int h) {
  QImage img(w, h, QImage::Format_RGB32);
  img.fill(QColor(238, 232, 214));
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.fillRect(QRect(0, h * 3 / 4, w, h / 4), QColor(150, 110, 70));
  QPainterPath bag;
  bag.moveTo(w * 0.28, h * 0.2);
  bag.lineTo(w * 0.72, h * 0.2);
  bag.quadTo(w * 0.82, h * 0.5, w * 0.76, h * 0.8);
  bag.lineTo(w * 0.24, h * 0.8);
  bag.quadTo(w * 0.18, h * 0.5, w * 0.28, h * 0.2);
  p.setPen(QPen(QColor(120, 90, 40), 3));
  p.setBrush(QColor(250, 246, 230));
  p.drawPath(bag);
  p.setBrush(QColor(30, 120, 60));
  p.setPen(Qt::NoPen);
  p.drawRoundedRect(QRectF(w * 0.25, h * 0.42, w * 0.5, h * 0.2), 6, 6);
  p.setPen(Qt::white);
  QFont f = p.font();
  f.setPixelSize(int(h * 0.08));
  f.setBold(true);
  p.setFont(f);
  p.drawText(QRectF(w * 0.25, h * 0.42, w * 0.5, h * 0.2), Qt::AlignCenter, u("ข้าวหอม 5 กก."));
  return img;
}

// A bottle of fish sauce.
QImage drawBottle(int w, int h) {
  QImage img(w, h, QImage::Format_RGB32);
  img.fill(QColor(220, 236, 246));
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.setBrush(QColor(150, 70, 20));
  p.setPen(QPen(QColor(90, 40, 10), 2));
  p.drawRoundedRect(QRectF(w * 0.35, h * 0.3, w * 0.3, h * 0.6), 12, 12);
  p.drawRect(QRectF(w * 0.44, h * 0.12, w * 0.12, h * 0.2));
  p.setBrush(QColor(250, 210, 60));
  p.drawRect(QRectF(w * 0.37, h * 0.5, w * 0.26, h * 0.18));
  return img;
}

// The sample store: folders of pictures in the formats the header reader knows.
QString makeImageStore(const QString& dataFolder) {
  const QString store = dataFolder + QStringLiteral("/images");
  QDir().mkpath(store + QStringLiteral("/food"));
  QDir().mkpath(store + QStringLiteral("/sauce"));
  const QString rice = store + QStringLiteral("/food/rice-5kg.jpg");
  if (!QFileInfo::exists(rice)) drawRiceBag(480, 360).save(rice, "JPEG", 90);
  const QString bottle = store + QStringLiteral("/sauce/fish-sauce.bmp");
  if (!QFileInfo::exists(bottle)) drawBottle(240, 320).save(bottle, "BMP");
  return store;
}

// A panel with a tiled pattern: the rotated labels show it between their letters.
class PatternPanel : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    for (int y = 0; y < height(); y += 16)
      for (int x = 0; x < width(); x += 16)
        p.fillRect(x, y, 16, 16, ((x + y) / 16) % 2 ? QColor(200, 225, 245) : QColor(245, 240, 215));
  }
};

tq7::RotLabelWidget* rotated(QWidget* parent, const QRect& geometry, const char* caption, float angle, int16_t point,
                             tq7::Colour colour) {
  auto* w = new tq7::RotLabelWidget(parent);
  w->setGeometry(geometry);
  tq7::RotLabel& l = w->label();
  tq7::Font f;
  f.Name = QStringLiteral("Tahoma");
  f.Size = 16;
  f.Bold = true;
  l.setFont(f);
  l.setCaption(u(caption));
  l.setForeColor(colour);
  l.setRotationPoint(point);
  l.setAngle(angle);
  return w;
}

}  // namespace

QWidget* makeCompanionPage(const QString& folder, QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* grid = new QGridLayout(page);
  const QString store = makeImageStore(folder);

  // The product card: the picture from the store with its file name and size under it.
  auto* card = new QGroupBox(u("สินค้า / Product card"), page);
  auto* cardLayout = new QHBoxLayout(card);
  auto* picture = new tq7::ImagePreviewWidget(card);
  picture->setObjectName(QStringLiteral("imgProduct"));
  picture->setFixedSize(260, 231);
  tq7::ImagePreview& p = picture->preview();
  p.setImageFolder(store);
  p.setPreview(true);
  p.setEditStatus(true);
  p.setBackColor(tq7::rgb(255, 255, 255));
  p.setFileName(QStringLiteral("food/rice-5kg.jpg"));
  cardLayout->addWidget(picture);
  auto* facts = new QVBoxLayout;
  facts->addWidget(new QLabel(u("รหัส: RC-005"), card));
  facts->addWidget(new QLabel(u("ชื่อ: ข้าวหอมมะลิ 5 กก."), card));
  facts->addWidget(new QLabel(u("ราคา: 245.00 บาท"), card));
  auto* change = new QPushButton(u("เปลี่ยนรูปภาพ..."), card);
  auto* clear = new QPushButton(u("ยกเลิกรูปภาพ"), card);
  auto* actual = new QPushButton(u("ขนาดจริง 1:1"), card);
  QObject::connect(change, &QPushButton::clicked, picture, [picture] { picture->preview().ChangeImage(true); });
  QObject::connect(clear, &QPushButton::clicked, picture, [picture] { picture->preview().mnuClearImage_Click(); });
  auto* window = new tq7::frmActualWindow(page);
  window->setObjectName(QStringLiteral("frmActual"));
  QObject::connect(actual, &QPushButton::clicked, picture, [picture, window] {
    if (!picture->preview().Picture().isNull()) window->showPicture(picture->preview().Picture());
  });
  auto* changed = new QLabel(card);
  QObject::connect(picture, &tq7::ImagePreviewWidget::change, changed,
                   [changed, picture] { changed->setText(u("เปลี่ยนเป็น: ") + picture->preview().FileName()); });
  for (QWidget* w : {static_cast<QWidget*>(change), static_cast<QWidget*>(clear), static_cast<QWidget*>(actual),
                     static_cast<QWidget*>(changed)})
    facts->addWidget(w);
  facts->addStretch();
  cardLayout->addLayout(facts);
  grid->addWidget(card, 0, 0);

  // Labels at several angles over a pattern.
  auto* labels = new QGroupBox(u("ป้ายหมุน / Rotated labels"), page);
  auto* labelsLayout = new QVBoxLayout(labels);
  auto* panel = new PatternPanel(labels);
  panel->setFixedSize(420, 260);
  rotated(panel, QRect(0, 0, 420, 60), "แนวนอน 0°", 0, 5, tq7::rgb(20, 40, 160));
  rotated(panel, QRect(0, 40, 60, 220), "ขึ้น 90°", 90, 5, tq7::rgb(170, 20, 20));
  rotated(panel, QRect(360, 40, 60, 220), "ลง 270°", 270, 5, tq7::rgb(20, 120, 40));
  rotated(panel, QRect(70, 60, 220, 200), "เฉียง 45°", 45, 7, tq7::rgb(120, 40, 140));
  rotated(panel, QRect(200, 190, 160, 60), "กลับหัว 180°", 180, 5, tq7::rgb(0, 0, 0));
  labelsLayout->addWidget(panel);
  grid->addWidget(labels, 0, 1);

  // The page navigator of a browse view.
  auto* pagesBox = new QGroupBox(u("หน้า / Page navigator"), page);
  auto* pagesLayout = new QVBoxLayout(pagesBox);
  auto* pages = new tq7::PageCollectionWidget(pagesBox);
  pages->pages().txtCurrent.setText(QStringLiteral("3"));
  pages->pages().txtTotal.setText(QStringLiteral("12"));
  pages->setMinimumWidth(320);
  pagesLayout->addWidget(pages);
  pagesLayout->addStretch();
  grid->addWidget(pagesBox, 1, 0);

  // A menu of buttons; the digits 1 to 5 or Enter choose as well as the mouse.
  auto* menuBox = new QGroupBox(u("เมนูปุ่ม / Button grid"), page);
  auto* menuLayout = new QHBoxLayout(menuBox);
  auto* buttons = new tq7::GridButtonWidget(menuBox);
  buttons->setObjectName(QStringLiteral("mnuButtons"));
  buttons->setFixedSize(220, 150);
  tq7::GridButton& g = buttons->buttons();
  g.SetFirst(1, 5);
  const char* items[] = {"1 ขายสินค้า", "2 รับสินค้าเข้า", "3 ตรวจนับสต็อก", "4 รายงานประจำวัน", "5 ปิดรอบ"};
  for (int16_t r = 1; r <= 5; ++r) g.SetButton(u(items[r - 1]), 1, r);
  g.mfgData.setRowHeight(-1, 420);
  auto* chosen = new QLabel(u("เลือก: -"), menuBox);
  QObject::connect(buttons, &tq7::GridButtonWidget::buttonClicked, chosen,
                   [chosen](int32_t c, int32_t r, int16_t) { chosen->setText(u("เลือก: คอลัมน์ %1 แถว %2").arg(c).arg(r)); });
  menuLayout->addWidget(buttons);
  menuLayout->addWidget(chosen);
  grid->addWidget(menuBox, 1, 1);
  grid->setRowStretch(2, 1);
  grid->setColumnStretch(2, 1);
  return page;
}

}  // namespace gallery
