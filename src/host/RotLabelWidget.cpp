#include "host/RotLabelWidget.h"

#include "host/HostColours.h"
#include "host/HostFonts.h"

#include <QBitmap>
#include <QMouseEvent>
#include <QPainter>
#include <QResizeEvent>

namespace tq7 {

QFont rotatedFont(const RotatedText& t) {
  QFont f(hostFontFamily(t.fontName));
  f.setPixelSize(std::max(1, t.height));
  f.setWeight(t.weight >= 700 ? QFont::Bold : QFont::Normal);
  f.setItalic(t.italic);
  f.setUnderline(t.underline);
  f.setStrikeOut(t.strikeout);
  return f;
}

void drawRotatedText(QPainter& p, const RotatedText& t) {
  if (t.caption.isEmpty()) return;
  const QFont f = rotatedFont(t);
  p.save();
  p.setFont(f);
  p.translate(t.X / TwipsPerPixel, t.Y / TwipsPerPixel);
  p.rotate(-t.angle);
  p.drawText(QPointF(0, QFontMetricsF(f).ascent()), t.caption);
  p.restore();
}

RotLabelWidget::RotLabelWidget(QWidget* parent) : QWidget(parent) {
  label_.setListener(this);
  label_.setChangeCallback([this] { sync_.request(); });
  label_.setSize(pixelsToTwips(width()), pixelsToTwips(height()));
  syncNow();
}

RotLabelWidget::~RotLabelWidget() { label_.setChangeCallback(nullptr); }

void RotLabelWidget::syncNow() {
  const CoalescedSync::Run run(sync_);
  if (shownDrawing_ != label_.drawCount() || maskSize_ != size()) {
    // The shape is the letters: what picMask holds after the drawing.
    QBitmap mask(size());
    mask.fill(Qt::color0);
    {
      QPainter p(&mask);
      p.setPen(Qt::color1);
      drawRotatedText(p, label_.lastDrawing());
    }
    setMask(mask);
    shownDrawing_ = label_.drawCount();
    maskSize_ = size();
  }
  update();
}

void RotLabelWidget::paintEvent(QPaintEvent*) {
  // The surface's back colour is the text colour: the mask lets only the letters show.
  QPainter p(this);
  p.fillRect(rect(), toQColor(label_.SurfaceBackColor(), palette()));
}

void RotLabelWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  label_.setSize(pixelsToTwips(e->size().width()), pixelsToTwips(e->size().height()));
  syncNow();
}

void RotLabelWidget::showEvent(QShowEvent* e) {
  QWidget::showEvent(e);
  label_.UserControl_Show();
  syncNow();
}

void RotLabelWidget::mouseReleaseEvent(QMouseEvent* e) {
  if (e->button() == Qt::LeftButton && rect().contains(e->position().toPoint())) label_.UserControl_Click();
}

void RotLabelWidget::Click() {
  if (appListener_) appListener_->Click();
  emit click();
}

}  // namespace tq7
