#pragma once
// Image files for the image tests, made here: headers byte by byte where a test needs a lying
// or odd one, and whole small images where a reader must agree with the file.
#include <QByteArray>
#include <QFile>
#include <QString>
#include <cstdint>
#include <vector>

namespace samples {

inline void put16le(QByteArray& b, int at, int v) {
  b[at] = char(v & 0xFF);
  b[at + 1] = char((v >> 8) & 0xFF);
}
inline void put16be(QByteArray& b, int at, int v) {
  b[at] = char((v >> 8) & 0xFF);
  b[at + 1] = char(v & 0xFF);
}
inline void put32be(QByteArray& b, int at, uint32_t v) {
  for (int i = 0; i < 4; ++i) b[at + i] = char((v >> (24 - 8 * i)) & 0xFF);
}

// The first 33 bytes of a PNG: signature and IHDR.
inline QByteArray pngHeader(uint32_t w, uint32_t h, int bitDepth, int colourType) {
  QByteArray b(33, '\0');
  const char sig[] = {char(137), 'P', 'N', 'G', 13, 10, 26, 10};
  for (int i = 0; i < 8; ++i) b[i] = sig[i];
  put32be(b, 8, 13);
  b[12] = 'I', b[13] = 'H', b[14] = 'D', b[15] = 'R';
  put32be(b, 16, w);
  put32be(b, 20, h);
  b[24] = char(bitDepth);
  b[25] = char(colourType);
  return b;
}

// A GIF logical screen descriptor; sizeBits are the low three bits of the packed byte.
inline QByteArray gifHeader(int w, int h, int packed) {
  QByteArray b("GIF89a");
  b.resize(13);
  put16le(b, 6, w);
  put16le(b, 8, h);
  b[10] = char(packed);
  b[11] = 0;
  b[12] = 0;
  return b;
}

// A whole GIF of w x h pixels in four colours: LZW with a clear code before every pixel, so the
// code size stays at three bits.
inline QByteArray gifImage(int w, int h) {
  QByteArray b = gifHeader(w, h, 0x80 | 0x01);  // global table of 4 colours
  const unsigned char table[12] = {0, 0, 0, 255, 0, 0, 0, 255, 0, 0, 0, 255};
  b.append(reinterpret_cast<const char*>(table), 12);
  b.append(',');
  QByteArray d(8, '\0');
  put16le(d, 4, w);
  put16le(d, 6, h);
  b.append(d.mid(0, 8));
  b.append('\0');   // no local table
  b.append('\x02');  // LZW minimum code size
  std::vector<uint8_t> data;
  uint32_t acc = 0;
  int bits = 0;
  auto putCode = [&](int code) {
    acc |= uint32_t(code) << bits;
    bits += 3;
    while (bits >= 8) {
      data.push_back(uint8_t(acc & 0xFF));
      acc >>= 8;
      bits -= 8;
    }
  };
  for (int i = 0; i < w * h; ++i) {
    putCode(4);
    putCode((i / w + i % w) % 4);
  }
  putCode(5);
  if (bits) data.push_back(uint8_t(acc & 0xFF));
  for (size_t at = 0; at < data.size(); at += 255) {
    const size_t n = std::min<size_t>(255, data.size() - at);
    b.append(char(n));
    b.append(reinterpret_cast<const char*>(data.data() + at), qsizetype(n));
  }
  b.append('\0');
  b.append(';');
  return b;
}

// A BMP file header and info header.
inline QByteArray bmpHeader(int w, int h, int bits) {
  QByteArray b(54, '\0');
  b[0] = 'B', b[1] = 'M';
  b[14] = 40;
  put16le(b, 18, w & 0xFFFF);
  put16le(b, 20, (w >> 16) & 0xFFFF);
  put16le(b, 22, h & 0xFFFF);
  put16le(b, 24, (h >> 16) & 0xFFFF);
  b[26] = 1;
  b[28] = char(bits);
  return b;
}

// A JPEG's start, an APP0 segment of the given payload length, then a frame header.
inline QByteArray jpegHeader(int w, int h, int components, int marker = 0xC0, int app0Payload = 14) {
  QByteArray b;
  b.append(char(0xFF)).append(char(0xD8));
  b.append(char(0xFF)).append(char(0xE0));
  QByteArray len(2, '\0');
  put16be(len, 0, app0Payload + 2);
  b.append(len).append(QByteArray(app0Payload, 'J'));
  b.append(char(0xFF)).append(char(marker));
  QByteArray sof(8, '\0');
  put16be(sof, 0, 8 + 3 * components);
  sof[2] = 8;
  put16be(sof, 3, h);
  put16be(sof, 5, w);
  sof[7] = char(components);
  b.append(sof);
  return b;
}

inline bool write(const QString& path, const QByteArray& bytes) {
  QFile f(path);
  return f.open(QIODevice::WriteOnly) && f.write(bytes) == bytes.size();
}

}  // namespace samples
