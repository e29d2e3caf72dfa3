#include <gtest/gtest.h>

#include <cmath>
#include <string_view>

#include "boxsim/assignments.h"
#include "boxsim/box.h"
#include "boxsim/command_line.h"
#include "boxsim/reply_pacer.h"
#include "boxsim/script.h"
#include "core/text.h"
#include "sensors/raw_conversions.h"

namespace nbx::boxsim {
namespace {

// A reply cut into its 15-byte frames; a ragged tail is kept as the last piece
// so that a test sees it.
std::vector<std::string> FramesOf(std::string_view reply) {
  std::vector<std::string> frames;
  for (std::size_t at = 0; at < reply.size(); at += 15) frames.emplace_back(reply.substr(at, 15));
  return frames;
}

// The data field of a frame, blanks trimmed.
std::string DataOf(std::string_view frame) {
  std::string data(frame.substr(3));
  while (!data.empty() && data.back() == ' ') data.pop_back();
  return data;
}

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
  const char* script = "# a cloudy night\nat 0 sky=-25   # clear\r\n\nat 2.5 sky=-5 rain=2000 garbagebefore=a#b\n";
  EXPECT_TRUE(LoadScript(script, box, why)) << why;
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
  ASSERT_TRUE(
      ParseCommandLine({"--serial=0042", "--baud", "9600", "--log=/tmp/log", "wind=12"}, options, box, why));
  EXPECT_EQ(box.readings.serial, "0042");
  EXPECT_EQ(box.delivery.baud, 9600);
  EXPECT_EQ(box.readings.windKmh, 12);
  EXPECT_EQ(options.logPath, "/tmp/log");
  for (const std::vector<std::string>& bad :
       {std::vector<std::string>{"--link"}, {"--frobnicate"}, {"wind=x"}, {"--baud", "fast"}}) {
    EXPECT_FALSE(ParseCommandLine(bad, options, box, why)) << bad[0];
  }
}

// The plate temperature the program reads from the "5" frame of a "C" reply at `nowSeconds`.
double PlateSeen(Box& box, double nowSeconds) {
  const std::string frame = FramesOf(box.Receive("C!", nowSeconds))[2];
  EXPECT_EQ(frame[1], '5');
  return ThermistorCelsius(ParseNumber(DataOf(frame)).value_or(-1), 1, 1, 3450);
}

TEST(RainPlate, ModelledItApproachesAirPlusHeatAtItsTimeConstantLessWhatWaterTakes) {
  // Air at 0, 20 degrees over it at full duty, a time constant of a minute.
  Box box;
  std::string why;
  ASSERT_TRUE(ApplyAll("platemodel=1 plateair=0 platerise=20 platetau=60 rainplate=0", box, why)) << why;
  box.Receive("P1023!", 0);
  // Whole counts, as the converter gives them, cost about a tenth of a degree.
  EXPECT_NEAR(PlateSeen(box, 60), 20 * (1 - std::exp(-1.0)), 0.1);
  EXPECT_NEAR(PlateSeen(box, 600), 20, 0.1);
  box.Receive("P0512!", 600);
  EXPECT_NEAR(PlateSeen(box, 1200), 10, 0.1);
  ApplyAll("platewet=1 platewetdrop=4", box, why);
  EXPECT_NEAR(PlateSeen(box, 1800), 6, 0.1);
  // The time before a "P" passed under the old duty: the new one acts from now on.
  box.Receive("P0000!", 2400);
  EXPECT_NEAR(PlateSeen(box, 2400), 6, 0.1);
  // A clock set back moves nothing; time constant 0 settles at once.
  EXPECT_NEAR(PlateSeen(box, 100), 6, 0.1);
  box.Apply("platetau=0");
  EXPECT_NEAR(PlateSeen(box, 101), -4, 0.1);

  // Off by default: the plate says what it is told, heater or not.
  Box plain;
  plain.Apply("rainplate=12");
  plain.Receive("P1023!", 0);
  EXPECT_NEAR(PlateSeen(plain, 3600), 12, 1e-3);
  for (const char* refused : {"platetau=-1", "platewet=2", "platemodel=yes", "platerise=x"})
    EXPECT_FALSE(plain.Apply(refused)) << refused;
  EXPECT_FALSE(plain.readings.plate.modelled);
}

TEST(ReplyPacer, BytesGoOutAsTheLineWouldCarryThem) {
  ReplyPacer pacer;
  pacer.Push("abc", 100, Delivery{1000, false});  // 10 bits a byte: 10 ms
  EXPECT_NEAR(pacer.NextDueSeconds().value_or(0), 100.01, 1e-9);
  EXPECT_TRUE(pacer.TakeDue(100.005).empty());
  EXPECT_EQ(pacer.TakeDue(100.0201), (Frames{"ab"}));

  // A reply pushed while one is still going follows it.
  pacer.Push("d", 100.021, Delivery{1000, false});
  EXPECT_EQ(pacer.TakeDue(100.0301), (Frames{"c"}));
  EXPECT_TRUE(pacer.TakeDue(100.035).empty());
  EXPECT_EQ(pacer.TakeDue(100.0401), (Frames{"d"}));
  EXPECT_TRUE(pacer.Empty());

  // Byte by byte: each byte alone; a fast line: all at once.
  pacer.Push("abc", 0, Delivery{0, true});
  EXPECT_EQ(pacer.TakeDue(1), (Frames{"a", "b", "c"}));
  pacer.Push("abc", 5, Delivery{0, true});
  EXPECT_EQ(pacer.TakeDue(5.0041), (Frames{"a", "b"}));

  pacer.Clear();
  pacer.Push("xyz", 6, Delivery{});
  EXPECT_EQ(pacer.TakeDue(6), (Frames{"xyz"}));

  // Bytes a full line did not take go out first next time.
  pacer.Push("tail", 7, Delivery{});
  pacer.PutBack("yz", 7.5);
  EXPECT_EQ(pacer.TakeDue(7.5), (Frames{"yztail"}));
}

}  // namespace
}  // namespace nbx::boxsim
