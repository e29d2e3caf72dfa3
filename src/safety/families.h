#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/config.h"
#include "core/display.h"
#include "core/site_state.h"
#include "safety/conditions.h"

namespace nbx {

// The fields that belong to one condition family, found by the family: its
// condition and safe flag, its swatches, check boxes, alarm entries and bar.

inline Condition& ConditionOf(SiteState& s, Family f) {
  switch (f) {
    case Family::Cloud: return s.NBX_CloudCondition;
    case Family::Rain: return s.NBX_RainCondition;
    case Family::Wind: return s.NBX_WindCondition;
    case Family::Day: return s.NBX_DayCondition;
    case Family::Humidity: return s.NBX_HumidityCondition;
    case Family::Pressure: break;
  }
  return s.NBX_PressureCondition;
}

inline SafeFlag& SafeFlagOf(SiteState& s, Family f) {
  switch (f) {
    case Family::Cloud: return s.NBX_CloudSafe;
    case Family::Rain: return s.NBX_RainSafe;
    case Family::Wind: return s.NBX_WindSafe;
    case Family::Day: return s.NBX_DaySafe;
    case Family::Humidity: return s.NBX_HumiditySafe;
    case Family::Pressure: break;
  }
  return s.NBX_PressureSafe;
}

inline std::array<Swatch, 3>& SwatchesOf(Config& c, Family f) {
  switch (f) {
    case Family::Cloud: return c.ColorCloud;
    case Family::Rain: return c.ColorRain;
    case Family::Wind: return c.ColorWind;
    case Family::Day: return c.ColorDay;
    case Family::Humidity: return c.ColorHumidity;
    case Family::Pressure: break;
  }
  return c.ColorPressure;
}

inline const std::array<Swatch, 3>& SwatchesOf(const Config& c, Family f) {
  return SwatchesOf(const_cast<Config&>(c), f);
}

inline std::array<std::int32_t, 3>& ChecksOf(Config& c, Family f) {
  switch (f) {
    case Family::Cloud: return c.CheckCloud;
    case Family::Rain: return c.CheckRain;
    case Family::Wind: return c.CheckWind;
    case Family::Day: return c.CheckDay;
    case Family::Humidity: return c.CheckHumidity;
    case Family::Pressure: break;
  }
  return c.CheckPressure;
}

inline const std::array<std::int32_t, 3>& ChecksOf(const Config& c, Family f) {
  return ChecksOf(const_cast<Config&>(c), f);
}

inline std::array<AlarmEntry, 3>& AlarmsOf(Config& c, Family f) {
  switch (f) {
    case Family::Cloud: return c.AlarmCloud;
    case Family::Rain: return c.AlarmRain;
    case Family::Wind: return c.AlarmWind;
    case Family::Day: return c.AlarmDay;
    case Family::Humidity: return c.AlarmHumidity;
    case Family::Pressure: break;
  }
  return c.AlarmPressure;
}

inline const std::array<AlarmEntry, 3>& AlarmsOf(const Config& c, Family f) {
  return AlarmsOf(const_cast<Config&>(c), f);
}

inline std::array<double, 3>& LimitsOf(Config& c, Family f) {
  switch (f) {
    case Family::Cloud: return c.CloudLimit;
    case Family::Rain: return c.RainLimit;
    case Family::Wind: return c.WindLimit;
    case Family::Day: return c.DayLimit;
    case Family::Humidity: return c.HumidityLimit;
    case Family::Pressure: break;
  }
  return c.PressureLimit;
}

inline const std::array<double, 3>& LimitsOf(const Config& c, Family f) {
  return LimitsOf(const_cast<Config&>(c), f);
}

// The check boxes of the "Unsafe" tab, whose captions are the class words.
inline std::array<Label, 3>& CheckBoxesOf(Display& d, Family f) {
  switch (f) {
    case Family::Cloud: return d.CheckCloud;
    case Family::Rain: return d.CheckRain;
    case Family::Wind: return d.CheckWind;
    case Family::Day: return d.CheckDay;
    case Family::Humidity: return d.CheckHumidity;
    case Family::Pressure: break;
  }
  return d.CheckPressure;
}

inline UnsafeBlock& UnsafeBlockOf(Display& d, Family f) {
  return d.UnsafeBlocks[static_cast<std::size_t>(f)];
}

// Index 0..2 as the arrays of a family take it.
inline std::size_t Slot(int index) { return static_cast<std::size_t>(index); }

}  // namespace nbx
