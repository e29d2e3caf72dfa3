#include "month_soak.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "core/timers.h"
#include "device/link_life.h"
#include "outputs/transfer_layout.h"
#include "outputs/user_data_file.h"
#include <fstream>

namespace nbx::test {
namespace {

constexpr std::size_t kProblemsKept = 12;
// Long enough for the safe delay, the cloud delay and a link that comes back
// to have run their course before the verdict is judged.
constexpr int kCleanPeriodsBeforeJudging = 30;

bool FolderThere(const std::string& folder) {
  std::error_code error;
  return std::filesystem::is_directory(folder, error);
}

double HourOfDay(const LocalDateTime& t) { return t.hour + t.minute / 60.0; }

std::string Stamp(const LocalDateTime& t) {
  return "\"" + FormatDate(t, "yyyy-mm-dd") + "\",\"" + FormatDate(t, "hh:mm:ss") + "\",";
}

}  // namespace

bool IsVerdictChange(const std::string& message) {
  return message.rfind("Setting ", 0) == 0 || message.rfind("Just started, setting ", 0) == 0;
}

std::vector<std::string> DataFileLedger::Check(const std::string& path) {
  // Line by line: a month of lines is never held whole.
  std::ifstream in(path, std::ios::binary);
  if (!in) return {path + " cannot be read"};
  std::int64_t lines = 0, verdictLines = 0;
  std::string last, line;
  std::vector<std::string> problems;
  while (std::getline(in, line)) {
    if (in.eof() || line.empty() || line.back() != '\r') {
      if (problems.size() < 5) problems.push_back("a line cut short: " + line.substr(0, 80));
    } else if (const std::size_t debug = line.find(" debug msg: "); debug != std::string::npos) {
      verdictLines += IsVerdictChange(line.substr(debug + 12)) ? 1 : 0;
    } else if (line.rfind("\"Date\",", 0) != 0) {
      ++lines;
      last = line;
    }
  }
  linesChecked += lines;
  if (lines != linesDue || last.rfind(lastDue, 0) != 0)
    problems.push_back(path + " holds " + std::to_string(lines) + " lines, the last " + last.substr(0, 30) +
                       ", where " + std::to_string(linesDue) + " are due, the last " + lastDue);
  if (verdictLines != verdictLinesDue)
    problems.push_back(std::to_string(verdictLines) + " verdict lines in the file where " +
                       std::to_string(verdictLinesDue) + " changes happened");
  return problems;
}

std::map<int, std::string> OpenFiles() {
  std::map<int, std::string> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd", error)) {
    std::error_code linkError;
    const auto target = std::filesystem::read_symlink(entry.path(), linkError);
    // The listing's own descriptor is gone by the time its link is read.
    if (!linkError) files[std::atoi(entry.path().filename().c_str())] = target.string();
  }
  return files;
}

void SoakHost::DebugInfo(std::string_view message) {
  const std::string text(message);
  if (!IsVerdictChange(text)) return;
  ++changeLines;
  lastChange = text;
}

const char* FaultName(Fault fault) {
  static const char* const names[kFaultKinds] = {
      "none",         "short silence", "long silence", "garbage storm", "garbage between", "damaged numbers",
      "sky sentinel", "every other",   "unplugged",    "folder gone",   "humidity lost",   "restart"};
  return names[static_cast<int>(fault)];
}

SoakFolder::SoakFolder() {
  std::error_code error;
  const bool ramDisk = ::access("/dev/shm", W_OK) == 0 && std::filesystem::is_directory("/dev/shm", error);
  std::string pattern =
      ((ramDisk ? std::filesystem::path("/dev/shm") : std::filesystem::temp_directory_path()) /
       "nbx-soak-XXXXXX")
          .string();
  if (::mkdtemp(pattern.data()) != nullptr) path_ = pattern;
}

SoakFolder::~SoakFolder() {
  std::error_code error;
  if (!path_.empty()) std::filesystem::remove_all(path_, error);
}

MonthSoak::MonthSoak(std::uint64_t seed)
    : out(folder.path() + "/out"), csv(folder.path() + "/out/soak.csv"), random_(seed) {
  Config& c = st.nm.config;
  c.LblPathName = c.LblPathNameCCDAP4 = c.NetPathMaster = out;
  c.FileName = "soak";
  c.SaveFreq = 1;
  c.chkDebug = 1;
  // Delays on both ways, so that holds and the cloud delay run all month.
  c.SafeDelayVal = 60;
  c.CloudAlarmDelay = 120;
  c.CheckCloud = {0, 1, 1};
  st.nm.io.host = &host;
  host.onCycle = [this] { OnCycle(); };
}

void MonthSoak::Start() {
  std::filesystem::create_directories(out);
  filesAtStart_ = OpenFiles();
  ApplyWeather(weather_, HourOfDay(st.nm.Now()), random_, st.box);
  Record_Start(st.nm, false);
  firstVerdictPending_ = true;
  StartAction(st.nm);
  st.RunPeriods(2);
}

void MonthSoak::OnCycle() {
  const SiteState& s = st.nm.state;
  ++processed;
  if (!s.CommFailed) ++good;
  // Exactly one line for each change of the verdict, the first of a run
  // included, and it names the new verdict.
  const bool first = firstVerdictPending_ && s.SafetyTrend != 0;
  if (first) firstVerdictPending_ = false;
  const bool changed = first || s.Value_Unsafe != lastVerdict_;
  lastVerdict_ = s.Value_Unsafe;
  const bool namesUnsafe = host.lastChange.find("UNSAFE") != std::string::npos;
  if (host.changeLines != (changed ? 1 : 0) || (changed && namesUnsafe != s.Value_Unsafe))
    Problem("cycle " + std::to_string(processed) + ": " + std::to_string(host.changeLines) +
            " verdict lines for " + (changed ? "a change to " : "no change, ") +
            (s.Value_Unsafe ? "UNSAFE" : "SAFE") + " (last: " + host.lastChange + ")");
  host.changeLines = 0;
  if (changed) ++verdictChanges;

  if (!s.IsRunning || !FolderThere(out)) return;
  ++ledger.linesDue;
  ledger.lastDue = Stamp(st.nm.Now());
  if (changed) ++ledger.verdictLinesDue;
  lastWritten_ = {st.nm.Now(), s.Value_Unsafe, s.LastReading.value_or(0)};
}

void MonthSoak::Problem(const std::string& text) {
  if (problems.size() < kProblemsKept) problems.push_back(text);
}

void MonthSoak::RunPeriods(int periods) {
  // The weather drifts every ten periods.
  for (int done = 0; done < periods; done += 10) {
    ApplyWeather(weather_, HourOfDay(st.nm.Now()), random_, st.box);
    st.RunPeriods(std::min(10, periods - done));
    st.box.ForgetCommands();
  }
}

void MonthSoak::RunEpisode() {
  weather_ = PickWeather(random_, weather_);
  ApplyWeather(weather_, HourOfDay(st.nm.Now()), random_, st.box);
  if (random_.Chance(0.65)) {
    const auto fault = static_cast<Fault>(random_.Between(1, kFaultKinds - 1));
    // A fault strikes anywhere in a cycle, not only between two.
    st.time.RunFor(random_.Between(0, PeriodMs() - 1));
    ++faultsInjected[FaultName(fault)];
    Inject(fault);
  }
  RunPeriods(random_.Between(kCleanPeriodsBeforeJudging, 150));
  CheckVerdict();
  for (const std::string& stray : StrayDescriptors()) Problem(stray);
}

void MonthSoak::Calm() {
  weather_.sky = Sky::Clear;
  weather_.rain = Wetness::Dry;
  RunPeriods(kCleanPeriodsBeforeJudging + 10);
  CheckVerdict();
}

void MonthSoak::Inject(Fault fault) {
  boxsim::Faults& f = st.box.faults;
  const auto silentFromNow = [&] { return static_cast<int>(st.box.CommandCount()) + 1; };
  switch (fault) {
    case Fault::None:
      return;
    case Fault::ShortSilence:
      f.silentFromCommand = silentFromNow();
      st.time.RunFor(random_.Between(1000, PeriodMs()));
      f.silentFromCommand = 0;
      return;
    case Fault::LongSilence:
      f.silentFromCommand = silentFromNow();
      RunPeriods(random_.Between(3, 60));
      f.silentFromCommand = 0;
      return;
    case Fault::GarbageStorm:
      f.garbageBefore = Garbage(random_.Between(1, 300));
      RunPeriods(random_.Between(1, 20));
      f.garbageBefore.clear();
      return;
    case Fault::GarbageBetween:
      f.garbageBetween = Garbage(random_.Between(1, 30));
      RunPeriods(random_.Between(1, 20));
      f.garbageBetween.clear();
      return;
    case Fault::DamagedNumbers:
      f.damagedNumbers = true;
      RunPeriods(random_.Between(1, 20));
      f.damagedNumbers = false;
      return;
    case Fault::SkySentinel:
      f.skySentinel = true;
      RunPeriods(random_.Between(1, 20));
      f.skySentinel = false;
      return;
    case Fault::EveryOther:
      f.answerEveryOther = true;
      RunPeriods(random_.Between(1, 20));
      f.answerEveryOther = false;
      return;
    case Fault::Unplugged:
      st.link.Unplug();
      st.box.DropPartialCommand();
      RunPeriods(random_.Between(1, 30));
      st.link.PlugIn();
      return;
    case Fault::FolderGone:
      return FolderGoneAndBack();
    case Fault::HumidityLost:
      st.box.readings.humidityFitted = false;
      RunPeriods(random_.Between(5, 30));
      st.box.readings.humidityFitted = true;
      return;
    case Fault::Restart:
      StopMidCycle();
      st.time.RunFor(random_.Between(1000, 120000));
      firstVerdictPending_ = true;
      StartAction(st.nm);
      return;
  }
}

void MonthSoak::FolderGoneAndBack() {
  // What the file held is checked before it goes with its folder.
  for (const std::string& p : ledger.Check(csv)) Problem("before the folder went: " + p);
  std::error_code error;
  std::filesystem::remove_all(out, error);
  ledger.linesDue = ledger.verdictLinesDue = 0;
  RunPeriods(random_.Between(1, 20));
  std::filesystem::create_directories(out, error);
}

void MonthSoak::StopMidCycle() {
  SiteState& s = st.nm.state;
  // A few commands into a cycle.
  st.time.RunUntil([&] { return s.CycleBusy && s.QueueSent > 3 && s.QueueSent < s.QueueCount; },
                   30 * PeriodMs());
  const std::size_t before = st.box.CommandCount();
  StopAction(st.nm);
  st.time.RunFor(1000);
  const std::vector<std::string>& commands = st.box.Commands();
  if (st.box.CommandCount() == before || commands.empty() || commands.back() != "P0102")
    Problem("after Stop the box last heard " + (commands.empty() ? std::string("nothing") : commands.back()));
  for (int id = 0; id < TimerCount; ++id)
    if (st.time.IsArmed(static_cast<TimerId>(id)))
      Problem("timer " + std::to_string(id) + " armed after Stop");
  if (st.link.IsOpen()) Problem("the port is open after Stop");
}

void MonthSoak::CheckVerdict() {
  const SiteState& s = st.nm.state;
  ++verdictChecks;
  if (s.CommFailed) {
    Problem("the link is still down after a clean stretch (" + weather_.Describe() + ")");
  } else if (s.Value_Unsafe != ExpectUnsafe(weather_)) {
    Problem(std::string(s.Value_Unsafe ? "UNSAFE" : "SAFE") + " under " + weather_.Describe() + ": cloud " +
            std::to_string(s.NBX_CloudCondition) + " rain " + std::to_string(s.NBX_RainCondition) + " sky " +
            std::to_string(s.Value_Cloud));
  }
}

std::vector<std::string> MonthSoak::StrayDescriptors() const {
  std::vector<std::string> stray;
  const std::string listing = "/proc/" + std::to_string(::getpid()) + "/fd";
  for (const auto& [fd, target] : OpenFiles()) {
    const auto old = filesAtStart_.find(fd);
    if (target != csv && target != listing && (old == filesAtStart_.end() || old->second != target))
      stray.push_back("descriptor " + std::to_string(fd) + " open on " + target);
  }
  return stray;
}

bool MonthSoak::CsvOpen() const {
  for (const auto& [fd, target] : OpenFiles())
    if (target == csv) return true;
  return false;
}

std::string MonthSoak::Garbage(int length) {
  std::string bytes;
  for (int i = 0; i < length; ++i)
    bytes += random_.Chance(0.1) ? '!' : static_cast<char>(random_.Between(0, 255));
  return bytes;
}

std::vector<std::string> MonthSoak::CheckFixedFiles() const {
  std::vector<std::string> wrong;
  const LocalDateTime& t = lastWritten_.at;
  const std::string date = FormatDate(t, "yyyy-mm-dd");
  const std::string stamp = FormatDate(t, "yyyy/mm/dd hh:mm:ss");
  const char flag = lastWritten_.unsafe ? '1' : '0';
  const auto expect = [&](bool holds, const std::string& what) {
    if (!holds) wrong.push_back(what);
  };

  const std::string record = ReadFile(out + "/NBX_SLD.dat");
  expect(record.size() == 104 && record.substr(0, 22) == date + " " + FormatDate(t, "hh:mm:ss.ss") &&
             record[103] == flag,
         "NBX_SLD.dat holds \"" + record + "\", not the cycle of " + stamp);
  const std::string json = ReadFile(out + "/nbx_json.dat");
  expect(json.find("\"dateLocalTime\" : \"" + stamp + "\"") != std::string::npos &&
             json.find(std::string("\"safe\" : ") + (lastWritten_.unsafe ? "0" : "1")) != std::string::npos,
         "nbx_json.dat is not of the cycle of " + stamp + ":\n" + json);
  const auto transfer = DecodeTransferRecord(ReadFile(out + "/NBX_NMNetData.dat"));
  expect(transfer && transfer->LastReading == lastWritten_.lastReading,
         "NBX_NMNetData.dat does not carry the last reading of " + stamp);
  return wrong;
}

}  // namespace nbx::test
