#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "device/command_queue.h"
#include "logic_fixture.h"
#include "sensors/heater.h"

namespace nbx {
namespace {

// The heater law alone: ambient 10, so a target of 15 by the default support points.
class Heater : public test::LogicFixture {
 protected:
  Heater() { nm.state.Value_Temp = 10; }
  // One step `afterMs` after the last; the command it sent, or "".
  std::string Step(std::int64_t afterMs = 10000) {
    time.RunFor(afterMs);
    link.written.clear();
    ClearCommandQueue(nm);  // the last command has had its reply
    HeaterStep(nm);
    return link.written.empty() ? "" : link.written.back();
  }
  // The box takes the duty and the next "Q" frame reads it back.
  void BoxTakes(const std::string& command) {
    if (command.size() == 6) nm.state.Value_RainHeat = std::stoi(command.substr(1, 4)) / 1023.0;
  }
  double Target(double ambient) {
    nm.state.Value_Temp = ambient;
    return HeaterTarget(nm);
  }
};

TEST_F(Heater, TargetAndGain) {
  EXPECT_EQ(Target(-10), 0);  // held at the low point, not ambient plus delta
  EXPECT_EQ(Target(30), 34);
  EXPECT_EQ(Target(38), 40);  // 42 cut to 40
  nm.state.HeatImpulseState = 2;
  EXPECT_EQ(Target(35), 45);  // an impulse is not capped
  nm.state.HeatImpulseState = 1;
  nm.config.HeatTemp = {5, 5};
  EXPECT_EQ(Target(45), 45);

  const double gains[][2] = {{0.3, 0},    {-0.31, 0.01}, {0.51, 0.02}, {-1.5, 0.04},
                             {2.5, 0.06}, {3.01, 0.1},   {-8, 0.2},    {8.01, 0.4}};
  for (const auto& [error, gain] : gains) EXPECT_EQ(HeaterGain(nm, error), gain) << error;
  nm.state.HeatImpulseState = 2;  // warming up: straight to full when below
  nm.state.Value_RainHeat = 0.3;
  EXPECT_DOUBLE_EQ(HeaterGain(nm, -0.1), 0.7);
  EXPECT_EQ(HeaterGain(nm, 0.5), 0);
}

TEST_F(Heater, AColdPlateRisesByTheGainAtMostEveryFiveSeconds) {
  nm.state.Value_RainTemp = 15 - 9;
  std::string sent = Step();
  EXPECT_EQ(std::tuple(sent, nm.display.LblHeating.Caption), std::tuple("P0409!", "Heating UP"));
  BoxTakes(sent);
  EXPECT_EQ(Step(5000), "");  // not above 5000 ms: no change, and above the minimum
  BoxTakes(sent = Step(1));
  EXPECT_EQ(sent, "P0818!");
  EXPECT_EQ(Step(5001), "P1023!");  // at most full
}

TEST_F(Heater, MovingPlatesAndTheDeadBandGetNoChangeButTheMinimumHolds) {
  SiteState& s = nm.state;
  s.Value_RainHeat = 0.5;
  s.Value_RainTemp = 20;  // 5 above: gain 0.2
  EXPECT_EQ(std::tuple(Step(), nm.display.LblHeating.Caption), std::tuple("P0307!", "Heating DOWN"));
  s.Value_RainTemp = 19;  // above target but already cooling
  EXPECT_EQ(Step(), "");
  s.Value_RainTemp = 10;
  Step();
  s.Value_RainTemp = 11;  // below target but already warming
  EXPECT_EQ(Step(), "");
  s.Value_RainTemp = 15 - 0.2;  // in the dead band the law is quiet...
  EXPECT_EQ(Step(), "");
  s.Value_RainHeat = 0.1;  // ...but a duty at the minimum is sent again
  EXPECT_EQ(Step(), "P0102!");
  s.Value_RainTemp = 20;  // coming down, not below the minimum
  s.Value_RainHeat = 0.15;
  EXPECT_EQ(Step(), "P0102!");
  s.Value_RainTemp = 6;  // the example: 0.55 plus 0.4, 971.85 rounded
  s.Value_RainHeat = 0.55;
  EXPECT_EQ(Step(), "P0972!");
}

TEST_F(Heater, ImpulseComesACycleAfterTheWetReadingAndNeedsItsThreeSettings) {
  SiteState& s = nm.state;
  nm.state.Value_RainTemp = 15;
  s.NBX_RainCondition = 3;
  nm.config.HeatImpCycle = 0;
  for (int i = 0; i < 100; ++i) Step(60000);
  EXPECT_EQ(s.HeatImpulseState, 1);

  s.NBX_RainCondition = 1;
  Step();
  nm.config.HeatImpCycle = 600;
  Step();  // dry: the impulse clock stands
  s.NBX_RainCondition = 3;
  Step(1000);               // wet once...
  s.NBX_RainCondition = 1;  // ...and dry again
  Step(599000);
  EXPECT_EQ(s.HeatImpulseState, 1);
  EXPECT_EQ(std::tuple(Step(1000), nm.display.LblHeating.Caption, nm.display.LblHeating.ForeColor),
            std::tuple("P1023!", "Heat Impulse - Warming up", 255u));  // warming up at full duty
  s.Value_RainTemp = 20;                                               // ambient plus 10
  Step();
  EXPECT_EQ(nm.display.LblHeating.Caption, "Heat Impulse - Holding for 60s");
  // Holding, then back to normal; the condition read afresh at the end was dry.
  for (const auto& [afterMs, state] : {std::tuple{59000, 3}, {1000, 1}, {700000, 1}}) {
    Step(afterMs);
    EXPECT_EQ(s.HeatImpulseState, state) << afterMs;
  }
}

TEST_F(Heater, RemoteOnlyShowsTheMastersDuty) {
  nm.config.NMRole = {false, true};
  nm.state.Value_RainHeat = 512 / 1023.0;
  EXPECT_EQ(std::tuple(Step(), nm.display.LblRainH.Caption), std::tuple("", "512.0"));
}

// The box's rain plate (20 degrees over the air at full duty, a minute's time constant) on virtual time.
TEST(HeaterClosedLoop, AColdNightHoldsThePlateInTheDeadBandOfItsTarget) {
  test::SimStation st;
  st.box.readings.humidityTemp = -5;  // the station's ambient
  st.box.readings.plate = {true, -5, -5, 20, 60, false, 3};
  st.box.readings.rainFrequency = 3300;
  st.StartAndRunFirstCycles();
  st.RunPeriods(6 * 20);  // the plate comes up from the air's -5 to the lowest target, 0
  for (int cycle = 0; cycle < 6 * 60; ++cycle) {
    st.RunPeriods(1);
    ASSERT_LE(std::abs(st.nm.state.Value_RainTemp - HeaterTarget(st.nm)), 0.3 + 1e-9) << cycle;
  }
  EXPECT_NEAR(st.box.readings.plate.celsius, 0, 0.4);
  EXPECT_NEAR(st.box.readings.heaterDuty / 1023.0, 5.0 / 20, 0.03);
}

}  // namespace
}  // namespace nbx
