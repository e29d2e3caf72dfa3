#include "month_soak.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include <unistd.h>

#include <fstream>

#include "outputs/user_data_file.h"

#if defined(__SANITIZE_ADDRESS__)
#define NBX_SOAK_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define NBX_SOAK_SANITIZED 1
#endif
#endif

namespace nbx::test {
namespace {

// A month at the default period of 10 s is 259,200 cycles: the optimised
// build (CI's plain run) soaks a month. Unoptimised builds are several times
// slower a cycle, the sanitizers more so: they soak a few days unless
// NBX_SOAK_CYCLES says otherwise.
#ifdef NBX_SOAK_SANITIZED
constexpr std::int64_t kDefaultCycles = 15'000;
constexpr bool kSanitized = true;
#elif defined(__OPTIMIZE__)
constexpr std::int64_t kDefaultCycles = 260'000;
constexpr bool kSanitized = false;
#else
constexpr std::int64_t kDefaultCycles = 50'000;
constexpr bool kSanitized = false;
#endif

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

// The fault mix of a long run: every kind, many times.
void ExpectEveryFault(const MonthSoak& soak, int atLeast) {
  for (int kind = 1; kind < kFaultKinds; ++kind) {
    const auto found = soak.faultsInjected.find(FaultName(static_cast<Fault>(kind)));
    const int count = found == soak.faultsInjected.end() ? 0 : found->second;
    EXPECT_GE(count, atLeast) << FaultName(static_cast<Fault>(kind));
  }
}

TEST(MonthSoak, AMonthOfWeatherAndFaultsLosesNoLineAndHoldsNothing) {
  const std::int64_t cycles = FromEnvironment("NBX_SOAK_CYCLES", kDefaultCycles);
  const auto seed = static_cast<std::uint64_t>(FromEnvironment("NBX_SOAK_SEED", 20261121));
  std::printf("soak: %lld cycles, seed %llu (NBX_SOAK_CYCLES, NBX_SOAK_SEED)\n",
              static_cast<long long>(cycles), static_cast<unsigned long long>(seed));

  MonthSoak soak(seed);
  ASSERT_FALSE(soak.folder.path().empty());
  soak.Start();
  std::int64_t residentWarm = -1;
  while (soak.processed < cycles) {
    soak.RunEpisode();
    // Warm: every ring full, every file opened, every path taken once.
    if (residentWarm < 0 && soak.processed >= cycles / 10) residentWarm = ResidentKiB();
  }
  soak.Calm();

  std::string faults;
  for (const auto& [name, count] : soak.faultsInjected)
    faults += " " + name + " " + std::to_string(count) + ",";
  std::printf("soak: %lld cycles processed, %lld good, %lld verdict changes, %lld verdicts judged;%s\n",
              static_cast<long long>(soak.processed), static_cast<long long>(soak.good),
              static_cast<long long>(soak.verdictChanges), static_cast<long long>(soak.verdictChecks),
              faults.c_str());
  std::printf("soak: resident %lld KiB after warm-up, %lld KiB at the end\n",
              static_cast<long long>(residentWarm), static_cast<long long>(ResidentKiB()));

  // Each cycle, each episode and each Stop was checked as it came.
  for (const std::string& problem : soak.problems) ADD_FAILURE() << problem;
  soak.problems.clear();
  EXPECT_GE(soak.processed, cycles);
  ExpectEveryFault(soak, cycles >= 100'000 ? 50 : 1);
  EXPECT_GT(soak.good, soak.processed * 8 / 10);
  EXPECT_GT(soak.verdictChanges, cycles / 2000);

  // Every cycle since the folder last came back has its line, and every
  // change of the verdict its debug line; the fixed files hold the last cycle.
  for (const std::string& problem : soak.ledger.Check(soak.csv)) ADD_FAILURE() << problem;
  EXPECT_GT(soak.ledger.linesChecked, cycles / 2);
  for (const std::string& wrong : soak.CheckFixedFiles()) ADD_FAILURE() << wrong;

  // No memory kept per cycle (under the sanitizers the leak checker at exit
  // stands in: they hold freed memory back).
  if (kSanitized) {
    std::printf("soak: resident memory not judged: the sanitizer holds freed memory back\n");
  } else {
    EXPECT_LE(ResidentKiB() - residentWarm, 4 * 1024) << "KiB grown after warm-up";
  }

  // Stopped mid-cycle: the resting heater goes out last, no timer stays
  // armed, and of the files only the recording stays open until it stops.
  soak.StopMidCycle();
  for (const std::string& problem : soak.problems) ADD_FAILURE() << problem;
  for (const std::string& wrong : soak.CheckFixedFiles()) ADD_FAILURE() << "after Stop: " << wrong;
  EXPECT_TRUE(soak.StrayDescriptors().empty());
  Record_Stop(soak.st.nm);
  EXPECT_FALSE(soak.CsvOpen()) << "the recording file is still open after Record_Stop";
}

}  // namespace
}  // namespace nbx::test
