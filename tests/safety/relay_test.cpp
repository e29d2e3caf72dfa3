#include <gtest/gtest.h>

#include "night.h"
#include "safety/relay.h"

namespace nbx {
namespace {

using test::Lines;
using test::Night;

TEST(Relay, FollowsTheVerdictInEveryCycleAndTheBoxReportsItBack) {
  Night n;
  const std::size_t start = n.CommandCount();
  n.Start();
  EXPECT_EQ(n.RelayCommandsSince(start), (Lines{"G"}));
  EXPECT_EQ(n.s.Value_Switch, 1);
  n.Sky(Night::Overcast);
  std::size_t from = n.CommandCount();
  n.Run(3);
  EXPECT_EQ(n.RelayCommandsSince(from), (Lines{"H", "H", "H"}));
  EXPECT_EQ(n.st.box.readings.relay, 2);
  EXPECT_EQ(n.nm.display.LblSwitch.Caption, "Closed");  // the box's "F" reply
  // A box that lost its state is put right within one cycle.
  n.st.box.readings.relay = 1;
  n.Run();
  EXPECT_EQ(n.st.box.readings.relay, 2);

  n.Sky(Night::Clear);
  from = n.CommandCount();
  n.Run(2);
  EXPECT_EQ(n.RelayCommandsSince(from), (Lines{"G", "G"}));
  EXPECT_EQ(n.s.Value_Switch, 1);
  EXPECT_EQ(n.nm.display.LblSwitch.Caption, "Opened");
}

TEST(Relay, ADisabledRelayARemoteOrAStoppedStationSendsNothing) {
  Night n;
  n.nm.config.SWRole = {false, true};
  const std::size_t start = n.CommandCount();
  n.Start();
  n.Sky(Night::Overcast);
  n.Run(2);
  SetSwitch(n.nm, 2);
  EXPECT_TRUE(n.RelayCommandsSince(start).empty());
  EXPECT_EQ(n.st.box.readings.relay, 1);

  n.nm.config.SWRole = {true, false};
  std::size_t from = n.CommandCount();
  SetSwitch(n.nm, 2);
  SetSwitch(n.nm, 7);
  n.st.time.RunUntil([&] { return n.CommandCount() >= from + 2; }, 500);
  EXPECT_EQ(n.RelayCommandsSince(from), (Lines{"H", "G"}));
  EXPECT_EQ(n.s.Value_Switch, 1);

  // A REMOTE has no box: the switch keeps what the master's file says.
  n.nm.config.NMRole = {false, true};
  n.s.Value_Switch = 2;
  from = n.CommandCount();
  n.s.Value_Unsafe = false;
  RelayStep(n.nm);
  SetSwitch(n.nm, 1);
  EXPECT_EQ(n.s.Value_Switch, 2);
  n.nm.config.NMRole = {true, false};
  n.s.IsRunning = false;
  SetSwitch(n.nm, 1);
  EXPECT_EQ(n.CommandCount(), from);
}

TEST(Relay, TheSwitchLabelShowsTheState) {
  Night n;
  Label& label = n.nm.display.LblSwitch;
  ShowSwitchState(n.nm, 2);
  EXPECT_EQ(label.Caption, "Closed");
  EXPECT_EQ(label.ForeColor, colours::Red);
  ShowSwitchState(n.nm, 1);
  EXPECT_EQ(label.Caption, "Opened");
  EXPECT_EQ(label.ForeColor, colours::DarkGreen);
  ShowSwitchState(n.nm, 5);
  EXPECT_EQ(label.Caption, "Opened");
  ShowSwitchState(n.nm, 0);
  EXPECT_EQ(label.Caption, " ");
}

}  // namespace
}  // namespace nbx
