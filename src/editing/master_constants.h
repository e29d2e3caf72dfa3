#pragma once

namespace nbx {
struct Nimbometer;

// REMOTE: the sky factors and Unknown limits take the master's values from
// its last transfer record.
void ReloadMasterConstants(Nimbometer& nm);

}  // namespace nbx
