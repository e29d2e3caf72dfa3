#include "process_resources.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace nbx::test {

std::int64_t ResidentKiB() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t sizePages = 0, residentPages = 0;
  if (!(statm >> sizePages >> residentPages)) return -1;
  return residentPages * ::sysconf(_SC_PAGESIZE) / 1024;
}

std::map<int, std::string> OpenFiles() {
  std::map<int, std::string> files;
  // The listing's own descriptor names the listed folder.
  const std::string listing = "/proc/" + std::to_string(::getpid()) + "/fd";
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    const std::string name = entry.path().filename().string();
    const int fd = std::atoi(name.c_str());
    std::error_code linkError;
    const auto target = std::filesystem::read_symlink(entry.path(), linkError);
    // The listing's own descriptor is gone by the time its link is read.
    if (linkError || target == listing) continue;
    files[fd] = target.string();
  }
  return files;
}

std::map<int, std::string> NewlyOpen(const std::map<int, std::string>& before,
                                     const std::map<int, std::string>& now) {
  std::map<int, std::string> added;
  for (const auto& [fd, target] : now) {
    const auto old = before.find(fd);
    if (old == before.end() || old->second != target) added[fd] = target;
  }
  return added;
}

}  // namespace nbx::test
