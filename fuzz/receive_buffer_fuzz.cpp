// The receive handler under a box that sends anything: bytes arrive at once
// or one at a time, replies come late or never, and Stop and Start are
// pressed in between.
#include <cstddef>
#include <cstdint>

#include "device/link_life.h"
#include "device/wire_protocol.h"
#include "fuzz_station.h"
#include "line_script.h"

namespace {

using namespace nbx;
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
  Require(!st.link.open, "after Stop the port is closed");
  for (TimerId id : {TimerId::CommOn, TimerId::Graph, TimerId::RS232Timeout, TimerId::Stop})
    Require(!st.time.IsArmed(id), "after Stop no timer of the cycle is armed");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzStation st;
  // Running, with the first exchange under way and its queue loaded.
  StartAction(st.nm);
  st.time.RunFor(10);

  fuzz::LineScript script(std::string_view(reinterpret_cast<const char*>(data), size));
  fuzz::LineEvent event;
  int checked = 0;
  while (script.Next(event)) {
    if (st.host.cyclesProcessed != checked) {
      fuzz::CheckCycleResult(st.nm);
      checked = st.host.cyclesProcessed;
    }
    switch (event) {
      case fuzz::LineEvent::Bytes:
        st.Receive(script.Take(script.Operand()));
        CheckReceiveBuffer(st.nm.state);
        break;
      case fuzz::LineEvent::OneByOne:
        for (char byte : script.Take(script.Operand())) {
          st.Receive(std::string_view(&byte, 1));
          CheckReceiveBuffer(st.nm.state);
        }
        break;
      case fuzz::LineEvent::TimePasses: {
        // A few minutes show every way of the line; an input of thousands
        // of failed cycles would only make the fuzzer slow.
        const int ms = (script.Operand() + 1) * 100;
        if (st.time.NowMs() + ms <= kLongestSessionMs) st.time.RunFor(ms);
        break;
      }
      case fuzz::LineEvent::StopAndStart:
        StopAndWait(st);
        StartAction(st.nm);
        break;
    }
  }
  fuzz::CheckCycleResult(st.nm);
  StopAndWait(st);
  return 0;
}
