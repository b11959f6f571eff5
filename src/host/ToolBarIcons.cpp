#include "host/ToolBarIcons.h"

#include <QHash>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QPolygonF>
#include <cmath>

namespace tq7 {
namespace {

constexpr int kSize = 32;  // drawn large, scaled down by the tool bar

void arrow(QPainter& p, bool up, const QColor& c) {
  QPolygonF head;
  if (up)
    head << QPointF(16, 4) << QPointF(28, 17) << QPointF(20, 17) << QPointF(20, 28) << QPointF(12, 28)
         << QPointF(12, 17) << QPointF(4, 17);
  else
    head << QPointF(16, 28) << QPointF(28, 15) << QPointF(20, 15) << QPointF(20, 4) << QPointF(12, 4)
         << QPointF(12, 15) << QPointF(4, 15);
  p.setBrush(c);
  p.setPen(QPen(c.darker(150), 1.5));
  p.drawPolygon(head);
}

void star(QPainter& p, const QColor& c) {
  QPolygonF s;
  for (int i = 0; i < 10; ++i) {
    const double r = i % 2 ? 6.5 : 14;
    const double a = -M_PI / 2 + i * M_PI / 5;
    s << QPointF(16 + r * std::cos(a), 16 + r * std::sin(a));
  }
  p.setBrush(c);
  p.setPen(QPen(c.darker(160), 1.5));
  p.drawPolygon(s);
}

void glyph(QPainter& p, const QString& text, const QColor& c) {
  QFont f = p.font();
  f.setPixelSize(26);
  f.setBold(true);
  p.setFont(f);
  p.setPen(c);
  p.drawText(QRect(0, 0, kSize, kSize), Qt::AlignCenter, text);
}

QPixmap draw(const QString& key) {
  QPixmap pm(kSize, kSize);
  pm.fill(Qt::transparent);
  QPainter p(&pm);
  p.setRenderHint(QPainter::Antialiasing);
  const QColor green(0x2E, 0x8B, 0x3C), red(0xC6, 0x28, 0x28), blue(0x1E, 0x5A, 0xA8), gold(0xE8, 0xB0, 0x1E);
  if (key == QLatin1String("Insert") || key == QLatin1String("New")) {
    p.setBrush(green);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(12, 3, 8, 26), 2, 2);
    p.drawRoundedRect(QRectF(3, 12, 26, 8), 2, 2);
  } else if (key == QLatin1String("Remove") || key == QLatin1String("Delete")) {
    p.setBrush(red);
    p.setPen(Qt::NoPen);
    p.drawRoundedRect(QRectF(3, 12, 26, 8), 2, 2);
  } else if (key == QLatin1String("Lock")) {
    p.setPen(QPen(QColor(0x55, 0x55, 0x55), 3.5));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(9, 3, 14, 16), 0, 180 * 16);
    p.drawLine(QPointF(9, 11), QPointF(9, 15));
    p.drawLine(QPointF(23, 11), QPointF(23, 15));
    p.setPen(Qt::NoPen);
    p.setBrush(gold);
    p.drawRoundedRect(QRectF(5, 14, 22, 15), 3, 3);
  } else if (key == QLatin1String("MoveUp")) {
    arrow(p, true, blue);
  } else if (key == QLatin1String("MoveDown")) {
    arrow(p, false, blue);
  } else if (key == QLatin1String("Select") || key == QLatin1String("Pass")) {
    p.setPen(QPen(green, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawPolyline(QPolygonF() << QPointF(5, 17) << QPointF(13, 25) << QPointF(27, 7));
  } else if (key == QLatin1String("UnPass") || key == QLatin1String("Cancel")) {
    p.setPen(QPen(red, 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(7, 7), QPointF(25, 25));
    p.drawLine(QPointF(25, 7), QPointF(7, 25));
  } else if (key == QLatin1String("Filter")) {
    // A funnel.
    p.setBrush(blue);
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({QPointF(3, 4), QPointF(29, 4), QPointF(19, 16), QPointF(19, 28), QPointF(13, 24),
                             QPointF(13, 16)}));
  } else if (key == QLatin1String("Freeze")) {
    // A column held by a pin.
    p.setBrush(QColor(0xB8, 0xD8, 0xF0));
    p.setPen(QPen(blue, 2));
    p.drawRect(QRectF(4, 4, 10, 24));
    p.setBrush(red);
    p.setPen(Qt::NoPen);
    p.drawEllipse(QRectF(17, 5, 10, 10));
    p.setPen(QPen(QColor(0x44, 0x44, 0x44), 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(22, 14), QPointF(22, 27));
  } else if (key == QLatin1String("Search")) {
    p.setPen(QPen(blue, 4));
    p.setBrush(QColor(0xDD, 0xEE, 0xFF));
    p.drawEllipse(QRectF(4, 4, 17, 17));
    p.setPen(QPen(QColor(0x44, 0x44, 0x44), 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(19, 19), QPointF(28, 28));
  } else if (key == QLatin1String("Help")) {
    p.setBrush(blue);
    p.setPen(Qt::NoPen);
    p.drawEllipse(QRectF(2, 2, 28, 28));
    glyph(p, QStringLiteral("?"), Qt::white);
  } else if (key == QLatin1String("Favorite")) {
    star(p, gold);
  } else if (key == QLatin1String("Edit")) {
    p.setPen(QPen(QColor(0x8A, 0x5A, 0x2B), 5, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(8, 24), QPointF(25, 7));
    p.setPen(QPen(QColor(0x33, 0x33, 0x33), 2));
    p.drawLine(QPointF(4, 28), QPointF(8, 24));
  } else if (key == QLatin1String("Update")) {
    p.setPen(QPen(green, 4));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(5, 5, 22, 22), 30 * 16, 300 * 16);
  } else if (key == QLatin1String("Print")) {
    p.setPen(QPen(QColor(0x44, 0x44, 0x44), 2));
    p.setBrush(QColor(0xEE, 0xEE, 0xEE));
    p.drawRect(QRectF(9, 3, 14, 10));
    p.setBrush(QColor(0x77, 0x77, 0x77));
    p.drawRoundedRect(QRectF(3, 12, 26, 12), 2, 2);
    p.setBrush(Qt::white);
    p.drawRect(QRectF(9, 20, 14, 9));
  } else if (key == QLatin1String("Back")) {
    p.save();
    p.translate(16, 16);
    p.rotate(-90);
    p.translate(-16, -16);
    arrow(p, true, blue);
    p.restore();
  } else if (key == QLatin1String("Copy")) {
    p.setPen(QPen(QColor(0x44, 0x44, 0x44), 2));
    p.setBrush(Qt::white);
    p.drawRect(QRectF(4, 4, 16, 20));
    p.drawRect(QRectF(12, 9, 16, 20));
  } else {
    p.setBrush(QColor(0x88, 0x88, 0x88));
    p.setPen(Qt::NoPen);
    p.drawEllipse(QRectF(10, 10, 12, 12));
  }
  return pm;
}

}  // namespace

QIcon toolBarIcon(const QString& imageKey) {
  static QHash<QString, QIcon> cache;
  auto it = cache.constFind(imageKey);
  if (it != cache.constEnd()) return it.value();
  QIcon icon(draw(imageKey));
  cache.insert(imageKey, icon);
  return icon;
}

}  // namespace tq7
