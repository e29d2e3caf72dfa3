// What the members do, as a client sees it over the bus.

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusVariant>
#include <filesystem>

#include "bus_fixture.h"

namespace nbx {
namespace {

using test::BusClient;
using test::ServedStation;

class AutomationMembers : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(station.registered) << station.registerError.toStdString();
    ASSERT_TRUE(client.Connected()) << "no session bus: run inside dbus-run-session";
  }
  double Number(const char* property) { return client.Get(property).toDouble(); }
  QString Text(const char* member, const QVariantList& args) {
    return client.Call(member, args).arguments().value(0).toString();
  }
  ServedStation station;
  BusClient client;
  Config& c = station.nm.config;
  SiteState& s = station.nm.state;
};

TEST_F(AutomationMembers, ThirdLimitsAndUnknownThresholdsAreLinkedOnWrite) {
  client.Set("ThreshTempVCloudy", 25.0);
  EXPECT_EQ(Number("CloudUnknowConditionValue"), 25);
  client.Set("CloudUnknowConditionValue", 12.5);
  EXPECT_EQ(Number("ThreshTempVCloudy"), 12.5);
  client.Set("ThreshRainRain", 1500.0);
  EXPECT_EQ(Number("RainUnknowConditionValue"), 1500);
  client.Set("RainUnknowConditionValue", 900.0);
  EXPECT_EQ(Number("ThreshRainRain"), 900);
  // The brightness pair is not linked.
  client.Set("ThreshBrightnessVLigth", 3.0);
  EXPECT_EQ(Number("BrightnessUnknowConditionValue"), 60000);
  // A write is the user's edit: a limit out of order is refused with its message.
  client.Set("ThreshTempClear", 5.0);
  EXPECT_EQ(Number("ThreshTempClear"), -5);
  EXPECT_EQ(station.st.host.messages.back(), "CLEAR value CANNOT be greater or equal than CLOUDY value");
}

TEST_F(AutomationMembers, AnAlarmWithoutASoundFallsBackToOff) {
  client.Set("AlarmClear", QVariant::fromValue<short>(1));
  EXPECT_EQ(client.Get("AlarmClear").toInt(), 0);
  client.Set("SoundClear", QStringLiteral("bell.wav"));
  client.Set("AlarmClear", QVariant::fromValue<short>(1));
  EXPECT_EQ(client.Get("AlarmClear").toInt(), 1);
  EXPECT_TRUE(station.nm.display.UnsafeBlocks[0].AlarmIconOn[0]);
  client.Set("SoundClear", QString());
  EXPECT_EQ(client.Get("AlarmClear").toInt(), 0);
  // The descriptions are the words of the check boxes too.
  client.Set("DescWindWindy", QStringLiteral("Breezy"));
  EXPECT_EQ(station.nm.display.CheckWind[1].Caption, "Breezy");
  EXPECT_EQ(c.ColorWind[1].Caption, "Breezy");
}

TEST_F(AutomationMembers, UnitLettersAreCaseSensitiveAndConvertWhatIsHeld) {
  EXPECT_EQ(client.Get("UnitSpeed").toString(), "K");
  client.Set("UnitSpeed", QStringLiteral("X"));
  EXPECT_EQ(client.Get("UnitSpeed").toString(), "K");
  client.Set("UnitSpeed", QStringLiteral("k"));
  EXPECT_EQ(client.Get("NBX_SpeedUnits").toString(), "k");
  client.Set("NBX_SpeedUnits", QStringLiteral("K"));
  EXPECT_EQ(client.Get("UnitSpeed").toString(), "K");
  EXPECT_EQ(c.UnitsSpeed, (std::array<bool, 4>{true, false, false, false}));

  client.Set("NBX_TemperatureUnits", QStringLiteral("f"));
  EXPECT_EQ(client.Get("NBX_TemperatureUnits").toString(), "C");
  client.Set("NBX_TemperatureUnits", QStringLiteral("F"));
  EXPECT_EQ(Number("ThreshTempClear"), 23);
  EXPECT_EQ(Number("CloudUnknowConditionValue"), 86);
  // The unit in use again converts nothing.
  client.Set("NBX_TemperatureUnits", QStringLiteral("F"));
  EXPECT_EQ(Number("ThreshTempClear"), 23);
}

TEST_F(AutomationMembers, SkyConditionWetnessAndTheDelayMessageFollowTheirRules) {
  const struct {
    Condition rain, cloud, sky;
    bool wet;
  } cases[] = {{1, 2, 2, false}, {1, 3, 3, false}, {2, 1, 4, true}, {3, 1, 4, true},
               {1, 0, 0, false}, {0, 1, 0, false}, {3, 0, 0, true}};
  for (const auto& k : cases) {
    s.NBX_RainCondition = k.rain;
    s.NBX_CloudCondition = k.cloud;
    EXPECT_EQ(client.Get("Condition_Sky").toInt(), k.sky) << k.rain << "/" << k.cloud;
    EXPECT_EQ(client.Get("Condition_WetF").toBool(), k.wet) << k.rain;
  }
  Display& d = station.nm.display;
  d.SafeDelayMsg.Caption = " SAFE condition delayed by 20 s ";
  EXPECT_EQ(client.Get("NBX_SafeDelayMsg").toString(), "SAFE condition delayed by 20 s");
  d.StatusBar.Caption = "Cannot write ";
  d.StatusBar2.Caption = " d13 ";
  EXPECT_EQ(client.Get("NBX_SafeDelayMsg").toString(),
            "SAFE condition delayed by 20 s / Error: Cannot write (d13)");
}

TEST_F(AutomationMembers, DataDisplayedGivesTheWindowsWordsAndColours) {
  s.Value_Rain = 2874.6;
  s.Value_Cloud = -12.34;
  s.Value_Day = 10000;
  Display& d = station.nm.display;
  d.BarCloud[2] = {"Cloudy", colours::Black, 0xC0E0FF};
  d.BarDay[2].Caption = "Dark";
  EXPECT_EQ(Text("NBX_DataDisplayed", {"rain", "VALUE"}), "2875 cycles");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"rain", "value"}), "2875 cycles");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"Rain", "value"}), "n/a");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"cloud", "value"}), "-12.3 C");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"cloud", "desc"}), "Cloudy");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"cloud", "Color"}), "#FFE0C0");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"brightnesss", "value"}), "10000 K");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"brightnesss", "desc"}), "Dark");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"humididty", "color"}), "#80FFFF");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"cloud", "colour"}), "");
  // Spelled the usual way they are unknown items: the unknown colour.
  for (const char* item : {"humidity", "brightness"}) {
    EXPECT_EQ(Text("NBX_DataDisplayed", {item, "value"}), "n/a") << item;
    EXPECT_EQ(Text("NBX_DataDisplayed", {item, "desc"}), "n/a") << item;
    EXPECT_EQ(Text("NBX_DataDisplayed", {item, "color"}), "#C0C0FF") << item;
  }
  // Without an anemometer the wind is not available.
  s.IsWindPresent = false;
  EXPECT_EQ(Text("NBX_DataDisplayed", {"wind", "value"}), "n/a");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"wind", "desc"}), "n/a");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"wind", "color"}), "#80FFFF");
  s.IsWindPresent = true;
  s.Value_Wind = 12.4;
  c.UnitSpeedStr = "m";
  EXPECT_EQ(Text("NBX_DataDisplayed", {"wind", "value"}), "12 m");
  // The call is silent: the client lamp did not count it.
  EXPECT_EQ(s.ClientCallCount, 0);
}

TEST_F(AutomationMembers, GraphMembersReachTheHistoryByNumber) {
  c.GraphFreq = 1;
  station.st.StartAndRunFirstCycles();
  station.st.RunPeriods(3);
  const auto element = [&](const char* member, int graph) {
    return client.Call(member, {graph}).arguments().value(0).toInt();
  };
  EXPECT_EQ(element("NBX_GraphArrayFirstElem", 5), 0);
  EXPECT_EQ(element("NBX_GraphArrayLastElem", 0), 0);
  EXPECT_EQ(element("NBX_GraphArrayFirstElem", 1), s.CloudArrayFst);
  EXPECT_EQ(element("NBX_GraphArrayLastElem", 4), s.TempArrayLst);
  ASSERT_GE(s.RainArrayLst, 3);

  const QDBusArgument arg = qvariant_cast<QDBusArgument>(client.Get("NBX_GraphArrayRain"));
  QList<QList<double>> rows;
  arg >> rows;
  ASSERT_EQ(rows.size(), 3);
  ASSERT_EQ(static_cast<std::size_t>(rows[2].size()), s.NBX_GraphArrayRain.size());
  const auto last = static_cast<qsizetype>(s.RainArrayLst);
  EXPECT_EQ(rows[1][last], s.NBX_GraphArrayRain[static_cast<std::size_t>(last)].Time);
  EXPECT_EQ(rows[2][last], 3300);
  EXPECT_EQ(rows[0][last], 0);

  // A new number of points empties the graphs; the same number keeps them.
  client.Set("GraphPoints", 120.0);
  EXPECT_GE(s.NBX_GraphArrayRain.size(), 2u);
  client.Set("GraphNoOfPoints", 200.0);
  EXPECT_EQ(s.NBX_GraphArrayRain.size(), 1u);
  EXPECT_EQ(client.Call("GetGraphFreq", {7}).arguments().value(0).toInt(), 1);
  client.Set("ReadCycle", 5.0);
  EXPECT_EQ(client.Call("GetGraphCycle", {1}).arguments().value(0).toInt(), 10);
  EXPECT_EQ(station.nm.display.GraphSpanDesc.Caption, "00 h 33 m 20 s");
}

TEST_F(AutomationMembers, RoleRelayOptionAndCompanionSettingAsTheContractHasThem) {
  EXPECT_TRUE(client.Get("NBX_DeviceSwitchCtrl").toBool());
  client.Set("NBX_DeviceSwitchCtrl", true);
  EXPECT_EQ(c.SWRole, (std::array<bool, 2>{false, true}));
  EXPECT_FALSE(client.Get("NBX_DeviceSwitchCtrl").toBool());
  client.Set("NBX_DeviceSwitchCtrl", false);
  EXPECT_TRUE(client.Get("NBX_DeviceSwitchCtrl").toBool());
  EXPECT_EQ(client.Get("NBX_DeviceRole").toString(), "MASTER");
  c.NMRole = {false, true};
  client.Set("NBX_DeviceSwitchCtrl", true);
  EXPECT_EQ(c.SWRole, (std::array<bool, 2>{true, false}));
  EXPECT_EQ(client.Get("NBX_DeviceRole").toString(), "REMOTE");
  EXPECT_EQ(client.Get("Version").toString(), "7.00.000");
  // The companion program's own store, read afresh at each call.
  EXPECT_EQ(client.Get("NBX_UseMeteodesk").toString(), "0");
  const std::string store = test::ConfigHome() + "/NBX_Meteodesk";
  std::filesystem::create_directories(store);
  test::WriteFile(store + "/NBX_Meteodesk.ini", "[Setup]\nEmulator=1\n");
  EXPECT_EQ(client.Get("NBX_UseMeteodesk").toString(), "1");
  test::WriteFile(store + "/NBX_Meteodesk.ini", "[Setup]\nEmulator=yes\n");
  EXPECT_EQ(client.Get("NBX_UseMeteodesk").toString(), "yes");
}

}  // namespace
}  // namespace nbx
