#include <gtest/gtest.h>

#include <tuple>

#include "night.h"
#include "safety/alarms.h"
#include "safety/scripts.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using test::Lines;
using test::Night;
using Plays = std::vector<std::pair<std::string, bool>>;

class SoundAlarms : public ::testing::Test {
 protected:
  SoundAlarms() {
    n.nm.config.AlarmCloud[2] = {1, "/sounds/overcast.wav|repeat"};
    n.nm.config.AlarmRain[2] = {1, "/sounds/rain.mp3"};
    n.Start();
  }
  Night n;
  SiteState& s = n.s;
};

TEST_F(SoundAlarms, TheFirstClassAtFaultSoundsUntilABetterOneOrSafety) {
  n.Sky(Night::Overcast);
  n.st.box.readings.rainFrequency = 2000;
  n.Run(3);  // cloud comes first; the same class is not started again
  EXPECT_TRUE(n.nm.display.ButtStopAlarm.Visible);

  n.Sky(Night::Clear);
  n.Run();
  EXPECT_EQ(n.sound.plays, (Plays{{"/sounds/overcast.wav", true}, {"/sounds/rain.mp3", false}}));
  n.sound.playing = false;  // played once, it ends: the poll hides the button and stops
  n.st.time.RunFor(1000);
  EXPECT_FALSE(n.nm.display.ButtStopAlarm.Visible || n.st.time.IsArmed(TimerId::AlarmAjo));

  n.st.box.readings.rainFrequency = 3300;
  const int stops = n.sound.stops;
  n.Run();
  EXPECT_TRUE(n.sound.stops > stops && s.ActiveAlarmCode.empty());
}

TEST_F(SoundAlarms, SuspensionTheSoundDialogAndTheLinkAlarmKeepTheirSound) {
  n.nm.config.SuspendSoundAlarm = 1;
  n.Sky(Night::Overcast);
  n.Run();
  EXPECT_EQ(std::tuple(n.sound.plays, s.PendingAlarmCode),
            std::tuple(Plays{}, "C2"));  // the choice still runs
  n.nm.config.SuspendSoundAlarm = 0;
  s.AlarmWindowON = true;
  n.Run();
  EXPECT_TRUE(n.sound.plays.empty());
  s.AlarmWindowON = false;
  AlarmStart(n.nm, "/sounds/link.wav");
  s.AlarmHeld = true;
  n.Sky(Night::Clear);
  n.Run(2);
  EXPECT_TRUE(n.sound.playing);
  n.sound.unplayable = "/sounds/broken.wav";
  AlarmStart(n.nm, "/sounds/broken.wav|repeat");  // nothing to play: no poll, no button
  EXPECT_FALSE(n.nm.display.ButtStopAlarm.Visible || n.st.time.IsArmed(TimerId::AlarmAjo));
}

TEST_F(SoundAlarms, DayIsJudgedByTheCodeLastChosenNotTheOneSounding) {
  s.Value_Unsafe = true;
  s.NBX_CloudCondition = 3;
  s.NBX_DayCondition = 2;
  // A fitting cloud alarm is dropped as the day code last chosen no longer fits; it starts again.
  s.ActiveAlarmCode = "C2";
  s.PendingAlarmCode = "D0";
  ChooseSoundAlarm(n.nm);
  EXPECT_EQ(n.sound.plays, (Plays{{"/sounds/overcast.wav", true}}));
  // A day alarm that no longer fits is kept while another code was chosen last.
  n.nm.config.SuspendSoundAlarm = 1;
  s.ActiveAlarmCode = "D0";
  ChooseSoundAlarm(n.nm);
  EXPECT_TRUE(s.ActiveAlarmCode == "D0" && n.sound.playing);
}

// Each change of the verdict running its script once: the safety night test.
TEST(Scripts, AMissingScriptIsReportedNeverRunAndFoundOnTheNextTick) {
  test::TempDir dir;
  test::WriteFile(dir.File("close.sh"), "");
  Night n;
  Config& c = n.nm.config;
  c.ScriptPathUNSAFE = c.ScriptPathSAFE = dir.path();
  c.ScriptFileUNSAFE = "close.sh";
  c.ScriptFileSAFE = "open.sh";
  n.Start();
  EXPECT_EQ(n.nm.display.StatusBar2.Caption, "f52 ");
  EXPECT_TRUE(n.scripts.started.empty());  // the missing SAFE script is never run
  test::WriteFile(dir.File("open.sh"), "");
  n.Sky(Night::Overcast);
  n.Run();
  EXPECT_EQ(std::tuple(n.nm.display.StatusBar2.Caption, n.scripts.started),
            std::tuple("", Lines{dir.File("close.sh")}));

  std::string codes = "d11 ";
  c.ScriptFileUNSAFE = "gone.sh";
  c.ScriptFileSAFE = "gone too.sh";
  EXPECT_TRUE(CheckScripts(n.nm, codes));
  EXPECT_EQ(codes, "f52 f51 d11 ");
  c.ScriptFileUNSAFE = c.ScriptFileSAFE = "   ";  // blanks are no name
  codes.clear();
  EXPECT_FALSE(CheckScripts(n.nm, codes));
}

}  // namespace
}  // namespace nbx
