#include "config/setting_keys.h"

#include <cstdio>

namespace nbx {

const std::array<FamilyKeys, 6> ConditionFamilies{{
    {{"Clear", "Cloudy", nullptr}, false, {"Clear", "Cloudy", "Overcast"}, "AlarmCloud",
     {"Clear", "Cloudy", "Overcast"}, "Cloud", &Config::CloudLimit, &Config::ColorCloud,
     &Config::AlarmCloud, &Config::CheckCloud, &Display::CheckCloud},
    {{"Dry", "Wet", "Rain"}, true, {"Dry", "Wet", "Rain"}, "AlarmRain", {"Dry", "Wet", "Rain"},
     "Rain", &Config::RainLimit, &Config::ColorRain, &Config::AlarmRain, &Config::CheckRain,
     &Display::CheckRain},
    {{"Calm", "Windy", "VWindy"}, false, {"Calm", "Windy", "VWindy"}, "AlarmWind",
     {"Calm", "Windy", "VWindy"}, "Wind", &Config::WindLimit, &Config::ColorWind,
     &Config::AlarmWind, &Config::CheckWind, nullptr},
    {{"Dark", "Light", "VLight"}, false, {"Dark", "Light", "VLight"}, "AlarmDay",
     {"Dark", "Light", "VLight"}, "Day", &Config::DayLimit, &Config::ColorDay, &Config::AlarmDay,
     &Config::CheckDay, &Display::CheckDay},
    {{"RHDry", "RHNormal", nullptr}, false, {"RHDry", "RHNormal", "RHHumid"}, "AlarmHumidity",
     {"RHDry", "RHLight", "RHHumid"}, "Humidity", &Config::HumidityLimit, &Config::ColorHumidity,
     &Config::AlarmHumidity, &Config::CheckHumidity, &Display::CheckHumidity},
    {{"PresLow", "PresNormal", "PresHigh"}, false, {"Low", "Normal", "High"}, "AlarmPressure",
     {"Low", "Normal", "High"}, "Pressure", &Config::PressureLimit, &Config::ColorPressure,
     &Config::AlarmPressure, &Config::CheckPressure, &Display::CheckPressure},
}};

std::string StateKey(const char* classKey) { return std::string(classKey) + "Stat"; }

const std::array<GraphKeys, 7> Graphs{{
    {GraphKind::Cloud, "Cloud"},
    {GraphKind::Day, "Day"},
    {GraphKind::Rain, "Rain"},
    {GraphKind::Wind, "Wind"},
    {GraphKind::Temp, "Temp"},
    {GraphKind::Humidity, "Humidity"},
    {GraphKind::Pressure, "Pressure"},
}};

const std::array<ElectricalKey, 9> ElectricalConstants{{
    {"ZenerVoltage", &SiteState::ZenerVoltage},
    {"LDRMax", &SiteState::LDRMaxResistance},
    {"LDRPullup", &SiteState::LDRPullupResistance},
    {"RainBeta", &SiteState::RainBeta},
    {"RainResAt25", &SiteState::RainResAt25},
    {"RainPullUp", &SiteState::RainPullUpResistance},
    {"AmbBeta", &SiteState::AmbBeta},
    {"AmbResAt25", &SiteState::AmbResAt25},
    // The ambient pull-up's key is "Resistance".
    {"Resistance", &SiteState::AmbPullUpResistance},
}};

std::string FileColumnKey(const char* kind, int row) {
  char index[8];
  std::snprintf(index, sizeof index, "%02d", row);
  return std::string(kind) + index;
}

}  // namespace nbx
