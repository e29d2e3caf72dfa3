#include <gtest/gtest.h>

#include <tuple>

#include "device/link_life.h"
#include "device/reading_cycle.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

using Commands = std::vector<std::string>;

// The cycle light flips between its two lamps; the lit one shows the colour.
bool CycleLightShows(const Display& d, Colour colour) {
  return d.LEDSensor[0].FillColor == colour || d.LEDSensor[1].FillColor == colour;
}

TEST(ReadingCycle, FirmwareDecidesTheOptionalSensorsAskedFor) {
  const struct {
    const char* firmware;
    bool wind;
    Commands opening;
  } cases[] = {{"6.10", true, {"v", "h", "t", "p"}},
               {"6.00", false, {"v", "h", "t"}},  // 6.00: no pressure
               {"5.82", false, {"v", "h", "t", "p"}},
               {"5.81", false, {"v", "h", "t"}},
               {"5.50", false, {"v"}},
               {"3.10", false, {}}};
  for (const auto& c : cases) {
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
      Commands cycle = c.opening;
      for (int i = 0; i < 5; ++i) cycle.insert(cycle.end(), {"S", "T", "C", "E"});
      if (windAsked) cycle.push_back("V");
      // The plate is far above its target: the heater's minimum duty closes the cycle.
      cycle.insert(cycle.end(), {"Q", "D", "F", "P0102"});
      EXPECT_EQ(st.CommandsSince(before), cycle);
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
  std::vector<bool> due;
  for (int i = 0; i < 6; ++i) {
    st.RunPeriods(1);
    due.push_back(s.GraphDue);
  }
  EXPECT_EQ(due, (std::vector<bool>{false, true, false, false, true, false}));
  // The box's error counters add up cycle after cycle.
  EXPECT_EQ(st.nm.display.LblPECReading.Caption + " " + st.nm.display.LblPECTot4.Caption, "7 14");
  EXPECT_TRUE(s.Value_Cycle > 0 && s.Value_Cycle < 1) << s.Value_Cycle;
  EXPECT_TRUE(CycleLightShows(st.nm.display, colours::Blue));

  // A tick that finds the cycle still running leaves the count and the queue alone.
  s.CycleBusy = true;
  const int count = s.GraphCycleCount;
  const std::size_t commands = st.box.Commands().size();
  TimerGraphTick(st.nm);
  EXPECT_EQ(std::tuple(s.GraphCycleCount, st.box.Commands().size()), std::tuple(count, commands));
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
  EXPECT_EQ(std::tuple(s.CommFailed, s.ConsecutiveCommErrors, s.SentinelsActive), std::tuple(true, 1, false));
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15);  // the last values stand until the limit
  EXPECT_EQ(st.nm.display.StatusBar.Caption, "Serial comm. OFF (1) - check Cable and Power");

  st.time.RunUntil([&] { return s.ConsecutiveCommErrors >= 3; }, 60000);
  EXPECT_TRUE(s.SentinelsActive && !s.NBX_DataReady);
  EXPECT_EQ(s.CloudUnknownCount, 6);
  EXPECT_EQ(std::tuple(s.Value_Cloud, s.Value_Rain, s.Value_Wind), std::tuple(999.0, -1.0, 999.0 + 9));
  EXPECT_TRUE(CycleLightShows(st.nm.display, colours::Red));

  // The box answers again: the next tick's reopen finds it, and the tick after is a normal cycle.
  st.box.faults.silentFromCommand = 0;
  st.time.RunUntil([&] { return s.NBX_DataReady; }, 60000);
  EXPECT_FALSE(s.CommFailed || s.SentinelsActive);
  st.RunPeriods(1);
  EXPECT_DOUBLE_EQ(s.Value_CloudRaw, -15);

  // With a limit of 0 the first time-out gives up.
  test::SimStation zero;
  zero.nm.config.UnknownRS232NoError = 0;
  zero.box.faults.silentFromCommand = 1;
  StartAction(zero.nm);
  zero.time.RunFor(5100);
  EXPECT_TRUE(zero.nm.state.SentinelsActive);
}

// Stop on the period's tick, just before it, or mid-cycle: the work still pending must not open
// the port again, or the station would believe it runs with its port closed and no timer left,
// and a client's Start would do nothing. Frames still arriving are dropped.
TEST(StopTiming, NoWorkOutlivesStopAndAStartAsksTheBoxAfresh) {
  for (int afterTickMs : {0, -5, 300}) {
    SCOPED_TRACE(afterTickMs);
    test::SimStation st;
    st.box.delivery.baud = 9600;  // a cycle takes long enough to stop inside it
    st.StartAndRunFirstCycles();  // ends on a tick, whose work is still to come
    if (afterTickMs != 0) st.time.RunFor(st.nm.config.RefreshPeriod * 1000 + afterTickMs);
    SiteState& s = st.nm.state;
    if (afterTickMs > 0) ASSERT_TRUE(s.CycleBusy);
    const int skyCount = s.SamplesSkyIR.count;
    const std::size_t before = st.box.Commands().size();
    StopAction(st.nm);
    st.time.RunFor(50);
    EXPECT_EQ(s.SamplesSkyIR.count, skyCount);
    EXPECT_FALSE(s.IsRunning);
    EXPECT_FALSE(st.link.IsOpen());
    for (TimerId id : {TimerId::CommOn, TimerId::Graph, TimerId::RS232Timeout, TimerId::Stop})
      EXPECT_FALSE(st.time.IsArmed(id)) << static_cast<int>(id);
    for (const std::string& command : st.CommandsSince(before))
      EXPECT_EQ(command[0], 'P') << "only the heater's rest goes out after Stop";
    // The client's Start: the reopen forgot the firmware, so "B" and "K" come first.
    const std::size_t restart = st.box.Commands().size();
    Start_Device(st.nm);
    st.RunPeriods(2);
    const Commands sent = st.CommandsSince(restart);
    EXPECT_EQ(Commands(sent.begin(), sent.begin() + std::min<std::size_t>(3, sent.size())),
              (Commands{"z", "B", "K"}));
    EXPECT_TRUE(s.NBX_DataReady);
  }
}

}  // namespace
}  // namespace nbx
