#include "DevicesSimulators.h"

#include <QTcpSocket>
#include <QUrl>
#include <QUrlQuery>

#include <fcntl.h>
#include <stdlib.h>
#include <unistd.h>

namespace gallery {

ScaleSimulator::ScaleSimulator(QObject* parent) : QObject(parent) {
  master_ = posix_openpt(O_RDWR | O_NOCTTY);
  if (master_ >= 0 && (grantpt(master_) != 0 || unlockpt(master_) != 0 || !ptsname(master_))) {
    ::close(master_);
    master_ = -1;
  }
  if (master_ >= 0) {
    slavePath_ = QString::fromLocal8Bit(ptsname(master_));
    // A reader that is not connected leaves the bytes in the line; a full line drops the frame.
    fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
  }
  connect(&timer_, &QTimer::timeout, this, [this] { sendNext(); });
}

ScaleSimulator::~ScaleSimulator() {
  if (master_ >= 0) ::close(master_);
}

void ScaleSimulator::play(const QStringList& frames, int intervalMs) {
  frames_ = frames;
  next_ = 0;
  sendNext();
  timer_.start(intervalMs);
}

void ScaleSimulator::sendNext() {
  if (master_ < 0 || frames_.isEmpty()) return;
  last_ = frames_[next_];
  next_ = (next_ + 1) % frames_.size();
  const QByteArray bytes = last_.toLatin1();
  [[maybe_unused]] const ssize_t n = ::write(master_, bytes.constData(), size_t(bytes.size()));
}

AddressServer::AddressServer(const QString& publicAddress, QObject* parent)
    : QObject(parent), publicAddress_(publicAddress) {
  server_.listen(QHostAddress::LocalHost, 0);
  connect(&server_, &QTcpServer::newConnection, this, [this] {
    while (QTcpSocket* s = server_.nextPendingConnection()) {
      connect(s, &QTcpSocket::readyRead, s, [this, s] { serve(s); });
      connect(s, &QTcpSocket::disconnected, s, &QObject::deleteLater);
    }
  });
}

QString AddressServer::base() const { return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort()); }

void AddressServer::serve(QTcpSocket* socket) {
  // The request may come in pieces: what has come so far is kept with the socket.
  const QByteArray in = socket->property("request").toByteArray() + socket->readAll();
  if (!in.contains("\r\n\r\n")) {
    socket->setProperty("request", in);
    return;
  }
  const QList<QByteArray> first = in.left(in.indexOf("\r\n")).split(' ');
  const QByteArray body = answer(first.size() > 1 ? first[1] : QByteArray());
  socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html; charset=utf-8\r\nContent-Length: " +
                QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
  socket->disconnectFromHost();
}

QByteArray AddressServer::answer(const QByteArray& target) {
  if (target.startsWith("/echo"))
    return "<html><head><title>Current IP Check</title></head><body>Current IP Address: " + publicAddress_.toUtf8() +
           "</body></html>\r\n";
  if (target.startsWith("/updateip.asp")) {
    const QUrlQuery query(QUrl::fromEncoded(target).query(QUrl::FullyDecoded));
    const QString name = query.queryItemValue(QStringLiteral("ServerUNCName"));
    if (!name.isEmpty()) machines_[name] = query.queryItemValue(QStringLiteral("IP"));
    QStringList all;
    for (const auto& [machine, address] : machines_) all << machine + QLatin1Char('=') + address;
    return "<html><body>OK<br>ALLIP=" + all.join(QLatin1Char(',')).toUtf8() + "<br></body></html>\r\n";
  }
  return "<html><body>Not Found</body></html>";
}

}  // namespace gallery
