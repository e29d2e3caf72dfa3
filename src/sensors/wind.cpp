#include "sensors/wind.h"

#include <algorithm>
#include <cmath>

#include "core/nimbometer.h"
#include "safety/conditions.h"

namespace nbx {

void ReadWind(Nimbometer& nm) {
  SiteState& s = nm.state;
  if (s.IsWindPresent) return UpdateWindCondition(nm);
  s.Value_Wind = 0;
  s.Value_Gust = 0;
  // An anemometer that comes back starts diluted, as after Start, with no
  // stale mean.
  std::fill(s.WindSamples.begin(), s.WindSamples.end(), 0.0);
  // A box without anemometer reports the first class, not Unknown.
  s.NBX_WindCondition = 1;
  for (Label& panel : nm.display.BarWindSpeed) {
    panel.Caption.clear();
    panel.BackColor = colours::PanelGrey;
  }
}

double AnemometerSpeed(const Config& config, double boxKmh) {
  if (config.SWAnemoModel[1] && boxKmh > 0) return boxKmh * 0.84 + 3.0;
  return boxKmh;
}

double CalcWindAvgChange(double typed) {
  if (!(typed >= 1)) return 1;  // also what is not a number
  return std::min(typed, 30.0);
}

}  // namespace nbx
