#pragma once

#include <gtest/gtest.h>

#include <vector>

#include "core/nimbometer.h"
#include "device/stage_calls.h"
#include "support/fake_link.h"
#include "support/sim_station.h"

namespace nbx::test {

// The logic alone, on virtual time, with a line that keeps what was written.
class LogicFixture : public ::testing::Test {
 protected:
  LogicFixture() {
    nm.io.clock = &time;
    nm.io.timers = &time;
    nm.io.link = &link;
    ConnectStages(nm);
    nm.io.host = &host;
    link.open = true;
    nm.state.IsRunning = true;
  }
  static void Samples(SampleArray& a, std::vector<double> values) {
    a.values = std::move(values);
    a.count = static_cast<int>(a.values.size());
  }

  VirtualTime time;
  FakeLink link;
  RecordingHost host{time};
  Nimbometer nm;
};

}  // namespace nbx::test
