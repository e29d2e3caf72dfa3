#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "logic_fixture.h"
#include "sensors/humidity_pressure.h"

namespace nbx {
namespace {

// Both sensors answering, a live ambient of 20 degrees, 50 % and 1005 hPa.
class HumidityPressure : public test::LogicFixture {
 protected:
  HumidityPressure() {
    SiteState& s = nm.state;
    s.HumidityPresent = s.PressurePresent = 1;
    s.AmbientTempValid = true;
    s.Value_AbsPressure = 1005;
    Humidity(50, 20, 20);
  }
  void Humidity(double frame, double sensorCelsius, double ambient) {
    nm.state.HumidityRelFrame = nm.state.Value_HumidityRel = frame;
    nm.state.Value_HumSensTemp = sensorCelsius;
    nm.state.Value_Temp = ambient;
  }
};

TEST_F(HumidityPressure, HumidityReferredToTheAmbientWithin5And95WithoutCompounding) {
  SiteState& s = nm.state;
  Humidity(50, 12, 10);
  for (int i = 0; i < 5; ++i) RecomputeDewPoint(nm);  // after each frame and ambient choice
  EXPECT_NEAR(s.Value_HumidityRel, 50 * std::exp(2 * 0.06235398), 1e-12);
  for (const auto& [frame, sensor, ambient, clamped] : {std::tuple{50, 30, 10, 95}, {10, -10, 30, 5}}) {
    Humidity(frame, sensor, ambient);  // about 174 %, then nearly nothing
    CorrectHumidity(nm);
    EXPECT_EQ(s.Value_HumidityRel, clamped);
  }
}

TEST_F(HumidityPressure, DewPointInTheDisplayUnitAndBlankWithoutOne) {
  SiteState& s = nm.state;
  RecomputeDewPoint(nm);
  EXPECT_NEAR(s.Value_DewPointT, 9.27, 0.005);
  EXPECT_EQ(nm.display.BarDewPoint.Caption + " " + nm.display.BarDewPointDelta[1].Caption,
            "9.3 \u00B0C 10.7 \u00B0C");
  nm.config.UnitTempStr = "F";
  s.Value_Temp = 68;
  RecomputeDewPoint(nm);
  EXPECT_NEAR(s.Value_DewPointT, 9.27 * 9 / 5 + 32, 0.01);

  // Each missing condition leaves the values and blanks the dew point.
  auto unchanged = [&](const char* why) {
    s.Value_DewPointT = -3;
    s.Value_RelPressure = 999;
    RecomputeDewPoint(nm);
    EXPECT_EQ(std::tuple(s.Value_DewPointT, s.DewPointValid, nm.display.BarDewPoint.Caption),
              std::tuple(-3.0, false, ""))
        << why;
  };
  nm.config.UnitTempStr = "C";
  s.Value_Temp = 61;
  unchanged("ambient above 60");
  EXPECT_EQ(s.Value_RelPressure, 999);
  s.Value_Temp = 20;
  s.AmbientTempValid = false;
  unchanged("no live ambient");
  s.AmbientTempValid = true;
  s.HumidityRelFrame = s.Value_HumidityRel = 108;  // a wrong frame stays for this cycle
  unchanged("humidity above 100");
  s.HumidityPresent = -1;  // assumed, no good frame yet
  unchanged("sensor not confirmed");
  EXPECT_NE(s.Value_RelPressure, 999);  // pressure goes its own way
}

TEST_F(HumidityPressure, PressureReducedToSeaLevelFromTheSitesAltitude) {
  SiteState& s = nm.state;
  s.Value_Temp = 10;
  RecomputeRelPressure(nm);  // the default 100 m: about 12 hPa more
  EXPECT_NEAR(s.Value_RelPressure, 1017.19, 0.01);
  nm.config.AASL = 0;
  RecomputeRelPressure(nm);
  EXPECT_DOUBLE_EQ(s.Value_RelPressure, 1005);
  nm.config.AASL = 1500;
  s.PressurePresent = -1;
  RecomputeRelPressure(nm);
  EXPECT_DOUBLE_EQ(s.Value_RelPressure, 1005);
}

}  // namespace
}  // namespace nbx
