#include <gtest/gtest.h>

#include "logic_fixture.h"
#include "sensors/brightness.h"

namespace nbx {
namespace {

class Brightness : public test::LogicFixture {
 protected:
  double Day(int firmware, double ldrMean) {
    nm.state.FirmwareMajor = firmware;
    Samples(nm.state.SamplesLDR, std::vector<double>(3, ldrMean));
    ReadBrightness(nm);
    return nm.state.Value_Day;
  }
  double SkyQuality(double frequency) {
    nm.state.SQMPresent = true;
    Samples(nm.state.SamplesSQM, std::vector<double>(3, frequency));
    ReadBrightness(nm);
    return nm.state.Value_Day;
  }
};

TEST_F(Brightness, SkyQualityFromTheFrequencyWithItsTemperatureTerm) {
  nm.state.Value_Temp = 0;
  EXPECT_NEAR(SkyQuality(250000), 19.558, 1e-12);
  EXPECT_EQ(SkyQuality(0), 19.558);  // no frequency: the value stays
  // A tenth of the frequency takes off one gain; each degree adds 0.00212.
  nm.state.Value_Temp = 10;
  EXPECT_NEAR(SkyQuality(25000), 19.558 - 2.5 + 0.0212, 1e-12);
  // The literal 250000 counts, not the setting of the same meaning.
  nm.config.PulsesIn1Hz = 100000;
  nm.config.UnitTempStr = "F";
  nm.state.Value_Temp = 32;
  EXPECT_NEAR(SkyQuality(250000), 19.558, 1e-12);
  // Once the sky quality sensor has answered, it wins over the light resistor.
  EXPECT_NEAR(Day(6, 40000), 19.558, 1e-12);
}

TEST_F(Brightness, LightResistorScaleByFirmware) {
  nm.state.LDRPullupResistance = 56;
  EXPECT_DOUBLE_EQ(Day(5, 511.5), 56);  // the divider at half scale
  EXPECT_NEAR(Day(5, 1023), 56 * 1022, 1e-6);  // cut to 1022...
  EXPECT_NEAR(Day(5, 1030), 56 * 1022, 1e-6);  // ...up to 1030 included
  EXPECT_EQ(Day(5, 1030.5), 99999);            // out of range
  EXPECT_DOUBLE_EQ(Day(5, 0), 56.0 / 1022);
  EXPECT_EQ(Day(6, 40000), 10000);  // from firmware 6: 50000 less the count
  EXPECT_EQ(Day(6, 60000), 0);
  EXPECT_EQ(Day(7, 0), 50000);
  nm.config.NMRole = {false, true};  // a REMOTE keeps the master's value
  EXPECT_EQ(Day(6, 30000), 50000);
}

}  // namespace
}  // namespace nbx
