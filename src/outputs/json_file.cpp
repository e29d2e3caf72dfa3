#include "outputs/json_file.h"

#include <cmath>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/text.h"
#include "core/units.h"
#include "outputs/latin1.h"
#include "safety/conditions.h"

namespace nbx {
namespace {

class JsonLines {
 public:
  void Add(const std::string& line) { text_ += line + "\r\n"; }
  void Text(const char* key, const std::string& value) { Add(Key(key) + '"' + value + "\","); }
  void Number(const char* key, const std::string& value, const char* after = ",") {
    Add(Key(key) + value + after);
  }
  const std::string& str() const { return text_; }

 private:
  static std::string Key(const char* key) { return std::string("\"") + key + "\" : "; }
  std::string text_;
};

}  // namespace

std::string SafeWord(int flag) { return SafeDescription(flag); }

std::string JsonText(const Nimbometer& nm, const std::string& extendedRecord) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  const char separator = nm.io.host->DecimalSeparator();
  const auto field = [&](double value, const char* pattern) {
    return FormatField(value, pattern, 0, separator);
  };
  const auto wide = [&](double value) { return Trim(FormatField(value, "#0.0", 12, separator)); };
  const auto celsius = [&](double value) { return ConvertTemperature(c.UnitTempStr, "C", value); };
  const auto kmh = [&](double value) { return ConvertSpeed(c.UnitSpeedStr, "K", value); };

  JsonLines json;
  json.Add("{");
  json.Text("dateLocalTime", FormatDate(nm.Now(), "yyyy/mm/dd hh:mm:ss"));
  if (nm.IsMaster()) {
    json.Text("nminfo", "Serial: " + s.SerialNo + ", FW: " + std::to_string(s.FirmwareMajor) + "." +
                            std::to_string(s.FirmwareMinor) + std::to_string(s.FirmwarePatch));
  } else {
    json.Text("nminfo", "Remote mode");
  }
  json.Text("slddata", FromLatin1(extendedRecord));
  json.Number("clouds", wide(celsius(s.Value_Cloud)));
  json.Text("cloudsSafe", SafeWord(s.NBX_CloudSafe));
  json.Number("temp", wide(celsius(s.Value_Temp)));
  json.Number("wind", wide(kmh(s.Value_Wind)));
  json.Text("windSafe", SafeWord(s.NBX_WindSafe));
  json.Number("gust", wide(kmh(s.Value_Gust)));
  json.Number("rain", FormatNumber(std::floor(s.Value_Rain) + 0.0, "0"));
  json.Text("rainSafe", SafeWord(s.NBX_RainSafe));
  if (s.SQMPresent) {
    json.Number("lightmpsas", field(s.Value_Day, "#0.00"));
  } else {
    json.Number("light", field(s.Value_Day, "#0"));
  }
  json.Text("lightSafe", SafeWord(s.NBX_DaySafe));
  json.Number("switch", s.Value_Switch == 2 ? "0" : "1");
  json.Number("safe", s.Value_Unsafe ? "0" : "1");
  if (s.HumidityPresent == 1) {
    json.Number("hum", field(s.Value_HumidityRel, "#0.000"));
    json.Text("humSafe", SafeWord(s.NBX_HumiditySafe));
    json.Number("dewp", field(celsius(s.Value_DewPointT), "#0.000"));
  }
  if (s.PressurePresent == 1) {
    // These two end in a comma and a blank, unlike the others; readers are used to it.
    if (s.Value_AbsPressure != 0 && nm.IsMaster())
      json.Number("abspress", field(s.Value_AbsPressure, "#0.000"), ", ");
    json.Number("relpress", field(s.Value_RelPressure, "#0.000"), ", ");
    json.Text("pressureSafe", SafeWord(s.NBX_PressureSafe));
  }
  // The last member has no comma, so the file is valid JSON when its values are.
  json.Number("rawir", field(s.Value_CloudRaw, "#0.000"), "");
  json.Add("}");
  return json.str();
}

}  // namespace nbx

