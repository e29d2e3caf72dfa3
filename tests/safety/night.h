#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "fake_services.h"
#include "support/sim_station.h"

namespace nbx::test {

using Lines = std::vector<std::string>;

// A station on virtual time whose box reports a chosen sky; the sound and
// the scripts go to fakes. The sky temperature reaches the classification
// as the box reports it (no ambient correction).
class Night {
 public:
  static constexpr double Clear = -15, Cloudy = -3, Overcast = 5;  // degrees C

  Night() {
    nm.config.CloudTempFactor = false;
    // The light sensor reads Dark all night.
    nm.state.NBX_DayCondition = 1;
    nm.io.sound = &sound;
    nm.io.scripts = &scripts;
    Sky(Clear);
  }
  void Sky(double celsius) { st.box.readings.skyIR = celsius * 100; }
  // Start, and the log lines of the first full cycle.
  Lines Start() {
    const std::size_t from = st.host.debugLines.size();
    st.StartAndRunFirstCycles();
    return LinesSince(from);
  }
  // The log lines of the next `periods` cycles.
  Lines Run(int periods = 1) {
    const std::size_t from = st.host.debugLines.size();
    st.RunPeriods(periods);
    return LinesSince(from);
  }
  Lines LinesSince(std::size_t from) const {
    return {st.host.debugLines.begin() + static_cast<std::ptrdiff_t>(from), st.host.debugLines.end()};
  }
  // The relay commands the box received from command `from` on.
  Lines RelayCommandsSince(std::size_t from) const {
    Lines relay;
    for (const std::string& c : st.CommandsSince(from))
      if (c == "G" || c == "H") relay.push_back(c);
    return relay;
  }
  std::size_t CommandCount() const { return st.box.Commands().size(); }

  SimStation st;
  Nimbometer& nm = st.nm;
  SiteState& s = st.nm.state;
  FakeSoundPlayer sound;
  FakeScriptRunner scripts;
};

}  // namespace nbx::test
