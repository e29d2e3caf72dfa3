#pragma once

#include "core/host.h"

class QWidget;

namespace nbx {
class StationHost;

// The station's surroundings in window mode: messages in the program's own
// message box over the main window; everything else (trace, waits that keep
// the event loop running, the cycle's signal) as the station gives it.
class WindowHost : public Host {
 public:
  explicit WindowHost(StationHost& station) : station_(station) {}
  void setWindow(QWidget* window) { window_ = window; }

  void Trace(std::string_view line) override;
  void DebugInfo(std::string_view message) override;
  void Beep() override;
  int ShowMessage(std::string_view text, int buttons, std::string_view title) override;
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override;
  char DecimalSeparator() const override;
  void CycleProcessed() override;

 private:
  StationHost& station_;
  QWidget* window_ = nullptr;
};

}  // namespace nbx
