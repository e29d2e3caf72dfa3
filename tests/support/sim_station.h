#pragma once

#include <string>
#include <vector>

#include "boxsim/box.h"
#include "core/host.h"
#include "core/nimbometer.h"
#include "support/child_process.h"
#include "support/in_process_link.h"
#include "support/virtual_time.h"

namespace nbx::test {

// The program's surroundings for a test: it keeps what the logic logged and
// asked, and waits on virtual time.
class RecordingHost : public Host {
 public:
  explicit RecordingHost(VirtualTime& time) : time_(time) {}
  void DebugInfo(std::string_view message) override { debugLines.emplace_back(message); }
  int ShowMessage(std::string_view text, int buttons, std::string_view title) override {
    messages.emplace_back(text);
    return reply != 0 ? reply : Host::ShowMessage(text, buttons, title);
  }
  char DecimalSeparator() const override { return decimalSeparator; }
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override {
    return time_.RunUntil(done, timeoutMs);
  }
  void CycleProcessed() override { ++cyclesProcessed; }

  std::vector<std::string> debugLines;  // the logic's log lines, in order
  std::vector<std::string> messages;
  int cyclesProcessed = 0;
  int reply = 0;                // the answer to a message; 0 gives the default one
  char decimalSeparator = '.';  // the machine's locale

 private:
  VirtualTime& time_;
};

// A whole station on virtual time with the simulated box in-process: the
// logic, the box, the line between them and the timers.
class SimStation {
 public:
  SimStation();

  // The commands the box has received (without "!"), from `from` on.
  std::vector<std::string> CommandsSince(std::size_t from) const;
  // Presses Start and runs until the first full cycle has been processed.
  void StartAndRunFirstCycles();
  // Runs `periods` whole refresh periods.
  void RunPeriods(int periods);

  VirtualTime time;
  TempDir files;  // where the station's data files go
  boxsim::Box box;
  InProcessLink link{time, box};
  RecordingHost host{time};
  Nimbometer nm;
};

}  // namespace nbx::test
