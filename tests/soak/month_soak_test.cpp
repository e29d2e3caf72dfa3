// A month of cycles on virtual time with the in-process box, under weather
// that changes and faults drawn from a seed, recording every cycle. Each
// stretch of weather and each Stop is checked as it comes; only counts are
// kept, so that the test does not grow with the cycles.

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <numbers>

#include "device/link_life.h"
#include "outputs/transfer_layout.h"
#include "outputs/user_data_file.h"
#include "support/sim_station.h"

#if defined(__SANITIZE_ADDRESS__)
#define NBX_SOAK_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NBX_SOAK_SANITIZED 1
#endif
#endif

namespace nbx::test {
namespace {

namespace fs = std::filesystem;

// A month at the default period of 10 s is 259,200 cycles: the optimised
// build (CI's plain run) soaks a month. Unoptimised builds are several times
// slower a cycle, the sanitizers more so (and they hold freed memory back, so
// the leak checker at exit judges memory there): a few days unless
// NBX_SOAK_CYCLES says otherwise.
#ifdef NBX_SOAK_SANITIZED
constexpr std::int64_t kDefaultCycles = 15'000;
#elif defined(__OPTIMIZE__)
constexpr std::int64_t kDefaultCycles = 260'000;
#else
constexpr std::int64_t kDefaultCycles = 50'000;
#endif
// Long enough for the safe delay, the cloud delay and a link that comes back
// to have run their course before the verdict is judged.
constexpr int kCleanPeriodsBeforeJudging = 30;

std::int64_t FromEnvironment(const char* name, std::int64_t otherwise) {
  const char* text = std::getenv(name);
  return text != nullptr && *text != '\0' ? std::atoll(text) : otherwise;
}

std::int64_t ResidentKiB() {
  std::ifstream statm("/proc/self/statm");
  std::int64_t sizePages = 0, residentPages = 0;
  statm >> sizePages >> residentPages;
  return residentPages * ::sysconf(_SC_PAGESIZE) / 1024;
}

// The descriptors this process holds open now, with what each names.
std::map<int, std::string> OpenFiles() {
  std::map<int, std::string> files;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd", error)) {
    std::error_code linkError;
    const auto target = fs::read_symlink(entry.path(), linkError);
    // The listing's own descriptor is gone by the time its link is read.
    if (!linkError) files[std::atoi(entry.path().filename().c_str())] = target.string();
  }
  return files;
}

// splitmix64: the same weather and faults from a seed on every standard library.
struct Seeded {
  std::uint64_t state;
  std::uint64_t Next() {
    std::uint64_t z = (state += 0x9E3779B97F4A7C15ull);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
  }
  double Uniform(double low, double high) {
    return low + (high - low) * static_cast<double>(Next() >> 11) * 0x1.0p-53;
  }
  int Between(int low, int high) {  // both ends included
    return low + static_cast<int>(Next() % static_cast<std::uint64_t>(high - low + 1));
  }
  bool Chance(double probability) { return Uniform(0, 1) < probability; }
};

// Keeps nothing: a month of debug lines would be memory held per cycle.
class SoakHost : public Host {
 public:
  explicit SoakHost(VirtualTime& time) : time_(time) {}
  bool WaitFor(const std::function<bool()>& done, int timeoutMs) override {
    return time_.RunUntil(done, timeoutMs);
  }
  void CycleProcessed() override { onCycle(); }
  std::function<void()> onCycle;

 private:
  VirtualTime& time_;
};

class MonthSoak {
 public:
  explicit MonthSoak(std::uint64_t seed) : random_{seed} {
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

  void Start() {
    fs::create_directories(out);
    filesAtStart_ = OpenFiles();
    ApplyWeather();
    Record_Start(st.nm, false);
    StartAction(st.nm);
    st.RunPeriods(2);
  }

  // One stretch of weather, perhaps with a fault, then clean cycles and the
  // check of the verdict and of the descriptors.
  void RunEpisode() {
    sky_ = random_.Between(0, 2);
    // Rain comes with a covered sky.
    rain_ = sky_ == 0 ? 0 : random_.Between(0, 2);
    ApplyWeather();
    if (random_.Chance(0.65)) {
      const int fault = random_.Between(0, static_cast<int>(faults.size()) - 1);
      // A fault strikes anywhere in a cycle, not only between two.
      st.time.RunFor(random_.Between(0, PeriodMs() - 1));
      ++faultsInjected[fault];
      faults[fault].inject();
    }
    RunPeriods(random_.Between(kCleanPeriodsBeforeJudging, 150));
    CheckVerdict();
    for (const std::string& stray : StrayDescriptors()) Problem(stray);
  }

  // Clear and dry to the end, so that the last cycles are clean.
  void Calm() {
    sky_ = rain_ = 0;
    RunPeriods(kCleanPeriodsBeforeJudging + 10);
    CheckVerdict();
  }

  // Stop a few commands into a cycle: the heater's resting command must be
  // the last the box hears, no timer may stay armed, the port must be closed.
  void StopMidCycle() {
    SiteState& s = st.nm.state;
    st.time.RunUntil([&] { return s.CycleBusy && s.QueueSent > 3 && s.QueueSent < s.QueueCount; },
                     30 * PeriodMs());
    const std::size_t before = st.box.CommandCount();
    StopAction(st.nm);
    st.time.RunFor(1000);
    const std::vector<std::string>& commands = st.box.Commands();
    if (st.box.CommandCount() == before || commands.empty() || commands.back() != "P0102")
      Problem("after Stop the box last heard " + (commands.empty() ? std::string("nothing") : commands.back()));
    for (int id = 0; id < TimerCount; ++id)
      if (st.time.IsArmed(static_cast<TimerId>(id))) Problem("timer " + std::to_string(id) + " armed after Stop");
    if (st.link.IsOpen()) Problem("the port is open after Stop");
  }

  // The user data file holds one whole line for each cycle written since its
  // folder last came back, ending with the last of them. Read line by line:
  // a month is never held whole.
  std::vector<std::string> CheckDataFile() {
    std::ifstream in(csv, std::ios::binary);
    if (!in) return {csv + " cannot be read"};
    std::int64_t lines = 0;
    std::string last, line;
    std::vector<std::string> wrong;
    while (std::getline(in, line)) {
      if (in.eof() || line.empty() || line.back() != '\r') {
        if (wrong.size() < 5) wrong.push_back("a line cut short: " + line.substr(0, 80));
      } else if (line.find(" debug msg: ") == std::string::npos && line.rfind("\"Date\",", 0) != 0) {
        ++lines;
        last = line;
      }
    }
    linesChecked += lines;
    if (lines != linesDue_ || last.rfind(lastDue_, 0) != 0)
      wrong.push_back(csv + " holds " + std::to_string(lines) + " lines, the last " + last.substr(0, 30) +
                      ", where " + std::to_string(linesDue_) + " are due, the last " + lastDue_);
    return wrong;
  }

  // The fixed files against the last cycle written while their folder was there.
  std::vector<std::string> CheckFixedFiles() const {
    const LocalDateTime& t = lastWritten_.at;
    const std::string stamp = FormatDate(t, "yyyy/mm/dd hh:mm:ss");
    const std::string record = ReadFile(out + "/NBX_SLD.dat"), json = ReadFile(out + "/nbx_json.dat");
    const auto transfer = DecodeTransferRecord(ReadFile(out + "/NBX_NMNetData.dat"));
    const bool recordOk =
        record.size() == 104 && record[103] == (lastWritten_.unsafe ? '1' : '0') &&
        record.substr(0, 22) == FormatDate(t, "yyyy-mm-dd") + " " + FormatDate(t, "hh:mm:ss.ss");
    const bool jsonOk =
        json.find("\"dateLocalTime\" : \"" + stamp + "\"") != std::string::npos &&
        json.find(std::string("\"safe\" : ") + (lastWritten_.unsafe ? "0" : "1")) != std::string::npos;
    if (recordOk && jsonOk && transfer && transfer->LastReading == lastWritten_.lastReading) return {};
    return {"the fixed files are not all of the cycle of " + stamp + ":\n" + record + "\n" + json};
  }

  // Descriptors opened since the start other than the recording file.
  std::vector<std::string> StrayDescriptors() const {
    std::vector<std::string> stray;
    const std::string listing = "/proc/" + std::to_string(::getpid()) + "/fd";
    for (const auto& [fd, target] : OpenFiles()) {
      const auto old = filesAtStart_.find(fd);
      if (target != csv && target != listing && (old == filesAtStart_.end() || old->second != target))
        stray.push_back("descriptor " + std::to_string(fd) + " open on " + target);
    }
    return stray;
  }

  SimStation st;
  SoakHost host{st.time};
  std::string out = st.files.path() + "/out", csv = out + "/soak.csv";
  std::int64_t processed = 0, good = 0, verdictChanges = 0, linesChecked = 0;
  std::map<int, int> faultsInjected;
  std::vector<std::string> problems;  // the first few only

 private:
  struct FaultKind {
    const char* name;
    std::function<void()> inject;
  };

  void OnCycle() {
    const SiteState& s = st.nm.state;
    ++processed;
    if (!s.CommFailed) ++good;
    if (s.Value_Unsafe != lastVerdict_) ++verdictChanges;
    lastVerdict_ = s.Value_Unsafe;
    std::error_code error;
    if (!s.IsRunning || !fs::is_directory(out, error)) return;
    ++linesDue_;
    lastDue_ = "\"" + FormatDate(st.nm.Now(), "yyyy-mm-dd") + "\",\"" + FormatDate(st.nm.Now(), "hh:mm:ss") + "\",";
    lastWritten_ = {st.nm.Now(), s.Value_Unsafe, s.LastReading.value_or(0)};
  }

  void Problem(const std::string& text) {
    if (problems.size() < 12) problems.push_back(text);
  }

  // Moves the box to the weather at this hour (the sun sets the light, the day
  // warms the air), with the small wobble of real readings; the classes stay.
  void ApplyWeather() {
    const LocalDateTime now = st.nm.Now();
    const double hour = now.hour + now.minute / 60.0;
    boxsim::Box& box = st.box;
    boxsim::Readings& r = box.readings;
    const double ambient = 10 + 3 * std::sin((hour - 9) / 24 * 2 * std::numbers::pi) + random_.Uniform(-0.5, 0.5);
    // Every source of the ambient agrees, so the one the program picks does not matter.
    box.SetAmbientCelsius(ambient);
    box.SetSkySensorCelsius(ambient);
    box.SetRainPlateCelsius(ambient + 2);
    r.humidityTemp = ambient;
    // With the ambient between 6 and 14 degrees the correction takes 2.0 to
    // 4.8 degrees off the sky: these raw bands land inside Clear (<= -5),
    // Cloudy (-5 .. 0) and Overcast (> 0) with room to spare.
    const double sky[][2] = {{-25, -10}, {0.3, 1.7}, {6, 15}};
    box.SetSkyCelsius(random_.Uniform(sky[sky_][0], sky[sky_][1]));
    // Dry from 3200 up, Wet from 2800, Rain below.
    const double rain[][2] = {{3300, 3700}, {2900, 3100}, {1000, 2600}};
    r.rainFrequency = std::round(random_.Uniform(rain[rain_][0], rain[rain_][1]));
    const bool daylight = hour > 7.5 && hour < 16.5;
    r.ldrCounts = daylight ? random_.Uniform(48000, 49990) : random_.Uniform(30000, 45000);
    r.windKmh = std::round(std::clamp(r.windKmh + random_.Uniform(-3, 3), 0.0, 40.0) * 10) / 10;
    r.humidity = std::clamp(r.humidity + random_.Uniform(-4, 4), 20.0, 98.0);
    r.pressureHpa = std::clamp(r.pressureHpa + random_.Uniform(-1, 1), 960.0, 1050.0);
  }

  // The weather drifts every ten periods.
  void RunPeriods(int periods) {
    for (int done = 0; done < periods; done += 10) {
      ApplyWeather();
      st.RunPeriods(std::min(10, periods - done));
      st.box.ForgetCommands();
    }
  }

  // The soak counts Cloudy, Overcast and Rain as unsafe.
  void CheckVerdict() {
    const SiteState& s = st.nm.state;
    const std::string weather = "sky class " + std::to_string(sky_) + ", rain class " + std::to_string(rain_);
    if (s.CommFailed) {
      Problem("the link is still down after a clean stretch (" + weather + ")");
    } else if (s.Value_Unsafe != (sky_ != 0 || rain_ == 2)) {
      Problem(std::string(s.Value_Unsafe ? "UNSAFE" : "SAFE") + " under " + weather + ": cloud " +
              std::to_string(s.NBX_CloudCondition) + " rain " + std::to_string(s.NBX_RainCondition) + " sky " +
              std::to_string(s.Value_Cloud));
    }
  }

  std::string Garbage(int length) {
    std::string bytes;
    for (int i = 0; i < length; ++i)
      bytes += random_.Chance(0.1) ? '!' : static_cast<char>(random_.Between(0, 255));
    return bytes;
  }

  // A fault that holds for up to `most` periods.
  template <typename T>
  void For(T& fault, T on, int most) {
    fault = on;
    RunPeriods(random_.Between(1, most));
    fault = T{};
  }

  int PeriodMs() const { return st.nm.config.RefreshPeriod * 1000; }
  int SilentFromNow() const { return static_cast<int>(st.box.CommandCount()) + 1; }

  // What can go wrong on a site, one at a time.
  boxsim::Faults& f_ = st.box.faults;

 public:
  const std::vector<FaultKind> faults{
      // Fewer failed commands than the limit.
      {"short silence",
       [this] {
         f_.silentFromCommand = SilentFromNow();
         st.time.RunFor(random_.Between(1000, PeriodMs()));
         f_.silentFromCommand = 0;
       }},
      {"long silence",
       [this] {
         f_.silentFromCommand = SilentFromNow();
         RunPeriods(random_.Between(3, 60));
         f_.silentFromCommand = 0;
       }},
      {"garbage storm", [this] { For(f_.garbageBefore, Garbage(random_.Between(1, 300)), 20); }},
      {"garbage between", [this] { For(f_.garbageBetween, Garbage(random_.Between(1, 30)), 20); }},
      {"damaged numbers", [this] { For(f_.damagedNumbers, true, 20); }},
      {"sky sentinel", [this] { For(f_.skySentinel, true, 20); }},
      {"every other", [this] { For(f_.answerEveryOther, true, 20); }},
      {"unplugged",
       [this] {
         st.link.Unplug();
         st.box.DropPartialCommand();
         RunPeriods(random_.Between(1, 30));
         st.link.PlugIn();
       }},
      {"folder gone",
       [this] {
         // What the file held is checked before it goes with its folder.
         for (const std::string& p : CheckDataFile()) Problem("before the folder went: " + p);
         std::error_code error;
         fs::remove_all(out, error);
         linesDue_ = 0;
         RunPeriods(random_.Between(1, 20));
         fs::create_directories(out, error);
       }},
      {"humidity lost",
       [this] {
         st.box.readings.humidityFitted = false;
         RunPeriods(random_.Between(5, 30));
         st.box.readings.humidityFitted = true;
       }},
      {"restart",
       [this] {
         StopMidCycle();
         st.time.RunFor(random_.Between(1000, 120000));
         StartAction(st.nm);
       }},
  };

  Seeded random_;
  int sky_ = 0, rain_ = 0;  // clear, cloudy, overcast; dry, wet, raining
  bool lastVerdict_ = false;
  std::int64_t linesDue_ = 0;
  std::string lastDue_;
  struct {
    LocalDateTime at;
    bool unsafe = false;
    double lastReading = 0;
  } lastWritten_;
  std::map<int, std::string> filesAtStart_;
};

TEST(MonthSoak, AMonthOfWeatherAndFaultsLosesNoLineAndHoldsNothing) {
  const std::int64_t cycles = FromEnvironment("NBX_SOAK_CYCLES", kDefaultCycles);
  const auto seed = static_cast<std::uint64_t>(FromEnvironment("NBX_SOAK_SEED", 20261121));
  std::printf("soak: %lld cycles, seed %llu (NBX_SOAK_CYCLES, NBX_SOAK_SEED)\n", static_cast<long long>(cycles),
              static_cast<unsigned long long>(seed));
  // A month of rewrites goes to a RAM disk when the machine has one, so that
  // the soak weighs the program and not the disk's journal.
  if (::access("/dev/shm", W_OK) == 0) ::setenv("TMPDIR", "/dev/shm", 1);

  MonthSoak soak(seed);
  ASSERT_FALSE(soak.st.files.path().empty());
  soak.Start();
  std::int64_t residentWarm = -1;
  while (soak.processed < cycles) {
    soak.RunEpisode();
    // Warm: every ring full, every file opened, every path taken once.
    if (residentWarm < 0 && soak.processed >= cycles / 10) residentWarm = ResidentKiB();
  }
  soak.Calm();
  std::printf("soak: %lld cycles, %lld good, %lld verdict changes; resident %lld KiB warm, %lld KiB at the end\n",
              static_cast<long long>(soak.processed), static_cast<long long>(soak.good),
              static_cast<long long>(soak.verdictChanges), static_cast<long long>(residentWarm),
              static_cast<long long>(ResidentKiB()));

  for (const std::string& problem : soak.problems) ADD_FAILURE() << problem;
  soak.problems.clear();
  EXPECT_GE(soak.processed, cycles);
  for (std::size_t kind = 0; kind < soak.faults.size(); ++kind)
    EXPECT_GE(soak.faultsInjected[static_cast<int>(kind)], cycles >= 100'000 ? 50 : 1) << soak.faults[kind].name;
  EXPECT_GT(soak.good, soak.processed * 8 / 10);
  EXPECT_GT(soak.verdictChanges, cycles / 2000);

  for (const std::string& wrong : soak.CheckDataFile()) ADD_FAILURE() << wrong;
  EXPECT_GT(soak.linesChecked, cycles / 2);
  for (const std::string& wrong : soak.CheckFixedFiles()) ADD_FAILURE() << wrong;
#ifndef NBX_SOAK_SANITIZED
  EXPECT_LE(ResidentKiB() - residentWarm, 4 * 1024) << "KiB grown after warm-up";
#endif

  // Stopped mid-cycle: of the files only the recording stays open until it stops.
  soak.StopMidCycle();
  for (const std::string& problem : soak.problems) ADD_FAILURE() << problem;
  for (const std::string& wrong : soak.CheckFixedFiles()) ADD_FAILURE() << "after Stop: " << wrong;
  EXPECT_TRUE(soak.StrayDescriptors().empty());
  Record_Stop(soak.st.nm);
  const auto files = OpenFiles();
  EXPECT_TRUE(std::none_of(files.begin(), files.end(), [&](const auto& f) { return f.second == soak.csv; }))
      << "the recording file is still open after Record_Stop";
}

}  // namespace
}  // namespace nbx::test
