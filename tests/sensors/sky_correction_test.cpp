#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "logic_fixture.h"
#include "sensors/factor_graph.h"
#include "sensors/raw_conversions.h"
#include "sensors/sky_correction.h"

namespace nbx {
namespace {

class SkyCorrectionTest : public test::LogicFixture {
 protected:
  // The corrected sky of one cycle: the infrared reading, in degrees Celsius, at this ambient.
  double Sky(double skyCelsius, double ambient) {
    Samples(nm.state.SamplesSkyIR, std::vector<double>(3, skyCelsius * 100));
    nm.state.Value_Temp = ambient;
    ReadSkyTemp(nm);
    return nm.state.Value_Cloud;
  }
};

TEST_F(SkyCorrectionTest, DefaultModelAndWhatBypassesIt) {
  EXPECT_NEAR(SkyCorrection(nm, 0), -0.04, 1e-12);
  EXPECT_NEAR(Sky(-15, 20), -15 - (6.6 + 0.04 * std::exp(2.0)), 1e-9);
  // No reading (900 and above) passes unchanged whatever the coefficients.
  nm.config.CloudTempK4 = 1e6;
  for (double missing : {998.0, 900.0}) EXPECT_EQ(Sky(missing, 20), missing);
  // The switch off: the sky as read, even with coefficients that break the model.
  ToggleCloudTempFactor(nm);
  EXPECT_FALSE(nm.display.CloudTempFactorFields.Visible);
  EXPECT_DOUBLE_EQ(Sky(-15, 20), -15);
}

TEST_F(SkyCorrectionTest, LowTemperatureTermLinearWithinOneDegreeLogarithmicBeyond) {
  // The term alone, centred on 5 degrees: within a degree only K6's sign counts, then the logarithm.
  const double cases[][3] = {// K6, ambient, model
                             {20, 5, 0},    {20, 4.25, 0.75}, {5, 5.5, -0.5}, {-5, 5.5, 0.5},
                             {20, 6, -0.6}, {20, 4, 0.6},     {20, -95, 4.6}};
  for (const auto& [k6, ambient, model] : cases)
    EXPECT_NEAR(SkyModelCelsius({0, 50, 0, 100, 100, k6, 30}, ambient), model, 1e-12) << k6 << " " << ambient;
}

TEST_F(SkyCorrectionTest, FahrenheitScalesTheCorrectionByNineFifthsOnly) {
  const double celsius = Sky(-12, 14);
  nm.config.UnitTempStr = "F";
  EXPECT_NEAR(Sky(-12, 14 * 9.0 / 5 + 32), celsius * 9 / 5 + 32, 1e-9);
}

TEST_F(SkyCorrectionTest, CoefficientsThatBreakTheModelLeaveTheSkyAsItWas) {
  const double before = Sky(-15, 10);
  nm.config.CloudTempK4 = 1e6;  // the exponential overflows...
  EXPECT_EQ(Sky(-20, 10), before);
  nm.config.CloudTempK5 = 0;  // ...which fails even when raised to 0
  EXPECT_EQ(Sky(-20, 10), before);
  nm.config.CloudTempK4 = -1e6;  // 0 to a negative power
  nm.config.CloudTempK5 = -100;
  EXPECT_EQ(Sky(-20, 10), before);
  EXPECT_DOUBLE_EQ(nm.state.Value_CloudRaw, -20);
}

TEST(FactorDialog, ClampsWhatIsTypedAndScalesBothCurvesToMultiplesOfFive) {
  const SkyCoefficients clamped = ClampFactorDialog({33, 0, 4, 250, 200, 7, 3});
  EXPECT_EQ(std::tuple(clamped.K4, clamped.K5, ClampFactorDialog({33, 0, 4, 80, 150, 7, 3}).K4),
            std::tuple(100.0, 150.0, 80.0));

  SkyCoefficients edited;
  edited.K1 = 50;
  const FactorGraph g = ComputeFactorGraph(edited, {});
  ASSERT_FALSE(g.formulaError);
  EXPECT_EQ(g.ambient.front(), -25);
  double low = 1e9, high = -1e9;
  for (std::size_t i = 0; i < g.ambient.size(); ++i) {
    EXPECT_EQ(std::tuple(g.edited[i], g.reference[i]),
              std::tuple(SkyModelCelsius(edited, g.ambient[i]), SkyModelCelsius({}, g.ambient[i])));
    low = std::min({low, g.edited[i], g.reference[i]});
    high = std::max({high, g.edited[i], g.reference[i]});
  }
  EXPECT_TRUE(std::fmod(g.yMin, 5) == 0 && g.yMin <= low && g.yMin > low - 5);
  EXPECT_TRUE(std::fmod(g.yMax, 5) == 0 && g.yMax >= high && g.yMax < high + 5);
  edited.K4 = 1e6;
  EXPECT_TRUE(ComputeFactorGraph(edited, {}).formulaError);
}

}  // namespace
}  // namespace nbx
