#include "sensors/sky_correction.h"

#include <cmath>
#include <cstdint>

#include "core/nimbometer.h"
#include "core/units.h"

namespace nbx {
namespace {

std::int16_t Sgn(double value) { return value > 0 ? 1 : (value < 0 ? -1 : 0); }

// The low-temperature term: logarithmic in the distance from K2 / 10, and
// linear within one degree of it so that the logarithm never sees 0. Close
// in, only the sign of K6 counts, not its size.
double LowTemperatureTerm(const SkyCoefficients& k, double d) {
  if (std::abs(d) < 1.0) {
    const std::int16_t signs = static_cast<std::int16_t>(Sgn(k.K6) * Sgn(d));
    return signs * std::abs(d);
  }
  return (k.K6 / 10) * Sgn(d) * (std::log(std::abs(d)) / std::log(10.0) + k.K7 / 100);
}

}  // namespace

SkyCoefficients SkyCoefficients::From(const Config& c) {
  return {c.CloudTempK1, c.CloudTempK2, c.CloudTempK3, c.CloudTempK4,
          c.CloudTempK5, c.CloudTempK6, c.CloudTempK7};
}

double SkyModelCelsius(const SkyCoefficients& k, double t) {
  const double d = t - k.K2 / 10;
  const double s = (k.K1 / 100) * d + LowTemperatureTerm(k, d);
  const double e = std::exp(k.K4 * t / 1000);
  const double r = (k.K3 / 100) * std::pow(e, k.K5 / 100);
  const double result = -(r + s);
  // An overflow of the exponential is a failure even where the power would hide it.
  return std::isfinite(e) && std::isfinite(result) ? result : NAN;
}

double SkyCorrection(const Nimbometer& nm, double ambient) {
  const bool fahrenheit = nm.config.UnitTempStr == "F";
  if (fahrenheit) ambient = FahrenheitToCelsius(ambient);
  if (!nm.config.CloudTempFactor) return 0.0;
  const double correction = SkyModelCelsius(SkyCoefficients::From(nm.config), ambient);
  // A difference of temperatures: scaled, without the 32.
  return fahrenheit ? correction * 9 / 5 : correction;
}

void CloudTempSet(Nimbometer& nm, bool flag) {
  nm.display.CloudTempFactorFields.Visible = flag;
  nm.display.CloudTempFactorFields.Enabled = flag;
  if (flag) nm.display.LblTempFactor.Caption = "Factors";
}

void ToggleCloudTempFactor(Nimbometer& nm) {
  nm.config.CloudTempFactor = !nm.config.CloudTempFactor;
  CloudTempSet(nm, nm.config.CloudTempFactor);
}

}  // namespace nbx
