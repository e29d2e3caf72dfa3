#include "ui/dialogs/temp_limits/temp_limits_dialog.h"

#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include "core/host.h"
#include "core/nimbometer.h"
#include "editing/config_editor.h"
#include "ui/widgets/message_box.h"
#include "ui/widgets/number_entry.h"

namespace nbx {
namespace {

NumberEntry* TemperatureEntry(const char* name, double value, QWidget* parent) {
  auto* entry = new NumberEntry(parent);
  entry->setObjectName(name);
  entry->setAllowNegative(true);
  entry->setDigitsMostSignificant(3);
  entry->setDigitsDecimal(0);
  entry->setValue(value);
  return entry;
}

}  // namespace

TempLimitsDialog::TempLimitsDialog(Nimbometer& nm, QWidget* parent) : QDialog(parent), nm_(nm) {
  setObjectName("NBXTempLimForm");
  setWindowTitle("Temperature limits");
  const QString unit = QString::fromStdString(nm.config.UnitTempStr);
  max_ = TemperatureEntry("GraphTempMax", nm.config.GraphTempMax, this);
  min_ = TemperatureEntry("GraphTempMin", nm.config.GraphTempMin, this);
  auto* form = new QFormLayout;
  form->addRow("Maximum (º" + unit + ")", max_);
  form->addRow("Minimum (º" + unit + ")", min_);
  auto* ok = new QPushButton("OK", this);
  ok->setObjectName("ButtOK");
  ok->setDefault(true);
  auto* cancel = new QPushButton("Cancel", this);
  cancel->setObjectName("ButtCancel");
  connect(ok, &QPushButton::clicked, this, &TempLimitsDialog::Confirm);
  connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(ok);
  buttons->addWidget(cancel);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addLayout(buttons);
}

void TempLimitsDialog::Confirm() {
  if (!(min_->value() < max_->value())) {
    ShowMessage(this, "Minimum value must be smaller then Maximum value ", ButtonsOk, {});
    return;
  }
  ConfigEditor editor(nm_);
  editor.SetGraphTempMax(max_->value());
  editor.SetGraphTempMin(min_->value());
  accept();
}

}  // namespace nbx
