#pragma once

#include <string>
#include <string_view>

#include "boxsim/box.h"

namespace nbx::boxsim {

// Adds the steps of a script to the box. A line is "at <seconds> key=value
// [key=value ...]"; a word starting with "#" begins a comment, blank lines
// are skipped. Either the whole script is taken, or nothing and `why` names the
// first bad line.
bool LoadScript(std::string_view text, Box& box, std::string& why);

}  // namespace nbx::boxsim
