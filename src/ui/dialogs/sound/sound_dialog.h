#pragma once

#include <QDialog>
#include <string>

class QCheckBox;
class QLabel;
class QListWidget;

namespace nbx {
struct Nimbometer;

// NBXSoundForm: picks the sound of an alarm entry from the sound files of a
// folder, plays and stops a sample, and tells whether it repeats. While it
// is open no alarm starts (AlarmWindowON), so the sample is heard alone.
class SoundDialog : public QDialog {
  Q_OBJECT

 public:
  // `current` is the entry's sound as stored, "|repeat" and all.
  SoundDialog(Nimbometer& nm, const std::string& current, QWidget* parent = nullptr);
  ~SoundDialog() override;

  // The entry's new sound once accepted: the file, "|repeat" appended when
  // repeat is ticked; empty after Clear.
  const std::string& sound() const { return sound_; }

  // Shows the sound files of `folder`.
  void OpenFolder(const QString& folder);
  void Play();
  void StopPlaying();
  void Confirm();
  void Clear();

 protected:
  void done(int result) override;

 private:
  QString ChosenFile() const;

  Nimbometer& nm_;
  std::string sound_;
  bool samplePlayed_ = false;
  QString folder_;
  QLabel* Dir1_ = nullptr;
  QListWidget* File1_ = nullptr;
  QCheckBox* ChkRepeat_ = nullptr;
  QLabel* StatMsg_ = nullptr;
};

}  // namespace nbx
