#include <gtest/gtest.h>

#include <QImage>
#include <csignal>
#include <filesystem>

#include "graph_fixtures.h"
#include "graphs/image_export.h"
#include "support/station_programs.h"

namespace nbx::test {
namespace {

// The headless program against the simulated box over a pseudo-terminal.
TEST(HeadlessPictures, AHeadlessRunLeavesTheSevenPicturesAtTheirFixedNames) {
  TempDir dir;
  BoxProgram box(dir, {"humidity=85", "rain=2600"});
  ASSERT_TRUE(box.ready);
  // No display: the program goes offscreen by itself.
  const IniSections pictures{{"Window", {{"GraphFreq", "1"}, {"GraphImagePath", dir.path()}}}};
  StationProgram station(dir, LinkSettings(box.link, pictures), "station",
                         {"DISPLAY=", "WAYLAND_DISPLAY=", "QT_QPA_PLATFORM="});

  auto allThere = [&] {
    int there = 0;
    for (int k = 0; k < 7; ++k)
      there += std::filesystem::exists(dir.File(std::string(GraphFileName(GraphKind(k))) + ".png"));
    return there == 7;
  };
  std::string line;
  for (int cycle = 0; cycle < 12 && !allThere() && station.NextCycle(line); ++cycle) {
  }
  ASSERT_TRUE(allThere()) << ReadFile(station.errors);
  station.process.Signal(SIGTERM);
  EXPECT_EQ(station.process.Wait(10s), 0);

  const QImage rain(QString::fromStdString(dir.File("NBX_ImageRainCondition.png")));
  ASSERT_EQ(rain.size(), QSize(DefaultGraphWidth, DefaultGraphHeight));
  EXPECT_EQ(rain.pixel(3, 30), Pixel(Config{}.ColorRain[0].BackColor));
}

}  // namespace
}  // namespace nbx::test
