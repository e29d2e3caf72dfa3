#include "sensors/brightness.h"

#include "core/nimbometer.h"

namespace nbx {

void ReadBrightness(Nimbometer&) {}

}  // namespace nbx
