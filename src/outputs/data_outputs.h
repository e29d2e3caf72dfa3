#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// What the reading cycle and the Start action call of the outputs. The
// pieces behind them: user_data_file.h, single_line_record.h, json_file.h,
// debug_record.h, transfer_file.h, output_codes.h.

// The user data line of a finished cycle, every FreqSave cycles.
void WriteUserDataLine(Nimbometer& nm);
// MASTER: the transfer file for REMOTE installations; "w41" when it fails.
void WriteTransferFile(Nimbometer& nm);
// The single-line, extended, JSON, debug and "CS-" files; "c51" when one fails.
void WriteSingleLineFiles(Nimbometer& nm);
// At Start: the single-line file of an earlier run goes.
void DeleteSingleLineFile(Nimbometer& nm);
// At Start: the data folder check; creates a missing folder and returns its
// code ("d11" created, "d12" could not be), or "" when the folder is there.
std::string CheckDataFolder(Nimbometer& nm);
// A debug message: to the host, and with chkDebug into the user data file
// while recording.
void Record_DebugInfo(Nimbometer& nm, const std::string& message);

}  // namespace nbx
