#include "config/program_start.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "support/child_process.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using test::TempDir;
using test::WriteFile;

TEST(ProgramStart, FilesOfTheProgramFolderAreFoundAndDeletedIgnoringCase) {
  TempDir dir;
  WriteFile(dir.File("nbx_updater_NET.EXE"), "new");
  EXPECT_TRUE(FileExistsInAppPath("NBX_Updater_net.exe", dir.path()));
  EXPECT_FALSE(FileExistsInAppPath("NBX_Updater.exe", dir.path()));
  DeleteFile("NBX_UPDATER_net.exe", dir.path());
  EXPECT_FALSE(fs::exists(dir.File("nbx_updater_NET.EXE")));
  DeleteFile("absent.txt", dir.path());  // nothing to do, nothing breaks
}

// The program test swaps a new updater for a current one; alone, either is
// left where it is, and the current one never goes to ".old" for nothing.
TEST(ProgramStart, ANewUpdaterAloneBecomesTheUpdaterAndNoneMovesNothing) {
  for (const char* present : {"NBX_Updater_net.exe", "NBX_Updater.exe"}) {
    TempDir dir;
    WriteFile(dir.File(present), "only");
    SwapInNewUpdater(dir.path());
    EXPECT_EQ(test::ReadFile(dir.File("NBX_Updater.exe")), "only") << present;
    EXPECT_FALSE(fs::exists(dir.File("NBX_Updater_net.exe")));
    EXPECT_FALSE(fs::exists(dir.File("NBX_Updater_exe.old")));
  }
}

}  // namespace
}  // namespace nbx
