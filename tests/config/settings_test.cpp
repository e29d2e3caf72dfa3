#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "config/electrical_settings.h"
#include "config/memory_settings.h"
#include "config/setting_conversions.h"
#include "config/settings_order.h"
#include "core/nimbometer.h"
#include "key_list.h"
#include "station/settings_store.h"
#include "support/child_process.h"

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
const std::vector<std::set<KeyAddress>> kLinked = {
    {{"Limit", "UnitsSpeed0"}, {"Limit", "UnitsSpeed1"}, {"Limit", "UnitsSpeed2"}, {"Limit", "UnitsSpeed3"}},
    {{"Window", "UnitsTemp0"}, {"Window", "UnitsTemp"}},
    {{"Switch", "SWRole0"}, {"Switch", "SWRole1"}},
    {{"Switch", "SWAnemoModel0"}, {"Switch", "SWAnemoModel1"}, {"Switch", "SWAnemoModel2"}},
    {{"COMMFile", "NMRole0"}, {"COMMFile", "NMRole1"}},
    {{"Window", "QualityTop"}, {"Window", "QualityGood"}, {"Window", "QualityNormal"}},
    {{"Window", "UnknownRain"}, {"Limit", "Rain"}},
};

std::set<KeyAddress> CarriedWith(const KeyAddress& key) {
  for (const auto& group : kLinked)
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
    // The sample stores are sized to what was loaded.
    if (key == KeyAddress{"Electrical", "Stats_Universe"}) {
      EXPECT_EQ(nm.state.SamplesLDR.values.size(), 12u);
    }
    if (key == KeyAddress{"Window", "AvgWindCalc"}) {
      EXPECT_EQ(nm.state.WindSamples.size(), 13u);
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
  store.Save("Limit", "Rain", "1234");
  store.Save("Window", "UnknownRain", "15");
  Nimbometer nm = LoadFrom(store);
  EXPECT_EQ(nm.config.RainLimit[2], 15);  // follows the unknown value, not the key "Rain"
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
  nm.config.Left = 500;
  const Texts saved = SavedTexts(nm, ',', false);
  EXPECT_EQ(saved.at({"Window", "CloudTempK1"}), "33,5");
  EXPECT_EQ(saved.at({"Window", "UnitsTemp0"}), "False");
  EXPECT_EQ(saved.at({"Limit", "Rain"}), "15");
  EXPECT_FALSE(saved.count({"Window", "Left"})) << "headless there is no window: its place stays";
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

TEST(BoolFromSetting, FalseWordsOfFiveLanguagesAndEverythingElseTrue) {
  for (const char* word : {"False", "Falso", "Falsch", "0", "Faux"})
    EXPECT_FALSE(BoolFromSetting(word, true)) << word;
  // The comparison is exact: case, blanks around and other words are true.
  for (const char* word : {"True", "false", " False", "00", "x"})
    EXPECT_TRUE(BoolFromSetting(word, false)) << word;
  // Nothing but blanks gives the key's default, not false.
  EXPECT_TRUE(BoolFromSetting("  ", true));
  EXPECT_FALSE(BoolFromSetting("", false));
}

TEST(NumberFromSetting, SameNumberUnderEveryLocaleWithoutSign) {
  // The last separator counts; one at the end divides by 1.
  const std::pair<const char*, double> read[] = {
      {"19,6", 19.6}, {" 2.5 ", 2.5}, {"1.2,3", 12.3}, {"19.", 19}, {",5", 0.5}};
  for (const auto& [text, value] : read) EXPECT_DOUBLE_EQ(DoubleFromSetting(text, 0), value) << text;
  // Blank text, a sign, a letter, an inner blank; digits beyond what a double
  // holds: the default, never an infinity or no number.
  for (const std::string& text : std::vector<std::string>{
           "", "-5", "19.6a", "1 9", "1e3", std::string(400, '7'), "1." + std::string(400, '0')})
    EXPECT_DOUBLE_EQ(DoubleFromSetting(text, 7.5), 7.5) << text;

  // Ties go to the even number; 40000 is no 16-bit number.
  const std::pair<const char*, int> whole[] = {{" ", 3}, {" -7 ", -7}, {"12.5", 12}, {"40000", 3}, {"4a", 3}};
  for (const auto& [text, value] : whole) EXPECT_EQ(IntFromSetting(text, 3), value) << text;
  EXPECT_EQ(IntFromSetting("13,5", 3, ','), 14);
  EXPECT_EQ(LongFromSetting("40000", 3), 40000);
  EXPECT_EQ(LongFromSetting("3000000000", 3), 3);
}

TEST(PlainConversions, LocaleNumbersAndALetterGivesTheDefault) {
  EXPECT_DOUBLE_EQ(NumberFromText("9,9", 0, ','), 9.9);
  EXPECT_DOUBLE_EQ(NumberFromText("9.9", 0, ','), 9.9);  // the point reads everywhere
  EXPECT_DOUBLE_EQ(NumberFromText(" -2.5e2 ", 0, '.'), -250);
  for (const char* text : {"12a", "1,000", "-", ".", "1e400", "0x10"})
    EXPECT_DOUBLE_EQ(NumberFromText(text, 4.25, '.'), 4.25) << text;
  EXPECT_EQ(LongFromText("2147483648", 1, '.'), 1);
  EXPECT_EQ(LongFromText("1e3", 1, '.'), 1000);
  EXPECT_EQ(IntegerFromText("-32768", 1, '.'), -32768);
  EXPECT_EQ(IntegerFromText("-32769", 1, '.'), 1);

  EXPECT_FALSE(BooleanFromText(" FALSE ", true));
  EXPECT_TRUE(BooleanFromText("-1", false));
  EXPECT_TRUE(BooleanFromText("Falsch", true));  // no word the platform knows: the default
  EXPECT_EQ(ColourFromText("-2147483633", 0), 0x8000000Fu);
  EXPECT_EQ(ColourFromText("blue", 0x404040), 0x404040u);
}

TEST(SettingTexts, NumbersInTheLocaleNotationReadBackTheSame) {
  for (const auto& [value, text] : {std::pair{30.0 / 10, "3"}, {-0.0, "0"}, {1.0 / 3, "0.333333333333333"}})
    EXPECT_EQ(NumberToText(value, '.'), text);
  EXPECT_EQ(ColourToText(0x8000000F), "-2147483633");
  for (double value : {-30.0, 19.6, 1e-7, 1e20})
    for (char separator : {'.', ','})
      EXPECT_DOUBLE_EQ(NumberFromText(NumberToText(value, separator), 0, separator), value)
          << value << separator;
}

TEST(IniSettings, AHandWrittenFileIsReadAndSavedWithoutLosingForeignKeys) {
  test::TempDir dir;
  const std::string file = dir.File("station.ini");
  test::WriteFile(file,
                  "[Communication]\nRS232Setup=9600,n,8,1\nPortName=/dev/ttyUSB0\nRefreshPeriod=3\n"
                  "[SQM]\nDarkReferenceValue=19,6\n"
                  "[Description]\nClear=Tr\xC3\xA8s clair\n"
                  "[Window]\nUnitsTemp0=Falsch\nUnitsTemp=True\nFutureKey=kept too\n"
                  "[LaterVersion]\nNewKey=kept\n");
  Nimbometer nm;
  {
    IniSettings store(QString::fromStdString(file));
    EXPECT_TRUE(store.CheckReadable());
    nm = LoadFrom(store);
    // Commas that the INI format would take for lists, and UTF-8 text.
    EXPECT_EQ(nm.config.CommSettings, "9600,n,8,1");
    EXPECT_DOUBLE_EQ(nm.config.DarkReference, 19.6);
    EXPECT_EQ(nm.config.ColorCloud[0].Caption, "Tr\xC3\xA8s clair");

    nm.config.RefreshPeriod = 4;
    ASSERT_TRUE(UnloadSettings(store, nm, {'.', false}));
    EXPECT_TRUE(store.Flush());
  }
  // The file on disk as a plain reader sees it.
  const std::string text = test::ReadFile(file);
  for (const char* line : {"RS232Setup=\"9600,n,8,1\"\n", "RefreshPeriod=4\n", "UnitsTemp0=False\n",
                           "FutureKey=kept too\n", "[LaterVersion]\nNewKey=kept\n"})
    EXPECT_NE(text.find(line), std::string::npos) << line << "\n" << text;

  // And read back by the program, the same configuration.
  IniSettings again(QString::fromStdString(file));
  EXPECT_TRUE(LoadFrom(again).config == nm.config);
}

// A folder where the file should be cannot be read; a file whose folder
// cannot exist reads as a fresh installation. Neither can be written.
TEST(IniSettings, AFileThatCannotBeReadOrWrittenIsReportedAndGivesDefaults) {
  test::TempDir dir;
  test::WriteFile(dir.File("plain-file"), "x");
  for (const std::string& file : {dir.path(), dir.File("plain-file/station.ini")}) {
    IniSettings store(QString::fromStdString(file));
    testing::internal::CaptureStderr();
    EXPECT_EQ(store.CheckReadable(), file != dir.path()) << file;
    EXPECT_EQ(store.Get("Communication", "RS232Setup", "9600,n,8,1"), "9600,n,8,1");
    store.Save("Communication", "Port", "2");
    EXPECT_FALSE(store.Flush());
    const std::string errors = testing::internal::GetCapturedStderr();
    EXPECT_EQ(errors.find("cannot read the settings file " + file) != std::string::npos, file == dir.path())
        << errors;
    EXPECT_NE(errors.find("cannot write the settings file " + file), std::string::npos) << errors;
  }
}

}  // namespace
}  // namespace nbx
