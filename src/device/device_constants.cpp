#include "device/device_constants.h"

#include "core/site_state.h"

namespace nbx {

void ApplyDeviceConstants(SiteState& s) {
  // The settings default of the zener is 3, the box's is 2.54: both are kept.
  s.ZenerVoltage = 2.54;
  s.LDRMaxResistance = 2000;
  s.LDRPullupResistance = 56;
  s.RainBeta = 3450;
  s.RainResAt25 = 1;
  s.RainPullUpResistance = 1;
  s.AmbBeta = 3811;
  s.AmbResAt25 = 10;
  s.AmbPullUpResistance = 9.9;
}

}  // namespace nbx
