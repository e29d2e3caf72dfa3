#include "safety/conditions.h"

#include "core/nimbometer.h"

namespace nbx {

std::string ConditionDescription(const Nimbometer& nm, Family family) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  auto word = [](Condition condition, const std::array<Swatch, 3>& swatches) {
    return condition < 1 || condition > 3 ? std::string("Unknown")
                                          : swatches[static_cast<std::size_t>(condition - 1)].Caption;
  };
  switch (family) {
    case Family::Cloud: return word(s.NBX_CloudCondition, c.ColorCloud);
    case Family::Rain: return word(s.NBX_RainCondition, c.ColorRain);
    case Family::Wind: return word(s.NBX_WindCondition, c.ColorWind);
    case Family::Day: return word(s.NBX_DayCondition, c.ColorDay);
    case Family::Humidity: return word(s.NBX_HumidityCondition, c.ColorHumidity);
    case Family::Pressure: return word(s.NBX_PressureCondition, c.ColorPressure);
  }
  return "Unknown";
}

std::string SafeDescription(int safeFlag) {
  if (safeFlag == 1) return "Safe";
  if (safeFlag == 2) return "Unsafe";
  return "Unknown";
}

int SecondsSinceGoodData(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  // Nothing read whole since Start (or stopped): no good data, whatever the
  // counters say. The counters of a new run start at 0 and would otherwise
  // call the data good before anything had been read.
  if (!s.GoodCycleSinceStart) return 1000;
  const bool linkLost = c.UnknownRS232NoError <= s.ConsecutiveCommErrors;
  const bool cloudLost = c.UnknownNoReading <= s.CloudUnknownCount && c.UnknowCloudGT <= s.Value_Cloud;
  const bool rainLost = c.UnknownNoReading <= s.RainUnknownCount && s.Value_Rain < c.UnknowRainLT &&
                        c.DisableUnknownRain == 0;
  const bool dayLost = c.UnknownNoReading <= s.DayUnknownCount && c.UnknownDayGT <= s.Value_Day &&
                       c.DisableUnknownDay == 0;
  return linkLost || cloudLost || rainLost || dayLost || s.XFERFileErr ? 1000 : 3;
}

}  // namespace nbx
