#include "boxsim/thermistors.h"

#include <cmath>

namespace nbx::boxsim {
namespace {
constexpr double Kelvin0 = 273.15;
constexpr double Kelvin25 = Kelvin0 + 25;
constexpr double FullScale = 1023;
}  // namespace

std::optional<double> CountsForCelsius(const Thermistor& thermistor, double celsius) {
  if (!std::isfinite(celsius) || celsius <= -Kelvin0) return std::nullopt;
  const double resistance =
      thermistor.resAt25 * std::exp(thermistor.beta * (1 / (celsius + Kelvin0) - 1 / Kelvin25));
  const double counts = FullScale / (thermistor.pullUp / resistance + 1);
  if (!std::isfinite(counts)) return std::nullopt;
  return counts;
}

std::optional<double> ZenerCountsForVolts(double volts) {
  if (!std::isfinite(volts) || volts <= 0) return std::nullopt;
  return FullScale * ZenerVolts / volts;
}

}  // namespace nbx::boxsim
