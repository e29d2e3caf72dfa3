// Writes of clients run the controls' change handling: what a change of
// unit converts, and the values that correct themselves.

#include <gtest/gtest.h>

#include "bus_fixture.h"
#include "graphs/graph_ring.h"

namespace nbx {
namespace {

using test::BusClient;
using test::ServedStation;

class ConfigChanges : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(station.registered) << station.registerError.toStdString();
    ASSERT_TRUE(client.Connected()) << "no session bus: run inside dbus-run-session";
  }
  ServedStation station;
  BusClient client;
  Config& c = station.nm.config;
  SiteState& s = station.nm.state;
};

TEST_F(ConfigChanges, ASpeedUnitConvertsLimitsHistoryAndSamplesAndComesBackWithinRounding) {
  c.GraphFreq = 1;
  station.st.StartAndRunFirstCycles();
  station.st.RunPeriods(2);
  const GraphRing history = s.NBX_GraphArrayWind;
  const std::vector<double> samples = s.WindSamples;
  ASSERT_GE(history.size(), 3u);
  ASSERT_GT(samples.back(), 0);

  client.Set("UnitSpeed", QStringLiteral("M"));
  EXPECT_DOUBLE_EQ(c.WindLimit[1], 10 / 1.609344);
  EXPECT_DOUBLE_EQ(s.NBX_GraphArrayWind[1].Value, history[1].Value / 1.609344);
  EXPECT_EQ(s.NBX_GraphArrayWind[1].Time, history[1].Time);
  EXPECT_DOUBLE_EQ(s.WindSamples.back(), samples.back() / 1.609344);
  client.Set("UnitSpeed", QStringLiteral("m"));
  EXPECT_NEAR(c.WindLimit[1], 10 / 3.6, 1e-9);
  client.Set("UnitSpeed", QStringLiteral("K"));
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(c.WindLimit[i], Config{}.WindLimit[i], 1e-9);
  EXPECT_NEAR(s.NBX_GraphArrayWind.back().Value, history.back().Value, 1e-9);
  EXPECT_NEAR(s.WindSamples.back(), samples.back(), 1e-9);
  // The following cycles' wind is in the unit chosen, once the mean is full.
  client.Set("UnitSpeed", QStringLiteral("m"));
  station.st.RunPeriods(8);
  EXPECT_NEAR(s.Value_Wind, 7 / 3.6, 1e-6);
}

TEST_F(ConfigChanges, ValuesCorrectThemselvesAsTheirControlsDo) {
  const auto set = [&](const char* property, double value) { client.Set(property, value); };
  set("ReadCycle", 5);
  EXPECT_EQ(c.RefreshPeriod, 10);
  set("ReadCycle", 75);
  EXPECT_EQ(c.RefreshPeriod, 60);
  set("ReadCycle", 30.4);
  EXPECT_EQ(c.RefreshPeriod, 30);
  EXPECT_EQ(station.nm.display.GraphSpanDesc.Caption, "06 h 00 m 00 s");  // 30 s x 6 x 120
  set("FileSaveFrequency", 3.9);
  EXPECT_EQ(c.SaveFreq, 3);
  set("FileSaveFrequency", -2);
  EXPECT_EQ(c.SaveFreq, 1);
  set("NoConsecutiveRS232Errors", 0);
  EXPECT_EQ(c.UnknownRS232NoError, 1);
  // The correction factors keep what was written, beyond the dialog's range.
  set("TempFactorK5", 200);
  EXPECT_EQ(c.CloudTempK5, 200);
  client.Set("TempFactorON", false);
  EXPECT_FALSE(station.nm.display.CloudTempFactorFields.Visible);
  client.Set("TempFactorON", true);
  EXPECT_TRUE(station.nm.display.CloudTempFactorFields.Visible);

  // The brightness graph is the day graph; the temperature graph has a third colour.
  client.Set("GraphLabelColorBrightness", 0x0000FF);
  client.Set("GraphBackColorTemp", 0x123456);
  EXPECT_EQ(c.GraphColorDay[0], 0x0000FFu);
  EXPECT_EQ(c.GraphColorTemp[2], 0x123456u);
  // Without a window the position is only kept.
  client.Set("WindowLeft", 240);
  EXPECT_EQ(client.Get("WindowLeft").toInt(), 240);
  EXPECT_EQ(client.Get("WindowTop").toInt(), 0);
  client.Call("WindowMinimize");
  EXPECT_TRUE(station.nm.display.mPopRestore.Enabled);
}

}  // namespace
}  // namespace nbx
