#include "boxsim/box_port.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>

namespace nbx::boxsim {
namespace {

// With no host holding the slave, the master reports a hang-up on every poll;
// waiting a little before looking again keeps the loop from spinning.
constexpr double HangUpRestSeconds = 0.020;
constexpr double FullLineRetrySeconds = 0.005;

std::string SystemError(const char* what) { return std::string(what) + ": " + std::strerror(errno); }

bool MakeSlaveRaw(const std::string& path, std::string& why) {
  const int slave = ::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (slave < 0) {
    why = SystemError("opening the slave");
    return false;
  }
  termios settings{};
  bool ok = ::tcgetattr(slave, &settings) == 0;
  if (ok) {
    ::cfmakeraw(&settings);
    ::cfsetispeed(&settings, B9600);
    ::cfsetospeed(&settings, B9600);
    ok = ::tcsetattr(slave, TCSANOW, &settings) == 0;
  }
  if (!ok) why = SystemError("setting the slave raw");
  ::close(slave);
  return ok;
}

}  // namespace

bool BoxPort::Open(std::string& why) {
  Close();
  const int master = ::posix_openpt(O_RDWR | O_NOCTTY);
  if (master < 0) {
    why = SystemError("posix_openpt");
    return false;
  }
  const char* slaveName = nullptr;
  if (::grantpt(master) != 0 || ::unlockpt(master) != 0 || (slaveName = ::ptsname(master)) == nullptr) {
    why = SystemError("preparing the pseudo-terminal");
    ::close(master);
    return false;
  }
  const std::string slavePath = slaveName;
  if (!MakeSlaveRaw(slavePath, why)) {
    ::close(master);
    return false;
  }
  ::fcntl(master, F_SETFL, ::fcntl(master, F_GETFL) | O_NONBLOCK);
  ::fcntl(master, F_SETFD, FD_CLOEXEC);
  master_ = master;
  slavePath_ = slavePath;
  restUntil_ = 0;
  return true;
}

void BoxPort::Close() {
  if (master_ >= 0) ::close(master_);
  master_ = -1;
  slavePath_.clear();
  pacer_.Clear();
  box_.DropPartialCommand();
}

void BoxPort::Service(double nowSeconds) {
  if (WantsInput(nowSeconds)) ReadAndAnswer(nowSeconds);
  if (IsOpen()) WriteDue(nowSeconds);
}

void BoxPort::ReadAndAnswer(double nowSeconds) {
  char buffer[4096];
  for (;;) {
    const ssize_t count = ::read(master_, buffer, sizeof buffer);
    if (count > 0) {
      const std::string reply =
          box_.Receive(std::string_view(buffer, static_cast<std::size_t>(count)), nowSeconds);
      pacer_.Push(reply, nowSeconds, box_.delivery);
      continue;
    }
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
    // EIO (or an end of file): nobody holds the slave just now.
    restUntil_ = nowSeconds + HangUpRestSeconds;
    return;
  }
}

void BoxPort::WriteDue(double nowSeconds) {
  std::vector<std::string> writes = pacer_.TakeDue(nowSeconds);
  for (std::size_t i = 0; i < writes.size(); ++i) {
    const std::string& bytes = writes[i];
    ssize_t written = ::write(master_, bytes.data(), bytes.size());
    while (written < 0 && errno == EINTR) written = ::write(master_, bytes.data(), bytes.size());
    if (written == static_cast<ssize_t>(bytes.size())) continue;
    if (written < 0 && errno != EAGAIN && errno != EWOULDBLOCK) {
      pacer_.Clear();  // no host to hear the rest
      return;
    }
    // The line is full: what was not written goes back, first in line, and
    // waits a moment for the host to read.
    const double retrySeconds = nowSeconds + FullLineRetrySeconds;
    for (std::size_t later = writes.size() - 1; later > i; --later)
      pacer_.PutBack(writes[later], retrySeconds);
    pacer_.PutBack(std::string_view(bytes).substr(written > 0 ? static_cast<std::size_t>(written) : 0),
                   retrySeconds);
    return;
  }
}

std::optional<double> BoxPort::NextWakeSeconds(double nowSeconds) const {
  std::optional<double> wake = pacer_.NextDueSeconds();
  if (IsOpen() && nowSeconds < restUntil_) wake = std::min(wake.value_or(restUntil_), restUntil_);
  return wake;
}

}  // namespace nbx::boxsim
