#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QThread>
#include <filesystem>
#include <functional>
#include <memory>

#include "station/qt_script_runner.h"
#include "station/qt_sound_player.h"
#include "support/child_process.h"
#include "support/wave_file.h"

// Where the machine can play sound, the sound server's client library keeps
// memory to the end; under the leak checker that is not ours.
extern "C" const char* __lsan_default_suppressions() { return "leak:libpulse.so\n"; }

namespace nbx {
namespace {

namespace fs = std::filesystem;

// The media player and the processes of Qt want an application object.
class QtApplication : public ::testing::Environment {
 public:
  void SetUp() override {
    static char name[] = "station_tests";
    static char* argv[] = {name, nullptr};
    static int argc = 1;
    app_ = std::make_unique<QCoreApplication>(argc, argv);
  }
  void TearDown() override { app_.reset(); }

 private:
  std::unique_ptr<QCoreApplication> app_;
};
[[maybe_unused]] const auto* const qtApplication = ::testing::AddGlobalTestEnvironment(new QtApplication);

bool WaitUntil(const std::function<bool()>& done, int maxMs) {
  const QDeadlineTimer deadline(maxMs);
  while (!done() && !deadline.hasExpired()) {
    QCoreApplication::processEvents();
    QThread::msleep(10);
  }
  return done();
}

void WriteScript(const std::string& path, const std::string& body, fs::perms perms = fs::perms::owner_all) {
  test::WriteFile(path, "#!/bin/sh\n" + body);
  fs::permissions(path, perms);
}

TEST(ScriptRunner, StartsTheScriptItselfWithoutAShellAndWithoutWaiting) {
  test::TempDir dir;
  fs::create_directory(dir.File("my scripts"));
  const std::string go = dir.File("go"), ran = dir.File("ran");
  // The script waits for the test: a runner that waited for its end would never return.
  const std::string script = dir.File("my scripts/close roof; touch injected.sh");
  WriteScript(script, "while [ ! -e '" + go + "' ]; do sleep 0.05; done\necho ran >> '" + ran + "'\n");
  QtScriptRunner runner;
  ASSERT_TRUE(runner.Start(script));
  test::WriteFile(go, "");
  EXPECT_TRUE(WaitUntil([&] { return fs::exists(ran); }, 10000));
  EXPECT_FALSE(fs::exists(dir.File("my scripts/injected.sh")));  // no shell read the name
  // Not executable, or not there: refused, never run some other way.
  WriteScript(dir.File("plain.sh"), "touch '" + dir.File("plain ran") + "'\n", fs::perms::owner_read);
  EXPECT_FALSE(runner.Start(dir.File("plain.sh")));
  EXPECT_FALSE(runner.Start(dir.File("missing.sh")));
  EXPECT_FALSE(fs::exists(dir.File("plain ran")));
}

TEST(SoundPlayer, AGeneratedSoundPlaysAndStopsAndABadOneIsSilent) {
  test::TempDir dir;
  test::WriteSilentWave(dir.File("alarm.wav"), 1);
  QtSoundPlayer player;
  EXPECT_FALSE(player.Play(dir.File("missing.wav"), false));
  player.Stop();
  if (!QtSoundPlayer::CanPlaySound()) {
    // The player is never made: nothing plays, nothing breaks.
    EXPECT_FALSE(player.Play(dir.File("alarm.wav"), true));
    GTEST_SKIP() << "no audio output or no decoders on this machine: the sound cannot be played here";
  }
  ASSERT_TRUE(player.Play(dir.File("alarm.wav"), true));
  EXPECT_TRUE(WaitUntil([&] { return player.IsPlaying(); }, 5000));
  WaitUntil([] { return false; }, 2500);  // longer than the file: it repeats
  EXPECT_TRUE(player.IsPlaying());
  player.Stop();
  EXPECT_FALSE(player.IsPlaying());
  ASSERT_TRUE(player.Play(dir.File("alarm.wav"), false));
  EXPECT_TRUE(WaitUntil([&] { return player.IsPlaying(); }, 5000));
  EXPECT_TRUE(WaitUntil([&] { return !player.IsPlaying(); }, 10000));  // once, then it ends
  test::WriteFile(dir.File("noise.wav"), "this is no sound at all");
  if (player.Play(dir.File("noise.wav"), false)) {
    EXPECT_TRUE(WaitUntil([&] { return !player.IsPlaying(); }, 10000));
  }
}

}  // namespace
}  // namespace nbx
