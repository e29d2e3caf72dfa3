#include <gtest/gtest.h>

#include "boxsim/box.h"
#include "reply_frames.h"

namespace nbx::boxsim {
namespace {

// Silence and every other reply go by the number of the command since the
// box started, forgotten commands too.
TEST(BoxFaults, SilenceAndEveryOtherReplyGoByTheCommandsNumber) {
  Box box;
  box.faults.silentFromCommand = 3;
  EXPECT_FALSE(box.Receive("z!").empty());
  EXPECT_FALSE(box.Receive("F!").empty());
  EXPECT_EQ(box.Receive("H!"), "");
  EXPECT_EQ(box.readings.relay, 1);  // a dead box does not act either
  box.ForgetCommands();
  EXPECT_TRUE(box.Commands().empty());
  EXPECT_EQ(box.CommandCount(), 3u);

  ASSERT_TRUE(box.Apply("silentfrom=0"));
  box.faults.answerEveryOther = true;
  EXPECT_EQ(box.Receive("H!"), "");  // the fourth: no reply, yet the relay closes
  EXPECT_EQ(box.readings.relay, 2);
  EXPECT_EQ(FramesOf(box.Receive("F!"))[0], "!X             ");
  box.faults.answerEveryOther = false;
  ASSERT_TRUE(box.Apply("silent=1"));
  EXPECT_EQ(box.faults.silentFromCommand, 6);
  EXPECT_EQ(box.Receive("S!"), "");
  EXPECT_EQ(box.Commands(), (std::vector<std::string>{"H", "F", "S"}));
}

TEST(BoxFaults, GarbageGoesBeforeTheReplyAndAfterItsFirstFrame) {
  Box clean;
  const std::string analog = clean.Receive("C!");
  const std::string end = clean.Receive("z!");

  Box box;
  box.faults.garbageBefore = "\x01x";
  box.faults.garbageBetween = "#!";
  EXPECT_EQ(box.Receive("C!"), "\x01x" + analog.substr(0, 15) + "#!" + analog.substr(15));
  EXPECT_EQ(box.Receive("z!"), "\x01x" + end + "#!");
}

TEST(BoxFaults, SentinelAndDamagedNumbersSpoilOnlySampleFrames) {
  Box box;
  box.faults.skySentinel = true;
  EXPECT_EQ(FramesOf(box.Receive("S!"))[0], "!1 10000       ");
  EXPECT_EQ(FramesOf(box.Receive("T!"))[0], "!2 10000       ");

  box.faults.skySentinel = false;
  box.faults.damagedNumbers = true;
  box.readings.skyIR = -1520;
  box.readings.rainFrequency = 3300;
  EXPECT_EQ(DataOf(FramesOf(box.Receive("S!"))[0]), "-15x0");
  EXPECT_EQ(DataOf(FramesOf(box.Receive("E!"))[0]), "33x0");
  for (const std::string& frame : FramesOf(box.Receive("C!"))) {
    if (frame[1] != '\x11') {
      EXPECT_NE(DataOf(frame).find('x'), std::string::npos) << frame;
    }
  }
  box.readings.heaterDuty = 512;
  EXPECT_EQ(DataOf(FramesOf(box.Receive("Q!"))[0]), "512");
  EXPECT_EQ(DataOf(FramesOf(box.Receive("B!"))[1]), "6.10");
}

}  // namespace
}  // namespace nbx::boxsim
