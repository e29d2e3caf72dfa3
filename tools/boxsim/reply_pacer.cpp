#include "boxsim/reply_pacer.h"

#include <algorithm>

namespace nbx::boxsim {

void ReplyPacer::Push(std::string_view bytes, double nowSeconds, const Delivery& delivery) {
  double gap = delivery.baud > 0 ? 10.0 / delivery.baud : 0;
  if (delivery.byteByByte) gap = std::max(gap, ByteByByteGapSeconds);
  // A reply queued behind another starts where that one ends.
  double due = pending_.empty() ? nowSeconds : std::max(nowSeconds, lastDueSeconds_);
  for (const char byte : bytes) {
    due += gap;
    pending_.push_back(PendingByte{byte, due, delivery.byteByByte});
  }
  if (!pending_.empty()) lastDueSeconds_ = pending_.back().dueSeconds;
}

std::vector<std::string> ReplyPacer::TakeDue(double nowSeconds) {
  std::vector<std::string> writes;
  bool lastWasOwn = true;
  while (!pending_.empty() && pending_.front().dueSeconds <= nowSeconds) {
    const PendingByte next = pending_.front();
    pending_.pop_front();
    if (next.ownWrite || lastWasOwn) writes.emplace_back();
    writes.back() += next.byte;
    lastWasOwn = next.ownWrite;
  }
  return writes;
}

void ReplyPacer::PutBack(std::string_view bytes, double nowSeconds) {
  for (auto byte = bytes.rbegin(); byte != bytes.rend(); ++byte) {
    pending_.push_front(PendingByte{*byte, nowSeconds, false});
  }
  if (!pending_.empty()) lastDueSeconds_ = std::max(lastDueSeconds_, pending_.back().dueSeconds);
}

std::optional<double> ReplyPacer::NextDueSeconds() const {
  if (pending_.empty()) return std::nullopt;
  return pending_.front().dueSeconds;
}

void ReplyPacer::Clear() { pending_.clear(); }

}  // namespace nbx::boxsim
