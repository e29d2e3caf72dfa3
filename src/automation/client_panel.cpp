#include "automation/client_panel.h"

#include <cmath>
#include <string>

#include "automation/window_state.h"
#include "core/nimbometer.h"
#include "core/number_format.h"

namespace nbx {

void RegisterUsers(Nimbometer& nm, int delta) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  const bool firstArrives = s.COMNoUsers == 0 && delta > 0;
  s.COMNoUsers += delta;
  d.LblUsers.Caption = "Attached Users: " + FormatNumber(s.COMNoUsers, "#0");
  if (firstArrives) {
    s.ClientPollTime = static_cast<double>(nm.MillisNow());
    s.ClientCallCount = 0;
    d.COMCalls.Caption = " ";
    d.COMPeriod.Caption = " ";
    d.ButtStop.Visible = false;
    d.FrameCOM.Visible = true;
  }
  if (s.COMNoUsers == 0) {
    d.FrameCOM.Visible = false;
    d.ButtStop.Visible = true;
  }
  if (firstArrives || s.COMNoUsers == 0) d.CloseItem.Enabled = s.COMNoUsers == 0;
  RefreshMenus(nm);
}

void BlinkLEDCOM(Nimbometer& nm, Colour colour, bool timed) {
  SiteState& s = nm.state;
  Display& d = nm.display;
  if (++s.ClientCallCount > 9999) s.ClientCallCount = 0;
  d.COMCalls.Caption = std::to_string(s.ClientCallCount);
  Lamp& first = d.LEDCOM[0];
  Lamp& second = d.LEDCOM[1];
  const bool firstWasGrey = first.FillColor == colours::LampGrey;
  first.FillColor = firstWasGrey ? colour : colours::LampGrey;
  second.FillColor = firstWasGrey ? colours::LampGrey : colour;
  if (!timed) return;
  const double now = static_cast<double>(nm.MillisNow());
  d.COMPeriod.Caption = FormatNumber(std::trunc((now - s.ClientPollTime) / 1000.0), "0") + "s";
  s.ClientPollTime = now;
}

}  // namespace nbx
