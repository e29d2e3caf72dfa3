#pragma once

#include <string>
#include <string_view>

#include "core/colours.h"

namespace nbx {
struct Nimbometer;

// The rain sensor's heater holds its plate some degrees above the ambient
// temperature, so that dew does not read as rain, and gives a wet plate a hot
// impulse now and then to dry it. Impulse states: 1 normal, 2 warming up,
// 3 holding.

// One step of the control law, once per good cycle: the duty moves by a gain
// that grows with the distance from the target, at most every 5 seconds, and
// a "P" command goes to the box. On a REMOTE only the display is refreshed.
void HeaterStep(Nimbometer& nm);
// The heater command for a duty from 0 to 1: "P" and duty x 1023 rounded half
// to even, as four digits.
std::string HeaterCommand(double duty);

// The plate temperature wanted now, in the display unit: ambient plus
// HeatImpTemp during an impulse; otherwise a line through the two support
// points, held at HeatTemp(0) below it, and never above 40.
double HeaterTarget(const Nimbometer& nm);
// How much the duty (0..1) moves for the plate's `error` (plate less target):
// nothing within 0.3 degrees; in warming up, straight to full.
double HeaterGain(const Nimbometer& nm, double error);
// Advances the impulse states. The rain condition is taken only when an
// impulse ends (or impulses are off), so a plate once wet gets its impulse
// HeatImpCycle seconds later even if it has dried in the meantime.
void HeaterImpulseStep(Nimbometer& nm, bool started);

// The heater status line of the device tab.
void SetHeatingStatus(Nimbometer& nm, std::string_view text, Colour colour);
// Shows the heater duty after a "Q" frame.
void RefreshHeaterDisplay(Nimbometer& nm);

}  // namespace nbx
