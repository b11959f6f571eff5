#include "devices/QtHttpTransfer.h"

#include "frame/Error.h"

#include <QMetaObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace tq7 {

QtHttpTransfer::QtHttpTransfer(int msPerSecond) : msPerSecond_(msPerSecond) {
  timeout_.setSingleShot(true);
  QObject::connect(&timeout_, &QTimer::timeout, &anchor_, [this] {
    if (reply_) reply_->abort();  // finished() follows with the error
  });
}

QtHttpTransfer::~QtHttpTransfer() { drop(); }

void QtHttpTransfer::report(int16_t state) {
  const uint32_t request = request_;
  QMetaObject::invokeMethod(
      &anchor_,
      [this, request, state] {
        if (request == request_ && StateChanged) StateChanged(state);
      },
      Qt::QueuedConnection);
}

void QtHttpTransfer::Execute(const QString& url, const QString& method) {
  if (executing_) throw Error{err::StillExecuting, QStringLiteral("Still executing last request")};
  drop();
  if (!manager_) manager_ = std::make_unique<QNetworkAccessManager>();
  ++request_;
  data_.clear();
  pulled_ = 0;
  received_ = false;
  QNetworkRequest request{QUrl(url, QUrl::TolerantMode)};
  if (method.compare(QLatin1String("POST"), Qt::CaseInsensitive) == 0) {
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/x-www-form-urlencoded"));
    reply_ = manager_->post(request, QByteArray());
  } else {
    reply_ = manager_->get(request);
  }
  executing_ = true;
  QObject::connect(reply_.data(), &QNetworkReply::readyRead, &anchor_, [this] { take(); });
  QObject::connect(reply_.data(), &QNetworkReply::finished, &anchor_, [this] { finished(); });
  if (timeoutSeconds_ > 0) timeout_.start(timeoutSeconds_ * msPerSecond_);
  report(icConnecting);
}

void QtHttpTransfer::take() {
  if (!reply_ || !reply_->isOpen()) return;
  data_ += reply_->readAll();
  if (!received_) {
    received_ = true;
    report(icResponseReceived);
  }
}

void QtHttpTransfer::finished() {
  timeout_.stop();
  QNetworkReply* reply = reply_.data();
  if (!reply) return;
  if (reply->isOpen()) data_ += reply->readAll();
  // An answer with a status, an error page included, is an answer; no status is no answer.
  const bool answered = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
  if (answered && !received_) {
    received_ = true;
    report(icResponseReceived);
  }
  reply_ = nullptr;
  reply->disconnect(&anchor_);
  reply->deleteLater();
  executing_ = false;
  report(answered ? icResponseCompleted : icError);
}

QByteArray QtHttpTransfer::GetChunk(int32_t size) {
  if (reply_ && reply_->isOpen()) data_ += reply_->readAll();
  const qsizetype n = std::min<qsizetype>(std::max(size, 0), data_.size() - pulled_);
  QByteArray chunk = data_.mid(pulled_, n);
  pulled_ += n;
  if (pulled_ == data_.size()) {  // all handed out: the memory goes back
    data_.clear();
    pulled_ = 0;
  }
  return chunk;
}

void QtHttpTransfer::drop() {
  timeout_.stop();
  if (reply_) {
    QNetworkReply* reply = reply_.data();
    reply_ = nullptr;
    reply->disconnect(&anchor_);
    reply->abort();
    reply->deleteLater();
  }
  executing_ = false;
}

void QtHttpTransfer::Cancel() {
  drop();
  ++request_;  // nothing more is reported of it
  data_.clear();
  pulled_ = 0;
}

}  // namespace tq7
