#pragma once

#include <QByteArray>

namespace nbx {
struct Nimbometer;
}

namespace nbx::alpaca {

class AlpacaServer;
class AlpacaDevices;
struct DeviceInfo;

struct SetupFacts {
  const Nimbometer& nm;
  const AlpacaServer& server;
  const DeviceInfo* device;  // none: the server's own page
  const AlpacaDevices& devices;
};

// A plain page with the station's state and the Alpaca settings, read-only:
// they are changed in the settings file or the window.
QByteArray SetupPageHtml(const SetupFacts& facts);

}  // namespace nbx::alpaca
