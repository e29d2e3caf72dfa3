// The members that reach the controls of the limits, the classes, the
// alarms, the sky correction, the data file, the cycle and the heater. Each
// write runs the control's own change handling.

#include <array>

#include "automation/member_builders.h"
#include "safety/families.h"

namespace nbx::members {
namespace {

using Names = std::array<const char*, 3>;

std::int32_t AsLong(Colour colour) { return static_cast<std::int32_t>(colour); }
Colour AsColour(std::int32_t value) { return static_cast<Colour>(value); }

void AddLimits(Interface& face, Family family, const Names& names) {
  for (int i = 0; i < 3; ++i)
    face.properties.push_back(DoubleControl(
        names[Slot(i)], [family, i](const Config& c) { return LimitsOf(c, family)[Slot(i)]; },
        [family, i](ConfigEditor& e, double v) { e.SetLimit(family, i, v); }));
}

// The third rain and cloud limits are set through their Unknown thresholds,
// so each member of a pair writes both.
void AddThresholds(Interface& face) {
  auto& p = face.properties;
  AddLimits(face, Family::Day, {"ThreshBrightnessDark", "ThreshBrightnessLigth", "ThreshBrightnessVLigth"});
  p.push_back(DoubleControl(
      "BrightnessUnknowConditionValue", [](const Config& c) { return c.UnknownDayGT; },
      [](ConfigEditor& e, double v) { e.SetUnknownDayGT(v); }));
  AddLimits(face, Family::Rain, {"ThreshRainDry", "ThreshRainWet", "ThreshRainRain"});
  p.push_back(DoubleControl(
      "RainUnknowConditionValue", [](const Config& c) { return c.UnknowRainLT; },
      [](ConfigEditor& e, double v) { e.SetUnknowRainLT(v); }));
  AddLimits(face, Family::Cloud, {"ThreshTempClear", "ThreshTempCloudy", "ThreshTempVCloudy"});
  p.push_back(DoubleControl(
      "CloudUnknowConditionValue", [](const Config& c) { return c.UnknowCloudGT; },
      [](ConfigEditor& e, double v) { e.SetUnknowCloudGT(v); }));
  AddLimits(face, Family::Wind, {"ThreshWindCalm", "ThreshWindWindy", "ThreshWindVWindy"});
}

void AddSwatches(Interface& face, Family family, const Names& colours, const Names& descriptions) {
  for (int i = 0; i < 3; ++i) {
    face.properties.push_back(LongControl(
        colours[Slot(i)],
        [family, i](const Config& c) { return AsLong(SwatchesOf(c, family)[Slot(i)].BackColor); },
        [family, i](ConfigEditor& e, std::int32_t v) { e.SetSwatchColour(family, i, AsColour(v)); }));
    face.properties.push_back(TextControl(
        descriptions[Slot(i)],
        [family, i](const Config& c) { return SwatchesOf(c, family)[Slot(i)].Caption; },
        [family, i](ConfigEditor& e, const std::string& v) { e.SetDescription(family, i, v); }));
  }
}

void AddClasses(Interface& face) {
  AddSwatches(face, Family::Cloud, {"ColorClear", "ColorCloudy", "ColorVCloudy"},
              {"DescriptionClear", "DescriptionCloudy", "DescriptionVCloudy"});
  AddSwatches(face, Family::Rain, {"ColorDry", "ColorWet", "ColorRain"},
              {"DescriptionDry", "DescriptionWet", "DescriptionRain"});
  AddSwatches(face, Family::Day, {"ColorDark", "ColorLight", "ColorVLight"},
              {"DescriptionDark", "DescriptionLight", "DescriptionVLight"});
  AddSwatches(face, Family::Wind, {"ColorCalm", "ColorWindy", "ColorVWindy"},
              {"DescWindCalm", "DescWindWindy", "DescWindVWindy"});
}

void AddSafeFlag(Interface& face, Family family, int i, const char* name) {
  face.properties.push_back(IntegerControl(
      name, [family, i](const Config& c) { return CheckValue(ChecksOf(c, family)[Slot(i)]); },
      [family, i](ConfigEditor& e, std::int16_t v) { e.SetCheck(family, i, v); }));
}

// An alarm is on only with a sound: the change handling turns an alarm
// without one back to 0.
void AddAlarms(Interface& face, Family family, const Names& alarms, const Names& sounds, const Names& safe) {
  for (int i = 0; i < 3; ++i) {
    face.properties.push_back(IntegerControl(
        alarms[Slot(i)],
        [family, i](const Config& c) { return CheckValue(AlarmsOf(c, family)[Slot(i)].Value); },
        [family, i](ConfigEditor& e, std::int16_t v) { e.SetAlarmState(family, i, v); }));
    face.properties.push_back(TextControl(
        sounds[Slot(i)], [family, i](const Config& c) { return AlarmsOf(c, family)[Slot(i)].Tag; },
        [family, i](ConfigEditor& e, const std::string& v) { e.SetAlarmSound(family, i, v); }));
    AddSafeFlag(face, family, i, safe[Slot(i)]);
  }
}

void AddAlarmsAndSafeFlags(Interface& face) {
  AddAlarms(face, Family::Cloud, {"AlarmClear", "AlarmCloudy", "AlarmOvercast"},
            {"SoundClear", "SoundCloudy", "SoundOvercast"}, {"SafeClear", "SafeCloudy", "SafeOvercast"});
  AddAlarms(face, Family::Rain, {"AlarmDry", "AlarmWet", "AlarmRain"}, {"SoundDry", "SoundWet", "SoundRain"},
            {"SafeDry", "SafeWet", "SafeRain"});
  AddAlarms(face, Family::Day, {"AlarmDark", "AlarmLight", "AlarmVLight"},
            {"SoundDark", "SoundLight", "SoundVLight"}, {"SafeDark", "SafeLight", "SafeVLight"});
  // The wind has no sounds.
  const Names wind{"SafeWindCalm", "SafeWindWindy", "SafeWindVWindy"};
  for (int i = 0; i < 3; ++i) AddSafeFlag(face, Family::Wind, i, wind[Slot(i)]);
}

void AddSkyFactorsAndUnknown(Interface& face) {
  auto& p = face.properties;
  p.push_back(ControlMember<bool>(
      "TempFactorON", ValueType::Boolean, [](const Config& c) { return c.CloudTempFactor; },
      [](ConfigEditor& e, bool v) { e.SetCloudTempFactor(v); }));
  const std::array<double Config::*, 7> factors{
      &Config::CloudTempK1, &Config::CloudTempK2, &Config::CloudTempK3, &Config::CloudTempK4,
      &Config::CloudTempK5, &Config::CloudTempK6, &Config::CloudTempK7};
  for (int k = 1; k <= 7; ++k) {
    const auto field = factors[Slot(k - 1)];
    p.push_back(DoubleControl(
        "TempFactorK" + std::to_string(k), [field](const Config& c) { return c.*field; },
        [k](ConfigEditor& e, double v) { e.SetCloudTempK(k, v); }));
  }
  p.push_back(IntegerControl(
      "AlarmSuspendSound", [](const Config& c) { return CheckValue(c.SuspendSoundAlarm); },
      [](ConfigEditor& e, std::int16_t v) { e.SetSuspendSoundAlarm(v); }));
  p.push_back(DoubleControl(
      "NoConsecutiveUnknownReads", [](const Config& c) { return c.UnknownNoReading; },
      [](ConfigEditor& e, double v) { e.SetUnknownNoReading(v); }));
  p.push_back(DoubleControl(
      "NoConsecutiveRS232Errors", [](const Config& c) { return c.UnknownRS232NoError; },
      [](ConfigEditor& e, double v) { e.SetUnknownRS232NoError(v); }));
}

void AddFileCycleAndHeater(Interface& face) {
  auto& p = face.properties;
  p.push_back(TextControl(
      "FileName", [](const Config& c) { return c.FileName; },
      [](ConfigEditor& e, const std::string& v) { e.SetFileName(v); }));
  p.push_back(TextControl(
      "filePath", [](const Config& c) { return c.LblPathName; },
      [](ConfigEditor& e, const std::string& v) { e.SetDataFolder(v); }));
  p.push_back(DoubleControl(
      "FileSaveFrequency", [](const Config& c) { return c.SaveFreq; },
      [](ConfigEditor& e, double v) { e.SetSaveFreq(v); }));
  p.push_back(DoubleControl(
      "ReadCycle", [](const Config& c) { return static_cast<double>(c.RefreshPeriod); },
      [](ConfigEditor& e, double v) { e.SetRefreshPeriod(v); }));
  for (int i = 0; i < 2; ++i) {
    p.push_back(DoubleControl(
        i == 0 ? "HeaterTempLow" : "HeaterTempHigh", [i](const Config& c) { return c.HeatTemp[Slot(i)]; },
        [i](ConfigEditor& e, double v) { e.SetHeatTemp(i, v); }));
  }
  for (int i = 0; i < 2; ++i) {
    p.push_back(DoubleControl(
        i == 0 ? "HeaterDeltaLow" : "HeaterDeltaHigh", [i](const Config& c) { return c.HeatDelta[Slot(i)]; },
        [i](ConfigEditor& e, double v) { e.SetHeatDelta(i, v); }));
  }
  p.push_back(DoubleControl(
      "HeaterImpTemp", [](const Config& c) { return c.HeatImpTemp; },
      [](ConfigEditor& e, double v) { e.SetHeatImpTemp(v); }));
  p.push_back(DoubleControl(
      "HeaterImpDuration", [](const Config& c) { return c.HeatImpDuration; },
      [](ConfigEditor& e, double v) { e.SetHeatImpDuration(v); }));
  p.push_back(DoubleControl(
      "HeaterImpCycle", [](const Config& c) { return c.HeatImpCycle; },
      [](ConfigEditor& e, double v) { e.SetHeatImpCycle(v); }));
}

}  // namespace

void AddSettingMembers(Interface& face) {
  AddThresholds(face);
  AddClasses(face);
  AddAlarmsAndSafeFlags(face);
  AddSkyFactorsAndUnknown(face);
  AddFileCycleAndHeater(face);
}

}  // namespace nbx::members
