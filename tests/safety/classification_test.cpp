#include <gtest/gtest.h>

#include "core/nimbometer.h"
#include "safety/conditions.h"

namespace nbx {
namespace {

// The classification on its own: a fresh installation's configuration, the
// values put into the state as the sensor stages would.
class Classification : public ::testing::Test {
 public:
  // A run that has read a cycle whole: the health signal follows the counters.
  Classification() { nm.state.GoodCycleSinceStart = true; }
  Condition Classify(double SiteState::*value, void (*update)(Nimbometer&), Condition SiteState::*result,
                     double v) {
    nm.state.*value = v;
    update(nm);
    return nm.state.*result;
  }
  Condition Cloud(double v) {
    return Classify(&SiteState::Value_Cloud, UpdateCloudCondition, &SiteState::NBX_CloudCondition, v);
  }
  Condition Rain(double v) {
    return Classify(&SiteState::Value_Rain, UpdateRainCondition, &SiteState::NBX_RainCondition, v);
  }
  Condition Day(double v) {
    return Classify(&SiteState::Value_Day, UpdateDayCondition, &SiteState::NBX_DayCondition, v);
  }
  Condition Humidity(double v) {
    return Classify(&SiteState::Value_HumidityRel, UpdateHumidityCondition, &SiteState::NBX_HumidityCondition,
                    v);
  }
  Condition Pressure(double v) {
    return Classify(&SiteState::Value_RelPressure, UpdatePressureCondition, &SiteState::NBX_PressureCondition,
                    v);
  }
  Condition Wind(double wind, double gust) {
    nm.state.Value_Gust = gust;
    return Classify(&SiteState::Value_Wind, UpdateWindCondition, &SiteState::NBX_WindCondition, wind);
  }
  static void ExpectBar(const Bar& bar, const std::string& word, Colour colour, const std::string& value) {
    EXPECT_EQ(bar[2].Caption, word);
    EXPECT_EQ(bar[0].Caption, word);
    EXPECT_EQ(bar[1].Caption, value);
    for (const Label& label : bar) EXPECT_EQ(label.BackColor, colour) << word;
  }

  Nimbometer nm;
};

TEST_F(Classification, EachFamilyHasItsOwnInclusiveAndExclusiveEdges) {
  using F = Condition (Classification::*)(double);
  const struct {
    F classify;
    double value;
    Condition expected;
  } cases[] = {
      {&Classification::Cloud, -5, 1},       {&Classification::Cloud, -4.99, 2},
      {&Classification::Cloud, 0, 2},        {&Classification::Cloud, 0.01, 3},
      {&Classification::Rain, 3200, 1},      {&Classification::Rain, 3199.9, 2},
      {&Classification::Rain, 2800, 2},      {&Classification::Rain, 2799.9, 3},
      {&Classification::Rain, 0, 3},         {&Classification::Rain, 9000, 1},
      {&Classification::Day, 2100, 1},       {&Classification::Day, 2099, 2},
      {&Classification::Day, 6, 2},          {&Classification::Day, 5.9, 3},
      {&Classification::Humidity, 50, 1},    {&Classification::Humidity, 50.1, 2},
      {&Classification::Humidity, 100, 3},   {&Classification::Humidity, 100.1, 0},
      {&Classification::Pressure, 799.9, 0}, {&Classification::Pressure, 800, 1},
      {&Classification::Pressure, 1030, 2},  {&Classification::Pressure, 1199.9, 3},
      {&Classification::Pressure, 1200, 0},
  };
  nm.state.AmbientTempValid = true;
  nm.state.HumidityPresent = nm.state.PressurePresent = 1;
  for (const auto& c : cases) EXPECT_EQ((this->*c.classify)(c.value), c.expected) << c.value;

  nm.config.ColorCloud[2] = {"Nuvoloso", 0x123456};
  Cloud(12.345);
  ExpectBar(nm.display.BarCloud, "Nuvoloso", 0x123456, "12.3 \u00B0C");
  EXPECT_EQ(ConditionDescription(nm, Family::Cloud), "Nuvoloso");
  Humidity(49.4);
  ExpectBar(nm.display.BarRH, "Dry", nm.config.ColorHumidity[0].BackColor, "RH 49%");
  Pressure(1250);
  ExpectBar(nm.display.BarAtmPres, "Unknown", nm.config.LblUnknowColor, "1250.0 HPa");
}

TEST_F(Classification, CloudTurnsUnknownOnTheThirdBadCycleAndHoldsItsCount) {
  for (int cycle = 1; cycle <= 2; ++cycle) {
    EXPECT_EQ(Cloud(30), 3) << cycle;  // still classified as it reads
    EXPECT_EQ(SecondsSinceGoodData(nm), 3) << cycle;
  }
  for (int cycle = 3; cycle <= 5; ++cycle) {
    EXPECT_EQ(Cloud(31), 0) << cycle;
    EXPECT_EQ(nm.state.CloudUnknownCount, 3) << cycle;
    EXPECT_EQ(SecondsSinceGoodData(nm), 1000) << cycle;
  }
  ExpectBar(nm.display.BarCloud, "Unknown", nm.config.LblUnknowColor, "31.0 \u00B0C");
  EXPECT_EQ(Cloud(-20), 1);
  EXPECT_EQ(nm.state.CloudUnknownCount, 0);
  EXPECT_EQ(SecondsSinceGoodData(nm), 3);
}

TEST_F(Classification, RainAndDayKeepTheirClassUntilUnknownOrShowDisable) {
  EXPECT_EQ(Rain(2500), 3);
  for (int cycle = 0; cycle < 3; ++cycle) EXPECT_EQ(Rain(0), 3) << "the Unknown threshold itself is a reading";
  EXPECT_EQ(Rain(-1), 3);  // no limit holds: kept
  EXPECT_EQ(Rain(-1), 3);
  EXPECT_EQ(Rain(-1), 0);
  EXPECT_EQ(Day(10), 2);
  EXPECT_EQ(Day(-5), 2);
  EXPECT_EQ(Day(60000), 1);
  EXPECT_EQ(Day(60000), 1);
  EXPECT_EQ(Day(60000), 0);
  EXPECT_EQ(nm.display.BarDay[1].Caption, "60000 (K)");
  // "Disable": the first class on grey bars, never Unknown, however long.
  nm.config.DisableUnknownRain = nm.config.DisableUnknownDay = 1;
  nm.config.UnknowRainLT = 100;
  for (int cycle = 0; cycle < 5; ++cycle) {
    EXPECT_EQ(Rain(40), 1);
    EXPECT_EQ(Day(70000), 1);
  }
  ExpectBar(nm.display.BarRain, "Disable", colours::PanelGrey, "40");
  EXPECT_EQ(nm.display.BarDay[2].Caption, "Disable");
  EXPECT_EQ(SecondsSinceGoodData(nm), 3);
}

TEST_F(Classification, WindClassComesFromTheGustNeverBelowTheMean) {
  Display& d = nm.display;
  EXPECT_EQ(Wind(3, 5), 1);  // a gust equal to the first limit is Calm
  ExpectBar(d.BarWindSpeed, "Calm", nm.config.ColorWind[0].BackColor, "3.0");
  EXPECT_EQ(Wind(7, 2), 2);  // the gust is raised to the mean
  EXPECT_EQ(d.BarWindGust.Caption, "7.0");
  EXPECT_EQ(Wind(4, 11), 3);  // the speed bar follows the mean, the class the gust
  EXPECT_EQ(d.BarWindSpeed[2].Caption, "Calm");
  EXPECT_EQ(d.BarWindGust.BackColor, nm.config.ColorWind[2].BackColor);
  EXPECT_EQ(Wind(1000, 0), 3);  // above the last limit: kept for two cycles
  EXPECT_EQ(Wind(1000, 0), 3);
  EXPECT_EQ(Wind(1000, 0), 0);
  EXPECT_EQ(d.BarWindSpeed[2].Caption, "Unknown");
  EXPECT_EQ(Wind(2, 3), 1);
  for (int cycle = 0; cycle < 4; ++cycle) EXPECT_EQ(Wind(5, 1200), 1);  // a gust alone never counts
}

TEST_F(Classification, HumidityAndPressureNeedALiveAmbientAndTheirSensor) {
  nm.state.NBX_HumidityCondition = nm.state.NBX_PressureCondition = 2;
  nm.state.HumidityPresent = nm.state.PressurePresent = 1;
  EXPECT_EQ(Humidity(99), 2);  // no live ambient temperature: nothing at all
  EXPECT_EQ(Pressure(900), 2);
  nm.state.AmbientTempValid = true;
  EXPECT_EQ(Humidity(-1.0), 2);
  EXPECT_EQ(Pressure(-1.0), 2);
  nm.state.PressurePresent = 0;
  EXPECT_EQ(Pressure(1100), 2);
  EXPECT_TRUE(nm.display.BarAtmPres[1].Caption.empty());
  EXPECT_EQ(nm.display.BarAtmPres[2].BackColor, colours::PanelGrey);
}

}  // namespace
}  // namespace nbx
