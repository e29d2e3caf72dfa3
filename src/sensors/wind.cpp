#include "sensors/wind.h"

#include "core/nimbometer.h"

namespace nbx {

void ReadWind(Nimbometer&) {}

}  // namespace nbx
