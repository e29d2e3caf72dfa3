#pragma once

#include <QByteArray>
#include <QMap>
#include <QStringList>
#include <QTcpServer>
#include <QTcpSocket>

namespace nbx::test {

// A small HTTP server on a loopback port, with one answer per path. An
// answer that stalls sends its headers and the first bytes of its body,
// then waits; `dropped` counts the connections the client closed while
// the server still had something to send.
class LoopbackServer : public QTcpServer {
 public:
  struct Answer {
    int status = 200;
    QByteArray body;
    bool stalls = false;
    bool silent = false;  // takes the request and never answers
  };

  LoopbackServer() {
    listen(QHostAddress::LocalHost);
    connect(this, &QTcpServer::newConnection, this, [this] {
      while (QTcpSocket* socket = nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { Serve(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
      }
    });
  }

  QString base() const { return QStringLiteral("http://127.0.0.1:%1").arg(serverPort()); }

  QMap<QString, Answer> answers;
  QStringList requested;
  int dropped = 0;

 private:
  void Serve(QTcpSocket* socket) {
    QByteArray& pending = buffers_[socket];
    pending += socket->readAll();
    if (!pending.contains("\r\n\r\n")) return;
    const QString path = QString::fromLatin1(pending.split(' ').value(1));
    pending.clear();
    requested << path;
    const Answer answer = answers.value(path, Answer{404, "missing"});
    if (answer.silent) return;
    const qint64 length = answer.stalls ? answer.body.size() * 100 : answer.body.size();
    socket->write(QStringLiteral("HTTP/1.1 %1 %2\r\nContent-Length: %3\r\n\r\n")
                      .arg(answer.status)
                      .arg(answer.status == 200 ? "OK" : "Not Found")
                      .arg(length)
                      .toLatin1() +
                  answer.body);
    if (answer.stalls)
      connect(socket, &QTcpSocket::disconnected, this, [this] { ++dropped; });
  }

  QMap<QTcpSocket*, QByteArray> buffers_;
};

}  // namespace nbx::test
