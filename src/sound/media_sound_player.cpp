#include "sound/media_sound_player.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaFormat>
#include <QMediaPlayer>
#include <QUrl>

namespace nbx {

MediaSoundPlayer::MediaSoundPlayer() = default;

MediaSoundPlayer::~MediaSoundPlayer() {
  if (player_) player_->stop();
}

bool MediaSoundPlayer::CanPlaySound() {
  if (QMediaDevices::audioOutputs().isEmpty()) return false;
  // A media back end without its decoders hangs on the first file.
  return !QMediaFormat().supportedFileFormats(QMediaFormat::Decode).isEmpty();
}

bool MediaSoundPlayer::Play(const std::string& file, bool repeat) {
  const QFileInfo info(QString::fromStdString(file));
  if (!info.isFile()) return false;
  if (!player_) {
    if (!CanPlaySound()) return false;
    output_ = std::make_unique<QAudioOutput>();
    player_ = std::make_unique<QMediaPlayer>();
    player_->setAudioOutput(output_.get());
    // A file that turns out to be no sound ends there.
    QObject::connect(player_.get(), &QMediaPlayer::errorOccurred, player_.get(),
                     [player = player_.get()] { player->stop(); });
  }
  player_->stop();
  player_->setSource(QUrl::fromLocalFile(info.absoluteFilePath()));
  player_->setLoops(repeat ? QMediaPlayer::Infinite : 1);
  player_->play();
  return true;
}

void MediaSoundPlayer::Stop() {
  if (!player_) return;
  player_->stop();
  player_->setSource(QUrl());
}

bool MediaSoundPlayer::IsPlaying() const {
  return player_ && player_->playbackState() == QMediaPlayer::PlayingState &&
         player_->error() == QMediaPlayer::NoError && player_->mediaStatus() != QMediaPlayer::InvalidMedia;
}

}  // namespace nbx

// The module's two entry points, looked up by name by the station, which
// links none of the media libraries itself.
extern "C" {
Q_DECL_EXPORT bool nbx_sound_can_play() { return nbx::MediaSoundPlayer::CanPlaySound(); }
Q_DECL_EXPORT nbx::SoundPlayer* nbx_sound_player_create() { return new nbx::MediaSoundPlayer(); }
}
