#include "sensors/humidity_pressure.h"

#include "core/nimbometer.h"

namespace nbx {

void RecomputeDewPoint(Nimbometer&) {}
void RecomputeRelPressure(Nimbometer&) {}

}  // namespace nbx
