#pragma once

#include <QDialog>

namespace nbx {
struct Nimbometer;
class NumberEntry;

// NBXTempLimForm: the range of the temperature graph. OK keeps the dialog
// open with a message while the minimum is not below the maximum.
class TempLimitsDialog : public QDialog {
  Q_OBJECT

 public:
  TempLimitsDialog(Nimbometer& nm, QWidget* parent = nullptr);

  NumberEntry* minimum() const { return min_; }
  NumberEntry* maximum() const { return max_; }
  void Confirm();

 private:
  Nimbometer& nm_;
  NumberEntry* min_ = nullptr;
  NumberEntry* max_ = nullptr;
};

}  // namespace nbx
