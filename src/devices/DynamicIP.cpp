#include "devices/DynamicIP.h"

#include "companion/VbText.h"
#include "devices/QtHttpTransfer.h"
#include "frame/Error.h"
#include "frame/Platform.h"

#include <QFile>
#include <cmath>

namespace tq7 {

namespace {
constexpr int32_t DivisionByZero = 11;
constexpr int32_t ChunkSize = 256;
}  // namespace

DynamicIP::DynamicIP(std::unique_ptr<HttpTransfer> inet1, std::unique_ptr<HttpTransfer> inet2)
    : Control(QStringLiteral("DynamicIP")),
      inet1_(inet1 ? std::move(inet1) : std::make_unique<QtHttpTransfer>()),
      inet2_(inet2 ? std::move(inet2) : std::make_unique<QtHttpTransfer>()) {
  for (Widget* w : std::initializer_list<Widget*>{&Label1, &Label2, &Label3, &ProgressBar1, &btnStartDL, &Command1,
                                                  &Timer1, &Timer2})
    addChild(*w);
  btnStartDL.setCaption(QStringLiteral("Start"));
  Command1.setCaption(QStringLiteral("Stop"));
  btnStartDL.onClick = [this] { Armed = true; };
  Command1.onClick = [this] { StopAction(); };
  Timer1.setEnabled(false);
  Timer1.setInterval(1000);
  Timer1.onTick = [this] { Timer1_Timer(); };
  Timer2.setEnabled(false);
  Timer2.onTick = [this] { Timer2_Timer(); };
  inet1_->StateChanged = [this](int16_t s) { Inet1_StateChanged(s); };
  inet2_->StateChanged = [this](int16_t s) { Inet2_StateChanged(s); };
  setSize(4800, 1800);
  Label3.setCaption(QString());
  LoadINI();
}

DynamicIP::~DynamicIP() {
  inet1_->StateChanged = nullptr;
  inet2_->StateChanged = nullptr;
  step([&] { inet1_->Cancel(); });
}

StandardHelper& DynamicIP::standard() {
  if (!standard_) standard_ = std::make_unique<StandardHelper>();
  return *standard_;
}

FileHelper& DynamicIP::files() {
  if (!files_) files_ = std::make_unique<FileHelper>();
  return *files_;
}

void DynamicIP::onResize() {
  const double w = std::max(Width() - 120, 0.0);
  step([&] { Label1.Move(60, 60, w, 285); });
  step([&] { Label2.Move(60, 375, w, 285); });
  step([&] { Label3.Move(60, 690, w, 285); });
  step([&] { ProgressBar1.Move(60, 1005, w, 255); });
  step([&] { btnStartDL.Move(60, 1335, 1200, 375); });
  step([&] { Command1.Move(1320, 1335, 1200, 375); });
}

// ---- Settings ------------------------------------------------------------------------------------

QString DynamicIP::readINI(const QString& key) { return files().ReadINIKey(INIFileName, QString(), key); }

void DynamicIP::LoadINI() {
  step([&] {
    const QString folder = platform().applicationFolder();
    textFile1_ = folder + QStringLiteral("/TQ7DynamicIP.txt");
    textFile2_ = folder + QStringLiteral("/TQ7DynamicIP.tx2");
    INIFileName = folder + QStringLiteral("/TQ7DynamicIP.INI");
  });
  step([&] { SourceURL = vb::Trim(readINI(QStringLiteral("SOURCEURL"))); });
  if (SourceURL.isEmpty()) SourceURL = DefaultSourceURL();
  step([&] { Label3.setCaption(SourceURL); });
  step([&] { KeywordGET = vb::Trim(readINI(QStringLiteral("KEYWORD"))); });
  if (KeywordGET.isEmpty()) KeywordGET = QStringLiteral(": ");
  // A "0" in front, so that an empty value reads as 0 seconds.
  step([&] { Refresh = int32_t(vb::CInt(QStringLiteral("0") + readINI(QStringLiteral("REFRESH")))) * 1000; });
  step([&] { Timer2.setInterval(Refresh); });
  // The file format spells these two keys so.
  step([&] { UpdateURLPrefix = readINI(QStringLiteral("DESCTINATIONURLPREFIX")); });
  step([&] { UpdateURLSuffix = readINI(QStringLiteral("DESCTINATIONURLSUFFIX")); });
  step([&] { ComputerName = standard().MachineName(); });
  step([&] { CustomerCode = readINI(QStringLiteral("CUSTOMERCODE")); });
  step([&] { CustomerPassword = readINI(QStringLiteral("CUSTOMERPASSWORD")); });
}

// ---- Rounds --------------------------------------------------------------------------------------

QVariant DynamicIP::StartAction() {
  Armed = true;
  LoadINI();
  step([&] { Timer1.setEnabled(true); });
  step([&] { Timer2.setEnabled(true); });
  Timer2_Timer();
  return {};
}

// A transfer under way runs to its end.
QVariant DynamicIP::StopAction() {
  Armed = false;
  step([&] { Timer1.setEnabled(false); });
  step([&] { Timer2.setEnabled(false); });
  return {};
}

void DynamicIP::Timer2_Timer() {
  step([&] { ProgressBar1.setValue(0); });
  LoadINI();  // a changed settings file counts from the next round
  StartFetch();
}

void DynamicIP::StartFetch() {
  step([&] { btnStartDL.setEnabled(!Armed); });
  if (!Armed) return;
  step([&] { inet1_->setRequestTimeout(60); });
  step([&] { ProgressBar1.setMax(1024); });
  step([&] { Label1.setCaption(QStringLiteral("Establishing connection...")); });
  step([&] { Label3.setCaption(SourceURL); });
  if (!SourceURL.isEmpty()) step([&] { inet1_->Execute(SourceURL, QStringLiteral("GET")); });
}

// The transfer line: bytes in the echo buffer and the rate since the last tick.
void DynamicIP::Timer1_Timer() {
  const int32_t B = int32_t(ResponseBytes1.size()) - 1;
  // Seconds since midnight, to the millisecond.
  const double now = platform().now();
  const double seconds = double(std::llround((now - std::floor(now)) * 86400000.0)) / 1000.0;
  step([&] {
    const double elapsed = seconds - LastTick / 1000.0;
    if (elapsed == 0) throw Error{DivisionByZero, QStringLiteral("Division by zero")};
    const double rate = (B - LastBytes) / 1024.0 / elapsed;
    Label2.setCaption(vb::formatNumber(B / 1024.0, 2, true) + QStringLiteral(" KB") + QStringLiteral(" @ ") +
                      vb::formatNumber(rate, 2, true) + QStringLiteral(" KB/s"));
  });
  step([&] { LastTick = vb::CLng(seconds * 1000); });
  LastBytes = B;
}

// ---- Answers -------------------------------------------------------------------------------------

void DynamicIP::pullResponse(HttpTransfer& inet, QByteArray& buffer, bool showProgress) {
  step([&] {
    while (inet.StillExecuting()) platform().processEvents();
  });
  platform().processEvents();
  step([&] {
    for (;;) {
      const QByteArray chunk = inet.GetChunk(ChunkSize);
      if (chunk.isEmpty()) break;
      buffer.append(chunk);
      if (chunk.size() != ChunkSize) break;
      if (showProgress) step([&] {
          const int32_t K = vb::CLng((buffer.size() - 1) / 1024.0);
          ProgressBar1.setValue(K > ProgressBar1.Max() ? ProgressBar1.Max() : K);
        });
    }
  });
}

void DynamicIP::saveResponse(const QString& file, QByteArray& buffer) {
  step([&] {
    if (!QFile::exists(file)) throw Error{err::FileNotFound, QStringLiteral("File not found")};
    if (!QFile::remove(file)) throw Error{err::PathFileAccess, QStringLiteral("Permission denied")};
  });
  step([&] {
    QFile f(file);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
      throw Error{err::PathFileAccess, QStringLiteral("Path/File access error")};
    f.write(buffer);
  });
  buffer.clear();
  buffer.squeeze();
}

void DynamicIP::Inet1_StateChanged(int16_t State) {
  if (inet1Busy_) return;
  inet1Busy_ = true;
  if (State == HttpTransfer::icResponseReceived) {
    step([&] { Label1.setCaption(QStringLiteral("Tracing...")); });
    pullResponse(*inet1_, ResponseBytes1, true);
    step([&] { ProgressBar1.setValue(ProgressBar1.Max()); });
    step([&] { Label1.setCaption(QStringLiteral("Scanning...")); });
    step([&] { inet1_->Cancel(); });
    saveResponse(textFile1_, ResponseBytes1);
    QString T, A;
    step([&] { T = GETAllTextFile(textFile1_); });
    // The address is the run of digits and dots that follows the keyword, blanks skipped.
    step([&] {
      const int32_t P = vb::InStr(1, T, KeywordGET, vb::Compare::Binary);
      if (P == 0) return;
      const QString S = vb::Trim(vb::Mid(T, P + int32_t(KeywordGET.size()), 50));
      for (const QChar c : S) {
        if (vb::InStr(QStringLiteral("01234567890."), QString(c)) == 0) break;
        A += c;
      }
    });
    step([&] { Label1.setCaption(QStringLiteral("Scan complete.")); });
    step([&] { Label2.setCaption(QStringLiteral("WAN IP is ") + A); });
    if (!A.isEmpty()) {
      WANIP = A;
      // The settings file's prefix and suffix are overwritten at once by the request proper.
      UpdateURL = UpdateURLPrefix + A + UpdateURLSuffix;
      // Nothing is escaped: the values go into the request as they stand.
      UpdateURL = endpoint_ + QStringLiteral("/updateip.asp?CustomerCode=") + CustomerCode +
                  QStringLiteral("&CustomerPassword=") + CustomerPassword + QStringLiteral("&ServerUNCName=") +
                  ComputerName + QStringLiteral("&IP=") + WANIP;
      if (listener_) listener_->WANIPChange(WANIP);
      step([&] { Label1.setCaption(QStringLiteral("Valid Security Checking...")); });
      if (!UpdateURL.isEmpty()) {
        step([&] { Label1.setCaption(QStringLiteral("Register WAN IP :") + A); });
        step([&] { inet2_->Execute(UpdateURL, QStringLiteral("POST")); });
      }
    }
  }
  inet1Busy_ = false;
}

void DynamicIP::Inet2_StateChanged(int16_t State) {
  if (inet2Busy_) return;
  inet2Busy_ = true;
  if (State == HttpTransfer::icResponseReceived) {
    step([&] { Label1.setCaption(QStringLiteral("Updating ...")); });
    pullResponse(*inet2_, ResponseBytes2, false);
    step([&] { inet2_->Cancel(); });
    saveResponse(textFile2_, ResponseBytes2);
    QString T, V;
    step([&] { T = GETAllTextFile(textFile2_); });
    // The service answers in a page: the list stands behind "ALLIP=" and ends at the next tag.
    step([&] {
      const int32_t P = vb::InStr(T, QStringLiteral("ALLIP="));
      if (P == 0) return;
      V = vb::Trim(vb::Mid(T, P + 6));
      const int32_t tag = vb::InStr(V, QStringLiteral("<"));
      V = tag > 0 ? vb::Trim(vb::Left(V, tag - 1)) : QString();
    });
    if (!V.isEmpty()) {
      ALLIP = V;
      if (listener_) listener_->ALLIPChange(ALLIP);
    }
  }
  inet2Busy_ = false;
}

// ---- Lookups -------------------------------------------------------------------------------------

QString DynamicIP::GETRemoteDynamicIP(const QString& ServerUNCName) {
  QString result = QStringLiteral("0.0.0.0");
  if (ALLIP.isEmpty()) return result;
  const QString wanted = vb::UCase(ServerUNCName);
  for (const QString& piece : vb::Split(ALLIP, QStringLiteral(","))) {
    const QStringList parts = vb::Split(piece, QStringLiteral("="));
    if (parts.isEmpty() || vb::UCase(parts[0]) != wanted) continue;
    // The first match wins; a match without "=" has no address and leaves the answer as it was.
    if (parts.size() > 1) result = vb::Trim(parts[1]);
    break;
  }
  return result;
}

QString DynamicIP::GETAllTextFile(const QVariant& iTextFile) {
  QString result;
  step([&] {
    QFile f(iTextFile.toString());
    if (!f.exists() || !f.open(QIODevice::ReadOnly)) return;
    const QString text = QString::fromUtf8(f.readAll());
    result.reserve(text.size() + text.size() / 32 + 2);
    qsizetype from = 0;
    while (from < text.size()) {
      qsizetype end = text.indexOf(QLatin1Char('\n'), from);
      const qsizetype next = end < 0 ? text.size() : end + 1;
      if (end < 0) end = text.size();
      qsizetype lineEnd = end;
      if (lineEnd > from && text[lineEnd - 1] == QLatin1Char('\r')) --lineEnd;
      result += QStringView(text).mid(from, lineEnd - from);
      result += QStringLiteral("\r\n");
      from = next;
    }
  });
  return result;
}

}  // namespace tq7
