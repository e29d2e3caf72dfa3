#include "device/command_queue.h"

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "device/reading_cycle.h"
#include "core/serial_link.h"

namespace nbx {
namespace {

constexpr const char* kPortLost = "Serial port lost - USB/Serial malfunction?";

}  // namespace

void ClearCommandQueue(Nimbometer& nm) {
  nm.state.QueueSent = 0;
  nm.state.QueueFirst = 0;
  nm.state.QueueCount = 0;
}

void DiscardInput(Nimbometer& nm) {
  if (nm.io.link->IsOpen()) (void)nm.io.link->ReadAll();
}

void QueueCommand(Nimbometer& nm, const std::string& command) {
  SiteState& s = nm.state;
  if (s.CommFailed) {
    DiscardInput(nm);
    ClearCommandQueue(nm);
  }
  if (s.QueueFirst < 1) {
    s.QueueSent = 0;
    s.QueueFirst = 1;
    s.QueueCount = 0;
  }
  if (s.QueueCount >= CommandQueueSize) {
    nm.io.host->Trace(kPortLost);
    return;
  }
  s.QueueCount++;
  s.CommandQueue[static_cast<std::size_t>(s.QueueCount)] = command;
  if (s.QueueSent < s.QueueFirst) SendNextCommand(nm);
}

void SendNextCommand(Nimbometer& nm) {
  SiteState& s = nm.state;
  s.QueueSent++;
  if (s.QueueSent > s.QueueCount) {
    ClearCommandQueue(nm);
    DiscardInput(nm);
    ProcessFinishedCycle(nm);
    s.CycleBusy = false;
    return;
  }
  DiscardInput(nm);
  nm.io.timers->Arm(TimerId::RS232Timeout, static_cast<int>(nm.config.PORTTimeout * 1000));
  s.RxBuffer.clear();
  const std::string text = s.CommandQueue[static_cast<std::size_t>(s.QueueSent)] + "!";
  if (!nm.io.link->Write(text)) {
    // The reply time-out, already armed, ends the cycle and reopens the port.
    nm.io.host->Trace(kPortLost);
    return;
  }
  nm.io.host->Trace("Tx: " + text);
}

}  // namespace nbx
