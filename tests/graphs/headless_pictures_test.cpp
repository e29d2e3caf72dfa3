#include <gtest/gtest.h>

#include <QImage>
#include <csignal>
#include <filesystem>

#include "graph_fixtures.h"
#include "graphs/image_export.h"
#include "support/child_process.h"

namespace nbx {
namespace {

using namespace std::chrono_literals;
using test::ChildProcess;

// The headless program against the simulated box over a pseudo-terminal, in
// a folder of its own: with no image folder set the pictures go into the
// current one.
TEST(HeadlessPictures, AHeadlessRunLeavesTheSevenPicturesAtTheirFixedNames) {
  test::TempDir dir;
  ChildProcess box(NBX_BOXSIM_PATH, {"--link", dir.File("ttyNBX"), "humidity=85", "rain=2600"});
  std::string line;
  ASSERT_TRUE(box.ReadLine(line, 5s) && line.rfind("PTY ", 0) == 0) << line;
  test::WriteFile(dir.File("station.ini"), "[Communication]\nPortName=" + dir.File("ttyNBX") +
                                               "\nRefreshPeriod=1\nTimeout=1\n[Window]\nGraphFreq=1\nGraphImagePath=" +
                                               dir.path() + "\n");
  // No display: the program goes offscreen by itself.
  ChildProcess station("/bin/sh",
                       {"-c", "cd '" + dir.path() + "' && exec '" NBX_NIMBOMETER_PATH
                              "' --headless --settings station.ini"},
                       {"XDG_CONFIG_HOME=" + dir.File("config"), "HOME=" + dir.path(), "DISPLAY=",
                        "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM="});

  auto allThere = [&] {
    for (int k = 0; k < 7; ++k)
      if (!std::filesystem::exists(dir.File(std::string(GraphFileName(GraphKind(k))) + ".png")))
        return false;
    return true;
  };
  for (int cycle = 0; cycle < 12 && !allThere(); ++cycle)
    while (station.ReadLine(line, 10s) && line.find(" sky ") == std::string::npos) {
    }
  ASSERT_TRUE(allThere());
  station.Signal(SIGTERM);
  EXPECT_EQ(station.Wait(10s), 0);

  const Config defaults;
  const QImage rain(QString::fromStdString(dir.File("NBX_ImageRainCondition.png")));
  ASSERT_EQ(rain.size(), QSize(DefaultGraphWidth, DefaultGraphHeight));
  EXPECT_EQ(rain.pixel(3, 30), test::Pixel(defaults.ColorRain[0].BackColor));
  const QImage humidity(QString::fromStdString(dir.File("NBX_ImageHumidityCondition.png")));
  EXPECT_EQ(humidity.pixel(3, 30), test::Pixel(defaults.ColorHumidity[2].BackColor));
  EXPECT_FALSE(QImage(QString::fromStdString(dir.File("NBX_ImageTemperature.png"))).isNull());
}

}  // namespace
}  // namespace nbx
