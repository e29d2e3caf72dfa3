// Every window that the main window opens, opened the way a user opens it.

#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QTest>
#include <functional>

#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "station/system_areas.h"
#include "support/child_process.h"
#include "ui/main_window/main_window.h"
#include "ui/main_window/window_host.h"
#include "ui/window_dialogs/window_dialogs.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

TEST(WindowDialogs, NewInstallationAskedAtLoadThenEachHookOpensItsWindow) {
  test::TempDir dir;
  IniSettings store(QString::fromStdString(dir.File("station.ini")));
  Station station;
  WindowHost host(station.host());
  station.nm().io.host = &host;
  station.nm().config.LastUpdateMsg = " Updated to 7.01.000 ";
  NBXNimbometerForm window(station, store);
  new WindowDialogs(window, station);
  {
    // The last update's status is told once, after the first-start question.
    test::ModalScript script({test::Press("No"), test::Press("OK")});
    window.Load();
    window.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return script.done(); }, 5000));
    EXPECT_EQ(station.nm().state.DeviceInitialized, 1);
    EXPECT_FALSE(station.nm().IsMaster());
    EXPECT_EQ(script.messages, (QStringList{"Is this the MASTER installation ?", " Updated to 7.01.000 "}));
    EXPECT_EQ(station.nm().config.LastUpdateMsg, "");
  }

  auto rightClick = [&window](const char* control) {
    return [&window, control] { QTest::mouseRelease(window.findChild<QWidget*>(control), Qt::RightButton); };
  };
  struct Case { std::function<void()> open; const char* dialog; } cases[] = {
      {[&] { emit window.legendRequested(); }, "NBXLegend"},
      {[&] { emit window.factorWindowRequested(); }, "NBXTempFactorGraph"},
      {[&] { emit window.fileStructureRequested(); }, "NBXFileStructForm"},
      {[&] { emit window.aboutRequested(); }, "NBXAbout"},
      {rightClick("GraphTemp"), "NBXTempLimForm"},
      {rightClick("AlarmRain(2)"), "NBXSoundForm"},
      {rightClick("ElecAmbBeta"), "NBXElectConst"},
      {[&] { window.findChild<QAction*>("mnuUpdate")->trigger(); }, "NBXUpdateForm"},
  };
  EXPECT_EQ(window.findChild<QAction*>("mnuUpdate")->text().remove('&'), "Check for updates ...");
  for (const Case& c : cases) {
    QString opened;
    test::ModalScript script({[&opened](QWidget* dialog) {
      opened = dialog->objectName();
      QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
    }});
    c.open();
    EXPECT_EQ(opened.toStdString(), c.dialog);
  }
  EXPECT_FALSE(station.nm().state.AlarmWindowON);

  // "Start && Connect" also starts the program with the session.
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(dir.path()));
  for (bool on : {true, false}) {
    window.findChild<QCheckBox*>("CheckStartApp")->click();
    EXPECT_EQ(HasRunEntry(RunEntryName), on);
  }
  qunsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace nbx
