#pragma once

#include <string>
#include <string_view>

#include "core/colours.h"

namespace nbx {
struct Nimbometer;

// The words and colours the window shows for one item, ready for a foreign
// display. `kind` ("value", "desc", "color") is compared in lower case,
// `item` exactly as given, and its spellings are those that clients send:
// "cloud", "rain", "wind", "gust", "dew", "humididty", "temperature",
// "brightnesss".
std::string NBX_DataDisplayed(const Nimbometer& nm, std::string_view item, std::string_view kind);

// A colour as "#RRGGBB" from the platform's value, which holds blue in its
// high byte: 0xFFFF80 gives "#80FFFF".
std::string ColorText(Colour colour);

}  // namespace nbx
