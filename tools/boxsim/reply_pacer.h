#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "boxsim/box.h"

namespace nbx::boxsim {

// Holds the box's answer back the way a slow line would: at a baud rate each
// byte takes 10 bits of time, and byte-by-byte delivery gives each byte its
// own write about 2 ms after the one before. Whoever serves the box asks for
// what is due, writes it, and sleeps until the next due time.
class ReplyPacer {
 public:
  static constexpr double ByteByByteGapSeconds = 0.002;

  void Push(std::string_view bytes, double nowSeconds, const Delivery& delivery);
  // Bytes whose time has come; each element is one write.
  std::vector<std::string> TakeDue(double nowSeconds);
  // A write that took only part of its bytes gives the rest back, first in line.
  void PutBack(std::string_view bytes, double nowSeconds);
  std::optional<double> NextDueSeconds() const;
  bool Empty() const { return pending_.empty(); }
  void Clear();

 private:
  struct PendingByte {
    char byte;
    double dueSeconds;
    bool ownWrite;
  };
  std::deque<PendingByte> pending_;
  double lastDueSeconds_ = 0;
};

}  // namespace nbx::boxsim
