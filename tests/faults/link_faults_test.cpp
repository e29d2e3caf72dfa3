// The serial line at its worst, end to end: nbx-boxsim on a pseudo-terminal,
// the headless station as its own program, real files.

#include <gtest/gtest.h>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

bool GoodWithRain(const std::string& line, double rain) {
  return !LinkDown(line) && !IsUnsafe(line) && Number(line, "rain") == rain;
}

// Given up: the values are the fallback of a lost link, and Unknown makes it UNSAFE.
bool GivenUp(const std::string& line) { return IsUnsafe(line) && Number(line, "sky") == 999; }

// Stops the station and reads what it printed last; one data line is due
// for every summary line, but for a cycle cut short by the Stop.
void StopAndExpectALinePerCycle(StationProgram& station, const std::string& csv) {
  EXPECT_EQ(station.Stop(), 0);
  for (std::string line; station.NextCycle(line, 200ms);) {
  }
  const DataFile file = ReadDataFile(csv);
  EXPECT_TRUE(file.whole) << file.lastLine;
  EXPECT_EQ(file.headers, 1);
  EXPECT_GE(file.dataLines, station.cycles - 1);
  EXPECT_LE(file.dataLines, station.cycles);
}

// The same run ends with SIGTERM in the middle of a cycle.
TEST(LinkFaults, AnAdapterPulledOutMidCycleComesBackUnderTheSamePath) {
  TempDir dir;
  // At 9600 baud a cycle lasts about a second: long enough to be cut.
  BoxProgram box(dir, {"--baud", "9600", "rain=3300", "serial=4711"});
  ASSERT_TRUE(box.ready);
  StationProgram station(
      dir, MasterSettings(box.link, dir.File("out"), {{"Communication", {{"RefreshPeriod", "2"}}}}));
  std::string line;
  ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return GoodWithRain(l, 3300); }, 4, line))
      << line;

  ASSERT_TRUE(box.WaitForCommand("S", box.Commands().size(), 5s));
  ASSERT_TRUE(box.Tell("vanish"));
  EXPECT_TRUE(station.CycleWhere(LinkDown, 4, line)) << line;
  EXPECT_TRUE(station.CycleWhere(GivenUp, 10, line)) << line;
  EXPECT_TRUE(station.process.Running());

  // Back under the same path: the station finds it on its own.
  ASSERT_TRUE(box.Tell("return"));
  ASSERT_TRUE(box.Tell("rain=3150"));
  EXPECT_TRUE(station.CycleWhere(
      [](const std::string& l) { return !LinkDown(l) && Number(l, "rain") == 3150; }, 10, line))
      << line;
  EXPECT_FALSE(IsUnsafe(line)) << line;

  // The samples of a cycle are on the wire when the signal comes.
  const std::size_t before = box.Commands().size();
  ASSERT_TRUE(box.WaitForCommand("C", before, 5s));
  StopAndExpectALinePerCycle(station, dir.File("out/night.csv"));
  // The heater's resting command is the last the box hears.
  EXPECT_TRUE(box.WaitForCommand("P0102", before, 3s));
  EXPECT_EQ(box.Commands().back(), "P0102");
  // The settings were written back: the serial the box told in this run is there.
  const std::string ini = ReadFile(station.settings);
  EXPECT_NE(ini.find("SerialNo=4711"), std::string::npos) << ini;
  EXPECT_NE(ini.find("PortName=" + box.link), std::string::npos);
}

TEST(LinkFaults, ABoxWithTheWrongFirmwareIsAskedAgainAndReadAsItSays) {
  TempDir dir;
  BoxProgram box(dir, {"firmware=?.??", "rain=3300"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, MasterSettings(box.link, dir.File("out")));

  // An unreadable firmware: no cycle is ever a reading, the box is only
  // asked who it is, again and again, and the station keeps going.
  std::string line;
  EXPECT_FALSE(station.NextCycle(line, 4s)) << line;
  EXPECT_TRUE(station.process.Running());
  std::size_t asked = 0;
  for (const std::string& command : box.Commands()) {
    EXPECT_TRUE(command == "z" || command == "B" || command == "K") << command;
    asked += command == "B";
  }
  EXPECT_GE(asked, 3u);

  // A firmware too old for the optional sensors: it is read with the
  // commands it knows, never asked for what it does not have.
  const std::size_t before = box.Commands().size();
  ASSERT_TRUE(box.Tell("firmware=2.1"));
  EXPECT_TRUE(station.CycleWhere([](const std::string& l) { return !LinkDown(l); }, 4, line)) << line;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(station.NextCycle(line));
  const std::vector<std::string> commands = box.Commands();
  for (std::size_t i = before; i < commands.size(); ++i)
    EXPECT_TRUE(commands[i] != "v" && commands[i] != "h" && commands[i] != "t" && commands[i] != "p")
        << commands[i];
  EXPECT_EQ(Number(line, "rain"), 3300) << line;

  StopAndExpectALinePerCycle(station, dir.File("out/night.csv"));
}

TEST(LinkFaults, GarbageStormsPassAndTheReadingsComeBackWhole) {
  TempDir dir;
  BoxProgram box(dir, {"rain=3300", "skyraw=-1852"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, MasterSettings(box.link, dir.File("out")));
  std::string line;
  ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return GoodWithRain(l, 3300); }, 4, line))
      << line;
  const std::string sky = Field(line, "sky");

  // Line noise of every byte, frame starts among it, before and inside every reply.
  std::string storm;
  for (int i = 0; i < 160; ++i) {
    char hex[8];
    std::snprintf(hex, sizeof hex, "\\x%02X", (i * 97 + 13) % 256);
    storm += i % 7 == 0 ? "!" : hex;
  }
  ASSERT_TRUE(box.Tell("garbagebefore=" + storm + " garbagebetween=!x\\x00\\xFF\\x11!1"));
  for (int i = 0; i < 6; ++i) ASSERT_TRUE(station.NextCycle(line)) << "cycle " << i << " under the storm";
  EXPECT_TRUE(station.process.Running());

  ASSERT_TRUE(box.Tell("garbagebefore= garbagebetween="));
  EXPECT_TRUE(station.CycleWhere(
      [&](const std::string& l) { return GoodWithRain(l, 3300) && Field(l, "sky") == sky; }, 10, line))
      << line;
  EXPECT_EQ(ReadFile(dir.File("out/NBX_SLD.dat")).size(), 104u);
  StopAndExpectALinePerCycle(station, dir.File("out/night.csv"));
}

}  // namespace
}  // namespace nbx::test
