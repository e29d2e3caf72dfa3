// A REMOTE reading a master's transfer file that holds anything: too short,
// too long, numbers that are no numbers, dates far off, texts of any byte.
// The remote judges the sky from it, writes its own files, and may take the
// master's constants.
//
// Input: one byte of set-up (bits 0-1 the reads less one, bit 2 the
// constants reloaded after them, bit 3 the temperature unit, bits 4-5 the
// speed unit), then the bytes of the file.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "core/nimbometer.h"
#include "device/remote_reading.h"
#include "editing/master_constants.h"
#include "outputs/data_outputs.h"
#include "outputs/transfer_file.h"
#include "fuzz_station.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace nbx;
  if (size < 1) return 0;
  fuzz::FuzzStation st;
  Nimbometer& nm = st.nm;
  const std::uint8_t setUp = data[0];
  nm.config.NMRole = {false, true};
  nm.state.DeviceMode = "REMOTE";
  nm.config.UnitTempStr = (setUp & 8) != 0 ? "F" : "C";
  nm.config.UnitSpeedStr = std::string(1, "KMmk"[(setUp >> 4) & 3]);
  nm.state.IsRunning = true;
  test::WriteFile(TransferFilePath(nm), std::string(reinterpret_cast<const char*>(data) + 1, size - 1));

  const int reads = 1 + (setUp & 3);
  for (int i = 0; i < reads; ++i) {
    nm.state.CycleBusy = true;
    ReadTransferFile(nm);
    fuzz::Require(!nm.state.CycleBusy, "a read of the transfer file ends the cycle");
    fuzz::CheckCycleResult(nm);
    st.time.RunFor(10'000);
  }
  if ((setUp & 4) != 0) ReloadMasterConstants(nm);
  return 0;
}
