// tq7-ribbon-skins: draws the pictures of the ribbon's three skins, "BLACK", "BLUE" and "SILVER",
// each at its own size and at twice that size (name@2x.png), with gradients, rounded frames and
// highlights in the manner of an office ribbon. Usage: tq7-ribbon-skins OUTPUT_FOLDER
#include <QDir>
#include <QGuiApplication>
#include <QImage>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QTextStream>
#include <functional>

namespace {

struct Palette {
  const char* type;
  QColor top;                       // the part of the strip above the bar
  QColor tabRowTop, tabRowBottom;   // behind the tabs
  QColor panelTop, panelBottom, panelEdge;
  QColor frameBorder, frameTop, frameBottom, bandTop, bandBottom;
  QColor hoverBorder, hoverTop, hoverBottom, hoverBandTop, hoverBandBottom;
  QColor tabBorder, tabFaceTop, tabFaceBottom;
  QColor tabHoverBorder, tabHoverTop, tabHoverBottom;
  QColor caption;  // the category caption's colour: the launcher is drawn in it
  QColor glyph;    // the drop mark
  bool background;  // picture 141 is a drawing (else one pixel)
};

const Palette kPalettes[] = {
    {"BLACK", QColor(0x1f, 0x1f, 0x1f), QColor(0x4a, 0x4a, 0x4a), QColor(0x2c, 0x2c, 0x2c),
     QColor(0xf4, 0xf4, 0xf4), QColor(0xcf, 0xcf, 0xcf), QColor(0x6e, 0x6e, 0x6e),
     QColor(0xa6, 0xa6, 0xa6), QColor(0xfb, 0xfb, 0xfb), QColor(0xe0, 0xe0, 0xe0), QColor(0x6c, 0x6c, 0x6c),
     QColor(0x48, 0x48, 0x48),
     QColor(0x8c, 0x8c, 0x8c), QColor(0xff, 0xff, 0xff), QColor(0xec, 0xec, 0xec), QColor(0x80, 0x80, 0x80),
     QColor(0x5a, 0x5a, 0x5a),
     QColor(0x9a, 0x9a, 0x9a), QColor(0xff, 0xff, 0xff), QColor(0xf4, 0xf4, 0xf4),
     QColor(0x9c, 0x9c, 0x9c), QColor(255, 255, 255, 110), QColor(255, 255, 255, 30),
     QColor(0xff, 0xff, 0xff), QColor(0x33, 0x33, 0x33), true},
    {"BLUE", QColor(0xbf, 0xdb, 0xff), QColor(0xd1, 0xe4, 0xfc), QColor(0xbc, 0xd5, 0xf5),
     QColor(0xe3, 0xed, 0xfa), QColor(0xc5, 0xd7, 0xef), QColor(0x8d, 0xb2, 0xe3),
     QColor(0x9b, 0xbb, 0xe3), QColor(0xf0, 0xf6, 0xfe), QColor(0xd4, 0xe3, 0xf6), QColor(0xc9, 0xdc, 0xf3),
     QColor(0xb2, 0xcb, 0xeb),
     QColor(0x7d, 0xa6, 0xdc), QColor(0xff, 0xff, 0xff), QColor(0xe2, 0xee, 0xfc), QColor(0xd7, 0xe7, 0xfa),
     QColor(0xbf, 0xd6, 0xf3),
     QColor(0x8d, 0xb2, 0xe3), QColor(0xff, 0xff, 0xff), QColor(0xe3, 0xed, 0xfa),
     QColor(0x9c, 0xc0, 0xec), QColor(255, 255, 255, 170), QColor(255, 255, 255, 60),
     QColor(0x3e, 0x6a, 0xb8), QColor(0x15, 0x42, 0x8b), true},
    {"SILVER", QColor(0xe4, 0xe7, 0xec), QColor(0xe9, 0xec, 0xf0), QColor(0xd6, 0xda, 0xe1),
     QColor(0xf6, 0xf7, 0xf8), QColor(0xdc, 0xdf, 0xe5), QColor(0xa4, 0xa9, 0xb3),
     QColor(0xb6, 0xbb, 0xc4), QColor(0xfc, 0xfc, 0xfd), QColor(0xe6, 0xe8, 0xec), QColor(0xdb, 0xde, 0xe4),
     QColor(0xc9, 0xcd, 0xd5),
     QColor(0x9f, 0xa5, 0xb0), QColor(0xff, 0xff, 0xff), QColor(0xee, 0xf0, 0xf3), QColor(0xe6, 0xe9, 0xee),
     QColor(0xd3, 0xd7, 0xde),
     QColor(0xa9, 0xae, 0xb8), QColor(0xff, 0xff, 0xff), QColor(0xf6, 0xf7, 0xf8),
     QColor(0xb0, 0xb5, 0xbf), QColor(255, 255, 255, 190), QColor(255, 255, 255, 70),
     QColor(0x5c, 0x62, 0x6a), QColor(0x5c, 0x62, 0x6a), false},
};

// The heights of the bar, in the strip's own pixels: its top 26 lie above the bar, the tab row
// is the next 24, the category frames hang from there for 89.
constexpr int kHidden = 26, kTabRow = 24, kFrame = 89;
// The caption band at the bottom of a category frame, in the frame's pixels.
constexpr double kBandTop = 69.5, kBandBottom = 87.5;

QLinearGradient vertical(double y0, double y1, const QColor& a, const QColor& b) {
  QLinearGradient g(0, y0, 0, y1);
  g.setColorAt(0, a);
  g.setColorAt(1, b);
  return g;
}

QPainterPath rounded(const QRectF& r, double radius) {
  QPainterPath p;
  p.addRoundedRect(r, radius, radius);
  return p;
}

// The panel behind the categories, the tab row above it and the hidden top: one column of the strip.
void drawStrip(QPainter& p, double w, const Palette& c) {
  p.fillRect(QRectF(0, 0, w, kHidden), c.top);
  p.fillRect(QRectF(0, kHidden, w, kTabRow), vertical(kHidden, kHidden + kTabRow, c.tabRowTop, c.tabRowBottom));
  const double panel = kHidden + kTabRow;
  QLinearGradient g(0, panel, 0, 142);
  g.setColorAt(0, c.panelTop);
  g.setColorAt(0.18, c.panelTop.darker(102));
  g.setColorAt(1, c.panelBottom);
  p.fillRect(QRectF(0, panel, w, 142 - panel), g);
  // A light line under the tab row, and the panel's bottom edge.
  p.fillRect(QRectF(0, panel, w, 1), c.tabBorder);
  p.fillRect(QRectF(0, panel + 1, w, 1), QColor(255, 255, 255, 140));
  p.fillRect(QRectF(0, 141, w, 1), c.panelEdge);
}

// One category frame, drawn whole at the width given; the pieces are cut from it.
QImage categoryFrame(int w, int scale, bool hover, const Palette& c) {
  QImage img(w * scale, kFrame * scale, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  const QRectF box(0.5, 2.5, w - 1.0, kFrame - 3.5);
  const QPainterPath shape = rounded(box, 3);
  p.fillPath(shape, vertical(box.top(), kBandTop, hover ? c.hoverTop : c.frameTop, hover ? c.hoverBottom : c.frameBottom));
  p.save();
  p.setClipPath(shape);
  p.fillRect(QRectF(0, kBandTop, w, kBandBottom - kBandTop + 1),
             vertical(kBandTop, kBandBottom, hover ? c.hoverBandTop : c.bandTop, hover ? c.hoverBandBottom : c.bandBottom));
  p.setPen(QPen(QColor(255, 255, 255, hover ? 150 : 90), 1));
  p.drawLine(QPointF(0, kBandTop), QPointF(w, kBandTop));
  p.restore();
  // An inner light edge, then the border.
  p.setPen(QPen(QColor(255, 255, 255, hover ? 220 : 150), 1));
  p.drawPath(rounded(box.adjusted(1, 1, -1, -1), 2));
  p.setPen(QPen(hover ? c.hoverBorder : c.frameBorder, 1));
  p.drawPath(shape);
  return img;
}

// A tab face with rounded top corners, open at the bottom where it meets the panel.
QImage tabFace(int w, int scale, bool hover, const Palette& c) {
  QImage img(w * scale, kTabRow * scale, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  QPainterPath shape;
  const double l = 0.5, r = w - 0.5, t = 2.5, b = kTabRow + 1.0, rad = 3.5;
  shape.moveTo(l, b);
  shape.lineTo(l, t + rad);
  shape.quadTo(l, t, l + rad, t);
  shape.lineTo(r - rad, t);
  shape.quadTo(r, t, r, t + rad);
  shape.lineTo(r, b);
  if (hover) {
    p.fillPath(shape, vertical(t, b, c.tabHoverTop, c.tabHoverBottom));
    p.setPen(QPen(c.tabHoverBorder, 1));
  } else {
    p.fillPath(shape, vertical(t, b, c.tabFaceTop, c.tabFaceBottom));
    p.setPen(QPen(c.tabBorder, 1));
  }
  p.drawPath(shape);
  return img;
}

// The hover and pressed looks of a button, in the warm colours of an office ribbon.
QImage buttonFace(int w, int scale, bool pressed) {
  QImage img(w * scale, 66 * scale, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  const QRectF box(0.5, 0.5, w - 1.0, 65.0);
  const QPainterPath shape = rounded(box, 3);
  QLinearGradient g(0, 0, 0, 66);
  if (pressed) {
    g.setColorAt(0, QColor(0xf8, 0xb6, 0x5c));
    g.setColorAt(0.42, QColor(0xfb, 0xa8, 0x43));
    g.setColorAt(0.43, QColor(0xfa, 0x93, 0x2a));
    g.setColorAt(1, QColor(0xfd, 0xc8, 0x6b));
  } else {
    g.setColorAt(0, QColor(0xff, 0xfc, 0xd9));
    g.setColorAt(0.42, QColor(0xff, 0xe7, 0x8f));
    g.setColorAt(0.43, QColor(0xff, 0xd7, 0x4c));
    g.setColorAt(1, QColor(0xff, 0xe7, 0x96));
  }
  p.fillPath(shape, g);
  p.setPen(QPen(QColor(255, 255, 255, pressed ? 70 : 160), 1));
  p.drawPath(rounded(box.adjusted(1, 1, -1, -1), 2));
  p.setPen(QPen(pressed ? QColor(0xc2, 0x8a, 0x30) : QColor(0xdb, 0xce, 0x99), 1));
  p.drawPath(shape);
  return img;
}

// Cuts the columns [x, x + w) out of a picture drawn at `scale`.
QImage cut(const QImage& whole, int x, int w, int scale) { return whole.copy(x * scale, 0, w * scale, whole.height()); }

QImage canvas(int w, int h, int scale) {
  QImage img(w * scale, h * scale, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  return img;
}

// The dialog launcher: a small corner with an arrow to the bottom right.
QImage launcher(int scale, int state, const Palette& c) {
  QImage img = canvas(15, 14, scale);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  if (state == 2) {  // the launcher itself hovered
    p.fillPath(rounded(QRectF(0.5, 0.5, 14, 13), 2), vertical(0, 14, QColor(0xff, 0xf3, 0xb8), QColor(0xff, 0xd3, 0x5e)));
    p.setPen(QPen(QColor(0xc2, 0x9b, 0x46), 1));
    p.drawPath(rounded(QRectF(0.5, 0.5, 14, 13), 2));
  } else if (state == 1) {  // its category hovered
    p.fillPath(rounded(QRectF(0.5, 0.5, 14, 13), 2), QColor(255, 255, 255, 60));
  }
  const QColor ink = state == 2 ? QColor(0x40, 0x30, 0x10) : c.caption;
  p.setPen(QPen(ink, 1.0, Qt::SolidLine, Qt::SquareCap));
  p.drawLine(QPointF(4.5, 3.5), QPointF(8.5, 3.5));
  p.drawLine(QPointF(4.5, 3.5), QPointF(4.5, 7.5));
  p.drawLine(QPointF(6.5, 5.5), QPointF(10.5, 9.5));
  QPainterPath head;
  head.moveTo(11.5, 10.5);
  head.lineTo(7.0, 10.5);
  head.lineTo(11.5, 6.0);
  head.closeSubpath();
  p.fillPath(head, ink);
  return img;
}

QImage dropMark(int scale, bool hover, const Palette& c) {
  QImage img = canvas(5, 4, scale);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  QPainterPath tri;
  tri.moveTo(0, 0.5);
  tri.lineTo(5, 0.5);
  tri.lineTo(2.5, 3.5);
  tri.closeSubpath();
  p.fillPath(tri, hover ? c.glyph.darker(160) : c.glyph);
  return img;
}

// Picture 141: a wide backdrop with soft sweeps of light.
QImage backdrop(int scale, const Palette& c) {
  if (!c.background) {
    QImage img(scale, scale, QImage::Format_ARGB32_Premultiplied);
    img.fill(c.panelBottom);
    return img;
  }
  QImage img = canvas(499, 157, scale);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  p.scale(scale, scale);
  p.fillRect(QRectF(0, 0, 499, 157), vertical(0, 157, c.tabRowTop, c.panelBottom.darker(110)));
  for (int k = 0; k < 3; ++k) {
    QPainterPath sweep;
    sweep.moveTo(-20, 120 - k * 28);
    sweep.cubicTo(140, 40 - k * 12, 320, 170 - k * 20, 520, 60 - k * 18);
    sweep.lineTo(520, 70 - k * 18);
    sweep.cubicTo(320, 185 - k * 20, 140, 56 - k * 12, -20, 134 - k * 28);
    sweep.closeSubpath();
    p.fillPath(sweep, QColor(255, 255, 255, 34 - k * 8));
  }
  QRadialGradient glow(QPointF(380, 30), 160);
  glow.setColorAt(0, QColor(255, 255, 255, 70));
  glow.setColorAt(1, QColor(255, 255, 255, 0));
  p.fillRect(QRectF(0, 0, 499, 157), glow);
  return img;
}

QImage strip(int w, int scale, const Palette& c, bool leftEdge) {
  QImage img = canvas(w, 142, scale);
  QPainter p(&img);
  p.scale(scale, scale);
  drawStrip(p, w, c);
  if (leftEdge) p.fillRect(QRectF(0, kHidden, 1, 142 - kHidden), QColor(0, 0, 0, 40));
  return img;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  if (argc < 2) {
    QTextStream(stderr) << "usage: tq7-ribbon-skins OUTPUT_FOLDER\n";
    return 2;
  }
  const QString out = QString::fromLocal8Bit(argv[1]);
  int written = 0, failed = 0;
  for (const Palette& c : kPalettes) {
    const QString folder = out + QLatin1Char('/') + QLatin1String(c.type);
    QDir().mkpath(folder);
    for (int scale : {1, 2}) {
      auto save = [&](int id, const QImage& img) {
        const QString name = QStringLiteral("%1/%2%3.png").arg(folder).arg(id).arg(scale == 2 ? QStringLiteral("@2x") : QString());
        if (img.convertToFormat(QImage::Format_ARGB32).save(name, "PNG", 9)) ++written; else ++failed;
      };
      save(101, strip(11, scale, c, false));
      save(102, strip(7, scale, c, true));
      save(103, strip(7, scale, c, false));
      for (int state = 0; state < 3; ++state) save(118 + state, launcher(scale, state, c));
      // The frames are drawn 30 pixels wide and cut into left, middle and right.
      for (int hover = 0; hover < 2; ++hover) {
        const QImage whole = categoryFrame(30, scale, hover, c);
        const int centre = hover ? 4 : 5;
        save(121 + hover * 3, cut(whole, 0, 4, scale));
        save(122 + hover * 3, cut(whole, 12, centre, scale));
        save(123 + hover * 3, cut(whole, 25, 5, scale));
      }
      for (int hover = 0; hover < 2; ++hover) {
        const int centre = hover ? 37 : 18;
        const QImage whole = tabFace(20 + centre + 20, scale, hover, c);
        save(127 + hover * 3, cut(whole, 0, 10, scale));
        save(128 + hover * 3, cut(whole, 20, centre, scale));
        save(129 + hover * 3, cut(whole, 20 + centre + 10, 10, scale));
      }
      save(133, dropMark(scale, false, c));
      save(134, dropMark(scale, true, c));
      for (int pressed = 1; pressed >= 0; --pressed) {
        const QImage whole = buttonFace(60, scale, pressed);
        const int base = pressed ? 135 : 138;
        save(base, cut(whole, 0, 3, scale));
        save(base + 1, cut(whole, 5, 49, scale));
        save(base + 2, cut(whole, 57, 3, scale));
      }
      save(141, backdrop(scale, c));
    }
  }
  QTextStream(stdout) << "tq7-ribbon-skins: " << written << " pictures written to " << out
                      << (failed ? QStringLiteral(", %1 failed").arg(failed) : QString()) << "\n";
  return failed ? 1 : 0;
}
