#pragma once

#include <cstdint>

#include "core/serial_date.h"

namespace nbx {

// The outside world's time. The station reads the system clock; tests run a
// virtual clock so that a night passes in milliseconds.
class Clock {
 public:
  virtual ~Clock() = default;
  // Local date and time of day, with the millisecond field of the system time.
  virtual LocalDateTime Now() const = 0;
};

// Wall-clock milliseconds: 24 x 3600000 x the serial date of now (whole seconds)
// plus the millisecond field. It jumps with the clock and is not monotonic.
std::int64_t MillisNow(const Clock& clock);

// The serial date of now, whole seconds, as the date type of the data files holds it.
double NowSerial(const Clock& clock);

}  // namespace nbx
