#include <gtest/gtest.h>

#include "boxsim/box.h"
#include "reply_frames.h"

namespace nbx::boxsim {
namespace {

using Frames = std::vector<std::string>;

// Every frame of the reply but the end-of-reply frame, which must close it;
// a reply that is not whole frames shows as a ragged last frame.
Frames Answer(Box& box, const std::string& command) {
  Frames frames = FramesOf(box.Receive(command + "!"));
  EXPECT_FALSE(frames.empty()) << command;
  if (frames.empty()) return frames;
  EXPECT_EQ(frames.back(), std::string("!\x11") + std::string(13, ' ')) << command;
  frames.pop_back();
  return frames;
}

TEST(BoxReplies, FramesCarryTypeSubTypeAndLeftAlignedData) {
  Box box;
  box.readings.serial = "0421";
  box.readings.skyIR = -1520;
  box.readings.errorCounters = {1, 2, 3, 40};
  EXPECT_EQ(Answer(box, "B"), (Frames{"!N NBX         ", "!V 6.10        "}));
  EXPECT_EQ(Answer(box, "K"), (Frames{"!K0421         "}));
  EXPECT_EQ(Answer(box, "v"), (Frames{"!v 1           "}));
  EXPECT_EQ(Answer(box, "S"), (Frames{"!1 -1520       "}));
  EXPECT_EQ(Answer(box, "C"),
            (Frames{"!3 512         ", "!4 40000       ", "!5 400         ", "!6 520         "}));
  EXPECT_EQ(Answer(box, "E"), (Frames{"!R 3300        "}));
  EXPECT_EQ(Answer(box, "D"),
            (Frames{"!E11           ", "!E22           ", "!E33           ", "!E440          "}));

  // New humidity words from firmware 6.00 on, with "h" as sub-type.
  EXPECT_EQ(Answer(box, "h"), (Frames{"!hh31982       "}));
  EXPECT_EQ(Answer(box, "t"), (Frames{"!th21949       "}));
  box.readings.firmware = "5.82";
  EXPECT_EQ(Answer(box, "h"), (Frames{"!h 48.8        "}));
  EXPECT_EQ(Answer(box, "t"), (Frames{"!t 33.4908     "}));
  box.readings.newHumidityFormat = true;
  EXPECT_EQ(Answer(box, "h"), (Frames{"!hh31982       "}));

  // Commands without data, unknown ones and a cut "P" get the end-of-reply alone.
  for (const char* onlyEnd : {"z", "G", "P0100", "Pabc", "x", ""})
    EXPECT_TRUE(Answer(box, onlyEnd).empty()) << onlyEnd;

  // Missing sensors answer with their marks.
  box.readings.firmware = "6.10";
  box.readings.newHumidityFormat.reset();
  box.readings.humidityFitted = false;
  box.readings.pressureFitted = false;
  box.readings.windFitted = false;
  box.readings.sqmFitted = true;
  EXPECT_EQ(Answer(box, "h"), (Frames{"!hh65535       "}));
  EXPECT_EQ(Answer(box, "t"), (Frames{"!th65535       "}));
  EXPECT_EQ(Answer(box, "p"), (Frames{"!p 65535       "}));
  EXPECT_EQ(Answer(box, "v"), (Frames{"!v 0           "}));
  EXPECT_TRUE(Answer(box, "V").empty());
  EXPECT_EQ(Answer(box, "C")[1], "!8 250000      ");
  box.readings.firmware = "3.1";
  EXPECT_EQ(Answer(box, "h"), (Frames{"!h 100         "}));
  EXPECT_EQ(Answer(box, "t"), (Frames{"!t 100         "}));
}

TEST(BoxReplies, RelayAndHeaterCommandsChangeWhatTheBoxReports) {
  Box box;
  EXPECT_EQ(Answer(box, "F"), (Frames{"!Y             "}));
  Answer(box, "H");
  EXPECT_EQ(Answer(box, "F"), (Frames{"!X             "}));
  Answer(box, "G");
  EXPECT_EQ(Answer(box, "F"), (Frames{"!Y             "}));

  Answer(box, "P0972");
  EXPECT_EQ(Answer(box, "Q"), (Frames{"!Q 972         "}));
  for (const char* refused : {"P1024", "P12x4", "P-001", "P00001"}) {
    Answer(box, refused);
    EXPECT_EQ(box.readings.heaterDuty, 972) << refused;
  }
}

TEST(BoxCommands, SplitAndBatchedCommandsAreAnsweredInOrder) {
  Box box;
  Box reference;
  const std::string sky = reference.Receive("S!");
  const std::string identity = reference.Receive("B!");

  EXPECT_EQ(box.Receive("S"), "");
  EXPECT_EQ(box.Receive("!B"), sky);
  EXPECT_EQ(box.Receive("!S!"), identity + sky);
  EXPECT_EQ(box.Receive("P09"), "");
  box.Receive("72!");
  EXPECT_EQ(box.readings.heaterDuty, 972);
  EXPECT_EQ(box.Commands(), (std::vector<std::string>{"S", "B", "S", "P0972"}));

  // A command cut off by a vanished line does not glue onto the next one.
  box.Receive("P01");
  box.DropPartialCommand();
  box.Receive("Q!");
  EXPECT_EQ(box.Commands().back(), "Q");
}

}  // namespace
}  // namespace nbx::boxsim
