// How fast the receive handler turns bytes into frames and frames into samples.

#include <benchmark/benchmark.h>

#include "boxsim/frames.h"
#include "core/nimbometer.h"
#include "device/command_queue.h"
#include "core/serial_link.h"
#include "device/wire_protocol.h"

namespace {

class BenchLink : public nbx::SerialLink {
 public:
  bool Open(const std::string&, const std::string&, std::string&) override { return true; }
  void Close() override {}
  bool IsOpen() const override { return true; }
  bool Write(std::string_view) override { return true; }
  std::string ReadAll() override {
    std::string out;
    out.swap(pending);
    return out;
  }
  std::string pending;
};

class BenchClock : public nbx::Clock, public nbx::Timers {
 public:
  nbx::LocalDateTime Now() const override { return {2026, 11, 21, 22, 0, 0, 0}; }
  void Arm(nbx::TimerId, int) override {}
  void Disarm(nbx::TimerId) override {}
  bool IsArmed(nbx::TimerId) const override { return false; }
  int Interval(nbx::TimerId) const override { return 0; }
};

class BenchHost : public nbx::Host {
 public:
  bool WaitFor(const std::function<bool()>&, int) override { return true; }
};

// The reply to "C!", the busiest command of a cycle: four sample frames and the end.
std::string AnalogReply() {
  using nbx::boxsim::Frame;
  return Frame('3', "512") + Frame('4', "40000") + Frame('5', "400") + Frame('6', "520") +
         nbx::boxsim::EndOfReplyFrame();
}

void ParseReplies(benchmark::State& state, bool byteByByte) {
  BenchLink link;
  BenchClock clock;
  BenchHost host;
  nbx::Nimbometer nm;
  nm.io = {&clock, &clock, &link, &host};
  nm.state.IsRunning = true;
  const std::string reply = AnalogReply();
  std::int64_t frames = 0;
  for (auto _ : state) {
    // Keep a long queue so that each end-of-reply only sends the next command.
    nbx::ClearCommandQueue(nm);
    for (int i = 0; i < 90; ++i) nbx::QueueCommand(nm, "C");
    for (int i = 0; i < 80; ++i) {
      nm.state.ClearSampleCounters();
      if (byteByByte) {
        for (char c : reply) {
          link.pending.push_back(c);
          nbx::OnComm(nm);
        }
      } else {
        link.pending = reply;
        nbx::OnComm(nm);
      }
      frames += 5;
    }
  }
  state.counters["frames/s"] = benchmark::Counter(static_cast<double>(frames), benchmark::Counter::kIsRate);
}

void BM_FramesAllAtOnce(benchmark::State& state) { ParseReplies(state, false); }
void BM_FramesByteByByte(benchmark::State& state) { ParseReplies(state, true); }

}  // namespace

BENCHMARK(BM_FramesAllAtOnce);
BENCHMARK(BM_FramesByteByByte);
