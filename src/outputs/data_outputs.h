#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The user data line of a finished cycle.
void WriteUserDataLine(Nimbometer& nm);
// MASTER: the transfer file for REMOTE installations.
void WriteTransferFile(Nimbometer& nm);
// The single-line, JSON and debug files.
void WriteSingleLineFiles(Nimbometer& nm);
// REMOTE: reads the master's transfer file in place of a reading cycle; true
// when the data are fresh. Clears CycleBusy.
bool ReadTransferFile(Nimbometer& nm);
// At Start: the single-line file of an earlier run goes.
void DeleteSingleLineFile(Nimbometer& nm);
// At Start: the data folder check; returns its code ("d11", "d12") or "".
std::string CheckDataFolder(Nimbometer& nm);
// A debug line into the user data file.
void Record_DebugInfo(Nimbometer& nm, const std::string& message);

}  // namespace nbx
