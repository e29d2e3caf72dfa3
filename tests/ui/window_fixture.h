#pragma once

#include <QTemporaryDir>
#include <memory>

#include "station/settings_store.h"
#include "station/simulated_box.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/main_window/window_host.h"

namespace nbx::test {

// The main window on a real station: its own settings file and folder, and
// the simulated box on a pseudo-terminal, told `box` ("sky=-25").
class WindowOnStation {
 public:
  explicit WindowOnStation(const QStringList& box = {});
  ~WindowOnStation();

  template <typename T = QWidget>
  T* Find(const QString& name) {
    return window->findChild<T*>(name);
  }

  QTemporaryDir dir;
  IniSettings store;
  Station station;
  Nimbometer& nm = station.nm();
  SimulatedBox box;
  WindowHost host{station.host()};
  std::unique_ptr<NBXNimbometerForm> window;
  int cycles = 0;        // cycles processed so far
  bool stopped = false;  // the last Stop has finished
};

}  // namespace nbx::test
