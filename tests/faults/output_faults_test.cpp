// Output folders that go away, cannot be written, or sit on a full disk: the
// station says so with its codes and goes on judging the sky.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <filesystem>
#include <cstdio>
#include <functional>

#include "support/station_programs.h"

namespace nbx::test {
namespace {

namespace fs = std::filesystem;

bool Good(const std::string& line) {
  return !LinkDown(line) && !IsUnsafe(line) && Field(line, "codes").empty();
}

// A folder made read-only in a way that binds root too: the immutable flag.
// As a plain user, a folder without write permission does.
bool MakeReadOnly(const std::string& path, bool on) {
  if (::geteuid() != 0) {
    std::error_code error;
    fs::permissions(path, on ? fs::perms::owner_read | fs::perms::owner_exec : fs::perms::owner_all, error);
    return !error;
  }
  const int fd = ::open(path.c_str(), O_RDONLY | O_DIRECTORY);
  if (fd < 0) return false;
  int flags = 0;
  bool done = ::ioctl(fd, FS_IOC_GETFLAGS, &flags) == 0;
  flags = on ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
  done = done && ::ioctl(fd, FS_IOC_SETFLAGS, &flags) == 0;
  ::close(fd);
  return done;
}

// What goes wrong with the output folder `out`, and how it is put right; the
// checks of each side are the scenario's own. Steps left empty do nothing.
struct OutputFault {
  const char* name;
  std::function<std::string(const TempDir&)> arrange;  // the folder the station is given
  std::function<void(StationProgram&, const std::string& out)> strike, whileFailing, cure;
};

std::string Made(const TempDir& dir) {
  fs::create_directory(dir.File("out"));
  return dir.File("out");
}

TEST(OutputFaults, CostTheFilesNotTheVerdictAndTheFilesComeBackWhenTheyCan) {
  const OutputFault faults[] = {
      {"the folder deleted and made again", [](const TempDir& dir) { return dir.File("out"); },
       [](StationProgram& station, const std::string& out) {
         std::string line;
         ASSERT_TRUE(station.CycleWhere(Good, 4, line)) << line;
         fs::remove_all(out);
       },
       {},
       [](StationProgram& station, const std::string& out) {
         fs::create_directory(out);
         std::string line;
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
       }},
      {"a file where the folder should be",
       [](const TempDir& dir) {
         WriteFile(dir.File("blocked"), "not a folder");
         return dir.File("blocked/out");
       },
       {}, [](StationProgram&, const std::string& out) {
         EXPECT_EQ(ReadFile(fs::path(out).parent_path()), "not a folder");
       }, {}},
      {"a read-only folder",
       // Without the right to set the immutable flag (a container without
       // the capability) the scenario cannot be played.
       [](const TempDir& dir) { return MakeReadOnly(Made(dir), true) ? dir.File("out") : std::string(); },
       {}, [](StationProgram&, const std::string& out) { EXPECT_FALSE(fs::exists(out + "/NBX_SLD.dat")); },
       [](StationProgram& station, const std::string& out) {
         // Writable again: the next cycle's files are there. The recording
         // that could not start stays off, as at any failed start of one.
         ASSERT_TRUE(MakeReadOnly(out, false));
         std::string line;
         EXPECT_TRUE(station.CycleWhere(Good, 4, line)) << line;
         EXPECT_EQ(ReadFile(out + "/NBX_SLD.dat").size(), 104u);
         EXPECT_FALSE(fs::exists(out + "/night.csv"));
       }},
      {"a full disk under three of the files",
       [](const TempDir& dir) {
         const std::string out = Made(dir);
         for (const char* name : {"NBX_SLDs.dat", "NBX_NMNetData.dat", "night.csv"})
           fs::create_symlink("/dev/full", out + "/" + name);
         return out;
       },
       {}, [](StationProgram&, const std::string& out) {
         // The file before the failure is written each cycle; those after it
         // wait for a cycle in which all can be written.
         EXPECT_EQ(ReadFile(out + "/NBX_SLD.dat").size(), 104u);
         EXPECT_FALSE(fs::exists(out + "/nbx_json.dat"));
         EXPECT_TRUE(fs::is_symlink(out + "/NBX_NMNetData.dat"));
       }, {}},
  };
  for (const OutputFault& fault : faults) {
    SCOPED_TRACE(fault.name);
    TempDir dir;
    const std::string out = fault.arrange(dir);
    if (out.empty()) {
      std::printf("[ SKIPPED  ] %s: not possible on this machine\n", fault.name);
      continue;
    }
    // Whatever happens, the folder can be removed with the rest.
    struct Writable {
      std::string path;
      ~Writable() { MakeReadOnly(path, false); }
    } writable{out};
    BoxProgram box(dir, {"rain=3300"});
    ASSERT_TRUE(box.ready);
    StationProgram station(dir, MasterSettings(box.link, out));
    if (fault.strike) fault.strike(station, out);

    // Cycle after cycle the files fail (code c51) while the box is read and
    // the verdict stays as the sky has it.
    std::string line;
    EXPECT_TRUE(station.CycleWhere(
        [](const std::string& l) { return !LinkDown(l) && Field(l, "codes") == "c51"; }, 4, line))
        << line;
    for (int i = 0; i < 3; ++i) {
      ASSERT_TRUE(station.NextCycle(line));
      EXPECT_EQ(Field(line, "codes"), "c51") << line;
      EXPECT_FALSE(IsUnsafe(line)) << line;
    }
    if (fault.whileFailing) fault.whileFailing(station, out);
    if (fault.cure) fault.cure(station, out);
    EXPECT_EQ(station.Stop(), 0);
  }
}

}  // namespace
}  // namespace nbx::test
