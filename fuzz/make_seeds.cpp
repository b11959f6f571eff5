// Writes the fuzz target's seed corpus: small images of each format written by Qt, and a GIF
// written byte by byte (Qt writes none). Run once by hand: make_seeds <folder>.
#include <QByteArray>
#include <QFile>
#include <QImage>
#include <QImageWriter>
#include <QString>

int main(int argc, char** argv) {
  if (argc < 2) return 2;
  const QString dir = QString::fromLocal8Bit(argv[1]);
  struct Seed {
    const char* name;
    QImage::Format format;
    const char* writer;
  };
  const Seed seeds[] = {{"rgba.png", QImage::Format_ARGB32, "png"},   {"grey.png", QImage::Format_Grayscale8, "png"},
                        {"rgb.bmp", QImage::Format_RGB32, "bmp"},     {"mono.bmp", QImage::Format_Mono, "bmp"},
                        {"rgb.jpg", QImage::Format_RGB32, "jpeg"},    {"grey.jpg", QImage::Format_Grayscale8, "jpeg"}};
  for (const Seed& s : seeds) {
    QImage img(23, 17, s.format);
    img.fill(0);
    if (!QImageWriter(dir + QLatin1Char('/') + QLatin1String(s.name), s.writer).write(img)) return 1;
  }
  // GIF89a, 5 x 3, four colours, LZW with a clear code before every pixel.
  QByteArray g("GIF89a\x05\x00\x03\x00\x81\x00\x00", 13);
  g.append(QByteArray(12, '\x40'));
  g.append(",\0\0\0\0\x05\0\x03\0\0\x02", 11);
  QByteArray codes;
  quint32 acc = 0;
  int bits = 0;
  auto put = [&](int c) {
    acc |= quint32(c) << bits;
    for (bits += 3; bits >= 8; bits -= 8, acc >>= 8) codes.append(char(acc & 0xFF));
  };
  for (int i = 0; i < 15; ++i) put(4), put(i % 4);
  put(5);
  if (bits) codes.append(char(acc & 0xFF));
  g.append(char(codes.size())).append(codes).append('\0').append(';');
  QFile f(dir + QStringLiteral("/four.gif"));
  return f.open(QIODevice::WriteOnly) && f.write(g) == g.size() ? 0 : 1;
}
