#include "boxsim/replies.h"

#include <charconv>
#include <cmath>

namespace nbx::boxsim {
namespace {

constexpr double NoSkyReading = 10000;
constexpr double NoSensorWord = 65535;  // 16-bit sensors: humidity (new), pressure
constexpr double NoOldHumidity = 100;
constexpr int MaxHeaterDuty = 1023;

// A frame that fills one of the program's sample arrays.
std::string SampleFrame(char type, double value, const Faults& faults) {
  std::string text = NumberText(value);
  if (faults.damagedNumbers) text = DamagedNumberText(text);
  return Frame(type, text);
}

std::string SkyFrame(char type, double hundredths, const Faults& faults) {
  return SampleFrame(type, faults.skySentinel ? NoSkyReading : hundredths, faults);
}

std::string AnalogFrames(const Readings& r, const Faults& faults) {
  std::string frames = SampleFrame('3', r.ambientCounts, faults);
  frames += r.sqmFitted ? SampleFrame('8', r.sqmFrequency, faults) : SampleFrame('4', r.ldrCounts, faults);
  frames += SampleFrame('5', r.rainTempCounts, faults);
  frames += SampleFrame('6', r.zenerCounts, faults);
  return frames;
}

std::string HumidityFrame(const Readings& r) {
  if (UsesNewHumidityFormat(r)) {
    const double raw = r.humidityFitted ? std::round((r.humidity + 6) * 65536 / 125) : NoSensorWord;
    return Frame('h', NumberText(raw), 'h');
  }
  const double raw = r.humidityFitted ? (r.humidity + 6) * 100 / 125 : NoOldHumidity;
  return Frame('h', NumberText(raw));
}

std::string HumidityTempFrame(const Readings& r) {
  if (UsesNewHumidityFormat(r)) {
    const double raw =
        r.humidityFitted ? std::round((r.humidityTemp + 46.85) * 65536 / 175.72) : NoSensorWord;
    return Frame('t', NumberText(raw), 'h');
  }
  const double raw = r.humidityFitted ? (r.humidityTemp + 46.85) / 1.7572 : NoOldHumidity;
  return Frame('t', NumberText(raw));
}

std::string PressureFrame(const Readings& r) {
  const double raw = r.pressureFitted ? std::round(r.pressureHpa * 16) : NoSensorWord;
  return Frame('p', NumberText(raw));
}

std::string ErrorCounterFrames(const Readings& r) {
  std::string frames;
  for (std::size_t i = 0; i < r.errorCounters.size(); ++i) {
    frames += Frame('E', NumberText(r.errorCounters[i]), static_cast<char>('1' + i));
  }
  return frames;
}

// "Pnnnn": a duty the box does not understand is not taken.
void SetHeaterDuty(std::string_view digits, Readings& r) {
  if (digits.empty() || digits.size() > 4) return;
  int duty = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), duty);
  if (error != std::errc() || end != digits.data() + digits.size()) return;
  if (duty < 0 || duty > MaxHeaterDuty) return;
  r.heaterDuty = duty;
}

std::string FramesFor(std::string_view command, Readings& r, const Faults& faults) {
  if (command.size() > 1 && command[0] == 'P') {
    SetHeaterDuty(command.substr(1), r);
    return {};
  }
  if (command.size() != 1) return {};
  switch (command[0]) {
    case 'B':
      return Frame('N', "NBX") + Frame('V', r.firmware);
    case 'K':
      return SerialFrame(r.serial);
    case 'v':
      return Frame('v', r.windFitted ? "1" : "0");
    case 'h':
      return HumidityFrame(r);
    case 't':
      return HumidityTempFrame(r);
    case 'p':
      return PressureFrame(r);
    case 'S':
      return SkyFrame('1', r.skyIR, faults);
    case 'T':
      return SkyFrame('2', r.skySensor, faults);
    case 'C':
      return AnalogFrames(r, faults);
    case 'E':
      return SampleFrame('R', r.rainFrequency, faults);
    case 'V':
      return r.windFitted ? Frame('w', NumberText(r.windKmh)) : std::string();
    case 'Q':
      return Frame('Q', NumberText(r.heaterDuty));
    case 'D':
      return ErrorCounterFrames(r);
    case 'F':
      return Frame(r.relay == 2 ? 'X' : 'Y', "");
    case 'G':
      r.relay = 1;
      return {};
    case 'H':
      r.relay = 2;
      return {};
    default:
      return {};  // "z" and whatever the box does not know
  }
}

}  // namespace

bool UsesNewHumidityFormat(const Readings& readings) {
  if (readings.newHumidityFormat) return *readings.newHumidityFormat;
  double version = 0;
  const std::string& text = readings.firmware;
  std::from_chars(text.data(), text.data() + text.size(), version);
  return version >= 6.0;
}

std::string ReplyTo(std::string_view command, Readings& readings, const Faults& faults) {
  return FramesFor(command, readings, faults) + EndOfReplyFrame();
}

}  // namespace nbx::boxsim
