#include "app/window_station.h"

#include <QApplication>
#include <cstdio>
#include <cstdlib>

#include "app/signal_route.h"
#include "config/settings_order.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "station/system_areas.h"
#include "ui/main_window/main_window.h"
#include "ui/main_window/window_host.h"
#include "ui/window_dialogs/window_dialogs.h"

namespace nbx {

bool DisplayAvailable() {
  for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    const char* value = std::getenv(variable);
    if (value && *value) return true;
  }
  return false;
}

WindowStation::WindowStation(Station& station, IniSettings& store, const ProgramOptions& options)
    : station_(station), store_(store), options_(options) {}

WindowStation::~WindowStation() {
  // The logic must not reach a host that is gone.
  station_.nm().io.host = &station_.host();
}

bool WindowStation::Load() {
  Nimbometer& nm = station_.nm();
  host_ = std::make_unique<WindowHost>(station_.host());
  nm.io.host = host_.get();
  store_.CheckReadable();
  LoadSettings(store_, nm, MachineLoadContext());
  storedPortName_ = nm.config.PortName;
  if (options_.simulate) {
    QString error;
    const QString port = box_.Start({"platemodel=1"}, error);
    if (port.isEmpty()) {
      std::fprintf(stderr, "nimbometer: %s\n", qPrintable(error));
      return false;
    }
    nm.config.PortName = port.toStdString();
  }
  window_ = std::make_unique<NBXNimbometerForm>(station_, store_);
  host_->setWindow(window_.get());
  // Owned by the window; it answers the window's first-start call, so it is
  // made before the load arms that call.
  new WindowDialogs(*window_, station_);
  if (options_.simulate) window_->KeepStoredPort(storedPortName_);
  window_->Load();
  window_->show();
  // SIGINT and SIGTERM end the program as the headless one ends: the Stop
  // action, then the unload (which writes nothing while clients are attached).
  RouteSignals([this] {
    QObject::connect(&station_, &Station::stopped, window_.get(), [this] {
      window_->Unload();
      QApplication::exit(0);
    }, Qt::SingleShotConnection);
    station_.Stop();
  });
  return true;
}

int WindowStation::Run() {
  const int code = QApplication::exec();
  return code;
}

}  // namespace nbx
