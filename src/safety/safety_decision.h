#pragma once

namespace nbx {
struct Nimbometer;

// Turns the conditions into the verdict, with its delays, and acts on it.
void EvaluateSafety(Nimbometer& nm);
// What pressing Start resets of the verdict's state.
void ResetSafetyAtStart(Nimbometer& nm);

}  // namespace nbx
