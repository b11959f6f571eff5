#include "devices/QtSerialPort.h"

#include "frame/Error.h"

#include <QSerialPort>
#include <QStringList>
#include <map>

namespace tq7 {

namespace {

std::map<int16_t, QString>& portPaths() {
  static std::map<int16_t, QString> paths;
  return paths;
}

[[noreturn]] void fail(int32_t number, const char* text) { throw Error{number, QString::fromLatin1(text)}; }

}  // namespace

QString serialPortPath(int16_t port) {
  if (port < 1) return {};
  const auto at = portPaths().find(port);
  if (at != portPaths().end()) return at->second;
  const QByteArray fromEnvironment = qgetenv("TQ7_COM" + QByteArray::number(port));
  if (!fromEnvironment.isEmpty()) return QString::fromLocal8Bit(fromEnvironment);
  return QStringLiteral("/dev/ttyS%1").arg(port - 1);
}

void setSerialPortPath(int16_t port, const QString& path) {
  if (path.isEmpty())
    portPaths().erase(port);
  else
    portPaths()[port] = path;
}

QtSerialPort::QtSerialPort() = default;

QtSerialPort::~QtSerialPort() {
  if (port_) {
    QObject::disconnect(port_.get(), nullptr, nullptr, nullptr);
    port_->close();
  }
}

void QtSerialPort::setCommPort(int16_t port) {
  if (PortOpen()) fail(err::PortAlreadyOpen, "Port already open");
  if (port < 1) fail(err::PortInvalid, "Invalid port number");
  commPort_ = port;
}

void QtSerialPort::setSettings(const QString& settings) {
  const QStringList parts = settings.split(QLatin1Char(','));
  if (parts.size() != 4) fail(err::InvalidPropertyValue, "Invalid property value");
  bool ok = false;
  const int32_t baud = parts[0].trimmed().toInt(&ok);
  if (!ok || baud <= 0) fail(err::InvalidPropertyValue, "Invalid property value");
  const QString parity = parts[1].trimmed().toUpper();
  if (parity.size() != 1 || !QStringLiteral("NEOMS").contains(parity))
    fail(err::InvalidPropertyValue, "Invalid property value");
  const int dataBits = parts[2].trimmed().toInt(&ok);
  if (!ok || dataBits < 4 || dataBits > 8) fail(err::InvalidPropertyValue, "Invalid property value");
  const QString stop = parts[3].trimmed();
  if (stop != QLatin1String("1") && stop != QLatin1String("1.5") && stop != QLatin1String("2"))
    fail(err::InvalidPropertyValue, "Invalid property value");
  settings_ = settings;
  baud_ = baud;
  parity_ = parity[0].toLatin1();
  dataBits_ = dataBits;
  stopBits_ = stop.toDouble();
  // An open port takes new settings at once.
  if (PortOpen() && !apply(*port_)) fail(err::InvalidPropertyValue, "Invalid property value");
}

bool QtSerialPort::apply(QSerialPort& port) const {
  static const QSerialPort::Parity parities[] = {QSerialPort::NoParity, QSerialPort::EvenParity,
                                                 QSerialPort::OddParity, QSerialPort::MarkParity,
                                                 QSerialPort::SpaceParity};
  return port.setBaudRate(baud_) && port.setParity(parities[QByteArrayView("NEOMS").indexOf(parity_)]) &&
         port.setDataBits(QSerialPort::DataBits(dataBits_)) &&
         port.setStopBits(stopBits_ == 2     ? QSerialPort::TwoStop
                          : stopBits_ == 1.5 ? QSerialPort::OneAndHalfStop
                                             : QSerialPort::OneStop) &&
         port.setFlowControl(QSerialPort::NoFlowControl);
}

void QtSerialPort::setInputLen(int16_t n) {
  if (n < 0) fail(err::InvalidPropertyValue, "Invalid property value");
  inputLen_ = n;
}

void QtSerialPort::setRThreshold(int16_t n) {
  if (n < 0) fail(err::InvalidPropertyValue, "Invalid property value");
  rThreshold_ = n;
}

bool QtSerialPort::PortOpen() const { return port_ && port_->isOpen(); }

void QtSerialPort::setPortOpen(bool open) {
  if (!open) {
    if (!PortOpen()) fail(err::PortNotOpen, "Port not open");
    QObject::disconnect(port_.get(), nullptr, nullptr, nullptr);
    port_->close();
    port_.reset();
    return;
  }
  if (PortOpen()) fail(err::PortAlreadyOpen, "Port already open");
  const QString path = serialPortPath(commPort_);
  if (path.isEmpty()) fail(err::PortInvalid, "Invalid port number");
  auto port = std::make_unique<QSerialPort>();
  port->setPortName(path);
  if (!port->open(QIODevice::ReadWrite)) {
    const QString why = path + QStringLiteral(": ") + port->errorString();
    if (port->error() == QSerialPort::DeviceNotFoundError) throw Error{err::PortInvalid, why};
    throw Error{err::PortAlreadyOpen, why};
  }
  if (!apply(*port)) {
    const QString why = path + QStringLiteral(": ") + port->errorString();
    port->close();
    throw Error{err::InvalidPropertyValue, why};
  }
  QObject::connect(port.get(), &QSerialPort::readyRead, port.get(), [this] { arrived(); });
  QObject::connect(port.get(), &QSerialPort::errorOccurred, port.get(),
                   [this](QSerialPort::SerialPortError e) { failed(int(e)); });
  port_ = std::move(port);
}

QString QtSerialPort::Input() {
  if (!PortOpen()) fail(err::PortNotOpen, "Port not open");
  const QByteArray bytes = inputLen_ > 0 ? port_->read(inputLen_) : port_->readAll();
  return QString::fromLatin1(bytes);
}

void QtSerialPort::arrived() {
  if (rThreshold_ > 0 && port_->bytesAvailable() >= rThreshold_ && OnComm) OnComm();
}

void QtSerialPort::failed(int error) {
  if (error == QSerialPort::NoError) return;
  // A line that has gone (the far end closed, the adapter pulled) keeps failing on every read:
  // the port is closed so that it stops, and the owner hears of it once.
  if (error == QSerialPort::ResourceError) {
    QObject::disconnect(port_.get(), nullptr, nullptr, nullptr);
    port_->close();
  }
  if (OnComm) OnComm();
}

}  // namespace tq7
