#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

// The programs themselves over a pseudo-terminal: the simulated box with its
// rain plate model, and a headless station with the default sensor settings.
TEST(HeadlessSensorValues, SummaryShowsTheDerivedValuesAndTheHeaterReachesTheBox) {
  TempDir dir;
  BoxProgram box(dir, {"humiditytemp=7.5", "humidity=55", "pressure=1005", "wind=12",
                       "platemodel=1", "plateair=7.5", "rainplate=7.5"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, LinkSettings(box.link));
  // The first cycle asks who the box is; the heater acts at the end of the
  // next one and its duty is read back in the one after.
  std::string line;
  for (int i = 0; i < 4; ++i) ASSERT_TRUE(station.NextCycle(line)) << "cycle " << i;

  EXPECT_DOUBLE_EQ(Number(line, "dew"), -1.0) << line;   // 55 % at 7.5 degrees
  EXPECT_DOUBLE_EQ(Number(line, "pressure"), 1017.3) << line;  // 1005 hPa at 100 m
  EXPECT_DOUBLE_EQ(Number(line, "gust"), 12) << line;
  // The plate at the air's 7.5 is 5.25 below its target: the duty went up by 0.2.
  EXPECT_EQ(Field(line, "heater"), "20%") << line;

  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
  const std::vector<std::string> commands = box.Commands();
  EXPECT_NE(std::find(commands.begin(), commands.end(), "P0205"), commands.end()) << ReadFile(box.log);
}

}  // namespace
}  // namespace nbx::test
