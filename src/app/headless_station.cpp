#include "app/headless_station.h"

#include <QCoreApplication>
#include <cstdio>

#include "app/signal_route.h"
#include "config/settings_order.h"
#include "outputs/user_data_file.h"
#include "station/cycle_summary.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "station/system_areas.h"

namespace nbx {

HeadlessStation::HeadlessStation(Station& station, IniSettings& store,
                                 const ProgramOptions& options)
    : station_(station), store_(store), options_(options) {
  RouteSignals([this] { station_.Stop(); });
}

bool HeadlessStation::Load() {
  Nimbometer& nm = station_.nm();
  store_.CheckReadable();
  LoadSettings(store_, nm, MachineLoadContext());
  storedPortName_ = nm.config.PortName;
  if (options_.simulate) {
    QString error;
    // The rain plate answers the heater as a real one would.
    const QString port = box_.Start({"platemodel=1"}, error);
    if (port.isEmpty()) {
      std::fprintf(stderr, "nimbometer: %s\n", qPrintable(error));
      return false;
    }
    nm.config.PortName = port.toStdString();
    std::printf("Simulated box on %s\n", qPrintable(port));
    std::fflush(stdout);
  }
  return true;
}

int HeadlessStation::Run() {
  Nimbometer& nm = station_.nm();
  QObject::connect(&station_, &Station::cycleProcessed, [&nm] {
    std::printf("%s\n", CycleSummary(nm).c_str());
    std::fflush(stdout);
  });
  QObject::connect(&station_, &Station::stopped, qApp, [this, &nm] {
    std::printf("%s\n", StoppedSummary(nm).c_str());
    std::fflush(stdout);
    Unload();
    QCoreApplication::exit(0);
  });
  station_.Start();
  // "Connect & Record": recording starts with the station, appending.
  if (nm.config.CheckStartRecording != 0) Record_Start(nm, true);
  return QCoreApplication::exec();
}

// There is no window, so its place in the store stays as it was. The port of
// the simulated box lived for this run only: the stored port is written back.
// While automation clients are attached the window could not unload: the
// station stops, but the settings are not saved.
void HeadlessStation::Unload() {
  Nimbometer& nm = station_.nm();
  if (nm.state.COMNoUsers != 0) {
    std::fprintf(stderr,
                 "nimbometer: %d automation client(s) attached: stopped without saving the settings\n",
                 nm.state.COMNoUsers);
    return;
  }
  nm.config.PortName = storedPortName_;
  UnloadContext context;
  context.decimalSeparator = DecimalSeparator();
  context.windowIsNormal = false;
  if (UnloadSettings(store_, nm, context)) store_.Flush();
}

}  // namespace nbx
