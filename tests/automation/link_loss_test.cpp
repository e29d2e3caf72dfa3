// A box that vanishes under a station that clients poll over the session bus:
// the object keeps answering, says what the site knows, takes wrong calls
// as errors, and follows the box back.

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <csignal>

#include "bus_fixture.h"
#include "support/station_programs.h"

namespace nbx::test {
namespace {

const QString Name = "NBX_Nimbometer.Nimbometer";

bool IsError(const QDBusMessage& reply) { return reply.type() == QDBusMessage::ErrorMessage; }

TEST(LinkLossOnTheBus, PollsAnswerThroughoutAndFollowTheBoxAwayAndBack) {
  TempDir dir;
  BoxProgram box(dir, {"rain=3300"});
  ASSERT_TRUE(box.ready);
  StationProgram station(dir, MasterSettings(box.link, dir.File("out")));
  std::string line;
  ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return !LinkDown(l) && !IsUnsafe(l); }, 4, line))
      << line;
  ASSERT_TRUE(WaitUntil([] {
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(Name).value();
  }));
  BusClient client;
  EXPECT_EQ(client.Get("Safe"), QVariant(true));
  EXPECT_EQ(client.Get("DataReady"), QVariant(true));
  EXPECT_EQ(client.Get("SecondsSinceGoodData").toInt(), 3);

  ASSERT_TRUE(box.Tell("vanish"));
  ASSERT_TRUE(station.CycleWhere([](const std::string& l) { return IsUnsafe(l) && LinkDown(l); }, 10, line))
      << line;
  // What the clients see is the site as the station knows it: no good data
  // (the health signal's 1000 "seconds"), and Unknown conditions that make
  // it unsafe.
  EXPECT_EQ(client.Get("Safe"), QVariant(false));
  EXPECT_EQ(client.Get("DataReady"), QVariant(false));
  EXPECT_EQ(client.Get("SecondsSinceGoodData").toInt(), 1000);
  // Calls that cannot be served are errors to the caller, not to the night.
  EXPECT_TRUE(IsError(client.Call("NoSuchMethod")));
  EXPECT_TRUE(IsError(client.Call("NBX_GraphArrayFirstElem", {QString("seven")})));
  EXPECT_TRUE(IsError(client.Set("Safe", false)));
  ASSERT_TRUE(station.NextCycle(line));
  EXPECT_TRUE(station.process.Running());

  ASSERT_TRUE(box.Tell("return"));
  EXPECT_TRUE(station.CycleWhere([](const std::string& l) { return !LinkDown(l) && !IsUnsafe(l); }, 10, line))
      << line;
  EXPECT_EQ(client.Get("Safe"), QVariant(true));
  EXPECT_EQ(client.Get("DataReady"), QVariant(true));
  EXPECT_EQ(client.Get("SecondsSinceGoodData").toInt(), 3);

  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);
}

}  // namespace
}  // namespace nbx::test
