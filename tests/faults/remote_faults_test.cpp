// A REMOTE whose master's transfer file goes wrong under it. The test itself
// plays the master: it writes the record in place before each of the
// remote's reads, or damages it.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cmath>
#include <filesystem>

#include "core/serial_date.h"
#include "outputs/transfer_layout.h"
#include "support/station_programs.h"
#include "station/system_clock.h"

namespace nbx::test {
namespace {

namespace fs = std::filesystem;

// The master's side: a clear, dry night, stamped with the time of writing.
// The remote corrects the raw sky for its ambient itself.
struct MasterRecord {
  explicit MasterRecord(std::string file) : path(std::move(file)) {
    record.Temp = record.CloudTemp = 10, record.Rain = 3300, record.RainTemp = 12, record.Day = 10000;
    record.Switch = 1, record.Cycle = 0.4, record.DewPoint = 2, record.Humidity = 60;
    record.RelPressure = 1010, record.Wind = 5, record.Gust = 7, record.WindPresent = -1;
  }
  void Write(double rawSky) {
    record.CloudRaw = rawSky;
    record.Cloud = rawSky - 3;
    record.LastReading = NowSerial(clock);
    WriteFile(path, EncodeTransferRecord(record));
  }
  std::string path;
  SystemClock clock;
  TransferRecord record;
};

// The remote's summary lines of the next `span`, the master writing a fresh
// record before each read when `writing`.
std::vector<std::string> Mirror(StationProgram& remote, MasterRecord& master, double rawSky, bool writing,
                                std::chrono::milliseconds span) {
  std::vector<std::string> lines;
  const auto end = std::chrono::steady_clock::now() + span;
  while (std::chrono::steady_clock::now() < end) {
    if (writing) master.Write(rawSky);
    std::string line;
    if (remote.NextCycle(line, 300ms)) lines.push_back(line);
  }
  return lines;
}

// The remote's line for the master's raw sky, corrected for the record's
// ambient, which stays the same.
bool Mirrored(const std::string& line, double rawSky, double correction) {
  return std::abs(Number(line, "sky") - (rawSky + correction)) < 0.051 && Field(line, "codes").empty() &&
         !IsUnsafe(line);
}

TEST(RemoteFaults, ATransferFileTruncatedReplacedByAFolderOrLockedIsSurvived) {
  TempDir dir;
  fs::create_directory(dir.File("share"));
  MasterRecord master(dir.File("share/NBX_NMNetData.dat"));
  master.Write(-25);
  const std::string out = dir.File("out");
  StationProgram remote(dir, {{"Communication", {{"RefreshPeriod", "1"}, {"COMTimeout", "10"}}},
                              {"Window",
                               {{"PathName", out}, {"FileName", "night"}, {"AutoStartRecording", "1"},
                                {"GraphImagePath", dir.File("pictures")}}},
                              {"COMMFile",
                               {{"NMRole0", "False"}, {"NMRole1", "True"},
                                {"NetFilePathRemote", dir.File("share")}, {"PathNameCCDAP4", out}}}});
  std::vector<std::string> lines = Mirror(remote, master, -25, true, 3s);
  ASSERT_FALSE(lines.empty());
  const double correction = Number(lines.back(), "sky") + 25;
  ASSERT_LT(std::abs(correction + 3.4), 0.5) << lines.back();
  EXPECT_TRUE(Mirrored(lines.back(), -25, correction)) << lines.back();

  // Cut short as if read half-written: young values stand, no cycle runs
  // on a broken record, and the next whole record is taken.
  WriteFile(master.path, ReadFile(master.path).substr(0, 300));
  lines = Mirror(remote, master, -25, false, 3s);
  EXPECT_LE(lines.size(), 1u) << "a cycle ran on a broken record";
  for (const std::string& line : lines) EXPECT_TRUE(Mirrored(line, -25, correction)) << line;
  EXPECT_TRUE(remote.process.Running());
  lines = Mirror(remote, master, -24, true, 3s);
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(Mirrored(lines.back(), -24, correction)) << lines.back();

  // A folder in its place for longer than COMTimeout: the values go, the
  // conditions turn Unknown and the verdict UNSAFE, the data too old; then
  // the file comes back.
  fs::remove(master.path);
  fs::create_directory(master.path);
  lines = Mirror(remote, master, -24, false, 14s);
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(IsUnsafe(lines.back()) && Number(lines.back(), "sky") == 99900) << lines.back();
  EXPECT_EQ(Field(lines.back(), "codes"), "w42") << lines.back();
  fs::remove(master.path);
  lines = Mirror(remote, master, -23, true, 3s);
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(Mirrored(lines.back(), -23, correction)) << lines.back();

  // Locked by another program: on this system a lock keeps no reader out,
  // and the remote goes on reading what the master writes.
  const int fd = ::open(master.path.c_str(), O_RDWR);
  ASSERT_GE(fd, 0);
  ASSERT_EQ(::flock(fd, LOCK_EX), 0);
  struct flock whole {};
  whole.l_type = F_WRLCK;
  whole.l_whence = SEEK_SET;
  ASSERT_EQ(::fcntl(fd, F_SETLK, &whole), 0);
  lines = Mirror(remote, master, -22, true, 3s);
  ASSERT_FALSE(lines.empty());
  EXPECT_TRUE(Mirrored(lines.back(), -22, correction)) << lines.back();
  ::close(fd);

  EXPECT_EQ(remote.Stop(), 0);
}

}  // namespace
}  // namespace nbx::test
