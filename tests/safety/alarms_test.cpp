#include <gtest/gtest.h>

#include "night.h"
#include "safety/alarms.h"

namespace nbx {
namespace {

using test::Night;
using Plays = std::vector<std::pair<std::string, bool>>;

class SoundAlarms : public ::testing::Test {
 protected:
  SoundAlarms() {
    n.nm.config.AlarmCloud[2] = {1, "/sounds/overcast.wav|repeat"};
    n.nm.config.AlarmRain[2] = {1, "/sounds/rain.mp3"};
    n.Start();
  }
  void Rain(double frequency) { n.st.box.readings.rainFrequency = frequency; }

  Night n;
  SiteState& s = n.s;
};

TEST_F(SoundAlarms, TheFirstClassAtFaultSoundsUntilABetterOneOrSafety) {
  n.Sky(Night::Overcast);
  Rain(2000);
  n.Run();
  EXPECT_EQ(n.sound.plays, (Plays{{"/sounds/overcast.wav", true}}));
  EXPECT_EQ(s.ActiveAlarmCode, "C2");
  EXPECT_TRUE(n.nm.display.ButtStopAlarm.Visible);
  EXPECT_TRUE(n.st.time.IsArmed(TimerId::AlarmAjo));
  n.Run(2);  // the same class does not start it again
  EXPECT_EQ(n.sound.plays.size(), 1u);

  n.Sky(Night::Clear);  // clouds gone, rain stays: the rain's sound replaces it
  n.Run();
  EXPECT_EQ(n.sound.plays.back(), (std::pair<std::string, bool>{"/sounds/rain.mp3", false}));
  EXPECT_EQ(s.ActiveAlarmCode, "R2");
  // Played once, it ends; the poll then hides the button and stops itself.
  n.sound.playing = false;
  n.st.time.RunFor(1000);
  EXPECT_FALSE(n.nm.display.ButtStopAlarm.Visible);
  EXPECT_FALSE(n.st.time.IsArmed(TimerId::AlarmAjo));

  Rain(3300);
  const int stops = n.sound.stops;
  n.Run();
  EXPECT_FALSE(s.Value_Unsafe);
  EXPECT_GT(n.sound.stops, stops);
  EXPECT_TRUE(s.ActiveAlarmCode.empty());
  EXPECT_EQ(n.sound.plays.size(), 2u);
}

TEST_F(SoundAlarms, SuspensionTheSoundDialogAndTheLinkAlarmKeepTheirSound) {
  n.nm.config.SuspendSoundAlarm = 1;
  n.Sky(Night::Overcast);
  n.Run();
  EXPECT_TRUE(n.sound.plays.empty());
  EXPECT_EQ(s.PendingAlarmCode, "C2");  // the choice still runs
  EXPECT_EQ(s.PendingAlarmFile, "/sounds/overcast.wav|repeat");
  EXPECT_TRUE(s.ActiveAlarmCode.empty());

  // The sound dialog plays a sample: the verdict neither starts nor stops a sound.
  n.nm.config.SuspendSoundAlarm = 0;
  s.AlarmWindowON = true;
  n.Run();
  EXPECT_TRUE(n.sound.plays.empty());
  n.Sky(Night::Clear);
  int stops = n.sound.stops;
  n.Run();
  EXPECT_EQ(n.sound.stops, stops);

  // The link alarm is held against a safe verdict.
  s.AlarmWindowON = false;
  AlarmStart(n.nm, "/sounds/link.wav");
  s.AlarmHeld = true;
  stops = n.sound.stops;
  n.Run(2);
  EXPECT_EQ(n.sound.stops, stops);
  EXPECT_TRUE(n.sound.playing);
}

TEST_F(SoundAlarms, DayIsJudgedByTheCodeLastChosenNotTheOneSounding) {
  n.nm.config.AlarmDay[0] = {1, "/sounds/dark.wav"};
  n.nm.config.CheckDay = {1, 0, 0};
  s.Value_Unsafe = true;
  s.NBX_CloudCondition = 3;
  s.NBX_DayCondition = 2;
  // A valid cloud alarm is dropped because the day code last chosen no
  // longer fits; the choice then starts the cloud's sound again.
  s.ActiveAlarmCode = "C2";
  s.PendingAlarmCode = "D0";
  ChooseSoundAlarm(n.nm);
  EXPECT_EQ(n.sound.plays, (Plays{{"/sounds/overcast.wav", true}}));
  ChooseSoundAlarm(n.nm);  // now the codes agree: left alone
  EXPECT_EQ(n.sound.plays.size(), 1u);

  // A day alarm that no longer fits is not dropped while another code was
  // chosen last; with sounds suspended it goes on sounding.
  n.nm.config.SuspendSoundAlarm = 1;
  s.ActiveAlarmCode = "D0";
  const int stops = n.sound.stops;
  ChooseSoundAlarm(n.nm);
  EXPECT_EQ(s.ActiveAlarmCode, "D0");
  EXPECT_EQ(s.PendingAlarmCode, "C2");
  EXPECT_EQ(n.sound.stops, stops);
  // With no code at all left, the sound stops.
  s.NBX_CloudCondition = 1;
  s.ActiveAlarmCode = "C2";
  ChooseSoundAlarm(n.nm);
  EXPECT_TRUE(s.ActiveAlarmCode.empty());
  EXPECT_GT(n.sound.stops, stops);
}

TEST_F(SoundAlarms, AFileThatCannotBeOpenedLeavesNoPollAndNoButton) {
  n.sound.unplayable = {"/sounds/broken.wav"};
  AlarmStart(n.nm, "/sounds/broken.wav|repeat");
  EXPECT_FALSE(n.sound.playing);
  EXPECT_FALSE(n.nm.display.ButtStopAlarm.Visible);
  EXPECT_FALSE(n.st.time.IsArmed(TimerId::AlarmAjo));
  // No player at all: silent as well.
  n.nm.io.sound = nullptr;
  AlarmStart(n.nm, "/sounds/overcast.wav");
  EXPECT_FALSE(n.nm.display.ButtStopAlarm.Visible);
  AlarmStop(n.nm);
}

}  // namespace
}  // namespace nbx
