#include <gtest/gtest.h>

#include <cmath>

#include "sensors/heater.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

// The station and the box's rain plate on virtual time: the plate (20 degrees
// over the air at full duty, a minute's time constant) answers the "P" commands.
class HeaterClosedLoop : public ::testing::Test {
 protected:
  void StartAt(double airCelsius) {
    st.box.readings.humidityTemp = airCelsius;  // the station's ambient
    st.box.readings.plate = {true, airCelsius, airCelsius, 20, 60, false, 3};
    Wet(false);
    st.StartAndRunFirstCycles();
  }
  // The condition is set as well: the classification is not this test's subject.
  void Wet(bool wet) {
    st.box.readings.plate.wet = wet;
    st.box.readings.rainFrequency = wet ? 3000 : 3300;
    st.nm.state.NBX_RainCondition = wet ? 2 : 1;
  }
  // The largest distance of the plate from its target over `minutes`.
  double WorstError(int minutes) {
    double worst = 0;
    for (int cycle = 0; cycle < minutes * 6; ++cycle) {
      st.RunPeriods(1);
      worst = std::max(worst, std::abs(st.nm.state.Value_RainTemp - HeaterTarget(st.nm)));
    }
    return worst;
  }
  // Runs until the impulse state leaves `state`; the seconds it took.
  double SecondsIn(int state) {
    const std::int64_t from = st.time.NowMs();
    while (st.nm.state.HeatImpulseState == state && st.time.NowMs() - from < 3600000) st.RunPeriods(1);
    return static_cast<double>(st.time.NowMs() - from) / 1000;
  }
  test::SimStation st;
};

TEST_F(HeaterClosedLoop, AColdNightHoldsThePlateInTheDeadBandOfItsTarget) {
  StartAt(-5);
  st.RunPeriods(6 * 20);  // the plate comes up from the air's -5 to the lowest target, 0
  EXPECT_LE(WorstError(60), 0.3 + 1e-9);
  EXPECT_NEAR(st.box.readings.plate.celsius, 0, 0.4);
  EXPECT_NEAR(st.box.readings.heaterDuty / 1023.0, 5.0 / 20, 0.03);
}

TEST_F(HeaterClosedLoop, AWetPlateIsDriedByAnImpulseAndReturnsToNormal) {
  const Config& c = st.nm.config;
  const SiteState& s = st.nm.state;
  StartAt(5);
  st.RunPeriods(6 * 15);
  Wet(true);
  // The impulse cycle passes with the plate held at its normal target.
  EXPECT_NEAR(SecondsIn(1), c.HeatImpCycle, c.RefreshPeriod);
  EXPECT_EQ(s.HeatImpulseState, 2);
  SecondsIn(2);  // warming up to ambient plus the impulse excess
  EXPECT_EQ(s.HeatImpulseState, 3);
  EXPECT_GE(s.Value_RainTemp, s.Value_Temp + c.HeatImpTemp);
  Wet(false);  // the heat has driven the water off
  EXPECT_NEAR(SecondsIn(3), c.HeatImpDuration + c.RefreshPeriod / 2.0, c.RefreshPeriod / 2.0);
  EXPECT_GT(s.Value_RainTemp, s.Value_Temp + c.HeatImpTemp);  // held up to the end
  st.RunPeriods(6 * 15);
  EXPECT_LE(WorstError(15), 0.3 + 1e-9);
  EXPECT_EQ(s.HeatImpulseState, 1);  // read dry at the end: no further impulse
}

}  // namespace
}  // namespace nbx
