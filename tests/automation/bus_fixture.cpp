#include "bus_fixture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>
#include <QTimer>
#include <cstdlib>
#include <memory>

// Where the machine can play sound, the sound server's client library keeps
// memory to the end; under the leak checker that is not ours.
extern "C" const char* __lsan_default_suppressions() { return "leak:libpulse.so\n"; }

namespace nbx::test {
namespace {

std::unique_ptr<TempDir> configHome;

// The bus and the objects of Qt want an application object. The per-user
// settings of the programs the station reads are kept apart from the user's.
class QtApplication : public ::testing::Environment {
 public:
  void SetUp() override {
    configHome = std::make_unique<TempDir>();
    setenv("XDG_CONFIG_HOME", configHome->path().c_str(), 1);
    static char name[] = "automation_tests";
    static char* argv[] = {name, nullptr};
    static int argc = 1;
    app_ = std::make_unique<QCoreApplication>(argc, argv);
  }
  void TearDown() override {
    app_.reset();
    configHome.reset();
  }

 private:
  std::unique_ptr<QCoreApplication> app_;
};
[[maybe_unused]] const auto* const qtApplication = ::testing::AddGlobalTestEnvironment(new QtApplication);

QString NextConnectionName(const char* kind) {
  static int connections = 0;
  return QStringLiteral("%1-%2").arg(QLatin1String(kind)).arg(++connections);
}

QDBusMessage Await(QDBusConnection& connection, const QDBusMessage& call) {
  QDBusPendingCall pending = connection.asyncCall(call, 20000);
  QDBusPendingCallWatcher watcher(pending);
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  if (!pending.isFinished()) loop.exec();
  return pending.reply();
}

}  // namespace

std::string ConfigHome() { return configHome->path(); }

bool WaitUntil(const std::function<bool()>& done, int maxMs) {
  const QDeadlineTimer deadline(maxMs);
  while (!done() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    QThread::msleep(5);
  }
  return done();
}

BusClient::BusClient(const QString& address)
    : name_(NextConnectionName("client")),
      connection_(address.isEmpty() ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)
                                    : QDBusConnection::connectToBus(address, name_)) {}

QDBusMessage BusClient::Call(const QString& member, const QVariantList& args) {
  return CallOn(QStringLiteral("/Nimbometer"), QStringLiteral("NBX_Nimbometer.Nimbometer"), member, args);
}

QDBusMessage BusClient::CallOn(const QString& path, const QString& interface, const QString& member,
                               const QVariantList& args) {
  QDBusMessage call =
      QDBusMessage::createMethodCall(QStringLiteral("NBX_Nimbometer.Nimbometer"), path, interface, member);
  call.setArguments(args);
  return Await(connection_, call);
}

QVariant BusClient::Get(const QString& property, const QString& path, const QString& interface) {
  const QDBusMessage reply = CallOn(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("Get"), {interface, property});
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 1) return {};
  return qvariant_cast<QDBusVariant>(reply.arguments().front()).variant();
}

QDBusMessage BusClient::Set(const QString& property, const QVariant& value) {
  return CallOn(
      QStringLiteral("/Nimbometer"), QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
      {QStringLiteral("NBX_Nimbometer.Nimbometer"), property, QVariant::fromValue(QDBusVariant(value))});
}

// The connection closes once no handle refers to it: this client's is let go.
void BusClient::Leave() {
  if (name_.isEmpty()) return;
  QDBusConnection::disconnectFromBus(name_);
  connection_ = QDBusConnection(QString());
  name_.clear();
}

ServedStation::ServedStation() : connectionName_(NextConnectionName("station")) {
  nm.io.sound = &sound;
  const QDBusConnection connection =
      QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName_);
  registered = server.Register(connection, registerError);
}

}  // namespace nbx::test
