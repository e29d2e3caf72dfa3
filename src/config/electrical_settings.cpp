#include "config/electrical_settings.h"

#include "config/setting_access.h"
#include "config/setting_keys.h"
#include "core/site_state.h"

namespace nbx {

void LoadElectricalConstants(SettingsReader& reader, SiteState& s) {
  const SiteState defaults;
  s.Stats_Sigma = reader.Double("Electrical", "Stats_Sigma", defaults.Stats_Sigma);
  for (const ElectricalKey& constant : ElectricalConstants)
    s.*constant.field = reader.Double("Electrical", constant.key, defaults.*constant.field);
  s.SerialNo = reader.Text("Electrical", "SerialNo", defaults.SerialNo);
}

void SaveElectrical(SettingsWriter& writer, const SiteState& s) {
  writer.Whole("Electrical", "Stats_Universe", s.Stats_Universe);
  writer.Number("Electrical", "Stats_Sigma", s.Stats_Sigma);
  for (const ElectricalKey& constant : ElectricalConstants)
    writer.Number("Electrical", constant.key, s.*constant.field);
  writer.Text("Electrical", "SerialNo", s.SerialNo);
  writer.Whole("Electrical", "Initiliazed", s.DeviceInitialized);
}

void ResetElectParam(Settings& store, const SiteState& s, char decimalSeparator) {
  SettingsWriter writer(store, decimalSeparator);
  for (const ElectricalKey& constant : ElectricalConstants)
    writer.Number("Electrical", constant.key, s.*constant.field);
}

}  // namespace nbx
