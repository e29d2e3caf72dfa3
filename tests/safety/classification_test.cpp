#include <gtest/gtest.h>

#include <tuple>

#include "core/nimbometer.h"
#include "safety/conditions.h"
#include "safety/families.h"

namespace nbx {
namespace {

// On a fresh installation's configuration, after a whole cycle: the health signal follows the counters.
class Classification : public ::testing::Test {
 public:
  Classification() { nm.state.GoodCycleSinceStart = true; }
  // Puts `v` where the family's sensor stage would, and classifies it.
  Condition Classify(Family family, double v) {
    const std::pair<double SiteState::*, void (*)(Nimbometer&)> stages[] = {
        {&SiteState::Value_Cloud, UpdateCloudCondition},
        {&SiteState::Value_Rain, UpdateRainCondition},
        {&SiteState::Value_Wind, UpdateWindCondition},
        {&SiteState::Value_Day, UpdateDayCondition},
        {&SiteState::Value_HumidityRel, UpdateHumidityCondition},
        {&SiteState::Value_RelPressure, UpdatePressureCondition}};
    const auto& [value, update] = stages[static_cast<int>(family)];
    nm.state.*value = v;
    update(nm);
    return ConditionOf(nm.state, family);
  }
  Condition Cloud(double v) { return Classify(Family::Cloud, v); }
  Condition Rain(double v) { return Classify(Family::Rain, v); }
  Condition Day(double v) { return Classify(Family::Day, v); }
  Condition Wind(double wind, double gust) {
    nm.state.Value_Gust = gust;
    return Classify(Family::Wind, wind);
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
  const struct {
    Family family;
    double value;
    Condition expected;
  } cases[] = {
      {Family::Cloud, -5, 1},        {Family::Cloud, -4.99, 2},   {Family::Cloud, 0, 2},
      {Family::Cloud, 0.01, 3},      {Family::Rain, 3200, 1},     {Family::Rain, 3199.9, 2},
      {Family::Rain, 2800, 2},       {Family::Rain, 2799.9, 3},   {Family::Rain, 0, 3},
      {Family::Rain, 9000, 1},       {Family::Day, 2100, 1},      {Family::Day, 2099, 2},
      {Family::Day, 6, 2},           {Family::Day, 5.9, 3},       {Family::Humidity, 50, 1},
      {Family::Humidity, 50.1, 2},   {Family::Humidity, 100, 3},  {Family::Humidity, 100.1, 0},
      {Family::Pressure, 799.9, 0},  {Family::Pressure, 800, 1},  {Family::Pressure, 1030, 2},
      {Family::Pressure, 1199.9, 3}, {Family::Pressure, 1200, 0},
  };
  nm.state.AmbientTempValid = true;
  nm.state.HumidityPresent = nm.state.PressurePresent = 1;
  for (const auto& c : cases) EXPECT_EQ(Classify(c.family, c.value), c.expected) << c.value;

  nm.config.ColorCloud[2] = {"Nuvoloso", 0x123456};
  Cloud(12.345);
  ExpectBar(nm.display.BarCloud, "Nuvoloso", 0x123456, "12.3 \u00B0C");
  EXPECT_EQ(ConditionDescription(nm, Family::Cloud), "Nuvoloso");
  Classify(Family::Humidity, 49.4);
  ExpectBar(nm.display.BarRH, "Dry", nm.config.ColorHumidity[0].BackColor, "RH 49%");
  Classify(Family::Pressure, 1250);
  ExpectBar(nm.display.BarAtmPres, "Unknown", nm.config.LblUnknowColor, "1250.0 HPa");
}

TEST_F(Classification, CloudTurnsUnknownOnTheThirdBadCycleAndHoldsItsCount) {
  for (int cycle = 1; cycle <= 5; ++cycle) {  // classified as it reads for two cycles
    EXPECT_EQ(Cloud(30), cycle <= 2 ? 3 : 0) << cycle;
    EXPECT_EQ(nm.state.CloudUnknownCount, std::min(cycle, 3)) << cycle;
    EXPECT_EQ(SecondsSinceGoodData(nm), cycle <= 2 ? 3 : 1000) << cycle;
  }
  ExpectBar(nm.display.BarCloud, "Unknown", nm.config.LblUnknowColor, "30.0 \u00B0C");
  EXPECT_EQ(Cloud(-20), 1);
  EXPECT_EQ(nm.state.CloudUnknownCount, 0);
  EXPECT_EQ(SecondsSinceGoodData(nm), 3);
}

TEST_F(Classification, RainAndDayKeepTheirClassUntilUnknownOrShowDisable) {
  EXPECT_EQ(Rain(2500), 3);
  for (int cycle = 0; cycle < 3; ++cycle)
    EXPECT_EQ(Rain(0), 3) << "the Unknown threshold itself is a reading";
  for (Condition kept : {3, 3, 0}) EXPECT_EQ(Rain(-1), kept);  // no limit holds: kept two cycles
  EXPECT_EQ(Day(10), 2);
  EXPECT_EQ(Day(-5), 2);
  for (Condition kept : {1, 1, 0}) EXPECT_EQ(Day(60000), kept);
  EXPECT_EQ(nm.display.BarDay[1].Caption, "60000 (K)");
  // "Disable": the first class on grey bars, never Unknown, however long.
  nm.config.DisableUnknownRain = nm.config.DisableUnknownDay = 1;
  nm.config.UnknowRainLT = 100;
  for (int cycle = 0; cycle < 5; ++cycle) EXPECT_EQ(std::tuple(Rain(40), Day(70000)), std::tuple(1, 1));
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
  for (Condition kept : {3, 3, 0}) EXPECT_EQ(Wind(1000, 0), kept);  // above the last limit
  EXPECT_EQ(d.BarWindSpeed[2].Caption, "Unknown");
  EXPECT_EQ(Wind(2, 3), 1);
  for (int cycle = 0; cycle < 4; ++cycle) EXPECT_EQ(Wind(5, 1200), 1);  // a gust alone never counts
}

TEST_F(Classification, HumidityAndPressureNeedALiveAmbientAndTheirSensor) {
  nm.state.NBX_HumidityCondition = nm.state.NBX_PressureCondition = 2;
  nm.state.HumidityPresent = nm.state.PressurePresent = 1;
  // No live ambient temperature, then no reading: nothing changes.
  for (const auto& [ambient, humidity, pressure] : {std::tuple{false, 99.0, 900.0}, {true, -1.0, -1.0}}) {
    nm.state.AmbientTempValid = ambient;
    EXPECT_EQ(std::tuple(Classify(Family::Humidity, humidity), Classify(Family::Pressure, pressure)),
              std::tuple(2, 2));
  }
  nm.state.PressurePresent = 0;
  EXPECT_EQ(Classify(Family::Pressure, 1100), 2);
  EXPECT_TRUE(nm.display.BarAtmPres[1].Caption.empty());
  EXPECT_EQ(nm.display.BarAtmPres[2].BackColor, colours::PanelGrey);
}

}  // namespace
}  // namespace nbx
