#include "config/setting_access.h"
#include "config/setting_keys.h"
#include "editing/config_editor.h"
#include "core/nimbometer.h"
#include "core/units.h"
#include "graphs/graph_ring.h"

namespace nbx {

// What is held in the speed unit: the wind limits, the wind graph's history
// and the samples of the running mean. The value of the last cycle is not
// touched: the next cycle computes it afresh from the converted samples.
void ConfigEditor::SetUnitsSpeed(int option) {
  if (option < 0 || option >= static_cast<int>(SpeedUnitLetters.size())) return;
  Config& c = nm_.config;
  const auto chosen = static_cast<std::size_t>(option);
  SetOption(c.UnitsSpeed, chosen, true);
  const std::string from = c.UnitSpeedStr;
  const std::string to = SpeedUnitLetters[chosen];
  if (from == to) return;
  const auto convert = [&](double& value) { value = ConvertSpeed(from, to, value); };
  for (double& limit : c.WindLimit) convert(limit);
  GraphRing& ring = RingOf(nm_.state, GraphKind::Wind).ring;
  for (std::size_t i = 1; i < ring.size(); ++i) convert(ring[i].Value);
  for (double& sample : nm_.state.WindSamples) convert(sample);
  c.UnitSpeedStr = to;
}

// What is held in the temperature unit: the cloud limits and the Unknown
// threshold that the third limit copies.
void ConfigEditor::SetUnitsTemp(int option) {
  if (option < 0 || option >= static_cast<int>(TemperatureUnitLetters.size())) return;
  Config& c = nm_.config;
  const auto chosen = static_cast<std::size_t>(option);
  SetOption(c.UnitsTemp, chosen, true);
  const std::string from = c.UnitTempStr;
  const std::string to = TemperatureUnitLetters[chosen];
  if (from == to) return;
  for (double& limit : c.CloudLimit) limit = ConvertTemperature(from, to, limit);
  c.UnknowCloudGT = ConvertTemperature(from, to, c.UnknowCloudGT);
  c.UnitTempStr = to;
}

}  // namespace nbx
