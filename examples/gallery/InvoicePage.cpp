// The invoice page: the lines of one invoice read from the sample database into a grid, with
// user 1's saved column format applied (the remark column hidden, the item name widened).
#include "Pages.h"

#include "SampleDatabase.h"
#include "host/GridEditorWidget.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace gallery {
namespace {

void declare(tq7::GridEditor& g) {
  constexpr int16_t left = 1, centre = 4, right = 7, title = 4;
  // Column, field, type, key, caption, display decimals, min con/value, max con/value, max length,
  // can duplicate, can blank, can edit, can delete alias, width, title align, row align, labels,
  // default value, default text, shell command, display field, decimals, list width, groups.
  g.SetFirst(0);
  g.addField3(1, QStringLiteral("LineID"), QStringLiteral("NUMBER"), 1, QStringLiteral("ลำดับ Line"), 0, {}, 0, {},
              0, 6, 0, 1, 0, 0, 950, title, right);
  g.addField3(2, QStringLiteral("ItemCode"), QStringLiteral("TEXT"), 0, QStringLiteral("รหัสสินค้า Item code"), 0,
              {}, 0, {}, 0, 20, 1, 1, 1, 0, 1750, title, left, {}, 0, {}, {}, {}, 0, 0,
              QStringLiteral("สินค้า Item"));
  g.addField3(3, QStringLiteral("ItemName"), QStringLiteral("TEXT"), 0, QStringLiteral("ชื่อสินค้า Item name"), 0,
              {}, 0, {}, 0, 60, 1, 0, 1, 0, 2600, title, left, {}, 0, {}, {}, {}, 0, 0,
              QStringLiteral("สินค้า Item"));
  g.addField3(4, QStringLiteral("Qty"), QStringLiteral("NUMBER"), 0, QStringLiteral("จำนวน Qty"), 2, QStringLiteral(">"),
              0, {}, 0, 12, 1, 0, 1, 0, 1100, title, right, {}, 0, {}, {}, {}, 2, 0,
              QStringLiteral("ราคา Price"));
  g.addField3(5, QStringLiteral("UnitPrice"), QStringLiteral("NUMBER"), 0, QStringLiteral("ราคาต่อหน่วย Unit price"),
              2, {}, 0, {}, 0, 12, 1, 0, 1, 0, 1900, title, right, {}, 0, {}, {}, {}, 2, 0,
              QStringLiteral("ราคา Price"));
  g.addField3(6, QStringLiteral("Amount"), QStringLiteral("NUMBER"), 0, QStringLiteral("จำนวนเงิน Amount"), 2, {}, 0,
              {}, 0, 14, 1, 1, 0, 0, 1650, title, right, {}, 0, {}, {}, {}, 2, 0, QStringLiteral("ราคา Price"));
  g.addField3(7, QStringLiteral("DeliveryDate"), QStringLiteral("DATE"), 0, QStringLiteral("วันส่งของ Delivery"), 0,
              {}, 0, {}, 0, 10, 1, 0, 1, 0, 1500, title, centre, {}, 0, {}, {}, {}, 0, 0,
              QStringLiteral("การส่งและชำระ Delivery and payment"));
  g.addField3(8, QStringLiteral("PayType"), QStringLiteral("LABELLIST"), 0, QStringLiteral("ชำระโดย Pay by"), 0, {}, 0,
              {}, 0, 2, 1, 1, 1, 0, 1350, title, centre, QStringLiteral("ส;สด,อ;โอน,บ;บัตร"), 0, {}, {}, {}, 0, 0,
              QStringLiteral("การส่งและชำระ Delivery and payment"));
  g.addField3(9, QStringLiteral("Paid"), QStringLiteral("CHECK"), 0, QStringLiteral("ชำระแล้ว Paid"), 0, {}, 0, {}, 0,
              1, 1, 1, 1, 0, 1150, title, centre, {}, 0, {}, {}, {}, 0, 0,
              QStringLiteral("การส่งและชำระ Delivery and payment"));
  g.addField3(10, QStringLiteral("Remark"), QStringLiteral("TEXT"), 0, QStringLiteral("หมายเหตุ Remark"), 0, {}, 0, {},
              0, 100, 1, 1, 1, 0, 2000, title, left);
}

}  // namespace

QWidget* makeInvoicePage(const SampleDatabase& db, QWidget* parent) {
  auto* page = new QWidget(parent);
  auto* layout = new QVBoxLayout(page);
  auto* note = new QLabel(
      QStringLiteral("ใบแจ้งหนี้ %1 จากฐานข้อมูลตัวอย่าง · Invoice %1 from the sample database: %2")
          .arg(QString::fromLatin1(kSampleInvoice), db.error.isEmpty() ? db.path : db.error));
  note->setWordWrap(true);
  note->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(note);

  auto* grid = new tq7::GridEditorWidget(page);
  grid->setObjectName(QStringLiteral("grdInvoice"));
  layout->addWidget(grid, 1);

  const QString conn = db.connectionString();
  // The whole set-up, in the control's order; run again after a save, since a load into a grid that
  // already holds records goes on behind them.
  auto load = [grid, conn, folder = db.folder] {
    tq7::GridEditor& g = grid->grid();
    declare(g);
    g.SetData(QStringLiteral("รายการใบแจ้งหนี้"), QStringLiteral("InvoiceLine"),
              QStringLiteral("InvoiceNo='%1'").arg(QString::fromLatin1(kSampleInvoice)), QStringLiteral("LineID"),
              QString(), 0, conn, conn);
    g.SetLast3(folder, QStringLiteral("grdInvoice"), QStringLiteral("1"), conn, conn);
    g.setEditStatus(true);
    g.setEditStatusShowAddButton(true);
    g.setEditStatusShowRemoveButton(true);
    g.FillData3();
    // The colours of the paid and unpaid lines, explained by the legend button under the grid.
    g.SetLegend(QStringLiteral("Paid,Unpaid"), conn, conn);
  };
  load();

  // F3 adds a line, F5 removes one; Save asks the grid and writes the lines back.
  auto* bar = new QHBoxLayout;
  auto* save = new QPushButton(QStringLiteral("บันทึก / Save"), page);
  save->setObjectName(QStringLiteral("cmdSave"));
  auto* status = new QLabel(QStringLiteral("F3 เพิ่มรายการ · F5 ลบรายการ · F2 เลือก · Enter ยืนยัน"), page);
  status->setObjectName(QStringLiteral("lblStatus"));
  bar->addWidget(save);
  bar->addWidget(status, 1);
  layout->addLayout(bar);
  QObject::connect(save, &QPushButton::clicked, page, [grid, status, conn, load] {
    const QString answer = saveInvoice(grid->grid(), conn, QString::fromLatin1(kSampleInvoice));
    status->setText(answer);
    if (answer.startsWith(QString::fromUtf8("บันทึกแล้ว"))) load();
  });
  return page;
}

}  // namespace gallery
