#pragma once

#include <gtest/gtest.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QVariant>
#include <functional>

#include "automation/dbus/automation_server.h"
#include "safety/sound_player.h"
#include "support/sim_station.h"

namespace nbx::test {

// The folder of the per-user settings of every program during the tests.
std::string ConfigHome();

// Lets the event loop run until `done` or `maxMs` has passed.
bool WaitUntil(const std::function<bool()>& done, int maxMs = 10000);

// A connection of its own to the session bus, or to the bus at `address`,
// calling the object as any client would; each call runs the event loop
// until its reply, as the object may answer on this thread.
class BusClient {
 public:
  explicit BusClient(const QString& address = {});
  ~BusClient() { Leave(); }
  BusClient(const BusClient&) = delete;
  BusClient& operator=(const BusClient&) = delete;

  QDBusConnection& Bus() { return connection_; }
  QDBusMessage Call(const QString& member, const QVariantList& args = {});
  QDBusMessage CallOn(const QString& path, const QString& interface, const QString& member,
                      const QVariantList& args = {});
  // A property's value; an invalid QVariant when the call failed.
  QVariant Get(const QString& property, const QString& path = QStringLiteral("/Nimbometer"),
               const QString& interface = QStringLiteral("NBX_Nimbometer.Nimbometer"));
  QDBusMessage Set(const QString& property, const QVariant& value);
  void Leave();  // as a program that ends without releasing its objects

 private:
  QString name_;
  QDBusConnection connection_;
};

class FakeSound : public SoundPlayer {
 public:
  bool Play(const std::string& file, bool) override { return !(playing = file).empty(); }
  void Stop() override { playing.clear(); }
  bool IsPlaying() const override { return !playing.empty(); }
  std::string playing;
};

// A simulated station on virtual time whose automation object is on the
// session bus under the well-known name, on a connection of its own.
class ServedStation {
 public:
  ServedStation();
  ~ServedStation() { QDBusConnection::disconnectFromBus(connectionName_); }

  SimStation st;
  FakeSound sound;
  Nimbometer& nm = st.nm;
  AutomationServer server{st.nm};
  QString registerError;
  bool registered = false;

 private:
  QString connectionName_;
};

// A served station and a client of it, the settings, site and window at hand;
// started and through its first cycles when `running`.
template <bool running>
class OnTheBusAt : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(station.registered) << station.registerError.toStdString();
    ASSERT_TRUE(client.Bus().isConnected()) << "no session bus: run inside dbus-run-session";
    if (running) station.st.StartAndRunFirstCycles();
  }
  ServedStation station;
  BusClient client;
  Config& c = station.nm.config;
  SiteState& s = station.nm.state;
  Display& d = station.nm.display;
};
using OnTheBus = OnTheBusAt<false>;
using OnTheBusRunning = OnTheBusAt<true>;

}  // namespace nbx::test
