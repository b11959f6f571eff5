#pragma once
// The image list an application hands to the ribbon: pictures counted from 1, each with an
// optional key. The ribbon reads ListImages().Item(index).Picture for each button it adds.
#include <QImage>
#include <QString>
#include <vector>

namespace tq7 {

class ImageList {
 public:
  struct ListImage {
    QImage Picture;  // a picture with a device pixel ratio of 2 is drawn sharp on scaled screens
    QString Key;
  };

  class Collection {
   public:
    int Count() const { return int(items_.size()); }
    // Counts from 1; an index outside the list is error 35600.
    ListImage& Item(int index);
    const ListImage& Item(int index) const;
    ListImage& Add(const QImage& picture, const QString& key = QString());
    void Clear() { items_.clear(); }

   private:
    std::vector<ListImage> items_;
  };

  Collection& ListImages() { return images_; }
  const Collection& ListImages() const { return images_; }

 private:
  Collection images_;
};

}  // namespace tq7
