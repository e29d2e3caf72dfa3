#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "core/nimbometer.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "station/qt_script_runner.h"
#include "station/qt_serial_link.h"
#include "station/qt_sound_player.h"
#include "station/qt_timers.h"
#include "station/system_clock.h"

namespace nbx {

// The program's surroundings as the station gives them: the trace on
// standard error, message boxes printed, waits that keep the event loop going.
class StationHost : public Host {
 public:
  void Trace(std::string_view line) override;
  void DebugInfo(std::string_view message) override;
  int ShowMessage(std::string_view text, int buttons, std::string_view title) override;
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override;
  char DecimalSeparator() const override;
  void CycleProcessed() override {
    if (onCycle) onCycle();
  }

  bool traceEnabled = false;
  std::function<void()> onCycle;
  std::function<void(std::string_view)> onTrace;
};

// The composition root: owns the three records, the timers and the serial
// port, and runs the beat on the one thread's event loop.
class Station : public QObject {
  Q_OBJECT

 public:
  explicit Station(QObject* parent = nullptr);
  ~Station() override;

  Nimbometer& nm() { return nm_; }
  StationHost& host() { return host_; }
  QtGraphPictures& pictures() { return pictures_; }

  // The Start action: the first cycle begins at once.
  void Start();
  // The Stop action; `stopped` is emitted once the port has closed.
  void Stop();

 signals:
  void cycleProcessed();
  void stopped();

 private:
  void OnTimer(TimerId id);

  SystemClock clock_;
  StationHost host_;
  QtTimers timers_;
  QtSerialLink link_;
  QtGraphPictures pictures_;
  QtSoundPlayer sound_;
  QtScriptRunner scripts_;
  Nimbometer nm_;
};

}  // namespace nbx
