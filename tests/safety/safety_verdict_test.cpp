#include <gtest/gtest.h>

#include <tuple>

#include "night.h"
#include "safety/relay.h"
#include "safety/safety_decision.h"

namespace nbx {
namespace {

using test::Lines;
using test::Night;

TEST(SafetyVerdict, ASafeVerdictWaitsTheDelayAndAnUnsafeCycleRestartsIt) {
  Night n;
  n.nm.config.SafeDelayVal = 60;
  EXPECT_EQ(n.Start(), (Lines{"Just started, setting SAFE"}));  // no delay for the first verdict
  EXPECT_EQ(n.s.Value_Switch, 1);
  EXPECT_TRUE(n.Run().empty()) << "the first safe verdict stands without a delay";
  n.Sky(Night::Overcast);
  std::size_t from = n.CommandCount();
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));
  EXPECT_TRUE(n.s.Value_Unsafe);

  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "SAFE condition delayed by 60 s"}));
  EXPECT_EQ(n.nm.display.SafeDelayMsg.Caption, "SAFE condition delayed by 60 s");
  for (int left = 50; left >= 10; left -= 10) {
    EXPECT_EQ(n.Run(), (Lines{"SAFE condition delayed by " + std::to_string(left) + " s"}));
    EXPECT_EQ(std::tuple(n.s.SafeDelayWait, n.s.Value_Unsafe), std::tuple(left, true));
  }
  EXPECT_EQ(n.Run(), (Lines{"Setting SAFE after delay"}));
  EXPECT_EQ(std::tuple(n.s.Value_Unsafe, n.s.SafeDelayWait, n.nm.display.SafeDelayMsg.Caption),
            std::tuple(false, 0, ""));
  // The relay followed every evaluated cycle, and the box said so.
  EXPECT_EQ(n.RelayCommandsSince(from), "HHHHHHHG");
  EXPECT_TRUE(n.Run(2).empty());
  EXPECT_EQ(n.nm.display.LblSwitch.Caption, "Opened");

  // One unsafe cycle in the hold starts the whole delay again.
  n.Sky(Night::Overcast);
  n.Run();
  n.Sky(Night::Clear);
  n.Run(3);
  n.Sky(Night::Overcast);
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed"}));
  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "SAFE condition delayed by 60 s"}));

  // The hold rounds half to even.
  for (const auto& [delay, wait] : {std::pair{2.5, 2}, std::pair{3.5, 4}, std::pair{60.4, 60}}) {
    n.nm.config.SafeDelayVal = delay;
    n.s.NBX_CloudCondition = 3;
    EvaluateSafety(n.nm);
    n.s.NBX_CloudCondition = 1;
    EvaluateSafety(n.nm);
    EXPECT_EQ(n.s.SafeDelayWait, wait) << delay;
  }
}

TEST(SafetyVerdict, CloudyCountsOnlyAfterTheCloudDelayOnTheWayUpFromClear) {
  Night n;
  n.nm.config.CheckCloud = {0, 1, 1};
  n.nm.config.CloudAlarmDelay = 120;
  n.Sky(Night::Cloudy);  // Cloudy at Start counts at once
  EXPECT_EQ(n.Start(), (Lines{"Detected unsafe by clouds", "Just started, setting UNSAFE"}));
  n.Sky(Night::Clear);
  EXPECT_EQ(n.Run(), (Lines{"Safety condition changed", "Setting SAFE"}));

  n.Sky(Night::Cloudy);
  for (int cycle = 0; cycle < 12; ++cycle) {
    EXPECT_EQ(n.Run(), (Lines{"Clouds detected but delayed as configured"})) << cycle;
    EXPECT_FALSE(n.s.Value_Unsafe);
  }
  EXPECT_EQ(n.nm.display.StatusBar.Caption, "Cloud Alarm Delay 120s");
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));

  n.Sky(Night::Overcast);  // down from Overcast to Cloudy: no pause, then or later
  n.Run();
  n.Sky(Night::Cloudy);
  for (int cycle = 0; cycle < 3; ++cycle) EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds"})) << cycle;
}

TEST(SafetyVerdict, UnknownCountsAsUnsafeForCloudRainAndDayOnlyWhenConfigured) {
  const Lines unsafeLines{
      "Detected unsafe by unknown from IR sensor", "Detected unsafe by unknown from rain sensor",
      "Detected unsafe by unknown from light sensor", "Safety condition changed", "Setting UNSAFE"};
  for (const int unknownUnsafe : {0, 1}) {
    SCOPED_TRACE(unknownUnsafe);
    Night n;
    n.nm.config.UnKnownUnsafe = unknownUnsafe;
    n.Start();
    n.s.NBX_CloudCondition = n.s.NBX_RainCondition = n.s.NBX_DayCondition = 0;
    n.s.NBX_WindCondition = n.s.NBX_HumidityCondition = n.s.NBX_PressureCondition = 0;
    EXPECT_EQ(n.LinesOf([&] { EvaluateSafety(n.nm); }), unknownUnsafe ? unsafeLines : Lines{});
    EXPECT_EQ(n.s.Value_Unsafe, unknownUnsafe == 1);
    // Wind, humidity and pressure have no box for Unknown: safe.
    EXPECT_EQ(std::tuple(n.s.NBX_CloudSafe, n.s.NBX_RainSafe, n.s.NBX_DaySafe, n.s.NBX_WindSafe,
                         n.s.NBX_HumiditySafe, n.s.NBX_PressureSafe),
              std::tuple(0, 0, 0, 1, 1, 1));
  }
}

TEST(SafetyVerdict, WhileAClientHoldsControlNoFlagAndNoRelayCommandMoves) {
  Night n;
  n.Start();
  HasControl(n.nm, true, "Meteodesk has control");
  const std::size_t from = n.CommandCount();
  n.Sky(Night::Overcast);
  EXPECT_TRUE(n.Run(3).empty());
  EXPECT_EQ(n.s.NBX_CloudSafe, 1);
  n.s.Value_Unsafe = true;  // the client's verdict is shown, nothing else
  n.Run();
  EXPECT_EQ(n.nm.display.LblStatus.Caption, "Unsafe");
  EXPECT_TRUE(n.RelayCommandsSince(from).empty() && n.scripts.started.empty());

  HasControl(n.nm, false, "");
  EXPECT_EQ(n.Run(), (Lines{"Detected unsafe by clouds", "Safety condition changed"}));
  EXPECT_EQ(n.RelayCommandsSince(from), "H");
}

TEST(SafetyVerdict, ADisabledRelayOrARemoteSendsNothing) {
  Night n;
  n.nm.config.SWRole = {false, true};
  const std::size_t start = n.CommandCount();
  n.Start();
  n.Sky(Night::Overcast);
  n.Run(2);
  SetSwitch(n.nm, 2);
  EXPECT_EQ(std::tuple(n.RelayCommandsSince(start), n.st.box.readings.relay), std::tuple("", 1));
  n.nm.config.SWRole = {true, false};
  n.nm.config.NMRole = {false, true};
  n.s.Value_Switch = 2;  // as the master's file says
  n.s.Value_Unsafe = false;
  RelayStep(n.nm);
  EXPECT_EQ(std::tuple(n.s.Value_Switch, n.RelayCommandsSince(start)), std::tuple(2, ""));
}

}  // namespace
}  // namespace nbx
