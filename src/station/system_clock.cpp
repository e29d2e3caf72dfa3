#include "station/system_clock.h"

#include <QDateTime>

namespace nbx {

LocalDateTime SystemClock::Now() const {
  const QDateTime now = QDateTime::currentDateTime();
  const QDate d = now.date();
  const QTime t = now.time();
  return {d.year(), d.month(), d.day(), t.hour(), t.minute(), t.second(), t.msec()};
}

}  // namespace nbx
