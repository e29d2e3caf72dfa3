// The receive handler under a box that sends anything: bytes arrive at once
// or one at a time, replies come late or never, and Stop and Start are
// pressed in between.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "device/link_life.h"
#include "device/wire_protocol.h"
#include "fuzz_station.h"

namespace {

using namespace nbx;

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

using nbx::fuzz::Require;

constexpr std::int64_t kLongestSessionMs = 3 * 60 * 1000;

// After each call of the receive handler the buffer holds no whole frame
// once a "!" is in it: bytes without one wait there until the next send.
void CheckReceiveBuffer(const SiteState& s) {
  Require(s.RxBuffer.find('!') == std::string::npos || s.RxBuffer.size() < FrameLength,
          "the receive buffer keeps no whole frame behind a \"!\"");
  Require(s.QueueCount >= 0 && s.QueueCount <= CommandQueueSize, "the queue stays in its bounds");
  Require(s.QueueSent >= 0 && s.QueueSent <= s.QueueCount + 1, "no command is sent twice over");
}

void StopAndWait(fuzz::FuzzStation& st) {
  StopAction(st.nm);
  st.time.RunFor(20);
  Require(!st.nm.state.IsRunning, "after Stop the station no longer runs");
  Require(!st.hand.open, "after Stop the port is closed");
  for (TimerId id : {TimerId::CommOn, TimerId::Graph, TimerId::RS232Timeout, TimerId::Stop})
    Require(!st.time.IsArmed(id), "after Stop no timer of the cycle is armed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzStation st;
  // Running, with the first exchange under way and its queue loaded.
  StartAction(st.nm);
  st.time.RunFor(10);

  LineScript script(std::string_view(reinterpret_cast<const char*>(data), size));
  LineEvent event;
  int checked = 0;
  while (script.Next(event)) {
    if (st.host.cyclesProcessed != checked) {
      fuzz::CheckCycleResult(st.nm);
      checked = st.host.cyclesProcessed;
    }
    switch (event) {
      case LineEvent::Bytes:
        st.Receive(script.Take(script.Operand()));
        CheckReceiveBuffer(st.nm.state);
        break;
      case LineEvent::OneByOne:
        for (char byte : script.Take(script.Operand())) {
          st.Receive(std::string_view(&byte, 1));
          CheckReceiveBuffer(st.nm.state);
        }
        break;
      case LineEvent::TimePasses: {
        // A few minutes show every way of the line; an input of thousands
        // of failed cycles would only make the fuzzer slow.
        const int ms = (script.Operand() + 1) * 100;
        if (st.time.NowMs() + ms <= kLongestSessionMs) st.time.RunFor(ms);
        break;
      }
      case LineEvent::StopAndStart:
        StopAndWait(st);
        StartAction(st.nm);
        break;
    }
  }
  fuzz::CheckCycleResult(st.nm);
  StopAndWait(st);
  return 0;
}
