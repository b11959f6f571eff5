#pragma once
// The weighing scale reader: one text box filling the control shows the weight a scale sends on a
// serial line, its background telling the state (connected and zero or above, connected and below
// zero, not connected). The scale talks on its own; the reader never sends a byte.
#include "companion/FileHelper.h"
#include "companion/StandardHelper.h"
#include "devices/SerialPort.h"
#include "frame/Control.h"

#include <memory>

namespace tq7 {

class WeightMachine : public Control {
 public:
  // Without a port of its own the reader uses the real serial line (QtSerialPort).
  explicit WeightMachine(std::unique_ptr<SerialPort> port = nullptr);
  ~WeightMachine() override;

  // Public variables, read and written directly.
  int16_t WEIGHTMODE = 1;    // 0: the scale leaves off the last digit; 2: tenths; else as sent
  int16_t WEIGHTSTART = 1;   // first character of the number in a frame, from 1
  int16_t WEIGHTLEN = 0;     // characters taken from WEIGHTSTART
  int16_t WEIGHTDELAY = 0;   // seconds a reading stays valid after its last change (below 1: 3)
  QString ENCODETEXT = QStringLiteral("?234567890.");  // DecodeDigits' table
  QString TRIMAFTERTEXT = QStringLiteral("GROSS WEIGHT");
  QString PORTSETTING = QStringLiteral("4800,N,8,2");
  int16_t PORTNO = 1;        // see QtSerialPort.h for the device a number names
  double PORTDELAY = 0.5;
  Colour PositiveColor = 0x00FF00;
  Colour NagativeColor = 0x0000FF;
  Colour DisconnectColor = 0x808080;
  bool SaveLog = false;
  bool UseDelay = false;

  void Connect();
  void Disconnect();
  double GETWeight();
  void SetFontName(const QString& FontName);
  void SetFontSize(float Size);

  // The number in one frame, as text; empty when the frame holds none.
  QString ParseWeight(const QString& S) const;
  // Routines of the frame format that nothing in the reader calls.
  static QString DecodeDigits(const QString& text, const QString& table);
  static QString JoinTextTokens(const QString& expression);

  // Where the received texts are logged when SaveLog is on: WMLog.log in the temporary folder, the
  // place every user may write to, as the root of the system drive once was.
  static QString LogFileName();

  SerialPort& MSComm1() { return *port_; }

  // Children, in the order the host stacks them.
  TextBox TxtRegis{QStringLiteral("TxtRegis")};
  // Its tick runs the receive step; it stands disabled with no interval and nothing starts it.
  Timer Timer1{QStringLiteral("Timer1")};

 protected:
  void onResize() override;

 private:
  void MSComm1_OnComm();
  StandardHelper& standard();
  FileHelper& files();

  std::unique_ptr<SerialPort> port_;
  std::unique_ptr<StandardHelper> standard_;
  std::unique_ptr<FileHelper> files_;
  double LastChangeTime = 0;
  QString LastWeightText;
};

}  // namespace tq7
