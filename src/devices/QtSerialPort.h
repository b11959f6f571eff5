#pragma once
// The serial line on QSerialPort.
//
// Port numbers name devices as the numbered ports of a PC name them: port n is /dev/ttyS<n-1>, so
// 1 is /dev/ttyS0. A USB adapter or a pseudo-terminal gets a number of its own, either for the
// whole process with setSerialPortPath(n, "/dev/ttyUSB0"), or from the environment variable
// TQ7_COM<n> (TQ7_COM3=/dev/ttyUSB0). A number below 1 names no port.
//
// Bytes are handed over one character to a byte (Latin-1), so a position in a frame counts bytes
// as the scale sent them, and bytes that are not text can never break a read.
#include "devices/SerialPort.h"

#include <memory>

class QSerialPort;

namespace tq7 {

// The device a port number stands for; empty for a number below 1.
QString serialPortPath(int16_t port);
// Gives port number n a device of its own for this process; an empty path takes it back.
void setSerialPortPath(int16_t port, const QString& path);

class QtSerialPort : public SerialPort {
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  int16_t CommPort() const override { return commPort_; }
  void setCommPort(int16_t port) override;
  QString Settings() const override { return settings_; }
  void setSettings(const QString& settings) override;
  int16_t InputLen() const override { return inputLen_; }
  void setInputLen(int16_t n) override;
  int16_t RThreshold() const override { return rThreshold_; }
  void setRThreshold(int16_t n) override;
  bool PortOpen() const override;
  void setPortOpen(bool open) override;
  QString Input() override;

 private:
  bool apply(QSerialPort& port) const;
  void arrived();
  void failed(int error);

  int16_t commPort_ = 1;
  QString settings_ = QStringLiteral("9600,N,8,1");
  int32_t baud_ = 9600;
  char parity_ = 'N';
  int dataBits_ = 8;
  double stopBits_ = 1;
  int16_t inputLen_ = 0;
  int16_t rThreshold_ = 0;
  std::unique_ptr<QSerialPort> port_;
};

}  // namespace tq7
