#include "ui/first_run/initial_form.h"

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QTemporaryFile>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include "core/host.h"
#include "core/nimbometer.h"
#include "core/port_names.h"
#include "core/serial_link.h"
#include "editing/config_editor.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/port_choice.h"

namespace nbx {

InitialForm::InitialForm(Nimbometer& nm, QWidget* parent)
    : QDialog(parent), nm_(nm), commSettings_(nm.config.CommSettings) {
  setObjectName("NBXInitialForm");
  setWindowTitle("Select COM  port");
  setModal(true);

  COMPort_ = NewPortChoice(this);
  ShowPortChoice(COMPort_, nm.config);
  auto* portLabel = new QLabel("COM port", this);
  portLabel->setBuddy(COMPort_);

  auto* ButtCOMMTest = new QPushButton("Test Port", this);
  ButtCOMMTest->setObjectName("ButtCOMMTest");
  auto* ButtPATH = new QPushButton("Path", this);
  ButtPATH->setObjectName("ButtPATH");
  LBLPath_ = new QLabel(QString::fromStdString(nm.config.LblPathName), this);
  LBLPath_->setObjectName("LBLPath");
  LBLPath_->setFrameShape(QFrame::Panel);
  LBLPath_->setFrameShadow(QFrame::Sunken);
  LBLPath_->setMinimumWidth(320);
  StatMsg_ = new QLabel(this);
  StatMsg_->setObjectName("StatMsg");
  StatMsg_->setWordWrap(true);
  auto* ButtOK = new QPushButton("OK", this);
  ButtOK->setObjectName("ButtOK");
  ButtOK->setDefault(true);
  auto* ButtCancel = new QPushButton("Cancel", this);
  ButtCancel->setObjectName("ButtCancel");

  connect(ButtCOMMTest, &QPushButton::clicked, this, &InitialForm::TestPort);
  connect(ButtPATH, &QPushButton::clicked, this, &InitialForm::ChoosePath);
  connect(ButtOK, &QPushButton::clicked, this, &InitialForm::Confirm);
  connect(ButtCancel, &QPushButton::clicked, this, &QDialog::reject);

  auto* grid = new QGridLayout(this);
  grid->addWidget(portLabel, 0, 0);
  grid->addWidget(COMPort_, 0, 1);
  grid->addWidget(ButtCOMMTest, 0, 2);
  grid->addWidget(ButtPATH, 1, 0);
  grid->addWidget(LBLPath_, 1, 1, 1, 2);
  grid->addWidget(StatMsg_, 2, 0, 1, 3);
  grid->addWidget(ButtOK, 3, 1, Qt::AlignRight);
  grid->addWidget(ButtCancel, 3, 2);
}

std::string InitialForm::ChosenDevice() const { return DeviceOfEntry(COMPort_->currentText().toStdString()); }

void InitialForm::TestPort() {
  SerialLink& link = *nm_.io.link;
  std::string error;
  // The station's own port is left as it is: closing it would cut a run.
  if (link.IsOpen()) {
    StatMsg_->setStyleSheet("color: red");
    StatMsg_->setText("The station holds its port; stop it to test another.");
    return;
  }
  if (link.Open(ChosenDevice(), commSettings_, error)) {
    link.Close();
    StatMsg_->setStyleSheet("color: #000080");
    StatMsg_->setText("Port can be opened, probably OK");
    return;
  }
  StatMsg_->setStyleSheet("color: red");
  StatMsg_->setText("Serial port " + COMPort_->currentText() + " error: " + QString::fromStdString(error));
  QApplication::beep();
}

void InitialForm::ChoosePath() {
  const QString folder = QFileDialog::getExistingDirectory(
      this, "Select the shared folder to store the communication file.", LBLPath_->text(),
      QFileDialog::ShowDirsOnly | QFileDialog::DontUseNativeDialog);
  if (!folder.isEmpty()) UsePath(folder);
}

bool InitialForm::UsePath(const QString& folder) {
  // Tried by writing, as permissions alone don't tell (a read-only mount,
  // or the administrator's account).
  QTemporaryFile probe(folder + "/.nbx-write-test-XXXXXX");
  if (!probe.open()) {
    ShowMessage(this, "The folder " + folder + " cannot be written.\r\nChoose another one.",
                ButtonsOk, {});
    return false;
  }
  LBLPath_->setText(folder);
  return true;
}

void InitialForm::Confirm() {
  const std::string folder = LBLPath_->text().toStdString();
  Config& c = nm_.config;
  ConfigEditor editor(nm_);
  editor.SetNetPath(folder);
  editor.SetDataFolder(folder);
  editor.SetGraphImagePath(folder);
  editor.SetSingleLineFolder(folder);
  editor.SetPortEntry(COMPort_->currentText().toStdString());
  nm_.state.DeviceInitialized = 1;
  accept();
}

}  // namespace nbx
