#pragma once

#include <string_view>

#include "core/nimbometer.h"
#include "support/fake_link.h"
#include "support/sim_station.h"

namespace nbx::fuzz {

// A broken promise of the code under test, which no sanitizer would see:
// prints it and aborts, so that the fuzzer keeps the input.
void Require(bool condition, std::string_view promise);

// What every cycle leaves, whatever came in: numbers, conditions and safe
// flags of their range, the fixed records at their widths.
void CheckCycleResult(const Nimbometer& nm);

// The tests' station on virtual time, its line fed by hand: the fuzzer plays
// the box. Its outputs go to its own temporary folder (under
// $NBX_FUZZ_SCRATCH when set); no pictures, sounds or scripts.
struct FuzzStation : test::SimStation {
  FuzzStation();
  // Bytes for the receive handler, as the port's signal brings them; a
  // closed port hears nothing.
  void Receive(std::string_view bytes);
  // Every output folder back to the station's own, after a load.
  void KeepFilesInScratch();

  test::FakeLink hand;
};

}  // namespace nbx::fuzz
