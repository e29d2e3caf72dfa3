#pragma once

#include <string>

#include "app/command_line.h"
#include "station/simulated_box.h"

namespace nbx {
class IniSettings;
class Station;

// The station without a window. It stands where the window's load and
// unload stand: the whole store is read before the first cycle and written
// once the Stop action has closed the port.
class HeadlessStation {
 public:
  // From here on SIGINT and SIGTERM end the station cleanly, even while it
  // is still starting.
  HeadlessStation(Station& station, IniSettings& store, const ProgramOptions& options);

  // Reads the store; with --simulate the simulated box's port stands in for
  // the stored one. False when the simulated box could not start.
  bool Load();
  // Start at once, one line per cycle; SIGINT or SIGTERM run the Stop
  // action, then the unload, and end the program with 0.
  int Run();

 private:
  void Unload();

  Station& station_;
  IniSettings& store_;
  const ProgramOptions& options_;
  SimulatedBox box_;
  std::string storedPortName_;
};

}  // namespace nbx
