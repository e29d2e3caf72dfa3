#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "boxsim/box.h"
#include "core/host.h"
#include "core/nimbometer.h"
#include "support/fake_link.h"
#include "support/in_process_link.h"
#include "support/virtual_time.h"

namespace nbx::fuzz {

// A finding that no sanitizer would see: a broken promise of the code under
// test. It prints what broke and aborts, so the fuzzer keeps the input.
void Require(bool condition, std::string_view promise);

// What every cycle leaves, whatever came in: values that are numbers,
// conditions and safe flags of their range, and the fixed records at their
// widths.
void CheckCycleResult(const Nimbometer& nm);

// This process's own folder for the files a station writes while fuzzed:
// NBX_FUZZ_SCRATCH when it is set, otherwise a fresh folder under the
// system's temporary folder, removed when the process ends. Created at
// first use.
const std::string& ScratchFolder();

// Writes `bytes` to the file, replacing it.
void WriteFileBytes(const std::string& path, std::string_view bytes);

// The surroundings of the logic: waiting runs the virtual time, nothing is
// printed.
class QuietHost : public Host {
 public:
  explicit QuietHost(test::VirtualTime& time) : time_(time) {}
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override {
    return time_.RunUntil(done, timeoutMs);
  }
  char DecimalSeparator() const override { return decimalSeparator; }
  void CycleProcessed() override { ++cyclesProcessed; }

  char decimalSeparator = '.';
  int cyclesProcessed = 0;

 private:
  test::VirtualTime& time_;
};

// A whole station on virtual time whose line is fed by hand: the fuzzer
// plays the box. Every folder of the outputs is the scratch folder, and
// there are no pictures, sounds or scripts.
struct FuzzStation {
  FuzzStation();
  // The received bytes reach the receive handler, as the serial port's
  // signal would bring them.
  void Receive(std::string_view bytes);
  // Sends every folder of the outputs to the scratch folder again, after a
  // load has put the store's folders in place.
  void KeepFilesInScratch();
  // The simulated box answers on the line in place of the fuzzer.
  void UseSimulatedBox();

  test::VirtualTime time;
  test::FakeLink link;
  boxsim::Box box;
  test::InProcessLink boxLink{time, box};
  QuietHost host{time};
  Nimbometer nm;
};

}  // namespace nbx::fuzz
