#pragma once
// The HTTP transfer on QNetworkAccessManager. The answer is kept as it arrives; GetChunk hands it
// out from where the last piece ended, so a page of megabytes pulled 256 bytes at a time costs
// one pass over it. States are reported through the event loop, one turn after the network said
// so, so that a handler that waits for the transfer is never called from inside the network code.
#include "devices/HttpTransfer.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>

class QNetworkAccessManager;
class QNetworkReply;

namespace tq7 {

class QtHttpTransfer : public HttpTransfer {
 public:
  // msPerSecond is the length of one second of RequestTimeout; only tests shorten it.
  explicit QtHttpTransfer(int msPerSecond = 1000);
  ~QtHttpTransfer() override;

  void Execute(const QString& url, const QString& method) override;
  bool StillExecuting() const override { return executing_; }
  QByteArray GetChunk(int32_t size) override;
  void Cancel() override;
  int32_t RequestTimeout() const override { return timeoutSeconds_; }
  void setRequestTimeout(int32_t seconds) override { timeoutSeconds_ = seconds; }

 private:
  void report(int16_t state);
  void take();
  void finished();
  void drop();

  QObject anchor_;  // the context of the queued reports; they die with the transfer
  std::unique_ptr<QNetworkAccessManager> manager_;
  QPointer<QNetworkReply> reply_;
  QTimer timeout_;
  QByteArray data_;
  qsizetype pulled_ = 0;
  bool executing_ = false;
  bool received_ = false;
  uint32_t request_ = 0;  // reports of an earlier request are dropped
  int32_t timeoutSeconds_ = 60;  // the transfer control's own default
  int msPerSecond_;
};

}  // namespace tq7
