#pragma once

#include "core/clock.h"
#include "core/config.h"
#include "core/display.h"
#include "core/host.h"
#include "core/site_state.h"
#include "core/timers.h"
#include "core/output_files.h"

namespace nbx {

class SerialLink;
class Settings;
class GraphPictures;
class SoundPlayer;
class ScriptRunner;
class StageCalls;

// The outside world of the logic, each behind a small interface: the station
// gives the real ones (system clock, QTimers, QSerialPort), tests give a
// virtual clock and the in-process box.
struct Services {
  Clock* clock = nullptr;
  Timers* timers = nullptr;
  SerialLink* link = nullptr;
  Host* host = nullptr;
  Settings* settings = nullptr;  // the store, for the few writes outside load and unload
  GraphPictures* pictures = nullptr;  // the graphs' surfaces and their files; none: not drawn
  SoundPlayer* sound = nullptr;    // the alarm sound; none: silent
  ScriptRunner* scripts = nullptr; // the SAFE/UNSAFE scripts; none: not run
  StageCalls* calls = nullptr;     // the device, for the stages beneath it (ConnectStages)
};

// The whole program state that the logic works on: the three records and the
// services. One instance lives for the life of the process; every routine of
// the cycle takes it.
struct Nimbometer {
  SiteState state;
  Config config;
  Display display;
  Services io;
  OutputFiles files;

  Nimbometer() { state.SizeSampleArrays(); }

  double NowSerial() const { return nbx::NowSerial(*io.clock); }
  std::int64_t MillisNow() const { return nbx::MillisNow(*io.clock); }
  LocalDateTime Now() const { return io.clock->Now(); }
  bool IsMaster() const { return config.NMRole[0]; }
};

}  // namespace nbx
