// Clients of the object: how they are counted, who may stop the box, and a
// client that takes over the verdict.

#include <gtest/gtest.h>

#include <memory>

#include "bus_fixture.h"

namespace nbx {
namespace {

using test::BusClient;
using test::WaitUntil;

// Two clients of a running station.
class AutomationClients : public test::OnTheBusRunning {
 protected:
  BusClient& first = client;
  BusClient second;
};

TEST_F(AutomationClients, TheLastClientAloneStopsTheBoxAndTheWindowFollowsTheCount) {
  first.Call("Attach");
  second.Call("Attach");
  EXPECT_EQ(first.Get("NBX_TotalNoUsers").toInt(), 2);
  EXPECT_EQ(d.LblUsers.Caption, "Attached Users: 2");
  EXPECT_FALSE(d.ButtStop.Visible || d.CloseItem.Enabled || d.mnuExit.Visible || d.mPopExit.Visible);

  first.Call("NBX_DeviceStop");
  station.st.RunPeriods(1);
  EXPECT_TRUE(first.Get("DeviceIsRunning").toBool());
  first.Call("Detach");
  EXPECT_EQ(s.COMNoUsers, 1);
  // Right after the period's tick, before the cycle's work has begun.
  second.Call("NBX_DeviceStop");
  station.st.RunPeriods(1);
  EXPECT_FALSE(second.Get("DeviceIsRunning").toBool());

  second.Call("Detach");
  EXPECT_FALSE(d.FrameCOM.Visible);
  EXPECT_TRUE(d.ButtStop.Visible && d.CloseItem.Enabled && d.mnuStart.Visible && d.mnuExit.Visible);
  // A client starts the box again; the Stop button stays away.
  second.Call("Device_Start");
  station.st.RunPeriods(1);
  EXPECT_TRUE(s.IsRunning);
  EXPECT_FALSE(d.ButtStop.Visible);
}

TEST_F(AutomationClients, ClientsThatLeaveWithoutDetachAreReleased) {
  first.Call("Attach");
  first.Call("Attach");
  second.Call("Attach");
  auto third = std::make_unique<BusClient>();
  third->Call("Attach");
  EXPECT_EQ(s.COMNoUsers, 4);
  first.Leave();
  EXPECT_TRUE(WaitUntil([&] { return s.COMNoUsers == 2; })) << s.COMNoUsers;
  third.reset();
  EXPECT_TRUE(WaitUntil([&] { return s.COMNoUsers == 1; })) << s.COMNoUsers;
  EXPECT_EQ(d.LblUsers.Caption, "Attached Users: 1");
  // Leaving does not stop the box.
  EXPECT_TRUE(s.IsRunning);
}

TEST_F(AutomationClients, AClientThatTakesTheVerdictAloneDecidesItAcrossCycles) {
  station.st.box.readings.rainFrequency = 3300;  // dry
  station.st.RunPeriods(1);
  ASSERT_TRUE(first.Get("Safe").toBool());
  station.sound.playing = "siren.wav";
  d.SafeDelayMsg.Caption = "SAFE condition delayed by 5 s";

  first.Call("Attach");
  first.Call("NBX_LocalControl", {true, QStringLiteral("Dome control has the verdict")});
  EXPECT_EQ(d.ControlOwner.Caption, "Dome control has the verdict");
  EXPECT_FALSE(d.Frame3.Visible);
  EXPECT_EQ(d.SafeDelayMsg.Caption, "");
  EXPECT_EQ(station.sound.playing, "");
  EXPECT_TRUE(s.LocalControl);

  first.Call("SetUnSafe", {true});
  station.st.RunPeriods(3);
  EXPECT_FALSE(first.Get("Safe").toBool());
  EXPECT_EQ(d.LblStatus.Caption, "Unsafe");
  station.st.box.readings.rainFrequency = 2000;  // raining
  first.Call("SetUnSafe", {false});
  station.st.RunPeriods(3);
  EXPECT_EQ(first.Get("Condition_Rain").toInt(), 3);
  EXPECT_TRUE(first.Get("Safe").toBool());

  // Gone without a word: the verdict stays where the client left it.
  first.Leave();
  EXPECT_TRUE(WaitUntil([&] { return s.COMNoUsers == 0; }));
  station.st.RunPeriods(2);
  EXPECT_TRUE(s.LocalControl);
  EXPECT_TRUE(second.Get("Safe").toBool());

  second.Call("NBX_LocalControl", {false, QString()});
  EXPECT_TRUE(d.Frame3.Visible);
  station.st.RunPeriods(1);
  EXPECT_FALSE(second.Get("Safe").toBool());
}

// A remote whose master has gone quiet: the link alarm waits while a client
// holds the verdict, as the client drives the sounds.
using AutomationClientsOnARemote = test::OnTheBus;

TEST_F(AutomationClientsOnARemote, TheLinkAlarmDoesNotStartWhileAClientHoldsTheVerdict) {
  c.NMRole = {false, true};
  c.AlarmCom = {1, "link.wav"};
  client.Call("NBX_LocalControl", {true, QStringLiteral("Dome control")});
  station.st.StartAndRunFirstCycles();
  EXPECT_EQ(station.sound.playing, "");
  client.Call("NBX_LocalControl", {false, QString()});
  station.st.RunPeriods(1);
  EXPECT_EQ(station.sound.playing, "link.wav");
}

}  // namespace
}  // namespace nbx
