#include "core/port_names.h"

#include <algorithm>

#include "core/nimbometer.h"
#include "core/text.h"

namespace nbx {

std::string PortEntry(const Nimbometer& nm) {
  const std::string name = Trim(nm.config.PortName);
  if (!name.empty()) return name;
  return "COM" + std::to_string(nm.config.COMPort + 1);
}

std::string PortDevice(const Nimbometer& nm) {
  const std::string name = Trim(nm.config.PortName);
  if (!name.empty()) return name;
  return "/dev/ttyS" + std::to_string(std::max(0, nm.config.COMPort));
}

}  // namespace nbx
