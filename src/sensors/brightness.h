#pragma once

namespace nbx {
struct Nimbometer;

// Turns the light sensor's samples into Value_Day and classifies it. The
// scale follows the sensor: magnitudes per square arcsecond from a sky
// quality sensor; from a light resistor its resistance below firmware 6, and
// 50000 less the box's count from firmware 6 on.
void ReadBrightness(Nimbometer& nm);

// Sky quality in magnitudes per square arcsecond for the sensor's frequency,
// corrected for the ambient temperature of the cycle. Not finite for a
// frequency of 0 or below.
double SkyQualityFromFrequency(const Nimbometer& nm, double frequency);

}  // namespace nbx
