#pragma once

#include <string>
#include <string_view>

#include "boxsim/box.h"

namespace nbx::boxsim {

// The frames the box answers `command` (without "!") with, the end-of-reply
// frame last. Commands that set something (relay, heater) change `readings`.
std::string ReplyTo(std::string_view command, Readings& readings, const Faults& faults);

// Firmware 6.00 and later speak the 16-bit humidity words unless told otherwise.
bool UsesNewHumidityFormat(const Readings& readings);

}  // namespace nbx::boxsim
