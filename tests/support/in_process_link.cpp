#include "support/in_process_link.h"

#include <algorithm>

namespace nbx::test {

bool InProcessLink::Open(const std::string& device, const std::string&, std::string& errorText) {
  if (!present_) {
    errorText = "No such file or directory";
    return false;
  }
  lastDevice = device;
  open_ = true;
  ++opens;
  ++session_;
  input_.clear();
  return true;
}

void InProcessLink::Close() {
  open_ = false;
  ++session_;  // bytes still on their way are lost with the port
  input_.clear();
}

void InProcessLink::Unplug() {
  present_ = false;
  Close();
}

std::string InProcessLink::ReadAll() {
  std::string out;
  out.swap(input_);
  return out;
}

bool InProcessLink::Write(std::string_view bytes) {
  if (!open_) return false;
  const double nowSeconds = static_cast<double>(time_.NowMs()) / 1000.0;
  std::string reply = box_.Receive(bytes, nowSeconds);
  const int baud = box_.delivery.baud;
  // The command itself takes its time on the wire before the box can answer.
  const std::int64_t perByteUs = baud > 0 ? 10'000'000 / baud : 0;
  std::int64_t startUs = std::max(time_.NowMs(), lineFreeAtMs_) * 1000 +
                         static_cast<std::int64_t>(bytes.size()) * perByteUs + 1000;
  if (reply.empty()) return true;
  const std::uint64_t session = session_;
  if (box_.delivery.byteByByte || baud > 0) {
    for (std::size_t i = 0; i < reply.size(); ++i) {
      const std::int64_t atUs = startUs + static_cast<std::int64_t>(i + 1) * std::max<std::int64_t>(perByteUs, 1000);
      time_.After(atUs / 1000 - time_.NowMs(), [this, b = std::string(1, reply[i]), session] {
        Deliver(b, session);
      });
    }
    lineFreeAtMs_ = (startUs + static_cast<std::int64_t>(reply.size()) * std::max<std::int64_t>(perByteUs, 1000)) / 1000;
  } else {
    time_.After(startUs / 1000 - time_.NowMs(), [this, reply, session] { Deliver(reply, session); });
    lineFreeAtMs_ = startUs / 1000;
  }
  return true;
}

void InProcessLink::Deliver(std::string bytes, std::uint64_t session) {
  if (session != session_ || !open_) return;
  input_ += bytes;
  if (onReceive) onReceive();
}

}  // namespace nbx::test
