#pragma once

#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <deque>

namespace nbx::alpaca {

// The listening socket of the Alpaca server, with the limits that keep one
// client from holding the station's event loop or memory: a request must
// arrive whole within RequestSeconds and stay under RequestBytes, a kept
// connection may stay idle IdleSeconds (the server keeps every connection
// open whatever the client asks), and past
// MaxConnections the oldest connection makes room for the newest. A
// connection that breaks a limit is closed.
class GuardedTcpServer : public QTcpServer {
 public:
  static constexpr int MaxConnections = 64;
  static constexpr qint64 RequestBytes = 64 * 1024;
  static constexpr int RequestSeconds = 10;
  static constexpr int IdleSeconds = 60;

  using QTcpServer::QTcpServer;

  // The server has read a whole request from `socket`: its limits start over.
  void RequestDone(QTcpSocket* socket);

 protected:
  void incomingConnection(qintptr descriptor) override;

 private:
  void MakeRoom();
  std::deque<QPointer<QTcpSocket>> open_;
};

}  // namespace nbx::alpaca
