// The devices' own work, apart from the line: the scale reader's frame parse, and the tracker's
// answer path on a page of 4 MB (pulled 256 bytes at a time, written to its scratch file, read
// back line by line and scanned). The parse must leave a scale at full speed far below one core;
// the answer path must stay linear: within 4x of writing the page to a file and reading it back.
#include "BenchData.h"
#include "devices/DynamicIP.h"
#include "devices/WeightMachine.h"
#include "frame/FakePlatform.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>

using bench::Clock;
using bench::seconds;

namespace {

// An answer held in memory, handed out as the real transfer hands it out.
class MemoryTransfer : public tq7::HttpTransfer {
 public:
  QByteArray page;
  qsizetype at = 0;
  void Execute(const QString&, const QString&) override { at = 0; }
  bool StillExecuting() const override { return false; }
  QByteArray GetChunk(int32_t size) override {
    const qsizetype n = std::min<qsizetype>(size, page.size() - at);
    QByteArray c = page.mid(at, n);
    at += n;
    return c;
  }
  void Cancel() override {}
  int32_t RequestTimeout() const override { return 0; }
  void setRequestTimeout(int32_t) override {}
};

class Folder : public tq7::FakePlatform {
 public:
  QString folder;
  QString applicationFolder() override { return folder; }
};

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  Folder quiet;
  QTemporaryDir dir;
  quiet.folder = dir.path();

  // ---- The scale's frames ----
  tq7::WeightMachine wm;
  wm.WEIGHTSTART = 7;
  wm.WEIGHTLEN = 10;
  const QString frames[] = {QStringLiteral("ST,GS,  1250.5kg\r\n"), QStringLiteral("US,GS, -12.5 kg\r\n"),
                            QStringLiteral("OL,GS,OVERLOAD  \r\n"), QStringLiteral("ST,NT,    0.0 KG\r\n")};
  constexpr int kFrames = 400000;
  size_t parsed = 0;
  auto t0 = Clock::now();
  for (int i = 0; i < kFrames; ++i) parsed += size_t(wm.ParseWeight(frames[i & 3]).size());
  const double perFrameUs = seconds(t0, Clock::now()) / kFrames * 1e6;

  // ---- The tracker's answer path ----
  auto echo = std::make_unique<MemoryTransfer>();
  MemoryTransfer* inet1 = echo.get();
  const std::string line(99, 'z');
  while (inet1->page.size() < (4 << 20)) inet1->page += QByteArray::fromStdString(line + "\n");
  inet1->page += "Current IP Address: 61.90.1.2\n";
  tq7::DynamicIP ip(std::move(echo), std::make_unique<MemoryTransfer>());
  ip.KeywordGET = QStringLiteral("Address:");

  double best = 1e9, baseline = 1e9;
  bool found = true;
  for (int run = 0; run < 5; ++run) {
    inet1->at = 0;
    ip.WANIP.clear();
    t0 = Clock::now();
    ip.Inet1().StateChanged(tq7::HttpTransfer::icResponseReceived);
    best = std::min(best, seconds(t0, Clock::now()));
    found = found && ip.WANIP == QLatin1String("61.90.1.2");

    // The same bytes written and read back as text, with nothing else.
    t0 = Clock::now();
    {
      QFile f(dir.filePath(QStringLiteral("plain.txt")));
      f.open(QIODevice::WriteOnly | QIODevice::Truncate);
      f.write(inet1->page);
    }
    QFile f(dir.filePath(QStringLiteral("plain.txt")));
    f.open(QIODevice::ReadOnly);
    const QString text = QString::fromUtf8(f.readAll());
    baseline = std::min(baseline, seconds(t0, Clock::now()));
    found = found && text.size() == inet1->page.size();
  }
  const double ratio = best / baseline;
  const bool ok = found && parsed > 0 && perFrameUs < 20 && ratio < 4;
  std::printf("ParseWeight: %.2f us a frame (%d frames)\n", perFrameUs, kFrames);
  std::printf("echo answer of %.1f MB: %.1f ms; write and read back: %.1f ms; ratio %.2f\n",
              inet1->page.size() / 1048576.0, best * 1000, baseline * 1000, ratio);
  std::printf("bench_devices parse_us=%.2f answer_ratio=%.2f %s\n", perFrameUs, ratio, ok ? "ok" : "FAIL");
  return ok ? 0 : 1;
}
