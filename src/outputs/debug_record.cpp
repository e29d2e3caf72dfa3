#include "outputs/debug_record.h"

#include <cstdio>
#include <initializer_list>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/port_names.h"
#include "outputs/transfer_file.h"

namespace nbx {
namespace {

constexpr const char* kDateTime = "yyyy/mm/dd hh:mm:ss";

class DebugLines {
 public:
  explicit DebugLines(char separator) : separator_(separator) {}
  void Add(const std::string& line) { text_ += line + "\r\n"; }
  std::string N(double value) const { return PlainNumber(value, separator_); }
  std::string List(std::initializer_list<double> values) const {
    std::string out;
    for (const double v : values) out += (out.empty() ? "" : " ") + N(v);
    return out;
  }
  const std::string& str() const { return text_; }

 private:
  char separator_;
  std::string text_;
};

std::string ProgramVersion() {
  return std::to_string(NBX_VERSION_MAJOR) + "." + FormatNumber(NBX_VERSION_MINOR, "00") + "." +
         FormatNumber(NBX_VERSION_PATCH, "000");
}

}  // namespace

std::string PlainNumber(double value, char decimalSeparator) {
  if (value == 0) return "0";
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.15G", value);
  std::string text = buffer;
  for (char& c : text)
    if (c == '.') c = decimalSeparator;
  return text;
}

std::string BracketList(const Nimbometer& nm, const std::vector<double>& values, double current) {
  const char separator = nm.io.host->DecimalSeparator();
  std::string out;
  if (nm.IsMaster())
    for (const double v : values) out += PlainNumber(v, separator) + " ";
  return out + " [" + PlainNumber(current, separator) + "]";
}

std::string DebugDataText(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  DebugLines d(nm.io.host->DecimalSeparator());
  const auto bracket = [&](const std::vector<double>& values, double current) {
    return BracketList(nm, values, current);
  };

  d.Add("NBX Nimbometer debug information --------------------------------");
  if (nm.IsMaster()) {
    d.Add("Serial num [" + s.SerialNo + "] fw version [" + std::to_string(s.FirmwareMajor) + "." +
          std::to_string(s.FirmwareMinor) + std::to_string(s.FirmwarePatch) + "] sw version [" +
          ProgramVersion() + "] port [" + PortEntry(nm) + "]");
  } else {
    d.Add("Remote reading from [" + TransferFilePath(nm) + "]");
  }
  d.Add("Output directory [" + c.LblPathNameCCDAP4 + "]");
  d.Add("Local Time : " + FormatDate(nm.Now(), kDateTime));
  if (s.LastReading) d.Add("Last Update : " + FormatDate(FromSerialDate(*s.LastReading), kDateTime));
  d.Add("Units: Temperature [" + c.UnitTempStr + "] Speed [" + c.UnitSpeedStr + "]");
  d.Add("Readings:");
  d.Add("* Clouds:      " + bracket(s.SamplesSkyIR.values, s.Value_CloudRaw) +
        "-> adjusted sky temp: [" + d.N(s.Value_Cloud) + "]");
  d.Add("* Ambient:     " + bracket(s.SamplesAmbient.values, s.Value_Temp) + " Temperature : [" +
        d.N(s.Value_Temp) + "]");
  if (s.SQMPresent) {
    d.Add("* Sky Quality: " + bracket(s.SamplesSQM.values, s.Value_Day));
  } else {
    d.Add("* Light: " + bracket(s.SamplesLDR.values, s.Value_Day));
  }
  d.Add("* Rain sensor: " + bracket(s.SamplesRainFreq.values, s.Value_Rain));
  d.Add("* Rain temp:   " + bracket(s.SamplesRainTemp.values, s.Value_RainTemp));
  d.Add("* Rain duty:   [" + d.N(s.Value_RainHeat) + "]");
  d.Add("* Wind speed:  " + bracket(s.WindSamples, s.Value_Wind) + " Gust [" + d.N(s.Value_Gust) + "]");
  if (s.HumidityPresent == 1) {
    d.Add("* Relative humidity [" + d.N(s.Value_HumidityRel) + "] Temp by relative humidity [" +
          d.N(s.Value_HumSensTemp) + "] calculated dew point [" + d.N(s.Value_DewPointT) + "]");
  } else {
    d.Add("* Humidity sensor not present");
  }
  if (s.PressurePresent == 1) {
    d.Add("* Absolute pressure [" + d.N(s.Value_AbsPressure) + "] Relative [" +
          d.N(s.Value_RelPressure) + "]");
  } else {
    d.Add("* Pressure sensor not present");
  }
  d.Add("* Voltage:  " + bracket(s.SamplesZener.values, s.ReferenceVoltage));
  d.Add("Params:");
  d.Add("K factors: " + d.List({c.CloudTempK1, c.CloudTempK2, c.CloudTempK3, c.CloudTempK4,
                                c.CloudTempK5, c.CloudTempK6, c.CloudTempK7}));
  d.Add("Heater: " + d.List({c.HeatTemp[0], c.HeatTemp[1], c.HeatDelta[0], c.HeatDelta[1],
                             c.HeatImpTemp, c.HeatImpDuration, c.HeatImpCycle, c.HeatMinValue,
                             c.HeatOffValue}));
  std::string limits;
  for (const auto* family : {&c.CloudLimit, &c.RainLimit, &c.WindLimit, &c.DayLimit,
                             &c.HumidityLimit, &c.PressureLimit})
    limits += (limits.empty() ? "" : " ") + d.List({(*family)[0], (*family)[1], (*family)[2]});
  d.Add("Limits: " + limits);
  d.Add("Switch: Unknown [" + std::to_string(c.UnKnownUnsafe) + "]");
  d.Add("Errors: [" + nm.display.LblRS232Errors.Caption + "]");
  // Fixed text, whatever the box's actual constants: readers match it as it stands.
  d.Add("Zener [2.54] LDRMaxRes [2000] LDRPullUp [56] Rain Beta [3450] Rain res at 25 [1] Rain pullup [1]");
  d.Add(s.Value_Unsafe ? "Safe [0]" : "Safe [1]");
  d.Add("Last unsafe: " + FormatDate(FromSerialDate(s.LastUnsafe.value_or(0)), kDateTime));
  d.Add("NBX Halden debug information end ----------------------------");
  return d.str();
}

void SOSTraza(Nimbometer&) {}

}  // namespace nbx
