#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace nbx::test {

// Resident memory of this process, from /proc/self/statm, in KiB.
std::int64_t ResidentKiB();

// The open file descriptors of this process and what each one names.
std::map<int, std::string> OpenFiles();

// The descriptors of `now` that `before` did not have, as "fd -> target" lines.
std::map<int, std::string> NewlyOpen(const std::map<int, std::string>& before,
                                     const std::map<int, std::string>& now);

}  // namespace nbx::test
