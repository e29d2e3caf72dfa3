#include "device/remote_reading.h"

#include "core/nimbometer.h"
#include "device/reading_cycle.h"
#include "outputs/transfer_file.h"

namespace nbx {

bool ReadTransferFile(Nimbometer& nm) {
  switch (TakeTransferFile(nm)) {
    case TransferRead::Stopped:
      nm.state.CycleBusy = false;
      return false;
    case TransferRead::Failed:
      // Values gone stale still make a cycle, so that the verdict and the
      // files see them as Unknown.
      if (DropOldMasterValues(nm)) ProcessFinishedCycle(nm);
      ShowTransferReadFailed(nm);
      return false;
    case TransferRead::Read:
      break;
  }
  const bool fresh = MasterValuesFresh(nm);
  // The same per-cycle work as a master's, on the mirrored values.
  ProcessFinishedCycle(nm);
  nm.display.ButtReload.Visible = true;
  nm.state.CycleBusy = false;
  return fresh;
}

}  // namespace nbx
