#include "app/start_up.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QVersionNumber>
#include <cstdio>
#include <memory>
#include <string>

#include "app/headless_station.h"
#include "app/window_station.h"
#include "app/single_instance.h"
#include "automation/dbus/automation_server.h"
#include "config/program_start.h"
#include "outputs/data_outputs.h"
#include "graphs/drawing/freeimage_runtime.h"
#include "station/settings_store.h"
#include "station/station.h"

namespace nbx {
namespace {

bool startUpBegun = false;

std::string ProgramVersionText() {
  const QVersionNumber v = QVersionNumber::fromString(QCoreApplication::applicationVersion());
  return VersionText(v.majorVersion(), v.minorVersion(), v.microVersion());
}

std::string ProgramFolder() { return QCoreApplication::applicationDirPath().toStdString(); }

// Without the image library the program goes on; only the export of the
// graph pictures stays off.
void CheckImageLibrary(Nimbometer& nm, const std::string& versionText) {
  if (FreeImageRuntime::Instance().Initialise()) return;
  nm.io.host->ShowMessage("FreeImage.dll file must be present in directory\r\n" + ProgramFolder(),
                          ButtonsOk, versionText);
}

// Another station may hold the object's name: this one runs on without it.
std::unique_ptr<AutomationServer> OfferAutomation(Nimbometer& nm) {
  auto automation = std::make_unique<AutomationServer>(nm);
  QString busError;
  if (!automation->Register(QDBusConnection::sessionBus(), busError))
    std::fprintf(stderr, "nimbometer: automation object not offered: %s\n", qPrintable(busError));
  return automation;
}

// The window's load stands where the headless load stands; the image
// library's message comes once the window is up.
int RunWindow(Station& station, IniSettings& store, const ProgramOptions& options,
              const std::string& versionText) {
  Nimbometer& nm = station.nm();
  WindowStation window(station, store, options);
  if (!window.Load()) return 1;
  Record_DebugInfo(nm, "Sub main4");
  CheckImageLibrary(nm, versionText);
  const auto automation = OfferAutomation(nm);
  return window.Run();
}

}  // namespace

bool StartUpHasBegun() { return startUpBegun; }

int RunProgram(const ProgramOptions& options) {
  startUpBegun = true;
  Station station;
  Nimbometer& nm = station.nm();
  station.host().traceEnabled = options.trace;
  const std::string versionText = ProgramVersionText();

  Record_DebugInfo(nm, "Sub main");
  Record_DebugInfo(nm, versionText);
  Record_DebugInfo(nm, "Sub main2");

  IniSettings store(options.settingsFile);
  SingleInstance instance(store.FileName());
  if (instance.AnotherIsRunning()) return 0;

  SwapInNewUpdater(ProgramFolder());
  Record_DebugInfo(nm, "Sub main3");

  nm.io.settings = &store;
  if (!options.headless) return RunWindow(station, store, options, versionText);
  HeadlessStation headless(station, store, options);
  if (!headless.Load()) return 1;
  Record_DebugInfo(nm, "Sub main4");

  CheckImageLibrary(nm, versionText);
  const auto automation = OfferAutomation(nm);
  return headless.Run();
}

}  // namespace nbx
