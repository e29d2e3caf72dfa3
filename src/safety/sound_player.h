#pragma once

#include <string>

namespace nbx {

// The alarm sound: one file at a time. The station plays it through the
// platform's media player; tests record what was asked. A file that is
// missing or is no sound plays nothing and is no error.
class SoundPlayer {
 public:
  virtual ~SoundPlayer() = default;
  // Opens the file and plays it from the start, over and over when `repeat`.
  // False when it could not be opened; then nothing plays.
  virtual bool Play(const std::string& file, bool repeat) = 0;
  // Stops and closes whatever plays; harmless when nothing does.
  virtual void Stop() = 0;
  // True while the sound is still playing.
  virtual bool IsPlaying() const = 0;
};

}  // namespace nbx
