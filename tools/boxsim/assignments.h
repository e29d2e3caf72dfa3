#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "boxsim/box.h"

namespace nbx::boxsim {

// One line of the help text per key: "key   what it sets".
const std::vector<std::string>& AssignmentKeyHelp();

// Blank-separated "key=value" words, all or none applied: false with `why`
// naming the first bad word, and the box unchanged.
bool ApplyAll(std::string_view words, Box& box, std::string& why);

// Splits on blanks and tabs.
std::vector<std::string_view> SplitWords(std::string_view text);

}  // namespace nbx::boxsim
