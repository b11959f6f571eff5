#pragma once
// Reading a grid on a form back from its pixels: where a cell stands on the widget, and how much
// ink (dark pixels) a rectangle holds.
#include "host/GridEditorWidget.h"
#include "host/SurfaceView.h"

#include <QImage>
#include <QRect>

namespace tq7::pixels {

inline int ink(const QImage& img, const QRect& r) {
  int n = 0;
  for (int y = r.top(); y <= r.bottom(); ++y)
    for (int x = r.left(); x <= r.right(); ++x)
      if (qGray(img.pixel(x, y)) < 100) ++n;
  return n;
}

// A cell's rectangle in the viewport, moved into the grid widget's coordinates.
inline QRect onWidget(GridEditorWidget& w, const QRect& cell) {
  return cell.translated(w.surfaceView()->viewport()->mapTo(&w, QPoint(0, 0)));
}

}  // namespace tq7::pixels
