// The Alpaca block of the Setup tab: what a user types reaches the settings
// only when the server could bind it.

#include <gtest/gtest.h>

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

}  // namespace
}  // namespace nbx::test
