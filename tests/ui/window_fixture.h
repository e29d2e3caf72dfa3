#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QTemporaryDir>
#include <QVariant>
#include <memory>

#include "automation/dbus/automation_server.h"
#include "station/settings_store.h"
#include "station/simulated_box.h"
#include "station/station.h"
#include "ui/main_window/main_window.h"
#include "ui/main_window/window_host.h"

namespace nbx::test {

// The main window on a real station: its own settings file, the simulated
// box on a pseudo-terminal, and the automation object on the session bus.
class WindowOnStation {
 public:
  // `box` are the simulated box's assignments ("sky=-25").
  explicit WindowOnStation(const QStringList& box = {});
  ~WindowOnStation();

  template <typename T = QWidget>
  T* Find(const QString& name) {
    return window->findChild<T*>(name);
  }
  // Lets the event loop run until `done` or `maxMs` has passed.
  static bool WaitUntil(const std::function<bool()>& done, int maxMs = 20000);

  QTemporaryDir dir;
  IniSettings store;
  Station station;
  Nimbometer& nm = station.nm();
  SimulatedBox box;
  WindowHost host{station.host()};
  AutomationServer server{station.nm()};
  bool registered = false;
  std::unique_ptr<NBXNimbometerForm> window;
};

// A client of the automation object on a connection of its own; each call
// lets the event loop run until its reply is in, as the object answers on
// this same thread.
class Client {
 public:
  Client();
  ~Client();
  QDBusMessage Call(const QString& member, const QVariantList& args = {});
  QVariant Get(const QString& property);
  void Set(const QString& property, const QVariant& value);

 private:
  QString name_;
  QDBusConnection connection_;
};

}  // namespace nbx::test
