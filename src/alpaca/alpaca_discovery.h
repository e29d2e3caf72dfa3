#pragma once

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>

namespace nbx::alpaca {

// The answer to Alpaca discovery: a datagram "alpacadiscovery1" gets
// {"AlpacaPort": N}. It listens on every IPv4 address so that it hears
// broadcasts, but answers from the address the HTTP server serves, so a
// client connects where the server is; while that address is loopback,
// only this machine's own clients are answered.
class AlpacaDiscovery : public QObject {
 public:
  AlpacaDiscovery(const QHostAddress& served, quint16 alpacaPort, QObject* parent = nullptr);

  bool Listen(quint16 discoveryPort, QString& error);

 private:
  void Answer();
  bool MayAnswer(const QHostAddress& sender) const;

  QHostAddress served_;
  quint16 alpacaPort_;
  QUdpSocket listener_;
  QUdpSocket replier_;
};

}  // namespace nbx::alpaca
