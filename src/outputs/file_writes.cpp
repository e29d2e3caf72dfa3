#include "outputs/file_writes.h"

#include <cerrno>
#include <fcntl.h>
#include <fstream>
#include <sys/stat.h>
#include <unistd.h>

namespace nbx {
namespace {

bool WriteAt(int fd, std::string_view bytes, off_t offset) {
  ssize_t written;
  do {
    written = ::pwrite(fd, bytes.data(), bytes.size(), offset);
  } while (written < 0 && errno == EINTR);
  return written == static_cast<ssize_t>(bytes.size());
}

}  // namespace

bool WriteInPlace(const std::string& path, std::initializer_list<std::string_view> parts) {
  const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return false;
  bool ok = true;
  off_t offset = 0;
  for (const std::string_view part : parts) {
    ok = ok && WriteAt(fd, part, offset);
    offset += static_cast<off_t>(part.size());
  }
  struct stat info {};
  if (ok && ::fstat(fd, &info) == 0 && info.st_size > offset) ok = ::ftruncate(fd, offset) == 0;
  return ::close(fd) == 0 && ok;
}

bool WriteWhole(const std::string& path, std::string_view content) {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out.write(content.data(), static_cast<std::streamsize>(content.size()));
  out.close();
  return !out.fail();
}

std::optional<std::string> ReadStart(const std::string& path, std::size_t size) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return std::nullopt;
  std::string bytes(size, '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(in.gcount()));
  return bytes;
}

bool FileExists(const std::string& path) {
  struct stat info {};
  return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

}  // namespace nbx
