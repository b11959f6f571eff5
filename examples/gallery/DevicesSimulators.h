#pragma once
// What stands at the other end of the devices page's lines, made by the gallery itself: a scale
// that writes frames into a pseudo-terminal, and an echo and registration service on 127.0.0.1.
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTcpServer>
#include <QTimer>
#include <map>

namespace gallery {

// A scale on a pseudo-terminal: the reader opens slavePath() as its serial port, and the scale
// sends its frames through the master end, the next one at each tick.
class ScaleSimulator : public QObject {
 public:
  explicit ScaleSimulator(QObject* parent = nullptr);
  ~ScaleSimulator() override;
  bool ok() const { return master_ >= 0; }
  const QString& slavePath() const { return slavePath_; }
  // The frames sent in turn, one every intervalMs; the first one at once.
  void play(const QStringList& frames, int intervalMs = 400);
  const QString& lastFrame() const { return last_; }

 private:
  void sendNext();
  int master_ = -1;
  QString slavePath_;
  QStringList frames_;
  qsizetype next_ = 0;
  QString last_;
  QTimer timer_;
};

// The echo page (/echo: "Current IP Address: ...") and the registration endpoint
// (/updateip.asp?...: keeps the machine's address and answers with the list of all of them).
class AddressServer : public QObject {
 public:
  explicit AddressServer(const QString& publicAddress, QObject* parent = nullptr);
  bool ok() const { return server_.isListening(); }
  QString base() const;  // http://127.0.0.1:port
  // The machines known before any registration.
  void addMachine(const QString& name, const QString& address) { machines_[name] = address; }

 private:
  void serve(class QTcpSocket* socket);
  QByteArray answer(const QByteArray& target);
  QTcpServer server_;
  QString publicAddress_;
  std::map<QString, QString> machines_;
};

}  // namespace gallery
