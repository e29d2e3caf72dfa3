#pragma once

#include <QDialog>
#include <QFrame>
#include <QLabel>
#include <array>
#include <string>

namespace nbx {
class NumberEntry;
class Settings;
struct SiteState;

// NBXElectConst: a new value for one constant, typed over its label.
class ElectConstDialog : public QDialog {
  Q_OBJECT

 public:
  ElectConstDialog(const QString& caption, QWidget* parent = nullptr);
  NumberEntry* entry() const { return NewValue_; }

 private:
  NumberEntry* NewValue_ = nullptr;
};

// NBXDeviceConstants: the box's electrical constants and serial number as
// the station holds them. A right click on a constant edits its label; the
// edited labels are what ResetElectParam stores for the next start, while
// the readings of this run keep the station's own values.
class DeviceConstants : public QWidget {
  Q_OBJECT

 public:
  explicit DeviceConstants(QWidget* parent = nullptr);

  // setDevideCosntants: the nine constants and the serial number.
  void setDevideCosntants(const SiteState& s);
  // After a cycle: the labels take the station's values when these have
  // changed since they were last shown (the box has identified itself), so
  // that an edit of a label stays until then.
  void Follow(const SiteState& s);
  // EEPROM2_StrToVar: the nine constants only.
  void EEPROM2_StrToVar(const SiteState& s);
  // ResetElectParam: the serial label reads "n/a" and the constants as the
  // labels show them are stored under their keys, in their order.
  void ResetElectParam(Settings& store, const SiteState& s, char decimalSeparator);
  // A REMOTE has no box: the frame gives way to a note.
  void SetRemote(bool remote);

  QLabel* constantLabel(int index) const { return labels_[static_cast<std::size_t>(index)]; }
  QLabel* serialLabel() const { return LblSerialNo_; }
  // ModifyField: opens NBXElectConst over the label; true when a value was taken.
  bool ModifyField(QLabel* label);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowConstants(const SiteState& s);

  QFrame* FrameConstants_ = nullptr;
  QLabel* remoteNote_ = nullptr;
  QLabel* LblSerialNo_ = nullptr;
  std::array<QLabel*, 9> labels_{};
  std::array<double, 9> shown_{};
  std::string shownSerial_;
};

}  // namespace nbx
