#pragma once

#include <cmath>

namespace nbx {

// A computed value that is not finite (a division by zero, a logarithm of 0,
// an overflow) is not assigned: the field keeps its old value and the stage
// goes on.
inline void AssignFinite(double& field, double value) {
  if (std::isfinite(value)) field = value;
}

}  // namespace nbx
