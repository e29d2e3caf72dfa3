#pragma once

#include <string>
#include <string_view>

namespace nbx {
struct Config;

double CelsiusToFahrenheit(double value);
double FahrenheitToCelsius(double value);

// Temperature between the unit letters "C" and "F"; any other pair returns
// the value unchanged.
double ConvertTemperature(std::string_view from, std::string_view to, double value);

// Speed between the unit letters, compared case-sensitively: "K" km/h,
// "M" miles per hour, "m" metres per second, "k" knots. An equal pair or an
// unknown letter returns the value unchanged.
double ConvertSpeed(std::string_view from, std::string_view to, double value);

// "°C" or "°F", as the labels show the temperature unit.
std::string TemperatureUnitLabel(const Config& config);

}  // namespace nbx
