#pragma once

#include <memory>

#include "safety/sound_player.h"

class QMediaPlayer;
class QAudioOutput;

namespace nbx {

// The alarm sound through the platform's media player. "repeat" is an
// endless loop. A file that is missing or is no sound, or a machine that
// cannot play sound, plays nothing and is no error; the player is only made
// once a sound can be heard, as the media back ends do not cope without an
// output or without their decoders.
class MediaSoundPlayer : public SoundPlayer {
 public:
  MediaSoundPlayer();
  ~MediaSoundPlayer() override;

  bool Play(const std::string& file, bool repeat) override;
  void Stop() override;
  bool IsPlaying() const override;

  // True when the machine has an audio output and the media back end can
  // decode at least one kind of file.
  static bool CanPlaySound();

 private:
  std::unique_ptr<QAudioOutput> output_;
  std::unique_ptr<QMediaPlayer> player_;
};

}  // namespace nbx
