#include "fixed_site.h"

namespace nbx::test {

FixedSite::FixedSite() {
  time.RunFor(5000);
  nm.io.clock = &time;
  nm.io.timers = &time;
  nm.io.host = &host;

  Config& c = nm.config;
  c.LblPathName = c.LblPathNameCCDAP4 = c.NetPathMaster = c.NetPathRemote = dir.path();
  c.COMPort = 2;

  SiteState& s = nm.state;
  s.IsRunning = s.GoodCycleSinceStart = s.IsWindPresent = s.SQMPresent = true;
  s.FirmwareMajor = 6;
  s.FirmwareMinor = 1;
  s.FirmwarePatch = 0;
  s.SerialNo = "1234";
  s.HumidityPresent = s.PressurePresent = 1;
  s.Value_Switch = 1;
  using S = SiteState;
  const std::pair<double S::*, double> values[] = {
      {&S::Value_Cloud, -18.46},      {&S::Value_CloudRaw, -20.125},  {&S::Value_CloudTemp, 8.04},
      {&S::Value_Temp, 7.5},          {&S::Value_Wind, 12.25},        {&S::Value_Gust, 19.96},
      {&S::Value_WindDir, 270},       {&S::Value_HumidityRel, 63.4},  {&S::Value_HumSensTemp, 9.5},
      {&S::Value_DewPointT, 0.74},    {&S::Value_AbsPressure, 1001.25}, {&S::Value_RelPressure, 1013.2},
      {&S::Value_Rain, 3123.7},       {&S::Value_RainHeat, 0.35},     {&S::Value_RainTemp, 2.25},
      {&S::Value_Day, 19.564},        {&S::Value_Cycle, 2.345},       {&S::ReferenceVoltage, 5}};
  for (const auto& [value, number] : values) s.*value = number;
  s.LastReading = ToSerialDate({2026, 11, 21, 21, 59, 58});
  s.LastUnsafe = ToSerialDate({2026, 11, 21, 3, 15, 0});
  s.NBX_CloudCondition = s.NBX_CloudSafe = s.NBX_RainCondition = s.NBX_RainSafe = 1;
  s.NBX_HumiditySafe = s.NBX_PressureSafe = 1;
  s.NBX_WindCondition = s.NBX_WindSafe = 2;
  s.NBX_DayCondition = 3;
  s.NBX_DaySafe = 0;
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
