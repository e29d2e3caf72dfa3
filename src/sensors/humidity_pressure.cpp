#include "sensors/humidity_pressure.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/units.h"
#include "sensors/assign_finite.h"
#include "sensors/raw_conversions.h"

namespace nbx {
namespace {

// The ambient temperature in Celsius, when it is live and within the range
// the formulas below hold for.
std::optional<double> UsableAmbientCelsius(const Nimbometer& nm) {
  if (!nm.state.AmbientTempValid) return std::nullopt;
  double a = nm.state.Value_Temp;
  if (nm.config.UnitTempStr == "F") a = FahrenheitToCelsius(a);
  if (a < -20 || a > 60) return std::nullopt;
  return a;
}

bool InPercentRange(double value) { return value >= 0 && value <= 100; }

std::string WithUnit(const Nimbometer& nm, double value) {
  return FormatNumber(value, "0.0") + " " + TemperatureUnitLabel(nm.config);
}

void ShowDewPoint(Nimbometer& nm) {
  const SiteState& s = nm.state;
  Display& d = nm.display;
  if (s.DewPointValid) {
    d.BarTemperature[0].Caption = WithUnit(nm, s.Value_Temp);
    d.BarDewPoint.Caption = WithUnit(nm, s.Value_DewPointT);
    d.BarDewPointDelta[1].Caption = WithUnit(nm, s.Value_DewPointDelta);
  } else {
    d.BarDewPoint.Caption.clear();
    d.BarDewPointDelta[1].Caption.clear();
  }
}

}  // namespace

void CorrectHumidity(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (s.HumidityPresent != 1) return;
  const std::optional<double> a = UsableAmbientCelsius(nm);
  if (!a || !InPercentRange(s.HumidityRelFrame)) return;
  // Corrected from the frame's own value: this runs after every humidity and
  // temperature frame and every choice of the ambient temperature, and the
  // result must be the same however often it runs.
  const double rh = std::exp((s.Value_HumSensTemp - *a) * 0.06235398) * s.HumidityRelFrame;
  if (!std::isfinite(rh)) return;
  s.Value_HumidityRel = std::clamp(rh, 5.0, 95.0);
  s.DewPointValid = true;
}

void ComputeRelPressure(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (s.PressurePresent != 1) return;
  const std::optional<double> a = UsableAmbientCelsius(nm);
  if (!a) return;
  s.Value_Altitude = nm.config.AASL;
  const double x = 0.0065 * s.Value_Altitude;
  AssignFinite(s.Value_RelPressure, s.Value_AbsPressure / std::pow(1 - x / (*a + x + 273.15), 5.257));
}

void ComputeDewPoint(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (s.HumidityPresent != 1) return;
  const std::optional<double> a = UsableAmbientCelsius(nm);
  if (!a || !InPercentRange(s.Value_HumidityRel)) return;
  const double g = std::log(s.Value_HumidityRel / 100) + 17.67 * *a / (*a + 243.5);
  double dewPoint = 243.5 * g / (17.67 - g);
  if (!std::isfinite(dewPoint)) return;
  if (nm.config.UnitTempStr == "F") dewPoint = CelsiusToFahrenheit(dewPoint);
  s.Value_DewPointT = dewPoint;
  s.Value_DewPointDelta = std::abs(s.Value_Temp - s.Value_DewPointT);
  s.DewPointValid = true;
}

void RecomputeDewPoint(Nimbometer& nm) {
  // Valid only when this pass could compute it from the present readings.
  nm.state.DewPointValid = false;
  CorrectHumidity(nm);
  ComputeRelPressure(nm);
  ComputeDewPoint(nm);
  ShowDewPoint(nm);
}

void RecomputeRelPressure(Nimbometer& nm) { ComputeRelPressure(nm); }

}  // namespace nbx
