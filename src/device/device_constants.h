#pragma once

namespace nbx {
struct SiteState;

// The box has identified itself: the nine electrical constants take the
// values of the box's hardware, whatever the settings held.
void ApplyDeviceConstants(SiteState& s);

}  // namespace nbx
