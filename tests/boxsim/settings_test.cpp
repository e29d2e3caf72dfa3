#include <gtest/gtest.h>

#include "boxsim/assignments.h"
#include "boxsim/box.h"
#include "boxsim/command_line.h"
#include "boxsim/script.h"
#include "reply_frames.h"

namespace nbx::boxsim {
namespace {

std::string SkyData(Box& box, double nowSeconds) {
  return DataOf(FramesOf(box.Receive("S!", nowSeconds))[0]);
}

// Everything a copy of the box answers, faults and all.
std::string Says(Box box) { return box.Receive("B!K!v!h!t!p!S!T!C!E!V!Q!D!F!"); }

TEST(BoxSettings, AssignmentsTakeGoodValuesAndRefuseTheRest) {
  Box box;
  EXPECT_TRUE(box.Apply("sky=-20.5"));
  EXPECT_EQ(box.readings.skyIR, -2050);
  EXPECT_TRUE(box.Apply("relay=2"));
  EXPECT_TRUE(box.Apply("windfitted=0"));
  EXPECT_FALSE(box.readings.windFitted);
  EXPECT_TRUE(box.Apply("garbagebefore=\\x11\\s!"));
  EXPECT_EQ(box.faults.garbageBefore, "\x11 !");
  EXPECT_TRUE(box.Apply("humidityformat=old"));
  EXPECT_EQ(box.readings.newHumidityFormat, false);

  std::string why;
  for (const char* refused :
       {"nosuch=1", "sky=abc", "sky=", "sky=1e999", "relay=3", "windfitted=2", "heater=1024", "vref=0",
        "ambient=-300", "garbagebefore=\\x1", "baud=-1", "wind"}) {
    const std::string before = Says(box);
    EXPECT_FALSE(box.Apply(refused, why)) << refused;
    EXPECT_FALSE(why.empty()) << refused;
    EXPECT_EQ(Says(box), before) << refused;
  }

  EXPECT_FALSE(ApplyAll("wind=20 bogus=1", box, why));
  EXPECT_EQ(box.readings.windKmh, 7);
  EXPECT_NE(why.find("bogus"), std::string::npos);
  EXPECT_TRUE(ApplyAll(" wind=20\tpressure=990 ", box, why));
  EXPECT_EQ(box.readings.windKmh, 20);
  EXPECT_EQ(box.readings.pressureHpa, 990);
}

TEST(BoxSettings, ScriptStepsApplyOnceTheirTimeHasComeAndFilesAreTakenWhole) {
  Box box;
  box.AddScriptStep(10, "sky=-25");
  box.AddScriptStep(5, "skyraw=-900");
  box.AddScriptStep(10, "sky=-30");  // same time: the later one wins
  box.AddScriptStep(7, "nosuch=1");  // skipped, the rest still run
  EXPECT_EQ(SkyData(box, 4.9), "-1500");
  EXPECT_EQ(SkyData(box, 5), "-900");
  EXPECT_EQ(SkyData(box, 9.99), "-900");
  EXPECT_EQ(SkyData(box, 10), "-3000");
  EXPECT_EQ(box.PendingScriptSteps(), 0u);

  // A script file is taken whole or not at all.
  box = Box();
  std::string why;
  EXPECT_TRUE(
      LoadScript("# a cloudy night\n"
                 "at 0 sky=-25   # clear\r\n"
                 "\n"
                 "at 2.5 sky=-5 rain=2000 garbagebefore=a#b\n",
                 box, why))
      << why;
  EXPECT_EQ(box.PendingScriptSteps(), 4u);
  box.AdvanceTo(3);
  EXPECT_EQ(box.readings.skyIR, -500);
  EXPECT_EQ(box.readings.rainFrequency, 2000);
  EXPECT_EQ(box.faults.garbageBefore, "a#b");

  Box other;
  for (const char* bad : {"at 1 sky=-5\nat x sky=1\n", "at 1 sky=-5\nat 2\n", "at 1 sky=-5\nsky=1\n",
                          "at 1 sky=-5\nat 2 nosuch=1\n"}) {
    EXPECT_FALSE(LoadScript(bad, other, why)) << bad;
    EXPECT_NE(why.find("line 2"), std::string::npos) << why;
    EXPECT_EQ(other.PendingScriptSteps(), 0u) << bad;
  }
}

TEST(BoxSettings, CommandLineSetsTheBoxAndThePaths) {
  Box box;
  ProgramOptions options;
  std::string why;
  ASSERT_TRUE(ParseCommandLine({"--firmware", "5.82", "--serial=0042", "--link", "/tmp/l", "--baud", "9600",
                                "--byte-by-byte", "--log=/tmp/log", "wind=12"},
                               options, box, why))
      << why;
  EXPECT_EQ(box.readings.firmware, "5.82");
  EXPECT_EQ(box.readings.serial, "0042");
  EXPECT_EQ(box.delivery.baud, 9600);
  EXPECT_TRUE(box.delivery.byteByByte);
  EXPECT_EQ(box.readings.windKmh, 12);
  EXPECT_EQ(options.linkPath, "/tmp/l");
  EXPECT_EQ(options.logPath, "/tmp/log");

  for (const std::vector<std::string>& bad :
       {std::vector<std::string>{"--link"}, {"--frobnicate"}, {"wind=x"}, {"--baud", "fast"}}) {
    EXPECT_FALSE(ParseCommandLine(bad, options, box, why)) << bad[0];
  }
}

}  // namespace
}  // namespace nbx::boxsim
