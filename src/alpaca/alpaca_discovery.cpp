#include "alpaca/alpaca_discovery.h"

#include <QNetworkDatagram>
#include <QNetworkInterface>

namespace nbx::alpaca {

AlpacaDiscovery::AlpacaDiscovery(const QHostAddress& served, quint16 alpacaPort, QObject* parent)
    : QObject(parent), served_(served), alpacaPort_(alpacaPort) {}

bool AlpacaDiscovery::Listen(quint16 discoveryPort, QString& error) {
  // Other Alpaca servers on this machine may listen on the same port.
  if (!listener_.bind(QHostAddress::AnyIPv4, discoveryPort,
                      QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
    error = listener_.errorString();
    return false;
  }
  if (served_ != QHostAddress::AnyIPv4 && !replier_.bind(served_, 0)) {
    error = replier_.errorString();
    return false;
  }
  connect(&listener_, &QUdpSocket::readyRead, this, &AlpacaDiscovery::Answer);
  return true;
}

bool AlpacaDiscovery::MayAnswer(const QHostAddress& sender) const {
  if (!served_.isLoopback()) return true;
  const QHostAddress v4(sender.toIPv4Address());
  return v4.isLoopback() || QNetworkInterface::allAddresses().contains(v4);
}

void AlpacaDiscovery::Answer() {
  while (listener_.hasPendingDatagrams()) {
    const QNetworkDatagram question = listener_.receiveDatagram(256);
    if (!question.data().startsWith("alpacadiscovery1") || !MayAnswer(question.senderAddress())) continue;
    const QByteArray answer = "{\"AlpacaPort\":" + QByteArray::number(alpacaPort_) + "}";
    QUdpSocket& from = served_ == QHostAddress::AnyIPv4 ? listener_ : replier_;
    from.writeDatagram(answer, question.senderAddress(), static_cast<quint16>(question.senderPort()));
  }
}

}  // namespace nbx::alpaca
