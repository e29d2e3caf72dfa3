#pragma once

namespace nbx {
struct Nimbometer;

// The derivations from the optional humidity and pressure sensors. Each runs
// only with a sensor whose frames were good (present exactly 1) and a live
// ambient temperature between -20 and 60 degrees Celsius; otherwise the value
// it derives keeps what it had.

// Relative humidity referred to the ambient temperature instead of the
// sensor's own, kept within 5 and 95 percent.
void CorrectHumidity(Nimbometer& nm);
// Absolute pressure reduced to sea level from the site's altitude AASL.
void ComputeRelPressure(Nimbometer& nm);
// Dew point, in the display unit, and its distance from the ambient temperature.
void ComputeDewPoint(Nimbometer& nm);

// Recomputes what follows from a new humidity, sensor temperature or ambient
// temperature: the three above in their order, and the displays.
void RecomputeDewPoint(Nimbometer& nm);
// Reduces a new absolute pressure to sea level.
void RecomputeRelPressure(Nimbometer& nm);

}  // namespace nbx
