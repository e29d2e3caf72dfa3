#pragma once

namespace nbx {
struct Nimbometer;
struct Config;

// Closes the cycle's wind reading: classification, or, without an
// anemometer, zeros, cleared samples, the first class and grey bars.
void ReadWind(Nimbometer& nm);

// The speed of the selected anemometer model for the box's speed, km/h: the
// second model reads low and is corrected, but a calm 0 stays 0.
double AnemometerSpeed(const Config& config, double boxKmh);

// The change step of CalcWindAvg: the number of readings in the wind average,
// 1 to 30. A larger value grows the average at once, one reading a frame; a
// smaller one takes effect at the next Start.
double CalcWindAvgChange(double typed);

}  // namespace nbx
