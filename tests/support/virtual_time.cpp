#include "support/virtual_time.h"

#include <cmath>

namespace nbx::test {

VirtualTime::VirtualTime(LocalDateTime start) : startSerial_(ToSerialDate(start)) {}

LocalDateTime VirtualTime::Now() const {
  const std::int64_t ms = nowMs_ + clockOffsetMs_;
  const double wholeSeconds = std::floor(static_cast<double>(ms) / 1000.0);
  LocalDateTime t = FromSerialDate(startSerial_ + wholeSeconds / 86400.0);
  t.millisecond = static_cast<int>(ms - static_cast<std::int64_t>(wholeSeconds) * 1000);
  return t;
}

void VirtualTime::Arm(TimerId id, int intervalMs) {
  TimerSlot& slot = timers_[static_cast<int>(id)];
  if (intervalMs <= 0) return Disarm(id);
  slot.armed = true;
  slot.interval = intervalMs;
  slot.generation++;
  ScheduleTimer(id, nowMs_ + intervalMs);
}

void VirtualTime::Disarm(TimerId id) {
  TimerSlot& slot = timers_[static_cast<int>(id)];
  slot.armed = false;
  slot.interval = 0;
  slot.generation++;
}

bool VirtualTime::IsArmed(TimerId id) const { return timers_[static_cast<int>(id)].armed; }
int VirtualTime::Interval(TimerId id) const { return timers_[static_cast<int>(id)].interval; }

void VirtualTime::ScheduleTimer(TimerId id, std::int64_t at) {
  const std::uint64_t generation = timers_[static_cast<int>(id)].generation;
  queue_.emplace(Key{at, seq_++}, [this, id, generation, at] {
    TimerSlot& slot = timers_[static_cast<int>(id)];
    if (!slot.armed || slot.generation != generation) return;
    if (onTimer) onTimer(id);
    // A timer goes on firing every interval until its tick disarms or re-arms it.
    if (slot.armed && slot.generation == generation) ScheduleTimer(id, at + slot.interval);
  });
}

void VirtualTime::After(std::int64_t delayMs, std::function<void()> event) {
  queue_.emplace(Key{nowMs_ + (delayMs > 0 ? delayMs : 0), seq_++}, std::move(event));
}

bool VirtualTime::RunNext(std::int64_t untilMs) {
  if (queue_.empty() || queue_.begin()->first.at > untilMs) return false;
  auto node = queue_.extract(queue_.begin());
  nowMs_ = node.key().at;
  node.mapped()();
  return true;
}

void VirtualTime::RunFor(std::int64_t ms) {
  const std::int64_t until = nowMs_ + ms;
  while (RunNext(until)) {
  }
  if (nowMs_ < until) nowMs_ = until;
}

bool VirtualTime::RunUntil(const std::function<bool()>& done, std::int64_t maxMs) {
  const std::int64_t until = nowMs_ + maxMs;
  while (!done()) {
    if (!RunNext(until)) {
      if (nowMs_ < until) nowMs_ = until;
      return done();
    }
  }
  return true;
}

}  // namespace nbx::test
