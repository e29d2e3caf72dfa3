#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// Appends a command (without its "!") and starts sending if the line is idle.
// The only way to send to the box.
void QueueCommand(Nimbometer& nm, const std::string& command);
// Advances the queue: sends the next command, or, when the queue has run out,
// ends the cycle through ProcessFinishedCycle.
void SendNextCommand(Nimbometer& nm);
void ClearCommandQueue(Nimbometer& nm);
// Reads and drops whatever waits on the line.
void DiscardInput(Nimbometer& nm);

}  // namespace nbx
