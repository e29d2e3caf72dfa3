#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The seven graph routines of a cycle, in their order.
void RunGraphRoutines(Nimbometer& nm);
// Redraws the graphs from their rings (after a reopen, at Stop).
void RedrawGraphs(Nimbometer& nm);
// At Start: the image folder check; returns its code ("i21 ", "i22 ") or "".
std::string CheckImageFolder(Nimbometer& nm);

}  // namespace nbx
