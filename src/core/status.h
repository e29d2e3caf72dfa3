#pragma once

#include <string_view>

#include "core/display.h"

namespace nbx {

// The first status line: the text cut to its first 60 characters.
void SetStatusMain(Display& display, std::string_view text, Colour colour);
// The second status line, which carries the output codes: the text in full.
void SetStatusCode(Display& display, std::string_view text, Colour colour);
// Flips the cycle light from one lamp to the other: if the first lamp is grey
// it takes the colour and the second goes grey, otherwise the reverse.
void SetCycleLED(Display& display, Colour colour);

}  // namespace nbx
