#pragma once

namespace nbx {
struct Nimbometer;

// Recomputes what follows from a new humidity, sensor temperature or ambient
// temperature: corrected humidity, dew point and their displays.
void RecomputeDewPoint(Nimbometer& nm);
// Reduces a new absolute pressure to sea level.
void RecomputeRelPressure(Nimbometer& nm);

}  // namespace nbx
