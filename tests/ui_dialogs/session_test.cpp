// The program's place on the desktop: the notification-area icon and its
// menu, the close refused while clients are attached, the autostart entry.

#include <gtest/gtest.h>

#include <QAction>
#include <QProcess>

#include "automation/client_panel.h"
#include "core/nimbometer.h"
#include "station/station.h"
#include "station/system_areas.h"
#include "support/child_process.h"
#include "ui/autostart/start_with_session.h"
#include "ui/tray/close_guard.h"
#include "ui/tray/tray_icon.h"
#include "ui_dialogs/modal_script.h"

namespace nbx {
namespace {

TEST(Tray, TipMenuAndCloseFollowTheRunAndTheClients) {
  Station station;
  Nimbometer& nm = station.nm();
  QWidget window;
  TrayIcon tray(station, &window, "NBX_Nimbometer (v7.00.000)");
  CloseGuard guard(nm, &window);
  nm.display.BarCloud[2] = {"Cloudy", 0, 0x00FFFF};
  nm.display.BarRain[2].Caption = "Dry";
  nm.display.BarDay[2].Caption = "Dark";
  const std::string sky = "NBX_Nimbometer: Cloudy-Dry-Dark";
  const QStringList stoppable = {"mPopStop", "mPopMinimize", "mPopRestore(off)", "mPopExit"};
  const QStringList attached = {"mPopMinimize", "mPopRestore(off)"};
  struct Case { bool running; int clients; std::string tip; QStringList entries; } cases[] = {
      {false, 0, "NBX_Nimbometer (v7.00.000)", {"mPopStart", "mPopMinimize", "mPopRestore(off)", "mPopExit"}},
      {true, 0, sky, stoppable}, {true, 1, sky, attached}, {true, 2, sky, attached}, {true, 0, sky, stoppable}};
  for (const Case& c : cases) {
    window.show();
    nm.state.IsRunning = c.running;
    RegisterUsers(nm, c.clients - nm.state.COMNoUsers);
    tray.Update();
    guard.Refresh();
    EXPECT_EQ(tray.toolTip().toStdString(), c.tip);
    QStringList entries;
    for (QAction* action : tray.menu()->actions())
      if (action->isVisible() && !action->isSeparator())
        entries << action->objectName() + (action->isEnabled() ? "" : "(off)");
    EXPECT_EQ(entries, c.entries);
    EXPECT_EQ(guard.closeButtonShown(), c.clients == 0);
    EXPECT_EQ(window.close(), c.clients == 0) << c.clients << " clients";
  }
  // The icon takes the colour of the sky's condition (blue in the high byte).
  EXPECT_EQ(tray.icon().pixmap(32).toImage().pixelColor(16, 16), QColor(255, 255, 0));

  // A double click on the icon of a minimised window: its first click leaves
  // the window be, the double click restores it.
  window.showMinimized();
  tray.LeftClick();
  tray.DoubleClick();
  EXPECT_FALSE(window.isMinimized());
}

TEST(Autostart, EntryWrittenValidAndRemoved) {
  test::TempDir home;
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.path()));
  const QString entry = QString::fromStdString(home.File("autostart/NBX_Nimbometer.desktop"));
  for (const QString& program : {QString("/usr/bin/nimbometer"), QString("/opt/my station/nimbo$meter")}) {
    ASSERT_TRUE(ApplyStartWithSession(nullptr, true, program));
    EXPECT_EQ(QProcess::execute("desktop-file-validate", {entry}), 0) << program.toStdString();
    EXPECT_NE(test::ReadFile(entry.toStdString()).find("Exec=" + StartWithSessionCommand(program).toStdString()),
              std::string::npos);
    ASSERT_TRUE(ApplyStartWithSession(nullptr, false, program));
    EXPECT_FALSE(HasRunEntry(RunEntryName));
  }
  // A configuration folder that is a file: no autostart folder can be made.
  test::WriteFile(home.File("config"), "");
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.File("config")));
  test::ModalScript script({test::Press("OK")});
  EXPECT_FALSE(ApplyStartWithSession(nullptr, true, "/usr/bin/nimbometer"));
  ASSERT_EQ(script.messages.size(), 1);
  EXPECT_TRUE(script.messages[0].contains("autostart"));
  qunsetenv("XDG_CONFIG_HOME");
}

}  // namespace
}  // namespace nbx
