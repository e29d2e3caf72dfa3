#include "safety/relay.h"

#include "core/nimbometer.h"
#include "core/stage_calls.h"

namespace nbx {
namespace {

bool RelayFollowsVerdict(const Nimbometer& nm) {
  return nm.state.IsRunning && nm.IsMaster() && nm.config.SWRole[0];
}

void DriveRelay(Nimbometer& nm, bool close) {
  SendToBox(nm, close ? "H" : "G");
  nm.state.Value_Switch = close ? 2 : 1;
}

}  // namespace

void RelayStep(Nimbometer& nm) {
  if (RelayFollowsVerdict(nm)) DriveRelay(nm, nm.state.Value_Unsafe);
}

void SetSwitch(Nimbometer& nm, std::int32_t state) {
  if (RelayFollowsVerdict(nm)) DriveRelay(nm, state == 2);
}

void ShowSwitchState(Nimbometer& nm, std::int32_t state) {
  Label& label = nm.display.LblSwitch;
  switch (state) {
    case 0:
      label.Caption = " ";
      break;
    case 1:
      label.Caption = "Opened";
      label.ForeColor = colours::DarkGreen;
      break;
    case 2:
      label.Caption = "Closed";
      label.ForeColor = colours::Red;
      break;
    default:
      break;
  }
}

}  // namespace nbx
