#pragma once

#include <cstdint>

namespace nbx {
struct Nimbometer;

// The relay step of the verdict: while running on a MASTER whose relay
// follows the verdict, "H" (closed, Value_Switch 2) when unsafe and "G"
// (opened, 1) when safe, in every evaluated cycle, so that a box that lost
// the state is corrected within one cycle.
void RelayStep(Nimbometer& nm);
// The relay on request: state 2 closes it, any other opens it; the same
// conditions as the relay step.
void SetSwitch(Nimbometer& nm, std::int32_t state);
// LblSwitch for a relay state: 0 blank, 1 "Opened", 2 "Closed".
void ShowSwitchState(Nimbometer& nm, std::int32_t state);

}  // namespace nbx
