// The image header reader: type, size and depth from the first bytes of a file, with the
// reader's own quirks (later tests win, 16-bit sizes, the JPEG search bound) and its failures
// reaching the caller.
#include "controls/CImageInfo.h"

#include "ImageSamples.h"
#include "frame/Error.h"

#include <QBuffer>
#include <QImage>
#include <QImageReader>
#include <QImageWriter>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;

namespace {

struct CImageInfoTest : ::testing::Test {
  QTemporaryDir dir;
  CImageInfo info;
  QString file(const QString& name, const QByteArray& bytes) {
    const QString p = dir.filePath(name);
    EXPECT_TRUE(samples::write(p, bytes));
    return p;
  }
  void read(const QByteArray& bytes) { info.ReadImageInfoBytes(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size())); }
  void expect(eImageType t, int w, int h, int d) {
    EXPECT_EQ(info.ImageType(), t);
    EXPECT_EQ(info.Width(), w);
    EXPECT_EQ(info.Height(), h);
    EXPECT_EQ(int(info.Depth()), d);
  }
};

}  // namespace

TEST_F(CImageInfoTest, PngDepthFollowsTheColourTypeAndOnlyTheLowSixteenBitsOfTheSizeCount) {
  EXPECT_EQ(info.ImageType(), itUNKNOWN);
  EXPECT_EQ(info.Width(), 0);
  read(samples::pngHeader(640, 480, 8, 2));
  expect(itPNG, 640, 480, 24);
  read(samples::pngHeader(3, 4, 16, 6));
  expect(itPNG, 3, 4, 64);
  read(samples::pngHeader(5, 6, 1, 3));  // a palette gives 8 whatever the bit depth says
  expect(itPNG, 5, 6, 8);
  read(samples::pngHeader(5, 6, 16, 0));
  expect(itPNG, 5, 6, 16);
  read(samples::pngHeader(5, 6, 8, 4));
  expect(itPNG, 5, 6, 16);
  read(samples::pngHeader(70000, 65536 + 300, 8, 6));  // the high bytes are ignored
  expect(itPNG, 70000 - 65536, 300, 32);
  // Colour type 5 does not exist: unknown, and the sizes are not read.
  read(samples::pngHeader(640, 480, 8, 5));
  expect(itUNKNOWN, 0, 0, 0);
  // A lying bit depth whose product does not fit in a byte fails as an overflow, after the type
  // was found and before the sizes.
  try {
    read(samples::pngHeader(640, 480, 200, 6));
    FAIL() << "no overflow";
  } catch (const Error& e) {
    EXPECT_EQ(e.number, err::Overflow);
  }
  expect(itPNG, 0, 0, 0);
}

TEST_F(CImageInfoTest, GifAndBmpAreTestedWhateverCameBefore) {
  read(samples::gifHeader(300, 200, 0x05));  // no global table flag: the size bits still count
  expect(itGIF, 300, 200, 6);
  read(samples::gifHeader(65535, 1, 0xF7));
  expect(itGIF, 65535, 1, 8);
  read(samples::bmpHeader(800, 600, 24));
  expect(itBMP, 800, 600, 24);
  // A top-down bitmap stores its height negative: the low 16 bits read as a large number.
  read(samples::bmpHeader(10, -10, 32));
  expect(itBMP, 10, 65526, 32);
  // "BM" followed further on by a JPEG start and frame stays a bitmap.
  QByteArray bm = samples::bmpHeader(7, 8, 8);
  bm.append(samples::jpegHeader(100, 50, 3));
  read(bm);
  expect(itBMP, 7, 8, 8);
}

TEST_F(CImageInfoTest, JpegIsFoundBySearchingMarkersWithinTheBound) {
  read(samples::jpegHeader(1024, 768, 3));
  expect(itJPEG, 1024, 768, 24);
  read(samples::jpegHeader(20, 10, 1, 0xC2));  // progressive, grey
  expect(itJPEG, 20, 10, 8);
  // DHT (196) is no frame: passed over as a segment.
  read(samples::jpegHeader(1, 1, 3, 0xC4, 2));
  EXPECT_EQ(info.ImageType(), itUNKNOWN);  // a lone DHT and nothing after: no frame header
  // The start may stand anywhere in the first bytes, with fill bytes before a marker.
  QByteArray junk(1000, 'x');
  QByteArray filled = samples::jpegHeader(9, 8, 3);
  filled.insert(20, QByteArray(5, char(0xFF)));
  read(junk + filled);
  expect(itJPEG, 9, 8, 24);
  // A start with no frame header at all.
  read(QByteArray("\xFF\xD8\xFF\xE0\x00\x04" "ab", 8));
  expect(itUNKNOWN, 0, 0, 0);
  // A large thumbnail pushes the frame header beyond the bound: unknown, by decision.
  read(samples::jpegHeader(640, 480, 3, 0xC0, 65530));
  expect(itUNKNOWN, 0, 0, 0);
  // Just inside the bound it is still found.
  read(samples::jpegHeader(640, 480, 3, 0xC0, 65400));
  expect(itJPEG, 640, 480, 24);
  // 32 components of 8 bits do not fit in the depth byte.
  EXPECT_THROW(read(samples::jpegHeader(2, 2, 32)), Error);
  EXPECT_EQ(info.ImageType(), itJPEG);
  EXPECT_EQ(info.Width(), 2);
}

TEST_F(CImageInfoTest, FilesMissingEmptyOrUnreadable) {
  info.ReadImageInfo(file(QStringLiteral("a.png"), samples::pngHeader(16, 9, 8, 6)));
  expect(itPNG, 16, 9, 32);
  // Empty, truncated, not an image: the results of the call before are gone, and what the file
  // does not fill reads as zeros.
  info.ReadImageInfo(file(QStringLiteral("empty.jpg"), QByteArray()));
  expect(itUNKNOWN, 0, 0, 0);
  info.ReadImageInfo(file(QStringLiteral("short.png"), samples::pngHeader(16, 9, 8, 6).left(20)));
  expect(itPNG, 16, 0, 0);  // what the file does not fill reads 0: grey of depth 0, no height
  info.ReadImageInfo(file(QStringLiteral("notes.txt"), QByteArray("just some text, not a picture\n")));
  expect(itUNKNOWN, 0, 0, 0);
  // A name with Thai letters and blanks is a name like any other.
  info.ReadImageInfo(file(QStringLiteral("รูป สินค้า 1.gif"), samples::gifImage(3, 2)));
  expect(itGIF, 3, 2, 2);

  // A missing file in an existing folder reads as an empty one and is not created.
  const QString missing = dir.filePath(QStringLiteral("missing.bmp"));
  info.ReadImageInfo(missing);
  expect(itUNKNOWN, 0, 0, 0);
  EXPECT_FALSE(QFile::exists(missing));
  // A missing folder, a folder, an unreadable file: the file layer's failure reaches the caller.
  try {
    info.ReadImageInfo(dir.filePath(QStringLiteral("nowhere/x.png")));
    FAIL();
  } catch (const Error& e) {
    EXPECT_EQ(e.number, err::PathNotFound);
  }
  EXPECT_THROW(info.ReadImageInfo(dir.path()), Error);
  const QString locked = file(QStringLiteral("locked.png"), samples::pngHeader(1, 1, 8, 0));
  QFile::setPermissions(locked, QFileDevice::Permissions());
  if (!QFile(locked).open(QIODevice::ReadOnly)) EXPECT_THROW(info.ReadImageInfo(locked), Error);
}

// What Qt's own reader says of images Qt wrote (and of a GIF written here, as Qt writes none).
TEST_F(CImageInfoTest, AgreesWithQtsReaderOnImagesOfEachFormat) {
  struct Case {
    const char* name;
    QImage::Format format;
    const char* writer;
    int depth;
  };
  const Case cases[] = {
      {"rgba.png", QImage::Format_ARGB32, "png", 32},    {"rgb.png", QImage::Format_RGB32, "png", 24},
      {"grey.png", QImage::Format_Grayscale8, "png", 8}, {"palette.png", QImage::Format_Indexed8, "png", 8},
      {"rgb.bmp", QImage::Format_RGB32, "bmp", 24},      {"rgb.jpg", QImage::Format_RGB32, "jpeg", 24},
      {"grey.jpg", QImage::Format_Grayscale8, "jpeg", 8},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    QImage img(37, 23, c.format);
    if (c.format == QImage::Format_Indexed8) {
      img.setColorTable({qRgb(0, 0, 0), qRgb(255, 0, 0), qRgb(0, 0, 255)});
      for (int y = 0; y < img.height(); ++y)
        for (int x = 0; x < img.width(); ++x) img.setPixel(x, y, uint((x + y) % 3));
    } else {
      img.fill(QColor(200, 120, 40));
    }
    const QString path = dir.filePath(QString::fromLatin1(c.name));
    ASSERT_TRUE(QImageWriter(path, c.writer).write(img));
    info.ReadImageInfo(path);
    QImageReader reader(path);
    const QByteArray fmt = reader.format();
    const eImageType want = fmt == "png" ? itPNG : fmt == "bmp" ? itBMP : fmt == "jpeg" ? itJPEG : itUNKNOWN;
    EXPECT_EQ(info.ImageType(), want);
    EXPECT_EQ(QSize(info.Width(), info.Height()), reader.size());
    EXPECT_EQ(int(info.Depth()), c.depth);
  }
  const QString gif = file(QStringLiteral("made.gif"), samples::gifImage(41, 17));
  QImageReader reader(gif);
  EXPECT_EQ(reader.format(), QByteArray("gif"));
  info.ReadImageInfo(gif);
  EXPECT_EQ(info.ImageType(), itGIF);
  EXPECT_EQ(QSize(info.Width(), info.Height()), reader.size());
  const QImage decoded = reader.read();
  EXPECT_FALSE(decoded.isNull()) << reader.errorString().toStdString();
  EXPECT_EQ(decoded.size(), QSize(41, 17));
}
