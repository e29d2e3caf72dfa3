#include "ui/dialogs/update/update_download.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>

namespace nbx {

QString InetStateText(int state) {
  static const char* const words[] = {
      "Looking up IP address", "Successfully found", "Connecting to host", "Successfully connected",
      "Sending a request", "Successfully sent", "Receiving a response", "Successfully received",
      "Disconnecting from host", "Successfully disconnected", "Communication error",
      "Sucessful response"};
  if (state < InetLookingUp || state > InetResponse) return "Unknown condition";
  return words[state - 1];
}

UpdateDownload::UpdateDownload(QNetworkAccessManager& network, QObject* parent)
    : QObject(parent), network_(network) {}

UpdateDownload::~UpdateDownload() { Abort(); }

void UpdateDownload::Get(const QUrl& url, qint64 capBytes, int timeoutMs) {
  Abort();
  bytes_.clear();
  cap_ = capBytes;
  name_ = url.fileName();
  QNetworkRequest request(url);
  // A time-out counts from the last byte that came, so a slow line still
  // delivers while a silent server is given up.
  request.setTransferTimeout(timeoutMs);
  // Always the server's present file, never a copy kept on the way.
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  emit stateChanged(InetLookingUp);
  reply_ = network_.get(request);
  connect(reply_, &QNetworkReply::socketStartedConnecting, this, [this] { emit stateChanged(InetConnecting); });
  connect(reply_, &QNetworkReply::requestSent, this, [this] { emit stateChanged(InetSent); });
  connect(reply_, &QNetworkReply::metaDataChanged, this, [this] { emit stateChanged(InetReceiving); });
  connect(reply_, &QNetworkReply::readyRead, this, &UpdateDownload::Collect);
  connect(reply_, &QNetworkReply::finished, this, &UpdateDownload::Finish);
}

void UpdateDownload::Abort() {
  if (!reply_) return;
  QNetworkReply* reply = reply_;
  reply_ = nullptr;
  reply->disconnect(this);
  reply->abort();
  reply->deleteLater();
}

void UpdateDownload::Collect() {
  if (!reply_) return;
  const qint64 announced = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
  if (announced > cap_ || bytes_.size() + reply_->bytesAvailable() > cap_) {
    Fail(QStringLiteral("%1 is larger than %2 bytes; it was not taken").arg(name_).arg(cap_));
    return;
  }
  bytes_ += reply_->readAll();
}

void UpdateDownload::Finish() {
  if (!reply_) return;
  QNetworkReply* reply = reply_;
  if (reply->error() == QNetworkReply::NoError) {
    Collect();
    if (!reply_) return;  // over the cap
    reply_ = nullptr;
    reply->deleteLater();
    emit stateChanged(InetReceived);
    emit received(bytes_);
    return;
  }
  const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  if (status >= 400) {
    const QString phrase = reply->attribute(QNetworkRequest::HttpReasonPhraseAttribute).toString();
    Fail(QStringLiteral("the server answered %1 %2 for %3").arg(status).arg(phrase, name_));
  } else if (reply->error() == QNetworkReply::OperationCanceledError ||
             reply->error() == QNetworkReply::TimeoutError) {
    // Only the transfer time-out cancels on its own; Abort disconnects first.
    Fail(QStringLiteral("no answer from the server for %1").arg(name_));
  } else {
    Fail(reply->errorString());
  }
}

void UpdateDownload::Fail(const QString& reason) {
  Abort();
  emit stateChanged(InetError);
  emit failed(reason);
}

}  // namespace nbx
