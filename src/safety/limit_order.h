#pragma once

#include <string>

#include "safety/conditions.h"

namespace nbx {
struct Config;

// The validate step of a threshold: the message of the first breach of the
// family's order that giving limit `index` the value `value` would cause, or
// "" when the order holds. Only cloud 0-1, day 0-1, rain 0-1 and wind 0-2
// have a validate step; every other limit gives "". The captions of the
// family's classes stand upper-cased in the texts, which are kept word for
// word, including two that name a class the breach is not about.
std::string LimitOrderBreach(const Config& config, Family family, int index, double value,
                             char decimalSeparator = '.');

}  // namespace nbx
