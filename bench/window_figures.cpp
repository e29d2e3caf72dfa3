// The station with its window against the headless station, in the same run
// on the same machine: CPU time per cycle and resident memory as the cycles
// go by.
//
//   window_figures [cycles] [period]     default 1000 cycles, 1 s apart
//
// Both programs run `--simulate` with the same settings (recording with
// debug lines, single-line, JSON and transfer files, pictures every sixth
// cycle) in fresh folders of their own; the window mode runs offscreen with
// its window shown. The headless station's cycles are its summary lines; the
// window's are the lines its user data file gains.

#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

namespace {

long ResidentKiB(pid_t pid) {
  std::ifstream status("/proc/" + std::to_string(pid) + "/status");
  for (std::string line; std::getline(status, line);)
    if (line.rfind("VmRSS:", 0) == 0) return std::atol(line.c_str() + 6);
  return -1;
}

double CpuSeconds(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text((std::istreambuf_iterator<char>(stat)), std::istreambuf_iterator<char>());
  const std::size_t close = text.rfind(')');
  if (close == std::string::npos) return -1;
  std::istringstream fields(text.substr(close + 2));
  std::string skip;
  for (int i = 0; i < 11; ++i) fields >> skip;
  long utime = 0, stime = 0;
  fields >> utime >> stime;
  return static_cast<double>(utime + stime) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

std::string Settings(const std::string& folder, int period) {
  return "[Communication]\nRefreshPeriod=" + std::to_string(period) + "\n[Window]\nPathName=" + folder +
         "\nFileName=night\nAutoStartRecording=1\nDebug=0\nGraphImagePath=" + folder +
         "/pictures\n[COMMFile]\nNetFilePath=" + folder + "\nPathNameCCDAP4=" + folder + "\n";
}

std::string Folder(const char* kind) {
  std::string pattern = (std::filesystem::temp_directory_path() / (std::string("nbx-") + kind + "-XXXXXX")).string();
  return ::mkdtemp(pattern.data()) ? pattern : std::string();
}

pid_t Spawn(const std::string& folder, bool window, int& output) {
  int pipeFds[2];
  if (::pipe(pipeFds) != 0) return -1;
  const pid_t pid = ::fork();
  if (pid == 0) {
    ::dup2(pipeFds[1], 1);
    ::close(pipeFds[0]);
    ::setenv("HOME", folder.c_str(), 1);
    ::setenv("XDG_CONFIG_HOME", (folder + "/config").c_str(), 1);
    if (window) ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    const std::string settings = folder + "/station.ini";
    if (window)
      ::execl(NBX_NIMBOMETER_PATH, NBX_NIMBOMETER_PATH, "--simulate", "--settings", settings.c_str(),
              static_cast<char*>(nullptr));
    else
      ::execl(NBX_NIMBOMETER_PATH, NBX_NIMBOMETER_PATH, "--headless", "--simulate", "--settings",
              settings.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::close(pipeFds[1]);
  output = pipeFds[0];
  return pid;
}

// Lines in the user data files of a folder.
long DataLines(const std::string& folder) {
  long lines = 0;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
    if (entry.path().extension() != ".csv") continue;
    std::ifstream file(entry.path());
    for (std::string line; std::getline(file, line);) ++lines;
  }
  return lines;
}

// Counts the summary lines that arrived; the rest of the output is dropped.
int NewCycles(int fd, std::string& buffer) {
  int cycles = 0;
  pollfd ready{fd, POLLIN, 0};
  while (::poll(&ready, 1, 0) > 0 && (ready.revents & POLLIN)) {
    char chunk[4096];
    const ssize_t n = ::read(fd, chunk, sizeof chunk);
    if (n <= 0) break;
    buffer.append(chunk, static_cast<std::size_t>(n));
  }
  for (std::size_t end; (end = buffer.find('\n')) != std::string::npos; buffer.erase(0, end + 1))
    if (buffer.compare(0, end, " sky ") != 0 && buffer.substr(0, end).find(" sky ") != std::string::npos) ++cycles;
  return cycles;
}

}  // namespace

int main(int argc, char* argv[]) {
  const int wanted = argc > 1 ? std::atoi(argv[1]) : 1000;
  const int period = argc > 2 ? std::atoi(argv[2]) : 1;
  const std::string headlessFolder = Folder("headless"), windowFolder = Folder("window");
  if (headlessFolder.empty() || windowFolder.empty()) return 1;
  std::ofstream(headlessFolder + "/station.ini") << Settings(headlessFolder, period);
  std::ofstream(windowFolder + "/station.ini") << Settings(windowFolder, period);
  int headlessOut = -1, windowOut = -1;
  const pid_t headless = Spawn(headlessFolder, false, headlessOut);
  const pid_t window = Spawn(windowFolder, true, windowOut);
  if (headless < 0 || window < 0) return 1;

  std::printf("period %d s, %d cycles\n", period, wanted);
  const std::set<int> samples{1, 10, 100, 250, 500, 750, 1000, wanted};
  std::string headlessBuffer, windowBuffer;
  int headlessCycles = 0;
  long windowFirst = -1;
  double headlessCpuFirst = 0, windowCpuFirst = 0;
  long windowCyclesAtFirst = 0;
  while (headlessCycles < wanted) {
    ::usleep(200000);
    NewCycles(windowOut, windowBuffer);
    windowBuffer.clear();
    const int arrived = NewCycles(headlessOut, headlessBuffer);
    if (::waitpid(headless, nullptr, WNOHANG) != 0 || ::waitpid(window, nullptr, WNOHANG) != 0) break;
    for (int i = 0; i < arrived; ++i) {
      ++headlessCycles;
      const long lines = DataLines(windowFolder);
      if (headlessCycles == 1) {
        headlessCpuFirst = CpuSeconds(headless);
        windowCpuFirst = CpuSeconds(window);
        windowFirst = lines;
      }
      if (samples.count(headlessCycles) != 0) {
        std::printf("cycle %5d  headless: resident %6ld KiB cpu %7.2f s | window: %ld cycles, resident %6ld KiB cpu %7.2f s\n",
                    headlessCycles, ResidentKiB(headless), CpuSeconds(headless), lines - windowFirst + 1,
                    ResidentKiB(window), CpuSeconds(window));
        std::fflush(stdout);
      }
      windowCyclesAtFirst = lines - windowFirst;
    }
  }
  if (headlessCycles > 1 && windowCyclesAtFirst > 0) {
    std::printf("cpu per cycle after the first: headless %.2f ms, window %.2f ms\n",
                (CpuSeconds(headless) - headlessCpuFirst) * 1000.0 / (headlessCycles - 1),
                (CpuSeconds(window) - windowCpuFirst) * 1000.0 / static_cast<double>(windowCyclesAtFirst));
  }
  ::kill(headless, SIGTERM);
  ::kill(window, SIGTERM);
  ::waitpid(headless, nullptr, 0);
  ::waitpid(window, nullptr, 0);
  std::error_code error;
  std::filesystem::remove_all(headlessFolder, error);
  std::filesystem::remove_all(windowFolder, error);
  return headlessCycles == wanted ? 0 : 1;
}
