#include "sensors/sky_correction.h"

#include "core/nimbometer.h"

namespace nbx {

double SkyCorrection(const Nimbometer&, double) { return 0.0; }

}  // namespace nbx
