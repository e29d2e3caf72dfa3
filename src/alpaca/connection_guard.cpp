#include "alpaca/connection_guard.h"

#include <QTimer>

namespace nbx::alpaca {
namespace {

// What a connection has sent of its present request, and the time it has left.
class RequestWatch : public QObject {
 public:
  explicit RequestWatch(QTcpSocket* socket) : QObject(socket) {
    setObjectName(Name);
    deadline.setSingleShot(true);
    connect(&deadline, &QTimer::timeout, socket, &QTcpSocket::abort);
  }
  static constexpr const char* Name = "AlpacaRequestWatch";
  QTimer deadline{this};
  qint64 bytes = 0;
};

// Found by name: the watch has no meta-object of its own to be cast by.
RequestWatch* WatchOf(QTcpSocket* socket) {
  return static_cast<RequestWatch*>(
      socket->findChild<QObject*>(QLatin1String(RequestWatch::Name), Qt::FindDirectChildrenOnly));
}

}  // namespace

void GuardedTcpServer::incomingConnection(qintptr descriptor) {
  auto* socket = new QTcpSocket(this);
  if (!socket->setSocketDescriptor(descriptor)) {
    delete socket;
    return;
  }
  auto* watch = new RequestWatch(socket);
  watch->deadline.start(RequestSeconds * 1000);  // a connection that never speaks
  // Connected before the HTTP server's own reader, so it sees each chunk
  // before the server takes it.
  connect(socket, &QTcpSocket::readyRead, watch, [socket, watch] {
    if (watch->bytes == 0) watch->deadline.start(RequestSeconds * 1000);
    watch->bytes += socket->bytesAvailable();
    // Closed once the server has taken this chunk, not under its feet.
    if (watch->bytes > RequestBytes) QMetaObject::invokeMethod(socket, &QTcpSocket::abort, Qt::QueuedConnection);
  });
  MakeRoom();
  open_.emplace_back(socket);
  addPendingConnection(socket);
}

void GuardedTcpServer::MakeRoom() {
  std::erase_if(open_, [](const QPointer<QTcpSocket>& s) { return s.isNull() || s->state() == QAbstractSocket::UnconnectedState; });
  while (open_.size() >= MaxConnections) {
    if (open_.front()) open_.front()->abort();
    open_.pop_front();
  }
}

void GuardedTcpServer::RequestDone(QTcpSocket* socket) {
  if (RequestWatch* watch = WatchOf(socket)) {
    watch->deadline.start(IdleSeconds * 1000);
    watch->bytes = 0;
  }
}

}  // namespace nbx::alpaca
