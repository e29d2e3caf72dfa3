#include "support/child_process.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <poll.h>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace nbx::test {

ChildProcess::ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
                           const std::vector<std::string>& environment) {
  int toChild[2], fromChild[2];
  if (pipe(toChild) != 0 || pipe(fromChild) != 0) return;
  pid_ = fork();
  if (pid_ == 0) {
    dup2(toChild[0], 0);
    dup2(fromChild[1], 1);
    close(toChild[1]);
    close(fromChild[0]);
    for (const std::string& e : environment) putenv(const_cast<char*>(e.c_str()));
    std::vector<char*> argv{const_cast<char*>(program.c_str())};
    for (const std::string& a : arguments) argv.push_back(const_cast<char*>(a.c_str()));
    argv.push_back(nullptr);
    execv(program.c_str(), argv.data());
    _exit(127);
  }
  close(toChild[0]);
  close(fromChild[1]);
  in_ = toChild[1];
  out_ = fromChild[0];
}

ChildProcess::~ChildProcess() {
  if (Running()) {
    Signal(SIGKILL);
    Wait(std::chrono::milliseconds(2000));
  }
  if (in_ >= 0) close(in_);
  if (out_ >= 0) close(out_);
}

bool ChildProcess::ReadLine(std::string& line, std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  for (;;) {
    const std::size_t end = buffer_.find('\n');
    if (end != std::string::npos) {
      line = buffer_.substr(0, end);
      buffer_.erase(0, end + 1);
      return true;
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
        deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0 || out_ < 0) return false;
    pollfd p{out_, POLLIN, 0};
    if (poll(&p, 1, static_cast<int>(left.count())) <= 0) continue;
    char chunk[4096];
    const ssize_t n = read(out_, chunk, sizeof chunk);
    if (n <= 0) {
      if (n < 0 && errno == EINTR) continue;
      return false;
    }
    buffer_.append(chunk, static_cast<std::size_t>(n));
  }
}

void ChildProcess::WriteLine(const std::string& line) {
  const std::string text = line + "\n";
  (void)!write(in_, text.data(), text.size());
}

void ChildProcess::Signal(int signal) {
  if (pid_ > 0 && !reaped_) kill(pid_, signal);
}

int ChildProcess::Wait(std::chrono::milliseconds timeout) {
  const auto deadline = std::chrono::steady_clock::now() + timeout;
  while (!reaped_) {
    if (waitpid(pid_, &status_, WNOHANG) == pid_) {
      reaped_ = true;
      break;
    }
    if (std::chrono::steady_clock::now() > deadline) return -1;
    usleep(10000);
  }
  return WIFEXITED(status_) ? WEXITSTATUS(status_) : 128 + WTERMSIG(status_);
}

bool ChildProcess::Running() {
  if (pid_ <= 0 || reaped_) return false;
  if (waitpid(pid_, &status_, WNOHANG) == pid_) reaped_ = true;
  return !reaped_;
}

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "nbx-test-XXXXXX").string();
  path_ = mkdtemp(pattern.data()) ? pattern : std::string();
}

TempDir::~TempDir() {
  std::error_code ec;
  if (!path_.empty()) std::filesystem::remove_all(path_, ec);
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream s;
  s << in.rdbuf();
  return s.str();
}

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

}  // namespace nbx::test
