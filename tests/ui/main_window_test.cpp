// The main window on a running station: what the box says shows on the
// Sensor tab, edits from the window and from a client take one path, and
// the window follows the run and the clients.

#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QTimer>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "ui/widgets/number_entry.h"
#include "window_fixture.h"

namespace nbx::test {
namespace {

void Type(NumberEntry* entry, const QString& text) {
  entry->setFocus();
  entry->clear();
  QTest::keyClicks(entry, text);
  QTest::keyClick(entry, Qt::Key_Return);
}

TEST(MainWindow, UnitsRoundTripAndALoadInFahrenheitConvertsNothing) {
  WindowOnStation w;
  Config& c = w.nm.config;
  const auto wind = c.WindLimit;
  const auto cloud = c.CloudLimit;
  for (const char* unit : {"UnitsSpeed(1)", "UnitsSpeed(3)", "UnitsSpeed(2)"}) {
    w.Find<QRadioButton>(unit)->click();
    EXPECT_NE(c.WindLimit[0], wind[0]) << unit;
  }
  EXPECT_EQ(w.Find<QLabel>("UnitWind(0)")->text(), "m/s");
  w.Find<QRadioButton>("UnitsSpeed(0)")->click();
  w.Find<QRadioButton>("UnitsTemp(1)")->click();
  EXPECT_NEAR(c.CloudLimit[1], 32.0, 1e-9);
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(1)")->text(), "32.0");
  w.Find<QRadioButton>("UnitsTemp(0)")->click();
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(c.WindLimit[i], wind[i], 1e-9);
    EXPECT_NEAR(c.CloudLimit[i], cloud[i], 1e-9);
  }

  // Limits stored in Fahrenheit load as they are.
  WindowOnStation f;
  f.nm.config.UnitsTemp = {false, true};
  f.nm.config.UnitTempStr = "F";
  f.nm.config.CloudLimit = {20, 32, 86};
  f.window->Load();
  EXPECT_EQ(f.nm.config.CloudLimit, (std::array<double, 3>{20, 32, 86}));
  EXPECT_EQ(f.Find<NumberEntry>("CloudLimit(0)")->text(), "20.0");
  EXPECT_TRUE(f.Find<QRadioButton>("UnitsTemp(1)")->isChecked());
}

TEST(MainWindow, RemoteHidesTheSerialAndHeaterControls) {
  WindowOnStation w;
  const char* masterOnly[] = {"COMPort", "ButtCOMMTest", "PORTTimeout", "HeatTemp(0)", "HeatOffValue",
                              "SWRole(0)", "SWAnemoModel(1)", "AmbTempOffset", "UnknownRS232NoError", "AlarmCom"};
  w.Find<QRadioButton>("NMRole(1)")->click();
  for (const char* name : masterOnly) EXPECT_TRUE(w.Find(name)->isHidden()) << name;
  EXPECT_FALSE(w.Find("ButtReload")->isHidden());
  EXPECT_TRUE(w.window->windowTitle().startsWith("REMOTE NBX_Nimbometer (v")) << w.window->windowTitle().toStdString();
  EXPECT_EQ(w.nm.state.DeviceMode, "REMOTE");

  w.Find<QRadioButton>("NMRole(0)")->click();
  for (const char* name : masterOnly) EXPECT_FALSE(w.Find(name)->isHidden()) << name;
  EXPECT_TRUE(w.Find("ButtReload")->isHidden());
  EXPECT_TRUE(w.window->windowTitle().startsWith("NBX_Nimbometer (v"));
}

TEST(MainWindow, RunsTheBoxAndSharesEditsWithClients) {
  WindowOnStation w({"sky=-25", "humidity=49"});
  ASSERT_TRUE(w.registered);
  // Every message box is answered by its first button, and its text kept.
  QStringList messages;
  QTimer answer;
  QObject::connect(&answer, &QTimer::timeout, [&messages] {
    QWidget* box = QApplication::activeModalWidget();
    if (!box || box->objectName() != "NBXError") return;
    messages << box->findChild<QLabel*>("ERR_Description")->text();
    box->findChild<QPushButton*>("Butt(0)")->click();
  });
  answer.start(20);
  auto* start = w.Find<QAction>("mnuStart");
  auto* stop = w.Find<QAction>("mnuStop");
  auto* exit = w.Find<QAction>("mnuExit");
  EXPECT_TRUE(start->isVisible());
  EXPECT_FALSE(stop->isVisible());

  w.Find<QPushButton>("ButtSTART")->click();
  int cycles = 0;
  QObject::connect(&w.station, &Station::cycleProcessed, [&cycles] { ++cycles; });
  ASSERT_TRUE(WindowOnStation::WaitUntil([&] { return cycles >= 2; }));
  // The Sensor tab shows what the box was told.
  EXPECT_EQ(w.Find<QLabel>("BarCloud(2)")->text(), "Clear");
  EXPECT_EQ(w.Find<QLabel>("BarRH(1)")->text(), "RH 49%");
  EXPECT_EQ(w.Find<QLabel>("BarRH(2)")->text(), "Dry");
  // Running: the setup is locked, and the menus offer Stop.
  EXPECT_FALSE(w.Find("RefreshPeriod")->isEnabled());
  EXPECT_FALSE(start->isVisible());
  EXPECT_TRUE(stop->isVisible());

  // A client's write shows in the control; a typed value reaches the client.
  Client client;
  client.Set("ThreshTempCloudy", 3.5);
  w.window->Render();
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(1)")->text(), "3.5");
  Type(w.Find<NumberEntry>("CloudLimit(0)"), "-7.5");
  EXPECT_EQ(messages, QStringList()) << messages.join("|").toStdString();
  EXPECT_DOUBLE_EQ(client.Get("ThreshTempClear").toDouble(), -7.5);
  // The same check of order on both paths: a clear limit above the cloudy one
  // is refused, with the message in the window's own box.
  Type(w.Find<NumberEntry>("CloudLimit(0)"), "9");
  EXPECT_EQ(messages.size(), 1);
  EXPECT_DOUBLE_EQ(client.Get("ThreshTempClear").toDouble(), -7.5);
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(0)")->text(), "-7.5");

  // With a client attached: no Start, Stop or Exit, and closing is refused.
  client.Call("Attach");
  w.window->Render();
  EXPECT_FALSE(start->isVisible());
  EXPECT_FALSE(stop->isVisible());
  EXPECT_FALSE(exit->isVisible());
  w.window->close();
  WindowOnStation::WaitUntil([] { return false; }, 300);
  EXPECT_TRUE(w.window->isVisible());
  EXPECT_TRUE(w.nm.state.IsRunning);
  client.Call("Detach");
  w.window->Render();
  EXPECT_TRUE(stop->isVisible());
  EXPECT_TRUE(exit->isVisible());

  // Stopped: the setup opens again.
  bool stopped = false;
  QObject::connect(&w.station, &Station::stopped, [&stopped] { stopped = true; });
  w.Find<QPushButton>("ButtSTOP")->click();
  ASSERT_TRUE(WindowOnStation::WaitUntil([&] { return stopped; }));
  w.window->Render();
  EXPECT_TRUE(w.Find("RefreshPeriod")->isEnabled());
  EXPECT_TRUE(start->isVisible());
}

// Assistive technology finds each control by its caption: the buttons, tabs
// and menus by their text, each number entry and list by the label beside it.
TEST(MainWindow, EveryControlIsNamedForAssistiveTechnology) {
  WindowOnStation w;
  int entries = 0;
  for (QLineEdit* entry : w.window->findChildren<QLineEdit*>()) {
    if (qobject_cast<QComboBox*>(entry->parentWidget())) continue;
    ++entries;
    EXPECT_FALSE(entry->accessibleName().isEmpty()) << entry->objectName().toStdString();
  }
  EXPECT_GT(entries, 50);
  for (QAbstractButton* button : w.window->findChildren<QAbstractButton*>()) {
    if (button->objectName().isEmpty() || button->objectName().startsWith("qt_")) continue;
    EXPECT_FALSE(button->text().isEmpty() && button->accessibleName().isEmpty())
        << button->objectName().toStdString();
  }
  EXPECT_FALSE(w.Find<QComboBox>("COMPort")->accessibleName().isEmpty());
  for (QTabWidget* tabs : w.window->findChildren<QTabWidget*>())
    for (int i = 0; i < tabs->count(); ++i) EXPECT_FALSE(tabs->tabText(i).isEmpty());
}

}  // namespace
}  // namespace nbx::test
