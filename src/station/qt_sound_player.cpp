#include "station/qt_sound_player.h"

#include <QAudioDevice>
#include <QAudioOutput>
#include <QFileInfo>
#include <QMediaDevices>
#include <QMediaPlayer>
#include <QUrl>

namespace nbx {

QtSoundPlayer::QtSoundPlayer() = default;

QtSoundPlayer::~QtSoundPlayer() {
  if (player_) player_->stop();
}

bool QtSoundPlayer::HasAudioOutput() { return !QMediaDevices::audioOutputs().isEmpty(); }

bool QtSoundPlayer::Play(const std::string& file, bool repeat) {
  const QString path = QString::fromStdString(file);
  if (!QFileInfo(path).isFile()) return false;
  if (!player_) {
    if (!HasAudioOutput()) return false;
    output_ = std::make_unique<QAudioOutput>();
    player_ = std::make_unique<QMediaPlayer>();
    player_->setAudioOutput(output_.get());
  }
  player_->stop();
  player_->setSource(QUrl::fromLocalFile(QFileInfo(path).absoluteFilePath()));
  player_->setLoops(repeat ? QMediaPlayer::Infinite : 1);
  player_->play();
  return true;
}

void QtSoundPlayer::Stop() {
  if (!player_) return;
  player_->stop();
  player_->setSource(QUrl());
}

bool QtSoundPlayer::IsPlaying() const {
  return player_ && player_->playbackState() == QMediaPlayer::PlayingState;
}

}  // namespace nbx
