#pragma once

#include <string>

#include "core/transfer_record.h"

namespace nbx {
struct Nimbometer;

// The mirror: a MASTER rewrites one binary file after each cycle, any number
// of REMOTEs read it on their own tick and judge the sky from it. One
// writer, many readers, no handshake. WriteTransferFile and ReadTransferFile
// are declared in data_outputs.h.

// The folder of the role in use joined with the file name.
std::string TransferFilePath(const Nimbometer& nm);
// The record as the master writes it from its present state.
TransferRecord BuildTransferRecord(const Nimbometer& nm);

// True when the master's last reading is within COMTimeout seconds of now,
// either way; otherwise "w42" and "Reading is N sec wrong".
bool CheckTransferAge(Nimbometer& nm);
// True when the record has stood still for 10 reads and 5 minutes.
bool MasterIsGone(const Nimbometer& nm);
// The remote's sky factors and unknown limits take the master's values.
void ReloadMasterConstants(Nimbometer& nm);

}  // namespace nbx
