#include <gtest/gtest.h>

#include "night.h"
#include "safety/safety_decision.h"

namespace nbx {
namespace {

using test::Lines;
using test::Night;

TEST(SafetyVerdict, ASafeVerdictWaitsTheDelayAndAnUnsafeCycleRestartsIt) {
  Night n;
  n.nm.config.SafeDelayVal = 60;
  // The first verdict takes effect at once.
  EXPECT_EQ(n.Start(), (Lines{"Just started, setting SAFE"}));
  EXPECT_FALSE(n.s.Value_Unsafe);

  n.Sky(Night::Overcast);
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));
  EXPECT_TRUE(n.s.Value_Unsafe);

  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "SAFE condition delayed by 60 s"}));
  EXPECT_TRUE(n.s.Value_Unsafe);
  EXPECT_EQ(n.s.SafeDelayWait, 60);
  EXPECT_EQ(n.nm.display.SafeDelayMsg.Caption, "SAFE condition delayed by 60 s");
  for (int left = 50; left >= 10; left -= 10) {
    EXPECT_EQ(n.Run(), (Lines{"SAFE condition delayed by " + std::to_string(left) + " s"}));
    EXPECT_EQ(n.s.SafeDelayWait, left);
  }
  EXPECT_EQ(n.Run(), (Lines{"Setting SAFE after delay"}));
  EXPECT_FALSE(n.s.Value_Unsafe);
  EXPECT_EQ(n.s.SafeDelayWait, 0);
  EXPECT_TRUE(n.nm.display.SafeDelayMsg.Caption.empty());
  EXPECT_TRUE(n.Run(3).empty());  // a steady verdict logs nothing

  // One unsafe cycle in the hold starts the whole delay again.
  n.Sky(Night::Overcast);
  n.Run();
  n.Sky(Night::Clear);
  n.Run(3);
  EXPECT_EQ(n.s.SafeDelayWait, 40);
  n.Sky(Night::Overcast);
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed"}));
  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "SAFE condition delayed by 60 s"}));
}

TEST(SafetyVerdict, WithoutADelayEveryChangeTakesEffectInItsCycle) {
  Night n;
  n.Sky(Night::Overcast);
  EXPECT_EQ(n.Start(), (Lines{"Detected unsafe by clouds", "Just started, setting UNSAFE"}));
  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "Setting SAFE"}));
  EXPECT_FALSE(n.s.Value_Unsafe);
  EXPECT_EQ(n.s.SafetyTrend, 2);
  EXPECT_EQ(n.nm.display.LblStatus.Caption, "Safe");
  EXPECT_EQ(n.nm.display.LEDUnsafe.FillColor, colours::Green);
}

TEST(SafetyVerdict, CloudyCountsOnlyAfterTheCloudDelayOnTheWayUpFromClear) {
  Night n;
  n.nm.config.CheckCloud = {0, 1, 1};
  n.nm.config.CloudAlarmDelay = 120;
  // A Cloudy sky at Start counts at once.
  n.Sky(Night::Cloudy);
  EXPECT_EQ(n.Start(), (Lines{"Detected unsafe by clouds", "Just started, setting UNSAFE"}));
  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "Setting SAFE"}));

  n.Sky(Night::Cloudy);
  for (int cycle = 0; cycle < 12; ++cycle) {
    EXPECT_EQ(n.Run(), (Lines{"Clouds detected but delayed as configured"})) << cycle;
    EXPECT_FALSE(n.s.Value_Unsafe) << cycle;
    EXPECT_EQ(n.s.NBX_CloudSafe, 1);
  }
  EXPECT_EQ(n.nm.display.StatusBar.Caption, "Cloud Alarm Delay 120s");
  EXPECT_EQ(n.nm.display.StatusBar.ForeColor, colours::Red);
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));
  EXPECT_EQ(n.s.NBX_CloudSafe, 2);

  // Down from Overcast to Cloudy there is no pause, then or later.
  n.Sky(Night::Overcast);
  n.Run();
  n.Sky(Night::Cloudy);
  for (int cycle = 0; cycle < 4; ++cycle) {
    EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds"})) << cycle;
    EXPECT_TRUE(n.s.Value_Unsafe);
  }
  EXPECT_EQ(NBX_CloudAlarmDelay(n.nm), 120);
}

TEST(SafetyVerdict, AnUnknownSkyCountsAsUnsafeOnlyWhenConfigured) {
  for (const int unknownUnsafe : {0, 1}) {
    Night n;
    n.nm.config.UnKnownUnsafe = unknownUnsafe;
    n.Start();
    n.st.box.faults.skySentinel = true;
    // Two readings above the Unknown limit still classify as Overcast.
    EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));
    EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds"}));
    const Lines third = n.Run();
    EXPECT_EQ(n.s.NBX_CloudCondition, 0);
    EXPECT_EQ(n.s.NBX_CloudSafe, 0);
    if (unknownUnsafe == 1) {
      EXPECT_EQ(third, (Lines{"Detected unsafe by unknown from IR sensor"}));
      EXPECT_TRUE(n.s.Value_Unsafe);
    } else {
      EXPECT_EQ(third, (Lines{"Safety condition changed", "Setting SAFE"}));
      EXPECT_FALSE(n.s.Value_Unsafe);
    }
  }
}

TEST(SafetyVerdict, FamiliesDecideByTheirBoxesAndOnlyThreeHaveAnUnknownRule) {
  struct Case {
    Condition SiteState::*condition;
    Condition value;
    SafeFlag SiteState::*flag;
    SafeFlag expectedFlag;
    Lines lines;
  };
  const Case cases[] = {
      {&SiteState::NBX_RainCondition, 3, &SiteState::NBX_RainSafe, 2, {"Detected unsafe by rain"}},
      {&SiteState::NBX_RainCondition, 0, &SiteState::NBX_RainSafe, 0,
       {"Detected unsafe by unknown from rain sensor"}},
      {&SiteState::NBX_DayCondition, 0, &SiteState::NBX_DaySafe, 0,
       {"Detected unsafe by unknown from light sensor"}},
      {&SiteState::NBX_DayCondition, 2, &SiteState::NBX_DaySafe, 2, {"Detected unsafe by light"}},
      {&SiteState::NBX_WindCondition, 3, &SiteState::NBX_WindSafe, 2, {"Detected unsafe by wind"}},
      {&SiteState::NBX_WindCondition, 0, &SiteState::NBX_WindSafe, 1, {}},
      {&SiteState::NBX_HumidityCondition, 3, &SiteState::NBX_HumiditySafe, 2, {"Detected unsafe by Humidity"}},
      {&SiteState::NBX_HumidityCondition, 0, &SiteState::NBX_HumiditySafe, 1, {}},
      {&SiteState::NBX_PressureCondition, 1, &SiteState::NBX_PressureSafe, 2, {"Detected unsafe by Pressure"}},
      {&SiteState::NBX_PressureCondition, 0, &SiteState::NBX_PressureSafe, 1, {}},
  };
  for (const Case& c : cases) {
    Night n;
    n.nm.config.CheckDay = {0, 1, 1};
    n.nm.config.CheckWind = {0, 0, 1};
    n.nm.config.CheckHumidity = {0, 0, 1};
    n.nm.config.CheckPressure = {1, 0, 0};
    n.Start();
    n.s.*c.condition = c.value;
    const std::size_t from = n.st.host.debugLines.size();
    EvaluateSafety(n.nm);
    const bool unsafe = !c.lines.empty();
    Lines expected = c.lines;
    if (unsafe) expected.insert(expected.end(), {"Safety condition changed", "Setting UNSAFE"});
    EXPECT_EQ(n.LinesSince(from), expected);
    EXPECT_EQ(n.s.*c.flag, c.expectedFlag);
    EXPECT_EQ(n.s.Value_Unsafe, unsafe);
  }
  // Without an anemometer the wind's flag is left as it was.
  Night n;
  n.Start();
  n.s.IsWindPresent = false;
  n.s.NBX_WindSafe = 0;
  n.s.NBX_WindCondition = 3;
  n.nm.config.CheckWind = {0, 0, 1};
  EvaluateSafety(n.nm);
  EXPECT_EQ(n.s.NBX_WindSafe, 0);
  EXPECT_FALSE(n.s.Value_Unsafe);
}

TEST(SafetyVerdict, TheSafeDelayRoundsHalfToEvenAndARaisedDelayFallsBackSilently) {
  Night n;
  n.Start();
  for (const auto& [delay, wait] : {std::pair{2.5, 2}, std::pair{3.5, 4}, std::pair{60.4, 60}}) {
    n.nm.config.SafeDelayVal = 0;
    n.s.NBX_CloudCondition = 3;
    EvaluateSafety(n.nm);
    n.nm.config.SafeDelayVal = delay;
    n.s.NBX_CloudCondition = 1;
    EvaluateSafety(n.nm);
    EXPECT_EQ(n.s.SafeDelayWait, wait) << delay;
  }
  // Safe for a while, then the delay is raised beyond the time since the
  // last change: unsafe again, with no "Setting UNSAFE".
  n.nm.config.SafeDelayVal = 0;
  n.Run(3);
  ASSERT_FALSE(n.s.Value_Unsafe);
  n.nm.config.SafeDelayVal = 600;
  const Lines lines = n.Run();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].rfind("SAFE condition delayed by ", 0), 0u) << lines[0];
  EXPECT_TRUE(n.s.Value_Unsafe);
}

TEST(SafetyVerdict, WhileAClientHoldsControlNothingButTheDisplayMoves) {
  Night n;
  n.Start();
  HasControl(n.nm, true, "Meteodesk has control");
  EXPECT_FALSE(n.nm.display.Frame3.Visible);
  EXPECT_EQ(n.nm.display.ControlOwner.Caption, "Meteodesk has control");
  const std::size_t commands = n.CommandCount();
  n.Sky(Night::Overcast);
  EXPECT_TRUE(n.Run(3).empty());
  EXPECT_EQ(n.s.NBX_CloudSafe, 1);
  EXPECT_FALSE(n.s.Value_Unsafe);
  // The client's verdict is shown, and still no relay command goes out.
  n.s.Value_Unsafe = true;
  n.Run();
  EXPECT_EQ(n.nm.display.LblStatus.Caption, "Unsafe");
  EXPECT_EQ(n.nm.display.LEDUnsafe.FillColor, colours::Red);
  EXPECT_TRUE(n.RelayCommandsSince(commands).empty());
  EXPECT_TRUE(n.scripts.started.empty());

  HasControl(n.nm, false, "");
  EXPECT_TRUE(n.nm.display.Frame3.Visible);
  const std::size_t back = n.CommandCount();
  // The verdict the client left is kept; the trend from before it changes.
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed"}));
  EXPECT_EQ(n.s.NBX_CloudSafe, 2);
  n.Run();
  EXPECT_EQ(n.RelayCommandsSince(back), (Lines{"H", "H"}));
}

TEST(SafetyVerdict, StartForgetsTheVerdictsHistory) {
  Night n;
  n.nm.config.SafeDelayVal = 60;
  n.Sky(Night::Overcast);
  n.Start();
  n.Sky(Night::Clear);
  n.Run();
  ASSERT_GT(n.s.SafeDelayWait, 0);
  ResetSafetyAtStart(n.nm);
  EXPECT_EQ(n.s.SafetyTrend, 0);
  EXPECT_EQ(n.s.CloudChangeTime, 0);
  EXPECT_EQ(n.s.LastCloudCondition, 2);
  EXPECT_EQ(n.s.SafetyChangeTime, n.nm.NowSerial());
  EXPECT_TRUE(n.nm.display.SafeDelayMsg.Caption.empty());
  EXPECT_TRUE(n.nm.display.LblStatus.Caption.empty());
  EXPECT_EQ(n.nm.display.LEDUnsafe.FillColor, colours::LampGrey);
  // The next verdict is a first one again, and counts as a change.
  EXPECT_EQ(n.Run(), (Lines{"Just started, setting SAFE"}));
  EXPECT_TRUE(n.s.SafetyChanged);
}

}  // namespace
}  // namespace nbx
