#pragma once

namespace nbx {
struct Nimbometer;
struct Config;

// The seven coefficients of the sky model as the user enters them; the model
// scales each (K1 / 100, K2 / 10, ...).
struct SkyCoefficients {
  double K1 = 33, K2 = 0, K3 = 4, K4 = 100, K5 = 100, K6 = 0, K7 = 0;

  static SkyCoefficients From(const Config& config);
};

// The model of the atmosphere's warmth in the sky reading, for an ambient
// temperature in degrees Celsius: the value to add to the raw sky temperature,
// in degrees Celsius. Not finite when the coefficients make the arithmetic
// fail (an exponent that overflows).
double SkyModelCelsius(const SkyCoefficients& k, double ambientCelsius);

// The value to add to the raw sky temperature for the ambient temperature
// `ambient`, both in the display unit; 0 while the correction is off. Not
// finite when the coefficients make the model fail.
double SkyCorrection(const Nimbometer& nm, double ambient);

// Shows and enables the coefficient fields when `flag` is set, hides them
// otherwise.
void CloudTempSet(Nimbometer& nm, bool flag);
// Turns the correction on or off.
void ToggleCloudTempFactor(Nimbometer& nm);

}  // namespace nbx
