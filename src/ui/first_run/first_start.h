#pragma once

#include <functional>

class QWidget;

namespace nbx {
class Station;

// What the window lends the first start: its tab "Device" shown, the
// controls that may not be touched while the box is tried (Start, the tabs,
// the recording options) disabled or enabled, and a repaint so that the
// warning frame is seen while the box is asked.
struct FirstStartWindow {
  QWidget* window = nullptr;
  std::function<void()> showDeviceTab;
  std::function<void(bool)> setControlsEnabled;
  std::function<void()> refresh;
};

enum class FirstStartOutcome {
  Ready,   // the station is set up (or was already): the window goes on
  Unload,  // the user cancelled, or the box could not be reached: the program ends
};

// The first-start dialogue, run once the window is up: with DeviceInitialized
// 0 or 3 asks for the role; a MASTER picks its port and folder and its box
// is detected. A REMOTE and an installation already set up go straight on.
// Never called headless: there the role and the port come from the settings.
FirstStartOutcome RunFirstStart(Station& station, const FirstStartWindow& window);

}  // namespace nbx
