// The headless station as a site runs it, measured from outside: the time
// from starting the program to its first verdict, and its resident memory and
// CPU time as the cycles go by.
//
//   headless_figures [cycles] [period]     default 1000 cycles, 1 s apart
//
// It runs `nimbometer --headless --simulate` with a settings file of its own
// (recording with debug lines, single-line, JSON and transfer files, the
// seven pictures every sixth cycle) in a fresh temporary folder, reads the
// program's output, and samples /proc/<pid> at the cycles 1, 10, 100, 250,
// 500, 750 and 1000 (and the last).

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

double SecondsSince(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// VmRSS and VmHWM of a process, in KiB.
std::pair<long, long> ResidentKiB(pid_t pid) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  long rss = -1, peak = -1;
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) rss = std::atol(line.c_str() + 6);
    if (line.rfind("VmHWM:", 0) == 0) peak = std::atol(line.c_str() + 6);
  }
  return {rss, peak};
}

// User and system CPU seconds of a process so far.
double CpuSeconds(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  const std::size_t close = text.rfind(')');
  if (close == std::string::npos) return -1;
  std::istringstream fields(text.substr(close + 2));
  std::string skip;
  for (int i = 0; i < 11; ++i) fields >> skip;  // state .. cmajflt
  long utime = 0, stime = 0;
  fields >> utime >> stime;
  return static_cast<double>(utime + stime) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

std::string Settings(const std::string& folder, int period) {
  return "[Communication]\nRefreshPeriod=" + std::to_string(period) + "\n[Window]\nPathName=" + folder +
         "\nFileName=night\nAutoStartRecording=1\nDebug=1\n"
         "GraphImagePath=" +
         folder +
         "/pictures\n"
         "[COMMFile]\nNetFilePath=" +
         folder + "\nPathNameCCDAP4=" + folder + "\n";
}

pid_t Spawn(const std::string& folder, int& output) {
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return -1;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(pipeFds[1], 1);
    ::close(pipeFds[0]);
    ::setenv("HOME", folder.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
    const std::string settings = folder + "/station.ini";
    ::execl(NBX_NIMBOMETER_PATH, NBX_NIMBOMETER_PATH, "--headless", "--simulate", "--settings",
            settings.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(pipeFds[1]);
  output = pipeFds[0];
  return pid;
}

// The next line of the program's output, or false at its end.
bool ReadLine(int fd, std::string& buffer, std::string& line) {
  for (;;) {
    const std::size_t end = buffer.find('\n');
    if (end != std::string::npos) {
      line = buffer.substr(0, end);
      buffer.erase(0, end + 1);
      return true;
    }
    char chunk[4096];
    const ssize_t n = ::read(fd, chunk, sizeof chunk);
    if (n <= 0) return false;
    buffer.append(chunk, static_cast<std::size_t>(n));
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  const int wanted = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int period = argc > 2 ? std::atoi(argv[2]) : 1;
  std::string pattern = (std::filesystem::temp_directory_path() / "nbx-headless-figures-XXXXXX").string();
  if (::mkdtemp(pattern.data()) == nullptr) return 1;
  const std::string folder = pattern;
  std::ofstream(folder + "/station.ini") << Settings(folder, period);

  const Clock::time_point start = Clock::now();
  int output = -1;
  const pid_t pid = Spawn(folder, output);
  if (pid < 0) return 1;

  const std::set<int> samples{1, 10, 100, 250, 500, 750, 1000, wanted};
  std::string buffer, line;
  int cycles = 0;
  bool verdictSeen = false;
  double boxSeconds = -1, cpuAtFirst = 0;
  std::printf("period %d s, %d cycles, folder %s\n", period, wanted, folder.c_str());
  while (cycles < wanted && ReadLine(output, buffer, line)) {
    if (boxSeconds < 0 && line.rfind("Simulated box on", 0) == 0) boxSeconds = SecondsSince(start);
    if (!verdictSeen && line.find("Just started, setting") != std::string::npos) {
      verdictSeen = true;
      std::printf("start-up to the first verdict: %.3f s (simulated box up after %.3f s): %s\n",
                  SecondsSince(start), boxSeconds, line.c_str());
    }
    if (line.find(" sky ") == std::string::npos) continue;
    ++cycles;
    if (cycles == 1) cpuAtFirst = CpuSeconds(pid);
    if (samples.count(cycles) != 0) {
      const auto [rss, peak] = ResidentKiB(pid);
      std::printf("cycle %5d  %8.1f s  resident %6ld KiB  peak %6ld KiB  cpu %7.2f s\n", cycles,
                  SecondsSince(start), rss, peak, CpuSeconds(pid));
      std::fflush(stdout);
    }
  }
  const double cpuAtEnd = CpuSeconds(pid);
  if (cycles > 1)
    std::printf("cpu per cycle after the first: %.2f ms\n", (cpuAtEnd - cpuAtFirst) * 1000.0 / (cycles - 1));
  ::kill(pid, SIGTERM);
  int status = 0;
  ::waitpid(pid, &status, 0);
  std::printf("ended with %d after SIGTERM\n", WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status));
  std::error_code error;
  std::filesystem::remove_all(folder, error);
  return cycles == wanted ? 0 : 1;
}
