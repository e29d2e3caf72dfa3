#pragma once

#include <QObject>
#include <QString>
#include <memory>

namespace nbx {
struct Nimbometer;
}

namespace nbx::alpaca {

class AlpacaServer;
class AlpacaDiscovery;

// The station on the network: the Alpaca server and its discovery answer,
// as section Alpaca of the settings asks. Lives as long as the station.
class AlpacaService {
 public:
  AlpacaService();
  ~AlpacaService();
  AlpacaService(const AlpacaService&) = delete;
  AlpacaService& operator=(const AlpacaService&) = delete;

  // Starts what the settings ask for; a part that cannot start says why on
  // standard error and the station runs on without it. `installation` is
  // the settings file, which tells this station's devices from another's.
  void Start(Nimbometer& nm, const QString& installation);

 private:
  std::unique_ptr<AlpacaServer> server_;
  std::unique_ptr<AlpacaDiscovery> discovery_;
};

}  // namespace nbx::alpaca
