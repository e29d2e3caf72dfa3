#include <gtest/gtest.h>

#include <QFontMetrics>

#include "graph_fixtures.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_routines.h"

namespace nbx {
namespace {

using test::CountColour;
using test::GraphStation;
using test::Pixel;

// The plot's bottom edge: the picture less one line of its own font.
int PlotBottom(const GraphSurface& surface) {
  return surface.ScaleHeight() - QFontMetrics(surface.font, &surface.image).height();
}

TEST(BandGraph, BandsFillTheThirdsUpsideDownForHumidityAndOnePointDrawsNoCurve) {
  GraphStation st;
  st.AddPoint(GraphKind::Cloud, -10);
  st.AddPoint(GraphKind::Humidity, 60);
  const Config& c = st.nm.config;
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Humidity}) {
    const QImage& image = st.Picture(kind);
    const int bottom = PlotBottom(st.pictures.Surface(kind));
    const auto& swatches = kind == GraphKind::Cloud ? c.ColorCloud : c.ColorHumidity;
    for (int row = 0; row < 3; ++row) {
      const int swatch = kind == GraphKind::Cloud ? row : 2 - row;
      EXPECT_EQ(image.pixel(3, bottom * (2 * row + 1) / 6), Pixel(swatches[swatch].BackColor))
          << GraphTag(kind) << " row " << row;
    }
    EXPECT_EQ(CountColour(image, image.rect(), Pixel(c.GraphColorCloud[1])), 0) << GraphTag(kind);
    // The border in the axis colour, the strip below the plot in the picture's own colour.
    EXPECT_EQ(image.pixel(0, bottom / 2), Pixel(c.GraphColorCloud[0]));
    EXPECT_EQ(image.pixel(image.width() - 1, bottom / 2), Pixel(c.GraphColorCloud[0]));
    EXPECT_EQ(image.pixel(1, image.height() - 1), Pixel(colours::SystemButtonFace));
  }
  // A new colour shows at the next redraw from the rings.
  st.nm.config.ColorCloud[1].BackColor = 0x804020;
  RedrawGraphs(st.nm);
  const int bottom = PlotBottom(st.pictures.Surface(GraphKind::Cloud));
  EXPECT_EQ(st.Picture(GraphKind::Cloud).pixel(3, bottom / 2), Pixel(0x804020));
}

TEST(TemperatureGraph, LinearScaleOnItsOwnBackground) {
  GraphStation st;
  const Config& c = st.nm.config;
  for (int i = 0; i < 2; ++i) {  // an hour at 0, half way between -30 and 30
    st.AddPoint(GraphKind::Temp, 0);
    st.time.RunFor(1800 * 1000);
  }
  const QImage& image = st.Picture(GraphKind::Temp);
  const int bottom = PlotBottom(st.pictures.Surface(GraphKind::Temp));
  EXPECT_EQ(image.pixel(image.width() - 2, bottom / 4 + 3), Pixel(c.GraphColorTemp[2]));
  int row = 0;
  while (row < bottom && image.pixel(100, row) != Pixel(c.GraphColorTemp[1])) ++row;
  EXPECT_NEAR(row, bottom / 2.0, 1.5);
  // Left of the plot the scale labels, in the axis colour's shades.
  const int axis = CountColour(image, QRect(0, bottom - 8, 30, 16), Pixel(c.GraphColorTemp[2]));
  EXPECT_GT(axis, 0);
  EXPECT_LT(axis, 30 * 16);
}

TEST(GraphDrawing, OddRingsAndLimitsDrawWithoutLeavingThePicture) {
  GraphStation st;
  Config& c = st.nm.config;
  c.CloudLimit = {5, 5, 5};          // no span between thresholds
  c.RainLimit = {2800, 3200, 3200};  // out of order
  c.GraphTempMax = c.GraphTempMin = 10;
  const Colour curve = c.GraphColorCloud[1];
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Rain, GraphKind::Temp}) {
    st.AddPoint(kind, 99900);
    st.time.JumpClock(-3600 * 1000);  // the clock went back an hour
    st.AddPoint(kind, 999);
    st.time.JumpClock(7200 * 1000);
    st.AddPoint(kind, NAN);
    EXPECT_FALSE(st.Picture(kind).isNull());
  }
  // With no span at all there is no axis and no curve, but the bands stay.
  st.nm.config.RefreshPeriod = 0;
  st.nm.display.GraphSpan.Caption.clear();
  EmptyRing(st.nm.state.NBX_GraphArrayWind);
  st.AddPoint(GraphKind::Wind, 3);
  const QImage& wind = st.Picture(GraphKind::Wind);
  EXPECT_EQ(CountColour(wind, wind.rect(), Pixel(curve)), 0);
  EXPECT_EQ(wind.pixel(3, 5), Pixel(c.ColorWind[0].BackColor));
}

}  // namespace
}  // namespace nbx
