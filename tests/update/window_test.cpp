// The window's side of updates: the last update's status told once at the
// start, and "Check for updates ..." opening the update window.

#include <gtest/gtest.h>

#include <QAction>
#include <QLabel>
#include <QTest>

#include "core/nimbometer.h"
#include "station/settings_store.h"
#include "station/station.h"
#include "support/child_process.h"
#include "ui/main_window/main_window.h"
#include "ui/main_window/window_host.h"
#include "ui/window_dialogs/window_dialogs.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

TEST(UpdateWindow, LastUpdateToldOnceAndTheCheckOpensFromHelp) {
  test::TempDir dir;
  IniSettings store(QString::fromStdString(dir.File("station.ini")));
  Station station;
  station.nm().state.DeviceInitialized = 2;  // set up: no first-start question
  station.nm().config.LastUpdateMsg = " Updated to 7.01.000 ";
  WindowHost host(station.host());
  station.nm().io.host = &host;
  NBXNimbometerForm window(station, store);
  new WindowDialogs(window, station);
  QStringList seen;
  auto note = [&seen](QWidget* dialog) {
    seen << dialog->objectName() + ": " + dialog->windowTitle();
    if (auto* text = dialog->findChild<QLabel*>("ERR_Description")) seen << text->text();
    QMetaObject::invokeMethod(dialog, "reject", Qt::QueuedConnection);
  };
  {
    test::ModalScript script({note});
    window.Load();
    ASSERT_TRUE(QTest::qWaitFor([&] { return script.done(); }, 2000));
  }
  EXPECT_TRUE(window.Unload());
  EXPECT_EQ(store.Get("Window", "LastUpdateMsg", "(none)"), "");

  test::ModalScript script({note});
  QAction* check = window.findChild<QAction*>("mnuUpdate");
  ASSERT_NE(check, nullptr);
  EXPECT_EQ(check->text().remove('&'), "Check for updates ...");
  check->trigger();
  EXPECT_EQ(seen, (QStringList{"NBXError: Last Update Status", " Updated to 7.01.000 ",
                               "NBXUpdateForm: Update module"}));
  EXPECT_EQ(script.unexpected, 0);
}

}  // namespace
}  // namespace nbx
