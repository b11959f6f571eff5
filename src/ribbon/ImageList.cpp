#include "ribbon/ImageList.h"

#include "frame/Error.h"

namespace tq7 {

namespace {
[[noreturn]] void outOfBounds() { throw Error{35600, QStringLiteral("Index out of bounds")}; }
}  // namespace

ImageList::ListImage& ImageList::Collection::Item(int index) {
  if (index < 1 || index > Count()) outOfBounds();
  return items_[size_t(index - 1)];
}

const ImageList::ListImage& ImageList::Collection::Item(int index) const {
  if (index < 1 || index > Count()) outOfBounds();
  return items_[size_t(index - 1)];
}

ImageList::ListImage& ImageList::Collection::Add(const QImage& picture, const QString& key) {
  items_.push_back(ListImage{picture, key});
  return items_.back();
}

}  // namespace tq7
