#pragma once

#include <string>

#include "core/port_names.h"

namespace nbx {
struct Nimbometer;

// Opens the port if it is closed and sends "z!"; true when the port is open.
// On failure the conditions go Unknown and the status line tells why.
bool OpenDevicePort(Nimbometer& nm);
void CloseDevicePort(Nimbometer& nm);
// The first handshake with the box ("z", "B", "K", twice at most); true when
// the box told its firmware.
bool DetectDevice(Nimbometer& nm);

// The Start and Stop actions of the window, the menus and the automation object.
void StartAction(Nimbometer& nm);
void StopAction(Nimbometer& nm);
// Public: Start or Stop only when it would change something, and the Stop
// button goes away, as a client now drives the box.
void Start_Device(Nimbometer& nm);
void Stop_Device(Nimbometer& nm);

void TimerStopTick(Nimbometer& nm);
void TimerRS232TimeoutTick(Nimbometer& nm);
// A command got no reply, or the port could not be reopened to send one: the
// cycle ends, the failure is counted, and at the limit the values become
// Unknown. `reopenPort` retries the port first.
void CommandFailed(Nimbometer& nm, bool reopenPort);
// Puts the values that read as Unknown into every sample, once the failures
// have reached UnknownRS232NoError.
void FillSentinels(Nimbometer& nm);


}  // namespace nbx
