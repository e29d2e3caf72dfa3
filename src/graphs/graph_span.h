#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The time a full graph covers: RefreshPeriod x GraphFreq x GraphNoPoints
// seconds, written to the hidden label GraphSpan (where the drawing reads it)
// and, as "02 h 00 m 00 s", to GraphSpanDesc.
void UpdateGraphSpan(Nimbometer& nm);
// "hh h mm m ss s" of a span in seconds.
std::string GraphSpanDesc(double spanSeconds);
// The span the drawing uses: the GraphSpan label, computed first if it was
// never written.
double GraphSpanSeconds(Nimbometer& nm);

// A new number of points: all seven rings are emptied, so that each starts
// afresh with its next point, and the span follows.
void GraphNoPointsChanged(Nimbometer& nm);

}  // namespace nbx
