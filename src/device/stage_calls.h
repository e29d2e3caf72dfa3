#pragma once

#include "core/stage_calls.h"

namespace nbx {

// Gives the stages beneath the device its command queue and the outputs'
// debug record. Every station connects them once, with its other services.
void ConnectStages(Nimbometer& nm);

}  // namespace nbx
