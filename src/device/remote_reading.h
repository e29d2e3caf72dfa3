#pragma once

namespace nbx {
struct Nimbometer;

// REMOTE: reads the master's transfer file in place of a reading cycle and
// runs the per-cycle work on its values; true when the data are fresh.
// Clears CycleBusy.
bool ReadTransferFile(Nimbometer& nm);

}  // namespace nbx
