#include <gtest/gtest.h>

#include <csignal>
#include <regex>

#include "support/child_process.h"

namespace nbx {
namespace {

using namespace std::chrono_literals;

double Field(const std::string& line, const std::string& name) {
  std::smatch m;
  const std::regex re(name + " (-?[0-9]+(\\.[0-9]+)?)");
  return std::regex_search(line, m, re) ? std::stod(m[1]) : -99999;
}

// The programs themselves over a pseudo-terminal: the simulated box with its
// rain plate model, and a headless station with the default sensor settings.
TEST(HeadlessSensorValues, SummaryShowsTheDerivedValuesAndTheHeaterReachesTheBox) {
  test::TempDir dir;
  const std::string link = dir.File("ttyNBX"), log = dir.File("box.log");
  test::ChildProcess box(NBX_BOXSIM_PATH,
                         {"--link", link, "--log", log, "skyraw=-1852", "humiditytemp=7.5", "humidity=55",
                          "pressure=1005", "wind=12", "platemodel=1", "plateair=7.5", "rainplate=7.5"});
  std::string line;
  ASSERT_TRUE(box.ReadLine(line, 5s) && line.rfind("PTY ", 0) == 0) << line;

  const std::string settings = dir.File("station.ini");
  test::WriteFile(settings, "[Communication]\nPortName=" + link + "\nRefreshPeriod=1\nTimeout=1\n");
  test::ChildProcess station(NBX_NIMBOMETER_PATH, {"--headless", "--settings", settings},
                             {"XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path()});
  // The first cycle asks who the box is; the heater acts at the end of the
  // next one and its duty is read back in the one after.
  int cycles = 0;
  while (cycles < 4 && station.ReadLine(line, 10s))
    if (line.find(" sky ") != std::string::npos) ++cycles;
  ASSERT_EQ(cycles, 4) << line;

  EXPECT_DOUBLE_EQ(Field(line, "sky"), -21.1) << line;  // -18.52 corrected for 7.5 degrees
  EXPECT_DOUBLE_EQ(Field(line, "dew"), -1.0) << line;   // 55 % at 7.5 degrees
  EXPECT_DOUBLE_EQ(Field(line, "pressure"), 1017.3) << line;  // 1005 hPa at 100 m
  // The first speeds are diluted by the zeros of Start; the gust is the speed.
  EXPECT_GT(Field(line, "wind"), 0) << line;
  EXPECT_LT(Field(line, "wind"), 12) << line;
  EXPECT_DOUBLE_EQ(Field(line, "gust"), 12) << line;
  // The plate at the air's 7.5 is 5.25 below its target: the duty went up by 0.2.
  EXPECT_DOUBLE_EQ(Field(line, "heater"), 20) << line;

  station.Signal(SIGTERM);
  EXPECT_EQ(station.Wait(10s), 0);
  const std::string commands = test::ReadFile(log);
  EXPECT_NE(commands.find("\nP0205\n"), std::string::npos) << commands;
  EXPECT_NE(commands.rfind("\nP0102\n"), std::string::npos) << commands;  // the resting duty at Stop
}

}  // namespace
}  // namespace nbx
