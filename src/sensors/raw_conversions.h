#pragma once

#include <string>

namespace nbx {
struct Nimbometer;
struct Config;

// The stages that turn the cycle's sample arrays into values. On a REMOTE the
// transfer file has delivered the values and the stages read no arrays.
void ReadReferenceVoltage(Nimbometer& nm);
void ReadAmbientTemp(Nimbometer& nm);
void SelectAmbientTemp(Nimbometer& nm);
void ReadSkyTemp(Nimbometer& nm);
void ReadSkySensorTemp(Nimbometer& nm);
void ReadRainSensorTemp(Nimbometer& nm);
void ReadRainFrequency(Nimbometer& nm);

// A thermistor on a voltage divider: counts 0..1023 of the divider, the
// pull-up and the thermistor's resistance at 25 degrees (same unit) and its
// Beta; the temperature in degrees Celsius. Not finite when the arithmetic fails.
double ThermistorCelsius(double counts, double pullUp, double resistanceAt25, double beta);

}  // namespace nbx
