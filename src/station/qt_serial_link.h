#pragma once

#include <QSerialPort>
#include <functional>

#include "core/serial_link.h"

namespace nbx {

// The serial line through QSerialPort: a real port, a USB adapter, or the
// pseudo-terminal of the simulated box.
class QtSerialLink : public SerialLink {
 public:
  explicit QtSerialLink(std::function<void()> onReceive);

  bool Open(const std::string& device, const std::string& lineSettings,
            std::string& errorText) override;
  void Close() override;
  bool IsOpen() const override;
  bool Write(std::string_view bytes) override;
  std::string ReadAll() override;

 private:
  QSerialPort port_;
};

// Line settings such as "9600,n,8,1" applied to a port; false for settings it
// cannot read.
bool ApplyLineSettings(QSerialPort& port, const std::string& settings);

}  // namespace nbx
