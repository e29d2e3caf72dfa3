#include "outputs/data_outputs.h"

#include "core/nimbometer.h"

namespace nbx {

void WriteUserDataLine(Nimbometer&) {}
void WriteTransferFile(Nimbometer&) {}
void WriteSingleLineFiles(Nimbometer&) {}
bool ReadTransferFile(Nimbometer& nm) {
  nm.state.CycleBusy = false;
  return false;
}
void DeleteSingleLineFile(Nimbometer&) {}
std::string CheckDataFolder(Nimbometer&) { return {}; }
void Record_DebugInfo(Nimbometer& nm, const std::string& message) { nm.io.host->DebugInfo(message); }

}  // namespace nbx
