#include "devices/WeightMachine.h"

#include "companion/VbText.h"
#include "devices/QtSerialPort.h"
#include "frame/Error.h"
#include "frame/Platform.h"

namespace tq7 {

WeightMachine::WeightMachine(std::unique_ptr<SerialPort> port)
    : Control(QStringLiteral("WeightMachine")), port_(port ? std::move(port) : std::make_unique<QtSerialPort>()) {
  addChild(TxtRegis);
  addChild(Timer1);
  TxtRegis.setText(QStringLiteral("-000000"));
  Font font;
  font.Name = QStringLiteral("MS Serif");
  font.Size = 24;
  TxtRegis.setFont(font);
  TxtRegis.setAlignment(1);
  TxtRegis.setBackColor(DisconnectColor);
  Timer1.setEnabled(false);
  Timer1.onTick = [this] { MSComm1_OnComm(); };
  port_->OnComm = [this] { MSComm1_OnComm(); };
  LastChangeTime = platform().now();
}

WeightMachine::~WeightMachine() {
  port_->OnComm = nullptr;
  if (port_->PortOpen()) step([&] { port_->setPortOpen(false); });
}

StandardHelper& WeightMachine::standard() {
  if (!standard_) standard_ = std::make_unique<StandardHelper>();
  return *standard_;
}

FileHelper& WeightMachine::files() {
  if (!files_) files_ = std::make_unique<FileHelper>();
  return *files_;
}

QString WeightMachine::LogFileName() { return platform().temporaryFolder() + QStringLiteral("/WMLog.log"); }

void WeightMachine::onResize() { step([&] { TxtRegis.Move(0, 0, Width(), Height()); }); }

void WeightMachine::Connect() {
  const int32_t failed = step([&] {
    port_->setCommPort(PORTNO);
    port_->setSettings(PORTSETTING);
    port_->setInputLen(0);    // a read hands over all that waits
    port_->setRThreshold(1);  // every arriving character calls back
    port_->setPortOpen(true);
    TxtRegis.setText(QString());
    TxtRegis.setBackColor(NagativeColor);
  });
  if (failed) {
    step([&] { TxtRegis.setBackColor(DisconnectColor); });
    return;
  }
  MSComm1_OnComm();
}

void WeightMachine::Disconnect() {
  step([&] { port_->setPortOpen(false); });
  step([&] { TxtRegis.setBackColor(DisconnectColor); });
}

// Any call of the port runs this, whatever it was for: what waits is read and parsed.
void WeightMachine::MSComm1_OnComm() {
  QString S;
  step([&] { port_->setInputLen(0); });
  step([&] { S = port_->Input(); });
  if (SaveLog) step([&] { files().AddLog(S, LogFileName(), QString(), QStringLiteral("0"), QStringLiteral("1")); });
  // A frame that yields no number leaves the box as it was: a broken frame keeps the last weight.
  step([&] {
    const QString N = ParseWeight(S);
    if (N.isEmpty()) return;
    if (WEIGHTMODE == 0)
      TxtRegis.setText(N + QLatin1Char('0'));  // the scale leaves off the last digit
    else if (WEIGHTMODE == 2)
      TxtRegis.setText(vb::shortestText(standard().TextToDouble(N) / 10));
    else
      TxtRegis.setText(N);
  });
  double V = 0;
  step([&] { V = standard().TextToDouble(TxtRegis.Text()); });
  step([&] { TxtRegis.setBackColor(V >= 0 ? PositiveColor : NagativeColor); });
  step([&] {
    if (TxtRegis.Text() != LastWeightText) {
      LastChangeTime = platform().now();
      LastWeightText = TxtRegis.Text();
    }
  });
}

QString WeightMachine::ParseWeight(const QString& S) const {
  if (S.isEmpty()) return {};
  QString t = vb::UCase(vb::Mid(S, WEIGHTSTART, WEIGHTLEN));
  t = vb::Trim(t);
  // The unit may stand anywhere in the field, in either case.
  for (const char* drop : {"K", "G", "\r", "\n", " ", "?"}) t = vb::Replace(t, QString::fromLatin1(drop), QString());
  // Only a leading sign counts: whatever stands before the first "-" is lost.
  const int32_t minus = vb::InStr(t, QStringLiteral("-"));
  if (minus > 0) t = vb::Mid(t, minus);
  t = vb::Trim(t);
  return vb::IsNumeric(t) ? t : QString();
}

double WeightMachine::GETWeight() {
  double result = 0;
  if (!UseDelay) {
    step([&] { result = standard().TextToDouble(TxtRegis.Text()); });
    return result;
  }
  if (WEIGHTDELAY < 1) WEIGHTDELAY = 3;
  double limit = 0;
  step([&] { limit = LastChangeTime + standard().MinutesToSpan(WEIGHTDELAY / 60.0); });
  // A scale that has fallen silent, or a value that has stood too long, weighs nothing.
  if (platform().now() < limit) step([&] { result = standard().TextToDouble(TxtRegis.Text()); });
  return result;
}

void WeightMachine::SetFontName(const QString& FontName) {
  step([&] {
    Font f = TxtRegis.Font();
    f.Name = FontName;
    TxtRegis.setFont(f);
  });
}

void WeightMachine::SetFontSize(float Size) {
  step([&] {
    Font f = TxtRegis.Font();
    f.Size = Size;
    TxtRegis.setFont(f);
  });
}

QString WeightMachine::DecodeDigits(const QString& text, const QString& table) {
  QString out;
  out.reserve(text.size());
  for (const QChar c : text) {
    int32_t at = 0;
    if (c >= QLatin1Char('1') && c <= QLatin1Char('9'))
      at = c.unicode() - '0';
    else if (c == QLatin1Char('0'))
      at = 10;
    else if (c == QLatin1Char('.'))
      at = 11;
    out += at ? vb::Mid(table, at, 1) : QString(c);
  }
  return out;
}

QString WeightMachine::JoinTextTokens(const QString& expression) {
  QString built;
  for (const QString& piece : vb::Split(expression, QStringLiteral("+"))) {
    const QString token = vb::Trim(piece);
    step([&] {
      // Only three characters are compared with the four-letter word, so this never holds.
      if (vb::Right(token, 1) == QLatin1String(")") && vb::Left(token, 3) == QLatin1String("CHR(")) {
        const int32_t open = vb::InStr(token, QStringLiteral("("));
        built += vb::Mid(token, open + 1, int32_t(token.size()) - open - 1);
      } else if (vb::Left(token, 1) == QLatin1String("'") && vb::Right(token, 1) == QLatin1String("'")) {
        built += vb::Mid(token, 2, int32_t(token.size()) - 2);
      } else {
        built = token;
      }
    });
  }
  return built;
}

}  // namespace tq7
