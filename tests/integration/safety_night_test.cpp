#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <sstream>
#include <thread>

#include "support/station_programs.h"
#include "support/wave_file.h"

namespace nbx::test {
namespace {

using Lines = std::vector<std::string>;

void WriteScript(const std::string& path, const std::string& body) {
  WriteFile(path, "#!/bin/sh\n" + body);
  std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

Lines FileLines(const std::string& path) {
  Lines lines;
  std::istringstream in(ReadFile(path));
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

// The verdict's rules (its log lines, the safe delay) are tested in-process;
// here the real program runs the roof scripts and drives the box's relay, with
// a sound that loops while the sky is overcast.
TEST(SafetyNight, CloudsComeAndGoAndTheRelayAndScriptsFollow) {
  TempDir dir;
  const std::string scripts = dir.File("roof scripts"), changes = dir.File("changes.log");
  std::filesystem::create_directory(scripts);
  WriteScript(scripts + "/close roof.sh", "echo unsafe >> '" + changes + "'\n");
  WriteScript(scripts + "/open roof.sh", "echo safe >> '" + changes + "'\n");
  WriteSilentWave(dir.File("alarm.wav"), 0.1);
  // Where the machine can play sound, the sound server's client library
  // keeps memory to the end; under the leak checker that is not ours.
  WriteFile(dir.File("leaks.supp"), "leak:libpulse.so\n");
  BoxProgram box{dir, {"skyraw=-1500", "rain=3300"}};
  ASSERT_TRUE(box.ready);
  const IniSections night{
      {"Window",
       {{"CloudTempFactor", "False"},
        {"SafeDelayVal", "2"},
        // The verdict must not hang on a sensor this night does not watch.
        {"UnknownUnsafe", "0"},
        {"ScriptFileUNSAFE", "\"CLOSE ROOF.sh\""},
        {"ScriptPathUNSAFE", "\"" + scripts + "\""},
        {"ScriptFileSAFE", "\"open roof.sh\""},
        {"ScriptPathSAFE", "\"" + scripts + "\""}}},
      {"AlarmCloud", {{"Overcast", "\"" + dir.File("alarm.wav") + "|repeat\""}, {"OvercastStat", "1"}}},
  };
  StationProgram station(dir, LinkSettings(box.link, night), "station",
                         Lines{"LSAN_OPTIONS=suppressions=" + dir.File("leaks.supp")});
  std::string line;
  ASSERT_TRUE(station.NextCycle(line));
  EXPECT_FALSE(IsUnsafe(line)) << line;
  const auto relay = [](const char* state) {
    return [state](const std::string& l) { return l.find(std::string("relay ") + state) != std::string::npos; };
  };
  for (int night = 0; night < 2; ++night) {
    ASSERT_TRUE(box.Tell("skyraw=500"));
    ASSERT_TRUE(station.CycleWhere(relay("Closed"), 8, line)) << line;
    EXPECT_TRUE(IsUnsafe(line)) << line;
    ASSERT_TRUE(box.Tell("skyraw=-1500"));
    ASSERT_TRUE(station.CycleWhere(relay("Opened"), 10, line)) << line;
    EXPECT_FALSE(IsUnsafe(line)) << line;
  }
  // Each script ran once per change of the verdict, the first verdict included.
  const Lines expected{"safe", "unsafe", "safe", "unsafe", "safe"};
  for (int i = 0; i < 100 && FileLines(changes).size() < expected.size(); ++i)
    std::this_thread::sleep_for(50ms);
  ASSERT_TRUE(station.NextCycle(line) && station.NextCycle(line));
  EXPECT_EQ(FileLines(changes), expected);
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx::test
