#include "core/units.h"

#include "core/config.h"

namespace nbx {

double CelsiusToFahrenheit(double value) { return value * 9.0 / 5.0 + 32.0; }
double FahrenheitToCelsius(double value) { return (value - 32.0) * 5.0 / 9.0; }

double ConvertTemperature(std::string_view from, std::string_view to, double value) {
  if (from == "C" && to == "F") return CelsiusToFahrenheit(value);
  if (from == "F" && to == "C") return FahrenheitToCelsius(value);
  return value;
}

double ConvertSpeed(std::string_view from, std::string_view to, double v) {
  if (from == to) return v;
  if (from == "K") {
    if (to == "M") return v / 1.609344;
    if (to == "m") return v * 1000.0 / 3600.0;
    if (to == "k") return v / 1.852;
  } else if (from == "M") {
    if (to == "K") return v * 1.609344;
    if (to == "m") return v * 1609.344 / 3600.0;
    if (to == "k") return v * 1.609344 / 1.852;
  } else if (from == "m") {
    if (to == "K") return v * 3600.0 / 1000.0;
    if (to == "M") return v * 3.6 / 1.609344;
    if (to == "k") return v * 3.6 / 1.852;
  } else if (from == "k") {
    if (to == "K") return v * 1.852;
    if (to == "M") return v * 1.852 / 1.609344;
    if (to == "m") return v * 1.852 / 3.6;
  }
  return v;
}

std::string TemperatureUnitLabel(const Config& config) {
  return config.UnitTempStr == "F" ? "\u00B0F" : "\u00B0C";
}

}  // namespace nbx
