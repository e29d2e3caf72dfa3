#pragma once

namespace nbx {
struct Nimbometer;

// Turns the light sensor's samples into Value_Day and classifies it.
void ReadBrightness(Nimbometer& nm);

}  // namespace nbx
