#pragma once

#include <string>
#include <utility>
#include <vector>

#include "safety/script_runner.h"
#include "safety/sound_player.h"

namespace nbx::test {

// A sound player that keeps what it was asked; a sound "plays" until the test
// ends it or it is stopped. Files listed as unplayable cannot be opened.
class FakeSoundPlayer : public SoundPlayer {
 public:
  bool Play(const std::string& file, bool repeat) override {
    for (const std::string& bad : unplayable)
      if (bad == file) return false;
    plays.emplace_back(file, repeat);
    playing = true;
    return true;
  }
  void Stop() override {
    ++stops;
    playing = false;
  }
  bool IsPlaying() const override { return playing; }

  std::vector<std::pair<std::string, bool>> plays;  // file, repeat
  std::vector<std::string> unplayable;
  int stops = 0;
  bool playing = false;
};

// A script runner that keeps the programs it was asked to start.
class FakeScriptRunner : public ScriptRunner {
 public:
  bool Start(const std::string& program) override {
    started.push_back(program);
    return true;
  }
  std::vector<std::string> started;
};

}  // namespace nbx::test
