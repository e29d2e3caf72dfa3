#pragma once

#include <string_view>

#include "core/nimbometer.h"
#include "support/fake_link.h"
#include "support/sim_station.h"

namespace nbx::fuzz {

// A finding that no sanitizer would see: a broken promise of the code under
// test. It prints what broke and aborts, so the fuzzer keeps the input.
void Require(bool condition, std::string_view promise);

// What every cycle leaves, whatever came in: values that are numbers,
// conditions and safe flags of their range, and the fixed records at their
// widths.
void CheckCycleResult(const Nimbometer& nm);

// The tests' station on virtual time, whose line is fed by hand: the fuzzer
// plays the box. Every folder of the outputs is the station's own temporary
// folder (under $NBX_FUZZ_SCRATCH when it is set), and there are no
// pictures, sounds or scripts.
struct FuzzStation : test::SimStation {
  FuzzStation();
  // The received bytes reach the receive handler, as the serial port's
  // signal would bring them; a closed port hears nothing.
  void Receive(std::string_view bytes);
  // Sends every folder of the outputs to the station's folder again, after
  // a load has put the store's folders in place.
  void KeepFilesInScratch();
  // The simulated box answers on the line in place of the fuzzer.
  void UseSimulatedBox() { nm.io.link = &link; }

  test::FakeLink hand;
};

}  // namespace nbx::fuzz
