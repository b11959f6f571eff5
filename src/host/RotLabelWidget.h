#pragma once
// The rotated label as a QWidget: filled with its text colour and shaped by a mask that holds
// only the letters, so the form shows through between them. Also the drawing both rotated
// controls share.
#include "controls/RotLabel.h"
#include "host/WidgetMirror.h"

#include <QWidget>

class QPainter;

namespace tq7 {

// DrawRotatedText: the text from its top left corner (X, Y in twips), turned counter-clockwise
// by the angle about that corner, in the font the drawing names.
void drawRotatedText(QPainter& p, const RotatedText& t);
QFont rotatedFont(const RotatedText& t);

class RotLabelWidget : public QWidget, private RotLabelEvents {
  Q_OBJECT
 public:
  explicit RotLabelWidget(QWidget* parent = nullptr);
  ~RotLabelWidget() override;

  RotLabel& label() { return label_; }
  void setListener(RotLabelEvents* l) { appListener_ = l; }
  // Brings the shape and the colour in line with the core at once.
  void syncNow();

 signals:
  void click();

 protected:
  void paintEvent(QPaintEvent* e) override;
  void resizeEvent(QResizeEvent* e) override;
  void showEvent(QShowEvent* e) override;
  void mouseReleaseEvent(QMouseEvent* e) override;

 private:
  void Click() override;

  RotLabel label_;
  RotLabelEvents* appListener_ = nullptr;
  int shownDrawing_ = -1;
  QSize maskSize_;
  CoalescedSync sync_{this, [this] { syncNow(); }};
};

}  // namespace tq7
