// The devices page: a weighing scale reader on a pseudo-terminal that the gallery's own scale
// writes into, and a public address tracker that runs its rounds against an echo and
// registration service the gallery starts on 127.0.0.1.
#include "DevicesSimulators.h"
#include "Pages.h"

#include "companion/VbText.h"
#include "devices/QtSerialPort.h"
#include "host/DynamicIPWidget.h"
#include "host/WeightMachineWidget.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include <functional>

namespace gallery {
namespace {

QString u(const char* s) { return QString::fromUtf8(s); }

// The scale is port 5 of this machine: the simulator's pseudo-terminal.
constexpr int16_t kScalePort = 5;

// A truck driving onto the weighbridge, standing, and the scale's frames as it settles.
const QStringList kLoading = {QStringLiteral("ST,GS,   0.0 kg\r\n"), QStringLiteral("US,GS, 812.5 kg\r\n"),
                              QStringLiteral("US,GS,1248.0 kg\r\n"), QStringLiteral("ST,GS,1250.5 kg\r\n")};
// The tare taken off with an empty pan: the scale shows below zero.
const QStringList kTare = {QStringLiteral("ST,NT, -12.5 kg\r\n")};

class DevicesPage : public QWidget {
 public:
  explicit DevicesPage(QWidget* parent) : QWidget(parent), scale(this), service(QStringLiteral("203.150.7.21"), this) {
    setObjectName(QStringLiteral("pageDevices"));
    auto* columns = new QHBoxLayout(this);

    // ---- The scale ----
    auto* scaleBox = new QGroupBox(u("เครื่องชั่ง / Weighing scale (WeightMachine)"), this);
    auto* s = new QVBoxLayout(scaleBox);
    reader = new tq7::WeightMachineWidget(scaleBox);
    reader->setMinimumHeight(90);
    tq7::WeightMachine& wm = reader->machine();
    tq7::setSerialPortPath(kScalePort, scale.slavePath());
    wm.PORTNO = kScalePort;
    wm.PORTSETTING = QStringLiteral("9600,N,8,1");
    wm.WEIGHTSTART = 7;  // "ST,GS," before the number
    wm.WEIGHTLEN = 10;
    wm.SetFontName(QStringLiteral("MS Serif"));
    wm.SetFontSize(36);
    s->addWidget(reader);
    auto* buttons = new QHBoxLayout;
    connectButton = new QPushButton(u("เชื่อมต่อ / Connect"), scaleBox);
    auto* disconnectButton = new QPushButton(u("ตัดการเชื่อมต่อ / Disconnect"), scaleBox);
    auto* loadButton = new QPushButton(u("ชั่งรถ / Load"), scaleBox);
    auto* tareButton = new QPushButton(u("หักภาชนะ / Tare"), scaleBox);
    for (QPushButton* b : {connectButton, disconnectButton, loadButton, tareButton}) buttons->addWidget(b);
    s->addLayout(buttons);
    connect(connectButton, &QPushButton::clicked, this, [this] { reader->machine().Connect(); });
    connect(disconnectButton, &QPushButton::clicked, this, [this] { reader->machine().Disconnect(); });
    connect(loadButton, &QPushButton::clicked, this, [this] { scale.play(kLoading); });
    connect(tareButton, &QPushButton::clicked, this, [this] { scale.play(kTare); });
    weight = new QLabel(scaleBox);
    frame = new QLabel(scaleBox);
    frame->setWordWrap(true);
    s->addWidget(weight);
    s->addWidget(frame);
    s->addStretch();
    columns->addWidget(scaleBox, 1);

    // ---- The tracker ----
    auto* ipBox = new QGroupBox(u("ที่อยู่สาธารณะ / Public address (DynamicIP)"), this);
    auto* t = new QVBoxLayout(ipBox);
    writeSettings();
    tracker = new tq7::DynamicIPWidget(ipBox);
    tracker->setMinimumHeight(125);
    tracker->tracker().setRegistrationEndpoint(service.base());
    t->addWidget(tracker);
    wan = new QLabel(u("ที่อยู่ของเครื่องนี้ / This machine: -"), ipBox);
    t->addWidget(wan);
    t->addWidget(new QLabel(u("เครื่องของลูกค้า C0042 / The customer's machines:"), ipBox));
    machines = new QListWidget(ipBox);
    t->addWidget(machines, 1);
    columns->addWidget(ipBox, 1);
    service.addMachine(u("สาขาลาดพร้าว"), QStringLiteral("110.164.32.7"));
    service.addMachine(QStringLiteral("BRANCH-CHIANGMAI"), QStringLiteral("49.229.100.12"));
    connect(tracker, &tq7::DynamicIPWidget::wanIPChange, this,
            [this](const QString& ip) { wan->setText(u("ที่อยู่ของเครื่องนี้ / This machine: ") + ip); });
    connect(tracker, &tq7::DynamicIPWidget::allIPChange, this, [this](const QString& all) { showMachines(all); });

    // What the application reads: the weight, and the frame the scale sent last.
    connect(&poll, &QTimer::timeout, this, [this] { showReadout(); });
    poll.start(200);

    wm.Connect();
    scale.play(kLoading);
    showReadout();
    tracker->tracker().StartAction();
  }

  // The settings file the tracker reads from its folder at every round.
  void writeSettings() {
    QFile f(QCoreApplication::applicationDirPath() + QStringLiteral("/TQ7DynamicIP.INI"));
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate)) return;
    f.write(QStringLiteral("[TQ7]\nSOURCEURL=%1/echo\nKEYWORD=Address:\nREFRESH=5\n"
                           "CUSTOMERCODE=C0042\nCUSTOMERPASSWORD=demo\n")
                .arg(service.base())
                .toUtf8());
  }

  void showReadout() {
    weight->setText(u("น้ำหนัก / GETWeight: ") + tq7::vb::formatNumber(reader->machine().GETWeight(), 1, true) +
                    QStringLiteral(" kg"));
    QString last = scale.lastFrame();
    last.replace(QLatin1String("\r\n"), QString());
    frame->setText(u("เครื่องชั่งจำลอง / Simulated scale on ") + scale.slavePath() + u(" (PORTNO 5), ส่ง / sent: \"") +
                   last + u("\"\nWEIGHTSTART 7, WEIGHTLEN 10: ตัวเลขอยู่หลัง \"ST,GS,\" / the number stands after \"ST,GS,\""));
  }

  void showMachines(const QString& all) {
    machines->clear();
    // The list as the service sent it; each address read back by name, as an application would.
    for (const QString& entry : all.split(QLatin1Char(','))) {
      const QString name = entry.section(QLatin1Char('='), 0, 0);
      machines->addItem(name + QStringLiteral("  →  ") + tracker->tracker().GETRemoteDynamicIP(name));
    }
  }

  ScaleSimulator scale;
  AddressServer service;
  tq7::WeightMachineWidget* reader = nullptr;
  tq7::DynamicIPWidget* tracker = nullptr;
  QPushButton* connectButton = nullptr;
  QLabel* weight = nullptr;
  QLabel* frame = nullptr;
  QLabel* wan = nullptr;
  QListWidget* machines = nullptr;
  QTimer poll;
};

bool waitUntil(const std::function<bool()>& done, int ms) {
  QDeadlineTimer deadline(ms);
  while (!done() && !deadline.hasExpired()) QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
  return done();
}

}  // namespace

QWidget* makeDevicesPage(QWidget* parent) { return new DevicesPage(parent); }

bool showDevicesState(QWidget* page, const QString& state) {
  auto* p = dynamic_cast<DevicesPage*>(page);
  if (!p) return false;
  tq7::WeightMachine& wm = p->reader->machine();
  p->connectButton->setFocus();
  bool reached = false;
  if (state == QLatin1String("positive") || state == QLatin1String("tracker")) {
    wm.Connect();
    p->scale.play(kLoading.mid(3));
    reached = waitUntil([&] { return wm.TxtRegis.Text() == QLatin1String("1250.5"); }, 3000);
    if (state == QLatin1String("tracker")) reached = reached && waitUntil([&] { return p->machines->count() >= 3; }, 8000);
  } else if (state == QLatin1String("negative")) {
    p->scale.play(kTare);
    reached = waitUntil([&] { return wm.TxtRegis.Text() == QLatin1String("-12.5"); }, 3000);
  } else if (state == QLatin1String("disconnected")) {
    wm.Disconnect();
    reached = waitUntil([&] { return wm.TxtRegis.BackColor() == wm.DisconnectColor; }, 1000);
  }
  p->showReadout();
  return reached;
}

}  // namespace gallery
