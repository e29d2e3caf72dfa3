// The real program's object on the bus: a second station finds the name
// taken, a client holds the settings unsaved, and a call starts the station
// through the activation file.

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <csignal>
#include <filesystem>
#include <regex>

#include "bus_fixture.h"
#include "support/station_programs.h"

namespace nbx::test {
namespace {

const QString Name = QStringLiteral("NBX_Nimbometer.Nimbometer");

// The window cannot unload while a client is attached: the station stops
// without saving the settings. A second station runs on without the object.
TEST(HeadlessObject, ATakenNameIsReportedAndAnAttachedClientKeepsTheSettingsUnsaved) {
  TempDir dir;
  BoxProgram box(dir, {});
  ASSERT_TRUE(box.ready);
  StationProgram first(dir, MasterSettings(box.link, dir.File("first")), "first");
  std::string line;
  ASSERT_TRUE(first.NextCycle(line));
  ASSERT_TRUE(WaitUntil([] { return QDBusConnection::sessionBus().interface()->isServiceRegistered(Name).value(); }));
  StationProgram second(dir, MasterSettings(dir.File("ttyNone"), dir.File("second")), "second");
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(second.NextCycle(line)) << "cycle " << i;
  EXPECT_NE(ReadFile(second.errors).find("automation object not offered: the name NBX_Nimbometer.Nimbometer is "
                                         "held by another station"),
            std::string::npos);
  second.process.Signal(SIGTERM);
  EXPECT_EQ(second.process.Wait(10s), 0);

  BusClient client;
  client.Call("Attach");
  const std::string stored = ReadFile(first.settings);
  first.process.Signal(SIGTERM);
  EXPECT_EQ(first.process.Wait(10s), 0);
  EXPECT_EQ(ReadFile(first.settings), stored);
  EXPECT_NE(ReadFile(first.errors).find("1 automation client(s) attached: stopped without saving"),
            std::string::npos);
  EXPECT_EQ(ReadFile(first.errors).find("not offered"), std::string::npos);
}

// The activation file, with the program of this build, on a bus of the
// test's own that knows only that file.
TEST(HeadlessObject, AClientsCallStartsTheStationThroughTheActivationFile) {
  TempDir dir;
  BoxProgram box(dir, {});
  ASSERT_TRUE(box.ready);
  std::filesystem::create_directories(dir.File("config/NBX_Nimbometer"));
  std::filesystem::create_directories(dir.File("services"));
  WriteFile(dir.File("config/NBX_Nimbometer/NBX_Nimbometer.ini"),
            IniText(MasterSettings(box.link, dir.File("files"))));
  const std::string service = std::regex_replace(
      ReadFile(NBX_SERVICE_TEMPLATE), std::regex("@NBX_INSTALLED_PROGRAM@"), NBX_NIMBOMETER_PATH);
  ASSERT_NE(service.find("Name=NBX_Nimbometer.Nimbometer\n"), std::string::npos);
  WriteFile(dir.File("services/NBX_Nimbometer.Nimbometer.service"), service);
  WriteFile(dir.File("bus.conf"), "<busconfig><type>session</type><listen>unix:path=" + dir.File("bus") +
                                      "</listen><servicedir>" + dir.File("services") +
                                      "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
                                      "<allow receive_sender=\"*\"/><allow own=\"*\"/></policy></busconfig>\n");
  ChildProcess bus("/usr/bin/env",
                   {"dbus-daemon", "--config-file=" + dir.File("bus.conf"), "--nofork", "--print-address=1"},
                   {"XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path()});
  std::string address;
  ASSERT_TRUE(bus.ReadLine(address, 10s));

  BusClient client(QString::fromStdString(address));
  EXPECT_EQ(client.Get("Name").toString(), "NBX_Nimbometer");
  const pid_t station = static_cast<pid_t>(client.Bus().interface()->servicePid(Name).value());
  ASSERT_GT(station, 0);
  // Its settings are the user's: it reads the box they name.
  EXPECT_TRUE(WaitUntil([&] { return client.Get("DataReady").toBool(); }, 20000));
  ::kill(station, SIGTERM);
  EXPECT_TRUE(WaitUntil([&] { return ::kill(station, 0) != 0; }));
  if (::kill(station, 0) == 0) ::kill(station, SIGKILL);
  bus.Signal(SIGTERM);
  bus.Wait(5s);
}

}  // namespace
}  // namespace nbx::test
