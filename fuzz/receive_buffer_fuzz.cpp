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

// The input is what happens on the line, event after event: a byte whose
// value modulo 4 is the event, then its operands:
//   0  a length byte n, then n bytes that arrive at once
//   1  a length byte n, then n bytes that arrive one at a time
//   2  a byte k: (k + 1) x 100 ms of virtual time pass
//   3  the Stop action, its 10 ms, then Start again
// Input that ends inside an event ends the script.
struct LineScript {
  std::uint8_t Byte() {
    const std::uint8_t byte = rest.empty() ? 0 : static_cast<std::uint8_t>(rest[0]);
    rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
    return byte;
  }
  std::string_view Take(std::size_t n) {
    const std::string_view out = rest.substr(0, n);
    rest.remove_prefix(out.size());
    return out;
  }
  std::string_view rest;
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

  LineScript script{std::string_view(reinterpret_cast<const char*>(data), size)};
  int checked = 0;
  while (!script.rest.empty()) {
    if (st.host.cyclesProcessed != checked) {
      fuzz::CheckCycleResult(st.nm);
      checked = st.host.cyclesProcessed;
    }
    switch (script.Byte() % 4) {
      case 0:
        st.Receive(script.Take(script.Byte()));
        CheckReceiveBuffer(st.nm.state);
        break;
      case 1:
        for (char byte : script.Take(script.Byte())) {
          st.Receive(std::string_view(&byte, 1));
          CheckReceiveBuffer(st.nm.state);
        }
        break;
      case 2: {
        // A few minutes show every way of the line; an input of thousands
        // of failed cycles would only make the fuzzer slow.
        const int ms = (script.Byte() + 1) * 100;
        if (st.time.NowMs() + ms <= kLongestSessionMs) st.time.RunFor(ms);
        break;
      }
      default:
        StopAndWait(st);
        StartAction(st.nm);
        break;
    }
  }
  fuzz::CheckCycleResult(st.nm);
  StopAndWait(st);
  return 0;
}
