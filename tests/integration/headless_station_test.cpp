#include <gtest/gtest.h>

#include <csignal>
#include <regex>

#include "support/child_process.h"

namespace nbx {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

// The simulated box as its own program on a pseudo-terminal, reached through
// a stable link path, logging every command it receives.
struct BoxProgram {
  explicit BoxProgram(const test::TempDir& dir, std::vector<std::string> assignments)
      : link(dir.File("ttyNBX")), log(dir.File("box.log")),
        process(NBX_BOXSIM_PATH, Arguments(link, log, std::move(assignments))) {
    std::string line;
    ready = process.ReadLine(line, 5s) && line.rfind("PTY ", 0) == 0;
  }
  static std::vector<std::string> Arguments(const std::string& link, const std::string& log,
                                            std::vector<std::string> assignments) {
    std::vector<std::string> args{"--link", link, "--log", log};
    args.insert(args.end(), assignments.begin(), assignments.end());
    return args;
  }
  std::string link, log;
  ChildProcess process;
  bool ready = false;
};

// A headless station on the box's port with a short period and time-out.
struct StationProgram {
  StationProgram(const test::TempDir& dir, const std::string& port)
      : settings(dir.File("station.ini")),
        process((WriteSettings(dir.File("station.ini"), port), NBX_NIMBOMETER_PATH),
                {"--headless", "--settings", dir.File("station.ini")},
                {"XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path()}) {}
  static void WriteSettings(const std::string& path, const std::string& port) {
    const std::string folder = path.substr(0, path.rfind('/'));
    test::WriteFile(path,
                    "[Communication]\nPortName=" + port +
                        "\nRefreshPeriod=1\nTimeout=1\n"
                        "[COMMFile]\nNetFilePath=" + folder + "\nPathNameCCDAP4=" + folder + "\n");
  }
  // The next summary line of a cycle, skipping other output.
  bool NextCycle(std::string& line, std::chrono::milliseconds timeout = 10s) {
    while (process.ReadLine(line, timeout))
      if (line.find(" sky ") != std::string::npos) return true;
    return false;
  }
  std::string settings;
  ChildProcess process;
};

double Field(const std::string& line, const std::string& name) {
  std::smatch m;
  const std::regex re(name + " (-?[0-9]+(\\.[0-9]+)?)");
  return std::regex_search(line, m, re) ? std::stod(m[1]) : -99999;
}

TEST(HeadlessStation, ReadsTheBoxOverAPseudoTerminalCycleAfterCycle) {
  test::TempDir dir;
  BoxProgram box(dir, {"skyraw=-1852", "rain=3123", "zener=520", "humiditytemp=7.5"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, box.link);

  std::string line;
  // The first cycle asks who the box is; the next ones carry its values.
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(station.NextCycle(line)) << "cycle " << i;
  EXPECT_EQ(line.find("LINK DOWN"), std::string::npos) << line;
  // -18.52 corrected for 7.5 degrees: -(0.33 x 7.5 + 0.04 x exp(0.75)).
  EXPECT_DOUBLE_EQ(Field(line, "sky"), -21.1) << line;
  EXPECT_DOUBLE_EQ(Field(line, "rain"), 3123) << line;
  EXPECT_DOUBLE_EQ(Field(line, "vref"), 5.00) << line;
  EXPECT_NEAR(Field(line, "ambient"), 7.5, 0.051) << line;
  EXPECT_DOUBLE_EQ(Field(line, "errors"), 0) << line;

  // The box's values change while it runs.
  box.process.WriteLine("rain=2500");
  bool seen = false;
  for (int i = 0; i < 4 && !seen && station.NextCycle(line); ++i) seen = Field(line, "rain") == 2500;
  EXPECT_TRUE(seen) << line;

  // SIGTERM: the Stop action runs, the heater's resting command leaves, exit 0.
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
  const std::string log = test::ReadFile(box.log);
  EXPECT_NE(log.rfind("P0102"), std::string::npos) << log;
}

TEST(HeadlessStation, APortThatVanishesIsReportedAndComesBack) {
  test::TempDir dir;
  BoxProgram box(dir, {"rain=3200"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, box.link);
  std::string line;
  for (int i = 0; i < 2; ++i) ASSERT_TRUE(station.NextCycle(line));

  box.process.WriteLine("vanish");
  bool down = false;
  for (int i = 0; i < 8 && !down && station.NextCycle(line); ++i)
    down = line.find("LINK DOWN") != std::string::npos;
  ASSERT_TRUE(down) << line;
  // After three failures the values are given up.
  bool givenUp = false;
  for (int i = 0; i < 10 && !givenUp && station.NextCycle(line); ++i) givenUp = Field(line, "sky") == 999;
  EXPECT_TRUE(givenUp) << line;
  EXPECT_TRUE(station.process.Running());

  box.process.WriteLine("return");
  bool back = false;
  for (int i = 0; i < 10 && !back && station.NextCycle(line); ++i)
    back = line.find("LINK DOWN") == std::string::npos && Field(line, "rain") == 3200;
  EXPECT_TRUE(back) << line;

  station.process.Signal(SIGINT);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx
