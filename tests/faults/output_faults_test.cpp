// Output folders that go away, cannot be written, or sit on a full disk: the
// station says so with its codes and goes on judging the sky.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

namespace fs = std::filesystem;

bool Good(const std::string& line) {
  return !LinkDown(line) && !IsUnsafe(line) && Field(line, "codes").empty();
}
bool Coded(const std::string& line, const std::string& code) { return Field(line, "codes") == code; }

// Cycle after cycle the files fail (code c51) while the box is read and the
// verdict stays as the sky has it.
void ExpectFilesFailingAndTheSkyStillJudged(StationProgram& station) {
  std::string line;
  EXPECT_TRUE(
      station.CycleWhere([](const std::string& l) { return !LinkDown(l) && Coded(l, "c51"); }, 4, line))
      << line;
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(station.NextCycle(line));
    EXPECT_TRUE(Coded(line, "c51")) << line;
    EXPECT_FALSE(IsUnsafe(line)) << line;
  }
}

// A folder made read-only in a way that binds root too: the immutable flag.
// Without the right to set it (a container without the capability), a plain
// user's folder without write permission does; as root that would not bind.
class ReadOnlyFolder {
 public:
  explicit ReadOnlyFolder(const std::string& path) : path_(path) {
    if (::geteuid() != 0) {
      fs::permissions(path, fs::perms::owner_read | fs::perms::owner_exec);
      how_ = Mode;
      return;
    }
    if (SetImmutable(true)) how_ = Immutable;
  }
  ~ReadOnlyFolder() { Lift(); }
  bool Made() const { return how_ != None; }
  void Lift() {
    if (how_ == Immutable) SetImmutable(false);
    if (how_ == Mode) fs::permissions(path_, fs::perms::owner_all);
    how_ = None;
  }

 private:
  bool SetImmutable(bool on) {
    const int fd = ::open(path_.c_str(), O_RDONLY | O_DIRECTORY);
    if (fd < 0) return false;
    int flags = 0;
    bool done = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
    flags = on ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    done = done && ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
    ::close(fd);
    return done;
  }
  enum { None, Mode, Immutable } how_ = None;
  std::string path_;
};

TEST(OutputFaults, TheOutputFolderDeletedAndMadeAgainFillsUpAgain) {
  TempDir dir;
  BoxProgram box(dir, {"rain=3300"});
  ASSERT_TRUE(box.ready);
  const std::string out = dir.File("out");
  StationProgram station(dir, MasterSettings(box.link, out));
  std::string line;
  ASSERT_TRUE(station.CycleWhere(Good, 4, line)) << line;

  fs::remove_all(out);
  // Each cycle tries again and says so, and the verdict goes on.
  EXPECT_TRUE(station.CycleWhere([](const std::string& l) { return Coded(l, "c51"); }, 4, line)) << line;
  ASSERT_TRUE(station.NextCycle(line));
  EXPECT_TRUE(Coded(line, "c51")) << line;
  EXPECT_FALSE(IsUnsafe(line)) << line;

  fs::create_directory(out);
  EXPECT_TRUE(station.CycleWhere(Good, 4, line)) << line;
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(station.NextCycle(line));
  EXPECT_EQ(ReadFile(out + "/NBX_SLD.dat").size(), 104u);
  EXPECT_EQ(ReadFile(out + "/NBX_NMNetData.dat").size(), 620u);
  EXPECT_NE(ReadFile(out + "/nbx_json.dat").find("\"safe\" : 1,"), std::string::npos);
  // The recording goes on in the folder made again, under a header of its own.
  const DataFile csv = ReadDataFile(out + "/night.csv");
  EXPECT_EQ(csv.headers, 1);
  EXPECT_GE(csv.dataLines, 3);
  EXPECT_TRUE(csv.whole) << csv.lastLine;

  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

TEST(OutputFaults, AFileWhereTheFolderShouldBeCostsTheFilesNotTheVerdict) {
  TempDir dir;
  BoxProgram box(dir, {"rain=3300"});
  ASSERT_TRUE(box.ready);
  WriteFile(dir.File("blocked"), "not a folder");
  StationProgram station(dir, MasterSettings(box.link, dir.File("blocked/out")));
  ExpectFilesFailingAndTheSkyStillJudged(station);
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
  EXPECT_EQ(ReadFile(dir.File("blocked")), "not a folder");
}

TEST(OutputFaults, AReadOnlyFolderCostsItsFilesUntilItCanBeWrittenAgain) {
  TempDir dir;
  const std::string out = dir.File("out");
  fs::create_directory(out);
  ReadOnlyFolder readOnly(out);
  if (!readOnly.Made())
    GTEST_SKIP() << "no way to make a folder read-only for root here (immutable flag refused)";
  BoxProgram box(dir, {"rain=3300"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, MasterSettings(box.link, out));
  std::string line;
  EXPECT_TRUE(
      station.CycleWhere([](const std::string& l) { return !LinkDown(l) && Coded(l, "c51"); }, 4, line))
      << line;
  EXPECT_FALSE(IsUnsafe(line)) << line;
  EXPECT_FALSE(fs::exists(out + "/NBX_SLD.dat"));

  // Writable again: the next cycle's files are there. The recording that
  // could not start stays off, as at any failed start of a recording.
  readOnly.Lift();
  EXPECT_TRUE(station.CycleWhere(Good, 4, line)) << line;
  EXPECT_EQ(ReadFile(out + "/NBX_SLD.dat").size(), 104u);
  EXPECT_FALSE(fs::exists(out + "/night.csv"));
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

TEST(OutputFaults, AFullDiskIsReportedEveryCycleAndTheFilesBeforeItAreWritten) {
  if (!fs::exists("/dev/full")) GTEST_SKIP() << "this machine has no /dev/full";
  TempDir dir;
  const std::string out = dir.File("out");
  fs::create_directory(out);
  // The extended single-line file, the transfer file and the recording lie on a full disk.
  for (const char* name : {"NBX_SLDs.dat", "NBX_NMNetData.dat", "night.csv"})
    fs::create_symlink("/dev/full", out + "/" + name);
  BoxProgram box(dir, {"rain=3300"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, MasterSettings(box.link, out));
  ExpectFilesFailingAndTheSkyStillJudged(station);
  // The file before the failure is written each cycle; those after it wait
  // for a cycle in which all can be written.
  EXPECT_EQ(ReadFile(out + "/NBX_SLD.dat").size(), 104u);
  EXPECT_FALSE(fs::exists(out + "/nbx_json.dat"));
  EXPECT_TRUE(fs::is_symlink(out + "/NBX_NMNetData.dat"));
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx::test
