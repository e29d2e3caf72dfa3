// The real program on a pseudo-terminal box: the object on the bus as tools
// this project did not write see it, a second station, the unload rule, and
// a start by activation.

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <csignal>
#include <filesystem>
#include <regex>

#include "bus_fixture.h"
#include "interface_shape.h"
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

bool OnPath(const std::string& program) { return RunTool({"sh", "-c", "command -v " + program}).exit == 0; }

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
  return test::WaitUntil([] {
    return QDBusConnection::sessionBus()
        .interface()
        ->isServiceRegistered(QString::fromStdString(Name))
        .value();
  });
}

TEST(HeadlessObject, ForeignToolsSeeEveryMemberAndLiveValuesCycleAfterCycle) {
  test::TempDir dir;
  BoxProgram box(dir, {}, "tty");
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, SettingsFor(dir, box.link, "station"));
  std::string line;
  ASSERT_TRUE(station.NextCycle(line) && station.NextCycle(line) && station.NextCycle(line));
  ASSERT_TRUE(NameOnBus());

  const auto shapes = test::ReadShapes(QString::fromStdString(test::ReadFile(NBX_AUTOMATION_XML)), "/");
  const auto& face = shapes.at("/Nimbometer|NBX_Nimbometer.Nimbometer");
  const ToolRun introspection =
      RunTool({"gdbus", "introspect", "--session", "--dest", Name, "--object-path", "/Nimbometer"});
  ASSERT_EQ(introspection.exit, 0);
  const ToolRun all = Gdbus({"org.freedesktop.DBus.Properties.GetAll", Name});
  for (const auto& [property, type] : face.propertyTypes) {
    EXPECT_NE(introspection.out.find(" " + type + " " + property + " = "), std::string::npos) << property;
    EXPECT_NE(all.out.find("'" + property + "': <"), std::string::npos) << property;
  }
  for (const std::string& method : face.methodNames)
    EXPECT_NE(introspection.out.find(" " + method + "("), std::string::npos) << method;
  if (OnPath("busctl")) {
    const ToolRun listed = RunTool({"busctl", "--user", "introspect", Name, "/Nimbometer"});
    for (const std::string& member : face.members) {
      const std::string name =
          member.substr(member.find(' ') + 1, member.find(' ', member.find(' ') + 1) - member.find(' ') - 1);
      EXPECT_NE(listed.out.find("\n." + name + " "), std::string::npos) << name;
    }
  }

  // The polls follow the box: rain starts, the sky reads 4 and the site is unsafe.
  EXPECT_EQ(Property("Safe"), "(<true>,)\n");
  EXPECT_EQ(Property("SecondsSinceGoodData"), "(<3>,)\n");
  EXPECT_EQ(Gdbus({Name + ".NBX_DataDisplayed", "rain", "value"}).out, "('3300 cycles',)\n");
  ASSERT_TRUE(box.Tell("rain=2000"));
  bool raining = false;
  for (int i = 0; i < 6 && !raining && station.NextCycle(line); ++i)
    raining = Property("Condition_Sky") == "(<4>,)\n";
  EXPECT_TRUE(raining);
  EXPECT_EQ(Property("Safe"), "(<false>,)\n");
  EXPECT_EQ(Gdbus({Name + ".NBX_GraphArrayFirstElem", "5"}).out, "(0,)\n");

  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
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

// The window cannot unload while clients are attached: the station stops,
// the settings are not saved.
TEST(HeadlessObject, SigtermWithAClientAttachedStopsWithoutSavingTheSettings) {
  test::TempDir dir;
  BoxProgram box(dir, {}, "tty");
  ASSERT_TRUE(box.ready);
  for (const bool attached : {true, false}) {
    StationProgram station(dir, SettingsFor(dir, box.link, "station"));
    std::string line;
    ASSERT_TRUE(station.NextCycle(line));
    ASSERT_TRUE(NameOnBus());
    const std::string stored = test::ReadFile(station.settings);
    test::BusClient client;
    client.Call("Attach");
    if (!attached) client.Call("Detach");
    station.process.Signal(SIGTERM);
    EXPECT_EQ(station.process.Wait(10s), 0);
    const bool kept = test::ReadFile(station.settings) == stored;
    EXPECT_EQ(kept, attached);
    EXPECT_EQ(
        test::ReadFile(station.errors).find("1 automation client(s) attached: stopped without saving") !=
            std::string::npos,
        attached);
  }
  EXPECT_NE(test::ReadFile(dir.File("tty.log")).rfind("P0102"), std::string::npos);
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
