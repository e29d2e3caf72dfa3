// CPU time of one whole reading cycle of a MASTER with every output on: the
// commands go out, the box's frames come in and are filed, and the finished
// cycle runs every stage (conditions, verdict, relay, heater, graph rings,
// user data line with debug lines, transfer file, single-line, JSON, debug
// and comma files). Without the graph pictures, and with all seven drawn and
// exported as PNG in every cycle (GraphFreq 1; the default of 6 draws them
// every sixth cycle).
//
// The box's replies are recorded once and played back, so that the figure is
// the program's work and not the simulated box's.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "boxsim/box.h"
#include "core/nimbometer.h"
#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "device/stage_calls.h"
#include "core/serial_link.h"
#include "device/wire_protocol.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "outputs/user_data_file.h"
#include "graphs/drawing/freeimage_runtime.h"

namespace {

// Ten seconds a cycle, as at the default period.
class CycleClock : public nbx::Clock {
 public:
  nbx::LocalDateTime Now() const override { return nbx::FromSerialDate(serial_); }
  void NextPeriod() { serial_ = nbx::AddSeconds(serial_, 10); }

 private:
  double serial_ = nbx::ToSerialDate({2026, 11, 21, 22, 0, 0, 0});
};

class NoTimers : public nbx::Timers {
 public:
  void Arm(nbx::TimerId, int) override {}
  void Disarm(nbx::TimerId) override {}
  bool IsArmed(nbx::TimerId) const override { return false; }
  int Interval(nbx::TimerId) const override { return 0; }
};

class QuietHost : public nbx::Host {
 public:
  bool WaitFor(const std::function<bool()>& done, int) override { return done(); }
};

// The box's answer to each command, asked of the simulated box once.
class ReplayLink : public nbx::SerialLink {
 public:
  bool Open(const std::string&, const std::string&, std::string&) override { return open_ = true; }
  void Close() override { open_ = false; }
  bool IsOpen() const override { return open_; }
  bool Write(std::string_view bytes) override {
    auto known = replies_.find(std::string(bytes));
    if (known == replies_.end()) known = replies_.emplace(bytes, box_.Receive(bytes)).first;
    pending += known->second;
    return true;
  }
  std::string ReadAll() override {
    std::string out;
    out.swap(pending);
    return out;
  }
  std::string pending;

 private:
  nbx::boxsim::Box box_;
  std::map<std::string, std::string, std::less<>> replies_;
  bool open_ = false;
};

std::string FreshFolder() {
  std::string pattern = (std::filesystem::temp_directory_path() / "nbx-cycle-bench-XXXXXX").string();
  return ::mkdtemp(pattern.data()) ? pattern : std::string();
}

struct Station {
  explicit Station(bool pictures) : folder(FreshFolder()) {
    nbx::Config& c = nm.config;
    nm.io.clock = &clock;
    nm.io.timers = &timers;
    nm.io.link = &link;
    ConnectStages(nm);
    nm.io.host = &host;
    c.PortName = "/dev/ttyNBX";
    c.LblPathName = c.LblPathNameCCDAP4 = c.NetPathMaster = c.GraphImagePath = folder;
    c.chkDebug = 1;
    c.SaveFreq = 1;
    if (pictures) {
      nm.io.pictures = &this->pictures;
      c.GraphFreq = 1;
    }
    nbx::Record_Start(nm, false);
    nbx::StartAction(nm);
    // Who the box is, then enough cycles for every graph's ring to be full.
    for (int i = 0; i < 130; ++i) Cycle();
  }
  ~Station() {
    nbx::Record_Stop(nm);
    std::error_code error;
    std::filesystem::remove_all(folder, error);
  }

  // One tick's work: the cycle's commands one after the other, each sent
  // when the reply to the last is in, then the finished cycle.
  void Cycle() {
    clock.NextPeriod();
    nbx::TimerGraphTick(nm);
    while (!link.pending.empty()) nbx::OnComm(nm);
  }

  std::string folder;
  CycleClock clock;
  NoTimers timers;
  ReplayLink link;
  QuietHost host;
  nbx::QtGraphPictures pictures;
  nbx::Nimbometer nm;
};

void EnsureGuiApplication() {
  if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
  static int argc = 1;
  static char name[] = "whole_cycle_bench";
  static char* argv[] = {name, nullptr};
  static QGuiApplication app(argc, argv);
  nbx::FreeImageRuntime::Instance().Initialise();
}

void BM_WholeCycle(benchmark::State& state) {
  EnsureGuiApplication();
  const bool pictures = state.range(0) != 0;
  Station station(pictures);
  for (auto _ : state) station.Cycle();
  const nbx::SiteState& s = station.nm.state;
  state.SetLabel(std::string(pictures ? "7 graphs drawn and exported" : "no pictures") +
                 (s.NBX_DataReady && !s.CommFailed ? "" : ", CYCLE FAILED") +
                 (station.nm.display.StatusBar2.Caption.empty()
                      ? ""
                      : ", codes " + station.nm.display.StatusBar2.Caption));
}

}  // namespace

BENCHMARK(BM_WholeCycle)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);
