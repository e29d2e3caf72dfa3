#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "soak_weather.h"
#include "support/sim_station.h"

namespace nbx::test {

// The program's surroundings for a long run: only what the checks need is
// kept, so that the test itself does not grow with the cycles.
class SoakHost : public Host {
 public:
  explicit SoakHost(VirtualTime& time) : time_(time) {}
  void DebugInfo(std::string_view message) override;
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override {
    return time_.RunUntil(done, timeoutMs);
  }
  void CycleProcessed() override {
    if (onCycle) onCycle();
  }

  std::function<void()> onCycle;
  int changeLines = 0;     // verdict lines since the last cycle
  std::string lastChange;  // the last of them

 private:
  VirtualTime& time_;
};

// What the user data file must hold: one line for each cycle written while
// its folder was there, ending with the last of them, and one debug line for
// each change of the verdict. Counts only: a month of lines costs no memory.
struct DataFileLedger {
  std::int64_t linesDue = 0, verdictLinesDue = 0, linesChecked = 0;
  std::string lastDue;
  std::vector<std::string> Check(const std::string& path);
};

// A debug message that tells a change of the verdict.
bool IsVerdictChange(const std::string& message);

// The descriptors this process holds open now, with what each names.
std::map<int, std::string> OpenFiles();

// What can go wrong on a site, one at a time.
enum class Fault {
  None,
  ShortSilence,    // fewer failed commands than the limit
  LongSilence,     // the box is dead for a while
  GarbageStorm,    // bytes before every reply
  GarbageBetween,  // bytes inside every reply
  DamagedNumbers,
  SkySentinel,
  EveryOther,  // only every other command answered
  Unplugged,   // the adapter is pulled out and put back
  FolderGone,  // the output folder vanishes and comes back
  HumidityLost,
  Restart,  // Stop in the middle of a cycle, Start again later
};
inline constexpr int kFaultKinds = static_cast<int>(Fault::Restart) + 1;
const char* FaultName(Fault fault);

// A fresh folder for the station's files, removed with them. A month of
// rewrites goes to a RAM disk when the machine has one, so that the soak
// weighs the program and not the disk's journal.
class SoakFolder {
 public:
  SoakFolder();
  ~SoakFolder();
  SoakFolder(const SoakFolder&) = delete;
  SoakFolder& operator=(const SoakFolder&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

// The last cycle that was written while its folder was there: what the fixed
// files must hold at the end.
struct WrittenCycle {
  LocalDateTime at;
  bool unsafe = false;
  double lastReading = 0;
};

// A station on virtual time with the in-process box, under weather that
// changes and faults drawn from a seed, recording every cycle with debug
// lines; each cycle is checked as it ends.
class MonthSoak {
 public:
  explicit MonthSoak(std::uint64_t seed);

  void Start();
  // One stretch of weather, perhaps with a fault, then clean cycles and the check of the verdict.
  void RunEpisode();
  // Clear and dry to the end, so that the last cycles are clean.
  void Calm();
  // Stop in the middle of a cycle: the heater's resting command must be the
  // last the box hears, no timer may stay armed, the port must be closed.
  void StopMidCycle();

  // Fixed files against the last cycle written; one text per difference.
  std::vector<std::string> CheckFixedFiles() const;
  // Descriptors opened since the start other than the recording file.
  std::vector<std::string> StrayDescriptors() const;
  bool CsvOpen() const;

  SimStation st;
  SoakHost host{st.time};
  SoakFolder folder;
  DataFileLedger ledger;
  std::string out, csv;

  std::int64_t processed = 0, good = 0, verdictChanges = 0, verdictChecks = 0;
  std::map<std::string, int> faultsInjected;
  std::vector<std::string> problems;  // the first few only

 private:
  void OnCycle();
  void Problem(const std::string& text);
  void RunPeriods(int periods);
  void Inject(Fault fault);
  void FolderGoneAndBack();
  void CheckVerdict();
  std::string Garbage(int length);
  int PeriodMs() const { return st.nm.config.RefreshPeriod * 1000; }

  Seeded random_;
  Weather weather_;
  bool firstVerdictPending_ = false;
  bool lastVerdict_ = false;
  WrittenCycle lastWritten_;
  std::map<int, std::string> filesAtStart_;
};

}  // namespace nbx::test
