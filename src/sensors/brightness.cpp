#include "sensors/brightness.h"

#include <cmath>

#include "core/nimbometer.h"
#include "core/units.h"
#include "safety/conditions.h"
#include "sensors/assign_finite.h"

namespace nbx {
namespace {

// The count of a light resistor beyond the converter's range: no sensor, or
// the fill that a lost link leaves in the samples.
constexpr double LightSensorOutOfRange = 99999;

double LightResistorValue(const Nimbometer& nm, double a) {
  const SiteState& s = nm.state;
  if (s.FirmwareMajor < 6) {
    if (a > 1030) return LightSensorOutOfRange;
    if (a > 1022) a = 1022;
    if (a < 1) a = 1;
    return s.LDRPullupResistance / (1023.0 / a - 1.0);
  }
  if (a > 50000) a = 50000;
  return 50000 - a;
}

}  // namespace

double SkyQualityFromFrequency(const Nimbometer& nm, double frequency) {
  // The sensor's pulses in one hertz, fixed here whatever the stored setting says.
  const double t = 250000 / frequency;
  const double m = nm.config.DarkReference - std::log(t) / std::log(10.0) * nm.config.SQMGainValue;
  double celsius = nm.state.Value_Temp;
  if (nm.config.UnitTempStr == "F") celsius = FahrenheitToCelsius(celsius);
  return celsius * 0.00212 + (m - 0.042);
}

void ReadBrightness(Nimbometer& nm) {
  SiteState& s = nm.state;
  // A REMOTE has Value_Day from the master's record.
  if (nm.IsMaster()) {
    if (s.SQMPresent) {
      AssignFinite(s.Value_Day, SkyQualityFromFrequency(nm, SampleAverage(s.SamplesSQM.values, s.Stats_Sigma)));
    } else {
      AssignFinite(s.Value_Day, LightResistorValue(nm, SampleAverage(s.SamplesLDR.values, s.Stats_Sigma)));
    }
  }
  UpdateDayCondition(nm);
}

}  // namespace nbx
