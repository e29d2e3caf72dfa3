#pragma once

class QComboBox;
class QWidget;

namespace nbx {
struct Config;

// The port entry of the first setup and of the tab "Device": "COM1".."COM16"
// (COMn is /dev/ttyS(n-1)), then every serial port the system has, by its
// path; a path the system does not list (a symbolic link of a USB adapter,
// say) can be typed.
QComboBox* NewPortChoice(QWidget* parent);
// Shows the stored port: PortName when it is set, otherwise COMn.
void ShowPortChoice(QComboBox* box, const Config& config);

}  // namespace nbx
