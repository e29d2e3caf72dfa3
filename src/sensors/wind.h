#pragma once

namespace nbx {
struct Nimbometer;

// Closes the cycle's wind reading: classification, or zeros without a sensor.
void ReadWind(Nimbometer& nm);

}  // namespace nbx
