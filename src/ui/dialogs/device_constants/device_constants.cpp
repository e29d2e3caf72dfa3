#include "ui/dialogs/device_constants/device_constants.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPushButton>

#include "config/electrical_settings.h"
#include "core/number_format.h"
#include "core/site_state.h"
#include "ui/widgets/number_entry.h"

namespace nbx {
namespace {

struct ConstantRow {
  const char* name;
  const char* caption;
  double SiteState::*field;
};

const ConstantRow Rows[9] = {
    {"ElecZener", "Zener voltage                     (V)", &SiteState::ZenerVoltage},
    {"ElecLDRMax", "LDR Max Resistance          (K)", &SiteState::LDRMaxResistance},
    {"ElecLDRPullUp", "LDR PullUp Resistance      (K)", &SiteState::LDRPullupResistance},
    {"ElecRainBeta", "Rain Beta Factor", &SiteState::RainBeta},
    {"ElecRainR25", "Rain Resistance at 25°       (K)", &SiteState::RainResAt25},
    {"ElecRainPullUp", "Rain PullUp Resistance      (K)", &SiteState::RainPullUpResistance},
    {"ElecAmbBeta", "Ambient Beta Factor", &SiteState::AmbBeta},
    {"ElecAmbR25", "Ambient Resistance at 25°  (K)", &SiteState::AmbResAt25},
    {"ElecAmbPullUp", "Ambient PullUp Resistance (K)", &SiteState::AmbPullUpResistance},
};

QString Plain(double value) { return QString::number(value, 'g', 15); }

}  // namespace

ElectConstDialog::ElectConstDialog(const QString& caption, QWidget* parent) : QDialog(parent) {
  setObjectName("NBXElectConst");
  setWindowTitle("Constant");
  NewValue_ = new NumberEntry(this);
  NewValue_->setObjectName("NewValue");
  NewValue_->setDigitsMostSignificant(6);
  NewValue_->setDigitsDecimal(3);
  NewValue_->setText(caption);
  auto* label = new QLabel("New value", this);
  label->setBuddy(NewValue_);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("ButtOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("ButtCancel");
  connect(ok, &QPushButton::clicked, this, &QDialog::accept);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(NewValue_);
  layout->addWidget(ok);
  layout->addWidget(cancel);
}

DeviceConstants::DeviceConstants(QWidget* parent) : QWidget(parent) {
  setObjectName("NBXDeviceConstants");
  FrameConstants_ = new QFrame(this);
  FrameConstants_->setObjectName("FrameConstants");
  FrameConstants_->setFrameShape(QFrame::StyledPanel);
  auto* grid = new QGridLayout(FrameConstants_);
  for (int i = 0; i < 9; ++i) {
    auto* value = new QLabel(FrameConstants_);
    value->setObjectName(Rows[i].name);
    value->setFrameShape(QFrame::Panel);
    value->setFrameShadow(QFrame::Sunken);
    value->setMinimumWidth(70);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setContextMenuPolicy(Qt::PreventContextMenu);
    value->installEventFilter(this);
    auto* caption = new QLabel(Rows[i].caption, FrameConstants_);
    caption->setBuddy(value);
    grid->addWidget(caption, i, 0);
    grid->addWidget(value, i, 1);
    labels_[static_cast<std::size_t>(i)] = value;
  }
  LblSerialNo_ = new QLabel(FrameConstants_);
  LblSerialNo_->setObjectName("LblSerialNo");
  LblSerialNo_->setFrameShape(QFrame::Panel);
  LblSerialNo_->setFrameShadow(QFrame::Sunken);
  auto* serialCaption = new QLabel("Internal Serial No.", FrameConstants_);
  serialCaption->setBuddy(LblSerialNo_);
  grid->addWidget(serialCaption, 9, 0);
  grid->addWidget(LblSerialNo_, 9, 1);
  remoteNote_ = new QLabel(" Remote Mode not applicable", this);
  remoteNote_->setObjectName("LblRemote");
  remoteNote_->hide();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(FrameConstants_);
  layout->addWidget(remoteNote_);
}

void DeviceConstants::ShowConstants(const SiteState& s) {
  for (std::size_t i = 0; i < 9; ++i) {
    shown_[i] = s.*Rows[i].field;
    labels_[i]->setText(Plain(shown_[i]));
  }
}

void DeviceConstants::setDevideCosntants(const SiteState& s) {
  ShowConstants(s);
  shownSerial_ = s.SerialNo;
  LblSerialNo_->setText(QString::fromStdString(s.SerialNo));
}

void DeviceConstants::Follow(const SiteState& s) {
  bool changed = s.SerialNo != shownSerial_;
  for (std::size_t i = 0; i < 9; ++i) changed = changed || s.*Rows[i].field != shown_[i];
  if (changed) setDevideCosntants(s);
}

void DeviceConstants::EEPROM2_StrToVar(const SiteState& s) { ShowConstants(s); }

void DeviceConstants::ResetElectParam(Settings& store, const SiteState& s, char decimalSeparator) {
  LblSerialNo_->setText("n/a");
  SiteState edited = s;
  for (int i = 0; i < 9; ++i)
    edited.*Rows[i].field = NumberEntry::NumberFromText(labels_[static_cast<std::size_t>(i)]->text());
  nbx::ResetElectParam(store, edited, decimalSeparator);
}

void DeviceConstants::SetRemote(bool remote) {
  FrameConstants_->setVisible(!remote);
  remoteNote_->setVisible(remote);
}

bool DeviceConstants::ModifyField(QLabel* label) {
  ElectConstDialog dialog(label->text(), this);
  dialog.adjustSize();
  dialog.move(label->mapToGlobal(QPoint(0, 0)));
  if (dialog.exec() != QDialog::Accepted) return false;
  label->setText(Plain(dialog.entry()->value()));
  return true;
}

bool DeviceConstants::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::MouseButtonRelease &&
      static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
    if (auto* label = qobject_cast<QLabel*>(watched)) {
      ModifyField(label);
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}

}  // namespace nbx
