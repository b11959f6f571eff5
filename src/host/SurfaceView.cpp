#include "host/SurfaceView.h"

#include "controls/tq7MouseWheelControl.h"
#include "host/GridEditorWidget.h"
#include "host/HostColours.h"
#include "host/HostFonts.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPaintEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QTextBoundaryFinder>
#include <QTextLayout>
#include <cmath>
#include <QWheelEvent>
#include <algorithm>
#include <climits>
#include <iterator>
#include <optional>

namespace tq7 {
namespace {

constexpr Colour kGrayArea = 0x8000000Cu;  // application workspace: beyond the last line
constexpr int kCheckBoxSize = 13;
constexpr int kNoteMark = 6;

QColor blend(const QColor& a, const QColor& b, double t) {
  return QColor(int(a.red() * (1 - t) + b.red() * t + 0.5), int(a.green() * (1 - t) + b.green() * t + 0.5),
                int(a.blue() * (1 - t) + b.blue() * t + 0.5));
}

int hFlag(int16_t a) { return a == 1 ? Qt::AlignRight : a == 2 ? Qt::AlignHCenter : Qt::AlignLeft; }
int vFlag(int16_t a) { return a == 0 ? Qt::AlignTop : a == 1 ? Qt::AlignBottom : Qt::AlignVCenter; }

}  // namespace

SurfaceView::SurfaceView(SpreadSurface& surface, QWidget* parent) : QAbstractScrollArea(parent), surface_(surface) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  viewport()->setMouseTracking(true);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setAutoFillBackground(false);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &SurfaceView::onVerticalScroll);
  connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &SurfaceView::onHorizontalScroll);
  sync();
}

// A hook on this surface must not outlive it.
SurfaceView::~SurfaceView() {
  if (tq7MouseWheelControl::hookedSurface() == &surface_) tq7MouseWheelControl::WheelUnhook();
}

// ---- Mirroring the surface --------------------------------------------------------------------------

void SurfaceView::sync() {
  syncing_ = true;
  // The scroll bars stand inside the surface's rectangle: the sheet learns the room they take, and
  // since a bar can make the other one needed, the question is asked twice.
  for (int pass = 0; pass < 2; ++pass) {
    updateScrollBars();
    const int vbar = verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn ? verticalScrollBar()->sizeHint().width() : 0;
    const int hbar =
        horizontalScrollBarPolicy() == Qt::ScrollBarAlwaysOn ? horizontalScrollBar()->sizeHint().height() : 0;
    surface_.setScrollBarExtents(vbar * TwipsPerPixel, hbar * TwipsPerPixel);
  }
  updateScrollBars();
  const QRect g(px(surface_.Left()), px(surface_.Top()), px(surface_.Width()), px(surface_.Height()));
  if (geometry() != g) setGeometry(g);
  if (toolTip() != surface_.ToolTipText()) setToolTip(surface_.ToolTipText());
  if (isEnabled() != surface_.Enabled()) setEnabled(surface_.Enabled());
  if (isVisibleTo(parentWidget()) != surface_.Visible() || (!parentWidget() && isVisible() != surface_.Visible()))
    setVisible(surface_.Visible());
  viewport()->update();
  syncing_ = false;
}

bool SurfaceView::rowsOverflow() const {
  if (surface_.TopRow() > 1) return true;
  const std::vector<int32_t> rows = surface_.shownDataRows();
  if (rows.empty()) return false;
  if (int32_t(rows.size()) > surface_.rowsInView()) return true;  // the last one is cut
  // Rows hidden below the last shown one do not count; a long run of them is taken as more rows.
  for (int32_t r = rows.back() + 1, steps = 0; r <= surface_.MaxRows(); ++r, ++steps) {
    if (surface_.shownRowHeight(r) > 0 || steps > 4096) return true;
  }
  return false;
}

bool SurfaceView::colsOverflow() const {
  if (surface_.LeftCol() > surface_.ColsFrozen() + 1) return true;
  const std::vector<int32_t> cols = surface_.shownDataCols();
  if (cols.empty()) return false;
  double x = surface_.rowHeaderWidth();
  for (int32_t c : cols) x += surface_.shownColWidth(c);
  if (x > surface_.viewWidth()) return true;
  for (int32_t c = cols.back() + 1; c <= surface_.MaxCols(); ++c)
    if (surface_.shownColWidth(c) > 0) return true;
  return false;
}

// The top row that shows the sheet's last rows at the bottom of the view.
int32_t SurfaceView::lastTopRow() const {
  const double avail = surface_.viewHeight() - surface_.headerHeight();
  int32_t top = std::max(surface_.MaxRows(), 1);
  double used = 0;
  for (int32_t r = surface_.MaxRows(), steps = 0; r >= 1 && steps < 10000; --r, ++steps) {
    const double h = surface_.shownRowHeight(r);
    if (h <= 0) continue;
    if (used > 0 && used + h > avail) break;
    used += h;
    top = r;
  }
  return top;
}

int32_t SurfaceView::lastLeftCol() const {
  double avail = surface_.viewWidth() - surface_.rowHeaderWidth();
  for (int32_t c = 1; c <= std::min(surface_.ColsFrozen(), surface_.MaxCols()); ++c) avail -= surface_.shownColWidth(c);
  const int32_t first = surface_.ColsFrozen() + 1;
  int32_t left = std::max(surface_.MaxCols(), first);
  double used = 0;
  for (int32_t c = surface_.MaxCols(); c >= first; --c) {
    const double w = surface_.shownColWidth(c);
    if (w <= 0) continue;
    if (used > 0 && used + w > avail) break;
    used += w;
    left = c;
  }
  return left;
}

void SurfaceView::updateScrollBars() {
  const bool v = rowsOverflow();
  const bool h = colsOverflow();
  setVerticalScrollBarPolicy(v ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  setHorizontalScrollBarPolicy(h ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  {
    QScrollBar* bar = verticalScrollBar();
    const QSignalBlocker block(bar);
    bar->setRange(1, std::max(lastTopRow(), surface_.TopRow()));
    bar->setSingleStep(1);
    bar->setPageStep(surface_.rowsInView());
    bar->setValue(surface_.TopRow());
  }
  {
    QScrollBar* bar = horizontalScrollBar();
    const QSignalBlocker block(bar);
    const int32_t first = surface_.ColsFrozen() + 1;
    bar->setRange(first, std::max({lastLeftCol(), surface_.LeftCol(), first}));
    bar->setSingleStep(1);
    int32_t page = 0;
    for (int32_t c : surface_.shownDataCols())
      if (c > surface_.ColsFrozen()) ++page;
    bar->setPageStep(std::max(page, 1));
    bar->setValue(surface_.LeftCol());
  }
}

void SurfaceView::onVerticalScroll(int value) {
  if (syncing_) return;
  const QPointer<SurfaceView> self(this);
  surface_.setTopRow(value);
  afterInput(self);
}

void SurfaceView::onHorizontalScroll(int value) {
  if (syncing_) return;
  const QPointer<SurfaceView> self(this);
  surface_.setLeftCol(value);
  afterInput(self);
}

// An owner's handler may close the form the view is on; only a living view syncs.
void SurfaceView::afterInput(const QPointer<SurfaceView>& self) {
  if (self) sync();
}

void SurfaceView::scrollContentsBy(int, int) {
  // The surface scrolls by whole lines; the next paint shows the new top row.
}

// ---- Layout -----------------------------------------------------------------------------------------

// Pixel edges are the rounded running sums in twips, so that no rounding error piles up across
// a screen of lines and cellRect() agrees with the paint to the pixel.
void SurfaceView::layout() {
  hdrRows_.clear();
  dataRows_.clear();
  hdrCols_.clear();
  dataCols_.clear();
  double t = 0;
  for (int32_t r : surface_.shownHeaderRows()) {
    const double h = surface_.shownRowHeight(r);
    hdrRows_.push_back(Line{r, px(t), px(t + h)});
    t += h;
  }
  for (int32_t r : surface_.shownDataRows()) {
    const double h = surface_.shownRowHeight(r);
    dataRows_.push_back(Line{r, px(t), px(t + h)});
    t += h;
  }
  t = 0;
  for (int32_t c : surface_.shownHeaderCols()) {
    const double w = surface_.shownColWidth(c);
    hdrCols_.push_back(Line{c, px(t), px(t + w)});
    t += w;
  }
  frozenCount_ = 0;
  for (int32_t c : surface_.shownDataCols()) {
    const double w = surface_.shownColWidth(c);
    dataCols_.push_back(Line{c, px(t), px(t + w)});
    t += w;
    if (c <= surface_.ColsFrozen()) ++frozenCount_;
  }
}

QRect SurfaceView::cellRect(int32_t col, int32_t row) const {
  double x, y, w, h;
  if (!surface_.GetCellPos(col, row, x, y, w, h)) return {};
  return QRect(QPoint(px(x), px(y)), QPoint(px(x + w) - 1, px(y + h) - 1));
}

// ---- Painting ----------------------------------------------------------------------------------------

void SurfaceView::paintEvent(QPaintEvent* e) {
  QPainter p(viewport());
  paintSheet(p, e->rect());
}

bool SurfaceView::inSelection(int32_t col, int32_t row) const {
  return col >= selC1_ && col <= selC2_ && row >= selR1_ && row <= selR2_;
}

void SurfaceView::usePen(QPainter& p, QRgb colour) {
  if (penSet_ && currentPen_ == colour) return;
  p.setPen(QColor::fromRgb(colour));
  currentPen_ = colour;
  penSet_ = true;
}

void SurfaceView::useFont(QPainter& p, const SpreadSurface::CellLook& lk) {
  fontFor(lk);
  if (currentFont_ == painterFont_) return;
  p.setFont(fonts_[size_t(currentFont_)].font);
  painterFont_ = currentFont_;
}

SurfaceView::FontEntry& SurfaceView::fontFor(const SpreadSurface::CellLook& lk) {
  const tq7::Font& base = surface_.Font();
  const QString& name = lk.fontName.isEmpty() ? base.Name : lk.fontName;
  const double size = lk.fontSize > 0 ? lk.fontSize : base.Size;
  auto same = [&](const FontEntry& f) { return f.size == size && f.bold == lk.bold && f.name == name; };
  if (currentFont_ >= 0 && same(fonts_[size_t(currentFont_)])) return fonts_[size_t(currentFont_)];
  for (size_t i = 0; i < fonts_.size(); ++i)
    if (same(fonts_[i])) {
      currentFont_ = int(i);
      return fonts_[i];
    }
  if (fonts_.size() >= 64) {  // a sheet of many fonts: start the cache again
    fonts_.clear();
    painterFont_ = -1;
  }
  QFont f = toQFont(name, size, lk.bold);
  f.setItalic(base.Italic);
  f.setUnderline(base.Underline);
  f.setStrikeOut(base.Strikethrough);
  FontEntry e;
  e.name = name;
  e.size = size;
  e.bold = lk.bold;
  e.font = f;
  const QFontMetricsF fm(f);
  e.ascent = fm.ascent();
  e.height = fm.ascent() + fm.descent();
  e.raw = QRawFont::fromFont(f);
  if (e.raw.isValid() && !f.underline() && !f.strikeOut()) {
    for (char16_t ch = 32; ch < 127; ++ch) {
      const QChar c(ch);
      quint32 glyph = 0;
      int n = 1;
      if (!e.raw.glyphIndexesForChars(&c, 1, &glyph, &n) || n != 1) continue;
      QPointF advance;
      e.raw.advancesForGlyphIndexes(&glyph, &advance, 1, QRawFont::SeparateAdvances);
      e.asciiGlyph[ch] = glyph;
      e.asciiAdvance[ch] = advance.x();
    }
  }
  fonts_.push_back(std::move(e));
  currentFont_ = int(fonts_.size() - 1);
  return fonts_.back();
}

void SurfaceView::paintSheet(QPainter& p, const QRect& area) {
  layout();
  pal_ = palette();
  gridColour_ = QColor(192, 192, 192);
  penSet_ = false;
  currentFont_ = -1;
  painterFont_ = -1;
  gridLines_.clear();
  lightLines_.clear();
  darkLines_.clear();
  showHoriz_ = surface_.GridShowHoriz();
  showVert_ = surface_.GridShowVert();

  // The selected block, -1 meaning all lines; a single cell is shown by the cursor frame alone.
  const int32_t sc = surface_.SelBlockCol(), sc2 = surface_.SelBlockCol2();
  const int32_t sr = surface_.SelBlockRow(), sr2 = surface_.SelBlockRow2();
  selC1_ = sc == -1 || sc2 == -1 ? 1 : std::min(sc, sc2);
  selC2_ = sc == -1 || sc2 == -1 ? INT32_MAX : std::max(sc, sc2);
  selR1_ = sr == -1 || sr2 == -1 ? 1 : std::min(sr, sr2);
  selR2_ = sr == -1 || sr2 == -1 ? INT32_MAX : std::max(sr, sr2);
  selBlock_ = selC1_ != selC2_ || selR1_ != selR2_;

  // What lies beyond the last column and below the last row.
  const int right = std::max(hdrCols_.empty() ? 0 : hdrCols_.back().b, dataCols_.empty() ? 0 : dataCols_.back().b);
  const int bottom =
      std::max(hdrRows_.empty() ? 0 : hdrRows_.back().b, dataRows_.empty() ? 0 : dataRows_.back().b);
  const QColor gray = toQColor(kGrayArea, pal_);
  const QRect beyondRight = QRect(QPoint(right, area.top()), area.bottomRight()).intersected(area);
  const QRect beyondBottom = QRect(QPoint(area.left(), bottom), QPoint(right - 1, area.bottom())).intersected(area);
  if (!beyondRight.isEmpty()) p.fillRect(beyondRight, gray);
  if (!beyondBottom.isEmpty()) p.fillRect(beyondBottom, gray);

  paintBand(p, hdrRows_, hdrCols_, area);
  paintBand(p, hdrRows_, dataCols_, area);
  paintBand(p, dataRows_, hdrCols_, area);
  paintBand(p, dataRows_, dataCols_, area);

  fillLines(p, gridLines_, gridColour_);
  fillLines(p, lightLines_, pal_.color(QPalette::Light));
  fillLines(p, darkLines_, pal_.color(QPalette::Dark));

  // The frozen columns end in a darker line.
  if (frozenCount_ > 0 && frozenCount_ < dataCols_.size())
    p.fillRect(QRect(dataCols_[frozenCount_ - 1].b - 1, 0, 1, bottom), pal_.color(QPalette::Dark));

  // The cursor frame.
  const int32_t ac = surface_.ActiveCol(), ar = surface_.ActiveRow();
  auto colIt = std::find_if(dataCols_.begin(), dataCols_.end(), [ac](const Line& l) { return l.n == ac; });
  auto rowIt = std::find_if(dataRows_.begin(), dataRows_.end(), [ar](const Line& l) { return l.n == ar; });
  if (colIt != dataCols_.end() && rowIt != dataRows_.end()) {
    const QRect r(QPoint(colIt->a, rowIt->a), QPoint(colIt->b - 1, rowIt->b - 1));
    const QColor c = pal_.color(QPalette::Text);
    p.fillRect(QRect(r.left(), r.top(), r.width(), 2), c);
    p.fillRect(QRect(r.left(), r.bottom() - 1, r.width(), 2), c);
    p.fillRect(QRect(r.left(), r.top(), 2, r.height()), c);
    p.fillRect(QRect(r.right() - 1, r.top(), 2, r.height()), c);
  }
}

// Lines of one pixel, joined where they meet end to end: a screen of cells makes a few dozen
// long lines rather than two short ones a cell.
void SurfaceView::fillLines(QPainter& p, std::vector<QLine>& lines, const QColor& colour) {
  if (lines.empty()) return;
  std::sort(lines.begin(), lines.end(), [](const QLine& a, const QLine& b) {
    const bool av = a.x1() == a.x2(), bv = b.x1() == b.x2();
    if (av != bv) return av < bv;
    if (av) return a.x1() != b.x1() ? a.x1() < b.x1() : a.y1() < b.y1();
    return a.y1() != b.y1() ? a.y1() < b.y1() : a.x1() < b.x1();
  });
  QRect run;
  for (const QLine& l : lines) {
    const QRect r = QRect(l.p1(), l.p2()).normalized();
    if (!run.isNull() && r.width() == 1 && run.width() == 1 && r.left() == run.left() && r.top() <= run.bottom() + 1) {
      run.setBottom(std::max(run.bottom(), r.bottom()));
    } else if (!run.isNull() && r.height() == 1 && run.height() == 1 && r.top() == run.top() &&
               r.left() <= run.right() + 1) {
      run.setRight(std::max(run.right(), r.right()));
    } else {
      if (!run.isNull()) p.fillRect(run, colour);
      run = r;
    }
  }
  p.fillRect(run, colour);
}

void SurfaceView::paintBand(QPainter& p, const std::vector<Line>& rows, const std::vector<Line>& cols,
                            const QRect& area) {
  for (size_t i = 0; i < rows.size(); ++i) {
    const Line& R = rows[i];
    for (size_t j = 0; j < cols.size(); ++j) {
      const Line& C = cols[j];
      int32_t col = C.n, row = R.n;
      QRect rect(QPoint(C.a, R.a), QPoint(C.b - 1, R.b - 1));
      // A span is painted once, from its first cell in view, over the cells of it in view.
      if (const SpreadSurface::Span* s = surface_.spanAt(col, row); s && (s->numCols > 1 || s->numRows > 1)) {
        auto inCols = [s](int32_t c) { return c >= s->col && c < s->col + s->numCols; };
        auto inRows = [s](int32_t r) { return r >= s->row && r < s->row + s->numRows; };
        if (j > 0 && inCols(cols[j - 1].n)) continue;
        if (i > 0 && inRows(rows[i - 1].n)) continue;
        size_t j2 = j, i2 = i;
        while (j2 + 1 < cols.size() && inCols(cols[j2 + 1].n)) ++j2;
        while (i2 + 1 < rows.size() && inRows(rows[i2 + 1].n)) ++i2;
        rect = QRect(QPoint(C.a, R.a), QPoint(cols[j2].b - 1, rows[i2].b - 1));
        col = s->col;
        row = s->row;
      }
      if (!rect.intersects(area)) continue;
      paintCell(p, rect, col, row, surface_.look(col, row), surface_.GetText(col, row));
    }
  }
}

void SurfaceView::paintCell(QPainter& p, const QRect& r, int32_t col, int32_t row, const SpreadSurface::CellLook& lk,
                            const QString& text) {
  const bool header = row <= 0 || col <= 0;
  QColor back, fore;
  if (header) {
    // Headers keep the button face unless a caption was given a colour of its own.
    back = isSystemColour(lk.back) ? pal_.color(QPalette::Button) : toQColor(lk.back);
    fore = isSystemColour(lk.fore) ? pal_.color(QPalette::ButtonText) : toQColor(lk.fore);
  } else {
    back = toQColor(lk.back, pal_);
    fore = toQColor(lk.fore, pal_);
    if (selBlock_ && inSelection(col, row) && !(col == surface_.ActiveCol() && row == surface_.ActiveRow()))
      back = blend(back, pal_.color(QPalette::Highlight), 0.35);
  }
  p.fillRect(r, back);

  if (header) {
    lightLines_.emplace_back(r.left(), r.top(), r.right() - 1, r.top());
    lightLines_.emplace_back(r.left(), r.top(), r.left(), r.bottom() - 1);
    darkLines_.emplace_back(r.left(), r.bottom(), r.right(), r.bottom());
    darkLines_.emplace_back(r.right(), r.top(), r.right(), r.bottom());
  } else {
    if (showHoriz_) gridLines_.emplace_back(r.left(), r.bottom(), r.right(), r.bottom());
    if (showVert_) gridLines_.emplace_back(r.right(), r.top(), r.right(), r.bottom());
  }

  const QRect inner = r.adjusted(2, 1, -3, -2);
  if (inner.width() > 0 && inner.height() > 0) {
    if (lk.cellType == celltype::CheckBox) {
      usePen(p, fore.rgb());
      paintCheckBox(p, inner, lk);
    } else if (lk.cellType == celltype::Button) {
      // A button cell: a raised face, sunken while a two-state button is down, its caption centred.
      const QRect face = r.adjusted(1, 1, -2, -2);
      const bool down = lk.value != 0;
      p.fillRect(face, pal_.color(QPalette::Button));
      usePen(p, pal_.color(down ? QPalette::Dark : QPalette::Light).rgb());
      p.drawLine(face.topLeft(), face.topRight());
      p.drawLine(face.topLeft(), face.bottomLeft());
      usePen(p, pal_.color(down ? QPalette::Light : QPalette::Dark).rgb());
      p.drawLine(face.bottomLeft(), face.bottomRight());
      p.drawLine(face.topRight(), face.bottomRight());
      useFont(p, lk);
      usePen(p, pal_.color(QPalette::ButtonText).rgb());
      p.drawText(face, Qt::AlignCenter, text);
    } else if (!text.isEmpty()) {
      usePen(p, fore.rgb());
      if (lk.orient == 0 && !lk.multiLine) {
        paintLine(p, r, inner, lk, text);
      } else {
        useFont(p, lk);
        paintText(p, inner,
                  hFlag(lk.hAlign) | vFlag(lk.vAlign) | (lk.multiLine ? Qt::TextWordWrap : Qt::TextSingleLine),
                  lk.orient, text);
      }
    }
  }

  if (lk.hasNote) {
    // The note mark: a small triangle in the top right corner, drawn as shrinking pixel rows.
    const QColor mark = toQColor(lk.noteColour, pal_);
    const int n = std::min({kNoteMark, r.width(), r.height()});
    for (int k = 0; k < n; ++k) p.fillRect(QRect(r.right() - (n - 1 - k), r.top() + k, n - k, 1), mark);
  }
}

void SurfaceView::paintCheckBox(QPainter& p, const QRect& inner, const SpreadSurface::CellLook& lk) {
  const int size = std::min({kCheckBoxSize, inner.width(), inner.height()});
  if (size < 5) return;
  const int x = lk.hAlign == 2 ? inner.left() + (inner.width() - size) / 2
                : lk.hAlign == 1 ? inner.right() - size + 1
                                 : inner.left();
  const int y = lk.vAlign == 0 ? inner.top() : lk.vAlign == 1 ? inner.bottom() - size + 1
                                                               : inner.top() + (inner.height() - size) / 2;
  const QRect box(x, y, size, size);
  const QColor frame = pal_.color(QPalette::Text);
  p.fillRect(box, pal_.color(QPalette::Base));
  p.fillRect(QRect(box.left(), box.top(), size, 1), frame);
  p.fillRect(QRect(box.left(), box.bottom(), size, 1), frame);
  p.fillRect(QRect(box.left(), box.top(), 1, size), frame);
  p.fillRect(QRect(box.right(), box.top(), 1, size), frame);
  if (lk.value != 0) {
    // The tick, as short columns of two pixels: down from the left, then up to the right.
    const int s = size - 4;  // inside the frame and a pixel of margin
    const int x0 = box.left() + 2, y0 = box.top() + 2;
    const int low = s * 2 / 5;  // where the stroke turns
    for (int i = 0; i < s; ++i) {
      const int yy = i <= low ? y0 + s / 2 + i - 1 : y0 + s / 2 + low - 1 - (i - low) * (s / 2 + low - 1) / (s - low);
      p.fillRect(QRect(x0 + i, std::clamp(yy, y0, y0 + s - 2), 1, 2), frame);
    }
  }
  if (!lk.checkText.isEmpty()) {
    const QRect textRect = lk.hAlign == 1 ? QRect(QPoint(inner.left(), inner.top()), QPoint(box.left() - 3, inner.bottom()))
                                          : QRect(QPoint(box.right() + 3, inner.top()), inner.bottomRight());
    useFont(p, lk);
    paintText(p, textRect, (lk.hAlign == 1 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter | Qt::TextSingleLine,
              0, lk.checkText);
  }
}

// Glyphs of a plain ASCII text into glyphs_/positions_; false when the text needs shaping.
bool SurfaceView::asciiRun(const FontEntry& f, const QString& text, qreal& width) {
  if (!f.raw.isValid()) return false;
  const qsizetype n = text.size();
  if (glyphs_.size() < size_t(n)) {
    glyphs_.resize(size_t(n));
    positions_.resize(size_t(n));
  }
  const QChar* s = text.constData();
  qreal x = 0;
  for (qsizetype i = 0; i < n; ++i) {
    const char16_t u = s[i].unicode();
    if (u < 32 || u >= 127 || f.asciiGlyph[u] == 0) return false;
    glyphs_[size_t(i)] = f.asciiGlyph[u];
    positions_[size_t(i)] = QPointF(x, 0);
    x += f.asciiAdvance[u];
  }
  width = x;
  return true;
}

// One line of text in its cell. Plain ASCII (numbers, codes) goes straight to glyphs; anything
// else, Thai above all, is shaped by the painter's own text layout.
void SurfaceView::paintLine(QPainter& p, const QRect& cell, const QRect& inner, const SpreadSurface::CellLook& lk,
                            const QString& text) {
  FontEntry& f = fontFor(lk);
  qreal width = 0;
  if (!asciiRun(f, text, width)) {
    useFont(p, lk);
    p.drawText(inner, hFlag(lk.hAlign) | vFlag(lk.vAlign) | Qt::TextSingleLine, text);
    return;
  }
  const qreal x = std::round(lk.hAlign == 1   ? inner.right() + 1 - width
                             : lk.hAlign == 2 ? inner.left() + (inner.width() - width) / 2
                                              : qreal(inner.left()));
  const qreal top = lk.vAlign == 0   ? qreal(inner.top())
                    : lk.vAlign == 1 ? inner.bottom() + 1 - f.height
                                     : inner.top() + (inner.height() - f.height) / 2;
  const qreal baseline = std::round(top + f.ascent);
  // Cut at the cell's edges only when the text does not fit, as the painter's own text does.
  const bool clip = x < inner.left() || x + width > inner.right() + 1 || baseline - f.ascent < cell.top() ||
                    baseline - f.ascent + f.height > cell.bottom() + 1;
  if (clip) {
    p.save();
    p.setClipRect(inner, Qt::IntersectClip);
  }
  asciiRun_.setRawFont(f.raw);
  asciiRun_.setRawData(glyphs_.data(), positions_.data(), int(text.size()));
  p.drawGlyphRun(QPointF(x, baseline), asciiRun_);
  if (clip) p.restore();
}

void SurfaceView::paintText(QPainter& p, const QRect& inner, int flags, int16_t orient, const QString& text) {
  switch (orient) {
    case 2:    // down: turned a quarter clockwise
    case 3:    // up: turned a quarter anticlockwise
    case 4: {  // upside down
      p.save();
      p.translate(QRectF(inner).center());
      const qreal angle = orient == 2 ? 90 : orient == 3 ? -90 : 180;
      p.rotate(angle);
      const QSizeF sz = orient == 4 ? QSizeF(inner.size()) : QSizeF(inner.size()).transposed();
      p.drawText(QRectF(-sz.width() / 2, -sz.height() / 2, sz.width(), sz.height()), flags, text);
      p.restore();  // brings back the pen and font that were current
      return;
    }
    case 1:    // letters stacked, read top to bottom
    case 5: {  // the same for a single line of text
      QString stacked;
      QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
      qsizetype from = 0;
      while (finder.toNextBoundary() != -1) {
        if (from > 0) stacked += QLatin1Char('\n');
        stacked += text.mid(from, finder.position() - from);
        from = finder.position();
      }
      p.drawText(inner, (flags & ~(Qt::TextSingleLine | Qt::TextWordWrap | Qt::AlignHorizontal_Mask)) | Qt::AlignHCenter,
                 stacked);
      return;
    }
    default:
      p.drawText(inner, flags, text);
  }
}

// ---- Input ---------------------------------------------------------------------------------------------

int16_t SurfaceView::shiftStateOf(Qt::KeyboardModifiers m) {
  int16_t s = 0;
  if (m & Qt::ShiftModifier) s |= shift::Shift;
  if (m & Qt::ControlModifier) s |= shift::Ctrl;
  if (m & Qt::AltModifier) s |= shift::Alt;
  return s;
}

int16_t SurfaceView::virtualKeyOf(int k, Qt::KeyboardModifiers m) {
  if (k >= Qt::Key_A && k <= Qt::Key_Z) return int16_t('A' + (k - Qt::Key_A));
  if (k >= Qt::Key_0 && k <= Qt::Key_9) {
    // Digits of the number pad have keys of their own.
    return int16_t((m & Qt::KeypadModifier) ? 96 + (k - Qt::Key_0) : '0' + (k - Qt::Key_0));
  }
  if (k >= Qt::Key_F1 && k <= Qt::Key_F24) return int16_t(key::F1 + (k - Qt::Key_F1));
  const bool pad = (m & Qt::KeypadModifier) != 0;
  switch (k) {
    case Qt::Key_Backspace: return key::Back;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return key::Tab;
    case Qt::Key_Clear: return 12;
    case Qt::Key_Return:
    case Qt::Key_Enter: return key::Return;
    case Qt::Key_Shift: return key::Shift;
    case Qt::Key_Control: return key::Control;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return key::Escape;
    case Qt::Key_Space: return key::Space;
    case Qt::Key_PageUp: return key::PageUp;
    case Qt::Key_PageDown: return key::PageDown;
    case Qt::Key_End: return key::End;
    case Qt::Key_Home: return key::Home;
    case Qt::Key_Left: return key::Left;
    case Qt::Key_Up: return key::Up;
    case Qt::Key_Right: return key::Right;
    case Qt::Key_Down: return key::Down;
    case Qt::Key_Print: return 44;
    case Qt::Key_Insert: return key::Insert;
    case Qt::Key_Delete: return key::Delete;
    case Qt::Key_Meta: return 91;
    case Qt::Key_Menu: return 93;
    case Qt::Key_Asterisk: return pad ? 106 : 56;  // '*' over the 8
    case Qt::Key_Plus: return pad ? 107 : 187;
    case Qt::Key_Minus: return pad ? 109 : 189;
    case Qt::Key_Period: return pad ? 110 : 190;
    case Qt::Key_Slash: return pad ? 111 : 191;
    case Qt::Key_NumLock: return 144;
    case Qt::Key_ScrollLock: return 145;
    case Qt::Key_Semicolon:
    case Qt::Key_Colon: return 186;
    case Qt::Key_Equal: return 187;
    case Qt::Key_Comma:
    case Qt::Key_Less: return 188;
    case Qt::Key_Underscore: return 189;
    case Qt::Key_Greater: return 190;
    case Qt::Key_Question: return 191;
    case Qt::Key_QuoteLeft:
    case Qt::Key_AsciiTilde: return 192;
    case Qt::Key_BracketLeft:
    case Qt::Key_BraceLeft: return 219;
    case Qt::Key_Backslash:
    case Qt::Key_Bar: return 220;
    case Qt::Key_BracketRight:
    case Qt::Key_BraceRight: return 221;
    case Qt::Key_Apostrophe:
    case Qt::Key_QuoteDbl: return 222;
    // The shifted digits are the digits' keys.
    case Qt::Key_Exclam: return '1';
    case Qt::Key_At: return '2';
    case Qt::Key_NumberSign: return '3';
    case Qt::Key_Dollar: return '4';
    case Qt::Key_Percent: return '5';
    case Qt::Key_AsciiCircum: return '6';
    case Qt::Key_Ampersand: return '7';
    case Qt::Key_ParenLeft: return '9';
    case Qt::Key_ParenRight: return '0';
    default: return 0;  // not in the classic set by its symbol; see the key's place below
  }
}

namespace {

// The classic code of a key of the main block, by the key's place: the window system's key code
// (the kernel's input code plus 8, as X11 and Wayland give it), in the order of the US keyboard's rows.
int16_t virtualKeyOfPlace(quint32 scanCode) {
  static constexpr int16_t kRows[][14] = {
      {'1', '2', '3', '4', '5', '6', '7', '8', '9', '0', 189, 187},  // codes 10 to 21
      {'Q', 'W', 'E', 'R', 'T', 'Y', 'U', 'I', 'O', 'P', 219, 221},  // 24 to 35
      {'A', 'S', 'D', 'F', 'G', 'H', 'J', 'K', 'L', 186, 222, 192},  // 38 to 49
      {'Z', 'X', 'C', 'V', 'B', 'N', 'M', 188, 190, 191},            // 52 to 61
  };
  static constexpr quint32 kFirst[] = {10, 24, 38, 52};
  static constexpr quint32 kCount[] = {12, 12, 12, 10};
  for (int r = 0; r < 4; ++r)
    if (scanCode >= kFirst[r] && scanCode < kFirst[r] + kCount[r]) return kRows[r][scanCode - kFirst[r]];
  if (scanCode == 51) return 220;  // the backslash key
  if (scanCode == 94) return 226;  // the key beside the left Shift of a 102-key board
  return 0;
}

// The Thai Kedmanee layout over the US keys: unshifted, then shifted, each row in the order of
// the US keys "`1234567890-=", "qwertyuiop[]\\", "asdfghjkl;'", "zxcvbnm,./".
int16_t virtualKeyOfThai(char16_t c) {
  static const int16_t kUs[] = {192, '1', '2', '3', '4', '5', '6', '7', '8', '9', '0', 189, 187,
                                'Q', 'W', 'E', 'R', 'T', 'Y', 'U', 'I', 'O', 'P', 219, 221, 220,
                                'A', 'S', 'D', 'F', 'G', 'H', 'J', 'K', 'L', 186, 222,
                                'Z', 'X', 'C', 'V', 'B', 'N', 'M', 188, 190, 191};
  // Keys that give no Thai character stand as a blank.
  static const char16_t kPlain[] = u"_ๅ/-ภถุึคตจขชๆไำพะัีรนยบลฃฟหกดเ้่าสวงผปแอิืทมใฝ";
  static const char16_t kShifted[] = u"%+๑๒๓๔ู฿๕๖๗๘๙๐\"ฎฑธํ๊ณฯญฐ,ฅฤฆฏโฌ็๋ษศซ.()ฉฮฺ์?ฒฬฦ";
  static_assert(std::size(kPlain) - 1 == std::size(kUs) && std::size(kShifted) - 1 == std::size(kUs));
  if (c < 0x0E01 || c > 0x0E7F) return 0;
  for (size_t i = 0; i < std::size(kUs); ++i)
    if (kPlain[i] == c || kShifted[i] == c) return kUs[i];
  return 0;
}

}  // namespace

int16_t SurfaceView::virtualKeyOf(const QKeyEvent& e) {
  const int k = e.key();
  // Letters follow the layout, as they always have; every other key of the main block is known by
  // its place, so that "/" typed on the Thai layout's 2 key is the 2 key.
  if (k >= Qt::Key_A && k <= Qt::Key_Z) return virtualKeyOf(k, e.modifiers());
  if (!(e.modifiers() & Qt::KeypadModifier))
    if (const int16_t place = virtualKeyOfPlace(e.nativeScanCode())) return place;
  if (const int16_t vk = virtualKeyOf(k, e.modifiers())) return vk;
  // No place given (a synthetic event): a Thai character names its key on the Kedmanee layout.
  const QString text = e.text();
  if (text.size() == 1) return virtualKeyOfThai(text.at(0).unicode());
  return 0;
}

std::vector<int16_t> SurfaceView::keyAsciiOf(const QKeyEvent& e) {
  const int k = e.key();
  const Qt::KeyboardModifiers m = e.modifiers();
  const bool ctrl = (m & Qt::ControlModifier) != 0;
  const bool alt = (m & Qt::AltModifier) != 0;
  if (ctrl && !alt) {
    // Ctrl with a letter gives its control character; Ctrl+Enter a line feed.
    if (k >= Qt::Key_A && k <= Qt::Key_Z) return {int16_t(1 + (k - Qt::Key_A))};
    if (k == Qt::Key_Return || k == Qt::Key_Enter) return {10};
    return {};
  }
  if (alt && !ctrl) return {};  // menu keys
  switch (k) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return {13};
    case Qt::Key_Escape: return {27};
    case Qt::Key_Backspace: return {8};
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Delete: return {};
    default: break;
  }
  std::vector<int16_t> out;
  for (QChar ch : e.text()) {
    const ushort u = ch.unicode();
    if (u >= 32 && u != 127) out.push_back(int16_t(u));
  }
  return out;
}

bool SurfaceView::event(QEvent* e) {
  // Tab moves between cells here, not between widgets.
  if (e->type() == QEvent::KeyPress) {
    auto* ke = static_cast<QKeyEvent*>(e);
    if (ke->key() == Qt::Key_Tab || ke->key() == Qt::Key_Backtab) {
      keyPressEvent(ke);
      return true;
    }
  }
  return QAbstractScrollArea::event(e);
}

void SurfaceView::keyPressEvent(QKeyEvent* e) {
  const QPointer<SurfaceView> self(this);
  const int16_t sh = shiftStateOf(e->modifiers());
  const int16_t vk = virtualKeyOf(*e);
  if (vk) surface_.inputKeyDown(vk, sh);
  if (!self) return;
  for (int16_t a : keyAsciiOf(*e)) surface_.inputKeyPress(a);
  e->accept();
  afterInput(self);
}

void SurfaceView::keyReleaseEvent(QKeyEvent* e) {
  if (e->isAutoRepeat()) return;  // one KeyUp when the key is let go, after its repeated KeyDowns
  const QPointer<SurfaceView> self(this);
  const int16_t vk = virtualKeyOf(*e);
  if (vk) surface_.inputKeyUp(vk, shiftStateOf(e->modifiers()));
  e->accept();
  afterInput(self);
}

namespace {
std::optional<MouseButton> buttonOf(Qt::MouseButton b) {
  switch (b) {
    case Qt::LeftButton: return MouseButton::Left;
    case Qt::RightButton: return MouseButton::Right;
    case Qt::MiddleButton: return MouseButton::Middle;
    default: return std::nullopt;
  }
}
}  // namespace

void SurfaceView::mousePressEvent(QMouseEvent* e) {
  const auto button = buttonOf(e->button());
  if (!button) return;
  if (!hasFocus()) setFocus(Qt::MouseFocusReason);
  const QPointF pos = e->position();
  const QPointer<SurfaceView> self(this);
  surface_.inputMouseDown(*button, shiftStateOf(e->modifiers()), twips(pos.x()), twips(pos.y()));
  afterInput(self);
}

void SurfaceView::mouseMoveEvent(QMouseEvent* e) {
  const QPointF pos = e->position();
  const bool left = (e->buttons() & Qt::LeftButton) != 0;
  if (!left) {
    const SpreadSurface::Hit hit = surface_.hitTest(twips(pos.x()), twips(pos.y()));
    const Qt::CursorShape shape =
        hit.resizingCol() ? Qt::SplitHCursor : hit.resizingRow() ? Qt::SplitVCursor : Qt::ArrowCursor;
    if (viewport()->cursor().shape() != shape) viewport()->setCursor(shape);
  }
  const QPointer<SurfaceView> self(this);
  surface_.inputMouseMove(twips(pos.x()), twips(pos.y()), left);
  if (left) afterInput(self);
}

void SurfaceView::mouseReleaseEvent(QMouseEvent* e) {
  const auto button = buttonOf(e->button());
  if (!button) return;
  const QPointer<SurfaceView> self(this);
  const QPointF pos = e->position();
  surface_.inputMouseUp(*button, twips(pos.x()), twips(pos.y()));
  afterInput(self);
}

void SurfaceView::mouseDoubleClickEvent(QMouseEvent* e) {
  if (e->button() != Qt::LeftButton) return;
  const QPointer<SurfaceView> self(this);
  const QPointF pos = e->position();
  surface_.inputDblClick(twips(pos.x()), twips(pos.y()));
  afterInput(self);
}

void SurfaceView::wheelEvent(QWheelEvent* e) {
  const int rotation = e->angleDelta().y();
  e->accept();
  if (rotation == 0) return;
  if (wheelOverride && wheelOverride(rotation, e->globalPosition().toPoint())) return;
  // The grids take the wheel through the process's one wheel hook: the grid under the pointer
  // hooks its surface, and each turn reaches the grid's MouseWheel with the classic four values
  // (keys, signed rotation in units of 120 a notch, screen pixels). The sheet the grids were
  // written for scrolls by no wheel of its own, so a hooked turn ends there.
  if (auto* grid = qobject_cast<GridEditorWidget*>(parentWidget());
      grid && tq7MouseWheelControl::hookedSurface() != &surface_)
    tq7MouseWheelControl::WheelHook(surface_, grid->grid());
  if (tq7MouseWheelControl::hookedSurface() == &surface_) {
    namespace mw = tq7MouseWheelControl;
    const Qt::MouseButtons b = e->buttons();
    const Qt::KeyboardModifiers m = e->modifiers();
    const int32_t keys = (b & Qt::LeftButton ? mw::MK_LBUTTON : 0) | (b & Qt::RightButton ? mw::MK_RBUTTON : 0) |
                         (m & Qt::ShiftModifier ? mw::MK_SHIFT : 0) | (m & Qt::ControlModifier ? mw::MK_CONTROL : 0) |
                         (b & Qt::MiddleButton ? mw::MK_MBUTTON : 0);
    const QPoint at = e->globalPosition().toPoint();
    const QPointer<SurfaceView> self(this);
    mw::WindowProc(surface_.hWnd(), mw::WM_MOUSEWHEEL, mw::wheelWParam(rotation, keys), mw::wheelLParam(at.x(), at.y()));
    afterInput(self);
    return;
  }
  // Three rows a notch; fine-grained wheels add up to whole notches.
  wheelRemainder_ += rotation;
  const int notches = wheelRemainder_ / 120;
  if (notches == 0) return;
  wheelRemainder_ -= notches * 120;
  const QPointer<SurfaceView> self(this);
  surface_.inputWheel(-notches * 3);
  afterInput(self);
}

void SurfaceView::focusInEvent(QFocusEvent* e) {
  QAbstractScrollArea::focusInEvent(e);
  if (onFocusIn) onFocusIn();
}

}  // namespace tq7
