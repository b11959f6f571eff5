#pragma once
// The serial line a scale talks on, shaped like the communications control the reader was written
// against: a numbered port, a settings string, how much one read hands over, from how many waiting
// characters the port calls back, and the port opened or closed by a switch.
//
// Failures are tq7::Error with the control's numbers: 380 a bad settings string, 8002 no such
// port, 8005 the port is open already (or held by another program), 8012 the port is not open.
#include <QString>
#include <cstdint>
#include <functional>

namespace tq7 {

namespace err {
constexpr int32_t InvalidPropertyValue = 380;
constexpr int32_t PortInvalid = 8002;
constexpr int32_t PortAlreadyOpen = 8005;
constexpr int32_t PortNotOpen = 8012;
}  // namespace err

class SerialPort {
 public:
  virtual ~SerialPort() = default;

  virtual int16_t CommPort() const = 0;
  // Changing the number of an open port fails with 8005.
  virtual void setCommPort(int16_t port) = 0;
  virtual QString Settings() const = 0;
  // "baud,parity,data bits,stop bits", as "4800,N,8,2"; parity N, E, O, M or S. Else 380.
  virtual void setSettings(const QString& settings) = 0;
  // Characters one Input hands over; 0 is all that wait.
  virtual int16_t InputLen() const = 0;
  virtual void setInputLen(int16_t n) = 0;
  // OnComm runs when at least this many characters wait; 0 turns the calls off.
  virtual int16_t RThreshold() const = 0;
  virtual void setRThreshold(int16_t n) = 0;
  virtual bool PortOpen() const = 0;
  virtual void setPortOpen(bool open) = 0;
  // The characters waiting, one character to a byte; 8012 when the port is closed.
  virtual QString Input() = 0;

  // Called on the thread that owns the port when characters arrive, and when the line fails.
  std::function<void()> OnComm;
};

}  // namespace tq7
