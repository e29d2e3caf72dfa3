#include "boxsim/rain_plate.h"

#include <cmath>

namespace nbx::boxsim {
namespace {
constexpr double FullDuty = 1023;
}  // namespace

double RainPlate::SteadyCelsius(int duty) const {
  return airCelsius + fullRise * duty / FullDuty - (wet ? wetDrop : 0.0);
}

void RainPlate::Advance(double seconds, int duty) {
  if (!(seconds > 0)) return;
  const double steady = SteadyCelsius(duty);
  if (!(timeConstant > 0)) {
    celsius = steady;
    return;
  }
  celsius = steady + (celsius - steady) * std::exp(-seconds / timeConstant);
}

}  // namespace nbx::boxsim
