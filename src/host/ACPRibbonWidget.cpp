#include "host/ACPRibbonWidget.h"

#include "host/HostColours.h"
#include "host/HostFonts.h"
#include "host/WidgetMirror.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <cmath>

namespace tq7 {

namespace {

// A length in twips as a whole pixel, so that pieces meet edge to edge and pictures stay sharp.
// How far a glyph may reach past the measured text.
constexpr int kOverhang = 2;

int px(double twips) { return int(std::lround(twips / TwipsPerPixel)); }

QRect rectOf(const RibbonPiece& p) {
  const int l = px(p.Left), t = px(p.Top);
  return QRect(l, t, px(p.Left + p.Width) - l, px(p.Top + p.Height) - t);
}

int mouseButton(Qt::MouseButton b) {
  switch (b) {
    case Qt::LeftButton: return ACPRibbon::vbLeftButton;
    case Qt::RightButton: return ACPRibbon::vbRightButton;
    case Qt::MiddleButton: return ACPRibbon::vbMiddleButton;
    default: return 0;
  }
}

}  // namespace

ACPRibbonWidget::ACPRibbonWidget(QWidget* parent) : QWidget(parent) {
  setMouseTracking(true);  // hover lives on moves without a button
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  ribbon_.setListener(this);
  ribbon_.setChangeCallback([this] { update(); });
  ribbon_.setWidth(pixelsToTwips(width()));
  followHeight();
}

ACPRibbonWidget::~ACPRibbonWidget() { ribbon_.setChangeCallback(nullptr); }

QSize ACPRibbonWidget::sizeHint() const { return QSize(800, twipsToPixels(ribbon_.Height())); }

void ACPRibbonWidget::followHeight() {
  // The core keeps the bar's height whatever the form asks; the widget follows it.
  const int h = twipsToPixels(ribbon_.Height());
  if (minimumHeight() != h || maximumHeight() != h) setFixedHeight(h);
}

void ACPRibbonWidget::resizeEvent(QResizeEvent* e) {
  QWidget::resizeEvent(e);
  ribbon_.setWidth(pixelsToTwips(width()));
  followHeight();
}

QRect ACPRibbonWidget::pieceRect(Piece a, int i) const {
  const RibbonPiece* p = ribbon_.piece(a, i);
  return p ? rectOf(*p) : QRect();
}

const QFont& ACPRibbonWidget::qfont(const tq7::Font& f) {
  for (const auto& [font, q] : fonts_)
    if (font == f) return q;
  fonts_.emplace_back(f, toQFont(f));
  return fonts_.back().second;
}

void ACPRibbonWidget::paintPieces(QPainter& p, qreal devicePixelRatio) {
  const bool sharp = devicePixelRatio > 1.0;
  const RibbonPieceStack& stack = ribbon_.pieces();
  for (const PieceRef ref : stack.order()) {
    const RibbonPiece& piece = stack.at(ref.array, ref.index);
    if (!piece.Visible) continue;
    const QRect r = rectOf(piece);
    if (piece.kind == PieceKind::Image) {
      const QImage& img = sharp && !piece.Picture2x.isNull() ? piece.Picture2x : piece.Picture;
      if (img.isNull() || r.isEmpty()) continue;
      if (piece.Stretch) {
        // The stretched pictures are alike column by column and keep their height, so the plain
        // scaling draws them as well as the smooth one, at a fraction of the cost.
        p.setRenderHint(QPainter::SmoothPixmapTransform, false);
        p.drawImage(r, img);
      } else {
        // An application's picture may be drawn smaller than it is: that needs the smooth scaling.
        p.setRenderHint(QPainter::SmoothPixmapTransform, true);
        // At its own size from the top left, clipped to the piece.
        const qreal ratio = img.devicePixelRatio();
        const QSizeF own = img.deviceIndependentSize();
        const qreal w = std::min<qreal>(own.width(), r.width()), h = std::min<qreal>(own.height(), r.height());
        p.drawImage(QRectF(r.left(), r.top(), w, h), img, QRectF(0, 0, w * ratio, h * ratio));
      }
    } else if (!piece.Caption.isEmpty()) {
      const QImage& text = textImage(piece, r.size(), devicePixelRatio);
      p.drawImage(QPointF(r.left() - (piece.Centred ? kOverhang : 0), r.top()), text);
    }
  }
}

const QImage& ACPRibbonWidget::textImage(const RibbonPiece& piece, QSize size, qreal dpr) {
  // The same captions are drawn at every paint; each is laid out and drawn once, then copied.
  key_.clear();
  key_ += piece.Caption;
  key_ += QChar(0);
  key_ += QString::number(piece.ForeColor, 16) + QLatin1Char(',') + QString::number(size.width()) + QLatin1Char(',') +
          QString::number(size.height()) + QLatin1Char(',') + QString::number(dpr) + QLatin1Char(',') +
          QLatin1Char(piece.Centred ? 'c' : 'l') + QLatin1Char(',');
  key_ += piece.font.Name + QString::number(piece.font.Size) + QLatin1Char(piece.font.Bold ? 'b' : 'n');
  if (const auto it = texts_.constFind(key_); it != texts_.constEnd()) return it.value();
  if (texts_.size() > 2048) texts_.clear();  // captions come and go with the application's bar

  // An auto-size label is as large as its text; a glyph's overhang may show on the open sides.
  const int left = piece.Centred ? kOverhang : 0;
  const QSize box(size.width() + left + kOverhang, size.height() + kOverhang);
  QImage img((QSizeF(box) * dpr).toSize(), QImage::Format_ARGB32_Premultiplied);
  img.setDevicePixelRatio(dpr);
  img.fill(Qt::transparent);
  QString text = piece.Caption;
  if (text.contains(u'\r')) text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
  QPainter tp(&img);
  tp.setFont(qfont(piece.font));
  tp.setPen(toQColor(piece.ForeColor, palette()));
  tp.drawText(QRectF(0, 0, box.width(), box.height()), (piece.Centred ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop,
              text);
  tp.end();
  return texts_.insert(key_, img).value();
}

void ACPRibbonWidget::paintEvent(QPaintEvent*) {
  QPainter p(this);
  p.fillRect(rect(), toQColor(ribbon_.BackColor()));
  paintPieces(p, p.device()->devicePixelRatioF());
}

void ACPRibbonWidget::mouseMoveEvent(QMouseEvent* e) {
  const QPointF at = e->position();
  ribbon_.inputMouseMove(at.x() * TwipsPerPixel, at.y() * TwipsPerPixel);
}

void ACPRibbonWidget::mousePressEvent(QMouseEvent* e) {
  const QPointF at = e->position();
  ribbon_.inputMouseDown(mouseButton(e->button()), at.x() * TwipsPerPixel, at.y() * TwipsPerPixel);
}

void ACPRibbonWidget::mouseReleaseEvent(QMouseEvent* e) {
  const QPointF at = e->position();
  ribbon_.inputMouseUp(mouseButton(e->button()), at.x() * TwipsPerPixel, at.y() * TwipsPerPixel);
}

bool ACPRibbonWidget::event(QEvent* e) {
  if (e->type() == QEvent::ToolTip) {
    // The hit area of a button carries its tool tip.
    auto* help = static_cast<QHelpEvent*>(e);
    const PieceRef ref = ribbon_.pieces().pieceAt(help->pos().x() * TwipsPerPixel, help->pos().y() * TwipsPerPixel);
    const RibbonPiece* piece = ref.valid() ? ribbon_.piece(ref.array, ref.index) : nullptr;
    if (piece && !piece->ToolTipText.isEmpty())
      QToolTip::showText(help->globalPos(), piece->ToolTipText, this);
    else
      QToolTip::hideText();
    return true;
  }
  return QWidget::event(e);
}

void ACPRibbonWidget::TabClick(const QString& ID, const QString& Caption) {
  if (appListener_) appListener_->TabClick(ID, Caption);
  emit tabClick(ID, Caption);
}

void ACPRibbonWidget::CatClick(const QString& ID, const QString& Caption) {
  if (appListener_) appListener_->CatClick(ID, Caption);
  emit catClick(ID, Caption);
}

void ACPRibbonWidget::ButtonClick(const QString& ID, const QString& Caption) {
  if (appListener_) appListener_->ButtonClick(ID, Caption);
  emit buttonClick(ID, Caption);
}

}  // namespace tq7
