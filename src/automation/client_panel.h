#pragma once

#include "core/colours.h"

namespace nbx {
struct Nimbometer;

// The colour in which members blink the client lamp.
inline constexpr Colour ClientBlinkColour = 0x80FFFF;

// A client object is created (+1) or released (-1): the count of attached
// users, the client panel in place of the Stop button while there is one,
// and the Close item and the menus that they forbid.
void RegisterUsers(Nimbometer& nm, int delta);

// A client's call: counts it (back to 0 after 9999), flips the lamp pair and,
// for the timed polls, shows the seconds since the previous timed poll.
void BlinkLEDCOM(Nimbometer& nm, Colour colour, bool timed);

}  // namespace nbx
