#include "alpaca/station_answers.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/nimbometer.h"
#include "core/units.h"
#include "safety/conditions.h"
#include "safety/safety_decision.h"

namespace nbx::alpaca {
namespace {

enum class Presence { Present, Absent, NotYetKnown };

// How the box's sensors stand: a sensor that has not yet said whether it is
// fitted counts as not yet known, never as a value.
Presence FromFlag(std::int16_t present) {
  if (present == 1) return Presence::Present;
  return present == 0 ? Presence::Absent : Presence::NotYetKnown;
}

struct Sensor {
  std::string_view member;
  std::string_view description;
  Presence (*presence)(const SiteState&);
};

Presence Never(const SiteState&) { return Presence::Absent; }
Presence Always(const SiteState&) { return Presence::Present; }
Presence Wind(const SiteState& s) { return s.IsWindPresent ? Presence::Present : Presence::Absent; }
Presence Humidity(const SiteState& s) { return FromFlag(s.HumidityPresent); }
Presence Pressure(const SiteState& s) { return FromFlag(s.PressurePresent); }
Presence SkyQuality(const SiteState& s) { return s.SQMPresent ? Presence::Present : Presence::Absent; }

// The box classes the sky and the light; it measures no cloud cover in per
// cent, no star size, no lux (the light resistor is not calibrated) and no
// wind direction.
const Sensor Sensors[] = {
    {"cloudcover", "", Never},
    {"dewpoint", "Dew point from the box's humidity sensor", Humidity},
    {"humidity", "Relative humidity sensor of the box", Humidity},
    {"pressure", "Barometer of the box, at the observatory, not reduced to sea level", Pressure},
    {"rainrate", "Rain sensor of the box, by class: 0 dry, 0.1 wet, 2.5 raining", Always},
    {"skybrightness", "", Never},
    {"skyquality", "Sky quality sensor of the box", SkyQuality},
    {"skytemperature", "Infrared sky thermometer, corrected for the ambient temperature", Always},
    {"starfwhm", "", Never},
    {"temperature", "Ambient temperature at the sensor box", Always},
    {"winddirection", "", Never},
    {"windgust", "Anemometer of the box, the cycle's strongest", Wind},
    {"windspeed", "Anemometer of the box, running mean", Wind},
};

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
  });
}

const Sensor* FindSensor(std::string_view name) {
  for (const Sensor& s : Sensors)
    if (SameName(s.member, name)) return &s;
  return nullptr;
}

NumberAnswer Error(int number, std::string message) { return {0, number, std::move(message)}; }

NumberAnswer Value(double value) { return {value, NoError, {}}; }

double Celsius(const Nimbometer& nm, double value) { return ConvertTemperature(nm.config.UnitTempStr, "C", value); }

// The rain sensor gives a class, not a rate: dry is no rain, wet a trace
// (any value above 0 reads as wet), raining the edge of light rain.
NumberAnswer RainRate(const SiteState& s) {
  switch (s.NBX_RainCondition) {
    case 1: return Value(0);
    case 2: return Value(0.1);
    case 3: return Value(2.5);
    default: return Error(InvalidOperation, "the rain condition is Unknown");
  }
}

NumberAnswer Reading(const Nimbometer& nm, std::string_view member) {
  const SiteState& s = nm.state;
  if (member == "temperature")
    return s.AmbientTempValid ? Value(Celsius(nm, s.Value_Temp))
                              : Error(InvalidOperation, "no live ambient temperature");
  if (member == "skytemperature")
    return s.Value_CloudRaw < 900 ? Value(Celsius(nm, s.Value_Cloud))
                                  : Error(InvalidOperation, "the sky thermometer gave no reading");
  if (member == "dewpoint")
    return s.DewPointValid ? Value(Celsius(nm, s.Value_DewPointT))
                           : Error(InvalidOperation, "no dew point from the last reading");
  if (member == "humidity") return Value(s.Value_HumidityRel);
  if (member == "pressure") return Value(s.Value_AbsPressure);
  if (member == "windspeed") return Value(ConvertSpeed(nm.config.UnitSpeedStr, "m", s.Value_Wind));
  if (member == "windgust") return Value(ConvertSpeed(nm.config.UnitSpeedStr, "m", s.Value_Gust));
  if (member == "skyquality") return Value(s.Value_Day);
  if (member == "rainrate") return RainRate(s);
  return Error(NotImplemented, std::string(member) + " is not measured by this station");
}

std::optional<double> SecondsSinceLastGoodCycle(const Nimbometer& nm) {
  if (!nm.state.LastReading) return std::nullopt;
  return std::max(0.0, (nm.NowSerial() - *nm.state.LastReading) * 86400.0);
}

// A reading older than three periods and some slack for a slow cycle no
// longer describes the sky.
double StaleAfterSeconds(const Nimbometer& nm) { return 3.0 * nm.config.RefreshPeriod + 10.0; }

// A sensor answers not implemented when the box lacks it, whatever the link
// does; otherwise only a good reading gives a value.
std::optional<NumberAnswer> Unavailable(const Nimbometer& nm, const Sensor& sensor) {
  if (sensor.presence == Never)
    return Error(NotImplemented, std::string(sensor.member) + " is not measured by this station");
  if (const std::string why = WhyNoGoodReading(nm); !why.empty()) return Error(InvalidOperation, why);
  switch (sensor.presence(nm.state)) {
    case Presence::Absent:
      return Error(NotImplemented, "the box has no sensor for " + std::string(sensor.member));
    case Presence::NotYetKnown:
      return Error(InvalidOperation, "the box has not yet said whether it has a sensor for " +
                                         std::string(sensor.member));
    case Presence::Present: break;
  }
  return std::nullopt;
}

}  // namespace

std::string WhyNoGoodReading(const Nimbometer& nm) {
  if (!nm.state.IsRunning) return "the station is stopped";
  const std::optional<double> age = SecondsSinceLastGoodCycle(nm);
  if (!age) return "no good reading yet";
  if (SecondsSinceGoodData(nm) >= 1000) return "the link or a deciding sensor has failed";
  if (*age > StaleAfterSeconds(nm))
    return "the last good reading is " + std::to_string(static_cast<long>(*age)) + " s old";
  return {};
}

// The same verdict as the automation object's `Safe` (none before the run's
// first decision), and besides no verdict on a reading that is stale.
bool IsSafe(const Nimbometer& nm) { return WhyNoGoodReading(nm).empty() && ReportsSafe(nm); }

const std::vector<std::string_view>& ConditionMembers() {
  static const std::vector<std::string_view> names = [] {
    std::vector<std::string_view> all;
    for (const Sensor& s : Sensors) all.push_back(s.member);
    return all;
  }();
  return names;
}

std::optional<NumberAnswer> ConditionValue(const Nimbometer& nm, std::string_view member) {
  const Sensor* sensor = nullptr;
  for (const Sensor& s : Sensors)
    if (s.member == member) sensor = &s;
  if (!sensor) return std::nullopt;
  if (std::optional<NumberAnswer> missing = Unavailable(nm, *sensor)) return missing;
  NumberAnswer answer = Reading(nm, member);
  // A value that is not a number would be made up: say so instead.
  if (answer.errorNumber == NoError && !std::isfinite(answer.value))
    return Error(InvalidOperation, "no finite value for " + std::string(member));
  return answer;
}

NumberAnswer TimeSinceLastUpdate(const Nimbometer& nm, std::string_view sensorName) {
  if (!sensorName.empty()) {
    const Sensor* sensor = FindSensor(sensorName);
    if (!sensor) return Error(InvalidValue, "no sensor is called " + std::string(sensorName));
    if (sensor->presence == Never || sensor->presence(nm.state) == Presence::Absent)
      return Error(NotImplemented, "the box has no sensor for " + std::string(sensor->member));
  }
  const std::optional<double> age = SecondsSinceLastGoodCycle(nm);
  if (!age) return Error(InvalidOperation, "no good reading yet");
  return Value(*age);
}

NumberAnswer SensorDescription(const Nimbometer& nm, std::string_view sensorName, std::string& text) {
  const Sensor* sensor = FindSensor(sensorName);
  if (!sensor) return Error(InvalidValue, "no sensor is called \"" + std::string(sensorName) + "\"");
  if (sensor->presence == Never || sensor->presence(nm.state) == Presence::Absent)
    return Error(NotImplemented, "the box has no sensor for " + std::string(sensor->member));
  text = sensor->description;
  return Value(0);
}

}  // namespace nbx::alpaca
