#include "alpaca/alpaca_service.h"

#include <cstdio>

#include "alpaca/alpaca_discovery.h"
#include "alpaca/alpaca_server.h"
#include "core/nimbometer.h"

namespace nbx::alpaca {

AlpacaService::AlpacaService() = default;
AlpacaService::~AlpacaService() = default;

void AlpacaService::Start(Nimbometer& nm, const QString& installation) {
  const Config& c = nm.config;
  if (!c.AlpacaEnabled) return;
  const QString text = QString::fromStdString(c.AlpacaAddress).trimmed();
  const QHostAddress address = text.compare(u"localhost", Qt::CaseInsensitive) == 0
                                   ? QHostAddress(QHostAddress::LocalHost)
                                   : QHostAddress(text);
  if (address.isNull()) {
    std::fprintf(stderr, "nimbometer: Alpaca not served: \"%s\" is not an address\n", c.AlpacaAddress.c_str());
    return;
  }
  auto server = std::make_unique<AlpacaServer>(nm, installation);
  QString error;
  if (!server->Listen(address, static_cast<quint16>(c.AlpacaPort), error)) {
    std::fprintf(stderr, "nimbometer: Alpaca not served on %s port %d: %s\n", c.AlpacaAddress.c_str(),
                 c.AlpacaPort, qPrintable(error));
    return;
  }
  server_ = std::move(server);
  if (!c.AlpacaDiscovery) return;
  auto discovery = std::make_unique<AlpacaDiscovery>(address, server_->Port());
  if (!discovery->Listen(static_cast<quint16>(c.AlpacaDiscoveryPort), error)) {
    std::fprintf(stderr, "nimbometer: Alpaca discovery not answered on port %d: %s\n", c.AlpacaDiscoveryPort,
                 qPrintable(error));
    return;
  }
  discovery_ = std::move(discovery);
}

}  // namespace nbx::alpaca
