#pragma once

#include <QTimer>
#include <array>
#include <functional>
#include <memory>

#include "core/timers.h"

namespace nbx {

// The program's timers as QTimers of the one thread's event loop.
class QtTimers : public Timers {
 public:
  explicit QtTimers(const std::function<void(TimerId)>& onTimer);
  ~QtTimers() override;

  void Arm(TimerId id, int intervalMs) override;
  void Disarm(TimerId id) override;
  bool IsArmed(TimerId id) const override;
  int Interval(TimerId id) const override;

 private:
  std::array<std::unique_ptr<QTimer>, TimerCount> timers_;
};

}  // namespace nbx
