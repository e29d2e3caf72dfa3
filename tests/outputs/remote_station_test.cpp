#include <gtest/gtest.h>

#include "device/link_life.h"
#include "outputs/data_outputs.h"
#include "outputs/transfer_file.h"
#include "support/child_process.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

// A REMOTE on virtual time, and a master that writes the shared file on the
// same clock until it is told to stop.
struct RemoteOnVirtualTime {
  RemoteOnVirtualTime() {
    Config& c = remote.nm.config;
    c.NMRole = {false, true};
    c.NetPathRemote = share.path();
    c.LblPathNameCCDAP4 = share.path();
    c.LblPathName = share.path();
    c.COMTimeout = 20;
    master.io.clock = &remote.time;
    master.io.host = &remote.host;
    master.config.NetPathMaster = share.path();
    master.state.Value_Temp = 11.5;
    master.state.Value_CloudRaw = -21;
  }
  void MasterWrites() {
    master.state.LastReading = master.NowSerial();
    WriteTransferFile(master);
  }

  test::TempDir share;
  test::SimStation remote;
  Nimbometer master;
};

TEST(RemoteStation, MirrorsTheMasterAndJudgesTooOldData) {
  RemoteOnVirtualTime t;
  SiteState& s = t.remote.nm.state;
  Display& d = t.remote.nm.display;
  t.MasterWrites();
  StartAction(t.remote.nm);
  t.remote.RunPeriods(2);
  EXPECT_EQ(s.Value_Temp, 11.5);
  EXPECT_FALSE(s.XFERFileErr);
  EXPECT_GE(t.remote.host.cyclesProcessed, 2);
  EXPECT_TRUE(t.remote.box.Commands().empty()) << "a remote has no box";

  // The master stops writing. Past COMTimeout: "w42", the values stay.
  t.remote.RunPeriods(2);
  EXPECT_EQ(d.StatusBar2.Caption, "w42");
  EXPECT_TRUE(s.XFERFileErr);
  EXPECT_EQ(s.Value_Temp, 11.5);

  // Ten reads of the same record within 300 s still keep them ...
  t.remote.time.RunUntil([&] { return s.SameReadingCount >= 10; }, 200000);
  EXPECT_LT((t.remote.nm.NowSerial() - *s.LastReading) * 86400, 300);
  EXPECT_EQ(s.Value_Temp, 11.5);
  // ... 300 s as well blank them, and the conditions go Unknown.
  t.remote.time.RunUntil([&] { return s.Value_Temp == 999; }, 300000);
  EXPECT_GE((t.remote.nm.NowSerial() - *s.LastReading) * 86400, 300);
  EXPECT_EQ(s.Value_CloudRaw, 99900);
  EXPECT_EQ(s.Value_Rain, -10);
  EXPECT_EQ(s.RainUnknownCount, 6);

  // The master is back: a new reading ends the count, fresh again.
  t.MasterWrites();
  t.remote.RunPeriods(1);
  EXPECT_EQ(s.Value_Temp, 11.5);
  EXPECT_FALSE(s.XFERFileErr);
  EXPECT_EQ(d.StatusBar2.Caption, "");
}

TEST(RemoteStation, AStillRecordNeedsTenReadsNotOnlyFiveMinutes) {
  RemoteOnVirtualTime t;
  t.remote.nm.config.RefreshPeriod = 60;
  SiteState& s = t.remote.nm.state;
  t.MasterWrites();
  StartAction(t.remote.nm);
  // Nine reads of the same record, eight minutes: the values stand.
  t.remote.time.RunUntil([&] { return s.SameReadingCount == 9; }, 600000);
  EXPECT_GE((t.remote.nm.NowSerial() - *s.LastReading) * 86400, 300);
  EXPECT_EQ(s.Value_Temp, 11.5);
  t.remote.RunPeriods(1);
  EXPECT_EQ(s.SameReadingCount, 10);
  EXPECT_EQ(s.Value_Temp, 999);
}

TEST(RemoteStation, CommunicationAlarmFollowsTheAgeOfTheData) {
  RemoteOnVirtualTime t;
  Config& c = t.remote.nm.config;
  SiteState& s = t.remote.nm.state;
  c.AlarmCom = {1, "lost.wav"};
  t.MasterWrites();
  StartAction(t.remote.nm);
  t.remote.RunPeriods(1);
  EXPECT_FALSE(s.RemoteCommAlarmOn);
  t.remote.RunPeriods(3);
  EXPECT_TRUE(s.RemoteCommAlarmOn);
  EXPECT_TRUE(s.AlarmHeld) << "the safety step must not stop it";
  t.MasterWrites();
  t.remote.RunPeriods(1);
  EXPECT_FALSE(s.RemoteCommAlarmOn);
  EXPECT_FALSE(s.AlarmHeld);

  // Unchecking the box ends a sounding alarm, old data or not.
  t.remote.RunPeriods(3);
  ASSERT_TRUE(s.RemoteCommAlarmOn);
  c.AlarmCom.Value = 0;
  t.remote.RunPeriods(1);
  EXPECT_FALSE(s.RemoteCommAlarmOn);
}

}  // namespace
}  // namespace nbx
