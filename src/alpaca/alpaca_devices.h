#pragma once

#include <QJsonValue>
#include <QString>
#include <array>

#include "alpaca/alpaca_parameters.h"

namespace nbx {
struct Nimbometer;
}

namespace nbx::alpaca {

enum class DeviceType { SafetyMonitor, ObservingConditions };

struct DeviceInfo {
  DeviceType type;
  const char* urlName;   // "safetymonitor"
  const char* typeName;  // "SafetyMonitor", as configureddevices names it
  int interfaceVersion;
};
extern const std::array<DeviceInfo, 2> Devices;

// The answer to a device member: its value (undefined for a method that
// gives none) or an ASCOM error; or, for a request that cannot be read,
// the plain-text reason of an HTTP 400.
struct MemberResult {
  QJsonValue value = QJsonValue::Undefined;
  int errorNumber = 0;
  QString errorMessage;
  QString badRequest;
};

// The two devices over the station: their connected states and their
// members. One state per device for every client, as a network device has.
class AlpacaDevices {
 public:
  explicit AlpacaDevices(Nimbometer& nm) : nm_(nm) {}

  MemberResult Answer(const DeviceInfo& device, const QString& member, bool isPut,
                      const AlpacaParameters& parameters);
  bool Connected(DeviceType type) const { return connected_[static_cast<int>(type)]; }

 private:
  bool Common(const DeviceInfo& device, const QString& member, bool isPut, const AlpacaParameters& p,
              MemberResult& result);
  bool SafetyMonitor(const QString& member, bool isPut, MemberResult& result);
  bool ObservingConditions(const QString& member, bool isPut, const AlpacaParameters& p, MemberResult& result);
  QJsonArray DeviceState(const DeviceInfo& device) const;

  Nimbometer& nm_;
  std::array<bool, 2> connected_{false, false};
};

}  // namespace nbx::alpaca
