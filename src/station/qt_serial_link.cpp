#include "station/qt_serial_link.h"

#include <QStringList>
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace nbx {

bool ApplyLineSettings(QSerialPort& port, const std::string& settings) {
  const QStringList parts = QString::fromStdString(settings).split(',');
  if (parts.size() != 4) return false;
  bool ok = false;
  const int baud = parts[0].trimmed().toInt(&ok);
  if (!ok || baud <= 0) return false;
  QSerialPort::Parity parity;
  switch (parts[1].trimmed().toLower().toStdString()[0]) {
    case 'n': parity = QSerialPort::NoParity; break;
    case 'e': parity = QSerialPort::EvenParity; break;
    case 'o': parity = QSerialPort::OddParity; break;
    case 'm': parity = QSerialPort::MarkParity; break;
    case 's': parity = QSerialPort::SpaceParity; break;
    default: return false;
  }
  const int bits = parts[2].trimmed().toInt(&ok);
  if (!ok || bits < 5 || bits > 8) return false;
  const QString stop = parts[3].trimmed();
  QSerialPort::StopBits stopBits;
  if (stop == "1") stopBits = QSerialPort::OneStop;
  else if (stop == "1.5") stopBits = QSerialPort::OneAndHalfStop;
  else if (stop == "2") stopBits = QSerialPort::TwoStop;
  else return false;
  return port.setBaudRate(baud) && port.setParity(parity) &&
         port.setDataBits(static_cast<QSerialPort::DataBits>(bits)) && port.setStopBits(stopBits) &&
         port.setFlowControl(QSerialPort::NoFlowControl);
}

QtSerialLink::QtSerialLink(std::function<void()> onReceive) {
  QObject::connect(&port_, &QSerialPort::readyRead, [onReceive = std::move(onReceive)] { onReceive(); });
  // An adapter pulled out mid-run: the port is closed here, so that the next
  // write fails and the next open reports the platform's reason.
  QObject::connect(&port_, &QSerialPort::errorOccurred, [this](QSerialPort::SerialPortError e) {
    if (e == QSerialPort::ResourceError && port_.isOpen()) port_.close();
  });
}

bool QtSerialLink::Open(const std::string& device, const std::string& lineSettings,
                        std::string& errorText) {
  port_.setPortName(QString::fromStdString(device));
  if (!port_.open(QIODevice::ReadWrite)) {
    errorText = port_.errorString().toStdString();
    // The usual cause on a new installation: the user is not allowed the port.
    if (::access(device.c_str(), R_OK | W_OK) != 0 && errno == EACCES)
      errorText += "; the user needs access to the port (on Debian, the group dialout)";
    return false;
  }
  if (!ApplyLineSettings(port_, lineSettings)) {
    errorText = "unusable line settings \"" + lineSettings + "\"";
    port_.close();
    return false;
  }
  return true;
}

void QtSerialLink::Close() {
  if (!port_.isOpen()) return;
  // What is still buffered (the heater's resting command at Stop) goes first.
  port_.flush();
  port_.close();
}

bool QtSerialLink::IsOpen() const { return port_.isOpen(); }

bool QtSerialLink::Write(std::string_view bytes) {
  if (!port_.isOpen()) return false;
  const qint64 written = port_.write(bytes.data(), static_cast<qint64>(bytes.size()));
  if (written != static_cast<qint64>(bytes.size())) return false;
  port_.flush();
  return port_.isOpen();
}

std::string QtSerialLink::ReadAll() {
  if (!port_.isOpen()) return {};
  return port_.readAll().toStdString();
}

}  // namespace nbx
