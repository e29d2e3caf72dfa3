#include <gtest/gtest.h>

#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

using Commands = std::vector<std::string>;

// A cycle's commands after the optional sensors' opening ones.
Commands FullCycle(Commands c, bool wind) {
  for (int i = 0; i < 5; ++i)
    for (const char* cmd : {"S", "T", "C", "E"}) c.push_back(cmd);
  if (wind) c.push_back("V");
  for (const char* cmd : {"Q", "D", "F"}) c.push_back(cmd);
  // The heater's duty closes the cycle; the box's plate is far above its
  // target, so it is the minimum.
  c.push_back("P0102");
  return c;
}

// The cycle light flips between its two lamps; the lit one shows the colour.
bool CycleLightShows(const Display& d, Colour colour) {
  return d.LEDSensor[0].FillColor == colour || d.LEDSensor[1].FillColor == colour;
}

TEST(ReadingCycle, FirmwareDecidesTheOptionalSensorsAskedFor) {
  struct Case {
    const char* firmware;
    bool wind;
    Commands opening;
  };
  const Case cases[] = {
      {"6.10", true, {"v", "h", "t", "p"}},
      {"6.00", false, {"v", "h", "t"}},  // this release is never asked for pressure
      {"5.82", false, {"v", "h", "t", "p"}},
      {"5.81", false, {"v", "h", "t"}},
      {"5.50", false, {"v"}},  // humidity from 5.6 on
      {"3.10", false, {}},     // no "v" before firmware 5
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.firmware);
    test::SimStation st;
    st.nm.config.SWRole = {false, true};  // the relay's commands are the verdict's, tested there
    st.box.readings.firmware = c.firmware;
    st.box.readings.windFitted = c.wind;
    StartAction(st.nm);
    st.RunPeriods(1);
    // A fresh port: reset, then the unknown box is asked who it is, nothing more.
    EXPECT_EQ(st.CommandsSince(0), (Commands{"z", "B", "K"}));
    EXPECT_FALSE(st.nm.state.NBX_DataReady);
    // The anemometer answers the "v" that opens a cycle: its "V" comes from the next one.
    for (bool windAsked : {false, c.wind}) {
      const std::size_t before = st.box.Commands().size();
      st.RunPeriods(1);
      EXPECT_EQ(st.CommandsSince(before), FullCycle(c.opening, windAsked));
    }
    EXPECT_TRUE(st.nm.state.NBX_DataReady);
  }
}

TEST(ReadingCycle, AGoodCycleTakesTheBoxsValuesAndEveryThirdIsAGraphTick) {
  test::SimStation st;
  st.nm.state.Stats_Universe = 3;  // fewer slots than the box's five passes
  st.nm.state.SizeSampleArrays();
  st.nm.config.GraphFreq = 3;
  st.box.readings.skyIR = -1520;
  st.box.readings.errorCounters = {0, 0, 0, 2};
  st.StartAndRunFirstCycles();
  SiteState& s = st.nm.state;
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15.2);
  EXPECT_EQ(s.SerialNo, "1234");
  std::vector<bool> due;
  for (int i = 0; i < 6; ++i) {
    st.RunPeriods(1);
    due.push_back(s.GraphDue);
  }
  EXPECT_EQ(due, (std::vector<bool>{false, true, false, false, true, false}));
  // The box's error counters add up cycle after cycle.
  EXPECT_EQ(st.nm.display.LblPECReading.Caption, "7");
  EXPECT_EQ(st.nm.display.LblPECTot4.Caption, "14");
  EXPECT_GT(s.Value_Cycle, 0);
  EXPECT_LT(s.Value_Cycle, 1);
  EXPECT_TRUE(CycleLightShows(st.nm.display, colours::Blue));

  // A tick that finds the cycle still running leaves the count and the queue alone.
  s.CycleBusy = true;
  const int count = s.GraphCycleCount;
  const std::size_t commands = st.box.Commands().size();
  TimerGraphTick(st.nm);
  EXPECT_EQ(s.GraphCycleCount, count);
  EXPECT_EQ(st.box.Commands().size(), commands);
  EXPECT_TRUE(CycleLightShows(st.nm.display, colours::Orange));
}

TEST(ReadingCycle, ASilentBoxTurnsUnknownAfterTheLimitAndRecovers) {
  test::SimStation st;
  st.StartAndRunFirstCycles();
  SiteState& s = st.nm.state;
  ASSERT_TRUE(s.NBX_DataReady);
  st.box.faults.silentFromCommand = static_cast<int>(st.box.Commands().size()) + 1;

  // The next tick's first command gets no reply and ends its cycle after PORTTimeout.
  st.time.RunFor(10 + 5000 + 100);
  EXPECT_TRUE(s.CommFailed);
  EXPECT_EQ(s.ConsecutiveCommErrors, 1);
  EXPECT_FALSE(s.SentinelsActive);
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15);  // the last values stand until the limit
  EXPECT_EQ(st.nm.display.StatusBar.Caption, "Serial comm. OFF (1) - check Cable and Power");

  st.time.RunUntil([&] { return s.ConsecutiveCommErrors >= 3; }, 60000);
  EXPECT_TRUE(s.SentinelsActive);
  EXPECT_EQ(s.CloudUnknownCount, 6);
  EXPECT_EQ(s.Value_Cloud, 999);
  EXPECT_EQ(s.Value_Rain, -1);
  EXPECT_EQ(s.Value_Wind, 999 + 9);
  EXPECT_FALSE(s.NBX_DataReady);
  EXPECT_TRUE(CycleLightShows(st.nm.display, colours::Red));

  // The box answers again: the next tick's reopen finds it, and the tick after
  // is a normal cycle (firmware asked afresh, as a reopen forgets it).
  st.box.faults.silentFromCommand = 0;
  st.time.RunUntil([&] { return s.NBX_DataReady; }, 60000);
  EXPECT_FALSE(s.CommFailed || s.SentinelsActive);
  st.RunPeriods(1);
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15);
}

TEST(ReadingCycle, FirstTimeOutGivesUpWithALimitOfZero) {
  test::SimStation st;
  st.nm.config.UnknownRS232NoError = 0;
  st.box.faults.silentFromCommand = 1;
  StartAction(st.nm);
  st.time.RunFor(5100);
  EXPECT_TRUE(st.nm.state.SentinelsActive);
}

TEST(ReadingCycle, StopInTheMiddleOfACycleDropsFramesAndRestsTheHeater) {
  test::SimStation st;
  st.box.delivery.baud = 9600;  // a cycle takes long enough to stop inside it
  st.nm.config.SWRole = {false, true};  // the relay's commands are the verdict's, tested there
  st.StartAndRunFirstCycles();
  SiteState& s = st.nm.state;
  st.RunPeriods(1);
  st.time.RunFor(300);  // the next cycle is on the wire
  ASSERT_TRUE(s.CycleBusy);
  const int skyCount = s.SamplesSkyIR.count;
  StopAction(st.nm);
  st.time.RunFor(5);
  EXPECT_EQ(s.SamplesSkyIR.count, skyCount);  // frames still arriving are dropped
  st.time.RunFor(20);
  // The port, the timers and the resting duty after Stop: the soak checks them on every restart.
  // A Start after Stop asks "B", "K" first, as the reopen clears the firmware.
  const std::size_t restart = st.box.Commands().size();
  StartAction(st.nm);
  st.time.RunFor(3000);
  EXPECT_EQ(st.CommandsSince(restart), (Commands{"z", "B", "K"}));
}

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
    EXPECT_GT(st.host.cyclesProcessed, processed);
    EXPECT_TRUE(st.nm.state.NBX_DataReady);
  }
}

}  // namespace
}  // namespace nbx
