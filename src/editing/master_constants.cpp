#include "editing/master_constants.h"

#include "core/nimbometer.h"
#include "editing/config_editor.h"

namespace nbx {

// As if the user typed the master's values into the controls: the Unknown
// thresholds go through their change handling, so the third limits follow.
void ReloadMasterConstants(Nimbometer& nm) {
  const TransferRecord& r = nm.state.TransferCopy;
  Config& c = nm.config;
  ConfigEditor editor(nm);
  c.CloudTempK1 = r.CloudTempK1;
  c.CloudTempK2 = r.CloudTempK2;
  c.CloudTempK3 = r.CloudTempK3;
  c.CloudTempK4 = r.CloudTempK4;
  c.CloudTempK5 = r.CloudTempK5;
  editor.SetUnknowCloudGT(r.UnknowCloudGT);
  editor.SetUnknowRainLT(r.UnknowRainLT);
  editor.SetUnknownDayGT(r.UnknownDayGT);
  c.CloudTempK6 = r.CloudTempK6;
  c.CloudTempK7 = r.CloudTempK7;
}

}  // namespace nbx
