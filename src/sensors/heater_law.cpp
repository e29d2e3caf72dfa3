#include "sensors/heater.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/nimbometer.h"

namespace nbx {
namespace {

constexpr std::int32_t Normal = 1, WarmingUp = 2, Holding = 3;
constexpr double HighestTarget = 40.0;

bool InImpulse(const SiteState& s) { return s.HeatImpulseState == WarmingUp || s.HeatImpulseState == Holding; }

bool Wet(Condition rain) { return rain == 2 || rain == 3; }

// Back to normal, with the rain condition read afresh and the impulse clock
// started from now.
void RestartImpulseClock(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.HeatImpulseState = Normal;
  s.HeatImpulseCondition = s.NBX_RainCondition;
  s.HeatCycleStart = static_cast<double>(nm.MillisNow());
  s.HeatHoldStart = 0;
}

}  // namespace

double HeaterTarget(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  if (InImpulse(s)) return c.HeatImpTemp + s.Value_Temp;
  const double t0 = c.HeatTemp[0], t1 = c.HeatTemp[1];
  const double d0 = c.HeatDelta[0], d1 = c.HeatDelta[1];
  const double a = s.Value_Temp;
  if (t1 == t0) return a;
  const double slope = (d1 - d0) / (t1 - t0);
  double target;
  if (a < t0) {
    target = t0;  // a colder night does not pull the plate down with it
  } else if (a < t1) {
    target = slope * a + a - t0 * slope + d0;
  } else {
    target = d1 + a;
  }
  return std::min(target, HighestTarget);
}

double HeaterGain(const Nimbometer& nm, double error) {
  const SiteState& s = nm.state;
  if (s.HeatImpulseState == WarmingUp) return error < 0 ? 1 - s.Value_RainHeat : 0;
  const double size = std::abs(error);
  if (size > 8) return 0.4;
  if (size > 4) return 0.2;
  if (size > 3) return 0.1;
  if (size > 2) return 0.06;
  if (size > 1) return 0.04;
  if (size > 0.5) return 0.02;
  if (size > 0.3) return 0.01;
  return 0;  // the dead band keeps the duty from hunting
}

void HeaterImpulseStep(Nimbometer& nm, bool started) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  // Any of the three at 0 switches impulses off.
  if (c.HeatImpCycle == 0 || c.HeatImpDuration == 0 || c.HeatImpTemp == 0 || !started) {
    s.HeatImpulseState = Normal;
    s.HeatImpulseCondition = s.NBX_RainCondition;
    return;
  }
  // A dry plate keeps the impulse clock at zero.
  if (!Wet(s.HeatImpulseCondition)) return RestartImpulseClock(nm);
  const double now = static_cast<double>(nm.MillisNow());
  switch (s.HeatImpulseState) {
    case Normal:
      if (c.HeatImpCycle * 1000 <= now - s.HeatCycleStart) {
        s.HeatImpulseState = WarmingUp;
        s.HeatHoldStart = 0;
      }
      return;
    case WarmingUp:
      if (c.HeatImpTemp + s.Value_Temp <= s.Value_RainTemp) {
        s.HeatImpulseState = Holding;
        s.HeatHoldStart = now;
      }
      return;
    case Holding:
      if (c.HeatImpDuration * 1000 <= now - s.HeatHoldStart) RestartImpulseClock(nm);
      return;
    default:
      return RestartImpulseClock(nm);
  }
}

}  // namespace nbx
