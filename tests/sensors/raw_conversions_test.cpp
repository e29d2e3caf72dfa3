#include <gtest/gtest.h>

#include <cmath>

#include "logic_fixture.h"
#include "sensors/raw_conversions.h"

namespace nbx {
namespace {

// Counts of a divider whose thermistor sits at `celsius`: the inverse of the
// Beta formula, worked out here independently of the program's code.
double CountsFor(double celsius, double pullUp, double r25, double beta) {
  const double r = r25 * std::exp(beta * (1.0 / (celsius + 273.15) - 1.0 / 298.15));
  return 1023.0 / (pullUp / r + 1.0);
}

class RawConversions : public test::LogicFixture {
 protected:
  // One conversion of three samples of `counts`.
  void Read(SampleArray& samples, double counts, void (*conversion)(Nimbometer&)) {
    Samples(samples, {counts, counts, counts});
    conversion(nm);
  }
};

TEST_F(RawConversions, ReferenceVoltageFromTheZenerOrFiveWithout) {
  nm.state.ZenerVoltage = 2.54;
  Read(nm.state.SamplesZener, 520, ReadReferenceVoltage);
  EXPECT_NEAR(nm.state.ReferenceVoltage, 1023 * 2.54 / 520, 1e-12);
  Read(nm.state.SamplesZener, 0, ReadReferenceVoltage);
  EXPECT_EQ(nm.state.ReferenceVoltage, 5);
  EXPECT_EQ(nm.display.LblVref.Caption, "Error");
}

TEST_F(RawConversions, AmbientThermistorOfOldFirmwareWithItsClampsAndSentinel) {
  SiteState& s = nm.state;
  s.FirmwareMajor = 2;
  Samples(s.SamplesAmbient, std::vector<double>(5, CountsFor(10, 9.9, 10, 3811)));
  ReadAmbientTemp(nm);
  EXPECT_NEAR(s.Value_Temp, 10, 1e-9);

  nm.config.AmbTempOffset = 1.5;
  nm.config.UnitTempStr = "F";
  ReadAmbientTemp(nm);
  EXPECT_NEAR(s.Value_Temp, 50 - 1.5, 1e-9);  // the offset is in the display unit

  // Full scale: the divider's divisor is 0; the stage goes on and the value stays.
  Read(s.SamplesAmbient, 1023, ReadAmbientTemp);
  EXPECT_NEAR(s.Value_Temp, 48.5, 1e-9);
  EXPECT_TRUE(s.AmbientTempValid);

  // Beyond 1030 there is no thermistor: 999, converted like any reading.
  nm.config.UnitTempStr = "C";
  nm.config.AmbTempOffset = 0;
  Read(s.SamplesAmbient, 99999, ReadAmbientTemp);
  EXPECT_EQ(s.Value_Temp, 999);
}

TEST_F(RawConversions, RainPlateThroughBetaUpTo990AndRawAbove) {
  SiteState& s = nm.state;
  Samples(s.SamplesRainTemp, std::vector<double>(5, CountsFor(4, 1, 1, 3450)));
  ReadRainSensorTemp(nm);
  EXPECT_NEAR(s.Value_RainTemp, 4, 1e-9);

  Read(s.SamplesRainTemp, 990, ReadRainSensorTemp);
  EXPECT_NEAR(s.Value_RainTemp, -42.73, 0.01);  // through the formula, not raw
  Read(s.SamplesRainTemp, 990.5, ReadRainSensorTemp);
  EXPECT_EQ(s.Value_RainTemp, 990.5);

  // Broken constants make the formula fail: the plate reads 22.
  s.RainResAt25 = 0;
  Read(s.SamplesRainTemp, 400, ReadRainSensorTemp);
  EXPECT_EQ(s.Value_RainTemp, 22);
}

TEST_F(RawConversions, SkyTemperaturesAndTheNoReadingMark) {
  SiteState& s = nm.state;
  nm.config.IRTempOffset = 0.5;
  nm.config.AmbTempOffset = 1;
  Read(s.SamplesSkyIR, -1520, ReadSkyTemp);
  Read(s.SamplesSkySensor, 1200, ReadSkySensorTemp);
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15.7);
  EXPECT_DOUBLE_EQ(s.Value_CloudTemp, 11);  // the ambient offset on the sensor body
  EXPECT_EQ(nm.display.LblSkyIRTemp.Caption, "-15.2");

  nm.config.IRTempOffset = 0;
  Read(s.SamplesSkyIR, 99900, ReadSkyTemp);
  EXPECT_EQ(s.Value_CloudRaw, 999);
  EXPECT_EQ(s.Value_Cloud, 999);  // no correction on a missing reading
  Read(s.SamplesSkyIR, 90000, ReadSkyTemp);
  EXPECT_EQ(s.Value_Cloud, 900);
}

TEST_F(RawConversions, AmbientIsBorrowedFromHumidityThenFromTheSkySensor) {
  SiteState& s = nm.state;
  nm.config.AmbTempOffset = 0;
  // No source at all.
  SelectAmbientTemp(nm);
  EXPECT_EQ(s.Value_Temp, 20);
  EXPECT_EQ(nm.display.BarTemperature[0].Caption, "N.A.");
  EXPECT_FALSE(s.AmbientTempValid);

  s.RHTempValid = true;
  s.Value_HumSensTemp = 12.34;
  s.IRTempValid = true;
  s.Value_CloudTemp = 8;
  SelectAmbientTemp(nm);
  EXPECT_DOUBLE_EQ(s.Value_Temp, 12.34);
  EXPECT_TRUE(s.AmbientTempValid);

  // 70 and -40 are outside the humidity sensor's range: the sky sensor serves,
  // and its ambient offset counts a second time.
  nm.config.AmbTempOffset = 0.5;
  for (double edge : {70.0, -40.0}) {
    s.Value_HumSensTemp = edge;
    SelectAmbientTemp(nm);
    EXPECT_DOUBLE_EQ(s.Value_Temp, 7.5) << edge;
  }
}

TEST_F(RawConversions, RemoteReadsNoArrays) {
  nm.config.NMRole = {false, true};
  nm.config.CloudTempFactor = false;
  nm.state.Value_CloudRaw = -20;
  nm.state.Value_Rain = 3100;
  Read(nm.state.SamplesSkyIR, 5000, ReadSkyTemp);
  Read(nm.state.SamplesRainFreq, 10, ReadRainFrequency);
  EXPECT_EQ(nm.state.Value_CloudRaw, -20);
  EXPECT_EQ(nm.state.Value_Cloud, -20);
  EXPECT_EQ(nm.state.Value_Rain, 3100);
}

}  // namespace
}  // namespace nbx
