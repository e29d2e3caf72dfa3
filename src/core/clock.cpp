#include "core/clock.h"

#include <cmath>

namespace nbx {

double NowSerial(const Clock& clock) { return ToSerialDate(clock.Now()); }

std::int64_t MillisNow(const Clock& clock) {
  const LocalDateTime now = clock.Now();
  const double wholeMs = std::floor(24.0 * 3600000.0 * ToSerialDate(now) + 0.5);
  return static_cast<std::int64_t>(wholeMs) + now.millisecond;
}

}  // namespace nbx
