// The ribbon on a form: real mouse moves, presses and releases over the offscreen widget, the
// hover and pressed looks read back from the pixels in each skin, and the bar at twice the scale.
#include "host/ACPRibbonWidget.h"

#include "host/QtPlatform.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <QHelpEvent>
#include <gtest/gtest.h>
#include <memory>

using namespace tq7;

namespace {

QImage tile(int w, int h) {
  QImage img(w, h, QImage::Format_ARGB32);
  img.fill(QColor(0x20, 0x60, 0xc0));
  return img;
}

void fill(ACPRibbon& r, int16_t theme) {
  r.setTheme(theme);
  auto list = std::make_shared<ImageList>();
  list->ListImages().Add(tile(24, 24));
  r.setImageList(list);
  r.AddTab(QStringLiteral("tabHome"), QStringLiteral("หน้าแรก"));
  r.AddTab(QStringLiteral("tabStock"), QStringLiteral("คลังสินค้า"));
  r.AddCat(QStringLiteral("catDocs"), QStringLiteral("tabHome"), QStringLiteral("เอกสาร"), true);
  r.AddCat(QStringLiteral("catCount"), QStringLiteral("tabStock"), QStringLiteral("ตรวจนับ"), false);
  r.AddButton(QStringLiteral("butNew"), QStringLiteral("catDocs"), QStringLiteral("ใหม่"), 1);
  r.AddButton(QStringLiteral("butPrint"), QStringLiteral("catDocs"), QStringLiteral("พิมพ์\r\nทั้งหมด"), 1, true);
  r.AddButton(QStringLiteral("butCount"), QStringLiteral("catCount"), QStringLiteral("ตรวจนับ"), 1);
  r.Refresh();
}

bool near(QColor a, QColor b, int tol = 3) {
  return std::abs(a.red() - b.red()) <= tol && std::abs(a.green() - b.green()) <= tol && std::abs(a.blue() - b.blue()) <= tol;
}

// The ribbon beside a text box, as it stands on an application's form.
struct RibbonOnForm : ::testing::Test {
  QWidget form;
  ACPRibbonWidget* w = nullptr;
  QLineEdit* other = nullptr;
  void SetUp() override {
    installQtPlatform();
    auto* layout = new QHBoxLayout(&form);
    layout->setContentsMargins(0, 0, 0, 0);
    w = new ACPRibbonWidget(&form);
    other = new QLineEdit(&form);
    layout->addWidget(w, 1);
    layout->addWidget(other);
    form.resize(900, 140);
  }
  void TearDown() override { setPlatform(nullptr); }
  void show() {
    form.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&form));
  }
  QImage shot() { return w->grab().toImage(); }
  // The piece of the button with the id.
  int button(const QString& id) {
    const ACPRibbon& r = w->ribbon();
    for (int i = 1; i <= r.pieces().ubound(Piece::ButMouse); ++i)
      if (r.piece(Piece::ButMouse, i)->Tag == id) return i;
    return -1;
  }
  // What the skin's middle picture shows at the widget's row y, at rest the stretched columns are alike.
  QColor skinAt(Piece centre, int i, int y) {
    const RibbonPiece* p = w->ribbon().piece(centre, i);
    return p->Picture.pixelColor(p->Picture.width() / 2, y - w->pieceRect(centre, i).top());
  }
};

}  // namespace

TEST_F(RibbonOnForm, HoverAndPressedLooksShowInEverySkinAndAClickNamesTheButton) {
  for (int16_t theme : {0, 1, 2}) {
    SCOPED_TRACE(theme);
    auto* fresh = new ACPRibbonWidget(&form);
    delete form.layout()->replaceWidget(w, fresh);
    delete w;
    w = fresh;
    fill(w->ribbon(), theme);
    show();
    EXPECT_EQ(w->height(), 116);
    const int b = button(QStringLiteral("butNew"));
    ASSERT_GT(b, 0);
    const QRect frame = w->pieceRect(Piece::Button_center, b);
    const QRect hit = w->pieceRect(Piece::ButMouse, b);
    // A point inside the button's frame below its caption, where only the frame draws.
    const QPoint probe(frame.center().x(), frame.bottom() - 3);
    const QColor rest = shot().pixelColor(probe);

    QTest::mouseMove(w, hit.center());
    const QColor hover = shot().pixelColor(probe);
    EXPECT_TRUE(near(hover, skinAt(Piece::Button_center, b, probe.y()))) << hover.name().toStdString();
    EXPECT_FALSE(near(hover, rest, 10));
    EXPECT_GT(hover.red(), hover.blue() + 60);  // the warm hover of an office ribbon

    QSignalSpy clicks(w, &ACPRibbonWidget::buttonClick);
    QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, hit.center());
    const QColor pressed = shot().pixelColor(probe);
    EXPECT_TRUE(near(pressed, skinAt(Piece::Button_center_over, b, probe.y()))) << pressed.name().toStdString();
    EXPECT_FALSE(near(pressed, hover, 10));
    QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, hit.center());
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.at(0).at(0).toString(), QStringLiteral("butNew"));
    EXPECT_EQ(clicks.at(0).at(1).toString(), QStringLiteral("ใหม่"));
    EXPECT_TRUE(near(shot().pixelColor(probe), hover));  // released: hovered again, not pressed

    // Onto the bare background: the button is at rest again.
    QTest::mouseMove(w, QPoint(w->width() - 20, 100));
    EXPECT_TRUE(near(shot().pixelColor(probe), rest));
  }
}

TEST_F(RibbonOnForm, ReleasedOverAnotherWidgetTheButtonLetsGoWithoutAClick) {
  fill(w->ribbon(), 1);
  show();
  const int b = button(QStringLiteral("butPrint"));
  const QRect hit = w->pieceRect(Piece::ButMouse, b);
  QSignalSpy clicks(w, &ACPRibbonWidget::buttonClick);
  QTest::mouseMove(w, hit.center());
  QTest::mousePress(w, Qt::LeftButton, Qt::NoModifier, hit.center());
  EXPECT_TRUE(w->ribbon().piece(Piece::Button_center_over, b)->Visible);
  // The window system gives the release to the widget that took the press, at the text box's place.
  const QPoint onOther = other->geometry().center() - w->geometry().topLeft();
  QTest::mouseMove(w, onOther);
  QTest::mouseRelease(w, Qt::LeftButton, Qt::NoModifier, onOther);
  EXPECT_EQ(clicks.count(), 0);
  EXPECT_FALSE(w->ribbon().piece(Piece::Button_center_over, b)->Visible);
  // The hit area carries the tool tip: without one of its own, the caption with a blank.
  QHelpEvent help(QEvent::ToolTip, hit.center(), w->mapToGlobal(hit.center()));
  QApplication::sendEvent(w, &help);
  EXPECT_EQ(QToolTip::text(), QStringLiteral("พิมพ์ ทั้งหมด"));
  // The two-line caption of a click carries its line break.
  QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, hit.center());
  ASSERT_EQ(clicks.count(), 1);
  EXPECT_EQ(clicks.at(0).at(1).toString(), QStringLiteral("พิมพ์\r\nทั้งหมด"));
}

TEST_F(RibbonOnForm, ATabClickShowsTheOtherTabSelectedAndItsCategories) {
  fill(w->ribbon(), 2);
  show();
  QSignalSpy tabs(w, &ACPRibbonWidget::tabClick);
  const QRect tab = w->pieceRect(Piece::TabMouse, 1);
  const QPoint face(w->pieceRect(Piece::Tab_center, 1).center().x(), 3);
  const QColor before = shot().pixelColor(face);
  QTest::mouseMove(w, tab.center());
  const QColor hover = shot().pixelColor(face);
  EXPECT_FALSE(near(hover, before, 4));  // the tab's hover look
  QTest::mouseClick(w, Qt::LeftButton, Qt::NoModifier, tab.center());
  ASSERT_EQ(tabs.count(), 1);
  EXPECT_EQ(tabs.at(0).at(0).toString(), QStringLiteral("tabStock"));
  EXPECT_EQ(tabs.at(0).at(1).toString(), QStringLiteral("คลังสินค้า"));
  EXPECT_TRUE(near(shot().pixelColor(face), skinAt(Piece::Tab_center, 1, face.y())));
  EXPECT_EQ(w->ribbon().piece(Piece::Cat_Caption, 0)->Caption, QStringLiteral("ตรวจนับ"));
  EXPECT_EQ(w->ribbon().piece(Piece::ButMouse, 1)->Tag, QStringLiteral("butCount"));
}

// At twice the scale the bar keeps its layout in twips and draws the skins' twice-sized pictures.
// The scale is chosen when the application starts, so the check runs in a child process.
TEST(ACPRibbonWidgetScaled, SharpAndWholeAtTwiceTheScale) {
  if (qEnvironmentVariableIsEmpty("TQ7_RIBBON_SCALED_CHILD")) {
    QProcess child;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
    env.insert(QStringLiteral("TQ7_RIBBON_SCALED_CHILD"), QStringLiteral("1"));
    child.setProcessEnvironment(env);
    child.setProcessChannelMode(QProcess::MergedChannels);
    child.start(QCoreApplication::applicationFilePath(), {QStringLiteral("--gtest_filter=ACPRibbonWidgetScaled.*")});
    ASSERT_TRUE(child.waitForFinished(120000));
    const QString out = QString::fromLocal8Bit(child.readAll());
    EXPECT_EQ(child.exitCode(), 0) << out.toStdString();
    EXPECT_TRUE(out.contains(QStringLiteral("[  PASSED  ] 1 test"))) << out.toStdString();
    return;
  }
  installQtPlatform();
  ACPRibbonWidget w;
  fill(w.ribbon(), 1);
  w.resize(700, 116);
  w.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&w));
  ASSERT_EQ(w.devicePixelRatioF(), 2.0);
  const QImage img = w.grab().toImage();
  EXPECT_EQ(w.height(), 116);  // the same height in the widget's own pixels
  EXPECT_EQ(img.size(), QSize(2 * w.width(), 2 * 116));
  // Whole: the category frame ends inside the bar.
  EXPECT_LT(w.pieceRect(Piece::Cat_Right_off, 0).right(), w.width());
  // Sharp: where a skin picture is opaque the screen shows its twice-sized picture pixel for pixel,
  // which the standard picture blown up would not (its rounded corners and slopes are coarser).
  int opaque = 0, matching = 0, unlikeBlown = 0;
  for (Piece a : {Piece::Tab_left, Piece::Cat_Left_off, Piece::Cat_Dlg}) {
    const RibbonPiece* piece = w.ribbon().piece(a, 0);
    ASSERT_TRUE(piece && piece->Visible) << pieceName(a);
    const QRect at = w.pieceRect(a, 0);
    const QImage sharp = piece->Picture2x.convertToFormat(QImage::Format_ARGB32);
    const QImage blown = piece->Picture.convertToFormat(QImage::Format_ARGB32)
                             .scaled(sharp.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (int y = 0; y < sharp.height(); ++y) {
      for (int x = 0; x < sharp.width(); ++x) {
        const QColor s = sharp.pixelColor(x, y);
        if (s.alpha() != 255) continue;
        ++opaque;
        if (near(img.pixelColor(2 * at.left() + x, 2 * at.top() + y), s)) ++matching;
        if (!near(blown.pixelColor(x, y), s, 12)) ++unlikeBlown;
      }
    }
  }
  EXPECT_GT(opaque, 10);
  EXPECT_EQ(matching, opaque);
  EXPECT_GT(unlikeBlown, 0);
}
