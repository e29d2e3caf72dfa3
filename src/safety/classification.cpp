// The classification of the six condition families and the painting of
// their indicators. The families are deliberately not alike: inclusive and
// exclusive edges, counters and "keep what it was" paths differ by family.

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "safety/conditions.h"
#include "safety/families.h"
#include "core/units.h"

namespace nbx {
namespace {

// Label 2 takes the class word, all three the colour, label 0 the word of label 2.
void PaintBar(Bar& bar, const std::string& caption, Colour colour) {
  bar[2].Caption = caption;
  for (Label& label : bar) label.BackColor = colour;
  bar[0].Caption = bar[2].Caption;
}

void PaintClass(Bar& bar, const Swatch& swatch) { PaintBar(bar, swatch.Caption, swatch.BackColor); }

void PaintUnknown(Nimbometer& nm, Bar& bar) { PaintBar(bar, "Unknown", nm.config.LblUnknowColor); }

// A condition of 1..3 with the family's swatch on the bar.
void SetClass(Nimbometer& nm, Family family, Bar& bar, Condition condition) {
  ConditionOf(nm.state, family) = condition;
  PaintClass(bar, SwatchesOf(nm.config, family)[Slot(condition - 1)]);
}

void SetUnknown(Nimbometer& nm, Family family, Bar& bar) {
  ConditionOf(nm.state, family) = 0;
  PaintUnknown(nm, bar);
}

// "Disable" counts as the first class, on grey bars.
void SetDisabled(Nimbometer& nm, Family family, Bar& bar) {
  ConditionOf(nm.state, family) = 1;
  PaintBar(bar, "Disable", colours::PanelGrey);
}

// No sensor: empty words, neutral colours, the condition left alone.
void BlankBar(Bar& bar) {
  for (Label& label : bar) {
    label.Caption.clear();
    label.BackColor = colours::PanelGrey;
  }
}

// The first of the limits that `holds` accepts, as a class 1..3; 0 for none.
template <typename Test>
Condition FirstLimit(const std::array<double, 3>& limits, Test holds) {
  for (int i = 0; i < 3; ++i)
    if (holds(limits[Slot(i)])) return i + 1;
  return 0;
}

void CountUnknown(bool bad, std::int32_t& count) { count = bad ? count + 1 : 0; }

// Once Unknown, the count is held at the limit while the reading stays bad:
// it rises by one each cycle and is taken back by one, so it cannot run away,
// and the health signal sees it at the limit from the cycle that turned Unknown.
void HoldAtLimit(const Config& c, std::int32_t& count) {
  if (count > c.UnknownNoReading) count--;
}

bool UnknownReached(const Config& c, bool bad, std::int32_t& count) {
  if (!bad || !(c.UnknownNoReading <= count)) return false;
  HoldAtLimit(c, count);
  return true;
}

}  // namespace

void UpdateCloudCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Bar& bar = nm.display.BarCloud;
  const double v = s.Value_Cloud;
  const bool bad = c.UnknowCloudGT <= v;
  CountUnknown(bad, s.CloudUnknownCount);
  if (UnknownReached(c, bad, s.CloudUnknownCount)) {
    SetUnknown(nm, Family::Cloud, bar);
  } else if (v <= c.CloudLimit[0]) {
    SetClass(nm, Family::Cloud, bar, 1);
  } else if (v <= c.CloudLimit[1]) {
    SetClass(nm, Family::Cloud, bar, 2);
  } else {
    SetClass(nm, Family::Cloud, bar, 3);
  }
  bar[1].Caption = FormatNumber(v, "0.0") + " " + TemperatureUnitLabel(c);
}

void UpdateRainCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Bar& bar = nm.display.BarRain;
  const double v = s.Value_Rain;
  const bool below = v < c.UnknowRainLT;
  const bool disabled = c.DisableUnknownRain == 1;
  CountUnknown(below, s.RainUnknownCount);
  if (below && disabled) {
    SetDisabled(nm, Family::Rain, bar);
  } else if ((below || v > 8000.0) && !disabled && c.UnknownNoReading <= s.RainUnknownCount) {
    // Only a reading below the threshold counts up, so one above 8000 is
    // Unknown only while the count of low readings still stands.
    SetUnknown(nm, Family::Rain, bar);
    HoldAtLimit(c, s.RainUnknownCount);
  } else if (const Condition k = FirstLimit(c.RainLimit, [&](double limit) { return limit <= v; })) {
    SetClass(nm, Family::Rain, bar, k);
  }
  bar[1].Caption = FormatNumber(v, "0");
}

void UpdateDayCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Bar& bar = nm.display.BarDay;
  const double v = s.Value_Day;
  const bool above = c.UnknownDayGT <= v;
  const bool disabled = c.DisableUnknownDay == 1;
  CountUnknown(above, s.DayUnknownCount);
  if (above && disabled) {
    SetDisabled(nm, Family::Day, bar);
  } else if (above && !disabled && c.UnknownNoReading <= s.DayUnknownCount) {
    SetUnknown(nm, Family::Day, bar);
    HoldAtLimit(c, s.DayUnknownCount);
  } else if (const Condition k = FirstLimit(c.DayLimit, [&](double limit) { return limit <= v; })) {
    SetClass(nm, Family::Day, bar, k);
  }
  // Sky quality in magnitudes has decimals; the light resistor's scale has none.
  bar[1].Caption = s.SQMPresent ? FormatNumber(v, "0.00") : FormatNumber(v, "0") + " (K)";
}

void UpdateWindCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Display& d = nm.display;
  CountUnknown(c.WindLimit[2] < s.Value_Wind, s.WindUnknownCount);

  auto within = [&](double value) {
    return FirstLimit(c.WindLimit, [&](double limit) { return value <= limit; });
  };
  if (const Condition speedClass = within(s.Value_Wind))
    PaintClass(d.BarWindSpeed, c.ColorWind[Slot(speedClass - 1)]);

  // A gust is never reported below the mean speed.
  if (s.Value_Gust < s.Value_Wind) s.Value_Gust = s.Value_Wind;

  if (const Condition k = within(s.Value_Gust)) {
    s.NBX_WindCondition = k;
    d.BarWindGust.BackColor = c.ColorWind[Slot(k - 1)].BackColor;
  } else if (c.UnknownNoReading <= s.WindUnknownCount) {
    s.NBX_WindCondition = 0;
    PaintUnknown(nm, d.BarWindSpeed);
    d.BarWindGust.BackColor = c.LblUnknowColor;
    HoldAtLimit(c, s.WindUnknownCount);
  }
  d.BarWindSpeed[1].Caption = FormatNumber(s.Value_Wind, "0.0");
  d.BarWindGust.Caption = FormatNumber(s.Value_Gust, "0.0");
}

void UpdateHumidityCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Bar& bar = nm.display.BarRH;
  if (!s.AmbientTempValid) return;
  const double v = s.Value_HumidityRel;
  // A missing sensor must not raise an alarm: the condition stays as it was.
  if (s.HumidityPresent != 1 || v == -1.0) return BlankBar(bar);
  if (v > 100.0) {
    SetUnknown(nm, Family::Humidity, bar);
  } else if (v <= c.HumidityLimit[0]) {
    SetClass(nm, Family::Humidity, bar, 1);
  } else if (v <= c.HumidityLimit[1]) {
    SetClass(nm, Family::Humidity, bar, 2);
  } else {
    SetClass(nm, Family::Humidity, bar, 3);
  }
  bar[1].Caption = "RH " + FormatNumber(v, "0") + "%";
}

void UpdatePressureCondition(Nimbometer& nm) {
  SiteState& s = nm.state;
  const Config& c = nm.config;
  Bar& bar = nm.display.BarAtmPres;
  if (!s.AmbientTempValid) return;
  const double v = s.Value_RelPressure;
  if (s.PressurePresent != 1 || v == -1.0) return BlankBar(bar);
  if (!(800.0 <= v && v < 1200.0)) {
    SetUnknown(nm, Family::Pressure, bar);
  } else if (v <= c.PressureLimit[0]) {
    SetClass(nm, Family::Pressure, bar, 1);
  } else if (v <= c.PressureLimit[1]) {
    SetClass(nm, Family::Pressure, bar, 2);
  } else {
    SetClass(nm, Family::Pressure, bar, 3);
  }
  bar[1].Caption = FormatNumber(v, "000.0") + " HPa";
}

}  // namespace nbx
