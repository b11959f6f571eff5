// The scale reader on a form, reading a real pseudo-terminal: the box fills the control, and its
// colour and text are read back from the pixels and the Qt box.
#include "host/WeightMachineWidget.h"

#include "devices/DeviceTestSupport.h"
#include "devices/QtSerialPort.h"
#include "host/HostColours.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;

namespace {

constexpr int16_t TestPort = 43;

struct WeightMachineOnForm : ::testing::Test {
  PumpingPlatform fake;
  QTemporaryDir dir;
  PseudoTerminal pty;
  std::unique_ptr<QWidget> form;
  WeightMachineWidget* w = nullptr;
  QLineEdit* other = nullptr;

  void SetUp() override {
    ASSERT_TRUE(pty.ok());
    fake.folder = dir.path();
    setSerialPortPath(TestPort, pty.slavePath());
    form = std::make_unique<QWidget>();
    form->resize(420, 160);
    w = new WeightMachineWidget(form.get());
    w->setGeometry(10, 10, 300, 80);
    other = new QLineEdit(form.get());
    other->setGeometry(10, 110, 200, 30);
    form->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(form.get()));
    QApplication::setActiveWindow(form.get());
    w->machine().PORTNO = TestPort;
    w->machine().WEIGHTLEN = 10;
  }
  void TearDown() override {
    form.reset();
    setSerialPortPath(TestPort, QString());
  }
  // The colour of the box's background, read left of the right-aligned text.
  QColor background() {
    w->syncNow();
    const QImage img = w->grab().toImage();
    return img.pixelColor(12, img.height() / 2);
  }
  void sendAndWait(const std::string& frame, const QString& shown) {
    ASSERT_TRUE(pty.write(frame));
    ASSERT_TRUE(waitFor([&] { return w->box()->text() == shown; })) << frame;
  }
};

}  // namespace

TEST_F(WeightMachineOnForm, BoxFillsTheControlInTheColourOfTheReading) {
  EXPECT_EQ(w->box()->geometry(), QRect(0, 0, 300, 80));
  EXPECT_EQ(w->box()->text(), QStringLiteral("-000000"));
  EXPECT_EQ(background(), QColor(0x80, 0x80, 0x80));
  EXPECT_TRUE(w->box()->alignment() & Qt::AlignRight);

  w->machine().SetFontSize(30);
  w->machine().Connect();
  sendAndWait("  123.5 KG", QStringLiteral("123.5"));
  EXPECT_EQ(background(), QColor(0, 255, 0));
  EXPECT_DOUBLE_EQ(w->box()->font().pointSizeF(), 30);
  sendAndWait("ST -12 kg", QStringLiteral("-12"));
  EXPECT_EQ(background(), QColor(255, 0, 0));
  // The weight is drawn: dark ink in the right half of the box.
  const QImage img = w->grab().toImage();
  int ink = 0;
  for (int y = 0; y < img.height(); ++y)
    for (int x = img.width() / 2; x < img.width(); ++x) ink += qGray(img.pixel(x, y)) < 60;
  EXPECT_GT(ink, 30);

  // A broken frame keeps the weight; the scale's end closing keeps it too.
  ASSERT_TRUE(pty.write("OVERLOAD"));
  pump(100);
  EXPECT_EQ(w->box()->text(), QStringLiteral("-12"));
  pty.closeMaster();
  pump(100);
  EXPECT_EQ(w->box()->text(), QStringLiteral("-12"));
  w->machine().Disconnect();
  EXPECT_EQ(background(), QColor(0x80, 0x80, 0x80));

  // Resized with the form, the box still fills the control.
  w->resize(200, 50);
  EXPECT_EQ(w->box()->geometry(), QRect(0, 0, 200, 50));
}

TEST_F(WeightMachineOnForm, TypingIntoTheBoxReachesTheCoreAndTheFocusMovesOn) {
  w->machine().Connect();
  sendAndWait("  250 KG", QStringLiteral("250"));
  // The box is a text box: a clerk can click into it, type, and leave it for another field.
  QTest::mouseClick(w->box(), Qt::LeftButton, {}, QPoint(20, 40));
  w->box()->selectAll();
  for (const QChar c : QString::fromUtf8("๑๒ กก.")) {
    QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
    QApplication::sendEvent(w->box(), &press);
    QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(c));
    QApplication::sendEvent(w->box(), &release);
  }
  EXPECT_EQ(w->machine().TxtRegis.Text(), QString::fromUtf8("๑๒ กก."));
  EXPECT_DOUBLE_EQ(w->machine().GETWeight(), 0);  // no number in Thai digits
  QTest::mouseClick(other, Qt::LeftButton);
  EXPECT_TRUE(other->hasFocus());
  // The next frame from the scale replaces what was typed.
  sendAndWait(" 251 KG", QStringLiteral("251"));
  EXPECT_DOUBLE_EQ(w->machine().GETWeight(), 251);
  w->machine().Disconnect();
}
