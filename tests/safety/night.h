#pragma once

#include <string>
#include <utility>
#include <vector>

#include "safety/script_runner.h"
#include "safety/sound_player.h"
#include "support/sim_station.h"

namespace nbx::test {

using Lines = std::vector<std::string>;

// A sound plays until stopped or ended by the test.
class FakeSoundPlayer : public SoundPlayer {
 public:
  bool Play(const std::string& file, bool repeat) override {
    if (file == unplayable) return false;
    plays.emplace_back(file, repeat);
    return playing = true;
  }
  void Stop() override { ++stops, playing = false; }
  bool IsPlaying() const override { return playing; }
  std::vector<std::pair<std::string, bool>> plays;  // file, repeat
  std::string unplayable;
  int stops = 0;
  bool playing = false;
};

class FakeScriptRunner : public ScriptRunner {
 public:
  bool Start(const std::string& program) override {
    started.push_back(program);
    return true;
  }
  Lines started;
};

// A station on virtual time whose box reports a chosen sky, uncorrected; sound and scripts go to fakes.
class Night {
 public:
  static constexpr double Clear = -15, Cloudy = -3, Overcast = 5;  // degrees C

  Night() {
    nm.config.CloudTempFactor = false;
    nm.state.NBX_DayCondition = 1;  // the light sensor reads Dark all night
    nm.io.sound = &sound;
    nm.io.scripts = &scripts;
    Sky(Clear);
  }
  void Sky(double celsius) { st.box.readings.skyIR = celsius * 100; }
  // The log lines written by starting, by `periods` cycles or by `step`.
  Lines Start() {
    return LinesOf([&] { st.StartAndRunFirstCycles(); });
  }
  Lines Run(int periods = 1) {
    return LinesOf([&] { st.RunPeriods(periods); });
  }
  template <typename Step>
  Lines LinesOf(Step step) {
    const auto from = static_cast<std::ptrdiff_t>(st.host.debugLines.size());
    step();
    return {st.host.debugLines.begin() + from, st.host.debugLines.end()};
  }
  // The relay commands the box received from command `from` on.
  std::string RelayCommandsSince(std::size_t from) const {
    std::string relay;
    for (const std::string& c : st.CommandsSince(from))
      if (c == "G" || c == "H") relay += c;
    return relay;
  }
  std::size_t CommandCount() const { return st.box.Commands().size(); }

  SimStation st;
  Nimbometer& nm = st.nm;
  SiteState& s = st.nm.state;
  FakeSoundPlayer sound;
  FakeScriptRunner scripts;
};

}  // namespace nbx::test
