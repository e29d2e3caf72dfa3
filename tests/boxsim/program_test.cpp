#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>
#include <string>

#include "support/station_programs.h"

namespace {

using namespace std::chrono_literals;
using nbx::test::BoxProgram;

// Generous: only stops a broken program from hanging the test run.
constexpr int PatienceMs = 10000;

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
std::string Exchange(int fd, const std::string& command) {
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
  return reply;
}

TEST(BoxProgram, AnswersOverItsPseudoTerminalAndOutlivesTheHostLettingGo) {
  namespace fs = std::filesystem;
  nbx::test::TempDir dir;
  BoxProgram box(dir, {"--firmware", "5.82", "--byte-by-byte"}, "port");
  ASSERT_TRUE(box.ready);
  EXPECT_EQ(fs::read_symlink(box.link).string(), box.port);

  int fd = OpenRawPort(box.link);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Exchange(fd, "B!"), "!N NBX         !V 5.82        !\x11" + std::string(13, ' '));
  EXPECT_TRUE(box.Tell("sky=-20.5 wind=30"));
  EXPECT_FALSE(box.Tell("wind=fast"));
  EXPECT_EQ(Exchange(fd, "S!").substr(0, 15), "!1 -2050       ");

  // The host letting go of the port and taking it again finds the box still there.
  ::close(fd);
  ::usleep(100000);
  fd = OpenRawPort(box.port);
  ASSERT_GE(fd, 0);
  EXPECT_EQ(Exchange(fd, "V!").substr(0, 15), "!w 30          ");
  ::close(fd);

  box.process.Signal(SIGTERM);
  EXPECT_EQ(box.process.Wait(10s), 0);
  EXPECT_FALSE(fs::is_symlink(box.link));
  EXPECT_EQ(box.Commands(), (std::vector<std::string>{"B", "S", "V"}));
}

}  // namespace
