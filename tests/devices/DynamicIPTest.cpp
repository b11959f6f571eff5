// The address tracker against a real HTTP server on 127.0.0.1: an echo page, a registration
// endpoint that records the request and answers with a list, and the faults a line has.
#include "devices/DeviceTestSupport.h"
#include "devices/DynamicIP.h"
#include "devices/QtHttpTransfer.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;
using Server = LoopbackHttpServer;

namespace {

const std::string kEcho = "<html><head><title>Current IP Check</title></head>\n"
                          "<body>Current IP Address:   203.150.7.21 1234</body></html>\r\n";
const std::string kList = "<html><body>OK\nALLIP=OFFICE=203.150.7.21, Branch2 = 10.0.0.5 ,NOEQ<br>bye</body></html>";

Server::Response route(const Server::Request& r) {
  const std::string& t = r.target;
  if (t.rfind("/updateip.asp", 0) == 0) return Server::page(kList);
  // A registration service that begins its answer and stalls past the time-out.
  if (t.rfind("/stalled/updateip.asp", 0) == 0) return Server::Response{200, {{0, "ALLIP=A=1"}, {2500, ",B=2<br>"}}};
  if (t == "/echo") return Server::page(kEcho);
  if (t == "/404") return Server::page("<html>Not Found</html>", 404);
  if (t == "/500") return Server::page("<html>Current IP Address: </html>", 500);
  if (t == "/nokeyword") return Server::page("<html>Your address is 203.150.7.21</html>");
  if (t == "/noaddress") return Server::page("<html>Current IP Address: unknown</html>");
  if (t == "/huge") {
    std::string body;
    body.reserve(3u << 20);
    const std::string line(99, 'z');
    while (body.size() < (3u << 20)) body += line + "\n";
    return Server::page(body + "Current IP Address: 61.90.1.2\n");
  }
  // Headers and the first part at once, the rest a second later.
  if (t == "/slow") return Server::Response{200, {{0, "Current IP "}, {1000, "Address: 58.8.9.10\n"}}};
  // Nothing at all for longer than the time-out.
  if (t == "/stall") return Server::Response{200, {{2500, kEcho}}};
  return Server::page("?", 404);
}

class Recorder : public DynamicIPEvents {
 public:
  QStringList wan, all;
  void WANIPChange(const QString& WANIP) override { wan << WANIP; }
  void ALLIPChange(const QString& ALLIP) override { all << ALLIP; }
};

// One second of the request time-out lasts 20 ms here, so 60 seconds are 1.2 s.
constexpr int kShortSecond = 20;

class DynamicIPTest : public ::testing::Test {
 protected:
  void SetUp() override {
    ensureEventLoop();
    ASSERT_TRUE(dir.isValid());
    fake.folder = dir.path();
    ASSERT_GT(server.port(), 0);
    writeINI("/echo");
    ip = std::make_unique<DynamicIP>(std::make_unique<QtHttpTransfer>(kShortSecond),
                                     std::make_unique<QtHttpTransfer>(kShortSecond));
    ip->setRegistrationEndpoint(server.base());
    ip->setListener(&events);
  }

  void writeINI(const char* source, const QString& password = QStringLiteral("p&w=1 x")) {
    QFile f(dir.path() + QStringLiteral("/TQ7DynamicIP.INI"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(QStringLiteral("[TQ7]\nSOURCEURL= %1 \nKEYWORD= Address: \nREFRESH=\n"
                           "DESCTINATIONURLPREFIX=http://old/\nDESCTINATIONURLSUFFIX=/x\n"
                           "CUSTOMERCODE=C001\nCUSTOMERPASSWORD=%2\n")
                .arg(server.url(source), password)
                .toUtf8());
  }
  // The registration requests the server saw.
  int registrations() const {
    int n = 0;
    for (const auto& r : server.requests()) n += r.target.rfind("/updateip.asp", 0) == 0;
    return n;
  }
  // Lets a round run until both transfers are idle and nothing more is reported.
  void settle(int ms = 4000) {
    waitFor([&] { return !ip->Inet1().StillExecuting() && !ip->Inet2().StillExecuting(); }, ms);
    pump(60);
  }

  PumpingPlatform fake;
  QTemporaryDir dir;
  Server server{route};
  Recorder events;
  std::unique_ptr<DynamicIP> ip;
};

}  // namespace

TEST_F(DynamicIPTest, SettingsFileAndCreation) {
  EXPECT_EQ(ip->INIFileName, dir.path() + QStringLiteral("/TQ7DynamicIP.INI"));
  EXPECT_EQ(ip->TextFile1(), dir.path() + QStringLiteral("/TQ7DynamicIP.txt"));
  EXPECT_EQ(ip->TextFile2(), dir.path() + QStringLiteral("/TQ7DynamicIP.tx2"));
  EXPECT_EQ(ip->SourceURL, server.url("/echo"));  // trimmed
  EXPECT_EQ(ip->Label3.Caption(), ip->SourceURL);
  EXPECT_EQ(ip->KeywordGET, QStringLiteral("Address:"));
  EXPECT_EQ(ip->Refresh, 0);
  EXPECT_EQ(ip->UpdateURLPrefix, QStringLiteral("http://old/"));
  EXPECT_EQ(ip->UpdateURLSuffix, QStringLiteral("/x"));
  EXPECT_EQ(ip->CustomerCode, QStringLiteral("C001"));
  EXPECT_EQ(ip->CustomerPassword, QStringLiteral("p&w=1 x"));
  EXPECT_EQ(ip->ComputerName, QStringLiteral("TESTPC"));
  EXPECT_FALSE(ip->Timer1.Enabled());
  EXPECT_FALSE(ip->Timer2.Enabled());
  EXPECT_EQ(ip->Timer1.Interval(), 1000);
  EXPECT_EQ(ip->Timer2.Interval(), 0);
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("OFFICE")), QStringLiteral("0.0.0.0"));

  // Defaults for empty values, REFRESH in seconds, and a non-number leaves Refresh as it was.
  QFile f(ip->INIFileName);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write("[TQ7]\nSOURCEURL=\nKEYWORD=   \nREFRESH=15\n");
  f.close();
  ip->LoadINI();
  EXPECT_EQ(ip->SourceURL, DynamicIP::DefaultSourceURL());
  EXPECT_EQ(ip->KeywordGET, QStringLiteral(": "));
  EXPECT_EQ(ip->Refresh, 15000);
  EXPECT_EQ(ip->Timer2.Interval(), 15000);
  EXPECT_EQ(ip->CustomerCode, QString());
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write("[TQ7]\nREFRESH=soon\nCUSTOMERCODE=C777\n");
  f.close();
  ip->LoadINI();
  EXPECT_EQ(ip->Refresh, 15000);
  EXPECT_EQ(ip->Timer2.Interval(), 15000);
  EXPECT_EQ(ip->CustomerCode, QStringLiteral("C777"));  // the statements after the failed one ran

  // The whole text of a file, each line ending in CR LF.
  QFile t(dir.path() + QStringLiteral("/lines.txt"));
  ASSERT_TRUE(t.open(QIODevice::WriteOnly));
  t.write("one\r\ntwo\n\nสาม");
  t.close();
  EXPECT_EQ(ip->GETAllTextFile(t.fileName()), QStringLiteral("one\r\ntwo\r\n\r\nสาม\r\n"));
  EXPECT_EQ(ip->GETAllTextFile(dir.path() + QStringLiteral("/none.txt")), QString());
}

TEST_F(DynamicIPTest, RoundFindsRegistersAndReadsTheListEveryRound) {
  ip->StartAction();
  EXPECT_TRUE(ip->Timer1.Enabled());
  EXPECT_TRUE(ip->Timer2.Enabled());
  EXPECT_FALSE(ip->btnStartDL.Enabled());
  EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Establishing connection..."));
  ASSERT_TRUE(waitFor([&] { return !events.all.isEmpty(); }, 4000));
  settle();

  EXPECT_EQ(ip->WANIP, QStringLiteral("203.150.7.21"));  // the blank ends the address
  EXPECT_EQ(ip->Label2.Caption(), QStringLiteral("WAN IP is 203.150.7.21"));
  EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Updating ..."));
  EXPECT_EQ(ip->ProgressBar1.Max(), 1024);
  EXPECT_EQ(ip->ProgressBar1.Value(), 1024);
  // The request as built: the file's prefix and suffix are gone, nothing is escaped.
  const QString request = QStringLiteral(
      "/updateip.asp?CustomerCode=C001&CustomerPassword=p&w=1 x&ServerUNCName=TESTPC&IP=203.150.7.21");
  EXPECT_EQ(ip->UpdateURL, server.base() + request);
  const auto seen = server.requests();
  ASSERT_EQ(seen.size(), 2u);
  EXPECT_EQ(seen[0].method, "GET");
  EXPECT_EQ(seen[0].target, "/echo");
  EXPECT_EQ(seen[1].method, "POST");
  // Only the blank is made fit for the wire; the "&" and "=" of the password split the query.
  EXPECT_EQ(seen[1].target, "/updateip.asp?CustomerCode=C001&CustomerPassword=p&w=1%20x&ServerUNCName=TESTPC&IP=203.150.7.21");

  EXPECT_EQ(ip->ALLIP, QStringLiteral("OFFICE=203.150.7.21, Branch2 = 10.0.0.5 ,NOEQ"));
  EXPECT_EQ(events.wan, QStringList{QStringLiteral("203.150.7.21")});
  EXPECT_EQ(events.all, QStringList{ip->ALLIP});
  // The scratch files hold the two answers.
  QFile echo(ip->TextFile1()), answer(ip->TextFile2());
  ASSERT_TRUE(echo.open(QIODevice::ReadOnly));
  EXPECT_EQ(echo.readAll().toStdString(), kEcho);
  ASSERT_TRUE(answer.open(QIODevice::ReadOnly));
  EXPECT_EQ(answer.readAll().toStdString(), kList);

  // Names match without regard to case, but the name part is not trimmed; no "=" gives nothing.
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("office")), QStringLiteral("203.150.7.21"));
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral(" branch2 ")), QStringLiteral("10.0.0.5"));
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("Branch2")), QStringLiteral("0.0.0.0"));
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("NOEQ")), QStringLiteral("0.0.0.0"));

  // The next round, driven by the timer: the same address and list raise both events again.
  ip->Timer2.Tick();
  ASSERT_TRUE(waitFor([&] { return events.all.size() == 2; }, 4000));
  settle();
  EXPECT_EQ(events.wan.size(), 2);
  EXPECT_EQ(events.wan[1], events.wan[0]);
  EXPECT_EQ(events.all[1], events.all[0]);
  EXPECT_EQ(registrations(), 2);

  // Stopped: the next tick enables the start button and fetches nothing.
  ip->Command1.Click();
  EXPECT_FALSE(ip->Timer1.Enabled());
  EXPECT_FALSE(ip->Timer2.Enabled());
  ip->Timer2.Tick();
  EXPECT_TRUE(ip->btnStartDL.Enabled());
  settle(300);
  EXPECT_EQ(server.requests().size(), 4u);
  // The start button arms the rounds and does nothing else.
  ip->btnStartDL.Click();
  EXPECT_FALSE(ip->Timer2.Enabled());
  ip->Timer2.Tick();
  EXPECT_FALSE(ip->btnStartDL.Enabled());
  ASSERT_TRUE(waitFor([&] { return events.all.size() == 3; }, 4000));
  settle();
}

TEST_F(DynamicIPTest, AnswersWithoutAnAddressStopAtTheScan) {
  for (const char* path : {"/404", "/500", "/nokeyword", "/noaddress"}) {
    writeINI(path);
    ip->StartAction();
    ASSERT_TRUE(waitFor([&] { return ip->Label1.Caption() == QStringLiteral("Scan complete."); }, 4000)) << path;
    settle();
    EXPECT_EQ(ip->Label2.Caption(), QStringLiteral("WAN IP is ")) << path;
    EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Scan complete.")) << path;
    ip->Label1.setCaption(QString());
  }
  EXPECT_TRUE(events.wan.isEmpty());
  EXPECT_TRUE(events.all.isEmpty());
  EXPECT_EQ(registrations(), 0);
  EXPECT_EQ(ip->WANIP, QString());
  EXPECT_EQ(ip->UpdateURL, QString());
}

TEST_F(DynamicIPTest, ServerDownAndTimeOutLeaveTheStatusWhereItStood) {
  // Nothing listens: the status stays at its first text, and the next round runs as usual.
  QFile f(ip->INIFileName);
  ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
  f.write(QStringLiteral("SOURCEURL=http://127.0.0.1:%1/echo\nKEYWORD=Address:\n")
              .arg(Server::closedPort())
              .toUtf8());
  f.close();
  ip->StartAction();
  settle();
  EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Establishing connection..."));
  EXPECT_TRUE(events.wan.isEmpty());

  // No answer within the time-out: the request is given up.
  writeINI("/stall");
  QElapsedTimer clock;
  clock.start();
  ip->Timer2.Tick();
  EXPECT_TRUE(ip->Inet1().StillExecuting());
  ASSERT_TRUE(waitFor([&] { return !ip->Inet1().StillExecuting(); }, 2400));
  EXPECT_GE(clock.elapsed(), 1000);
  pump(50);
  EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Establishing connection..."));
  EXPECT_TRUE(events.wan.isEmpty());

  // The registration answer stalls half way: its own time-out, the control's default of 60
  // seconds, ends the wait, and the part that came holds no list.
  writeINI("/echo");
  ip->setRegistrationEndpoint(server.base() + QStringLiteral("/stalled"));
  clock.restart();
  ip->Timer2.Tick();
  ASSERT_TRUE(waitFor([&] { return ip->Label1.Caption() == QStringLiteral("Updating ..."); }, 2000));
  ASSERT_TRUE(waitFor([&] { return !ip->Inet2().StillExecuting(); }, 2400));
  EXPECT_GE(clock.elapsed(), 1000);
  pump(50);
  EXPECT_EQ(events.wan.size(), 1);
  EXPECT_TRUE(events.all.isEmpty());
  QFile partial(ip->TextFile2());
  ASSERT_TRUE(partial.open(QIODevice::ReadOnly));
  EXPECT_EQ(partial.readAll(), QByteArray("ALLIP=A=1"));

  ip->setRegistrationEndpoint(server.base());
  ip->Timer2.Tick();
  ASSERT_TRUE(waitFor([&] { return events.all.size() == 1; }, 4000));
  settle();
}

TEST_F(DynamicIPTest, SlowRoundKeepsTheInterfaceAliveAndATickMeanwhileIsTurnedAway) {
  writeINI("/slow");
  // A timer of the test's own: it must keep ticking while the round waits for the slow answer.
  int ticksWhileTracing = 0;
  bool tracing = false, tickedInto = false;
  QTimer own;
  QObject::connect(&own, &QTimer::timeout, [&] {
    tracing = tracing || ip->Label1.Caption() == QStringLiteral("Tracing...");
    if (!tracing || !ip->Inet1().StillExecuting()) return;
    ++ticksWhileTracing;
    if (!tickedInto) {
      tickedInto = true;
      ip->Timer2.Tick();  // the next round's tick while this one runs
      EXPECT_EQ(ip->Label1.Caption(), QStringLiteral("Establishing connection..."));
    }
  });
  own.start(20);
  ip->StartAction();
  ASSERT_TRUE(waitFor([&] { return !events.all.isEmpty(); }, 5000));
  settle();
  own.stop();
  EXPECT_GT(ticksWhileTracing, 10);
  EXPECT_TRUE(tickedInto);
  EXPECT_EQ(ip->WANIP, QStringLiteral("58.8.9.10"));
  EXPECT_EQ(events.wan.size(), 1);
  EXPECT_EQ(server.requests().size(), 2u);  // the tick in between fetched nothing
  EXPECT_GT(fake.processEventsCount, 10);

  // The flags are down again: the next round runs whole.
  writeINI("/echo");
  ip->Timer2.Tick();
  ASSERT_TRUE(waitFor([&] { return events.all.size() == 2; }, 4000));
  settle();
  EXPECT_EQ(ip->WANIP, QStringLiteral("203.150.7.21"));
}

TEST_F(DynamicIPTest, HugePageIsPulledInPiecesWithTheBarAtItsEnd) {
  writeINI("/huge");
  ip->StartAction();
  ASSERT_TRUE(waitFor([&] { return !events.all.isEmpty(); }, 8000));
  settle();
  EXPECT_EQ(ip->WANIP, QStringLiteral("61.90.1.2"));
  EXPECT_EQ(ip->ProgressBar1.Value(), 1024);
  EXPECT_GT(QFile(ip->TextFile1()).size(), 3 << 20);
}

TEST_F(DynamicIPTest, BrokenListsAndTheTransferLine) {
  // A list without its closing tag counts as none; a broken list is taken as it stands.
  struct Case {
    std::string answer;
    QString allip;
    int events;
  };
  const Case cases[] = {
      {"ALLIP=A=1,B=2", QString(), 0},
      {"<html>no list here</html>", QString(), 0},
      {"ALLIP=   <p>", QString(), 0},
      {"x ALLIP=,,=,X,A=1=2,a=9 <end>", QStringLiteral(",,=,X,A=1=2,a=9"), 1},
  };
  for (const Case& c : cases) {
    Server other([&](const Server::Request& r) {
      return r.target == "/echo" ? Server::page(kEcho) : Server::page(c.answer);
    });
    writeINI("/echo");
    ip->LoadINI();
    QFile f(ip->INIFileName);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(QStringLiteral("SOURCEURL=%1\nKEYWORD=Address:\n").arg(other.url("/echo")).toUtf8());
    f.close();
    ip->setRegistrationEndpoint(other.base());
    const int before = int(events.all.size());
    ip->StartAction();
    ASSERT_TRUE(waitFor([&] { return other.requests().size() == 2; }, 4000));
    settle();
    EXPECT_EQ(int(events.all.size()) - before, c.events) << c.answer;
    if (c.events) EXPECT_EQ(ip->ALLIP, c.allip);
  }
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("x")), QStringLiteral("0.0.0.0"));
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("A")), QStringLiteral("1"));  // the second part only
  EXPECT_EQ(ip->GETRemoteDynamicIP(QStringLiteral("a")), QStringLiteral("1"));  // the first match wins
  ip->StopAction();

  // The transfer line: kilobytes in the buffer and the rate since the last tick. Two ticks in
  // the same instant divide by nothing: the line stays, the tick's other statements still run.
  const double second = 1.0 / 86400;
  fake.clock = 45000.0 + 10 * second;
  ip->Timer1.Tick();
  EXPECT_EQ(ip->Label2.Caption(), QStringLiteral("0.00 KB @ 0.00 KB/s"));
  ip->Label2.setCaption(QStringLiteral("marker"));
  ip->Timer1.Tick();
  EXPECT_EQ(ip->Label2.Caption(), QStringLiteral("marker"));
  fake.clock += 2 * second;
  ip->Timer1.Tick();
  EXPECT_EQ(ip->Label2.Caption(), QStringLiteral("0.00 KB @ 0.00 KB/s"));
}
