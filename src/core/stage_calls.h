#pragma once

#include <string>

#include "core/host.h"
#include "core/nimbometer.h"

namespace nbx {

// What a stage beneath the device asks of the layers above it: a command for
// the box goes into the device's queue, a debug line into the outputs'
// record. The device gives the one implementation (ConnectStages).
class StageCalls {
 public:
  virtual ~StageCalls() = default;
  virtual void QueueCommand(Nimbometer& nm, const std::string& command) = 0;
  virtual void RecordDebugInfo(Nimbometer& nm, const std::string& message) = 0;
};

// Unconnected, there is no line to the box: the command goes nowhere, as on
// a closed port.
inline void SendToBox(Nimbometer& nm, const std::string& command) {
  if (nm.io.calls != nullptr) nm.io.calls->QueueCommand(nm, command);
}

inline void LogToDebugRecord(Nimbometer& nm, const std::string& message) {
  if (nm.io.calls != nullptr) {
    nm.io.calls->RecordDebugInfo(nm, message);
  } else if (nm.io.host != nullptr) {
    nm.io.host->DebugInfo(message);
  }
}

}  // namespace nbx
