#include "ui/widgets/port_choice.h"

#include <QComboBox>
#include <QSerialPortInfo>

#include "core/config.h"

namespace nbx {

QComboBox* NewPortChoice(QWidget* parent) {
  auto* box = new QComboBox(parent);
  box->setObjectName("COMPort");
  box->setEditable(true);
  for (int n = 1; n <= 16; ++n) box->addItem(QStringLiteral("COM%1").arg(n));
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts())
    if (box->findText(port.systemLocation()) < 0) box->addItem(port.systemLocation());
  return box;
}

void ShowPortChoice(QComboBox* box, const Config& config) {
  const QString stored = QString::fromStdString(config.PortName).trimmed();
  const QString shown = stored.isEmpty() ? QStringLiteral("COM%1").arg(config.COMPort + 1) : stored;
  if (box->findText(shown) < 0) box->addItem(shown);
  box->setCurrentIndex(box->findText(shown));
}

}  // namespace nbx
