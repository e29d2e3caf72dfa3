#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <memory>

#include "automation/automation.h"

class QDBusServiceWatcher;

namespace nbx {
struct Nimbometer;
class BusObject;
class Settings;

// The automation object on a bus: /Nimbometer with the class's members and
// /Nimbometer/Form with the window's public variables, under the well-known
// name NBX_Nimbometer.Nimbometer. Clients that leave the bus without
// releasing their objects are released by a watcher of their bus names.
class AutomationServer : public QObject {
  Q_OBJECT

 public:
  explicit AutomationServer(Nimbometer& nm, QObject* parent = nullptr);
  ~AutomationServer() override;

  // Offers the objects on the connection and takes the well-known name.
  // False, with the reason, when there is no bus or another station holds
  // the name; the station runs on either way.
  bool Register(const QDBusConnection& connection, QString& error);

  Automation& automation() { return automation_; }

 private:
  void WatchAttachedClients();

  std::unique_ptr<Settings> meteodesk_;
  Automation automation_;
  std::unique_ptr<BusObject> object_;
  std::unique_ptr<BusObject> form_;
  std::unique_ptr<QDBusServiceWatcher> watcher_;
  QDBusConnection connection_{QString()};
  bool registered_ = false;
};

inline constexpr const char* AutomationServiceName = "NBX_Nimbometer.Nimbometer";

}  // namespace nbx
