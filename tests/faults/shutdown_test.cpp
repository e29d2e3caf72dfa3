#include <gtest/gtest.h>

#include <csignal>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

TEST(Shutdown, SigtermInTheMiddleOfACycleRestsTheHeaterSavesTheSettingsAndEndsTheLine) {
  TempDir dir;
  BoxProgram box(dir, {"--baud", "9600", "serial=4711"});
  ASSERT_TRUE(box.ready);
  StationProgram station(
      dir, MasterSettings(box.link, dir.File("out"), {{"Communication", {{"RefreshPeriod", "2"}}}}));
  std::string line;
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(station.NextCycle(line)) << "cycle " << i;

  // The samples of a cycle are on the wire when the signal comes.
  const std::size_t before = box.Commands().size();
  ASSERT_TRUE(box.WaitForCommand("C", before, 5s));
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);

  // The heater's resting command is the last the box hears.
  EXPECT_TRUE(box.WaitForCommand("P0102", before, 3s));
  const std::vector<std::string> commands = box.Commands();
  ASSERT_FALSE(commands.empty());
  EXPECT_EQ(commands.back(), "P0102");

  // The settings were written back: the serial the box told in this run is there.
  const std::string ini = ReadFile(station.settings);
  EXPECT_NE(ini.find("SerialNo=4711"), std::string::npos) << ini;
  EXPECT_NE(ini.find("PortName=" + box.link), std::string::npos);

  // The data file ends with a whole line, and has one for each cycle.
  while (station.NextCycle(line, 200ms)) {
  }
  const DataFile csv = ReadDataFile(dir.File("out/night.csv"));
  EXPECT_TRUE(csv.whole) << csv.lastLine;
  EXPECT_GE(csv.dataLines, station.cycles - 1);
  EXPECT_EQ(csv.headers, 1);
}

}  // namespace
}  // namespace nbx::test
