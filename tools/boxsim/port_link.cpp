#include "boxsim/port_link.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace nbx::boxsim {
namespace {

bool IsSymlinkOrMissing(const std::string& path) {
  struct stat info {};
  if (::lstat(path.c_str(), &info) != 0) return errno == ENOENT;
  return S_ISLNK(info.st_mode);
}

std::string LinkTarget(const std::string& path) {
  char buffer[4096];
  const ssize_t length = ::readlink(path.c_str(), buffer, sizeof buffer);
  if (length < 0) return {};
  return std::string(buffer, static_cast<std::size_t>(length));
}

}  // namespace

bool PointLink(const std::string& linkPath, const std::string& target, std::string& why) {
  if (!IsSymlinkOrMissing(linkPath)) {
    why = linkPath + " exists and is not a symbolic link";
    return false;
  }
  const std::string fresh = linkPath + ".new" + std::to_string(::getpid());
  ::unlink(fresh.c_str());
  if (::symlink(target.c_str(), fresh.c_str()) != 0) {
    why = "cannot create " + fresh + ": " + std::strerror(errno);
    return false;
  }
  if (std::rename(fresh.c_str(), linkPath.c_str()) != 0) {
    why = "cannot replace " + linkPath + ": " + std::strerror(errno);
    ::unlink(fresh.c_str());
    return false;
  }
  return true;
}

void RemoveLinkTo(const std::string& linkPath, const std::string& target) {
  if (linkPath.empty() || !IsSymlinkOrMissing(linkPath)) return;
  if (LinkTarget(linkPath) == target) ::unlink(linkPath.c_str());
}

}  // namespace nbx::boxsim
