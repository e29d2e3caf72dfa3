// The Alpaca server under load, on loopback: many clients at once for a few
// seconds against `nimbometer --headless --simulate`, each in turn reading
// issafe and making a full ObservingConditions poll, a new connection for
// every request. Prints the latency percentiles, the errors, and the longest
// gap between two cycles while the load lasted (the beat must hold).
//
//   alpaca_load [clients] [seconds]     default 16 clients, 5 s

#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "alpaca_client.h"

namespace {

using Clock = std::chrono::steady_clock;
using nbx::test::Http;

const char* const PollMembers[] = {"temperature", "dewpoint",   "humidity",       "pressure",
                                   "windspeed",   "windgust",   "skytemperature", "rainrate",
                                   "averageperiod", "timesincelastupdate"};

double Ms(Clock::duration d) { return std::chrono::duration<double, std::milli>(d).count(); }

struct Results {
  std::mutex lock;
  std::vector<double> isSafeMs, pollMs;
  std::atomic<long> errors{0}, requests{0};
};

bool Good(const nbx::test::HttpReply& r) { return r.status == 200 && r.json["ErrorNumber"].toInt(-1) == 0; }

void Client(int port, Clock::time_point end, Results& results) {
  std::vector<double> safe, poll;
  while (Clock::now() < end) {
    auto start = Clock::now();
    if (!Good(Http(port, "GET", "/api/v1/safetymonitor/0/issafe?ClientID=1&ClientTransactionID=1"))) ++results.errors;
    safe.push_back(Ms(Clock::now() - start));
    start = Clock::now();
    for (const char* member : PollMembers)
      if (!Good(Http(port, "GET", std::string("/api/v1/observingconditions/0/") + member))) ++results.errors;
    poll.push_back(Ms(Clock::now() - start));
    results.requests += 11;
  }
  std::lock_guard<std::mutex> hold(results.lock);
  results.isSafeMs.insert(results.isSafeMs.end(), safe.begin(), safe.end());
  results.pollMs.insert(results.pollMs.end(), poll.begin(), poll.end());
}

double Percentile(std::vector<double> v, double p) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  return v[std::min(v.size() - 1, static_cast<std::size_t>(p * static_cast<double>(v.size())))];
}

}  // namespace

int main(int argc, char** argv) {
  const int clients = argc > 1 ? std::atoi(argv[1]) : 16;
  const int seconds = argc > 2 ? std::atoi(argv[2]) : 5;
  const int port = nbx::test::FreePort(SOCK_STREAM);
  const std::filesystem::path dir = std::filesystem::temp_directory_path() / ("alpaca_load." + std::to_string(getpid()));
  std::filesystem::create_directories(dir);
  const std::string ini = (dir / "station.ini").string();
  std::ofstream(ini) << "[Communication]\nRefreshPeriod=1\n[Alpaca]\nPort=" << port
                     << "\nDiscovery=0\n[Window]\nPathName=" << dir.string() << "\n";

  int out[2];
  if (pipe(out) != 0) return 1;
  const pid_t pid = fork();
  if (pid == 0) {
    dup2(out[1], 1);
    close(out[0]);
    execl(NBX_NIMBOMETER_PATH, NBX_NIMBOMETER_PATH, "--headless", "--simulate", "--settings", ini.c_str(),
          static_cast<char*>(nullptr));
    _exit(127);
  }
  close(out[1]);

  // The cycles' summary lines, timed as they arrive.
  std::vector<Clock::time_point> cycles;
  std::mutex cyclesLock;
  std::thread reader([&] {
    std::string pending;
    char chunk[4096];
    for (ssize_t n; (n = read(out[0], chunk, sizeof chunk)) > 0;) {
      pending.append(chunk, static_cast<std::size_t>(n));
      for (std::size_t eol; (eol = pending.find('\n')) != std::string::npos; pending.erase(0, eol + 1))
        if (pending.find(" sky ") < eol) {
          std::lock_guard<std::mutex> hold(cyclesLock);
          cycles.push_back(Clock::now());
        }
    }
  });
  for (int i = 0; i < 100 && Http(port, "GET", "/management/apiversions").status != 200; ++i)
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  for (const char* device : {"safetymonitor", "observingconditions"})
    Http(port, "PUT", std::string("/api/v1/") + device + "/0/connected", "Connected=true");
  std::this_thread::sleep_for(std::chrono::seconds(2));  // good readings behind the values

  Results results;
  const Clock::time_point begin = Clock::now();
  const Clock::time_point end = begin + std::chrono::seconds(seconds);
  std::vector<std::thread> threads;
  for (int i = 0; i < clients; ++i) threads.emplace_back(Client, port, end, std::ref(results));
  for (std::thread& t : threads) t.join();
  const Clock::time_point finished = Clock::now();

  kill(pid, SIGTERM);
  waitpid(pid, nullptr, 0);
  reader.join();
  std::filesystem::remove_all(dir);

  double longestGap = 0;
  int cyclesDuringLoad = 0;
  for (std::size_t i = 1; i < cycles.size(); ++i)
    if (cycles[i] > begin && cycles[i - 1] < finished) {
      longestGap = std::max(longestGap, Ms(cycles[i] - cycles[i - 1]));
      ++cyclesDuringLoad;
    }
  std::printf("%d clients for %d s: %ld requests (%.0f a second), %ld errors\n", clients, seconds,
              results.requests.load(), static_cast<double>(results.requests) / Ms(finished - begin) * 1000,
              results.errors.load());
  std::printf("issafe:                 p50 %.2f ms  p99 %.2f ms  max %.2f ms  (%zu)\n",
              Percentile(results.isSafeMs, 0.5), Percentile(results.isSafeMs, 0.99),
              Percentile(results.isSafeMs, 1.0), results.isSafeMs.size());
  std::printf("full conditions poll:   p50 %.2f ms  p99 %.2f ms  max %.2f ms  (%zu, 10 requests each)\n",
              Percentile(results.pollMs, 0.5), Percentile(results.pollMs, 0.99), Percentile(results.pollMs, 1.0),
              results.pollMs.size());
  std::printf("cycles during the load: %d, longest gap between two %.0f ms (period 1000 ms)\n", cyclesDuringLoad,
              longestGap);
  return results.errors ? 1 : 0;
}
