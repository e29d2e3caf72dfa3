#include "station/cycle_summary.h"

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/text.h"
#include "core/units.h"
#include "safety/safety_decision.h"

namespace nbx {
namespace {

std::string SpeedUnitLabel(const std::string& letter) {
  if (letter == "M") return "mph";
  if (letter == "m") return "m/s";
  if (letter == "k") return "knot";
  return "km/h";
}

}  // namespace

std::string CycleSummary(const Nimbometer& nm) {
  const SiteState& s = nm.state;
  const Config& c = nm.config;
  const std::string unit = TemperatureUnitLabel(c);
  std::string line = FormatDate(nm.Now(), "yyyy/mm/dd hh:mm:ss");
  // No verdict before the first decision of the run: not SAFE, and not yet UNSAFE either.
  if (!VerdictGiven(nm))
    line += "  WAITING";
  else
    line += s.Value_Unsafe ? "  UNSAFE" : "  SAFE";
  if (s.CommFailed) line += "  LINK DOWN";
  line += "  sky " + FormatNumber(s.Value_Cloud, "0.0") + " " + unit;
  line += "  ambient " + FormatNumber(s.Value_Temp, "0.0") + " " + unit;
  if (s.HumidityPresent == 1) {
    line += "  humidity " + FormatNumber(s.Value_HumidityRel, "0") + " %";
    line += "  dew " + FormatNumber(s.Value_DewPointT, "0.0") + " " + unit;
  }
  if (s.PressurePresent == 1) line += "  pressure " + FormatNumber(s.Value_RelPressure, "0.0") + " hPa";
  if (s.IsWindPresent) {
    line += "  wind " + FormatNumber(s.Value_Wind, "0.0");
    line += "  gust " + FormatNumber(s.Value_Gust, "0.0") + " " + SpeedUnitLabel(c.UnitSpeedStr);
  }
  line += "  rain " + FormatNumber(s.Value_Rain, "0");
  line += "  heater " + FormatNumber(s.Value_RainHeat, "0%");
  line += "  light " + FormatNumber(s.Value_Day, "0.00");
  line += "  vref " + FormatNumber(s.ReferenceVoltage, "0.00") + " V";
  line += "  cycle " + FormatNumber(s.Value_Cycle, "0.000") + " s";
  line += "  errors " + nm.display.LblRS232Errors.Caption;
  const std::string codes = Trim(nm.display.StatusBar2.Caption);
  if (!codes.empty()) line += "  codes " + codes;
  // The relay as the box last reported it.
  if (!Trim(nm.display.LblSwitch.Caption).empty()) line += "  relay " + nm.display.LblSwitch.Caption;
  return line;
}

std::string StoppedSummary(const Nimbometer& nm) {
  return FormatDate(nm.Now(), "yyyy/mm/dd hh:mm:ss") + "  STOPPED";
}

}  // namespace nbx
