#include <gtest/gtest.h>
#include <dlfcn.h>
#include <link.h>

#include <cstdlib>
#include <filesystem>

#include "core/nimbometer.h"
#include "graphs/drawing/freeimage_runtime.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "graphs/image_export.h"
#include "safety/alarms.h"
#include "station/qt_sound_player.h"
#include "station/qt_timers.h"
#include "station/station.h"
#include "support/child_process.h"
#include "support/wave_file.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;

// The installed image library's file, found the way the station finds it.
std::string InstalledFreeImage() {
  void* handle = dlopen("libfreeimage.so.3", RTLD_NOW | RTLD_LOCAL);
  if (!handle) return {};
  link_map* map = nullptr;
  dlinfo(handle, RTLD_DI_LINKMAP, &map);
  const std::string file = map ? map->l_name : "";
  dlclose(handle);
  return file;
}

// The sound module missing when an alarm first sounds: the alarm is silent,
// as on a machine that cannot play sound, it says why once, and the station
// goes on. In a child process, since the module is looked for once a process.
TEST(SoundModule, MissingWhenAnAlarmFirstSoundsLeavesItSilent) {
  test::TempDir dir;
  test::WriteSilentWave(dir.File("alarm.wav"), 1);
  EXPECT_EXIT(
      {
        setenv("NBX_SOUND_MODULE", dir.File("libnbx_sound.so").c_str(), 1);
        Nimbometer nm;
        QtTimers timers([](TimerId) {});
        QtSoundPlayer player;
        nm.io.timers = &timers;
        nm.io.sound = &player;
        AlarmStart(nm, dir.File("alarm.wav") + "|");
        const bool silent = !player.IsPlaying() && !nm.display.ButtStopAlarm.Visible &&
                            !timers.IsArmed(TimerId::AlarmAjo);
        AlarmStart(nm, dir.File("alarm.wav"));  // asked again: still silent
        // Straight out: the forked child must not tear down the parent's application.
        std::_Exit(silent && !nm.display.ButtStopAlarm.Visible ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "no sound module, the alarms are silent");
}

// The image library checked at start, unloaded while no export is on, and
// gone from the disk when an export is turned on again: that export fails
// with the library's status and the next save, once it is back, works.
TEST(ImageLibrary, UnloadedWithExportsOffAndMissedWhenGoneAfterStart) {
  const std::string installed = InstalledFreeImage();
  if (installed.empty()) GTEST_SKIP() << "FreeImage is not installed";
  test::TempDir dir;
  const std::string copy = dir.File("libfreeimage.so.3");
  fs::copy_file(installed, copy);
  FreeImageRuntime fi(copy);
  QtGraphPictures pictures(fi, 60, 40);
  Nimbometer nm;
  nm.io.pictures = &pictures;
  nm.config.GraphImagePath = dir.path();
  nm.config.ImageType = 1;
  const std::string picture = dir.File("NBX_ImageCloudCondition.png");
  ASSERT_TRUE(fi.Initialise());
  ExportGraphPicture(nm, GraphKind::Cloud);
  EXPECT_TRUE(fs::exists(picture));
  EXPECT_EQ(nm.display.StatusBar2.Caption, "");

  fi.Unload();
  EXPECT_FALSE(fi.Available());
  fs::remove(copy);
  fs::remove(picture);
  ExportGraphPicture(nm, GraphKind::Cloud);
  EXPECT_FALSE(fs::exists(picture));
  EXPECT_EQ(nm.display.StatusBar2.Caption, "i24");

  fi.Unload();  // the export was turned off again; the file comes back
  fs::copy_file(installed, copy);
  nm.display.StatusBar2.Caption.clear();
  ExportGraphPicture(nm, GraphKind::Cloud);
  EXPECT_TRUE(fs::exists(picture));
  EXPECT_EQ(nm.display.StatusBar2.Caption, "");
}

// The station lets the process's library go once a cycle ends with every
// export off.
TEST(ImageLibrary, TheStationUnloadsItWhenEveryExportIsOff) {
  Station station;
  FreeImageRuntime& fi = FreeImageRuntime::Instance();
  if (!fi.Initialise()) GTEST_SKIP() << "FreeImage is not installed";
  station.host().CycleProcessed();
  EXPECT_TRUE(fi.Available());  // the seven exports are on by default
  station.nm().config.GraphImage.fill(0);
  station.host().CycleProcessed();
  EXPECT_FALSE(fi.Available());
}

}  // namespace
}  // namespace nbx
