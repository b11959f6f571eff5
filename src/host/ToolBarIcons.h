#pragma once
// The images of the grids' tool bars, drawn here rather than shipped: one small picture per key of
// the image list (Help, Favorite, Insert, Remove, Lock, MoveUp, MoveDown, ...).
#include <QIcon>
#include <QString>

namespace tq7 {

// The icon for an image key; an unknown key gives a plain dot.
QIcon toolBarIcon(const QString& imageKey);

}  // namespace tq7
