#include "station/qt_sound_player.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>
#include <dlfcn.h>

namespace nbx {
namespace {

using CanPlayFunction = bool (*)();
using CreateFunction = SoundPlayer* (*)();

struct SoundModule {
  CanPlayFunction canPlay = nullptr;
  CreateFunction create = nullptr;
};

std::vector<std::string> ModuleCandidates() {
  if (const char* named = std::getenv("NBX_SOUND_MODULE"); named && *named) return {named};
  std::vector<std::string> candidates;
  if (QCoreApplication::instance()) {
    const QDir folder(QCoreApplication::applicationDirPath());
    candidates.push_back(folder.filePath("libnbx_sound.so").toStdString());
    candidates.push_back(
        QDir::cleanPath(folder.filePath(NBX_SOUND_MODULE_FROM_PROGRAM "/libnbx_sound.so")).toStdString());
  }
  candidates.push_back(NBX_SOUND_MODULE_BUILT);
  return candidates;
}

// Loaded once and kept: the media back end's threads and plugins do not
// survive being unloaded. A module that cannot be loaded is said once.
const SoundModule& Module() {
  static const SoundModule module = [] {
    SoundModule found;
    std::string failure = "not found";
    for (const std::string& file : ModuleCandidates()) {
      void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
      if (!handle) {
        if (const char* error = dlerror()) failure = error;
        continue;
      }
      found.canPlay = reinterpret_cast<CanPlayFunction>(dlsym(handle, "nbx_sound_can_play"));
      found.create = reinterpret_cast<CreateFunction>(dlsym(handle, "nbx_sound_player_create"));
      if (found.canPlay && found.create) return found;
      failure = file + ": not a sound module";
      found = {};
      dlclose(handle);
    }
    std::fprintf(stderr, "nimbometer: no sound module, the alarms are silent: %s\n", failure.c_str());
    std::fflush(stderr);
    return found;
  }();
  return module;
}

}  // namespace

QtSoundPlayer::QtSoundPlayer() = default;
QtSoundPlayer::~QtSoundPlayer() = default;

bool QtSoundPlayer::CanPlaySound() {
  const SoundModule& module = Module();
  return module.canPlay && module.canPlay();
}

bool QtSoundPlayer::Play(const std::string& file, bool repeat) {
  // A missing file plays nothing anyway: no reason to load the media libraries.
  if (!QFileInfo(QString::fromStdString(file)).isFile()) return false;
  if (!player_) {
    if (!CanPlaySound()) return false;
    player_.reset(Module().create());
    if (!player_) return false;
  }
  return player_->Play(file, repeat);
}

void QtSoundPlayer::Stop() {
  if (player_) player_->Stop();
}

bool QtSoundPlayer::IsPlaying() const { return player_ && player_->IsPlaying(); }

}  // namespace nbx
