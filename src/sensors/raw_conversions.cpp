#include "sensors/raw_conversions.h"

#include <cmath>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/units.h"
#include "safety/conditions.h"
#include "sensors/assign_finite.h"
#include "sensors/humidity_pressure.h"
#include "sensors/sky_correction.h"

namespace nbx {
namespace {

double Average(const Nimbometer& nm, const SampleArray& samples) {
  return SampleAverage(samples.values, nm.state.Stats_Sigma);
}

bool Fahrenheit(const Nimbometer& nm) { return nm.config.UnitTempStr == "F"; }

void ShowAmbient(Nimbometer& nm) {
  nm.display.BarTemperature[0].Caption =
      FormatNumber(nm.state.Value_Temp, "0.0") + " " + TemperatureUnitLabel(nm.config);
}

}  // namespace

double ThermistorCelsius(double counts, double pullUp, double resistanceAt25, double beta) {
  const double r = pullUp / (1023.0 / counts - 1.0);
  if (!std::isfinite(r)) return NAN;  // a full-scale divider: division by zero
  const double x = std::log(r / resistanceAt25);
  if (!std::isfinite(x)) return NAN;
  return 1.0 / (x / beta + 1.0 / (273.15 + 25.0)) - 273.15;
}

void ReadReferenceVoltage(Nimbometer& nm) {
  if (!nm.IsMaster()) return;
  SiteState& s = nm.state;
  const double a = Average(nm, s.SamplesZener);
  if (a != 0) {
    AssignFinite(s.ReferenceVoltage, 1023.0 * s.ZenerVoltage / a);
    nm.display.LblVref.Caption = FormatNumber(s.ReferenceVoltage, "0.00");
  } else {
    s.ReferenceVoltage = 5;
    nm.display.LblVref.Caption = "Error";
  }
}

void ReadAmbientTemp(Nimbometer& nm) {
  SiteState& s = nm.state;
  // A REMOTE has its ambient temperature from the master's record.
  if (!nm.IsMaster()) return;
  // Firmware 3 and later has no ambient thermistor to read: the temperature
  // is borrowed from another sensor.
  if (s.FirmwareMajor >= 3) return SelectAmbientTemp(nm);

  s.AmbientTempValid = false;
  double a = Average(nm, s.SamplesAmbient);
  double t;
  if (a > 1030) {
    t = 999;  // no thermistor
  } else {
    if (a > 1022) a = 1023;
    if (a < 1) a = 1;
    t = ThermistorCelsius(a, s.AmbPullUpResistance, s.AmbResAt25, s.AmbBeta);
  }
  if (Fahrenheit(nm)) t = CelsiusToFahrenheit(t);
  AssignFinite(s.Value_Temp, t - nm.config.AmbTempOffset);
  s.AmbientTempValid = true;
  ShowAmbient(nm);
}

void SelectAmbientTemp(Nimbometer& nm) {
  SiteState& s = nm.state;
  double t = 200;
  bool found = false;
  if (s.RHTempValid && s.Value_HumSensTemp > -40 && s.Value_HumSensTemp < 70) {
    t = s.Value_HumSensTemp;
    found = true;
    if (Fahrenheit(nm)) t = CelsiusToFahrenheit(t);
  }
  // Value_CloudTemp has had AmbTempOffset taken off already, so in this
  // fallback the offset counts twice; sites have their offsets set for it.
  if (!found && s.IRTempValid && s.Value_CloudTemp < t) {
    t = s.Value_CloudTemp;
    found = true;
  }
  if (!found) {
    nm.display.BarTemperature[0].Caption = "N.A.";
    s.Value_Temp = 20;
  } else {
    AssignFinite(s.Value_Temp, t - nm.config.AmbTempOffset);
    s.AmbientTempValid = true;
    ShowAmbient(nm);
  }
  RecomputeDewPoint(nm);
}

void ReadSkySensorTemp(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (nm.IsMaster()) {
    double t = Average(nm, s.SamplesSkySensor) / 100.0;
    nm.display.LblSkySensorTemp.Caption = FormatNumber(t, "0.0");
    if (Fahrenheit(nm)) t = CelsiusToFahrenheit(t);
    // The ambient offset, not the infrared one: the sensor body sits in the air.
    AssignFinite(s.Value_CloudTemp, t - nm.config.AmbTempOffset);
  }
  s.IRTempValid = true;
}

void ReadSkyTemp(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (nm.IsMaster()) {
    double t = Average(nm, s.SamplesSkyIR) / 100.0;
    nm.display.LblSkyIRTemp.Caption = FormatNumber(t, "0.0");
    if (Fahrenheit(nm)) t = CelsiusToFahrenheit(t);
    AssignFinite(s.Value_CloudRaw, t - nm.config.IRTempOffset);
  }
  // 900 and above is no reading (the box's 99900 / 100 lands here): it
  // bypasses the correction and reaches the classification unchanged.
  if (s.Value_CloudRaw >= 900) {
    s.Value_Cloud = s.Value_CloudRaw;
  } else {
    AssignFinite(s.Value_Cloud, s.Value_CloudRaw + SkyCorrection(nm, s.Value_Temp));
  }
  UpdateCloudCondition(nm);
}

void ReadRainSensorTemp(Nimbometer& nm) {
  if (!nm.IsMaster()) return;
  SiteState& s = nm.state;
  double a = Average(nm, s.SamplesRainTemp);
  if (a > 990) {
    s.Value_RainTemp = a;  // raw: no thermistor (the sentinel 999 passes here)
  } else {
    if (a > 1022) a = 1023;
    if (a < 1) a = 1;
    double t = ThermistorCelsius(a, s.RainPullUpResistance, s.RainResAt25, s.RainBeta);
    if (!std::isfinite(t)) t = 22;
    if (Fahrenheit(nm)) t = CelsiusToFahrenheit(t);
    s.Value_RainTemp = t;
  }
  nm.display.LblRainT.Caption = FormatNumber(s.Value_RainTemp, "0.0");
}

void ReadRainFrequency(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (nm.IsMaster()) {
    s.Value_Rain = Average(nm, s.SamplesRainFreq);
    nm.display.LblRainF.Caption = FormatNumber(s.Value_Rain, "0.0");
  }
  UpdateRainCondition(nm);
}

}  // namespace nbx
