#pragma once

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace nbx::test {

// A program run by a test, with its standard input and output on pipes.
class ChildProcess {
 public:
  ChildProcess(const std::string& program, const std::vector<std::string>& arguments,
               const std::vector<std::string>& environment = {});
  ~ChildProcess();
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  // The next line of standard output, or false when none came in time.
  bool ReadLine(std::string& line, std::chrono::milliseconds timeout);
  void WriteLine(const std::string& line);
  void Signal(int signal);
  // The exit code once the program has ended, or -1 when it did not end in time.
  int Wait(std::chrono::milliseconds timeout);
  bool Running();

 private:
  pid_t pid_ = -1;
  int in_ = -1;
  int out_ = -1;
  int status_ = -1;
  bool reaped_ = false;
  std::string buffer_;
};

// A fresh folder under the temporary directory, removed with its content.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  const std::string& path() const { return path_; }
  std::string File(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

std::string ReadFile(const std::string& path);
void WriteFile(const std::string& path, const std::string& content);

}  // namespace nbx::test
