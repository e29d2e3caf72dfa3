#include "window_fixture.h"

#include <QTest>

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
  QObject::connect(&station, &Station::cycleProcessed, [this] { ++cycles; });
  QObject::connect(&station, &Station::stopped, [this] { stopped = true; });
  window = std::make_unique<NBXNimbometerForm>(station, store);
  host.setWindow(window.get());
  window->Load();
  window->show();
}

WindowOnStation::~WindowOnStation() {
  if (nm.state.IsRunning) {
    stopped = false;
    station.Stop();
    (void)QTest::qWaitFor([this] { return stopped; }, 10000);
  }
  window.reset();
  nm.io.host = &station.host();
}

}  // namespace nbx::test
