#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "reply_frames.h"

namespace {

// Generous: only stops a broken program from hanging the test run.
constexpr int PatienceMs = 10000;

// nbx-boxsim as a child with pipes on its standard input and output.
class BoxProgram {
 public:
  explicit BoxProgram(std::vector<std::string> arguments) {
    int in[2];
    int out[2];
    if (::pipe(in) != 0 || ::pipe(out) != 0) return;
    pid_ = ::fork();
    if (pid_ == 0) {
      ::dup2(in[0], STDIN_FILENO);
      ::dup2(out[1], STDOUT_FILENO);
      ::close(in[1]);
      ::close(out[0]);
      std::vector<char*> argv{const_cast<char*>(NBX_BOXSIM_PATH)};
      for (std::string& argument : arguments) argv.push_back(argument.data());
      argv.push_back(nullptr);
      ::execv(NBX_BOXSIM_PATH, argv.data());
      ::_exit(127);
    }
    ::close(in[0]);
    ::close(out[1]);
    input_ = in[1];
    output_ = out[0];
  }
  ~BoxProgram() {
    if (pid_ > 0) {
      ::kill(pid_, SIGKILL);
      ::waitpid(pid_, nullptr, 0);
    }
    if (input_ >= 0) ::close(input_);
    if (output_ >= 0) ::close(output_);
  }

  void Say(const std::string& line) {
    const std::string text = line + "\n";
    ASSERT_EQ(::write(input_, text.data(), text.size()), ssize_t(text.size()));
  }

  std::string ReadLine() {
    std::string line;
    char c = 0;
    pollfd wait{output_, POLLIN, 0};
    while (::poll(&wait, 1, PatienceMs) > 0 && ::read(output_, &c, 1) == 1) {
      if (c == '\n') return line;
      line += c;
    }
    return line + "<no end of line>";
  }

  // The exit status after SIGTERM, or -1.
  int Terminate() {
    ::kill(pid_, SIGTERM);
    int status = 0;
    const pid_t done = ::waitpid(pid_, &status, 0);
    pid_ = -1;
    return done > 0 && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

 private:
  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
};

int OpenRawPort(const std::string& path) {
  const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY);
  if (fd < 0) return fd;
  termios settings{};
  ::tcgetattr(fd, &settings);
  ::cfmakeraw(&settings);
  ::tcsetattr(fd, TCSANOW, &settings);
  return fd;
}

// Writes a command and reads until the end-of-reply frame has come.
std::vector<std::string> Exchange(int fd, const std::string& command) {
  EXPECT_EQ(::write(fd, command.data(), command.size()), ssize_t(command.size()));
  std::string reply;
  char buffer[256];
  pollfd wait{fd, POLLIN, 0};
  const auto ended = [&reply] {
    return !reply.empty() && reply.size() % 15 == 0 && reply[reply.size() - 14] == '\x11';
  };
  while (!ended() && ::poll(&wait, 1, PatienceMs) > 0) {
    const ssize_t count = ::read(fd, buffer, sizeof buffer);
    if (count <= 0) break;
    reply.append(buffer, static_cast<std::size_t>(count));
  }
  return FramesOf(reply);
}

std::string PortOf(const std::string& ptyLine) {
  return ptyLine.rfind("PTY ", 0) == 0 ? ptyLine.substr(4) : "";
}

TEST(BoxProgram, AnswersOverItsPseudoTerminalAndComesAndGoesOnCommand) {
  namespace fs = std::filesystem;
  const fs::path folder = fs::temp_directory_path() / ("boxsim_test_" + std::to_string(::getpid()));
  fs::create_directories(folder);
  const std::string link = (folder / "port").string();
  const std::string log = (folder / "commands.log").string();

  BoxProgram program({"--firmware", "5.82", "--link", link, "--log", log, "--byte-by-byte"});
  const std::string port = PortOf(program.ReadLine());
  ASSERT_FALSE(port.empty());
  EXPECT_EQ(fs::read_symlink(link).string(), port);

  int fd = OpenRawPort(link);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Exchange(fd, "B!"), (std::vector<std::string>{"!N NBX         ", "!V 5.82        ",
                                                          std::string("!\x11") + std::string(13, ' ')}));
  program.Say("sky=-20.5 wind=30");
  EXPECT_EQ(program.ReadLine(), "OK");
  program.Say("wind=fast");
  EXPECT_EQ(program.ReadLine().rfind("ERR ", 0), 0u);
  EXPECT_EQ(Exchange(fd, "S!").at(0), "!1 -2050       ");

  // The host letting go of the port and taking it again finds the box still there.
  ::close(fd);
  ::usleep(100000);
  fd = OpenRawPort(port);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Exchange(fd, "V!").at(0), "!w 30          ");
  ::close(fd);

  program.Say("vanish");
  EXPECT_EQ(program.ReadLine(), "OK");
  EXPECT_FALSE(fs::is_symlink(link));
  program.Say("return");
  const std::string newPort = PortOf(program.ReadLine());
  ASSERT_FALSE(newPort.empty());
  EXPECT_EQ(fs::read_symlink(link).string(), newPort);
  fd = OpenRawPort(link);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Exchange(fd, "F!").at(0), "!Y             ");
  ::close(fd);

  EXPECT_EQ(program.Terminate(), 0);
  EXPECT_FALSE(fs::is_symlink(link));
  std::ifstream logged(log);
  std::string all;
  for (std::string line; std::getline(logged, line);) all += line + ";";
  EXPECT_EQ(all, "B;S;V;F;");
  fs::remove_all(folder);
}

}  // namespace
