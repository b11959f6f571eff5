// The ribbon page: the bar of a Thai trading company's desk application, with its tabs for the
// front desk, sales, stock and reports, categories with dialog launchers, buttons of one and two
// caption lines with drop marks, the three skins to choose from and a status line for each event.
#include "Pages.h"

#include "host/ACPRibbonWidget.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadioButton>
#include <QVBoxLayout>

namespace gallery {

namespace {

// The icons of the page, our own drawings: a coloured tile with a white sign, 24 pixels square so
// that two lines of Thai caption fit under them, drawn at twice the size with a device pixel ratio
// of 2, so the bar stays sharp on scaled screens. The signs are drawn on a 32-unit grid.
enum class Sign { Document, Folder, Printer, People, Search, Cash, Receipt, Box, Truck, Scale, Chart, Export, Gear, Calendar };

QImage drawIcon(Sign sign, QColor tile) {
  QImage img(48, 48, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  img.setDevicePixelRatio(2.0);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(0.75, 0.75);
  QLinearGradient g(0, 1, 0, 31);
  g.setColorAt(0, tile.lighter(135));
  g.setColorAt(1, tile.darker(115));
  QPainterPath tilePath;
  tilePath.addRoundedRect(QRectF(1.5, 1.5, 29, 29), 6, 6);
  p.fillPath(tilePath, g);
  p.setPen(QPen(tile.darker(150), 1));
  p.drawPath(tilePath);
  const QColor ink(255, 255, 255);
  p.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  p.setBrush(Qt::NoBrush);
  switch (sign) {
    case Sign::Document:
      p.drawPolygon(QPolygonF({QPointF(10, 7), QPointF(19, 7), QPointF(23, 11), QPointF(23, 25), QPointF(10, 25)}));
      for (int y : {13, 17, 21}) p.drawLine(QPointF(13, y), QPointF(20, y));
      break;
    case Sign::Folder:
      p.drawPolygon(QPolygonF({QPointF(7, 10), QPointF(13, 10), QPointF(15, 12), QPointF(25, 12), QPointF(25, 23), QPointF(7, 23)}));
      break;
    case Sign::Printer:
      p.drawRect(QRectF(11, 7, 10, 6));
      p.drawRoundedRect(QRectF(7, 13, 18, 8), 2, 2);
      p.drawRect(QRectF(11, 18, 10, 7));
      break;
    case Sign::People:
      p.drawEllipse(QPointF(13, 12), 3.5, 3.5);
      p.drawArc(QRectF(7, 17, 12, 10), 0, 180 * 16);
      p.drawEllipse(QPointF(21, 13), 2.5, 2.5);
      p.drawArc(QRectF(17, 18, 9, 8), 0, 180 * 16);
      break;
    case Sign::Search:
      p.drawEllipse(QPointF(14, 14), 6, 6);
      p.setPen(QPen(ink, 3, Qt::SolidLine, Qt::RoundCap));
      p.drawLine(QPointF(18.5, 18.5), QPointF(24, 24));
      break;
    case Sign::Cash:
      p.drawRoundedRect(QRectF(6, 10, 20, 12), 2, 2);
      p.drawEllipse(QPointF(16, 16), 3, 3);
      break;
    case Sign::Receipt:
      p.drawPolyline(QPolygonF({QPointF(10, 25), QPointF(10, 7), QPointF(22, 7), QPointF(22, 25), QPointF(19, 23),
                                QPointF(16, 25), QPointF(13, 23), QPointF(10, 25)}));
      for (int y : {12, 16}) p.drawLine(QPointF(13, y), QPointF(19, y));
      break;
    case Sign::Box:
      p.drawPolygon(QPolygonF({QPointF(16, 6), QPointF(25, 10), QPointF(25, 21), QPointF(16, 26), QPointF(7, 21), QPointF(7, 10)}));
      p.drawPolyline(QPolygonF({QPointF(7, 10), QPointF(16, 14), QPointF(25, 10)}));
      p.drawLine(QPointF(16, 14), QPointF(16, 26));
      break;
    case Sign::Truck:
      p.drawRect(QRectF(5, 10, 13, 10));
      p.drawPolyline(QPolygonF({QPointF(18, 13), QPointF(23, 13), QPointF(27, 17), QPointF(27, 20), QPointF(18, 20)}));
      p.drawEllipse(QPointF(10, 22), 2.2, 2.2);
      p.drawEllipse(QPointF(22, 22), 2.2, 2.2);
      break;
    case Sign::Scale:
      p.drawLine(QPointF(16, 7), QPointF(16, 24));
      p.drawLine(QPointF(8, 10), QPointF(24, 10));
      p.drawArc(QRectF(5, 12, 8, 6), 180 * 16, 180 * 16);
      p.drawArc(QRectF(19, 12, 8, 6), 180 * 16, 180 * 16);
      p.drawLine(QPointF(11, 25), QPointF(21, 25));
      break;
    case Sign::Chart:
      p.setBrush(ink);
      p.setPen(Qt::NoPen);
      p.drawRect(QRectF(8, 17, 4, 8));
      p.drawRect(QRectF(14, 11, 4, 14));
      p.drawRect(QRectF(20, 7, 4, 18));
      break;
    case Sign::Export:
      p.drawRect(QRectF(7, 9, 12, 15));
      p.drawLine(QPointF(14, 16), QPointF(26, 16));
      p.drawPolyline(QPolygonF({QPointF(22, 12), QPointF(26, 16), QPointF(22, 20)}));
      break;
    case Sign::Gear:
      p.drawEllipse(QPointF(16, 16), 7, 7);
      p.drawEllipse(QPointF(16, 16), 2.5, 2.5);
      for (int k = 0; k < 8; ++k) {
        p.save();
        p.translate(16, 16);
        p.rotate(k * 45);
        p.drawLine(QPointF(0, -7), QPointF(0, -10));
        p.restore();
      }
      break;
    case Sign::Calendar:
      p.drawRoundedRect(QRectF(7, 9, 18, 16), 2, 2);
      p.drawLine(QPointF(7, 14), QPointF(25, 14));
      p.drawLine(QPointF(12, 6), QPointF(12, 11));
      p.drawLine(QPointF(20, 6), QPointF(20, 11));
      break;
  }
  return img;
}

struct IconDef { Sign sign; QColor tile; };
const IconDef kIcons[] = {
    {Sign::Document, QColor(0x2e, 0x7d, 0xd2)}, {Sign::Folder, QColor(0xe0, 0x9b, 0x1a)},
    {Sign::Printer, QColor(0x55, 0x60, 0x70)},  {Sign::People, QColor(0x2e, 0x9e, 0x6a)},
    {Sign::Search, QColor(0x6a, 0x4c, 0xc0)},   {Sign::Cash, QColor(0x3c, 0xa0, 0x3c)},
    {Sign::Receipt, QColor(0xc0, 0x4b, 0x3a)},  {Sign::Box, QColor(0xb0, 0x7a, 0x3a)},
    {Sign::Truck, QColor(0x1f, 0x8a, 0xa8)},    {Sign::Scale, QColor(0x7a, 0x6a, 0x5a)},
    {Sign::Chart, QColor(0xd0, 0x5a, 0x20)},    {Sign::Export, QColor(0x20, 0x8a, 0x4a)},
    {Sign::Gear, QColor(0x60, 0x68, 0x78)},     {Sign::Calendar, QColor(0xc8, 0x3a, 0x5a)},
};
// Picture numbers in the image list, from 1.
enum Pic : int16_t { New = 1, Open, Print, Customer, Find, Pay, Receipt, Goods, Ship, Weigh, Chart, Export, Setup, Period };

std::shared_ptr<tq7::ImageList> pageImages() {
  auto list = std::make_shared<tq7::ImageList>();
  for (const IconDef& d : kIcons) list->ListImages().Add(drawIcon(d.sign, d.tile));
  return list;
}

// The bar as the application builds it: skin, images, tabs, categories, buttons, then Refresh.
void fillBar(tq7::ACPRibbon& r, int16_t theme) {
  r.setTheme(theme);
  r.setImageList(pageImages());
  r.AddTab(QStringLiteral("tabHome"), QStringLiteral("หน้าแรก"));
  r.AddTab(QStringLiteral("tabSales"), QStringLiteral("ขาย"));
  r.AddTab(QStringLiteral("tabStock"), QStringLiteral("คลังสินค้า"));
  r.AddTab(QStringLiteral("tabReports"), QStringLiteral("รายงาน"));
  r.AddTab(QStringLiteral("tabSetup"), QStringLiteral("ตั้งค่า"));

  r.AddCat(QStringLiteral("catDocs"), QStringLiteral("tabHome"), QStringLiteral("เอกสาร"), true);
  r.AddCat(QStringLiteral("catCustomers"), QStringLiteral("tabHome"), QStringLiteral("ลูกค้า"), true);
  r.AddCat(QStringLiteral("catMoney"), QStringLiteral("tabHome"), QStringLiteral("การเงิน"), false);
  r.AddCat(QStringLiteral("catGoods"), QStringLiteral("tabHome"), QStringLiteral("สินค้า"), true);
  r.AddCat(QStringLiteral("catDay"), QStringLiteral("tabHome"), QStringLiteral("วันทำการ"), false);
  r.AddCat(QStringLiteral("catOrders"), QStringLiteral("tabSales"), QStringLiteral("การขาย"), true);
  r.AddCat(QStringLiteral("catTax"), QStringLiteral("tabSales"), QStringLiteral("ภาษี"), false);
  r.AddCat(QStringLiteral("catMoves"), QStringLiteral("tabStock"), QStringLiteral("เคลื่อนไหว"), true);
  r.AddCat(QStringLiteral("catCount"), QStringLiteral("tabStock"), QStringLiteral("ตรวจนับ"), false);
  r.AddCat(QStringLiteral("catDaily"), QStringLiteral("tabReports"), QStringLiteral("ยอดขาย"), true);
  r.AddCat(QStringLiteral("catOut"), QStringLiteral("tabReports"), QStringLiteral("ส่งออก"), false);
  r.AddCat(QStringLiteral("catSystem"), QStringLiteral("tabSetup"), QStringLiteral("ระบบ"), true);

  auto add = [&](const char* id, const char* cat, const char* caption, Pic pic, bool more = false, const char* tip = "") {
    r.AddButton(QString::fromUtf8(id), QString::fromUtf8(cat), QString::fromUtf8(caption), pic, more, QString::fromUtf8(tip));
  };
  add("butNew", "catDocs", "ใหม่", New, false, "สร้างเอกสารใหม่");
  add("butOpen", "catDocs", "เปิด", Open);
  add("butPrint", "catDocs", "พิมพ์", Print, true, "พิมพ์เอกสาร / เลือกเครื่องพิมพ์");
  add("butFindCustomer", "catCustomers", "ค้นหา\r\nลูกค้า", Find);
  add("butAddCustomer", "catCustomers", "เพิ่ม\r\nลูกค้า", Customer);
  add("butPay", "catMoney", "รับชำระ", Pay, true);
  add("butReceipt", "catMoney", "ใบเสร็จ", Receipt);
  add("butStockIn", "catGoods", "รับเข้า", Goods);
  add("butShip", "catGoods", "จัดส่ง", Ship, true);
  add("butWeighHome", "catGoods", "ชั่ง\r\nน้ำหนัก", Weigh);
  add("butClose", "catDay", "ปิดยอด\r\nประจำวัน", Period);
  add("butTodayChart", "catDay", "ยอดวันนี้", Chart);
  add("butQuote", "catOrders", "ใบเสนอ\r\nราคา", New);
  add("butOrder", "catOrders", "ใบสั่งขาย", Receipt, true);
  add("butDeliver", "catOrders", "ส่งสินค้า", Ship);
  add("butInvoice", "catTax", "ใบกำกับ\r\nภาษี", Receipt);
  add("butReceive", "catMoves", "รับสินค้า", Goods);
  add("butTransfer", "catMoves", "โอนย้าย", Ship, true);
  add("butWeigh", "catCount", "ชั่งน้ำหนัก", Weigh);
  add("butCount", "catCount", "ตรวจนับ\r\nสต็อก", Goods);
  add("butDaily", "catDaily", "ยอดขาย\r\nรายวัน", Chart);
  add("butMonthly", "catDaily", "สรุป\r\nรายเดือน", Period);
  add("butExport", "catOut", "Excel", Export, true, "ส่งออกเป็นสมุดงาน Excel");
  add("butCsv", "catOut", "ไฟล์ CSV", Open);
  add("butSetup", "catSystem", "ตัวเลือก", Setup);
  r.Refresh();
}

class RibbonPage : public QWidget {
 public:
  explicit RibbonPage(QWidget* parent) : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    slot_ = new QVBoxLayout;
    slot_->setContentsMargins(0, 0, 0, 0);
    layout->addLayout(slot_);

    auto* body = new QWidget(this);
    body->setAutoFillBackground(true);
    QPalette pal = body->palette();
    pal.setColor(QPalette::Window, QColor(0xfa, 0xfa, 0xfa));
    body->setPalette(pal);
    auto* bodyLayout = new QVBoxLayout(body);
    bodyLayout->setContentsMargins(16, 12, 16, 12);
    auto* skins = new QHBoxLayout;
    skins->addWidget(new QLabel(QStringLiteral("รูปแบบ / Skin:"), body));
    auto* group = new QButtonGroup(this);
    const char* names[] = {"ดำ / Black", "น้ำเงิน / Blue", "เงิน / Silver"};
    for (int t = 0; t < 3; ++t) {
      auto* option = new QRadioButton(QString::fromUtf8(names[t]), body);
      option->setObjectName(QStringLiteral("optSkin%1").arg(t));
      group->addButton(option, t);
      skins->addWidget(option);
    }
    skins->addStretch(1);
    bodyLayout->addLayout(skins);
    status_ = new QLabel(body);
    status_->setObjectName(QStringLiteral("lblRibbonStatus"));
    bodyLayout->addWidget(status_);
    auto* note = new QLabel(QStringLiteral("ชี้เมาส์ที่ปุ่มเพื่อดูกรอบ กดค้างเพื่อดูปุ่มที่ถูกกด คลิกแท็บเพื่อเปลี่ยนกลุ่มคำสั่ง และคลิกลูกศรมุมขวาล่างของกลุ่มเพื่อเปิดหน้าต่างของกลุ่ม\n"
                                           "Hover a button for its frame, hold it for the pressed look, click a tab to change the commands, and the corner arrow of a group for its dialog."),
                            body);
    note->setWordWrap(true);
    bodyLayout->addWidget(note);
    bodyLayout->addStretch(1);
    layout->addWidget(body, 1);

    connect(group, &QButtonGroup::idClicked, this, [this](int id) { build(int16_t(id)); });
    group->button(0)->setChecked(true);
    build(0);
  }

 private:
  // A new bar for each skin: the tab pieces a bar has laid out keep the pictures they were made with.
  void build(int16_t theme) {
    delete ribbon_;
    ribbon_ = new tq7::ACPRibbonWidget(this);
    ribbon_->setObjectName(QStringLiteral("rbnMain"));
    slot_->addWidget(ribbon_);
    fillBar(ribbon_->ribbon(), theme);
    auto show = [this](const char* what) {
      return [this, what](const QString& id, const QString& caption) {
        QString oneLine = caption;
        oneLine.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
        status_->setText(QStringLiteral("%1: %2 \"%3\"").arg(QString::fromLatin1(what), id, oneLine));
      };
    };
    connect(ribbon_, &tq7::ACPRibbonWidget::tabClick, this, show("TabClick"));
    connect(ribbon_, &tq7::ACPRibbonWidget::catClick, this, show("CatClick"));
    connect(ribbon_, &tq7::ACPRibbonWidget::buttonClick, this, show("ButtonClick"));
    status_->setText(QStringLiteral("Theme = %1").arg(ribbon_->ribbon().Theme()));
  }

  QVBoxLayout* slot_ = nullptr;
  tq7::ACPRibbonWidget* ribbon_ = nullptr;
  QLabel* status_ = nullptr;
};

}  // namespace

QWidget* makeRibbonPage(QWidget* parent) {
  auto* page = new RibbonPage(parent);
  page->setObjectName(QStringLiteral("pgRibbon"));
  return page;
}

}  // namespace gallery

// ---- Screenshots ---------------------------------------------------------------------------------

#include <QApplication>
#include <QMouseEvent>

namespace gallery {

namespace {

void settleEvents() {
  for (int i = 0; i < 5; ++i) QApplication::processEvents();
}

void mouse(QWidget* w, QEvent::Type type, QPoint at, Qt::MouseButton button) {
  const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::MouseButtons(button) : Qt::NoButton;
  QMouseEvent e(type, QPointF(at), QPointF(w->mapToGlobal(at)), type == QEvent::MouseMove ? Qt::NoButton : button, held,
                Qt::NoModifier);
  QApplication::sendEvent(w, &e);
  settleEvents();
}

// The centre of the hit area of the button or tab with the id.
QPoint centreOf(tq7::ACPRibbonWidget* w, tq7::Piece hit, const QString& id) {
  const tq7::ACPRibbon& r = w->ribbon();
  for (int i = 0; i <= r.pieces().ubound(hit); ++i) {
    if (hit == tq7::Piece::TabMouse ? r.TabID(i) == id : r.piece(hit, i)->Tag == id) return w->pieceRect(hit, i).center();
  }
  return {};
}

}  // namespace

void ribbonScreenshots(QWidget* page, const std::function<void(const QString&)>& shoot) {
  const QString scaled = page->devicePixelRatioF() > 1.0 ? QStringLiteral("-2x") : QString();
  const char* skins[] = {"black", "blue", "silver"};
  for (int t = 0; t < 3; ++t) {
    if (auto* option = page->findChild<QRadioButton*>(QStringLiteral("optSkin%1").arg(t))) option->click();
    settleEvents();
    auto* w = page->findChild<tq7::ACPRibbonWidget*>(QStringLiteral("rbnMain"));
    if (!w) return;
    const QString name = QStringLiteral("ribbon-") + QString::fromLatin1(skins[t]);
    shoot(name + scaled + QStringLiteral(".png"));
    const QPoint print = centreOf(w, tq7::Piece::ButMouse, QStringLiteral("butPrint"));
    mouse(w, QEvent::MouseMove, print, Qt::NoButton);
    shoot(name + QStringLiteral("-hover") + scaled + QStringLiteral(".png"));
    mouse(w, QEvent::MouseButtonPress, print, Qt::LeftButton);
    shoot(name + QStringLiteral("-pressed") + scaled + QStringLiteral(".png"));
    mouse(w, QEvent::MouseButtonRelease, print, Qt::LeftButton);
    // Another tab, with the mouse on one of its two-line buttons.
    mouse(w, QEvent::MouseButtonPress, centreOf(w, tq7::Piece::TabMouse, QStringLiteral("tabReports")), Qt::LeftButton);
    mouse(w, QEvent::MouseButtonRelease, centreOf(w, tq7::Piece::TabMouse, QStringLiteral("tabReports")), Qt::LeftButton);
    mouse(w, QEvent::MouseMove, centreOf(w, tq7::Piece::ButMouse, QStringLiteral("butMonthly")), Qt::NoButton);
    shoot(name + QStringLiteral("-reports") + scaled + QStringLiteral(".png"));
    mouse(w, QEvent::MouseMove, QPoint(w->width() - 10, w->height() - 8), Qt::NoButton);
  }
  if (auto* option = page->findChild<QRadioButton*>(QStringLiteral("optSkin0"))) option->click();
  settleEvents();
}

}  // namespace gallery
