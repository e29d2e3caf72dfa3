#include <gtest/gtest.h>

#include <QFontMetrics>
#include <cmath>
#include <cstdlib>

#include "graph_fixtures.h"
#include "graphs/graph_routines.h"
#include "support/child_process.h"

namespace nbx {
namespace {

double Ramp(double h, double from, double to, double a, double b) {
  return h <= from ? a : h >= to ? b : a + (b - a) * (h - from) / (to - from);
}

// A November night from 22:00: clear, then cloud, wind and a shower after midnight, a grey dawn.
// The box's readings (100 m above the sea), and the brightness and sea-level pressure.
struct NightModel {
  std::vector<std::pair<std::string, double>> box;
  double day, seaLevelPressure;
};
NightModel NightAt(double h) {
  const double ambient = 9 - 0.4 * h + (h > 3 && h < 7 ? 1.5 : 0), day = Ramp(h, 8.9, 9.7, 3000, 3);
  const double pressure = h < 5 ? 1014 - 2.6 * h : 1001 + 1.5 * (h - 5);
  return {{{"sky", h < 5 ? Ramp(h, 2.5, 4.5, -18, 3) : Ramp(h, 6, 7, 3, -17)},
           {"ambient", ambient},
           {"humiditytemp", ambient},
           {"rain", h > 4.6 && h < 5.6 ? 2500 : (h > 4.3 && h < 6.2 ? 3000 : 3350)},
           {"wind", h < 5 ? Ramp(h, 3, 4.5, 4, 17 + 2 * std::sin(h * 9)) : Ramp(h, 6, 7, 16, 6)},
           {"humidity", h < 4.6 ? 62 + 6 * h : Ramp(h, 5.6, 7, 93, 78)},
           {"pressure", pressure - 12},
           {"ldr", 50000 - day}},
          day,
          pressure};
}

// The brightness and sea-level pressure stages come with other parts of the
// program: while a field stays as the night last left it, no stage has
// touched it, and the night puts in the value that stage would give.
void StandIn(double& field, double& lastPut, double value) {
  if (field != lastPut) return;
  field = value;
  lastPut = value;
}

// How many pixels of the curve colour lie in band row `row` of a band picture.
int CurveInBand(const GraphSurface& surface, int row, QRgb curve) {
  const int bottom = surface.ScaleHeight() - QFontMetrics(surface.font, &surface.image).height();
  return test::CountColour(surface.image,
                           QRect(2, bottom * row / 3 + 3, surface.ScaleWidth() - 4, bottom / 3 - 6), curve);
}

TEST(GraphNight, ASimulatedNightLeavesSevenPicturesThatShowHowItWent) {
  test::TempDir dir;
  const char* keep = std::getenv("NBX_GRAPH_PICTURES_DIR");
  test::GraphStation st;
  Config& c = st.nm.config;
  c.RefreshPeriod = 60;
  c.GraphFreq = 5;  // a point every five minutes, ten hours on a picture
  c.GraphImagePath = keep && *keep ? keep : dir.path();
  c.CloudTempFactor = false;  // the night's sky is the sky the classes are meant against
  // Saved once the night is over; saving at every graph tick is the headless program's test.
  c.GraphImage.fill(0);
  st.StartAndRunFirstCycles();

  double dayPut = st.nm.state.Value_Day, pressurePut = st.nm.state.Value_RelPressure;
  for (int minute = 2; minute < 600; ++minute) {
    const NightModel m = NightAt(minute / 60.0);
    for (const auto& [name, value] : m.box) ASSERT_TRUE(st.box.Apply(name + "=" + std::to_string(value)));
    st.RunPeriods(1);
    StandIn(st.nm.state.Value_Day, dayPut, m.day);
    StandIn(st.nm.state.Value_RelPressure, pressurePut, m.seaLevelPressure);
  }

  c.GraphImage.fill(1);
  for (int k = 0; k < 7; ++k) ExportGraphPicture(st.nm, GraphKind(k));
  EXPECT_EQ(st.nm.display.StatusBar2.Caption, "");
  // Each picture tells the night: (graph, band row) pairs the curve passes through.
  const QRgb curve = test::Pixel(c.GraphColorCloud[1]);
  const std::pair<GraphKind, int> seen[] = {
      {GraphKind::Cloud, 0}, {GraphKind::Cloud, 2},    {GraphKind::Rain, 0},     {GraphKind::Rain, 1},
      {GraphKind::Rain, 2},  {GraphKind::Wind, 0},     {GraphKind::Wind, 2},     {GraphKind::Day, 0},
      {GraphKind::Day, 2},   {GraphKind::Humidity, 0}, {GraphKind::Humidity, 1}, {GraphKind::Pressure, 1}};
  for (const auto& [kind, row] : seen)
    EXPECT_GT(CurveInBand(st.pictures.Surface(kind), row, curve), 0) << GraphTag(kind) << " " << row;
  EXPECT_EQ(CurveInBand(st.pictures.Surface(GraphKind::Pressure), 2, curve), 0);
  const QImage& temp = st.Picture(GraphKind::Temp);
  EXPECT_GT(test::CountColour(temp, temp.rect(), test::Pixel(c.GraphColorTemp[1])), 400);
}

}  // namespace
}  // namespace nbx
