#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// One line about a processed cycle, for the headless program's standard output.
// Its verdict is WAITING until the first decision of the run.
std::string CycleSummary(const Nimbometer& nm);
// The line that says the station has stopped: no verdict stands any more.
std::string StoppedSummary(const Nimbometer& nm);

}  // namespace nbx
