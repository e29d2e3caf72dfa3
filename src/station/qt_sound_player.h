#pragma once

#include <memory>

#include "safety/sound_player.h"

class QMediaPlayer;
class QAudioOutput;

namespace nbx {

// The alarm sound through the platform's media player. "repeat" is an
// endless loop. A file that is missing, is no sound, or a machine without any
// audio output plays nothing and is no error; the player is only made once a
// sound can be heard, as the media back ends do not cope without an output.
class QtSoundPlayer : public SoundPlayer {
 public:
  QtSoundPlayer();
  ~QtSoundPlayer() override;

  bool Play(const std::string& file, bool repeat) override;
  void Stop() override;
  bool IsPlaying() const override;

  // True when the machine offers at least one audio output.
  static bool HasAudioOutput();

 private:
  std::unique_ptr<QAudioOutput> output_;
  std::unique_ptr<QMediaPlayer> player_;
};

}  // namespace nbx
