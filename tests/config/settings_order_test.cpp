#include <gtest/gtest.h>

#include <map>
#include <set>
#include <tuple>

#include "config/electrical_settings.h"
#include "config/memory_settings.h"
#include "config/setting_conversions.h"
#include "config/settings_order.h"
#include "core/nimbometer.h"
#include "key_list.h"

namespace nbx {
namespace {

using test::KeyAddress;
using Texts = std::map<KeyAddress, std::string>;

const char* const kDocuments = "/home/observer/Documents";

// A store that remembers which keys the load asked for, with which default.
class RecordingSettings : public MemorySettings {
 public:
  std::string Get(std::string_view section, std::string_view key,
                  std::string_view defaultText) override {
    asked[{std::string(section), std::string(key)}] = std::string(defaultText);
    return MemorySettings::Get(section, key, defaultText);
  }
  Texts asked;
};

Nimbometer LoadFrom(Settings& store, char separator = '.') {
  Nimbometer nm;
  LoadSettings(store, nm, {kDocuments, separator, false});
  return nm;
}

Texts SavedTexts(const Nimbometer& nm, char separator = '.', bool windowIsNormal = true) {
  MemorySettings out;
  UnloadSettings(out, nm, {separator, windowIsNormal});
  return out.values;
}

// What the load puts outside Config.
auto OtherTargets(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  return std::make_tuple(s.Stats_Universe, s.Stats_Sigma, s.ZenerVoltage, s.LDRMaxResistance,
                         s.LDRPullupResistance, s.RainBeta, s.RainResAt25, s.RainPullUpResistance,
                         s.AmbBeta, s.AmbResAt25, s.AmbPullUpResistance, s.SerialNo,
                         s.DeviceInitialized, s.DeviceMode, nm.display.LblPECReading.Caption);
}

// A value of the key's type that differs from its default text.
std::string Different(const KeyAddress& address, const std::string& defaultText) {
  if (address.second == "Left" || address.second == "Top") return "120";  // default: centred
  if (defaultText == "True") return "False";
  if (defaultText == "False") return "True";
  if (const auto number = LocaleNumber(defaultText, '.')) return NumberToText(*number + 7, '.');
  return defaultText + "x";
}

// The buttons of an option group, and the rain limit that follows the
// unknown rain value: keys that one change carries along.
const std::vector<std::set<KeyAddress>>& LinkedKeys() {
  static const std::vector<std::set<KeyAddress>> groups = {
      {{"Limit", "UnitsSpeed0"}, {"Limit", "UnitsSpeed1"}, {"Limit", "UnitsSpeed2"}, {"Limit", "UnitsSpeed3"}},
      {{"Window", "UnitsTemp0"}, {"Window", "UnitsTemp"}},
      {{"Switch", "SWRole0"}, {"Switch", "SWRole1"}},
      {{"Switch", "SWAnemoModel0"}, {"Switch", "SWAnemoModel1"}, {"Switch", "SWAnemoModel2"}},
      {{"COMMFile", "NMRole0"}, {"COMMFile", "NMRole1"}},
      {{"Window", "QualityTop"}, {"Window", "QualityGood"}, {"Window", "QualityNormal"}},
      {{"Window", "UnknownRain"}, {"Limit", "Rain"}},
  };
  return groups;
}

std::set<KeyAddress> CarriedWith(const KeyAddress& key) {
  for (const auto& group : LinkedKeys())
    if (group.count(key)) return group;
  return {key};
}

std::set<KeyAddress> ChangedKeys(const Texts& before, const Texts& after) {
  std::set<KeyAddress> changed;
  for (const auto& [key, text] : after)
    if (!before.count(key) || before.at(key) != text) changed.insert(key);
  return changed;
}

TEST(SettingsLoad, AFreshStoreGivesEveryDefaultOfTheTables) {
  RecordingSettings store;
  const Nimbometer nm = LoadFrom(store, ',');

  Config expected;
  for (std::string* folder : {&expected.LblPathName, &expected.NetPathMaster, &expected.NetPathRemote,
                              &expected.LblPathNameCCDAP4, &expected.GraphImagePath})
    *folder = kDocuments;
  EXPECT_TRUE(nm.config == expected);
  EXPECT_EQ(OtherTargets(nm), OtherTargets(Nimbometer()));
  EXPECT_EQ(store.asked.at({"Electrical", "Resistance"}), "9,9");  // defaults as the locale writes them
}

// The load asks for every key of the list and the unload writes every one.
// Loading a store with one key changed and saving it again changes that key
// and no other: a key read into the wrong field, or written from one, shows.
TEST(SettingsStore, EachKeyOfTheListComesBackUnderItsOwnName) {
  const test::KeyList reference = test::ReferenceKeys();
  RecordingSettings fresh;
  const Nimbometer defaults = LoadFrom(fresh);
  const Texts baseline = SavedTexts(defaults);
  std::set<KeyAddress> asked, written;
  for (const auto& entry : fresh.asked) asked.insert(entry.first);
  for (const auto& entry : baseline) written.insert(entry.first);
  EXPECT_EQ(asked, reference.read);
  // A window never placed leaves no place in the store.
  written.insert({{"Window", "Left"}, {"Window", "Top"}});
  EXPECT_EQ(written, reference.written);
  for (const auto& [key, defaultText] : fresh.asked) {
    MemorySettings store;
    const std::string text = Different(key, defaultText);
    // A button set true comes with its group set false, as the unload writes it.
    if (text == "True")
      for (const KeyAddress& k : CarriedWith(key)) store.Save(k.first, k.second, "False");
    store.Save(key.first, key.second, text);
    const Nimbometer nm = LoadFrom(store);
    if (key == KeyAddress{"Description", "Wet"}) {
      EXPECT_EQ(nm.display.CheckRain[1].Caption, "Wetx");
    }
    if (key == KeyAddress{"Electrical", "Stats_Universe"}) {
      EXPECT_EQ(nm.state.SamplesLDR.values.size(), 12u);
    }
    std::set<KeyAddress> expected = {key};
    if (key == KeyAddress{"AlarmHumidity", "RHNormal"}) expected = {{"AlarmHumidity", "RHLight"}};
    if (key == KeyAddress{"Window", "VScrollPos3"} || key == KeyAddress{"FreeImage", "FreeImageUse"}) {
      expected.clear();
      EXPECT_FALSE(nm.config == defaults.config) << key.second << " has no effect";
    }
    const std::set<KeyAddress> changed = ChangedKeys(baseline, SavedTexts(nm));
    const std::set<KeyAddress> allowed = CarriedWith(key);
    if (allowed.size() > 1 && changed.count(key)) {
      for (const KeyAddress& k : changed) EXPECT_TRUE(allowed.count(k)) << key.second << " moved " << k.second;
    } else {
      EXPECT_EQ(changed, expected) << key.first << "/" << key.second;
    }
  }
}

TEST(SettingsStore, DeliberateAsymmetriesBetweenLoadAndUnload) {
  MemorySettings store;
  store.Save("AlarmHumidity", "RHNormal", "/sounds/normal.wav");
  store.Save("Limit", "Rain", "1234");
  store.Save("Window", "UnknownRain", "15");
  store.Save("Window", "Left", "33");
  Nimbometer nm = LoadFrom(store);
  EXPECT_EQ(nm.config.AlarmHumidity[1].Tag, "/sounds/normal.wav");
  EXPECT_EQ(nm.config.RainLimit[2], 15);  // follows the unknown value, not the key "Rain"

  // Headless there is no window: its place in the store stays as it was.
  nm.config.Left = 500;
  ASSERT_TRUE(UnloadSettings(store, nm, {'.', false}));
  EXPECT_EQ(store.Get("Window", "Left", ""), "33");
  EXPECT_EQ(store.Get("Limit", "Rain", ""), "15");
  EXPECT_EQ(store.Get("AlarmHumidity", "RHLight", ""), "/sounds/normal.wav");

  // The second humidity sound lasts one run; the first stays.
  Nimbometer restarted = LoadFrom(store);
  EXPECT_EQ(restarted.config.AlarmHumidity[1].Tag, "/sounds/normal.wav");
  restarted.config.Left = 500;
  MemorySettings next;
  UnloadSettings(next, restarted, {'.', true});
  next.values.erase({"AlarmHumidity", "RHNormal"});
  EXPECT_EQ(LoadFrom(next).config.AlarmHumidity[1].Tag, "");
  EXPECT_EQ(next.Get("Window", "Left", ""), "500");  // a normal window writes its place
}

TEST(SettingsLoad, AStoreWrittenUnderAGermanSystem) {
  MemorySettings store;
  store.Save("Window", "UnitsTemp0", "Falsch");
  store.Save("Window", "UnitsTemp", "Wahr");
  store.Save("SQM", "DarkReferenceValue", "20,25");
  store.Save("Limit", "Clear", "-7,5");
  store.Save("Limit", "UnitsSpeed0", " ");    // blank: the default
  store.Save("COMMFile", "NMRole1", " False"); // untrimmed: true
  store.Save("File", "Prt03", "Faux");
  store.Save("File", "Hdr01", "Datum und Uhrzeit der Messung im Format");
  Nimbometer nm = LoadFrom(store);
  EXPECT_EQ(nm.config.UnitTempStr, "F");
  EXPECT_DOUBLE_EQ(nm.config.DarkReference, 20.25);
  EXPECT_DOUBLE_EQ(nm.config.CloudLimit[0], -5);  // a comma is no decimal point here
  EXPECT_EQ(nm.config.UnitSpeedStr, "K");
  EXPECT_EQ(nm.state.DeviceMode, "REMOTE");
  EXPECT_FALSE(nm.config.FileColumns[2].Prt);
  EXPECT_EQ(nm.config.FileColumns[0].Hdr, "Datum und Uhrzeit der Mes");

  // On the German machine itself the comma is the decimal separator, and the
  // numbers go back to the store with it.
  EXPECT_DOUBLE_EQ(LoadFrom(store, ',').config.CloudLimit[0], -7.5);
  nm.config.CloudTempK1 = 33.5;
  const Texts saved = SavedTexts(nm, ',');
  EXPECT_EQ(saved.at({"Window", "CloudTempK1"}), "33,5");
  EXPECT_EQ(saved.at({"Window", "UnitsTemp0"}), "False");
}

TEST(SettingsLoad, NumberKeysWithLettersBlanksOrUnusableValuesGiveTheirDefault) {
  RecordingSettings fresh;
  const Nimbometer defaults = LoadFrom(fresh);
  for (const char* garbage : {"4x", "  ", "--1"}) {
    MemorySettings store;
    for (const auto& [key, defaultText] : fresh.asked)
      if ((LocaleNumber(defaultText, '.') && key.second != "LblPECReading") ||
          key.second == "Left" || key.second == "Top")
        store.Save(key.first, key.second, garbage);
    const Nimbometer nm = LoadFrom(store);
    EXPECT_TRUE(nm.config == defaults.config) << '"' << garbage << '"';
    EXPECT_EQ(OtherTargets(nm), OtherTargets(defaults)) << '"' << garbage << '"';
  }
  // Values that would stop the beat or exhaust the memory.
  for (const char* unusable : {"0", "-3", "100000000"}) {
    MemorySettings store;
    store.Save("Electrical", "Stats_Universe", unusable);
    store.Save("Communication", "RefreshPeriod", unusable);
    store.Save("Communication", "Timeout", unusable);
    store.Save("Window", "AvgWindCalc", unusable);
    const Nimbometer nm = LoadFrom(store);
    EXPECT_EQ(nm.state.Stats_Universe, 5) << unusable;
    EXPECT_EQ(nm.config.RefreshPeriod, 10) << unusable;
    EXPECT_EQ(nm.config.PORTTimeout, 5) << unusable;
    EXPECT_GE(nm.state.WindSamples.size(), 1u);
    EXPECT_LE(nm.state.WindSamples.size(), 30u);
  }
  MemorySettings largest;
  largest.Save("Electrical", "Stats_Universe", "23");
  EXPECT_EQ(LoadFrom(largest).state.SamplesRainFreq.values.size(), 23u);
}

TEST(ResetElectParam, StoresTheNineConstantsForTheNextStart) {
  Nimbometer nm;
  nm.state.ZenerVoltage = 2.54;
  nm.state.AmbPullUpResistance = 10.5;
  MemorySettings store;
  ResetElectParam(store, nm.state, ',');
  EXPECT_EQ(store.values.size(), 9u);
  EXPECT_EQ(store.Get("Electrical", "ZenerVoltage", ""), "2,54");
  EXPECT_EQ(OtherTargets(LoadFrom(store, ',')), OtherTargets(nm));
}

}  // namespace
}  // namespace nbx
