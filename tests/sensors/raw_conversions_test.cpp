#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "logic_fixture.h"
#include "sensors/brightness.h"
#include "sensors/raw_conversions.h"
#include "sensors/wind.h"

namespace nbx {
namespace {

// Counts of a divider whose thermistor sits at `celsius`: the Beta formula inverted independently.
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
  double SkyQuality(double frequency) {
    nm.state.SQMPresent = true;
    Read(nm.state.SamplesSQM, frequency, ReadBrightness);
    return nm.state.Value_Day;
  }
};

TEST_F(RawConversions, ReferenceVoltageFromTheZenerOrFiveWithout) {
  nm.state.ZenerVoltage = 2.54;
  Read(nm.state.SamplesZener, 520, ReadReferenceVoltage);
  EXPECT_NEAR(nm.state.ReferenceVoltage, 1023 * 2.54 / 520, 1e-12);
  Read(nm.state.SamplesZener, 0, ReadReferenceVoltage);
  EXPECT_EQ(std::tuple(nm.state.ReferenceVoltage, nm.display.LblVref.Caption), std::tuple(5.0, "Error"));
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
  // The ambient offset goes on the sensor body; the label shows the reading as it came.
  EXPECT_EQ(std::tuple(s.Value_CloudRaw, s.Value_CloudTemp, nm.display.LblSkyIRTemp.Caption),
            std::tuple(-15.7, 11.0, "-15.2"));

  nm.config.IRTempOffset = 0;
  Read(s.SamplesSkyIR, 99900, ReadSkyTemp);
  EXPECT_EQ(std::tuple(s.Value_CloudRaw, s.Value_Cloud), std::tuple(999.0, 999.0));  // no correction
  Read(s.SamplesSkyIR, 90000, ReadSkyTemp);
  EXPECT_EQ(s.Value_Cloud, 900);
}

TEST_F(RawConversions, AmbientIsBorrowedFromHumidityThenFromTheSkySensor) {
  SiteState& s = nm.state;
  nm.config.AmbTempOffset = 0;
  // No source at all.
  SelectAmbientTemp(nm);
  EXPECT_EQ(std::tuple(s.Value_Temp, nm.display.BarTemperature[0].Caption, s.AmbientTempValid),
            std::tuple(20.0, "N.A.", false));

  s.RHTempValid = true;
  s.Value_HumSensTemp = 12.34;
  s.IRTempValid = true;
  s.Value_CloudTemp = 8;
  SelectAmbientTemp(nm);
  EXPECT_EQ(std::tuple(s.Value_Temp, s.AmbientTempValid), std::tuple(12.34, true));

  // 70 and -40 are out of the humidity sensor's range: the sky sensor serves, its offset counted twice.
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
  EXPECT_EQ(std::tuple(nm.state.Value_CloudRaw, nm.state.Value_Cloud, nm.state.Value_Rain),
            std::tuple(-20.0, -20.0, 3100.0));
}

TEST_F(RawConversions, SkyQualityFromTheFrequencyWithItsTemperatureTerm) {
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
  nm.state.FirmwareMajor = 6;
  Read(nm.state.SamplesLDR, 40000, ReadBrightness);
  EXPECT_NEAR(nm.state.Value_Day, 19.558, 1e-12);
}

TEST_F(RawConversions, LightResistorScaleByFirmware) {
  nm.state.LDRPullupResistance = 56;
  const double cases[][3] = {
      // firmware, mean count, brightness
      {5, 511.5, 56},       {5, 1023, 56 * 1022},  // the divider at half scale; cut to 1022...
      {5, 1030, 56 * 1022}, {5, 1030.5, 99999},    // ...up to 1030 included
      {5, 0, 56.0 / 1022},  {6, 40000, 10000},     // from firmware 6: 50000 less the count
      {6, 60000, 0},        {7, 0, 50000}};
  for (const auto& [firmware, count, day] : cases) {
    nm.state.FirmwareMajor = static_cast<int>(firmware);
    Read(nm.state.SamplesLDR, count, ReadBrightness);
    EXPECT_NEAR(nm.state.Value_Day, day, 1e-6) << firmware << " " << count;
  }
  nm.config.NMRole = {false, true};  // a REMOTE keeps the master's value
  Read(nm.state.SamplesLDR, 30000, ReadBrightness);
  EXPECT_EQ(nm.state.Value_Day, 50000);
}

TEST_F(RawConversions, WithoutAnAnemometerTheWindIsCalmAndItsBarsGrey) {
  SiteState& s = nm.state;
  s.WindSamples = {3, 9, 6};
  s.Value_Wind = 6;
  s.Value_Gust = 9;
  nm.display.BarWindSpeed[1] = {"Windy", 0, 0xC0FFFF};
  s.IsWindPresent = true;  // with one, the values stand for the classification
  ReadWind(nm);
  EXPECT_EQ(s.Value_Wind, 6);
  s.IsWindPresent = false;
  ReadWind(nm);
  EXPECT_EQ(std::tuple(s.Value_Wind, s.Value_Gust, s.WindSamples, s.NBX_WindCondition),
            std::tuple(0.0, 0.0, std::vector<double>{0, 0, 0}, 1));
  for (const Label& bar : nm.display.BarWindSpeed)
    EXPECT_EQ(std::tuple(bar.Caption, bar.BackColor), std::tuple(std::string(), 0xE0E0E0u));
}

}  // namespace
}  // namespace nbx
