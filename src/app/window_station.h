#pragma once

#include <memory>
#include <string>

#include "app/command_line.h"
#include "station/simulated_box.h"

namespace nbx {
class IniSettings;
class Station;
class NBXNimbometerForm;
class WindowHost;

// The station with its main window: the window's load reads the store into
// the records and the controls, its close is the unload.
class WindowStation {
 public:
  WindowStation(Station& station, IniSettings& store, const ProgramOptions& options);
  ~WindowStation();

  // Reads the store and shows the window; with --simulate the simulated
  // box's port stands in for the stored one. False when the simulated box
  // could not start.
  bool Load();
  int Run();
  NBXNimbometerForm& window() { return *window_; }

 private:
  Station& station_;
  IniSettings& store_;
  const ProgramOptions& options_;
  SimulatedBox box_;
  std::string storedPortName_;
  std::unique_ptr<WindowHost> host_;
  std::unique_ptr<NBXNimbometerForm> window_;
};

// True when a window can be shown: a display, or a platform chosen by hand.
bool DisplayAvailable();

}  // namespace nbx
