#include "support/sim_station.h"

#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "device/stage_calls.h"
#include "device/wire_protocol.h"

namespace nbx::test {

SimStation::SimStation() {
  nm.io.clock = &time;
  nm.io.timers = &time;
  nm.io.link = &link;
  ConnectStages(nm);
  nm.io.host = &host;
  nm.config.PortName = "/dev/ttyNBX0";
  nm.config.LblPathName = nm.config.LblPathNameCCDAP4 = files.path();
  nm.config.NetPathMaster = nm.config.NetPathRemote = files.path();
  time.onTimer = [this](TimerId id) { OnTimer(nm, id); };
  link.onReceive = [this] { OnComm(nm); };
}

std::vector<std::string> SimStation::CommandsSince(std::size_t from) const {
  const auto& all = box.Commands();
  if (from >= all.size()) return {};
  return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
}

void SimStation::StartAndRunFirstCycles() {
  StartAction(nm);
  // The first cycle only asks the box who it is; the second is a full one.
  RunPeriods(2);
}

void SimStation::RunPeriods(int periods) {
  time.RunFor(static_cast<std::int64_t>(periods) * nm.config.RefreshPeriod * 1000);
}

}  // namespace nbx::test
