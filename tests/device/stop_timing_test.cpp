#include <gtest/gtest.h>

#include "core/nimbometer.h"
#include "device/link_life.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

// Stop pressed right after the period's tick, or the tick falling within
// Stop's 10 ms: the work of that tick must not open the port again, or the
// station would believe it runs with its port closed and no timer left, and
// a client's Start would do nothing.
TEST(StopTiming, ATickAroundStopDoesNotOpenThePortAgain) {
  for (int msBeforeTick : {0, 5}) {
    SCOPED_TRACE(msBeforeTick);
    test::SimStation st;
    st.StartAndRunFirstCycles();  // ends on a tick, whose work is still to come
    if (msBeforeTick > 0) st.time.RunFor(st.nm.config.RefreshPeriod * 1000 - msBeforeTick);
    const std::size_t before = st.box.Commands().size();
    StopAction(st.nm);
    st.time.RunFor(50);

    EXPECT_FALSE(st.nm.state.IsRunning);
    EXPECT_FALSE(st.link.IsOpen());
    for (TimerId id : {TimerId::CommOn, TimerId::Graph, TimerId::RS232Timeout, TimerId::Stop})
      EXPECT_FALSE(st.time.IsArmed(id)) << static_cast<int>(id);
    for (const std::string& command : st.CommandsSince(before))
      EXPECT_EQ(command[0], 'P') << "only the heater's rest goes out after Stop";

    // The client's Start starts it again.
    Start_Device(st.nm);
    const int processed = st.host.cyclesProcessed;
    st.RunPeriods(2);
    EXPECT_TRUE(st.nm.state.IsRunning);
    EXPECT_GT(st.host.cyclesProcessed, processed);
    EXPECT_TRUE(st.nm.state.NBX_DataReady);
  }
}

}  // namespace
}  // namespace nbx
