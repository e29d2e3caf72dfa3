#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// One line about a processed cycle, for the headless program's standard output.
std::string CycleSummary(const Nimbometer& nm);

}  // namespace nbx
