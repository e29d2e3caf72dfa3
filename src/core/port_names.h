#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace nbx {
struct Nimbometer;

// The device path the port entry names: PortName when it is set, otherwise
// "COMn" as /dev/ttyS(n-1).
std::string PortDevice(const Nimbometer& nm);
// The port entry as the status line names it.
std::string PortEntry(const Nimbometer& nm);
// The port number n-1 of an entry "COMn" (n from 1 to 32); none for a path.
std::optional<int> ComIndex(std::string_view entry);
// The device path an entry as the user typed it names.
std::string DeviceOfEntry(std::string_view entry);

}  // namespace nbx
