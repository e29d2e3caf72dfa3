// The real program on a pseudo-terminal box: the object on the bus as tools
// this project did not write see it, polls that follow the box away and
// back, the unload rule, a second station, and a start by activation.

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <csignal>
#include <filesystem>
#include <regex>
#include <tuple>

#include "bus_fixture.h"
#include "support/station_programs.h"

namespace nbx {
namespace {

using namespace std::chrono_literals;
using test::BoxProgram;
using test::ChildProcess;
using test::StationProgram;

const std::string Name = "NBX_Nimbometer.Nimbometer";

struct ToolRun {
  int exit = -1;
  std::string out;
};

// A program found on the path; its whole output.
ToolRun RunTool(std::vector<std::string> args) {
  ChildProcess tool("/usr/bin/env", args);
  ToolRun run;
  std::string line;
  while (tool.ReadLine(line, 20s)) run.out += line + "\n";
  run.exit = tool.Wait(5s);
  return run;
}

// gdbus on the session bus, or on the bus at `address`.
ToolRun Gdbus(const std::vector<std::string>& call, const std::string& address = {}) {
  std::vector<std::string> args{"gdbus", "call"};
  if (address.empty())
    args.push_back("--session");
  else
    args.insert(args.end(), {"--address", address});
  args.insert(args.end(), {"--dest", Name, "--object-path", "/Nimbometer", "--method"});
  args.insert(args.end(), call.begin(), call.end());
  return RunTool(args);
}

std::string Property(const std::string& property, const std::string& address = {}) {
  return Gdbus({"org.freedesktop.DBus.Properties.Get", Name, property}, address).out;
}

// A station of period 1 s on `port`, its files in `dir`/`name`.
test::IniSections SettingsFor(const test::TempDir& dir, const std::string& port, const std::string& name) {
  return test::MasterSettings(port, dir.File(name + "-files"));
}

bool NameOnBus() {
  const QString name = QString::fromStdString(Name);
  const QDBusConnectionInterface* bus = QDBusConnection::sessionBus().interface();
  return test::WaitUntil([&] { return bus->isServiceRegistered(name).value(); });
}

// What the clients see is the site as the station knows it: with the box
// gone, no good data (the health signal's 1000 "seconds") and Unknown
// conditions that make it unsafe. The window cannot unload while a client is
// attached: the station stops without saving the settings.
TEST(HeadlessObject, ForeignToolsAndPollsFollowTheBoxAwayAndBackAndAClientKeepsTheSettings) {
  test::TempDir dir;
  BoxProgram box(dir, {});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, SettingsFor(dir, box.link, "station"));
  std::string line;
  const auto safeAndLinked = [](const std::string& l) { return !test::LinkDown(l) && !test::IsUnsafe(l); };
  ASSERT_TRUE(station.CycleWhere(safeAndLinked, 4, line)) << line;
  ASSERT_TRUE(NameOnBus());

  EXPECT_EQ(Gdbus({Name + ".NBX_DataDisplayed", "rain", "value"}).out, "('3300 cycles',)\n");

  test::BusClient client;
  const auto polled = [&client] {
    return std::tuple{client.Get("Safe").toBool(), client.Get("DataReady").toBool(),
                      client.Get("SecondsSinceGoodData").toInt()};
  };
  EXPECT_EQ(polled(), std::tuple(true, true, 3));
  ASSERT_TRUE(box.Tell("vanish"));
  ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return test::IsUnsafe(l) && test::LinkDown(l); },
                                 10, line))
      << line;
  EXPECT_EQ(polled(), std::tuple(false, false, 1000));
  ASSERT_TRUE(box.Tell("return"));
  EXPECT_TRUE(station.CycleWhere(safeAndLinked, 10, line)) << line;
  EXPECT_EQ(polled(), std::tuple(true, true, 3));

  client.Call("Attach");
  const std::string stored = test::ReadFile(station.settings);
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
  EXPECT_EQ(test::ReadFile(station.settings), stored);
  EXPECT_NE(test::ReadFile(station.errors).find("1 automation client(s) attached: stopped without saving"),
            std::string::npos);
  EXPECT_NE(test::ReadFile(box.log).rfind("P0102"), std::string::npos);
}

TEST(HeadlessObject, AStationWhoseNameIsTakenSaysSoAndRunsOn) {
  test::TempDir dir;
  BoxProgram boxA(dir, {}, "ttyA"), boxB(dir, {}, "ttyB");
  ASSERT_TRUE(boxA.ready && boxB.ready);
  StationProgram first(dir, SettingsFor(dir, boxA.link, "first"), "first");
  std::string line;
  ASSERT_TRUE(first.NextCycle(line));
  ASSERT_TRUE(NameOnBus());
  StationProgram second(dir, SettingsFor(dir, boxB.link, "second"), "second");
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(second.NextCycle(line)) << "cycle " << i;
  EXPECT_NE(test::ReadFile(second.errors)
                .find("automation object not offered: the name NBX_Nimbometer.Nimbometer is "
                      "held by another station"),
            std::string::npos);
  EXPECT_EQ(test::ReadFile(first.errors).find("not offered"), std::string::npos);
  EXPECT_EQ(Property("Name"), "(<'NBX_Nimbometer'>,)\n");
  for (StationProgram* s : {&first, &second}) {
    s->process.Signal(SIGTERM);
    EXPECT_EQ(s->process.Wait(10s), 0);
  }
}

// The activation file, with the program of this build, on a bus of the
// test's own that knows only that file.
TEST(HeadlessObject, AClientsCallStartsTheStationThroughTheActivationFile) {
  test::TempDir dir;
  BoxProgram box(dir, {}, "tty");
  ASSERT_TRUE(box.ready);
  std::filesystem::create_directories(dir.File("config/NBX_Nimbometer"));
  std::filesystem::create_directories(dir.File("services"));
  test::WriteFile(dir.File("config/NBX_Nimbometer/NBX_Nimbometer.ini"),
                  test::IniText(SettingsFor(dir, box.link, "activated")));
  std::string service = test::ReadFile(NBX_SERVICE_TEMPLATE);
  service = std::regex_replace(service, std::regex("@NBX_INSTALLED_PROGRAM@"), NBX_NIMBOMETER_PATH);
  ASSERT_NE(service.find("Name=NBX_Nimbometer.Nimbometer\n"), std::string::npos);
  test::WriteFile(dir.File("services/NBX_Nimbometer.Nimbometer.service"), service);
  test::WriteFile(
      dir.File("bus.conf"),
      "<busconfig><type>session</type><listen>unix:path=" + dir.File("bus") + "</listen><servicedir>" +
          dir.File("services") +
          "</servicedir><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
          "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>\n");
  ChildProcess bus("/usr/bin/env",
                   {"dbus-daemon", "--config-file=" + dir.File("bus.conf"), "--nofork", "--print-address=1"},
                   {"XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path()});
  std::string address;
  ASSERT_TRUE(bus.ReadLine(address, 10s));

  EXPECT_EQ(Property("Name", address), "(<'NBX_Nimbometer'>,)\n");
  const ToolRun owner =
      RunTool({"gdbus", "call", "--address", address, "--dest", "org.freedesktop.DBus", "--object-path",
               "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.GetConnectionUnixProcessID", Name});
  std::smatch pid;
  ASSERT_TRUE(std::regex_search(owner.out, pid, std::regex("uint32 ([0-9]+)"))) << owner.out;
  const pid_t station = std::stoi(pid[1]);
  EXPECT_TRUE(test::WaitUntil([&] { return Property("DataReady", address) == "(<true>,)\n"; }, 20000));
  ::kill(station, SIGTERM);
  EXPECT_TRUE(test::WaitUntil([&] { return ::kill(station, 0) != 0; }, 10000));
  if (::kill(station, 0) == 0) ::kill(station, SIGKILL);
  bus.Signal(SIGTERM);
  bus.Wait(5s);
}

}  // namespace
}  // namespace nbx
