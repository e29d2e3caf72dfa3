#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <utility>

#include "core/clock.h"
#include "core/timers.h"

namespace nbx::test {

// A clock and timers that run on simulated time: a whole night passes in
// milliseconds, and every event happens in a reproducible order.
class VirtualTime : public Clock, public Timers {
 public:
  explicit VirtualTime(LocalDateTime start = {2026, 11, 21, 22, 0, 0, 0});

  LocalDateTime Now() const override;
  std::int64_t NowMs() const { return nowMs_; }

  void Arm(TimerId id, int intervalMs) override;
  void Disarm(TimerId id) override;
  bool IsArmed(TimerId id) const override;
  int Interval(TimerId id) const override;

  // Called when a timer fires.
  std::function<void(TimerId)> onTimer;

  // Runs `event` `delayMs` from now.
  void After(std::int64_t delayMs, std::function<void()> event);
  // Runs every event and timer due within the next `ms`.
  void RunFor(std::int64_t ms);
  // Runs until `done` holds or `maxMs` have passed; true when `done` held.
  bool RunUntil(const std::function<bool()>& done, std::int64_t maxMs);
  // Moves the wall clock without running anything (the clock is set back or forward).
  void JumpClock(std::int64_t ms) { clockOffsetMs_ += ms; }

 private:
  struct TimerSlot {
    bool armed = false;
    int interval = 0;
    std::uint64_t generation = 0;
  };
  struct Key {
    std::int64_t at;
    std::uint64_t seq;
    bool operator<(const Key& o) const { return at != o.at ? at < o.at : seq < o.seq; }
  };
  void ScheduleTimer(TimerId id, std::int64_t at);
  bool RunNext(std::int64_t untilMs);

  double startSerial_;
  std::int64_t nowMs_ = 0;
  std::int64_t clockOffsetMs_ = 0;
  std::uint64_t seq_ = 0;
  TimerSlot timers_[TimerCount];
  std::map<Key, std::function<void()>> queue_;
};

}  // namespace nbx::test
