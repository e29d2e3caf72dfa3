#pragma once

namespace nbx {
struct Nimbometer;

// The value to add to the raw sky temperature for the ambient temperature
// `ambient`, both in the display unit.
double SkyCorrection(const Nimbometer& nm, double ambient);

}  // namespace nbx
