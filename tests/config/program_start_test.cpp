#include <gtest/gtest.h>

#include <filesystem>

#include "config/program_start.h"
#include "support/child_process.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using test::ReadFile;
using test::TempDir;
using test::WriteFile;

TEST(ProgramStart, FilesOfTheProgramFolderAreFoundIgnoringCase) {
  TempDir dir;
  WriteFile(dir.File("nbx_updater_NET.EXE"), "new");
  EXPECT_TRUE(FileExistsInAppPath("NBX_Updater_net.exe", dir.path()));
  EXPECT_FALSE(FileExistsInAppPath("NBX_Updater.exe", dir.path()));
  EXPECT_FALSE(FileExistsInAppPath("NBX_Updater.exe", dir.File("no-such-folder")));

  DeleteFile("NBX_UPDATER_net.exe", dir.path());
  EXPECT_FALSE(fs::exists(dir.File("nbx_updater_NET.EXE")));
  DeleteFile("absent.txt", dir.path());  // nothing to do, nothing breaks
  WriteFile(dir.File("whole-path.txt"), "x");
  DeleteFile("", dir.File("whole-path.txt"));
  EXPECT_FALSE(fs::exists(dir.File("whole-path.txt")));
}

TEST(ProgramStart, NewUpdaterTakesThePlaceOfTheCurrentOne) {
  {  // only the new one: it simply becomes the updater
    TempDir dir;
    WriteFile(dir.File("NBX_Updater_net.exe"), "new");
    SwapInNewUpdater(dir.path());
    EXPECT_EQ(ReadFile(dir.File("NBX_Updater.exe")), "new");
    EXPECT_FALSE(fs::exists(dir.File("NBX_Updater_net.exe")));
    EXPECT_FALSE(fs::exists(dir.File("NBX_Updater_exe.old")));
  }
  {  // no new one: nothing moves
    TempDir dir;
    WriteFile(dir.File("NBX_Updater.exe"), "current");
    SwapInNewUpdater(dir.path());
    EXPECT_EQ(ReadFile(dir.File("NBX_Updater.exe")), "current");
    EXPECT_FALSE(fs::exists(dir.File("NBX_Updater_exe.old")));
  }
}

}  // namespace
}  // namespace nbx
