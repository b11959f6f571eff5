#pragma once
// The Qt face of a SpreadSurface: paints what the surface says is in view and hands every key,
// click, drag and wheel turn to the surface's input handlers. It decides nothing on its own.
//
// Geometry: the owner places the view from the surface's Left/Top/Width/Height (twips). The area
// the sheet is painted into is exactly Width x Height, because that is the area the surface
// lays its rows and columns out in; scroll bars, when the sheet needs them, are added to the
// right and below that area.
#include "frame/SpreadSurface.h"

#include <QAbstractScrollArea>
#include <QFont>
#include <QFontMetrics>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <array>
#include <QLine>
#include <QPointer>
#include <functional>
#include <vector>

namespace tq7 {

class SurfaceView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit SurfaceView(SpreadSurface& surface, QWidget* parent = nullptr);
  ~SurfaceView() override;

  SpreadSurface& surface() const { return surface_; }

  // Re-reads the surface (geometry, visibility, scroll position, tool tip) and repaints.
  // The owner calls it once per turn of the event loop after the core changed.
  void sync();

  // Paints the sheet as it stands, in viewport pixels, over the cells that meet area.
  void paintSheet(QPainter& painter, const QRect& area);

  // A cell's place in the viewport, in pixels; empty when it is not in view.
  QRect cellRect(int32_t col, int32_t row) const;

  // Takes the wheel before the surface does: rotation in wheel units (120 a notch, negative
  // when turned towards the user), pos in screen pixels. Answering true consumes the turn.
  std::function<bool(int rotation, QPoint pos)> wheelOverride;
  // Told when the view gets the input focus; the owner runs the control's focus handling.
  std::function<void()> onFocusIn;

  // Translations of Qt's key events into the classic key set. Every key of the keyboard has a code:
  // a letter of another layout (Thai) and a shifted digit carry the code of the key they are on.
  static int16_t virtualKeyOf(const QKeyEvent& event);
  static int16_t virtualKeyOf(int qtKey, Qt::KeyboardModifiers modifiers);
  static int16_t shiftStateOf(Qt::KeyboardModifiers modifiers);
  // The characters a key press gives, as the classic KeyPress sees them.
  static std::vector<int16_t> keyAsciiOf(const QKeyEvent& event);

 protected:
  bool event(QEvent* e) override;
  void paintEvent(QPaintEvent* e) override;
  void keyPressEvent(QKeyEvent* e) override;
  void keyReleaseEvent(QKeyEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void mouseDoubleClickEvent(QMouseEvent* e) override;
  void wheelEvent(QWheelEvent* e) override;
  void focusInEvent(QFocusEvent* e) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  // One line of the layout: its number and its pixel span [a, b).
  struct Line {
    int32_t n;
    int a, b;
  };
  struct FontEntry {
    QString name;
    double size = 0;
    bool bold = false;
    QFont font;
    qreal ascent = 0, height = 0;
    // Plain ASCII needs no shaping: glyphs and advances straight from the font, by character.
    QRawFont raw;
    std::array<quint32, 128> asciiGlyph{};
    std::array<qreal, 128> asciiAdvance{};
  };

  void layout();
  void updateScrollBars();
  bool rowsOverflow() const;
  bool colsOverflow() const;
  int32_t lastTopRow() const;
  int32_t lastLeftCol() const;
  void onVerticalScroll(int value);
  void onHorizontalScroll(int value);
  void afterInput(const QPointer<SurfaceView>& self);

  void paintBand(QPainter& p, const std::vector<Line>& rows, const std::vector<Line>& cols, const QRect& area);
  void paintCell(QPainter& p, const QRect& r, int32_t col, int32_t row, const SpreadSurface::CellLook& lk,
                 const QString& text);
  void paintCheckBox(QPainter& p, const QRect& inner, const SpreadSurface::CellLook& lk);
  void paintText(QPainter& p, const QRect& inner, int flags, int16_t orient, const QString& text);
  void paintLine(QPainter& p, const QRect& cell, const QRect& inner, const SpreadSurface::CellLook& lk,
                 const QString& text);
  bool asciiRun(const FontEntry& f, const QString& text, qreal& width);
  FontEntry& fontFor(const SpreadSurface::CellLook& lk);
  void useFont(QPainter& p, const SpreadSurface::CellLook& lk);
  void usePen(QPainter& p, QRgb colour);
  static void fillLines(QPainter& p, std::vector<QLine>& lines, const QColor& colour);
  bool inSelection(int32_t col, int32_t row) const;

  static int px(double twips) { return int(twips / TwipsPerPixel + 0.5); }
  static double twips(double pixels) { return pixels * TwipsPerPixel; }

  SpreadSurface& surface_;
  bool syncing_ = false;
  int wheelRemainder_ = 0;

  // Paint state, kept between paints so that a paint allocates nothing per cell.
  std::vector<Line> hdrRows_, dataRows_, hdrCols_, dataCols_;
  size_t frozenCount_ = 0;
  std::vector<QLine> gridLines_, lightLines_, darkLines_;
  std::vector<FontEntry> fonts_;
  std::vector<quint32> glyphs_;
  std::vector<QPointF> positions_;
  QGlyphRun asciiRun_;
  int currentFont_ = -1;  // the entry fontFor() found last
  int painterFont_ = -1;  // the entry the painter holds
  QRgb currentPen_ = 0;
  bool penSet_ = false;
  QPalette pal_;
  QColor gridColour_;
  int32_t selC1_ = 0, selC2_ = 0, selR1_ = 0, selR2_ = 0;
  bool selBlock_ = false;
  bool showHoriz_ = true, showVert_ = true;
};

}  // namespace tq7
