// The image header reader against the file layer it stands on: reading the headers of a store of
// pictures (JPEGs with a 60 KB segment before the frame, PNGs, and files that are no image, which
// the JPEG search walks to its bound) against a bare open and read of the same 64 KB. The reader's
// own work must stay small beside the reading: it exits non-zero above 2x.
#include "controls/CImageInfo.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace {
using Clock = std::chrono::steady_clock;

QByteArray jpeg(int w, int h, int segment) {
  QByteArray b("\xFF\xD8\xFF\xE1", 4);
  b.append(char((segment + 2) >> 8)).append(char((segment + 2) & 0xFF)).append(QByteArray(segment, 'e'));
  b.append("\xFF\xC0\x00\x11\x08", 5);
  b.append(char(h >> 8)).append(char(h & 0xFF)).append(char(w >> 8)).append(char(w & 0xFF)).append('\x03');
  b.append(QByteArray(20000, 'd'));
  return b;
}

QByteArray png(int w, int h) {
  QByteArray b("\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR", 16);
  for (int v : {w, h}) b.append(char(0)).append(char(0)).append(char(v >> 8)).append(char(v & 0xFF));
  b.append('\x08').append('\x06').append(QByteArray(40000, 'p'));
  return b;
}

template <class F>
double best(F&& f) {
  double out = 1e30;
  for (int i = 0; i < 5; ++i) {
    const auto t0 = Clock::now();
    f();
    out = std::min(out, std::chrono::duration<double>(Clock::now() - t0).count());
  }
  return out;
}
}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QTemporaryDir dir;
  std::vector<QString> files;
  for (int i = 0; i < 300; ++i) {
    const QString p = dir.filePath(QStringLiteral("f%1").arg(i));
    QFile f(p);
    if (!f.open(QIODevice::WriteOnly)) return 2;
    f.write(i % 3 == 0 ? jpeg(640 + i, 480, 60000) : i % 3 == 1 ? png(100 + i, 80) : QByteArray(70000, 'x'));
    files.push_back(p);
  }
  tq7::CImageInfo info;
  long found = 0;
  const double reader = best([&] {
    for (int r = 0; r < 10; ++r)
      for (const QString& p : files) {
        info.ReadImageInfo(p);
        found += info.Width();
      }
  });
  std::vector<char> buf(tq7::CImageInfo::BufferSize);
  long bytes = 0;
  const double bare = best([&] {
    for (int r = 0; r < 10; ++r)
      for (const QString& p : files) {
        QFile f(p);
        if (f.open(QIODevice::ReadOnly)) bytes += f.read(buf.data(), qint64(buf.size()));
      }
  });
  const double n = 10.0 * double(files.size());
  const double ratio = reader / bare;
  std::printf("headers: %.1f us a file (reader), %.1f us a file (bare 64 KB read), ratio %.2f (budget 2.00)\n",
              reader / n * 1e6, bare / n * 1e6, ratio);
  std::printf("bench_image_info: %s (%ld, %ld)\n", ratio <= 2.0 ? "within budget" : "OVER BUDGET", found > 0 ? 1L : 0L,
              bytes > 0 ? 1L : 0L);
  return ratio <= 2.0 ? 0 : 1;
}
