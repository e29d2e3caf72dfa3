#include "station/qt_timers.h"

namespace nbx {

QtTimers::QtTimers(const std::function<void(TimerId)>& onTimer) {
  for (int i = 0; i < TimerCount; ++i) {
    timers_[static_cast<std::size_t>(i)] = std::make_unique<QTimer>();
    QTimer* timer = timers_[static_cast<std::size_t>(i)].get();
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer, &QTimer::timeout, [onTimer, i] { onTimer(static_cast<TimerId>(i)); });
  }
}

QtTimers::~QtTimers() = default;

void QtTimers::Arm(TimerId id, int intervalMs) {
  if (intervalMs <= 0) return Disarm(id);
  timers_[static_cast<std::size_t>(id)]->start(intervalMs);
}

void QtTimers::Disarm(TimerId id) { timers_[static_cast<std::size_t>(id)]->stop(); }

bool QtTimers::IsArmed(TimerId id) const { return timers_[static_cast<std::size_t>(id)]->isActive(); }

int QtTimers::Interval(TimerId id) const {
  return IsArmed(id) ? timers_[static_cast<std::size_t>(id)]->interval() : 0;
}

}  // namespace nbx
