#pragma once
// The ribbon as a QWidget an application puts on its form. It owns the core ACPRibbon, draws its
// piece stack from the lowest place to the highest, and hands every mouse move, press and release
// to the core in twips; the core decides every look. Events reach a listener and Qt signals.
#include "ribbon/ACPRibbon.h"

#include <QFont>
#include <QHash>
#include <QImage>
#include <QWidget>
#include <utility>
#include <vector>

class QPainter;

namespace tq7 {

class ACPRibbonWidget : public QWidget, private ACPRibbonEvents {
  Q_OBJECT
 public:
  explicit ACPRibbonWidget(QWidget* parent = nullptr);
  ~ACPRibbonWidget() override;

  ACPRibbon& ribbon() { return ribbon_; }
  // The application's listener; the widget stays the core's listener and passes every event on.
  void setListener(ACPRibbonEvents* l) { appListener_ = l; }

  // Draws the stack with the painter, in the bar's pixels. With a device pixel ratio above 1 each
  // skin picture is drawn from its twice-as-large twin, so the bar stays sharp on scaled screens.
  void paintPieces(QPainter& p, qreal devicePixelRatio);
  // A piece's rectangle in the widget's pixels (empty when the piece is not loaded).
  QRect pieceRect(Piece a, int i) const;

  QSize sizeHint() const override;

 signals:
  void tabClick(const QString& ID, const QString& Caption);
  void catClick(const QString& ID, const QString& Caption);
  void buttonClick(const QString& ID, const QString& Caption);

 protected:
  void paintEvent(QPaintEvent* e) override;
  void mouseMoveEvent(QMouseEvent* e) override;
  void mousePressEvent(QMouseEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  bool event(QEvent* e) override;

 private:
  void TabClick(const QString& ID, const QString& Caption) override;
  void CatClick(const QString& ID, const QString& Caption) override;
  void ButtonClick(const QString& ID, const QString& Caption) override;
  void followHeight();
  const QFont& qfont(const tq7::Font& f);
  // A label's text drawn into a picture of its own, kept by text, colour, size, font and scale.
  const QImage& textImage(const RibbonPiece& piece, QSize size, qreal dpr);

  ACPRibbon ribbon_;
  ACPRibbonEvents* appListener_ = nullptr;
  // The few fonts of the pieces, converted once.
  std::vector<std::pair<tq7::Font, QFont>> fonts_;
  QHash<QString, QImage> texts_;
  QString key_;
};

}  // namespace tq7
