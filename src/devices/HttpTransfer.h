#pragma once
// An HTTP transfer in two steps, shaped like the transfer control the tracker was written against:
// Execute starts a request and returns; StateChanged tells how it goes; when it says the response
// is received, the owner pulls the data out in pieces with GetChunk while and after it arrives.
#include <QByteArray>
#include <QString>
#include <cstdint>
#include <functional>

namespace tq7 {

namespace err {
constexpr int32_t StillExecuting = 35764;  // Execute while the last request still runs
}

class HttpTransfer {
 public:
  // The states StateChanged reports.
  enum State : int16_t {
    icNone = 0,
    icConnecting = 3,
    icRequestSent = 6,
    icReceivingResponse = 7,
    icResponseReceived = 8,  // the answer has begun to arrive: time to pull it
    icError = 11,            // no answer: refused, unknown host, timed out
    icResponseCompleted = 12,
  };

  virtual ~HttpTransfer() = default;

  // Starts a request with the method "GET" or "POST" (an empty body). While one runs, 35764.
  virtual void Execute(const QString& url, const QString& method) = 0;
  // True from Execute until the whole answer is in, the request failed or was cancelled.
  virtual bool StillExecuting() const = 0;
  // Up to size bytes of the answer not yet pulled; empty when none wait.
  virtual QByteArray GetChunk(int32_t size) = 0;
  // Ends the request under way and drops what was not pulled.
  virtual void Cancel() = 0;
  // Seconds a request may take in all before it is given up; 0 waits for ever.
  virtual int32_t RequestTimeout() const = 0;
  virtual void setRequestTimeout(int32_t seconds) = 0;

  // Called on the owner's thread, never from inside Execute, GetChunk or Cancel.
  std::function<void(int16_t State)> StateChanged;
};

}  // namespace tq7
