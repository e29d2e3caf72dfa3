#include "station/safety_settings.h"

#include <array>

#include "core/config_editor.h"
#include "core/nimbometer.h"
#include "safety/alarms.h"
#include "safety/families.h"

namespace nbx {
namespace {

template <typename T>
void ReadNumber(QSettings& settings, const char* key, T& target) {
  bool ok = false;
  const double value = settings.value(key).toString().trimmed().toDouble(&ok);
  if (ok) target = static_cast<T>(value);
}

double NumberOr(QSettings& settings, const char* key, double fallback) {
  ReadNumber(settings, key, fallback);
  return fallback;
}

// Settings written under other languages say "false" in their own words.
bool ReadBool(QSettings& settings, const QString& key, bool fallback) {
  const QString text = settings.value(key).toString();
  if (text.trimmed().isEmpty()) return fallback;
  for (const char* no : {"False", "Falso", "Falsch", "0", "Faux"})
    if (text == QLatin1String(no)) return false;
  return true;
}

void ReadText(QSettings& settings, const char* key, std::string& target) {
  if (settings.contains(key)) target = settings.value(key).toString().toStdString();
}

struct FamilyKeys {
  Family family;
  const char* switchKey;                 // "Cloud" gives Cloud0..Cloud2
  const char* alarmSection;              // nullptr: no sound at the safety step
  std::array<const char*, 3> classKeys;  // sound keys; "...Stat" the states
};

constexpr std::array<FamilyKeys, 6> Families{{
    {Family::Cloud, "Cloud", "AlarmCloud", {"Clear", "Cloudy", "Overcast"}},
    {Family::Rain, "Rain", "AlarmRain", {"Dry", "Wet", "Rain"}},
    {Family::Wind, "Wind", "AlarmWind", {"Calm", "Windy", "VWindy"}},
    {Family::Day, "Day", "AlarmDay", {"Dark", "Light", "VLight"}},
    {Family::Humidity, "Humidity", nullptr, {}},
    {Family::Pressure, "Pressure", nullptr, {}},
}};

void LoadLimits(QSettings& settings, Config& c) {
  settings.beginGroup("Limit");
  ReadNumber(settings, "Clear", c.CloudLimit[0]);
  ReadNumber(settings, "Cloudy", c.CloudLimit[1]);
  ReadNumber(settings, "Dry", c.RainLimit[0]);
  ReadNumber(settings, "Wet", c.RainLimit[1]);
  ReadNumber(settings, "Calm", c.WindLimit[0]);
  ReadNumber(settings, "Windy", c.WindLimit[1]);
  ReadNumber(settings, "VWindy", c.WindLimit[2]);
  ReadNumber(settings, "Dark", c.DayLimit[0]);
  ReadNumber(settings, "Light", c.DayLimit[1]);
  ReadNumber(settings, "VLight", c.DayLimit[2]);
  ReadNumber(settings, "RHDry", c.HumidityLimit[0]);
  ReadNumber(settings, "RHNormal", c.HumidityLimit[1]);
  ReadNumber(settings, "PresLow", c.PressureLimit[0]);
  ReadNumber(settings, "PresNormal", c.PressureLimit[1]);
  ReadNumber(settings, "PresHigh", c.PressureLimit[2]);
  settings.endGroup();
}

void LoadWindowKeys(QSettings& settings, Nimbometer& nm, ConfigEditor& editor) {
  Config& c = nm.config;
  settings.beginGroup("Window");
  ReadNumber(settings, "UnknownUnsafe", c.UnKnownUnsafe);
  ReadNumber(settings, "DisableUnknownRain", c.DisableUnknownRain);
  ReadNumber(settings, "DisableUnknownDay", c.DisableUnknownDay);
  editor.SetUnknowCloudGT(NumberOr(settings, "UnknownCloud", c.UnknowCloudGT));
  editor.SetUnknowRainLT(NumberOr(settings, "UnknownRain", c.UnknowRainLT));
  editor.SetUnknownDayGT(NumberOr(settings, "UnknownDay", c.UnknownDayGT));
  ReadNumber(settings, "SuspendSound", c.SuspendSoundAlarm);
  ReadNumber(settings, "SafeDelayVal", c.SafeDelayVal);
  ReadNumber(settings, "CloudAlarmDelay", c.CloudAlarmDelay);
  ReadText(settings, "ScriptFileUNSAFE", c.ScriptFileUNSAFE);
  ReadText(settings, "ScriptPathUNSAFE", c.ScriptPathUNSAFE);
  ReadText(settings, "ScriptFileSAFE", c.ScriptFileSAFE);
  ReadText(settings, "ScriptPathSAFE", c.ScriptPathSAFE);
  settings.endGroup();
}

void LoadFamilySwitches(QSettings& settings, Nimbometer& nm, ConfigEditor& editor) {
  settings.beginGroup("Switch");
  for (const FamilyKeys& keys : Families) {
    for (int i = 0; i < 3; ++i) {
      const QString key = QString::fromLatin1(keys.switchKey) + QString::number(i);
      int value = ChecksOf(nm.config, keys.family)[Slot(i)];
      ReadNumber(settings, key.toLatin1().constData(), value);
      editor.SetCheck(keys.family, i, value);
    }
  }
  nm.config.SWRole[0] = ReadBool(settings, "SWRole0", nm.config.SWRole[0]);
  nm.config.SWRole[1] = ReadBool(settings, "SWRole1", nm.config.SWRole[1]);
  settings.endGroup();
}

void LoadSoundAlarms(QSettings& settings, Nimbometer& nm) {
  for (const FamilyKeys& keys : Families) {
    if (keys.alarmSection == nullptr) continue;
    settings.beginGroup(keys.alarmSection);
    for (int i = 0; i < 3; ++i) {
      AlarmEntry& entry = AlarmsOf(nm.config, keys.family)[Slot(i)];
      const std::string stateKey = std::string(keys.classKeys[Slot(i)]) + "Stat";
      ReadText(settings, keys.classKeys[Slot(i)], entry.Tag);
      ReadNumber(settings, stateKey.c_str(), entry.Value);
      SetAlarmIcons(nm, keys.family, i, !entry.Tag.empty());
    }
    settings.endGroup();
  }
}

}  // namespace

void LoadSafetySettings(QSettings& settings, Nimbometer& nm) {
  ConfigEditor editor(nm);
  LoadLimits(settings, nm.config);
  LoadWindowKeys(settings, nm, editor);
  LoadFamilySwitches(settings, nm, editor);
  LoadSoundAlarms(settings, nm);
}

}  // namespace nbx
