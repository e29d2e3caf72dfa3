#include "boxsim/assignments.h"

#include <charconv>
#include <cmath>
#include <optional>

#include "boxsim/thermistors.h"

namespace nbx::boxsim {
namespace {

std::optional<double> ParseDouble(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) {
    return std::nullopt;
  }
  return value;
}

std::optional<int> ParseInt(std::string_view text, int lowest, int highest) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (value < lowest || value > highest) return std::nullopt;
  return value;
}

std::optional<bool> ParseBool(std::string_view text) {
  if (text == "1" || text == "true") return true;
  if (text == "0" || text == "false") return false;
  return std::nullopt;
}

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Garbage must be able to hold any byte, including blanks and the frame
// bytes: "\xHH", "\s" (blank), "\n", "\r", "\t", "\\".
std::optional<std::string> ParseText(std::string_view text) {
  std::string out;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      out += text[i];
      continue;
    }
    if (++i == text.size()) return std::nullopt;
    switch (text[i]) {
      case 's':
        out += ' ';
        break;
      case 'n':
        out += '\n';
        break;
      case 'r':
        out += '\r';
        break;
      case 't':
        out += '\t';
        break;
      case '\\':
        out += '\\';
        break;
      case 'x': {
        const int high = i + 1 < text.size() ? HexDigit(text[i + 1]) : -1;
        const int low = i + 2 < text.size() ? HexDigit(text[i + 2]) : -1;
        if (high < 0 || low < 0) return std::nullopt;
        out += static_cast<char>(high * 16 + low);
        i += 2;
        break;
      }
      default:
        return std::nullopt;
    }
  }
  return out;
}

using Setter = bool (*)(Box&, std::string_view);

struct Key {
  std::string_view name;
  Setter set;
  std::string_view help;
};

template <typename T>
bool Assign(T& field, const std::optional<T>& value) {
  if (!value) return false;
  field = *value;
  return true;
}

const Key Keys[] = {
    {"firmware", [](Box& b, std::string_view v) { return Assign(b.readings.firmware, ParseText(v)); },
     "firmware text of the \"V\" frame, e.g. 6.10, 5.82, 3.1"},
    {"serial", [](Box& b, std::string_view v) { return Assign(b.readings.serial, ParseText(v)); },
     "serial text of the \"K\" frame (4 characters)"},
    {"sky",
     [](Box& b, std::string_view v) {
       const auto c = ParseDouble(v);
       if (c) b.SetSkyCelsius(*c);
       return c.has_value();
     },
     "sky infrared temperature, deg C"},
    {"skyraw", [](Box& b, std::string_view v) { return Assign(b.readings.skyIR, ParseDouble(v)); },
     "\"1\" frame value, hundredths of a deg C (10000: no reading)"},
    {"skysensor",
     [](Box& b, std::string_view v) {
       const auto c = ParseDouble(v);
       if (c) b.SetSkySensorCelsius(*c);
       return c.has_value();
     },
     "infrared sensor's own temperature, deg C"},
    {"skysensorraw", [](Box& b, std::string_view v) { return Assign(b.readings.skySensor, ParseDouble(v)); },
     "\"2\" frame value, hundredths of a deg C"},
    {"ambient",
     [](Box& b, std::string_view v) {
       const auto c = ParseDouble(v);
       return Assign(b.readings.ambientCounts, c ? CountsForCelsius(AmbientThermistor, *c) : std::nullopt);
     },
     "ambient thermistor temperature, deg C (sets the \"3\" counts)"},
    {"ambientcounts",
     [](Box& b, std::string_view v) { return Assign(b.readings.ambientCounts, ParseDouble(v)); },
     "\"3\" frame value, counts 0..1023"},
    {"ldr", [](Box& b, std::string_view v) { return Assign(b.readings.ldrCounts, ParseDouble(v)); },
     "\"4\" frame value, light resistor counts"},
    {"rainplate",
     [](Box& b, std::string_view v) {
       const auto c = ParseDouble(v);
       if (!c || !CountsForCelsius(RainThermistor, *c)) return false;
       b.SetRainPlateCelsius(*c);
       return true;
     },
     "rain plate temperature, deg C (sets the \"5\" counts; the model goes on from it)"},
    {"raintempcounts",
     [](Box& b, std::string_view v) { return Assign(b.readings.rainTempCounts, ParseDouble(v)); },
     "\"5\" frame value, counts 0..1023"},
    {"platemodel", [](Box& b, std::string_view v) { return Assign(b.readings.plate.modelled, ParseBool(v)); },
     "0/1: the rain plate's temperature follows air, heater and wetness over time"},
    {"plateair", [](Box& b, std::string_view v) { return Assign(b.readings.plate.airCelsius, ParseDouble(v)); },
     "air temperature around the rain plate, deg C"},
    {"platerise", [](Box& b, std::string_view v) { return Assign(b.readings.plate.fullRise, ParseDouble(v)); },
     "the plate's settled rise above the air at full heater duty, deg C"},
    {"platetau",
     [](Box& b, std::string_view v) {
       const auto seconds = ParseDouble(v);
       return Assign(b.readings.plate.timeConstant, seconds && *seconds >= 0 ? seconds : std::nullopt);
     },
     "time constant of the plate, seconds (0: at once)"},
    {"platewet", [](Box& b, std::string_view v) { return Assign(b.readings.plate.wet, ParseBool(v)); },
     "0/1: the plate is wet and settles platewetdrop lower"},
    {"platewetdrop", [](Box& b, std::string_view v) { return Assign(b.readings.plate.wetDrop, ParseDouble(v)); },
     "degrees the water takes off a wet plate's temperature"},
    {"zener", [](Box& b, std::string_view v) { return Assign(b.readings.zenerCounts, ParseDouble(v)); },
     "\"6\" frame value, zener reference counts 0..1023"},
    {"vref",
     [](Box& b, std::string_view v) {
       const auto volts = ParseDouble(v);
       return Assign(b.readings.zenerCounts, volts ? ZenerCountsForVolts(*volts) : std::nullopt);
     },
     "reference voltage the program should see, volts (sets the \"6\" counts)"},
    {"sqm", [](Box& b, std::string_view v) { return Assign(b.readings.sqmFrequency, ParseDouble(v)); },
     "\"8\" frame value, sky-quality sensor frequency"},
    {"sqmfitted", [](Box& b, std::string_view v) { return Assign(b.readings.sqmFitted, ParseBool(v)); },
     "0/1: a sky-quality sensor replaces the light resistor"},
    {"rain", [](Box& b, std::string_view v) { return Assign(b.readings.rainFrequency, ParseDouble(v)); },
     "\"R\" frame value, rain sensor frequency (dry about 3300)"},
    {"wind", [](Box& b, std::string_view v) { return Assign(b.readings.windKmh, ParseDouble(v)); },
     "\"w\" frame value, wind speed km/h"},
    {"windfitted", [](Box& b, std::string_view v) { return Assign(b.readings.windFitted, ParseBool(v)); },
     "0/1: an anemometer is fitted"},
    {"humidity", [](Box& b, std::string_view v) { return Assign(b.readings.humidity, ParseDouble(v)); },
     "relative humidity, percent"},
    {"humiditytemp",
     [](Box& b, std::string_view v) { return Assign(b.readings.humidityTemp, ParseDouble(v)); },
     "humidity sensor temperature, deg C"},
    {"humidityfitted",
     [](Box& b, std::string_view v) { return Assign(b.readings.humidityFitted, ParseBool(v)); },
     "0/1: a humidity sensor is fitted"},
    {"humidityformat",
     [](Box& b, std::string_view v) {
       if (v == "new")
         b.readings.newHumidityFormat = true;
       else if (v == "old")
         b.readings.newHumidityFormat = false;
       else if (v == "auto")
         b.readings.newHumidityFormat.reset();
       else
         return false;
       return true;
     },
     "new/old/auto: humidity frame format (auto: new from firmware 6.00)"},
    {"pressure", [](Box& b, std::string_view v) { return Assign(b.readings.pressureHpa, ParseDouble(v)); },
     "absolute pressure, hPa"},
    {"pressurefitted",
     [](Box& b, std::string_view v) { return Assign(b.readings.pressureFitted, ParseBool(v)); },
     "0/1: a pressure sensor is fitted"},
    {"relay", [](Box& b, std::string_view v) { return Assign(b.readings.relay, ParseInt(v, 1, 2)); },
     "1 opened (\"Y\"), 2 closed (\"X\")"},
    {"heater", [](Box& b, std::string_view v) { return Assign(b.readings.heaterDuty, ParseInt(v, 0, 1023)); },
     "heater duty 0..1023 (\"Q\" frame)"},
    {"error1",
     [](Box& b, std::string_view v) { return Assign(b.readings.errorCounters[0], ParseInt(v, 0, 65535)); },
     "box error counter 1 (\"E\" frame sub-type 1)"},
    {"error2",
     [](Box& b, std::string_view v) { return Assign(b.readings.errorCounters[1], ParseInt(v, 0, 65535)); },
     "box error counter 2"},
    {"error3",
     [](Box& b, std::string_view v) { return Assign(b.readings.errorCounters[2], ParseInt(v, 0, 65535)); },
     "box error counter 3"},
    {"error4",
     [](Box& b, std::string_view v) { return Assign(b.readings.errorCounters[3], ParseInt(v, 0, 65535)); },
     "box error counter 4 (the PEC byte errors)"},
    {"silentfrom",
     [](Box& b, std::string_view v) { return Assign(b.faults.silentFromCommand, ParseInt(v, 0, 1 << 30)); },
     "N: from the Nth command received on, no reply at all (0: off)"},
    {"silent",
     [](Box& b, std::string_view v) {
       const auto on = ParseBool(v);
       if (!on) return false;
       b.faults.silentFromCommand = *on ? static_cast<int>(b.CommandCount()) + 1 : 0;
       return true;
     },
     "0/1: silent from the next command on / answer again"},
    {"everyother", [](Box& b, std::string_view v) { return Assign(b.faults.answerEveryOther, ParseBool(v)); },
     "0/1: only every other command gets its reply"},
    {"garbagebefore", [](Box& b, std::string_view v) { return Assign(b.faults.garbageBefore, ParseText(v)); },
     "bytes sent before each reply"},
    {"garbagebetween",
     [](Box& b, std::string_view v) { return Assign(b.faults.garbageBetween, ParseText(v)); },
     "bytes put after the first frame of each reply"},
    {"skysentinel", [](Box& b, std::string_view v) { return Assign(b.faults.skySentinel, ParseBool(v)); },
     "0/1: \"1\" and \"2\" frames carry 10000"},
    {"damaged", [](Box& b, std::string_view v) { return Assign(b.faults.damagedNumbers, ParseBool(v)); },
     "0/1: sample frames carry a damaged number"},
    {"baud", [](Box& b, std::string_view v) { return Assign(b.delivery.baud, ParseInt(v, 0, 4000000)); },
     "0: as fast as possible; N: 10 bits a byte at N baud"},
    {"bytebybyte", [](Box& b, std::string_view v) { return Assign(b.delivery.byteByByte, ParseBool(v)); },
     "0/1: each byte its own write, about 2 ms apart"},
};

const Key* FindKey(std::string_view name) {
  for (const Key& key : Keys) {
    if (key.name == name) return &key;
  }
  return nullptr;
}

}  // namespace

bool Box::Apply(std::string_view assignment) {
  std::string why;
  return Apply(assignment, why);
}

bool Box::Apply(std::string_view assignment, std::string& why) {
  const std::size_t equals = assignment.find('=');
  if (equals == std::string_view::npos) {
    why = "\"" + std::string(assignment) + "\" is not key=value";
    return false;
  }
  const std::string_view name = assignment.substr(0, equals);
  const std::string_view value = assignment.substr(equals + 1);
  const Key* key = FindKey(name);
  if (key == nullptr) {
    why = "unknown key \"" + std::string(name) + "\"";
    return false;
  }
  // Setters parse before they store, so a bad value leaves the box as it was.
  if (!key->set(*this, value)) {
    why = "bad value \"" + std::string(value) + "\" for " + std::string(name);
    return false;
  }
  return true;
}

const std::vector<std::string>& AssignmentKeyHelp() {
  static const std::vector<std::string> lines = [] {
    std::vector<std::string> out;
    for (const Key& key : Keys) {
      std::string line(key.name);
      line.resize(16, ' ');
      out.push_back(line + std::string(key.help));
    }
    return out;
  }();
  return lines;
}

std::vector<std::string_view> SplitWords(std::string_view text) {
  std::vector<std::string_view> words;
  std::size_t i = 0;
  while (i < text.size()) {
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) ++i;
    const std::size_t start = i;
    while (i < text.size() && text[i] != ' ' && text[i] != '\t') ++i;
    if (i > start) words.push_back(text.substr(start, i - start));
  }
  return words;
}

bool ApplyAll(std::string_view words, Box& box, std::string& why) {
  const std::vector<std::string_view> list = SplitWords(words);
  if (list.empty()) {
    why = "nothing to set";
    return false;
  }
  Box trial;
  for (const std::string_view word : list) {
    if (!trial.Apply(word, why)) return false;
  }
  for (const std::string_view word : list) box.Apply(word);
  return true;
}

}  // namespace nbx::boxsim
