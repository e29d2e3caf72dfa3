// Entries of the Setup tab that take typed text: what a user types reaches
// the settings only in a form the station can use.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include "ui/widgets/number_entry.h"
#include "window_fixture.h"

namespace nbx::test {
namespace {

template <typename Entry>
void Type(Entry* entry, const QString& text) {
  entry->setFocus();
  entry->selectAll();
  QTest::keyClicks(entry, text);
  QTest::keyClick(entry, Qt::Key_Return);
}

TEST(AlpacaBlock, TakesBindableAddressesAndPortsOnly) {
  WindowOnStation w;
  const Config& c = w.nm.config;
  struct Row { QString address, port, wantAddress; int wantPort; };
  for (const Row& row : {Row{"0.0.0.0", "8080", "0.0.0.0", 8080}, Row{"roof pc", "0", "0.0.0.0", 8080},
                         Row{"192.168.1.300", "99999", "0.0.0.0", 8080}, Row{"127.0.0.1", "11111", "127.0.0.1", 11111}}) {
    Type(w.Find<QLineEdit>("AlpacaAddress"), row.address);
    Type(w.Find<NumberEntry>("AlpacaPort"), row.port);
    EXPECT_EQ(c.AlpacaAddress, row.wantAddress.toStdString()) << row.address.toStdString();
    EXPECT_EQ(c.AlpacaPort, row.wantPort) << row.port.toStdString();
  }
}

TEST(PortEntry, ComNamesAndDevicePathsReachTheirSettings) {
  WindowOnStation w;
  const Config& c = w.nm.config;
  auto* port = w.Find<QComboBox>("COMPort");
  struct Row { QString typed; int wantCOMPort; std::string wantPortName; };
  for (const Row& row : {Row{"COM3", 2, ""}, Row{" /dev/ttyUSB0 ", 2, "/dev/ttyUSB0"}, Row{"COM32", 31, ""},
                         Row{"COM33", 31, "COM33"}, Row{"  ", 31, "COM33"}}) {
    port->setFocus();
    port->lineEdit()->selectAll();
    QTest::keyClicks(port, row.typed);
    QTest::keyClick(port, Qt::Key_Return);
    EXPECT_EQ(c.COMPort, row.wantCOMPort) << row.typed.toStdString();
    EXPECT_EQ(c.PortName, row.wantPortName) << row.typed.toStdString();
  }
  port->clearFocus();
  w.window->Render();
  EXPECT_EQ(port->currentText(), "COM33") << "the stored path is what the entry shows";
}

}  // namespace
}  // namespace nbx::test
