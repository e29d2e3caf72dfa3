#include <gtest/gtest.h>

#include "core/nimbometer.h"
#include "safety/conditions.h"

namespace nbx {
namespace {

// The classification on its own: a fresh installation's configuration, the
// values put straight into the state as the sensor stages would.
class Classification : public ::testing::Test {
 public:
  Condition Cloud(double v) {
    nm.state.Value_Cloud = v;
    UpdateCloudCondition(nm);
    return nm.state.NBX_CloudCondition;
  }
  Condition Rain(double v) {
    nm.state.Value_Rain = v;
    UpdateRainCondition(nm);
    return nm.state.NBX_RainCondition;
  }
  Condition Day(double v) {
    nm.state.Value_Day = v;
    UpdateDayCondition(nm);
    return nm.state.NBX_DayCondition;
  }
  Condition Wind(double wind, double gust) {
    nm.state.Value_Wind = wind;
    nm.state.Value_Gust = gust;
    UpdateWindCondition(nm);
    return nm.state.NBX_WindCondition;
  }
  Condition Humidity(double v) {
    nm.state.Value_HumidityRel = v;
    UpdateHumidityCondition(nm);
    return nm.state.NBX_HumidityCondition;
  }
  Condition Pressure(double v) {
    nm.state.Value_RelPressure = v;
    UpdatePressureCondition(nm);
    return nm.state.NBX_PressureCondition;
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
  struct Case {
    const char* family;
    Condition (Classification::*classify)(double);
    double value;
    Condition expected;
  };
  nm.state.AmbientTempValid = true;
  nm.state.HumidityPresent = 1;
  nm.state.PressurePresent = 1;
  const Case cases[] = {
      {"cloud", &Classification::Cloud, -5, 1},      {"cloud", &Classification::Cloud, -4.99, 2},
      {"cloud", &Classification::Cloud, 0, 2},       {"cloud", &Classification::Cloud, 0.01, 3},
      {"rain", &Classification::Rain, 3200, 1},      {"rain", &Classification::Rain, 3199.9, 2},
      {"rain", &Classification::Rain, 2800, 2},      {"rain", &Classification::Rain, 2799.9, 3},
      {"rain", &Classification::Rain, 0, 3},         {"rain", &Classification::Rain, 9000, 1},
      {"day", &Classification::Day, 2100, 1},        {"day", &Classification::Day, 2099, 2},
      {"day", &Classification::Day, 6, 2},           {"day", &Classification::Day, 5.9, 3},
      {"day", &Classification::Day, 0, 3},           {"humidity", &Classification::Humidity, 50, 1},
      {"humidity", &Classification::Humidity, 50.1, 2}, {"humidity", &Classification::Humidity, 80, 2},
      {"humidity", &Classification::Humidity, 100.0, 3}, {"humidity", &Classification::Humidity, 100.1, 0},
      {"pressure", &Classification::Pressure, 799.9, 0}, {"pressure", &Classification::Pressure, 800.0, 1},
      {"pressure", &Classification::Pressure, 980, 1},  {"pressure", &Classification::Pressure, 1030, 2},
      {"pressure", &Classification::Pressure, 1199.9, 3}, {"pressure", &Classification::Pressure, 1200.0, 0},
  };
  for (const Case& c : cases) EXPECT_EQ((this->*c.classify)(c.value), c.expected) << c.family << " " << c.value;
}

TEST_F(Classification, BarsShowTheClassWordColourAndValue) {
  nm.config.ColorCloud[2] = {"Nuvoloso", 0x123456};
  Cloud(12.345);
  ExpectBar(nm.display.BarCloud, "Nuvoloso", 0x123456, "12.3 \u00B0C");
  Rain(2999.6);
  ExpectBar(nm.display.BarRain, "Wet", nm.config.ColorRain[1].BackColor, "3000");
  nm.state.AmbientTempValid = true;
  nm.state.HumidityPresent = 1;
  nm.state.PressurePresent = 1;
  Humidity(49.4);
  ExpectBar(nm.display.BarRH, "Dry", nm.config.ColorHumidity[0].BackColor, "RH 49%");
  Pressure(998.44);
  ExpectBar(nm.display.BarAtmPres, "Normal", nm.config.ColorPressure[1].BackColor, "998.4 HPa");
  Pressure(1250);
  ExpectBar(nm.display.BarAtmPres, "Unknown", nm.config.LblUnknowColor, "1250.0 HPa");
  EXPECT_EQ(ConditionDescription(nm, Family::Cloud), "Nuvoloso");
  EXPECT_EQ(ConditionDescription(nm, Family::Pressure), "Unknown");
}

TEST_F(Classification, CloudTurnsUnknownOnTheThirdBadCycleAndHoldsItsCount) {
  // Two bad readings still classify (as Overcast); the health signal is fine.
  for (int cycle = 1; cycle <= 2; ++cycle) {
    EXPECT_EQ(Cloud(30), 3) << cycle;
    EXPECT_EQ(nm.state.CloudUnknownCount, cycle);
    EXPECT_EQ(SecondsSinceGoodData(nm), 3) << cycle;
  }
  for (int cycle = 3; cycle <= 6; ++cycle) {
    EXPECT_EQ(Cloud(31), 0) << cycle;
    EXPECT_EQ(nm.state.CloudUnknownCount, 3) << cycle;
    EXPECT_EQ(SecondsSinceGoodData(nm), 1000) << cycle;
  }
  ExpectBar(nm.display.BarCloud, "Unknown", nm.config.LblUnknowColor, "31.0 \u00B0C");
  EXPECT_EQ(Cloud(-20), 1);
  EXPECT_EQ(nm.state.CloudUnknownCount, 0);
  EXPECT_EQ(SecondsSinceGoodData(nm), 3);
}

TEST_F(Classification, RainBelowItsUnknownLimitKeepsTheClassUntilTheCountIsReached) {
  EXPECT_EQ(Rain(2500), 3);
  EXPECT_EQ(Rain(-1), 3);  // no limit holds: kept
  EXPECT_EQ(Rain(-1), 3);
  EXPECT_EQ(Rain(-1), 0);
  EXPECT_EQ(nm.display.BarRain[2].Caption, "Unknown");
  EXPECT_EQ(SecondsSinceGoodData(nm), 1000);
  // A reading above 8000 alone never counts up: it is classified.
  EXPECT_EQ(Rain(8500), 1);
  EXPECT_EQ(nm.state.RainUnknownCount, 0);

  // "Disable": the first class on grey bars, never Unknown, however long.
  nm.config.DisableUnknownRain = 1;
  nm.config.UnknowRainLT = 100;
  for (int cycle = 0; cycle < 6; ++cycle) EXPECT_EQ(Rain(40), 1) << cycle;
  ExpectBar(nm.display.BarRain, "Disable", colours::PanelGrey, "40");
  EXPECT_EQ(SecondsSinceGoodData(nm), 3);
}

TEST_F(Classification, DayAboveItsUnknownLimitTurnsUnknownOrDisabled) {
  EXPECT_EQ(Day(10), 2);
  EXPECT_EQ(Day(-5), 2);  // below every limit: kept
  EXPECT_EQ(Day(60000), 1);
  EXPECT_EQ(Day(60000), 1);
  EXPECT_EQ(Day(60000), 0);
  EXPECT_EQ(Day(70000), 0);
  EXPECT_EQ(nm.state.DayUnknownCount, 3);
  EXPECT_EQ(nm.display.BarDay[1].Caption, "70000 (K)");
  nm.config.DisableUnknownDay = 1;
  EXPECT_EQ(Day(70000), 1);
  ExpectBar(nm.display.BarDay, "Disable", colours::PanelGrey, "70000 (K)");
  nm.state.SQMPresent = true;
  Day(19.567);
  EXPECT_EQ(nm.display.BarDay[1].Caption, "19.57");
}

TEST_F(Classification, WindClassComesFromTheGustNeverBelowTheMean) {
  Display& d = nm.display;
  EXPECT_EQ(Wind(3, 5), 1);  // a gust equal to the first limit is Calm
  ExpectBar(d.BarWindSpeed, "Calm", nm.config.ColorWind[0].BackColor, "3.0");
  EXPECT_EQ(d.BarWindGust.Caption, "5.0");
  EXPECT_EQ(Wind(7, 2), 2);  // the gust is raised to the mean
  EXPECT_DOUBLE_EQ(nm.state.Value_Gust, 7);
  EXPECT_EQ(d.BarWindGust.BackColor, nm.config.ColorWind[1].BackColor);
  EXPECT_EQ(Wind(4, 11), 3);  // the speed bar follows the mean, the class the gust
  EXPECT_EQ(d.BarWindSpeed[2].Caption, "Calm");
  EXPECT_EQ(d.BarWindGust.BackColor, nm.config.ColorWind[2].BackColor);
  // Above the last limit: the class stays for two cycles, then Unknown.
  EXPECT_EQ(Wind(1000, 0), 3);
  EXPECT_EQ(Wind(1000, 0), 3);
  EXPECT_EQ(Wind(1000, 0), 0);
  ExpectBar(d.BarWindSpeed, "Unknown", nm.config.LblUnknowColor, "1000.0");
  // A gust alone above the limit never counts up.
  EXPECT_EQ(Wind(2, 3), 1);
  for (int cycle = 0; cycle < 4; ++cycle) EXPECT_EQ(Wind(5, 1200), 1) << cycle;
}

TEST_F(Classification, HumidityAndPressureNeedALiveAmbientAndTheirSensor) {
  nm.state.NBX_HumidityCondition = 2;
  nm.state.NBX_PressureCondition = 2;
  // No live ambient temperature: nothing happens at all.
  nm.state.HumidityPresent = 1;
  nm.state.PressurePresent = 1;
  EXPECT_EQ(Humidity(99), 2);
  EXPECT_EQ(Pressure(900), 2);
  EXPECT_TRUE(nm.display.BarRH[1].Caption.empty());
  // A missing sensor or a -1 reading blanks the bar and keeps the condition.
  nm.state.AmbientTempValid = true;
  Humidity(30);
  nm.state.HumidityPresent = 0;
  EXPECT_EQ(Humidity(99), 1);
  for (const Label& label : nm.display.BarRH) {
    EXPECT_TRUE(label.Caption.empty());
    EXPECT_EQ(label.BackColor, colours::PanelGrey);
  }
  nm.state.HumidityPresent = 1;
  EXPECT_EQ(Humidity(-1.0), 1);
  EXPECT_EQ(Pressure(-1.0), 2);
  nm.state.PressurePresent = -1;
  EXPECT_EQ(Pressure(1100), 2);
}

}  // namespace
}  // namespace nbx
