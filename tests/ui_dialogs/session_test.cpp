// The program's place on the desktop: the notification-area icon and its
// menu, the close refused while clients are attached, the autostart entry.

#include <gtest/gtest.h>

#include <QAction>
#include <QProcess>
#include <QWidget>

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

QStringList VisibleEntries(QMenu* menu) {
  QStringList entries;
  for (QAction* action : menu->actions())
    if (action->isVisible() && !action->isSeparator())
      entries << action->objectName() + (action->isEnabled() ? "" : "(off)");
  return entries;
}

TEST(Tray, TipAndMenuFollowTheRunAndTheClients) {
  Station station;
  Nimbometer& nm = station.nm();
  QWidget window;
  window.show();
  TrayIcon tray(station, &window, "NBX_Nimbometer (v7.00.000)");
  nm.display.BarCloud[2] = {"Cloudy", 0, 0x00FFFF};
  nm.display.BarRain[2].Caption = "Dry";
  nm.display.BarDay[2].Caption = "Dark";

  struct Case {
    bool running;
    int clients;
    const char* tip;
    QStringList entries;
  } cases[] = {
      {false, 0, "NBX_Nimbometer (v7.00.000)", {"mPopStart", "mPopMinimize", "mPopRestore(off)", "mPopExit"}},
      {true, 0, "NBX_Nimbometer: Cloudy-Dry-Dark", {"mPopStop", "mPopMinimize", "mPopRestore(off)", "mPopExit"}},
      {true, 1, "NBX_Nimbometer: Cloudy-Dry-Dark", {"mPopMinimize", "mPopRestore(off)"}},
      {true, 0, "NBX_Nimbometer: Cloudy-Dry-Dark", {"mPopStop", "mPopMinimize", "mPopRestore(off)", "mPopExit"}},
  };
  for (const Case& c : cases) {
    nm.state.IsRunning = c.running;
    if (c.clients != nm.state.COMNoUsers) RegisterUsers(nm, c.clients - nm.state.COMNoUsers);
    tray.Update();
    EXPECT_EQ(tray.toolTip().toStdString(), c.tip);
    EXPECT_EQ(VisibleEntries(tray.menu()), c.entries);
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

TEST(Tray, CloseRefusedWhileAClientIsAttached) {
  Station station;
  Nimbometer& nm = station.nm();
  QWidget window;
  CloseGuard guard(nm, &window);
  struct Step {
    int delta;
    bool closes;
  } steps[] = {{+1, false}, {+1, false}, {-1, false}, {-1, true}};
  for (const Step& step : steps) {
    window.show();
    RegisterUsers(nm, step.delta);
    guard.Refresh();
    EXPECT_EQ(guard.closeButtonShown(), step.closes);
    EXPECT_EQ(window.close(), step.closes) << nm.state.COMNoUsers << " clients";
  }
}

TEST(Autostart, EntryWrittenValidAndRemoved) {
  test::TempDir home;
  qputenv("XDG_CONFIG_HOME", QByteArray::fromStdString(home.path()));
  const QString entry = QString::fromStdString(home.File("autostart/NBX_Nimbometer.desktop"));
  for (const QString& program : {QString("/usr/bin/nimbometer"), QString("/opt/my station/nimbo$meter")}) {
    ASSERT_TRUE(ApplyStartWithSession(nullptr, true, program));
    EXPECT_EQ(QProcess::execute("desktop-file-validate", {entry}), 0) << program.toStdString();
    EXPECT_TRUE(test::ReadFile(entry.toStdString()).find("Exec=" + StartWithSessionCommand(program).toStdString()) !=
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
