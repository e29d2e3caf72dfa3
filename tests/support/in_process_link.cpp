#include "support/in_process_link.h"

#include <algorithm>

namespace nbx::test {

bool InProcessLink::Open(const std::string&, const std::string&, std::string& errorText) {
  if (!present_) {
    errorText = "No such file or directory";
    return false;
  }
  open_ = true;
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
  const std::string reply = box_.Receive(bytes, static_cast<double>(time_.NowMs()) / 1000.0);
  const int baud = box_.delivery.baud;
  // The command itself takes its time on the wire before the box can answer.
  const std::int64_t perByteUs = baud > 0 ? 10'000'000 / baud : 0;
  const std::int64_t startUs = std::max(time_.NowMs(), lineFreeAtMs_) * 1000 +
                               static_cast<std::int64_t>(bytes.size()) * perByteUs + 1000;
  if (reply.empty()) return true;
  // A paced reply comes a byte at a time, a millisecond apart at least; otherwise whole.
  const bool paced = box_.delivery.byteByByte || baud > 0;
  const std::int64_t gapUs = std::max<std::int64_t>(perByteUs, 1000);
  for (std::size_t i = 0; i < (paced ? reply.size() : 1); ++i) {
    const std::int64_t atUs = paced ? startUs + static_cast<std::int64_t>(i + 1) * gapUs : startUs;
    time_.After(atUs / 1000 - time_.NowMs(),
                [this, piece = paced ? reply.substr(i, 1) : reply, session = session_] { Deliver(piece, session); });
  }
  lineFreeAtMs_ = (paced ? startUs + static_cast<std::int64_t>(reply.size()) * gapUs : startUs) / 1000;
  return true;
}

void InProcessLink::Deliver(std::string bytes, std::uint64_t session) {
  if (session != session_ || !open_) return;
  input_ += bytes;
  if (onReceive) onReceive();
}

}  // namespace nbx::test
