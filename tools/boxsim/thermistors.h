#pragma once

#include <optional>

namespace nbx::boxsim {

// The box's electrical constants: what the program assumes once the box has
// identified itself. Resistances in kilo-ohms.
inline constexpr double ZenerVolts = 2.54;
inline constexpr double AmbientPullUp = 9.9;
inline constexpr double AmbientResAt25 = 10;
inline constexpr double AmbientBeta = 3811;
inline constexpr double RainPullUp = 1;
inline constexpr double RainResAt25 = 1;
inline constexpr double RainBeta = 3450;

struct Thermistor {
  double pullUp;
  double resAt25;
  double beta;
};
inline constexpr Thermistor AmbientThermistor{AmbientPullUp, AmbientResAt25, AmbientBeta};
inline constexpr Thermistor RainThermistor{RainPullUp, RainResAt25, RainBeta};

// Counts of the 10-bit converter for a thermistor at `celsius` behind its
// pull-up: the Beta formula and the voltage divider, run backwards. Nothing for
// a temperature at or below absolute zero.
std::optional<double> CountsForCelsius(const Thermistor& thermistor, double celsius);

// Zener counts that make the program see `volts` as its reference voltage.
std::optional<double> ZenerCountsForVolts(double volts);

}  // namespace nbx::boxsim
