#pragma once

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QUrl>

class QNetworkAccessManager;
class QNetworkReply;

namespace nbx {

// The request's progress as the update window words it: 1 "Looking up IP
// address" to 12 "Sucessful response"; 11 is the communication error.
enum InetState {
  InetLookingUp = 1,
  InetFound,
  InetConnecting,
  InetConnected,
  InetSending,
  InetSent,
  InetReceiving,
  InetReceived,
  InetDisconnecting,
  InetDisconnected,
  InetError,
  InetResponse,
};

// The status label's word for a state; "Unknown condition" for any other number.
QString InetStateText(int state);

// One update file fetched over HTTP on the event loop. What is read is
// capped: a file larger than the cap is refused whole, so that a wrong or
// hostile server can neither fill the memory nor hand over a cut file.
class UpdateDownload : public QObject {
  Q_OBJECT

 public:
  explicit UpdateDownload(QNetworkAccessManager& network, QObject* parent = nullptr);
  ~UpdateDownload() override;

  // Starts the request; one of `received` or `failed` follows, unless Abort
  // comes first.
  void Get(const QUrl& url, qint64 capBytes, int timeoutMs);
  // Drops a running request; neither signal follows.
  void Abort();
  bool running() const { return reply_ != nullptr; }

 signals:
  void stateChanged(int state);
  void received(const QByteArray& bytes);
  // `reason` is a sentence for the status label, after "Communication error".
  void failed(const QString& reason);

 private:
  void Collect();
  void Finish();
  void Fail(const QString& reason);

  QNetworkAccessManager& network_;
  QNetworkReply* reply_ = nullptr;
  QByteArray bytes_;
  qint64 cap_ = 0;
  QString name_;
};

}  // namespace nbx
