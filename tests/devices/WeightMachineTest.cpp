// The scale reader on a real pseudo-terminal: the test writes frames into the master end as a
// scale would, the reader opens the slave end through QSerialPort.
#include "devices/DeviceTestSupport.h"
#include "devices/QtSerialPort.h"
#include "devices/WeightMachine.h"
#include "frame/Error.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;

namespace {

// The real port, with a count of the reads, so that a test knows a frame has been looked at.
class CountingPort : public SerialPort {
 public:
  CountingPort() {
    inner_.OnComm = [this] {
      if (OnComm) OnComm();
    };
  }
  int reads = 0;
  int16_t CommPort() const override { return inner_.CommPort(); }
  void setCommPort(int16_t p) override { inner_.setCommPort(p); }
  QString Settings() const override { return inner_.Settings(); }
  void setSettings(const QString& s) override { inner_.setSettings(s); }
  int16_t InputLen() const override { return inner_.InputLen(); }
  void setInputLen(int16_t n) override { inner_.setInputLen(n); }
  int16_t RThreshold() const override { return inner_.RThreshold(); }
  void setRThreshold(int16_t n) override { inner_.setRThreshold(n); }
  bool PortOpen() const override { return inner_.PortOpen(); }
  void setPortOpen(bool o) override { inner_.setPortOpen(o); }
  QString Input() override {
    ++reads;
    return inner_.Input();
  }

 private:
  QtSerialPort inner_;
};

constexpr int16_t TestPort = 41;

class WeightMachineTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ensureEventLoop();
    ASSERT_TRUE(dir.isValid());
    fake.folder = dir.path();
    ASSERT_TRUE(pty.ok());
    setSerialPortPath(TestPort, pty.slavePath());
    auto port = std::make_unique<CountingPort>();
    counter = port.get();
    wm = std::make_unique<WeightMachine>(std::move(port));
    wm->PORTNO = TestPort;
    wm->WEIGHTLEN = 10;
  }
  void TearDown() override {
    wm.reset();
    setSerialPortPath(TestPort, QString());
  }

  // Writes one frame and waits until the reader has read everything written so far.
  void send(const std::string& frame) {
    const int before = counter->reads;
    ASSERT_TRUE(pty.write(frame));
    ASSERT_TRUE(waitFor([&] { return counter->reads > before; }));
    pump(30);  // a frame the line split in two is read in two
  }
  QString box() const { return wm->TxtRegis.Text(); }
  Colour colour() const { return wm->TxtRegis.BackColor(); }

  PumpingPlatform fake;
  QTemporaryDir dir;
  PseudoTerminal pty;
  CountingPort* counter = nullptr;
  std::unique_ptr<WeightMachine> wm;
};

}  // namespace

TEST(WeightMachineParse, DefaultsAndTheFrameFormat) {
  PumpingPlatform fake;
  WeightMachine wm;
  EXPECT_EQ(wm.WEIGHTMODE, 1);
  EXPECT_EQ(wm.WEIGHTSTART, 1);
  EXPECT_EQ(wm.WEIGHTLEN, 0);
  EXPECT_EQ(wm.WEIGHTDELAY, 0);
  EXPECT_EQ(wm.ENCODETEXT, QStringLiteral("?234567890."));
  EXPECT_EQ(wm.TRIMAFTERTEXT, QStringLiteral("GROSS WEIGHT"));
  EXPECT_EQ(wm.PORTSETTING, QStringLiteral("4800,N,8,2"));
  EXPECT_EQ(wm.PORTNO, 1);
  EXPECT_EQ(wm.PORTDELAY, 0.5);
  EXPECT_EQ(wm.PositiveColor, 0x00FF00u);
  EXPECT_EQ(wm.NagativeColor, 0x0000FFu);
  EXPECT_EQ(wm.DisconnectColor, 0x808080u);
  EXPECT_FALSE(wm.SaveLog);
  EXPECT_FALSE(wm.UseDelay);
  EXPECT_EQ(wm.TxtRegis.BackColor(), 0x808080u);
  EXPECT_EQ(wm.TxtRegis.Text(), QStringLiteral("-000000"));
  EXPECT_EQ(wm.TxtRegis.Font().Name, QStringLiteral("MS Serif"));
  EXPECT_FALSE(wm.Timer1.Enabled());
  EXPECT_EQ(wm.Timer1.Interval(), 0);

  // The default length takes nothing: every frame parses to nothing.
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("  123.5 KG")), QString());
  wm.WEIGHTLEN = 10;
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("  123.5 KG")), QStringLiteral("123.5"));
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("ST -12 kg")), QStringLiteral("-12"));
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("OVERFLOW")), QString());
  EXPECT_EQ(wm.ParseWeight(QString()), QString());
  // Unit letters anywhere in the field, in either case, and "?" fillers.
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("1k2G3??")), QStringLiteral("123"));
  // A "-" drops whatever stands before it, digits included.
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("99-5")), QStringLiteral("-5"));
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("N.W.-7")), QStringLiteral("-7"));
  // Only the field counts: what stands beyond WEIGHTLEN is not read.
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("  42      OVERFLOW")), QStringLiteral("42"));
  wm.WEIGHTSTART = 4;
  wm.WEIGHTLEN = 5;
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("ST,00250kg")), QStringLiteral("00250"));
  wm.WEIGHTSTART = 40;
  EXPECT_EQ(wm.ParseWeight(QStringLiteral("ST,00250kg")), QString());
  // A start below 1 fails the parse: the caller's step is skipped.
  wm.WEIGHTSTART = 0;
  EXPECT_NE(step([&] { wm.ParseWeight(QStringLiteral("123")); }), 0);

  // The routines nothing calls.
  EXPECT_EQ(WeightMachine::DecodeDigits(QStringLiteral("1234567890.5"), wm.ENCODETEXT), QStringLiteral("?234567890.5"));
  EXPECT_EQ(WeightMachine::DecodeDigits(QStringLiteral("10.5 KG"), QStringLiteral("ABCDEFGHIJ,")),
            QStringLiteral("AJ,E KG"));
  EXPECT_EQ(WeightMachine::JoinTextTokens(QStringLiteral("'GROSS' + ' WEIGHT'")), QStringLiteral("GROSS WEIGHT"));
  EXPECT_EQ(WeightMachine::JoinTextTokens(QStringLiteral("'A' + B + 'C'")), QStringLiteral("BC"));
  // The "CHR(" test compares three characters with four and never holds: the token replaces all.
  EXPECT_EQ(WeightMachine::JoinTextTokens(QStringLiteral("'A' + CHR(13)")), QStringLiteral("CHR(13)"));
}

TEST(WeightMachinePorts, PortNumbersNameDevices) {
  EXPECT_EQ(serialPortPath(1), QStringLiteral("/dev/ttyS0"));
  EXPECT_EQ(serialPortPath(4), QStringLiteral("/dev/ttyS3"));
  EXPECT_EQ(serialPortPath(0), QString());
  qputenv("TQ7_COM7", "/dev/ttyUSB0");
  EXPECT_EQ(serialPortPath(7), QStringLiteral("/dev/ttyUSB0"));
  setSerialPortPath(7, QStringLiteral("/dev/pts/99"));
  EXPECT_EQ(serialPortPath(7), QStringLiteral("/dev/pts/99"));
  setSerialPortPath(7, QString());
  qunsetenv("TQ7_COM7");
  EXPECT_EQ(serialPortPath(7), QStringLiteral("/dev/ttyS6"));
}

TEST_F(WeightMachineTest, FramesInBurstsShowTheWeightAndItsColour) {
  wm->Connect();
  ASSERT_TRUE(wm->MSComm1().PortOpen());
  // The first read at once finds nothing: the empty box reads as 0, so the colour is positive.
  EXPECT_EQ(box(), QString());
  EXPECT_EQ(colour(), wm->PositiveColor);

  send("  123.5 KG");
  EXPECT_EQ(box(), QStringLiteral("123.5"));
  EXPECT_EQ(colour(), wm->PositiveColor);
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 123.5);

  send("ST -12 kg");
  EXPECT_EQ(box(), QStringLiteral("-12"));
  EXPECT_EQ(colour(), wm->NagativeColor);
  EXPECT_DOUBLE_EQ(wm->GETWeight(), -12);

  // Frames with no number keep the last weight on show.
  send("OVERFLOW");
  send(std::string("\xff\xfe\x00\x80\x1b[2J", 9));
  send("\r\n");
  EXPECT_EQ(box(), QStringLiteral("-12"));
  EXPECT_EQ(colour(), wm->NagativeColor);

  send("   0.0 kg");
  EXPECT_EQ(box(), QStringLiteral("0.0"));
  EXPECT_EQ(colour(), wm->PositiveColor);

  wm->Disconnect();
  EXPECT_FALSE(wm->MSComm1().PortOpen());
  EXPECT_EQ(colour(), wm->DisconnectColor);
  EXPECT_EQ(box(), QStringLiteral("0.0"));
  // A second Disconnect fails quietly and leaves the colour.
  wm->Disconnect();
  EXPECT_EQ(colour(), wm->DisconnectColor);
}

TEST_F(WeightMachineTest, ModesScaleTheNumberByteByByteAndSplitFrames) {
  wm->WEIGHTMODE = 0;  // the scale leaves off the last digit
  wm->Connect();
  send("1");
  EXPECT_EQ(box(), QStringLiteral("10"));
  send("2");
  EXPECT_EQ(box(), QStringLiteral("20"));
  send("-");  // a sign alone is no number
  EXPECT_EQ(box(), QStringLiteral("20"));
  send("-5");
  EXPECT_EQ(box(), QStringLiteral("-50"));
  EXPECT_EQ(colour(), wm->NagativeColor);
  send("123");
  EXPECT_EQ(box(), QStringLiteral("1230"));

  wm->WEIGHTMODE = 2;  // tenths
  send("1235");
  EXPECT_EQ(box(), QStringLiteral("123.5"));
  send("-5");
  EXPECT_EQ(box(), QStringLiteral("-0.5"));

  // A frame is whatever one read brings: a frame split by the line shows its two halves in turn.
  wm->WEIGHTMODE = 1;
  send("  12");
  EXPECT_EQ(box(), QStringLiteral("12"));
  send("3.5 KG\r\n");
  EXPECT_EQ(box(), QStringLiteral("3.5"));

  // A parse that fails (a start below 1) is skipped, and the colour step after it still runs on
  // what the box holds.
  wm->WEIGHTSTART = 0;
  wm->TxtRegis.setText(QStringLiteral("-4"));
  EXPECT_EQ(colour(), wm->PositiveColor);
  send("  99 KG");
  EXPECT_EQ(box(), QStringLiteral("-4"));
  EXPECT_EQ(colour(), wm->NagativeColor);
}

TEST_F(WeightMachineTest, HugeFramesAndAClosedFarEndLeaveTheReaderAlive) {
  wm->Connect();
  send(" 42 KG\r\n  " + std::string(10000, 'x'));
  EXPECT_EQ(box(), QStringLiteral("42"));
  EXPECT_EQ(colour(), wm->PositiveColor);

  // The scale's end of the line goes away while connected: the last weight stays.
  pty.closeMaster();
  pump(200);
  EXPECT_EQ(box(), QStringLiteral("42"));
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 42);
  wm->Disconnect();
  EXPECT_EQ(colour(), wm->DisconnectColor);
}

TEST_F(WeightMachineTest, MissingBusyAndBadlySetPortsShowDisconnected) {
  // Connected first, so that a failed Connect has a colour to change.
  WeightMachine other;
  other.PORTNO = TestPort;
  other.Connect();
  ASSERT_TRUE(other.MSComm1().PortOpen());
  EXPECT_EQ(other.TxtRegis.BackColor(), other.PositiveColor);

  // The same line held by another reader.
  wm->Connect();
  EXPECT_FALSE(wm->MSComm1().PortOpen());
  EXPECT_EQ(colour(), wm->DisconnectColor);
  other.Disconnect();

  // No such device.
  setSerialPortPath(42, dir.path() + QStringLiteral("/no-such-tty"));
  wm->PORTNO = 42;
  wm->Connect();
  EXPECT_FALSE(wm->MSComm1().PortOpen());
  EXPECT_EQ(colour(), wm->DisconnectColor);
  setSerialPortPath(42, QString());
  wm->PORTNO = 0;
  wm->Connect();
  EXPECT_EQ(colour(), wm->DisconnectColor);

  // A bad settings string.
  wm->PORTNO = TestPort;
  for (const char* bad : {"4800,X,8,2", "fast,N,8,1", "4800,N,8", "4800,N,9,1", ""}) {
    wm->PORTSETTING = QString::fromLatin1(bad);
    wm->Connect();
    EXPECT_FALSE(wm->MSComm1().PortOpen()) << bad;
    EXPECT_EQ(colour(), wm->DisconnectColor) << bad;
  }
  // And the port still opens once the settings are right.
  wm->PORTSETTING = QStringLiteral("9600,n,8,1");
  wm->Connect();
  EXPECT_TRUE(wm->MSComm1().PortOpen());
  send("  7 kg");
  EXPECT_EQ(box(), QStringLiteral("7"));
}

TEST_F(WeightMachineTest, DelayedWeightCountsOnlyWhileTheShownTextChangesLately) {
  const double second = 1.0 / 86400;
  wm->Connect();
  send("  100 KG");
  ASSERT_EQ(box(), QStringLiteral("100"));
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 100);  // no delay: the box as it stands

  wm->UseDelay = true;
  fake.clock += 2 * second;
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 100);
  EXPECT_EQ(wm->WEIGHTDELAY, 3);  // below 1 becomes 3, and stays so
  fake.clock += 2 * second;
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 0);

  // The same text again renews nothing: only a change of the shown text counts.
  send("  100 KG");
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 0);
  send(" 101 KG");
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 101);
  wm->WEIGHTDELAY = 10;
  fake.clock += 8 * second;
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 101);
  fake.clock += 3 * second;
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 0);
  wm->UseDelay = false;
  EXPECT_DOUBLE_EQ(wm->GETWeight(), 101);
}

TEST_F(WeightMachineTest, LogHoldsEveryReceivedTextAndFontsReachTheBox) {
  EXPECT_EQ(WeightMachine::LogFileName(), dir.path() + QStringLiteral("/WMLog.log"));
  wm->SaveLog = true;
  wm->Connect();
  send("  5 KG");
  send("OVER");
  wm->Disconnect();
  QFile log(WeightMachine::LogFileName());
  ASSERT_TRUE(log.open(QIODevice::ReadOnly));
  EXPECT_EQ(log.readAll(), QByteArray("\n  5 KG\nOVER\n"));  // the empty first read on Connect too

  wm->SetFontName(QStringLiteral("Tahoma"));
  wm->SetFontSize(36.5f);
  EXPECT_EQ(wm->TxtRegis.Font().Name, QStringLiteral("Tahoma"));
  EXPECT_DOUBLE_EQ(wm->TxtRegis.Font().Size, 36.5);
  wm->setSize(3000, 600);
  EXPECT_EQ(wm->TxtRegis.Width(), 3000);
  EXPECT_EQ(wm->TxtRegis.Height(), 600);
}
