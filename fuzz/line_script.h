#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace nbx::fuzz {

// The input of the receive-buffer fuzzer: what happens on the line, event
// after event. An event is one byte, whose value modulo 4 is its kind, and
// its operands:
//   Bytes         a length byte n, then n bytes that arrive at once
//   OneByOne      a length byte n, then n bytes that arrive one at a time
//   TimePasses    a byte k: (k + 1) x 100 ms of virtual time pass
//   StopAndStart  the Stop action, its 10 ms, then Start again
// Input that ends inside an event ends the script.
enum class LineEvent : std::uint8_t { Bytes = 0, OneByOne = 1, TimePasses = 2, StopAndStart = 3 };

class LineScript {
 public:
  explicit LineScript(std::string_view input) : input_(input) {}

  bool Next(LineEvent& event) {
    if (at_ >= input_.size()) return false;
    event = static_cast<LineEvent>(static_cast<std::uint8_t>(input_[at_++]) % 4);
    return true;
  }
  std::uint8_t Operand() { return at_ < input_.size() ? static_cast<std::uint8_t>(input_[at_++]) : 0; }
  std::string_view Take(std::size_t n) {
    const std::string_view out = input_.substr(std::min(at_, input_.size()), n);
    at_ += out.size();
    return out;
  }

 private:
  std::string_view input_;
  std::size_t at_ = 0;
};

}  // namespace nbx::fuzz
