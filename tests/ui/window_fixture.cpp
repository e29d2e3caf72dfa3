#include "window_fixture.h"

#include <QCoreApplication>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QThread>

#include "config/settings_order.h"
#include "station/system_areas.h"

namespace nbx::test {

WindowOnStation::WindowOnStation(const QStringList& boxAssignments)
    : store(dir.filePath("NBX_Nimbometer.ini")) {
  nm.io.host = &host;
  LoadSettings(store, nm, MachineLoadContext());
  QString error;
  nm.config.PortName = box.Start(boxAssignments, error, NBX_BOXSIM_PATH).toStdString();
  // A short cycle: the stored period is honoured as it stands.
  nm.config.RefreshPeriod = 1;
  nm.config.LblPathName = dir.path().toStdString();
  nm.config.GraphImagePath = dir.path().toStdString();
  QString busError;
  registered = server.Register(QDBusConnection::sessionBus(), busError);
  window = std::make_unique<NBXNimbometerForm>(station, store);
  host.setWindow(window.get());
  window->Load();
  window->show();
}

WindowOnStation::~WindowOnStation() {
  if (nm.state.IsRunning) {
    bool stopped = false;
    QObject::connect(&station, &Station::stopped, [&stopped] { stopped = true; });
    station.Stop();
    WaitUntil([&] { return stopped; }, 10000);
  }
  window.reset();
  nm.io.host = &station.host();
}

bool WindowOnStation::WaitUntil(const std::function<bool()>& done, int maxMs) {
  const QDeadlineTimer deadline(maxMs);
  while (!done() && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    QThread::msleep(5);
  }
  return done();
}

namespace {
int clients = 0;
}  // namespace

Client::Client()
    : name_(QStringLiteral("window-client-%1").arg(++clients)),
      connection_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name_)) {}

Client::~Client() { QDBusConnection::disconnectFromBus(name_); }

QDBusMessage Client::Call(const QString& member, const QVariantList& args) {
  QDBusMessage call = QDBusMessage::createMethodCall(AutomationServiceName, "/Nimbometer",
                                                     AutomationServiceName, member);
  call.setArguments(args);
  QDBusPendingCall pending = connection_.asyncCall(call, 20000);
  QDBusPendingCallWatcher watcher(pending);
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  if (!pending.isFinished()) loop.exec();
  return pending.reply();
}

QVariant Client::Get(const QString& property) {
  QDBusMessage call = QDBusMessage::createMethodCall(AutomationServiceName, "/Nimbometer",
                                                     "org.freedesktop.DBus.Properties", "Get");
  call.setArguments({QString(AutomationServiceName), property});
  QDBusPendingCall pending = connection_.asyncCall(call, 20000);
  QDBusPendingCallWatcher watcher(pending);
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  if (!pending.isFinished()) loop.exec();
  const QDBusMessage reply = pending.reply();
  if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty()) return {};
  return reply.arguments().front().value<QDBusVariant>().variant();
}

void Client::Set(const QString& property, const QVariant& value) {
  QDBusMessage call = QDBusMessage::createMethodCall(AutomationServiceName, "/Nimbometer",
                                                     "org.freedesktop.DBus.Properties", "Set");
  call.setArguments({QString(AutomationServiceName), property, QVariant::fromValue(QDBusVariant(value))});
  QDBusPendingCall pending = connection_.asyncCall(call, 20000);
  QDBusPendingCallWatcher watcher(pending);
  QEventLoop loop;
  QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &loop, &QEventLoop::quit);
  if (!pending.isFinished()) loop.exec();
}

}  // namespace nbx::test
