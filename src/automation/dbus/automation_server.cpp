#include "automation/dbus/automation_server.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <algorithm>

#include "automation/dbus/bus_object.h"
#include "automation/dbus/bus_values.h"
#include "station/settings_store.h"

namespace nbx {
namespace {

// The store of another program, read afresh at each call: that program may
// change it while the station runs.
class ForeignSettings : public Settings {
 public:
  explicit ForeignSettings(QString application) : application_(std::move(application)) {}
  std::string Get(std::string_view section, std::string_view key, std::string_view defaultText) override {
    return IniSettings(PerUserSettingsFile(application_)).Get(section, key, defaultText);
  }
  void Save(std::string_view, std::string_view, std::string_view) override {}

 private:
  QString application_;
};

}  // namespace

AutomationServer::AutomationServer(Nimbometer& nm, QObject* parent)
    : QObject(parent),
      meteodesk_(std::make_unique<ForeignSettings>(QStringLiteral("NBX_Meteodesk"))),
      automation_(nm, meteodesk_.get()) {
  RegisterBusTypes();
  const auto afterCall = [this] { WatchAttachedClients(); };
  object_ = std::make_unique<BusObject>(automation_, NimbometerInterface(), afterCall);
  form_ = std::make_unique<BusObject>(automation_, FormInterface(), afterCall);
}

AutomationServer::~AutomationServer() {
  if (!registered_) return;
  connection_.unregisterObject(FormObjectPath);
  connection_.unregisterObject(NimbometerObjectPath);
  connection_.unregisterService(AutomationServiceName);
}

bool AutomationServer::Register(const QDBusConnection& connection, QString& error) {
  connection_ = connection;
  if (!connection_.isConnected()) {
    error = QStringLiteral("no session bus: ") + connection_.lastError().message();
    return false;
  }
  if (!connection_.registerVirtualObject(NimbometerObjectPath, object_.get()) ||
      !connection_.registerVirtualObject(FormObjectPath, form_.get())) {
    error = QStringLiteral("the object path %1 is taken on this connection").arg(NimbometerObjectPath);
    return false;
  }
  registered_ = true;
  watcher_ = std::make_unique<QDBusServiceWatcher>();
  watcher_->setConnection(connection_);
  watcher_->setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
  connect(watcher_.get(), &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& client) {
    automation_.ClientLeft(client.toStdString());
    WatchAttachedClients();
  });
  const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
      connection_.interface()->registerService(AutomationServiceName,
                                               QDBusConnectionInterface::DontQueueService,
                                               QDBusConnectionInterface::DontAllowReplacement);
  if (!reply.isValid()) {
    error = QStringLiteral("the name %1 could not be taken: %2")
                .arg(AutomationServiceName, reply.error().message());
    return false;
  }
  if (reply.value() != QDBusConnectionInterface::ServiceRegistered) {
    error = QStringLiteral("the name %1 is held by another station").arg(AutomationServiceName);
    return false;
  }
  return true;
}

// The watcher follows the clients that hold objects, one name at a time:
// setting the whole list anew would drop the watch of the others for a
// moment, and a client leaving then would never be seen. A client that left
// before its name was watched is released at once.
void AutomationServer::WatchAttachedClients() {
  if (!watcher_) return;
  const std::vector<std::string> attached = automation_.AttachedClients();
  const auto isAttached = [&attached](const QString& client) {
    return std::find(attached.begin(), attached.end(), client.toStdString()) != attached.end();
  };
  for (const QString& client : watcher_->watchedServices())
    if (!isAttached(client)) watcher_->removeWatchedService(client);
  for (const std::string& name : attached) {
    const QString client = QString::fromStdString(name);
    if (watcher_->watchedServices().contains(client)) continue;
    watcher_->addWatchedService(client);
    if (connection_.interface()->isServiceRegistered(client).value()) continue;
    automation_.ClientLeft(name);
    watcher_->removeWatchedService(client);
  }
}

}  // namespace nbx
