#pragma once

#include "safety/conditions.h"

namespace nbx {
struct Nimbometer;

// The check boxes of a family that say which classes count as unsafe: when
// the middle class is ticked the worst one is ticked too, so that a family
// can never be unsafe for the middle class and safe for the worst.
void ApplyCheckRule(Nimbometer& nm, Family family);
// Paints the family's boxes: red while ticked, the system colour otherwise.
void SetCheckColours(Nimbometer& nm, Family family);

}  // namespace nbx
