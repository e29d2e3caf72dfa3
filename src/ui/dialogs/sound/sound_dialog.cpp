#include "ui/dialogs/sound/sound_dialog.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>

#include "core/host.h"
#include "core/nimbometer.h"
#include "safety/sound_player.h"
#include "station/system_areas.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/named.h"

namespace nbx {
namespace {

const QStringList SoundPatterns{"*.wav", "*.mp3", "*.mid", "*.wma"};
constexpr const char* RepeatMark = "|repeat";

}  // namespace

SoundDialog::SoundDialog(Nimbometer& nm, const std::string& current, QWidget* parent)
    : QDialog(parent), nm_(nm), sound_(current) {
  setObjectName("NBXSoundForm");
  setWindowTitle("Alarm sound");
  nm_.state.AlarmWindowON = true;

  Dir1_ = new QLabel(this);
  Dir1_->setObjectName("Dir1");
  Dir1_->setFrameShape(QFrame::Panel);
  Dir1_->setFrameShadow(QFrame::Sunken);
  Dir1_->setMinimumWidth(300);
  File1_ = new QListWidget(this);
  File1_->setObjectName("File1");
  auto* filesLabel = new QLabel("Sound files (wav, mp3, mid, wma)", this);
  filesLabel->setBuddy(File1_);
  ChkRepeat_ = new QCheckBox("repeat", this);
  ChkRepeat_->setObjectName("ChkRepeat");
  StatMsg_ = new QLabel(this);
  StatMsg_->setObjectName("StatMsg");
  auto* folder = Named<QPushButton>("ButtFolder", "Folder ...", this);
  auto* play = Named<QPushButton>("ButtPlay", "Play", this);
  auto* stop = Named<QPushButton>("ButtStop", "Stop", this);
  auto* clear = Named<QPushButton>("ButtClear", "Clear", this);
  auto* ok = Named<QPushButton>("ButtOK", "OK", this);
  auto* cancel = Named<QPushButton>("ButtCancel", "Cancel", this);
  ok->setDefault(true);

  connect(folder, &QPushButton::clicked, this, [this] {
    const QString chosen =
        QFileDialog::getExistingDirectory(this, "Folder of the sound files", folder_,
                                          QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
    if (!chosen.isEmpty()) OpenFolder(chosen);
  });
  connect(File1_, &QListWidget::itemDoubleClicked, this, &SoundDialog::Play);
  connect(play, &QPushButton::clicked, this, &SoundDialog::Play);
  connect(stop, &QPushButton::clicked, this, &SoundDialog::StopPlaying);
  connect(clear, &QPushButton::clicked, this, &SoundDialog::Clear);
  connect(ok, &QPushButton::clicked, this, &SoundDialog::Confirm);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* grid = new QGridLayout(this);
  grid->addWidget(folder, 0, 0);
  grid->addWidget(Dir1_, 0, 1, 1, 3);
  grid->addWidget(filesLabel, 1, 0, 1, 4);
  grid->addWidget(File1_, 2, 0, 1, 4);
  grid->addWidget(ChkRepeat_, 3, 0);
  grid->addWidget(play, 3, 2);
  grid->addWidget(stop, 3, 3);
  grid->addWidget(StatMsg_, 4, 0, 1, 4);
  grid->addWidget(clear, 5, 0);
  grid->addWidget(ok, 5, 2);
  grid->addWidget(cancel, 5, 3);

  // The entry's own file opens its folder; otherwise the last folder used.
  QString file = QString::fromStdString(current);
  const bool repeat = file.endsWith(RepeatMark, Qt::CaseInsensitive);
  if (file.contains('|')) file = file.left(file.indexOf('|'));
  ChkRepeat_->setChecked(repeat);
  const QFileInfo info(file);
  QString start = !file.isEmpty() && info.dir().exists() ? info.absolutePath()
                                                         : QString::fromStdString(nm.config.LastMusicDir);
  if (start.isEmpty() || !QDir(start).exists()) start = QString::fromStdString(DocumentsFolder());
  OpenFolder(start);
  const auto matches = File1_->findItems(info.fileName(), Qt::MatchExactly);
  if (!matches.isEmpty()) File1_->setCurrentItem(matches.first());
}

SoundDialog::~SoundDialog() { nm_.state.AlarmWindowON = false; }

void SoundDialog::OpenFolder(const QString& folder) {
  folder_ = QDir(folder).absolutePath();
  Dir1_->setText(folder_);
  File1_->clear();
  File1_->addItems(
      QDir(folder_).entryList(SoundPatterns, QDir::Files | QDir::Readable, QDir::Name | QDir::IgnoreCase));
}

QString SoundDialog::ChosenFile() const {
  const QListWidgetItem* item = File1_->currentItem();
  return item ? QDir(folder_).filePath(item->text()) : QString();
}

void SoundDialog::Play() {
  const QString file = ChosenFile();
  if (file.isEmpty()) return;
  StatMsg_->clear();
  samplePlayed_ = true;
  if (!nm_.io.sound || !nm_.io.sound->Play(file.toStdString(), ChkRepeat_->isChecked()))
    StatMsg_->setText("This file cannot be played here.");
}

void SoundDialog::StopPlaying() {
  if (nm_.io.sound) nm_.io.sound->Stop();
}

void SoundDialog::Confirm() {
  const QString file = ChosenFile();
  if (file.isEmpty()) {
    ShowMessage(this, "Choose a sound file, or Clear to have none.", ButtonsOk, {});
    return;
  }
  sound_ = file.toStdString() + (ChkRepeat_->isChecked() ? RepeatMark : "");
  nm_.config.LastMusicDir = folder_.toStdString();
  accept();
}

void SoundDialog::Clear() {
  sound_.clear();
  accept();
}

void SoundDialog::done(int result) {
  // A sample took the alarm's player: the alarm that it silenced is
  // forgotten, so that the next cycle starts it again if it is still due.
  if (samplePlayed_) {
    StopPlaying();
    nm_.state.ActiveAlarmCode.clear();
  }
  nm_.state.AlarmWindowON = false;
  QDialog::done(result);
}

}  // namespace nbx
