// nbx-boxsim: the simulated sensor box on a pseudo-terminal.

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "boxsim/assignments.h"
#include "boxsim/box.h"
#include "boxsim/box_port.h"
#include "boxsim/command_line.h"
#include "boxsim/port_link.h"
#include "boxsim/script.h"

namespace nbx::boxsim {
namespace {

// SIGINT and SIGTERM write a byte here, so that poll wakes and the loop ends
// cleanly however the signal fell between two polls.
int signalPipe[2] = {-1, -1};

void OnQuitSignal(int) {
  const char byte = 0;
  [[maybe_unused]] const ssize_t ignored = ::write(signalPipe[1], &byte, 1);
}

bool InstallSignals() {
  if (::pipe(signalPipe) != 0) return false;
  for (const int fd : signalPipe) {
    ::fcntl(fd, F_SETFL, O_NONBLOCK);
    ::fcntl(fd, F_SETFD, FD_CLOEXEC);
  }
  struct sigaction action {};
  action.sa_handler = OnQuitSignal;
  ::sigemptyset(&action.sa_mask);
  ::sigaction(SIGINT, &action, nullptr);
  ::sigaction(SIGTERM, &action, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  return true;
}

double MonotonicSeconds() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9;
}

void SayLine(const std::string& line) {
  std::fputs((line + "\n").c_str(), stdout);
  std::fflush(stdout);
}

// A command may hold any byte; the log keeps one command a line.
std::string LogText(const std::string& command) {
  std::string text;
  for (const unsigned char c : command) {
    if (c >= 0x20 && c < 0x7f && c != '\\') {
      text += static_cast<char>(c);
    } else {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\x%02X", c);
      text += escaped;
    }
  }
  return text;
}

bool ReadFile(const std::string& path, std::string& text) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return false;
  std::ostringstream content;
  content << file.rdbuf();
  text = content.str();
  return true;
}

class Program {
 public:
  int Run(const std::vector<std::string>& arguments);

 private:
  bool Configure(const std::vector<std::string>& arguments, int& exitCode);
  bool ShowPort();
  void Vanish();
  void ReadControlInput();
  void HandleControlLine(std::string line);
  void LogNewCommands();
  int PollTimeoutMs(double now) const;
  void Finish();

  Box box_;
  BoxPort port_{box_};
  ProgramOptions options_;
  std::FILE* log_ = nullptr;
  std::string controlInput_;
  bool controlOpen_ = true;
  bool quit_ = false;
  double start_ = MonotonicSeconds();
};

bool Program::Configure(const std::vector<std::string>& arguments, int& exitCode) {
  std::string why;
  if (!ParseCommandLine(arguments, options_, box_, why)) {
    std::fprintf(stderr, "nbx-boxsim: %s (see --help)\n", why.c_str());
    exitCode = 2;
    return false;
  }
  if (options_.help || options_.version) {
    std::fputs(options_.help ? HelpText().c_str() : (std::string(ProgramVersion) + "\n").c_str(), stdout);
    exitCode = 0;
    return false;
  }
  if (!options_.scriptPath.empty()) {
    std::string script;
    if (!ReadFile(options_.scriptPath, script)) {
      std::fprintf(stderr, "nbx-boxsim: cannot read script %s\n", options_.scriptPath.c_str());
      exitCode = 2;
      return false;
    }
    if (!LoadScript(script, box_, why)) {
      std::fprintf(stderr, "nbx-boxsim: script %s: %s\n", options_.scriptPath.c_str(), why.c_str());
      exitCode = 2;
      return false;
    }
  }
  if (!options_.logPath.empty()) {
    log_ = std::fopen(options_.logPath.c_str(), "w");
    if (log_ == nullptr) {
      std::fprintf(stderr, "nbx-boxsim: cannot write log %s\n", options_.logPath.c_str());
      exitCode = 1;
      return false;
    }
  }
  return true;
}

// The link is in place before the PTY line appears, so a reader of the line
// may use either.
bool Program::ShowPort() {
  std::string why;
  if (!port_.Open(why)) {
    std::fprintf(stderr, "nbx-boxsim: no pseudo-terminal: %s\n", why.c_str());
    return false;
  }
  if (!options_.linkPath.empty() && !PointLink(options_.linkPath, port_.SlavePath(), why)) {
    std::fprintf(stderr, "nbx-boxsim: %s\n", why.c_str());
  }
  SayLine("PTY " + port_.SlavePath());
  return true;
}

void Program::Vanish() {
  RemoveLinkTo(options_.linkPath, port_.SlavePath());
  port_.Close();
}

void Program::HandleControlLine(std::string line) {
  while (!line.empty() && (line.back() == '\r' || line.back() == ' ' || line.back() == '\t')) line.pop_back();
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string::npos) return;
  line.erase(0, first);

  if (line == "quit") {
    quit_ = true;
  } else if (line == "vanish") {
    if (!port_.IsOpen()) {
      SayLine("ERR the port is already gone");
      return;
    }
    Vanish();
    SayLine("OK");
  } else if (line == "return") {
    Vanish();
    if (!ShowPort()) SayLine("ERR no pseudo-terminal");
  } else {
    std::string why;
    SayLine(ApplyAll(line, box_, why) ? "OK" : "ERR " + why);
  }
}

void Program::ReadControlInput() {
  char buffer[4096];
  const ssize_t count = ::read(STDIN_FILENO, buffer, sizeof buffer);
  if (count < 0 && (errno == EINTR || errno == EAGAIN)) return;
  if (count <= 0) {
    // Whoever started the box may close its input; the box stays on the line.
    controlOpen_ = false;
    return;
  }
  controlInput_.append(buffer, static_cast<std::size_t>(count));
  for (std::size_t end; !quit_ && (end = controlInput_.find('\n')) != std::string::npos;) {
    std::string line = controlInput_.substr(0, end);
    controlInput_.erase(0, end + 1);
    HandleControlLine(std::move(line));
  }
}

// Logged commands are forgotten: a box left running for a month keeps none.
void Program::LogNewCommands() {
  if (box_.Commands().empty()) return;
  if (log_ != nullptr) {
    for (const std::string& command : box_.Commands()) std::fputs((LogText(command) + "\n").c_str(), log_);
    std::fflush(log_);
  }
  box_.ForgetCommands();
}

int Program::PollTimeoutMs(double now) const {
  const std::optional<double> wake = port_.NextWakeSeconds(now);
  if (!wake) return -1;
  return static_cast<int>(std::ceil(std::max(0.0, *wake - now) * 1000));
}

void Program::Finish() {
  Vanish();
  if (log_ != nullptr) std::fclose(log_);
}

int Program::Run(const std::vector<std::string>& arguments) {
  int exitCode = 0;
  if (!Configure(arguments, exitCode)) return exitCode;
  if (!InstallSignals()) {
    std::fprintf(stderr, "nbx-boxsim: cannot set up signal handling\n");
    return 1;
  }
  if (!ShowPort()) return 1;

  while (!quit_) {
    const double now = MonotonicSeconds() - start_;
    pollfd fds[3];
    nfds_t count = 0;
    fds[count++] = pollfd{signalPipe[0], POLLIN, 0};
    const nfds_t controlIndex = count;
    if (controlOpen_) fds[count++] = pollfd{STDIN_FILENO, POLLIN, 0};
    if (port_.WantsInput(now)) fds[count++] = pollfd{port_.MasterFd(), POLLIN, 0};

    if (::poll(fds, count, PollTimeoutMs(now)) < 0 && errno != EINTR) break;
    if (fds[0].revents != 0) break;
    if (controlOpen_ && fds[controlIndex].revents != 0) ReadControlInput();
    if (quit_) break;
    port_.Service(MonotonicSeconds() - start_);
    LogNewCommands();
  }
  Finish();
  return 0;
}

}  // namespace
}  // namespace nbx::boxsim

int main(int argc, char** argv) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  nbx::boxsim::Program program;
  return program.Run(arguments);
}
