#include <gtest/gtest.h>

#include <QSettings>
#include <csignal>
#include <filesystem>

#include "config/program_start.h"
#include "key_list.h"
#include "support/child_process.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::TempDir;

// nimbometer --headless in a home of its own, so that its per-user store and
// documents folder are the test's; its standard error joined to its output.
struct Station {
  Station(const TempDir& home, std::vector<std::string> arguments,
          const std::string& program = NBX_NIMBOMETER_PATH, const std::string& variable = "NBX_TEST=1")
      : process("/bin/sh", Args(program, std::move(arguments)),
                // The offscreen platform wants a runtime folder, and warns without one.
                {variable, "HOME=" + home.path(), "XDG_CONFIG_HOME=" + home.File("config"),
                 "XDG_RUNTIME_DIR=" + home.path()}) {}
  static std::vector<std::string> Args(const std::string& program, std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"-c", "exec \"$0\" --headless \"$@\" 2>&1", program});
    return arguments;
  }
  // Reads lines until one holds `text`, keeping every line read in `output`.
  bool WaitFor(const std::string& text, std::chrono::milliseconds timeout = 10s) {
    for (std::string line; process.ReadLine(line, timeout);)
      if (output.push_back(line); line.find(text) != std::string::npos) return true;
    return false;
  }
  int Terminate() {
    process.Signal(SIGTERM);
    return process.Wait(10s);
  }
  test::ChildProcess process;
  std::vector<std::string> output;
};

std::string Value(const std::string& file, const std::string& section, const std::string& key) {
  return QSettings(QString::fromStdString(file), QSettings::IniFormat)
      .value(QString::fromStdString(section + "/" + key), "<absent>")
      .toString()
      .toStdString();
}

// One station per settings store: the per-user store here; at a clean exit
// every key is written to it, the window's place excepted. Started from a
// folder of its own, the program swaps in the updater left there, and without
// the image library the message names that folder.
TEST(HeadlessProgram, OneStationPerStoreEveryKeySavedAtExitAndItsOwnFolderLookedAt) {
  TempDir dir;
  const std::string perUser = dir.File("config/NBX_Nimbometer/NBX_Nimbometer.ini");
  fs::create_directories(fs::path(perUser).parent_path());
  test::WriteFile(perUser,
                  "[Communication]\nPortName=/nonexistent/tty\nRefreshPeriod=1\n[Window]\nLeft=33\n");
  const std::string folder = dir.File("program");
  fs::create_directories(folder);
  fs::copy_file(NBX_NIMBOMETER_PATH, folder + "/nimbometer");
  test::WriteFile(folder + "/NBX_Updater_net.exe", "new");
  test::WriteFile(folder + "/NBX_Updater.exe", "current");
  test::WriteFile(folder + "/nbx_updater_EXE.OLD", "older");

  Station first(dir, {}, folder + "/nimbometer", "NBX_FREEIMAGE_LIBRARY=/nonexistent/libfreeimage.so");
  ASSERT_TRUE(first.WaitFor("Sub main4"));
  ASSERT_TRUE(first.WaitFor("FreeImage.dll"));
  EXPECT_EQ(first.output.back(),
            "NBX_Nimbometer (v7.00.000): FreeImage.dll file must be present in directory\r");
  ASSERT_TRUE(first.WaitFor(folder));
  EXPECT_EQ(first.output.back(), folder);
  EXPECT_EQ(test::ReadFile(folder + "/NBX_Updater.exe"), "new");
  EXPECT_EQ(test::ReadFile(folder + "/NBX_Updater_exe.old"), "current");
  for (const char* gone : {"/NBX_Updater_net.exe", "/nbx_updater_EXE.OLD"}) EXPECT_FALSE(fs::exists(folder + gone));

  Station second(dir, {});
  EXPECT_EQ(second.process.Wait(10s), 0);
  second.WaitFor("<end of output>", 1s);
  EXPECT_EQ(second.output, (std::vector<std::string>{"Sub main", "NBX_Nimbometer (v7.00.000)", "Sub main2"}));

  // Another store runs beside it; the port of its simulated box is not saved,
  // and with the image library there no message about it.
  const std::string other = dir.File("other.ini");
  test::WriteFile(other, "[Communication]\nPortName=/dev/ttyKEEP\nRefreshPeriod=1\n");
  Station simulated(dir, {"--simulate", "--settings", other});
  ASSERT_TRUE(simulated.WaitFor(" sky "));
  EXPECT_EQ(simulated.Terminate(), 0);
  EXPECT_EQ(Value(other, "Communication", "PortName"), "/dev/ttyKEEP");
  for (const std::string& out : simulated.output)
    EXPECT_EQ(out.find("FreeImage.dll"), std::string::npos) << out;

  EXPECT_TRUE(first.process.Running());
  EXPECT_EQ(first.Terminate(), 0);
  for (const auto& [section, key] : test::ReferenceKeys().written)
    if (key != "Top") {
      EXPECT_NE(Value(perUser, section, key), "<absent>") << section << "/" << key;
    }
  EXPECT_EQ(Value(perUser, "Communication", "PortName"), "/nonexistent/tty");
  EXPECT_EQ(Value(perUser, "COMMFile", "NetFilePath"), dir.File("Documents"));
  EXPECT_EQ(Value(perUser, "Window", "Left"), "33");  // no window, its place as it was
}

// The program test swaps a new updater for a current one; alone, either is
// left as the updater, found whatever its case, and nothing goes to ".old".
TEST(ProgramStart, ANewUpdaterAloneBecomesTheUpdaterAndNoneMovesNothing) {
  for (const char* present : {"NBX_Updater_net.exe", "nbx_updater_NET.EXE", "NBX_Updater.exe"}) {
    SCOPED_TRACE(present);
    TempDir dir;
    test::WriteFile(dir.File(present), "only");
    SwapInNewUpdater(dir.path());
    EXPECT_EQ(test::ReadFile(dir.File("NBX_Updater.exe")), "only");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
  }
}

}  // namespace
}  // namespace nbx
