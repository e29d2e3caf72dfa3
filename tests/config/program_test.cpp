#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

#include "key_list.h"
#include "plain_ini.h"
#include "support/station_programs.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::ChildProcess;
using test::TempDir;

// A program run with its standard error joined to its standard output.
std::vector<std::string> Joined(const std::string& program, std::vector<std::string> arguments) {
  std::vector<std::string> shell{"-c", "exec \"$0\" \"$@\" 2>&1", program};
  shell.insert(shell.end(), arguments.begin(), arguments.end());
  return shell;
}

// nimbometer --headless in a home of its own, so that its per-user store and
// documents folder are the test's.
struct Station {
  Station(const TempDir& home, std::vector<std::string> arguments,
          std::vector<std::string> environment = {}, const std::string& program = NBX_NIMBOMETER_PATH)
      : process("/bin/sh", Joined(program, Headless(std::move(arguments))),
                With(home, std::move(environment))) {}
  static std::vector<std::string> Headless(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "--headless");
    return arguments;
  }
  static std::vector<std::string> With(const TempDir& home, std::vector<std::string> environment) {
    environment.push_back("HOME=" + home.path());
    environment.push_back("XDG_CONFIG_HOME=" + home.File("config"));
    // The offscreen platform wants a runtime folder, and warns without one.
    environment.push_back("XDG_RUNTIME_DIR=" + home.path());
    return environment;
  }
  // Reads lines until one holds `text`; every line read is kept in `output`.
  bool WaitFor(const std::string& text, std::chrono::milliseconds timeout = 10s) {
    std::string line;
    while (process.ReadLine(line, timeout)) {
      output.push_back(line);
      if (line.find(text) != std::string::npos) return true;
    }
    return false;
  }
  // SIGTERM, then the exit code.
  int Terminate() {
    process.Signal(SIGTERM);
    return process.Wait(10s);
  }
  ChildProcess process;
  std::vector<std::string> output;
};

void ExpectEveryWrittenKey(const test::IniFile& ini) {
  for (const auto& [section, key] : test::ReferenceKeys().written) {
    if (key == "Left" || key == "Top") continue;  // no window, no place
    EXPECT_TRUE(ini.count(section) && ini.at(section).count(key)) << section << "/" << key;
  }
}

std::string Value(const test::IniFile& ini, const std::string& section, const std::string& key) {
  return ini.count(section) && ini.at(section).count(key) ? ini.at(section).at(key) : "<absent>";
}

TEST(HeadlessProgram, RunsOnTheStoredSettingsAndWritesEveryKeyAtExit) {
  TempDir dir;
  test::BoxProgram box(dir, {"humiditytemp=10"});
  ASSERT_TRUE(box.ready);
  const std::string ini = dir.File("station.ini");
  test::WriteFile(ini, "[Communication]\nPortName=" + box.link +
                           "\nRefreshPeriod=1\nTimeout=1\n[Electrical]\nStats_Universe=2\n"
                           "[Window]\nUnitsTemp0=False\nUnitsTemp=True\nLeft=33\n"
                           "[Limit]\nClear=-20\n[Other]\nkeep=me\n");
  Station station(dir, {"--settings", ini});
  for (int cycle = 0; cycle < 3; ++cycle) ASSERT_TRUE(station.WaitFor(" sky ")) << cycle;
  EXPECT_NE(station.output.back().find("ambient 50.0 \u00B0F"), std::string::npos)
      << station.output.back();
  ASSERT_EQ(station.Terminate(), 0);

  // A full cycle of the box's log: two sample passes between two "v".
  const std::vector<std::string> commands = box.Commands();
  const auto first = std::find(commands.begin(), commands.end(), "v");
  ASSERT_NE(first, commands.end());
  const auto next = std::find(first + 1, commands.end(), "v");
  EXPECT_EQ(std::count(first, next, "S"), 2);

  const test::IniFile saved = test::ParseIni(test::ReadFile(ini));
  ExpectEveryWrittenKey(saved);
  EXPECT_EQ(Value(saved, "Communication", "PortName"), box.link);
  EXPECT_EQ(Value(saved, "Window", "UnitsTemp"), "True");
  EXPECT_EQ(Value(saved, "Window", "Left"), "33");
  EXPECT_EQ(Value(saved, "Limit", "Clear"), "-20");
  EXPECT_EQ(Value(saved, "Electrical", "Stats_Universe"), "2");
  EXPECT_EQ(Value(saved, "Other", "keep"), "me");
  for (const std::string& out : station.output)
    EXPECT_EQ(out.find("FreeImage.dll"), std::string::npos) << out;
}

// One station per settings store: the per-user store here.
TEST(HeadlessProgram, ASecondStartOnTheSameStoreEndsAtOnce) {
  TempDir dir;
  const std::string perUser = dir.File("config/NBX_Nimbometer/NBX_Nimbometer.ini");
  fs::create_directories(fs::path(perUser).parent_path());
  test::WriteFile(perUser, "[Communication]\nPortName=/nonexistent/tty\nRefreshPeriod=1\n");
  Station first(dir, {});
  ASSERT_TRUE(first.WaitFor("Sub main4"));

  Station second(dir, {});
  EXPECT_EQ(second.process.Wait(10s), 0);
  second.WaitFor("<end of output>", 1s);
  EXPECT_EQ(second.output, (std::vector<std::string>{"Sub main", "NBX_Nimbometer (v7.00.000)",
                                                     "Sub main2"}));

  Station other(dir, {"--settings", dir.File("other.ini")});
  EXPECT_TRUE(other.WaitFor("Sub main4"));
  EXPECT_EQ(other.Terminate(), 0);

  EXPECT_EQ(first.Terminate(), 0);
  const test::IniFile saved = test::ParseIni(test::ReadFile(perUser));
  ExpectEveryWrittenKey(saved);
  EXPECT_EQ(Value(saved, "Communication", "PortName"), "/nonexistent/tty");
  EXPECT_EQ(Value(saved, "COMMFile", "NetFilePath"), dir.File("Documents"));
}

TEST(HeadlessProgram, ThePortOfTheSimulatedBoxIsNotSaved) {
  TempDir dir;
  const std::string ini = dir.File("station.ini");
  test::WriteFile(ini, "[Communication]\nPortName=/dev/ttyKEEP\nRefreshPeriod=1\n");
  Station station(dir, {"--simulate", "--settings", ini});
  ASSERT_TRUE(station.WaitFor(" sky "));
  ASSERT_EQ(station.Terminate(), 0);
  EXPECT_EQ(Value(test::ParseIni(test::ReadFile(ini)), "Communication", "PortName"), "/dev/ttyKEEP");
}

// The program in a folder of its own: the updater left there is swapped in,
// and without the image library the message names that folder.
TEST(HeadlessProgram, InItsOwnFolderSwapsTheUpdaterAndReportsAMissingImageLibrary) {
  TempDir dir;
  const std::string folder = dir.File("program");
  fs::create_directories(folder);
  const std::string program = folder + "/nimbometer";
  fs::copy_file(NBX_NIMBOMETER_PATH, program);
  fs::permissions(program, fs::perms::owner_all);
  test::WriteFile(folder + "/NBX_Updater_net.exe", "new");
  test::WriteFile(folder + "/NBX_Updater.exe", "current");
  test::WriteFile(dir.File("station.ini"), "[Communication]\nPortName=/nonexistent/tty\n");

  Station station(dir, {"--settings", dir.File("station.ini")},
                  {"NBX_FREEIMAGE_LIBRARY=/nonexistent/libfreeimage.so"}, program);
  ASSERT_TRUE(station.WaitFor("Sub main4"));
  ASSERT_TRUE(station.WaitFor("FreeImage.dll"));
  EXPECT_EQ(station.output.back(),
            "NBX_Nimbometer (v7.00.000): FreeImage.dll file must be present in directory\r");
  ASSERT_TRUE(station.WaitFor(folder));
  EXPECT_EQ(station.output.back(), folder);
  EXPECT_TRUE(station.process.Running());  // the program goes on
  EXPECT_EQ(station.Terminate(), 0);

  EXPECT_EQ(test::ReadFile(folder + "/NBX_Updater.exe"), "new");
  EXPECT_EQ(test::ReadFile(folder + "/NBX_Updater_exe.old"), "current");
  EXPECT_FALSE(fs::exists(folder + "/NBX_Updater_net.exe"));
}

}  // namespace
}  // namespace nbx
