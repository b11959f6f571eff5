#include "controls/CImageInfo.h"

#include "frame/Error.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <array>
#include <cstring>

namespace tq7 {

namespace {
// The buffer B, kept for the thread so that a reading allocates nothing.
std::array<uint8_t, CImageInfo::BufferSize>& buffer() {
  thread_local std::array<uint8_t, CImageInfo::BufferSize> B;
  return B;
}
// The first index from `from` on that holds 255, or JpegLimit when none below it does.
size_t nextFF(const uint8_t* B, size_t from) {
  if (from >= CImageInfo::JpegLimit) return CImageInfo::JpegLimit;
  const void* hit = std::memchr(B + from, 255, CImageInfo::JpegLimit - from);
  return hit ? size_t(static_cast<const uint8_t*>(hit) - B) : CImageInfo::JpegLimit;
}

// Frame headers of the JPEG markers: baseline, extended, progressive and lossless, Huffman or
// arithmetic coded. DHT (196), JPG (200) and DAC (204) are no frames.
bool isFrameMarker(int c) {
  return (c >= 192 && c <= 195) || (c >= 197 && c <= 199) || (c >= 201 && c <= 203) || (c >= 205 && c <= 207);
}
}  // namespace

void CImageInfo::ReadImageInfo(const QString& sFileName) {
  width_ = 0;
  height_ = 0;
  depth_ = 0;
  type_ = itUNKNOWN;
  // The buffer is what the file does not fill: zeros.
  auto* B = &buffer();
  B->fill(0);
  const QFileInfo info(sFileName);
  if (info.exists()) {
    if (info.isDir()) throw Error{err::PathFileAccess, QStringLiteral("Path/File access error")};
    QFile f(sFileName);
    if (!f.open(QIODevice::ReadOnly)) throw Error{err::PathFileAccess, QStringLiteral("Path/File access error")};
    const qint64 got = f.read(reinterpret_cast<char*>(B->data()), qint64(BufferSize));
    if (got < 0) throw Error{err::PathFileAccess, QStringLiteral("Path/File access error")};
  } else if (!info.absoluteDir().exists()) {
    throw Error{err::PathNotFound, QStringLiteral("Path not found")};
  }
  // A missing file in an existing folder reads as an empty one; nothing is created.
  readBuffer(B->data());
}

void CImageInfo::ReadImageInfoBytes(const uint8_t* data, size_t size) {
  width_ = 0;
  height_ = 0;
  depth_ = 0;
  type_ = itUNKNOWN;
  auto* B = &buffer();
  B->fill(0);
  if (data && size) std::memcpy(B->data(), data, size < BufferSize ? size : BufferSize);
  readBuffer(B->data());
}

// Depth is a byte: a product that does not fit fails as the assignment of a number too large.
void CImageInfo::setDepth(int value) {
  if (value < 0 || value > 255) throw Error{err::Overflow, QStringLiteral("Overflow")};
  depth_ = uint8_t(value);
}

void CImageInfo::readBuffer(const uint8_t* B) {
  // PNG: the IHDR chunk stands at a fixed place; only the low 16 bits of its sizes count.
  if (B[0] == 137 && B[1] == 'P' && B[2] == 'N') {
    type_ = itPNG;
    switch (B[25]) {
      case 0: setDepth(B[24]); break;
      case 2: setDepth(B[24] * 3); break;
      case 3: setDepth(8); break;
      case 4: setDepth(B[24] * 2); break;
      case 6: setDepth(B[24] * 4); break;
      default: type_ = itUNKNOWN; break;
    }
    if (type_ == itPNG) {
      width_ = B[18] * 256 + B[19];
      height_ = B[22] * 256 + B[23];
    }
  }
  // GIF and BMP are tested whatever came before: the later test wins.
  if (B[0] == 'G' && B[1] == 'I' && B[2] == 'F') {
    type_ = itGIF;
    width_ = B[6] + B[7] * 256;
    height_ = B[8] + B[9] * 256;
    setDepth((B[10] & 7) + 1);
  }
  if (B[0] == 'B' && B[1] == 'M') {
    type_ = itBMP;
    width_ = B[18] + B[19] * 256;
    height_ = B[22] + B[23] * 256;
    setDepth(B[28]);
  }
  if (type_ != itUNKNOWN) return;
  searchJpeg(B);
}

void CImageInfo::searchJpeg(const uint8_t* B) {
  // The start-of-image mark may stand anywhere in the first bytes, not only at the start.
  // Byte by byte in effect; the jumps go straight to the next 255, as nothing else can match.
  size_t p = nextFF(B, 0);
  while (p < JpegLimit && !(B[p + 1] == 216 && B[p + 2] == 255)) p = nextFF(B, p + 1);
  size_t q = p + 2;
  if (q >= JpegLimit) return;
  for (;;) {
    // Fill bytes (255 runs) are passed over to the next marker.
    for (;;) {
      q = nextFF(B, q);
      if (q >= JpegLimit) return;
      if (B[q + 1] != 255) break;
      ++q;
      if (q >= JpegLimit) return;
    }
    const size_t m = q + 1;
    const int c = B[m];
    if (isFrameMarker(c)) {
      type_ = itJPEG;
      height_ = B[m + 4] * 256 + B[m + 5];
      width_ = B[m + 6] * 256 + B[m + 7];
      setDepth(B[m + 8] * 8);
      return;
    }
    const size_t L = size_t(B[m + 1]) * 256 + B[m + 2];
    if (m + L >= JpegLimit) return;
    q = m + L + 1;
    if (q >= JpegLimit) return;
  }
}

}  // namespace tq7
