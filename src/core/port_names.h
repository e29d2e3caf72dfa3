#pragma once

#include <string>

namespace nbx {
struct Nimbometer;

// The device path the port entry names: PortName when it is set, otherwise
// "COMn" as /dev/ttyS(n-1).
std::string PortDevice(const Nimbometer& nm);
// The port entry as the status line names it.
std::string PortEntry(const Nimbometer& nm);

}  // namespace nbx
