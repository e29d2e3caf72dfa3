#pragma once

namespace nbx {

// The program's timers. Each one, once armed, fires every interval until it is
// disarmed, as the window's timers do; a one-shot is a timer whose tick
// disarms it first.
enum class TimerId {
  CommOn,          // the period of the reading cycle
  Graph,           // one-shot that runs the work of a tick apart from the period
  RS232Timeout,    // the reply time-out of the command in flight
  Stop,            // one-shot that closes the port after Stop
  Initialization,  // one-shot of the first-start dialogue
  AlarmAjo,        // poll of the alarm sound's state
};
inline constexpr int TimerCount = 6;

class Timers {
 public:
  virtual ~Timers() = default;
  // Arms the timer with the interval, restarting it if it was armed.
  // An interval of 0 or less disarms it.
  virtual void Arm(TimerId id, int intervalMs) = 0;
  virtual void Disarm(TimerId id) = 0;
  virtual bool IsArmed(TimerId id) const = 0;
  virtual int Interval(TimerId id) const = 0;
};

}  // namespace nbx
