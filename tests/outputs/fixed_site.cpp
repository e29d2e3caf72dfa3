#include "fixed_site.h"

namespace nbx::test {

FixedSite::FixedSite() {
  time.RunFor(5000);
  nm.io.clock = &time;
  nm.io.timers = &time;
  nm.io.host = &host;

  Config& c = nm.config;
  c.LblPathName = dir.path();
  c.LblPathNameCCDAP4 = dir.path();
  c.NetPathMaster = dir.path();
  c.NetPathRemote = dir.path();
  c.COMPort = 2;

  SiteState& s = nm.state;
  s.IsRunning = true;
  s.GoodCycleSinceStart = true;
  s.FirmwareMajor = 6;
  s.FirmwareMinor = 1;
  s.FirmwarePatch = 0;
  s.SerialNo = "1234";
  s.Value_Cloud = -18.46;
  s.Value_CloudRaw = -20.125;
  s.Value_CloudTemp = 8.04;
  s.Value_Temp = 7.5;
  s.Value_Wind = 12.25;
  s.Value_Gust = 19.96;
  s.Value_WindDir = 270;
  s.IsWindPresent = true;
  s.HumidityPresent = 1;
  s.Value_HumidityRel = 63.4;
  s.Value_HumSensTemp = 9.5;
  s.Value_DewPointT = 0.74;
  s.PressurePresent = 1;
  s.Value_AbsPressure = 1001.25;
  s.Value_RelPressure = 1013.2;
  s.Value_Rain = 3123.7;
  s.Value_RainHeat = 0.35;
  s.Value_RainTemp = 2.25;
  s.SQMPresent = true;
  s.Value_Day = 19.564;
  s.Value_Switch = 1;
  s.Value_Cycle = 2.345;
  s.ReferenceVoltage = 5;
  s.LastReading = ToSerialDate({2026, 11, 21, 21, 59, 58});
  s.LastUnsafe = ToSerialDate({2026, 11, 21, 3, 15, 0});
  s.NBX_CloudCondition = 1;
  s.NBX_CloudSafe = 1;
  s.NBX_RainCondition = 1;
  s.NBX_RainSafe = 1;
  s.NBX_WindCondition = 2;
  s.NBX_WindSafe = 2;
  s.NBX_DayCondition = 3;
  s.NBX_DaySafe = 0;
  s.NBX_HumiditySafe = 1;
  s.NBX_PressureSafe = 1;
  s.Stats_Universe = 2;
  s.SizeSampleArrays();
  s.SamplesSkyIR.values = {-1850, -1846};
  s.SamplesAmbient.values = {512, 513};
  s.SamplesSQM.values = {250000, 249000};
  s.SamplesRainFreq.values = {3120, 3127.4};
  s.SamplesRainTemp.values = {400, 401};
  s.SamplesZener.values = {520, 521};
  s.WindSamples = {12, 12.5};

  nm.display.LblHeating.Caption = " Heating UP ";
  nm.display.LblHeating.ForeColor = 0x0000C0;
  nm.display.LblRS232Errors.Caption = "4";
}

std::vector<std::string> FixedSite::Lines(const std::string& name) const {
  const std::string text = Read(name);
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
    lines.push_back(text.substr(start, end - start));
  if (start < text.size()) lines.push_back(text.substr(start));
  return lines;
}

}  // namespace nbx::test
