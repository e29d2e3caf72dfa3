#include "ui/main_window/window_host.h"

#include <QApplication>
#include <QString>

#include "station/station.h"
#include "ui/widgets/message_box.h"

namespace nbx {

void WindowHost::Trace(std::string_view line) { station_.Trace(line); }
void WindowHost::DebugInfo(std::string_view message) { station_.DebugInfo(message); }
void WindowHost::Beep() { QApplication::beep(); }

// The box runs its own event loop, so the station's timers go on while it is
// open; the reply reaches the logic when the user answers.
int WindowHost::ShowMessage(std::string_view text, int buttons, std::string_view title) {
  const QString message = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const QString caption = QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size()));
  return nbx::ShowMessage(window_, message, buttons, caption);
}

bool WindowHost::WaitFor(const std::function<bool()>& done, int timeoutMs) {
  return station_.WaitFor(done, timeoutMs);
}

char WindowHost::DecimalSeparator() const { return station_.DecimalSeparator(); }
void WindowHost::CycleProcessed() { station_.CycleProcessed(); }

}  // namespace nbx
