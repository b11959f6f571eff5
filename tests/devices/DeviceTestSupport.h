#pragma once
// Real I/O for the device tests: an event loop, a platform whose message pump really pumps, a
// pseudo-terminal that plays the scale, and an HTTP server on 127.0.0.1 that plays the echo and
// registration services. Header-only, so that the core and the host tests share one copy.
#include "frame/FakePlatform.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDeadlineTimer>
#include <QString>
#include <QThread>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace tq7::testing {

// The core tests run without an application object; sockets and serial lines need one.
inline void ensureEventLoop() {
  if (QCoreApplication::instance()) return;
  static int argc = 1;
  static char name[] = "tq7_device_tests";
  static char* argv[] = {name, nullptr};
  static QCoreApplication* app = new QCoreApplication(argc, argv);
  (void)app;
}

// Lets events through until pred holds or ms have passed; answers pred.
inline bool waitFor(const std::function<bool()>& pred, int ms = 3000) {
  QDeadlineTimer deadline(ms);
  while (!pred()) {
    if (deadline.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(1);
  }
  return true;
}

// Lets events through for ms, whatever happens.
inline void pump(int ms) {
  QDeadlineTimer deadline(ms);
  while (!deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
    QThread::msleep(1);
  }
}

// The fake platform, but its message pump lets real events through, and its folders are the test's.
class PumpingPlatform : public FakePlatform {
 public:
  QString folder;  // application and temporary folder
  bool realClock = false;  // now() from the system clock instead of the fixed one
  double now() override {
    if (!realClock) return FakePlatform::now();
    const QDateTime t = QDateTime::currentDateTime();
    return double(QDate(1899, 12, 30).daysTo(t.date())) + t.time().msecsSinceStartOfDay() / 86400000.0;
  }
  void processEvents() override {
    FakePlatform::processEvents();
    QCoreApplication::processEvents();
  }
  QString applicationFolder() override { return folder; }
  QString temporaryFolder() override { return folder; }
};

// A pseudo-terminal pair: the control opens the slave as its serial port, the test writes into
// the master as a scale would.
class PseudoTerminal {
 public:
  PseudoTerminal() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) return;
    const char* name = ptsname(master_);
    if (name) slavePath_ = QString::fromLocal8Bit(name);
  }
  ~PseudoTerminal() { closeMaster(); }
  PseudoTerminal(const PseudoTerminal&) = delete;
  PseudoTerminal& operator=(const PseudoTerminal&) = delete;

  bool ok() const { return master_ >= 0 && !slavePath_.isEmpty(); }
  const QString& slavePath() const { return slavePath_; }
  bool write(const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t n = ::write(master_, bytes.data() + done, bytes.size() - done);
      if (n <= 0) return false;
      done += size_t(n);
    }
    return true;
  }
  void closeMaster() {
    if (master_ >= 0) ::close(master_);
    master_ = -1;
  }

 private:
  int master_ = -1;
  QString slavePath_;
};

// An HTTP/1.1 server on 127.0.0.1, on a port the system chooses, each connection on a thread of
// its own. A route answers with a status and a body sent in parts, each part after its delay.
class LoopbackHttpServer {
 public:
  struct Request {
    std::string method, target;
  };
  struct Part {
    int delayMs = 0;
    std::string data;
  };
  struct Response {
    int status = 200;
    std::vector<Part> parts;  // the first part's delay comes before the head
  };
  using Route = std::function<Response(const Request&)>;

  explicit LoopbackHttpServer(Route route) : route_(std::move(route)) {
    listen_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    addr.sin_port = 0;
    const int yes = 1;
    ::setsockopt(listen_, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    if (::bind(listen_, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0 || ::listen(listen_, 16) != 0) return;
    socklen_t len = sizeof addr;
    ::getsockname(listen_, reinterpret_cast<sockaddr*>(&addr), &len);
    port_ = ntohs(addr.sin_port);
    acceptor_ = std::thread([this] { acceptLoop(); });
  }
  ~LoopbackHttpServer() {
    stop_ = true;
    if (acceptor_.joinable()) acceptor_.join();
    for (std::thread& t : workers_) t.join();
    if (listen_ >= 0) ::close(listen_);
  }
  LoopbackHttpServer(const LoopbackHttpServer&) = delete;
  LoopbackHttpServer& operator=(const LoopbackHttpServer&) = delete;

  int port() const { return port_; }
  QString url(const char* path) const { return QStringLiteral("http://127.0.0.1:%1%2").arg(port_).arg(QLatin1String(path)); }
  QString base() const { return QStringLiteral("http://127.0.0.1:%1").arg(port_); }
  std::vector<Request> requests() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return requests_;
  }

  static Response page(const std::string& body, int status = 200) { return Response{status, {Part{0, body}}}; }

  // A port on which nothing listens (it was free a moment ago).
  static int closedPort() {
    const int s = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(s, reinterpret_cast<sockaddr*>(&addr), sizeof addr);
    socklen_t len = sizeof addr;
    ::getsockname(s, reinterpret_cast<sockaddr*>(&addr), &len);
    ::close(s);
    return ntohs(addr.sin_port);
  }

 private:
  void acceptLoop() {
    while (!stop_) {
      pollfd p{listen_, POLLIN, 0};
      if (::poll(&p, 1, 20) <= 0) continue;
      const int c = ::accept4(listen_, nullptr, nullptr, SOCK_CLOEXEC);
      if (c < 0) continue;
      std::lock_guard<std::mutex> lock(mutex_);
      workers_.emplace_back([this, c] { serve(c); });
    }
  }

  // Sleeps in small steps, so that a stopping server does not wait for a slow answer.
  bool sleepFor(int ms) {
    for (int waited = 0; waited < ms && !stop_; waited += 10) std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return !stop_;
  }

  static bool sendAll(int c, const std::string& s) {
    size_t done = 0;
    while (done < s.size()) {
      const ssize_t n = ::send(c, s.data() + done, s.size() - done, MSG_NOSIGNAL);
      if (n <= 0) return false;
      done += size_t(n);
    }
    return true;
  }

  void serve(int c) {
    std::string in;
    char buf[4096];
    while (in.find("\r\n\r\n") == std::string::npos && !stop_) {
      pollfd p{c, POLLIN, 0};
      if (::poll(&p, 1, 20) <= 0) continue;
      const ssize_t n = ::recv(c, buf, sizeof buf, 0);
      if (n <= 0) break;
      in.append(buf, size_t(n));
    }
    Request r;
    const size_t sp1 = in.find(' '), sp2 = in.find(' ', sp1 + 1);
    if (sp1 != std::string::npos && sp2 != std::string::npos) {
      r.method = in.substr(0, sp1);
      r.target = in.substr(sp1 + 1, sp2 - sp1 - 1);
      {
        std::lock_guard<std::mutex> lock(mutex_);
        requests_.push_back(r);
      }
      const Response resp = route_(r);
      size_t length = 0;
      for (const Part& part : resp.parts) length += part.data.size();
      bool alive = true;
      for (size_t i = 0; i < resp.parts.size() && alive; ++i) {
        alive = sleepFor(resp.parts[i].delayMs);
        if (alive && i == 0)
          alive = sendAll(c, "HTTP/1.1 " + std::to_string(resp.status) + " Status\r\nContent-Type: text/html\r\n" +
                                 "Content-Length: " + std::to_string(length) + "\r\nConnection: close\r\n\r\n");
        if (alive) alive = sendAll(c, resp.parts[i].data);
      }
    }
    ::shutdown(c, SHUT_RDWR);
    ::close(c);
  }

  Route route_;
  int listen_ = -1;
  int port_ = 0;
  std::atomic<bool> stop_{false};
  std::thread acceptor_;
  std::vector<std::thread> workers_;
  std::vector<Request> requests_;
  mutable std::mutex mutex_;
};

}  // namespace tq7::testing
