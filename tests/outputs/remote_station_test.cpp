#include <gtest/gtest.h>

#include "device/link_life.h"
#include "outputs/data_outputs.h"
#include "outputs/transfer_file.h"
#include "support/child_process.h"
#include "support/sim_station.h"

namespace nbx {
namespace {

// A REMOTE on virtual time, and a master that writes the shared file on the
// same clock when told to.
struct RemoteOnVirtualTime {
  RemoteOnVirtualTime() {
    Config& c = remote.nm.config;
    c.NMRole = {false, true};
    c.NetPathRemote = c.LblPathNameCCDAP4 = c.LblPathName = share.path();
    c.COMTimeout = 20;
    master.io.clock = &remote.time;
    master.io.host = &remote.host;
    master.config.NetPathMaster = share.path();
    master.state.Value_Temp = 11.5;
    MasterWrites();
  }
  void MasterWrites() {
    master.state.LastReading = master.NowSerial();
    WriteTransferFile(master);
  }
  double Age() const { return (remote.nm.NowSerial() - *remote.nm.state.LastReading) * 86400; }

  test::TempDir share;
  test::SimStation remote;
  Nimbometer master;
};

// A master gone still is one whose record stood through ten reads AND five
// minutes; the values go Unknown at the first read where both hold. A short
// period makes the time bind, a long one the count.
TEST(RemoteStation, AStillRecordBlanksAfterTenReadsAndFiveMinutes) {
  for (int period : {5, 60}) {
    SCOPED_TRACE(period);
    RemoteOnVirtualTime t;
    SiteState& s = t.remote.nm.state;
    t.remote.nm.config.RefreshPeriod = period;
    StartAction(t.remote.nm);
    t.remote.time.RunUntil([&] { return s.LastReading && (s.SameReadingCount >= 10 || t.Age() >= 300); }, 900000);
    EXPECT_EQ(s.Value_Temp, 11.5) << "one of the two alone keeps the values";
    t.remote.time.RunUntil([&] { return s.Value_Temp == 999; }, 900000);
    EXPECT_GE(s.SameReadingCount, 10);
    EXPECT_GE(t.Age(), 300);
    EXPECT_TRUE(s.SameReadingCount == 10 || t.Age() < 300 + period) << "blanked a read late";
    EXPECT_EQ(s.Value_CloudRaw, 99900);
    EXPECT_EQ(s.Value_Rain, -10);
  }
}

TEST(RemoteStation, CommunicationAlarmFollowsTheAgeOfTheData) {
  RemoteOnVirtualTime t;
  Config& c = t.remote.nm.config;
  SiteState& s = t.remote.nm.state;
  c.AlarmCom = {1, "lost.wav"};
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
