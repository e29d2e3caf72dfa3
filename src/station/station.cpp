#include "station/station.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QLocale>
#include <QTimer>
#include <cstdio>
#include <string>

#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "device/stage_calls.h"
#include "device/wire_protocol.h"
#include "graphs/drawing/freeimage_runtime.h"

namespace nbx {

void StationHost::Trace(std::string_view line) {
  if (onTrace) onTrace(line);
  // Losing the port, or failing to open it, is worth a line even without the trace.
  if (!traceEnabled && line.rfind("Serial port ", 0) != 0) return;
  // Frames carry control characters (the end-of-reply type is 17): shown escaped.
  std::string text;
  for (const char c : line) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02x", static_cast<unsigned char>(c));
      text += escaped;
    } else {
      text += c;
    }
  }
  std::fprintf(stderr, "%s\n", text.c_str());
  std::fflush(stderr);
}

void StationHost::DebugInfo(std::string_view message) {
  std::printf("%.*s\n", static_cast<int>(message.size()), message.data());
  std::fflush(stdout);
}

int StationHost::ShowMessage(std::string_view text, int buttons, std::string_view title) {
  std::fprintf(stderr, "%.*s: %.*s\n", static_cast<int>(title.size()), title.data(),
               static_cast<int>(text.size()), text.data());
  std::fflush(stderr);
  return Host::ShowMessage(text, buttons, title);
}

bool StationHost::WaitFor(const std::function<bool()>& done, int timeoutMs) {
  QDeadlineTimer deadline(timeoutMs);
  QEventLoop loop;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (done() || deadline.hasExpired()) loop.quit();
  });
  poll.start(5);
  if (!done()) loop.exec();
  return done();
}

char StationHost::DecimalSeparator() const {
  const QString point = QLocale::system().decimalPoint();
  return point.size() == 1 && point[0].unicode() < 128 ? static_cast<char>(point[0].unicode()) : '.';
}

namespace {

// The image library and its codecs (a few megabytes) stay mapped only while
// some picture is exported; a save loads it again once one is turned on.
void KeepImageLibraryForExports(const Config& c) {
  if (c.FreeImageUse) {
    for (const std::int32_t on : c.GraphImage)
      if (on == 1) return;
  }
  FreeImageRuntime::Instance().Unload();
}

}  // namespace

Station::Station(QObject* parent)
    : QObject(parent),
      timers_([this](TimerId id) { OnTimer(id); }),
      link_([this] { OnComm(nm_); }) {
  nm_.io.clock = &clock_;
  nm_.io.timers = &timers_;
  nm_.io.link = &link_;
  ConnectStages(nm_);
  nm_.io.host = &host_;
  nm_.io.pictures = &pictures_;
  nm_.io.sound = &sound_;
  nm_.io.scripts = &scripts_;
  host_.onCycle = [this] {
    KeepImageLibraryForExports(nm_.config);
    emit cycleProcessed();
  };
}

Station::~Station() = default;

void Station::Start() { StartAction(nm_); }

void Station::Stop() {
  if (!nm_.state.CyclesWanted() && !timers_.IsArmed(TimerId::CommOn)) {
    emit stopped();
    return;
  }
  StopAction(nm_);
}

void Station::OnTimer(TimerId id) {
  nbx::OnTimer(nm_, id);
  if (id == TimerId::Stop) emit stopped();
}

}  // namespace nbx
