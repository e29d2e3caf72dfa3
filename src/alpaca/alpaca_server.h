#pragma once

#include <QAbstractHttpServer>
#include <QHostAddress>
#include <QPointer>

#include "alpaca/alpaca_devices.h"

namespace nbx {
struct Nimbometer;
}

namespace nbx::alpaca {

class GuardedTcpServer;

// The Alpaca HTTP server: the management API, the two devices and their
// setup pages, answered on the event loop from the station's records.
class AlpacaServer : public QAbstractHttpServer {
 public:
  // `installation` tells one installation from another (its settings file):
  // the devices' unique IDs come from it and this machine's ID.
  AlpacaServer(Nimbometer& nm, const QString& installation, QObject* parent = nullptr);

  bool Listen(const QHostAddress& address, quint16 port, QString& error);
  quint16 Port() const;
  QString UniqueID(const DeviceInfo& device) const;

 protected:
  bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
  void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

 private:
  struct Reply;
  Reply Route(const QHttpServerRequest& request);
  Reply Management(const QStringList& path, const AlpacaParameters& p);
  Reply Device(const QStringList& path, bool isPut, const AlpacaParameters& p);
  Reply SetupPage(const DeviceInfo* device) const;
  QByteArray Envelope(const AlpacaParameters& p, const MemberResult& result);

  Nimbometer& nm_;
  AlpacaDevices devices_;
  QString installation_;
  QPointer<GuardedTcpServer> tcp_;
  quint32 serverTransaction_ = 0;
};

}  // namespace nbx::alpaca
