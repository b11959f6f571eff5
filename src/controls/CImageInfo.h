#pragma once
// Type, size and colour depth of an image file from its first bytes, without decoding it. Knows
// PNG, GIF, BMP and JPEG. Errors of the file layer reach the caller as tq7::Error: this reader has
// no handler of its own.
#include <QString>
#include <cstddef>
#include <cstdint>

namespace tq7 {

enum eImageType { itUNKNOWN = 0, itGIF = 1, itJPEG = 2, itPNG = 3, itBMP = 4 };

class CImageInfo {
 public:
  // The header is looked for in this many bytes at the start of a file.
  static constexpr size_t BufferSize = 65536;
  // A JPEG's start and frame marks are looked for below this index only.
  static constexpr size_t JpegLimit = 65525;

  // Reads the file's first bytes and sets the four results. A missing file reads as an empty
  // one (itUNKNOWN and zeros); a folder, an unreadable file or a missing folder throws.
  void ReadImageInfo(const QString& sFileName);
  // The same on bytes already in memory (the first BufferSize of them count). A depth that does
  // not fit in a byte throws Overflow, with the results found before it kept.
  void ReadImageInfoBytes(const uint8_t* data, size_t size);

  eImageType ImageType() const { return type_; }
  int32_t Width() const { return width_; }
  int32_t Height() const { return height_; }
  uint8_t Depth() const { return depth_; }

 private:
  void readBuffer(const uint8_t* B);
  void searchJpeg(const uint8_t* B);
  void setDepth(int value);

  eImageType type_ = itUNKNOWN;
  int32_t width_ = 0;
  int32_t height_ = 0;
  uint8_t depth_ = 0;
};

}  // namespace tq7
