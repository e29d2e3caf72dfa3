#pragma once

namespace nbx {
struct Nimbometer;

// One step of the rain heater's control law, once per good cycle.
void HeaterStep(Nimbometer& nm);
// Shows the heater duty after a "Q" frame.
void RefreshHeaterDisplay(Nimbometer& nm);

}  // namespace nbx
