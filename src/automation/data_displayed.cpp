#include "automation/data_displayed.h"

#include <cstdio>

#include "automation/computed_members.h"
#include "core/nimbometer.h"
#include "core/number_format.h"

namespace nbx {
namespace {

// The colour of items that have no bar of their own.
constexpr Colour NoBarColour = 0xFFFF80;
constexpr const char* NotAvailable = "n/a";

std::string Lower(std::string_view text) {
  std::string lower(text);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

bool HasNoBar(std::string_view item) {
  return item == "gust" || item == "dew" || item == "humididty" || item == "temperature";
}

std::string ValueText(const Nimbometer& nm, std::string_view item) {
  const SiteState& s = nm.state;
  const char separator = nm.io.host ? nm.io.host->DecimalSeparator() : '.';
  if (item == "cloud")
    return FormatNumber(s.Value_Cloud, "0.0", separator) + " " + NBX_TemperatureUnits(nm.config);
  if (item == "rain") return FormatNumber(s.Value_Rain, "0", separator) + " cycles";
  if (item == "wind") {
    if (!s.IsWindPresent) return NotAvailable;
    return FormatNumber(s.Value_Wind, "0", separator) + " " + nm.config.UnitSpeedStr;
  }
  if (item == "brightnesss") return FormatNumber(s.Value_Day, "0", separator) + " K";
  return NotAvailable;
}

std::string DescriptionText(const Nimbometer& nm, std::string_view item) {
  const Display& d = nm.display;
  if (item == "cloud") return d.BarCloud[2].Caption;
  if (item == "rain") return d.BarRain[2].Caption;
  if (item == "wind") return nm.state.IsWindPresent ? d.LblWind.Caption : NotAvailable;
  if (item == "brightnesss") return d.BarDay[2].Caption;
  return NotAvailable;
}

std::string ColourOfItem(const Nimbometer& nm, std::string_view item) {
  const Display& d = nm.display;
  if (item == "cloud") return ColorText(d.BarCloud[2].BackColor);
  if (item == "rain") return ColorText(d.BarRain[2].BackColor);
  if (item == "wind") return ColorText(nm.state.IsWindPresent ? d.BarWindSpeed[2].BackColor : NoBarColour);
  if (item == "brightnesss") return ColorText(d.BarDay[2].BackColor);
  if (HasNoBar(item)) return ColorText(NoBarColour);
  return ColorText(nm.config.LblUnknowColor);
}

}  // namespace

std::string NBX_DataDisplayed(const Nimbometer& nm, std::string_view item, std::string_view kind) {
  const std::string k = Lower(kind);
  if (k == "value") return ValueText(nm, item);
  if (k == "desc") return DescriptionText(nm, item);
  if (k == "color") return ColourOfItem(nm, item);
  return "";
}

// The hexadecimal text is cut into pairs from the left, as the window has
// always done: a value of more than six digits (a system colour) keeps its
// first six.
std::string ColorText(Colour colour) {
  char hex[16];
  std::snprintf(hex, sizeof hex, "%06X", static_cast<unsigned>(colour));
  const std::string h = hex;
  return "#" + h.substr(4, 2) + h.substr(2, 2) + h.substr(0, 2);
}

}  // namespace nbx
