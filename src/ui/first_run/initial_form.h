#pragma once

#include <QDialog>
#include <QString>
#include <string>

class QComboBox;
class QLabel;

namespace nbx {
struct Nimbometer;

// NBXInitialForm, "Select COM  port": the first setup of a MASTER. The user
// picks the box's port and the folder that every file of the station goes
// to, may try the port, and confirms. OK sets DeviceInitialized to 1; Cancel
// leaves everything as it was.
class InitialForm : public QDialog {
  Q_OBJECT

 public:
  InitialForm(Nimbometer& nm, QWidget* parent = nullptr);

  // ButtCOMMTest: opens and closes the chosen port.
  void TestPort();
  // ButtPATH: asks for the folder.
  void ChoosePath();
  // Takes a chosen folder when it can be written; says why not otherwise.
  bool UsePath(const QString& folder);
  // ButtOK.
  void Confirm();

 private:
  // The device path of the chosen entry.
  std::string ChosenDevice() const;

  Nimbometer& nm_;
  std::string commSettings_;  // the form's own copy of the line settings
  QComboBox* COMPort_ = nullptr;
  QLabel* LBLPath_ = nullptr;
  QLabel* StatMsg_ = nullptr;
};

}  // namespace nbx
