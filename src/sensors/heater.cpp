#include "sensors/heater.h"

#include "core/nimbometer.h"

namespace nbx {

void HeaterStep(Nimbometer&) {}
void RefreshHeaterDisplay(Nimbometer&) {}

}  // namespace nbx
