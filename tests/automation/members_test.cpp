// What the members do, as a client sees it over the bus: writes run the
// controls' change handling, reads give the window's words; clients are
// counted, the last alone may stop the box, and one may take the verdict.

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusVariant>
#include <filesystem>
#include <memory>

#include "bus_fixture.h"
#include "graphs/graph_ring.h"

namespace nbx {
namespace {

using test::BusClient;
using test::WaitUntil;

class AutomationMembers : public test::OnTheBus {
 protected:
  double Number(const char* property) { return client.Get(property).toDouble(); }
  QString Text(const char* member, const QVariantList& args) {
    return client.Call(member, args).arguments().value(0).toString();
  }
};

// A write is the user's edit through the same editor as the window's (its
// rules are tested there): a linked pair follows, an order breach is refused.
TEST_F(AutomationMembers, WritesGoThroughTheEditorsRules) {
  client.Set("ThreshTempVCloudy", 25.0);
  EXPECT_EQ(Number("CloudUnknowConditionValue"), 25);
  client.Set("RainUnknowConditionValue", 900.0);
  EXPECT_EQ(Number("ThreshRainRain"), 900);
  client.Set("ThreshTempClear", 5.0);
  EXPECT_EQ(Number("ThreshTempClear"), -5);
  EXPECT_EQ(station.st.host.messages.back(), "CLEAR value CANNOT be greater or equal than CLOUDY value");
  client.Set("AlarmClear", QVariant::fromValue<short>(1));
  EXPECT_EQ(client.Get("AlarmClear").toInt(), 0) << "no sound, no alarm";
  // The descriptions are the words of the check boxes too.
  client.Set("DescWindWindy", QStringLiteral("Breezy"));
  EXPECT_EQ(d.CheckWind[1].Caption, "Breezy");
  EXPECT_EQ(c.ColorWind[1].Caption, "Breezy");
}

TEST_F(AutomationMembers, TheRelayOptionFollowsTheRoleAndTheCompanionStoreIsReadAfresh) {
  client.Set("NBX_DeviceSwitchCtrl", true);
  EXPECT_EQ(c.SWRole, (std::array<bool, 2>{false, true}));
  EXPECT_FALSE(client.Get("NBX_DeviceSwitchCtrl").toBool());
  EXPECT_EQ(client.Get("NBX_DeviceRole").toString(), "MASTER");
  c.NMRole = {false, true};
  client.Set("NBX_DeviceSwitchCtrl", false);
  EXPECT_EQ(c.SWRole, (std::array<bool, 2>{false, true})) << "a remote drives no relay";
  EXPECT_EQ(client.Get("NBX_DeviceRole").toString(), "REMOTE");
  // The companion program's own store, read afresh at each call.
  EXPECT_EQ(client.Get("NBX_UseMeteodesk").toString(), "0");
  const std::string store = test::ConfigHome() + "/NBX_Meteodesk";
  std::filesystem::create_directories(store);
  test::WriteFile(store + "/NBX_Meteodesk.ini", "[Setup]\nEmulator=yes\n");
  EXPECT_EQ(client.Get("NBX_UseMeteodesk").toString(), "yes");
}

// A unit letter is taken in its own case only. A change converts what is
// held in the unit; going back gives it again within rounding.
TEST_F(AutomationMembers, UnitChangesConvertWhatIsHeldAndGraphMembersReachTheHistory) {
  c.GraphFreq = 1;
  station.st.StartAndRunFirstCycles();
  station.st.RunPeriods(2);
  const GraphRing history = s.NBX_GraphArrayWind;
  const std::vector<double> samples = s.WindSamples;
  ASSERT_GE(history.size(), 3u);
  ASSERT_GT(samples.back(), 0);

  client.Set("UnitSpeed", QStringLiteral("X"));
  EXPECT_EQ(client.Get("UnitSpeed").toString(), "K");
  client.Set("UnitSpeed", QStringLiteral("M"));
  EXPECT_DOUBLE_EQ(c.WindLimit[1], 10 / 1.609344);
  EXPECT_DOUBLE_EQ(s.NBX_GraphArrayWind[1].Value, history[1].Value / 1.609344);
  EXPECT_EQ(s.NBX_GraphArrayWind[1].Time, history[1].Time);
  EXPECT_DOUBLE_EQ(s.WindSamples.back(), samples.back() / 1.609344);
  client.Set("NBX_SpeedUnits", QStringLiteral("k"));
  EXPECT_EQ(client.Get("UnitSpeed").toString(), "k");
  client.Set("UnitSpeed", QStringLiteral("K"));
  EXPECT_EQ(c.UnitsSpeed, (std::array<bool, 4>{true, false, false, false}));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(c.WindLimit[i], Config{}.WindLimit[i], 1e-9);
  EXPECT_NEAR(s.NBX_GraphArrayWind.back().Value, history.back().Value, 1e-9);
  EXPECT_NEAR(s.WindSamples.back(), samples.back(), 1e-9);
  // The following cycles' wind is in the unit chosen, once the mean is full.
  client.Set("UnitSpeed", QStringLiteral("m"));
  station.st.RunPeriods(8);
  EXPECT_NEAR(s.Value_Wind, 7 / 3.6, 1e-6);

  client.Set("NBX_TemperatureUnits", QStringLiteral("f"));
  EXPECT_EQ(client.Get("NBX_TemperatureUnits").toString(), "C");
  // The unit in use again converts nothing.
  for (int twice = 0; twice < 2; ++twice) {
    client.Set("NBX_TemperatureUnits", QStringLiteral("F"));
    EXPECT_EQ(Number("ThreshTempClear"), 23);
    EXPECT_EQ(Number("CloudUnknowConditionValue"), 86);
  }

  // The graph members reach the history by number.
  const auto element = [&](const char* member, int graph) {
    return client.Call(member, {graph}).arguments().value(0).toInt();
  };
  EXPECT_EQ(element("NBX_GraphArrayFirstElem", 5), 0);
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
  EXPECT_EQ(d.GraphSpanDesc.Caption, "00 h 33 m 20 s");
}

TEST_F(AutomationMembers, ReadsGiveTheWindowsWordsColoursAndSkyCondition) {
  // An item's value, description and colour, as "value | desc | color".
  const auto shown = [&](const char* item) {
    QStringList kinds;
    for (const char* kind : {"value", "desc", "color"}) kinds << Text("NBX_DataDisplayed", {item, kind});
    return kinds.join(QStringLiteral(" | "));
  };
  s.Value_Rain = 2874.6;
  s.Value_Cloud = -12.34;
  s.Value_Day = 10000;
  d.BarCloud[2] = {"Cloudy", colours::Black, 0xC0E0FF};
  d.BarDay[2] = {"Dark", colours::Black, 0x102030};
  EXPECT_EQ(shown("cloud"), "-12.3 C | Cloudy | #FFE0C0");
  EXPECT_EQ(shown("brightnesss"), "10000 K | Dark | #302010");
  // Spelled the usual way it is an unknown item: the unknown colour.
  EXPECT_EQ(shown("brightness"), "n/a | n/a | #C0C0FF");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"rain", "VALUE"}), "2875 cycles");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"Rain", "value"}), "n/a");
  EXPECT_EQ(Text("NBX_DataDisplayed", {"cloud", "colour"}), "");
  // Without an anemometer the wind is not available.
  s.IsWindPresent = false;
  EXPECT_EQ(shown("wind"), "n/a | n/a | #80FFFF");
  s.IsWindPresent = true;
  s.Value_Wind = 12.4;
  c.UnitSpeedStr = "m";
  EXPECT_EQ(Text("NBX_DataDisplayed", {"wind", "value"}), "12 m");
  // The call is silent: the client lamp did not count it.
  EXPECT_EQ(s.ClientCallCount, 0);

  const struct {
    Condition rain, cloud, sky;
    bool wet;
  } cases[] = {{1, 3, 3, false}, {2, 1, 4, true}, {1, 0, 0, false}, {0, 1, 0, false}, {3, 0, 0, true}};
  for (const auto& k : cases) {
    s.NBX_RainCondition = k.rain;
    s.NBX_CloudCondition = k.cloud;
    EXPECT_EQ(client.Get("Condition_Sky").toInt(), k.sky) << k.rain << "/" << k.cloud;
    EXPECT_EQ(client.Get("Condition_WetF").toBool(), k.wet) << k.rain;
  }
  d.SafeDelayMsg.Caption = " SAFE condition delayed by 20 s ";
  EXPECT_EQ(client.Get("NBX_SafeDelayMsg").toString(), "SAFE condition delayed by 20 s");
  d.StatusBar.Caption = "Cannot write ";
  d.StatusBar2.Caption = " d13 ";
  EXPECT_EQ(client.Get("NBX_SafeDelayMsg").toString(),
            "SAFE condition delayed by 20 s / Error: Cannot write (d13)");
}

// Two clients of a running station.
class AutomationClients : public test::OnTheBusRunning {
 protected:
  BusClient& first = client;
  BusClient second;
};

TEST_F(AutomationClients, ALeaverIsReleasedTheLastClientAloneStopsTheBoxAndTheWindowFollows) {
  first.Call("Attach");
  second.Call("Attach");
  auto third = std::make_unique<BusClient>();
  third->Call("Attach");
  third->Call("Attach");
  EXPECT_EQ(first.Get("NBX_TotalNoUsers").toInt(), 4);
  EXPECT_FALSE(d.ButtStop.Visible || d.CloseItem.Enabled || d.mnuExit.Visible || d.mPopExit.Visible);
  // Gone without Detach: released, and the box runs on.
  third.reset();
  EXPECT_TRUE(WaitUntil([&] { return s.COMNoUsers == 2; })) << s.COMNoUsers;
  EXPECT_EQ(d.LblUsers.Caption, "Attached Users: 2");
  EXPECT_TRUE(s.IsRunning);

  first.Call("NBX_DeviceStop");
  station.st.RunPeriods(1);
  EXPECT_TRUE(first.Get("DeviceIsRunning").toBool());
  first.Call("Detach");
  EXPECT_EQ(s.COMNoUsers, 1);
  // Right after the period's tick, before the cycle's work has begun.
  second.Call("NBX_DeviceStop");
  station.st.RunPeriods(1);
  EXPECT_FALSE(second.Get("DeviceIsRunning").toBool());

  second.Call("Detach");
  EXPECT_FALSE(d.FrameCOM.Visible);
  EXPECT_TRUE(d.ButtStop.Visible && d.CloseItem.Enabled && d.mnuStart.Visible && d.mnuExit.Visible);
  // A client starts the box again; the Stop button stays away.
  second.Call("Device_Start");
  station.st.RunPeriods(1);
  EXPECT_TRUE(s.IsRunning);
  EXPECT_FALSE(d.ButtStop.Visible);
}

TEST_F(AutomationClients, AClientThatTakesTheVerdictAloneDecidesItAcrossCycles) {
  station.st.box.readings.rainFrequency = 3300;  // dry
  station.st.RunPeriods(1);
  ASSERT_TRUE(first.Get("Safe").toBool());
  station.sound.playing = "siren.wav";
  d.SafeDelayMsg.Caption = "SAFE condition delayed by 5 s";

  first.Call("Attach");
  first.Call("NBX_LocalControl", {true, QStringLiteral("Dome control has the verdict")});
  EXPECT_EQ(d.ControlOwner.Caption, "Dome control has the verdict");
  EXPECT_FALSE(d.Frame3.Visible);
  EXPECT_EQ(d.SafeDelayMsg.Caption, "");
  EXPECT_EQ(station.sound.playing, "");
  EXPECT_TRUE(s.LocalControl);

  first.Call("SetUnSafe", {true});
  station.st.RunPeriods(3);
  EXPECT_FALSE(first.Get("Safe").toBool());
  EXPECT_EQ(d.LblStatus.Caption, "Unsafe");
  station.st.box.readings.rainFrequency = 2000;  // raining
  first.Call("SetUnSafe", {false});
  station.st.RunPeriods(3);
  EXPECT_EQ(first.Get("Condition_Rain").toInt(), 3);
  EXPECT_TRUE(first.Get("Safe").toBool());

  // Gone without a word: the verdict stays where the client left it.
  first.Leave();
  EXPECT_TRUE(WaitUntil([&] { return s.COMNoUsers == 0; }));
  station.st.RunPeriods(2);
  EXPECT_TRUE(s.LocalControl);
  EXPECT_TRUE(second.Get("Safe").toBool());

  second.Call("NBX_LocalControl", {false, QString()});
  EXPECT_TRUE(d.Frame3.Visible);
  station.st.RunPeriods(1);
  EXPECT_FALSE(second.Get("Safe").toBool());
}

// A remote whose master has gone quiet: the link alarm waits while a client
// holds the verdict, as the client drives the sounds.
using AutomationClientsOnARemote = test::OnTheBus;

TEST_F(AutomationClientsOnARemote, TheLinkAlarmDoesNotStartWhileAClientHoldsTheVerdict) {
  c.NMRole = {false, true};
  c.AlarmCom = {1, "link.wav"};
  client.Call("NBX_LocalControl", {true, QStringLiteral("Dome control")});
  station.st.StartAndRunFirstCycles();
  EXPECT_EQ(station.sound.playing, "");
  client.Call("NBX_LocalControl", {false, QString()});
  station.st.RunPeriods(1);
  EXPECT_EQ(station.sound.playing, "link.wav");
}

}  // namespace
}  // namespace nbx
