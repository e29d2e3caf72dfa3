#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

// A station on the box's port with a short period and time-out, its files in `dir`.
IniSections SettingsOn(const TempDir& dir, const BoxProgram& box) {
  return LinkSettings(box.link, {{"COMMFile", {{"NetFilePath", dir.path()}, {"PathNameCCDAP4", dir.path()}}}});
}

TEST(HeadlessStation, ReadsTheBoxOverAPseudoTerminalCycleAfterCycle) {
  TempDir dir;
  BoxProgram box(dir, {"skyraw=-1852", "rain=3123", "zener=520", "humiditytemp=7.5"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, SettingsOn(dir, box));

  std::string line;
  // The first cycle asks who the box is; the next ones carry its values.
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(station.NextCycle(line)) << "cycle " << i;
  EXPECT_FALSE(LinkDown(line)) << line;
  // -18.52 corrected for 7.5 degrees: -(0.33 x 7.5 + 0.04 x exp(0.75)).
  EXPECT_DOUBLE_EQ(Number(line, "sky"), -21.1) << line;
  EXPECT_DOUBLE_EQ(Number(line, "rain"), 3123) << line;
  EXPECT_DOUBLE_EQ(Number(line, "vref"), 5.00) << line;
  EXPECT_NEAR(Number(line, "ambient"), 7.5, 0.051) << line;
  EXPECT_DOUBLE_EQ(Number(line, "errors"), 0) << line;

  // The box's values change while it runs.
  ASSERT_TRUE(box.Tell("rain=2500"));
  EXPECT_TRUE(station.CycleWhere([](const std::string& l) { return Number(l, "rain") == 2500; }, 4, line))
      << line;

  // SIGTERM: the Stop action runs, the heater's resting command leaves, exit 0.
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
  const std::vector<std::string> commands = box.Commands();
  EXPECT_NE(std::find(commands.begin(), commands.end(), "P0102"), commands.end()) << ReadFile(box.log);
}

}  // namespace
}  // namespace nbx::test
