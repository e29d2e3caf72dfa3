#pragma once

#include <memory>
#include <string>

#include "safety/sound_player.h"

namespace nbx {

// The alarm sound through the sound module (libnbx_sound.so, Qt Multimedia),
// loaded the first time a sound is to be played, so that a night without an
// alarm never maps the media libraries. The module is looked for as the file
// named by NBX_SOUND_MODULE, else beside the program, in the installed
// library folder, or in the build tree. Without it every sound plays nothing,
// as on a machine that cannot play sound: the alarm goes on silent.
class QtSoundPlayer : public SoundPlayer {
 public:
  QtSoundPlayer();
  ~QtSoundPlayer() override;

  bool Play(const std::string& file, bool repeat) override;
  void Stop() override;
  bool IsPlaying() const override;

  // True when the module loads, the machine has an audio output and the
  // media back end can decode at least one kind of file.
  static bool CanPlaySound();

 private:
  std::unique_ptr<SoundPlayer> player_;
};

}  // namespace nbx
