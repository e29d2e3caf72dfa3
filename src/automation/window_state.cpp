#include "automation/window_state.h"

#include "core/nimbometer.h"

namespace nbx {

void RefreshMenus(Nimbometer& nm) {
  Display& d = nm.display;
  d.mPopRestore.Enabled = d.WindowMinimized;
  d.mPopMinimize.Enabled = !d.WindowMinimized;
  const bool clients = nm.state.COMNoUsers >= 1;
  const bool running = nm.state.IsRunning;
  d.mnuStart.Visible = d.mPopStart.Visible = !clients && !running;
  d.mnuStop.Visible = d.mPopStop.Visible = !clients && running;
  for (Control* c : {&d.mnuExit, &d.mPopExit, &d.mSep0, &d.mSep1}) c->Visible = !clients;
}

void WindowNormal(Nimbometer& nm) {
  nm.display.WindowMinimized = false;
  RefreshMenus(nm);
}

void WindowMinimize(Nimbometer& nm) {
  nm.display.WindowMinimized = true;
  RefreshMenus(nm);
}

}  // namespace nbx
