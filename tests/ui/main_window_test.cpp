// The main window on the simulated box: the Setup tab's controls reach the
// settings in a form the station can use, the Sensor tab shows what the box
// says, and edits from the window and from a bus client take one path.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include "automation/dbus/automation_server.h"
#include "ui/widgets/number_entry.h"
#include "ui_dialogs/modal_script.h"
#include "window_fixture.h"

namespace nbx::test {
namespace {

// Types into the emptied entry (or the combo box's) and presses Return.
void Type(QWidget* entry, const QString& text) {
  entry->setFocus();
  auto* line = qobject_cast<QLineEdit*>(entry);
  (line ? line : static_cast<QComboBox*>(entry)->lineEdit())->clear();
  QTest::keyClicks(entry, text);
  QTest::keyClick(entry, Qt::Key_Return);
}

// A client of the automation object on a connection of its own. The object
// answers on this same thread: each call runs the event loop until its reply.
class Client {
 public:
  ~Client() { QDBusConnection::disconnectFromBus("window-client"); }
  QDBusMessage Call(const QString& member, const QVariantList& args = {},
                    const char* interface = AutomationServiceName) {
    auto call = QDBusMessage::createMethodCall(AutomationServiceName, "/Nimbometer", interface, member);
    call.setArguments(args);
    return bus_.call(call, QDBus::BlockWithGui, 20000);
  }
  QVariant Get(const QString& property) {
    const QDBusMessage reply = Call("Get", {AutomationServiceName, property}, "org.freedesktop.DBus.Properties");
    return reply.arguments().value(0).value<QDBusVariant>().variant();
  }
  void Set(const QString& property, const QVariant& value) {
    Call("Set", {AutomationServiceName, property, QVariant::fromValue(QDBusVariant(value))},
         "org.freedesktop.DBus.Properties");
  }

 private:
  QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "window-client");
};

TEST(MainWindow, SetupControlsReachTheSettingsInAUsableForm) {
  WindowOnStation w;
  Config& c = w.nm.config;
  // Assistive technology finds each control by its caption: buttons and tabs
  // by their text, each entry and list by the label beside it.
  int entries = 0;
  for (QLineEdit* entry : w.window->findChildren<QLineEdit*>()) {
    if (qobject_cast<QComboBox*>(entry->parentWidget())) continue;
    ++entries;
    EXPECT_FALSE(entry->accessibleName().isEmpty()) << entry->objectName().toStdString();
  }
  EXPECT_GT(entries, 50);
  for (QAbstractButton* button : w.window->findChildren<QAbstractButton*>()) {
    const QString name = button->objectName();
    if (name.isEmpty() || name.startsWith("qt_")) continue;
    EXPECT_FALSE(button->text().isEmpty() && button->accessibleName().isEmpty()) << name.toStdString();
  }
  EXPECT_FALSE(w.Find<QComboBox>("COMPort")->accessibleName().isEmpty());
  for (QTabWidget* tabs : w.window->findChildren<QTabWidget*>())
    for (int i = 0; i < tabs->count(); ++i) EXPECT_FALSE(tabs->tabText(i).isEmpty());

  // A unit converts the limits held in it, once; a load in Fahrenheit converts nothing.
  const auto wind = c.WindLimit;
  const auto cloud = c.CloudLimit;
  w.Find<QRadioButton>("UnitsSpeed(2)")->click();
  EXPECT_NEAR(c.WindLimit[0], wind[0] / 3.6, 1e-9);
  EXPECT_EQ(w.Find<QLabel>("UnitWind(0)")->text(), "m/s");
  w.Find<QRadioButton>("UnitsTemp(1)")->click();
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(1)")->text(), "32.0");
  w.Find<QRadioButton>("UnitsTemp(0)")->click();
  EXPECT_NEAR(c.CloudLimit[1], cloud[1], 1e-9);
  c.UnitsTemp = {false, true};
  c.UnitTempStr = "F";
  c.CloudLimit = {20, 32, 86};
  w.window->Load();
  EXPECT_EQ(c.CloudLimit, (std::array<double, 3>{20, 32, 86}));
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(0)")->text(), "20.0");
  EXPECT_TRUE(w.Find<QRadioButton>("UnitsTemp(1)")->isChecked());

  // The Alpaca block takes bindable addresses and ports only.
  struct Alpaca { QString address, port; std::string wantAddress; int wantPort; };
  for (const Alpaca& row : {Alpaca{"0.0.0.0", "8080", "0.0.0.0", 8080}, Alpaca{"roof pc", "0", "0.0.0.0", 8080},
                            Alpaca{"192.168.1.300", "99999", "0.0.0.0", 8080},
                            Alpaca{"127.0.0.1", "11111", "127.0.0.1", 11111}}) {
    Type(w.Find("AlpacaAddress"), row.address);
    Type(w.Find("AlpacaPort"), row.port);
    EXPECT_EQ(c.AlpacaAddress, row.wantAddress) << row.address.toStdString();
    EXPECT_EQ(c.AlpacaPort, row.wantPort) << row.port.toStdString();
  }

  // The port entry takes COM names and device paths, each to its setting.
  struct Port { QString typed; int wantCOMPort; std::string wantPortName; };
  for (const Port& row : {Port{"COM3", 2, ""}, Port{" /dev/ttyUSB0 ", 2, "/dev/ttyUSB0"}, Port{"COM32", 31, ""},
                          Port{"COM33", 31, "COM33"}, Port{"  ", 31, "COM33"}}) {
    Type(w.Find("COMPort"), row.typed);
    EXPECT_EQ(c.COMPort, row.wantCOMPort) << row.typed.toStdString();
    EXPECT_EQ(c.PortName, row.wantPortName) << row.typed.toStdString();
  }
  w.Find("COMPort")->clearFocus();
  w.window->Render();
  EXPECT_EQ(w.Find<QComboBox>("COMPort")->currentText(), "COM33") << "the stored path is what the entry shows";

  // A remote hides the serial and heater controls, and shows them again.
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
  AutomationServer server{w.nm};
  QString error;
  ASSERT_TRUE(server.Register(QDBusConnection::sessionBus(), error)) << error.toStdString();
  ModalScript boxes;  // each message box cancelled, its text kept
  auto* start = w.Find<QAction>("mnuStart");
  auto* stop = w.Find<QAction>("mnuStop");
  auto* exit = w.Find<QAction>("mnuExit");
  EXPECT_TRUE(start->isVisible());
  EXPECT_FALSE(stop->isVisible());

  w.Find<QPushButton>("ButtSTART")->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return w.cycles >= 2; }, 20000));
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
  Type(w.Find("CloudLimit(0)"), "-7.5");
  EXPECT_EQ(boxes.messages, QStringList());
  EXPECT_DOUBLE_EQ(client.Get("ThreshTempClear").toDouble(), -7.5);
  // The same check of order on both paths: a clear limit above the cloudy one
  // is refused, with the message in the window's own box.
  Type(w.Find("CloudLimit(0)"), "9");
  EXPECT_EQ(boxes.messages.size(), 1);
  EXPECT_DOUBLE_EQ(client.Get("ThreshTempClear").toDouble(), -7.5);
  EXPECT_EQ(w.Find<NumberEntry>("CloudLimit(0)")->text(), "-7.5");

  // With a client attached: no Start, Stop or Exit, and closing is refused.
  client.Call("Attach");
  w.window->Render();
  EXPECT_FALSE(start->isVisible() || stop->isVisible() || exit->isVisible());
  w.window->close();
  QTest::qWait(300);
  EXPECT_TRUE(w.window->isVisible());
  EXPECT_TRUE(w.nm.state.IsRunning);
  client.Call("Detach");
  w.window->Render();
  EXPECT_TRUE(stop->isVisible() && exit->isVisible());

  // Stopped: the setup opens again.
  w.Find<QPushButton>("ButtSTOP")->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return w.stopped; }, 20000));
  w.window->Render();
  EXPECT_TRUE(w.Find("RefreshPeriod")->isEnabled());
  EXPECT_TRUE(start->isVisible());
}

}  // namespace
}  // namespace nbx::test
