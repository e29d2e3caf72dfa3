#pragma once

#include <QDialog>

class QListWidget;

namespace nbx {
struct Nimbometer;

// NBXFileStructForm, "File Structure": the order of the user data file's
// columns and which of them are printed. A selected line is a printed
// column; the arrows move the current line.
//
// All 24 columns are listed, and the defaults put all 24 back in their first
// order, the last three (raw sky temperature, absolute and relative
// pressure) included: a list of only the first 21 would leave OK nothing to
// write into the last three rows, and their columns would be lost.
class FileStructureDialog : public QDialog {
  Q_OBJECT

 public:
  FileStructureDialog(Nimbometer& nm, QWidget* parent = nullptr);

  QListWidget* list() const { return ListCol_; }
  // ButtArrUp, ButtArrDown: swap the current line with its neighbour.
  void MoveCurrent(int step);
  // Command2: every column back in its first place, all printed.
  void RestoreDefaults();
  // ButtOK.
  void Confirm();

 private:
  Nimbometer& nm_;
  QListWidget* ListCol_ = nullptr;
};

}  // namespace nbx
