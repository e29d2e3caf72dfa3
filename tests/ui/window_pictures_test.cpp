// The pictures of the window for the README: every tab and sub-tab of the
// window on a running simulated station. NBX_WINDOW_PICTURES names the
// folder to write them to (scripts/window-pictures.sh sets docs/window);
// without it they go to a temporary folder and are only checked.

#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPushButton>
#include <QSet>
#include <QTabWidget>
#include <QTest>

#include "window_fixture.h"

namespace nbx::test {
namespace {

TEST(WindowPictures, EveryTabAndSubTabOnARunningStation) {
  WindowOnStation w({"sky=-21", "ambient=12", "humidity=63", "wind=14", "rain=2950"});
  w.window->resize(1000, 720);
  w.nm.config.GraphFreq = 1;  // every graph drawn at each cycle
  w.Find<QPushButton>("ButtSTART")->click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return w.cycles >= 3; }, 20000));

  const QByteArray wanted = qgetenv("NBX_WINDOW_PICTURES");
  const QDir folder(wanted.isEmpty() ? w.dir.path() : QString::fromLocal8Bit(wanted));
  QDir().mkpath(folder.path());
  auto shoot = [&](const QString& name) {
    w.window->Render();
    QTest::qWait(50);
    const QImage picture = w.window->grab().toImage();
    // A window that did not draw its tab shows a few flat colours only.
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 4)
      for (int x = 0; x < picture.width(); x += 4) colours.insert(picture.pixel(x, y));
    EXPECT_GT(colours.size(), 8) << name.toStdString();
    EXPECT_TRUE(picture.save(folder.filePath(name + ".png"))) << name.toStdString();
  };
  QTabWidget* tabs = w.window->mainTabs();
  QTabWidget* setup = w.window->setupTabs();
  const char* names[] = {"sensor", "graphs", "limits", "unsafe", "setup", "device"};
  for (int tab = 0; tab < tabs->count(); ++tab) {
    tabs->setCurrentIndex(tab);
    if (tab != 4) shoot(names[tab]);
    for (int sub = 0; tab == 4 && sub < setup->count(); ++sub) {
      setup->setCurrentIndex(sub);
      shoot("setup-" + setup->tabText(sub).toLower());
    }
  }
}

}  // namespace
}  // namespace nbx::test
