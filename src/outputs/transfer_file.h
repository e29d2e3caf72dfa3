#pragma once

#include <string>

#include "core/transfer_record.h"

namespace nbx {
struct Nimbometer;

// The mirror: a MASTER rewrites one binary file after each cycle, any number
// of REMOTEs read it on their own tick and judge the sky from it. One
// writer, many readers, no handshake. WriteTransferFile is declared in
// data_outputs.h, ReadTransferFile in device/remote_reading.h.

// The folder of the role in use joined with the file name.
std::string TransferFilePath(const Nimbometer& nm);
// The record as the master writes it from its present state.
TransferRecord BuildTransferRecord(const Nimbometer& nm);

// True when the master's last reading is within COMTimeout seconds of now,
// either way; otherwise "w42" and "Reading is N sec wrong".
bool CheckTransferAge(Nimbometer& nm);
// True when the record has stood still for 10 reads and 5 minutes.
bool MasterIsGone(const Nimbometer& nm);

// The steps of a REMOTE's cycle, which reads the master's file in place of
// the box (ReadTransferFile runs them around the per-cycle work).
enum class TransferRead { Read, Failed, Stopped };
// Shows the reading, reads the record and, when it is whole, takes its values.
TransferRead TakeTransferFile(Nimbometer& nm);
// After a failed read: the last values stand while they are young enough;
// once too old they go, so that the conditions turn Unknown, and the result
// is true: the cycle's work must then run on the emptied values.
bool DropOldMasterValues(Nimbometer& nm);
// "Error accessing MASTER data file", "r31", and the cycle ends.
void ShowTransferReadFailed(Nimbometer& nm);
// After a good read: whether the master's reading is young enough, with the
// communication alarm started or stopped to match.
bool MasterValuesFresh(Nimbometer& nm);

}  // namespace nbx
