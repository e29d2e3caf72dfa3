#include "core/port_names.h"

#include <algorithm>
#include <charconv>

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

std::optional<int> ComIndex(std::string_view entry) {
  const std::string name = Trim(entry);
  if (name.size() < 4 || name.compare(0, 3, "COM") != 0) return std::nullopt;
  int n = 0;
  const char* end = name.data() + name.size();
  const auto [stop, error] = std::from_chars(name.data() + 3, end, n);
  if (error != std::errc() || stop != end || n < 1 || n > 32) return std::nullopt;
  return n - 1;
}

std::string DeviceOfEntry(std::string_view entry) {
  if (const std::optional<int> index = ComIndex(entry)) return "/dev/ttyS" + std::to_string(*index);
  return Trim(entry);
}

}  // namespace nbx
