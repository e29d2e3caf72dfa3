#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <functional>
#include <memory>
#include <sstream>
#include <thread>

#include "support/station_programs.h"
#include "support/wave_file.h"

namespace nbx::test {
namespace {

using Lines = std::vector<std::string>;

// One finished cycle of the headless station: the log lines the verdict
// wrote, then the cycle's summary line.
struct Cycle {
  Lines log;
  std::string summary;
  bool Unsafe() const { return IsUnsafe(summary); }
  bool Has(const std::string& text) const { return summary.find(text) != std::string::npos; }
};

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

class SafetyNight : public ::testing::Test {
 protected:
  SafetyNight() : scripts(dir.File("roof scripts")), changes(dir.File("changes.log")) {
    std::filesystem::create_directory(scripts);
    WriteScript(scripts + "/close roof.sh", "echo unsafe >> '" + changes + "'\n");
    WriteScript(scripts + "/open roof.sh", "echo safe >> '" + changes + "'\n");
    WriteSilentWave(dir.File("alarm.wav"), 0.1);
  }

  void StartStation() {
    // Where the machine can play sound, the sound server's client library
    // keeps memory to the end; under the leak checker that is not ours.
    WriteFile(dir.File("leaks.supp"), "leak:libpulse.so\n");
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
    station = std::make_unique<StationProgram>(dir, LinkSettings(box.link, night), "station",
                                               Lines{"LSAN_OPTIONS=suppressions=" + dir.File("leaks.supp")});
  }

  bool Next(Cycle& cycle) {
    cycle = {};
    const std::size_t seen = station->output.size();
    if (!station->NextCycle(cycle.summary)) return false;
    for (std::size_t i = seen; i < station->output.size(); ++i) {
      const std::string& line = station->output[i];
      // The start-up's own trace ("Sub main" ... and the version) is no verdict line.
      if (line.rfind("Sub main", 0) != 0 && line.rfind("NBX_Nimbometer (v", 0) != 0) cycle.log.push_back(line);
    }
    return true;
  }

  // Reads cycles until one satisfies `done`, at most `most` of them.
  bool Until(Cycle& cycle, const std::function<bool(const Cycle&)>& done, int most = 6) {
    for (int i = 0; i < most; ++i) {
      if (!Next(cycle)) return false;
      if (done(cycle)) return true;
    }
    return false;
  }

  // The clouds come: unsafe at once, the roof closes, the box reports its relay closed.
  void CloudsCome() {
    ASSERT_TRUE(box.Tell("skyraw=500"));
    Cycle c;
    ASSERT_TRUE(Until(c, [](const Cycle& k) { return k.Unsafe(); })) << c.summary;
    EXPECT_EQ(c.log, (Lines{"Detected unsafe by clouds", "Safety condition changed", "Setting UNSAFE"}));
    ASSERT_TRUE(Until(c, [](const Cycle& k) { return k.Has("relay Closed"); }, 3)) << c.summary;
    EXPECT_TRUE(c.Unsafe());
    EXPECT_EQ(c.log, (Lines{"Detected unsafe by clouds"}));
  }

  // The clouds go: held unsafe for the two seconds of the delay, then safe.
  void CloudsGo() {
    ASSERT_TRUE(box.Tell("skyraw=-1500"));
    Cycle c;
    auto changed = [](const Cycle& k) { return !k.log.empty() && k.log[0] == "Safety condition changed"; };
    ASSERT_TRUE(Until(c, changed)) << c.summary;
    EXPECT_EQ(c.log, (Lines{"Safety condition changed", "SAFE condition delayed by 2 s"}));
    EXPECT_TRUE(c.Unsafe());
    ASSERT_TRUE(Until(c, [](const Cycle& k) { return !k.Unsafe(); })) << c.summary;
    EXPECT_EQ(c.log, (Lines{"Setting SAFE after delay"}));
    ASSERT_TRUE(Until(c, [](const Cycle& k) { return k.Has("relay Opened"); }, 3)) << c.summary;
    EXPECT_TRUE(c.log.empty());
  }

  TempDir dir;
  std::string scripts, changes;
  BoxProgram box{dir, {"skyraw=-1500", "rain=3300"}};
  std::unique_ptr<StationProgram> station;
};

TEST_F(SafetyNight, CloudsComeAndGoAndTheRelayAndScriptsFollow) {
  ASSERT_TRUE(box.ready);
  StartStation();
  Cycle first;
  ASSERT_TRUE(Next(first));
  EXPECT_EQ(first.log, (Lines{"Just started, setting SAFE"}));
  EXPECT_FALSE(first.Unsafe()) << first.summary;

  CloudsCome();
  CloudsGo();
  CloudsCome();
  CloudsGo();

  // Each script ran once per change of the verdict, the first verdict included.
  const Lines expected{"safe", "unsafe", "safe", "unsafe", "safe"};
  for (int i = 0; i < 100 && FileLines(changes).size() < expected.size(); ++i)
    std::this_thread::sleep_for(50ms);
  Cycle more;
  ASSERT_TRUE(Next(more) && Next(more));
  EXPECT_EQ(FileLines(changes), expected);

  const Lines commands = box.Commands();
  EXPECT_NE(std::find(commands.begin(), commands.end(), "H"), commands.end());
  EXPECT_NE(std::find(commands.begin(), commands.end(), "G"), commands.end());

  station->process.Signal(SIGTERM);
  EXPECT_EQ(station->process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx::test
