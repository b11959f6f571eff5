// The address tracker on a form: real QTimers drive its rounds against an HTTP server on
// 127.0.0.1, and the labels, bar and buttons show what the core says.
#include "host/DynamicIPWidget.h"

#include "devices/DeviceTestSupport.h"
#include "devices/QtHttpTransfer.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

using namespace tq7;
using namespace tq7::testing;
using Server = LoopbackHttpServer;

namespace {

Server::Response route(const Server::Request& r) {
  if (r.target == "/echo") return Server::page("<p>Current IP Address: 171.6.4.20</p>");
  if (r.target.rfind("/updateip.asp", 0) == 0)
    return Server::page("<b>ALLIP=SHOP1=171.6.4.20,ร้านสอง=49.228.1.9</b>");
  return Server::page("missing", 404);
}

struct DynamicIPOnForm : ::testing::Test {
  PumpingPlatform fake;
  QTemporaryDir dir;
  Server server{route};
  std::unique_ptr<DynamicIPWidget> w;

  void SetUp() override {
    fake.folder = dir.path();
    fake.realClock = true;  // the transfer line divides by the time between its ticks
    QFile f(dir.path() + QStringLiteral("/TQ7DynamicIP.INI"));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(QStringLiteral("[TQ7]\nSOURCEURL=%1\nKEYWORD=Address:\nREFRESH=2\nCUSTOMERCODE=C9\n")
                .arg(server.url("/echo"))
                .toUtf8());
    f.close();
    w = std::make_unique<DynamicIPWidget>(nullptr, std::make_unique<QtHttpTransfer>(20),
                                          std::make_unique<QtHttpTransfer>(20));
    w->tracker().setRegistrationEndpoint(server.base());
    w->resize(420, 130);
    w->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(w.get()));
  }
};

}  // namespace

TEST_F(DynamicIPOnForm, TimersRunTheRoundsUntilStopIsClicked) {
  EXPECT_EQ(w->label(3)->text(), server.url("/echo"));
  EXPECT_EQ(w->startButton()->text(), QStringLiteral("Start"));
  EXPECT_FALSE(w->timer(2)->isActive());
  QSignalSpy wan(w.get(), &DynamicIPWidget::wanIPChange);
  QSignalSpy all(w.get(), &DynamicIPWidget::allIPChange);

  w->tracker().StartAction();
  w->syncNow();
  EXPECT_TRUE(w->timer(1)->isActive());
  EXPECT_EQ(w->timer(1)->interval(), 1000);
  EXPECT_TRUE(w->timer(2)->isActive());
  EXPECT_EQ(w->timer(2)->interval(), 2000);
  EXPECT_FALSE(w->startButton()->isEnabled());
  // The first round runs at once; a second later the transfer line takes the second label.
  ASSERT_TRUE(waitFor([&] { return all.size() == 1; }, 3000));
  ASSERT_TRUE(waitFor([&] { return w->label(2)->text().endsWith(QStringLiteral(" KB/s")); }, 1800));
  EXPECT_EQ(w->label(2)->text(), QStringLiteral("0.00 KB @ 0.00 KB/s"));
  // The second round comes on the timer, two seconds after the first.
  ASSERT_TRUE(waitFor([&] { return all.size() >= 2; }, 3000));
  EXPECT_GE(wan.size(), 2);
  EXPECT_EQ(wan.first().first().toString(), QStringLiteral("171.6.4.20"));
  EXPECT_EQ(all.first().first().toString(), QString::fromUtf8("SHOP1=171.6.4.20,ร้านสอง=49.228.1.9"));
  EXPECT_EQ(w->tracker().GETRemoteDynamicIP(QString::fromUtf8("ร้านสอง")), QStringLiteral("49.228.1.9"));
  w->syncNow();
  EXPECT_EQ(w->progressBar()->maximum(), 1024);
  EXPECT_EQ(w->progressBar()->value(), 1024);
  EXPECT_EQ(w->label(1)->text(), QStringLiteral("Updating ..."));

  // A person clicks Stop: both timers stop, and no more rounds come.
  QTest::mouseClick(w->stopButton(), Qt::LeftButton);
  w->syncNow();
  EXPECT_FALSE(w->timer(1)->isActive());
  EXPECT_FALSE(w->timer(2)->isActive());
  waitFor([&] { return !w->tracker().Inet1().StillExecuting() && !w->tracker().Inet2().StillExecuting(); });
  const qsizetype rounds = all.size();
  pump(2200);
  EXPECT_EQ(all.size(), rounds);
  // Start arms the rounds but starts no timer.
  QTest::mouseClick(w->startButton(), Qt::LeftButton);
  w->syncNow();
  EXPECT_FALSE(w->timer(2)->isActive());
  // The labels are drawn: the status line holds ink.
  const QImage img = w->grab().toImage();
  const QRect r = w->label(1)->geometry();
  int ink = 0;
  for (int y = r.top(); y <= r.bottom(); ++y)
    for (int x = r.left(); x <= r.right(); ++x) ink += qGray(img.pixel(x, y)) < 100;
  EXPECT_GT(ink, 20);
}
