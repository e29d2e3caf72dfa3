#pragma once

#include "core/clock.h"

namespace nbx {

// The computer's local clock.
class SystemClock : public Clock {
 public:
  LocalDateTime Now() const override;
};

}  // namespace nbx
