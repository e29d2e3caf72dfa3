#pragma once

#include <string>
#include <vector>

#include "core/nimbometer.h"
#include "support/child_process.h"
#include "support/sim_station.h"
#include "support/virtual_time.h"

namespace nbx::test {

// One installation frozen at a known moment (2026-11-21 22:00:05) with a
// known reading, its files in a fresh folder: the ground of the byte-exact
// checks of the output files.
struct FixedSite {
  FixedSite();

  std::string File(const std::string& name) const { return dir.File(name); }
  std::string Read(const std::string& name) const { return ReadFile(dir.File(name)); }
  // The file split at CR LF; a trailing part without CR LF is kept as it is.
  std::vector<std::string> Lines(const std::string& name) const;

  VirtualTime time;
  RecordingHost host{time};
  TempDir dir;
  Nimbometer nm;
};

}  // namespace nbx::test
