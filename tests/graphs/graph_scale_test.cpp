#include <gtest/gtest.h>

#include <cmath>

#include "core/serial_date.h"
#include "graphs/graph_scale.h"

namespace nbx {
namespace {

TEST(GraphScale, FarLimitOfTheCloudGraphFollowsTheUnit) {
  Config c;
  EXPECT_EQ(BandLimitsFor(c, GraphKind::Cloud).Far, -20);
  c.UnitTempStr = "F";
  c.CloudLimit = {23, 32, 86};
  EXPECT_EQ(FarLimitCloud(c), -4);
}

TEST(GraphScale, BothMappingsPlaceValuesInTheirBandsAndSentinelsAtTheEdges) {
  const BandLimits cloud{-20, -5, 0, 30}, rain{3520, 3200, 2800, 0};  // top 0, bottom 90: bands of 30
  struct Case {
    bool rises;
    BandLimits limits;
    double value;
    int band;
    double y;
  };
  // A value at L1 belongs to the third band rising, to the second falling.
  // The sentinels of a lost link lie beyond the limits, one pixel inside.
  const Case cases[] = {
      {true, cloud, -12.5, 0, 15}, {true, cloud, -5, 1, 30},     {true, cloud, 0, 2, 60},
      {true, cloud, 99900, 3, 89}, {true, cloud, -99900, -1, 1},
      {false, rain, 3000, 1, 45},  {false, rain, 2800, 1, 60},    {false, rain, 1400, 2, 75},
      {false, rain, -1, 3, 89},    {false, rain, 99999, -1, 1}};
  for (const Case& c : cases) {
    const BandPosition at = MapBandValue(c.rises, c.limits, c.value, 0, 90);
    EXPECT_EQ(at.band, c.band) << c.value;
    EXPECT_DOUBLE_EQ(at.y, c.y) << c.value;
  }

  // Equal or crossed limits never give a coordinate that is not a number.
  for (const BandLimits& odd : {BandLimits{5, 5, 5, 5}, BandLimits{30, 0, -5, -20}, BandLimits{0, 10, 10, 0}})
    for (bool rises : {true, false})
      for (double v : {-30.0, -5.0, 0.0, 5.0, 10.0, 30.0, double(NAN), double(INFINITY)}) {
        const double y = MapBandValue(rises, odd, v, 0, 90).y;
        EXPECT_TRUE(y >= 0 && y <= 90) << v << " gives " << y;
      }

  // Temperatures: value, scale bottom and top, the row on a plot of 200.
  const double temperatures[][4] = {{30, -30, 30, 0},    {999, -30, 30, 0}, {-45, -30, 30, 200},
                                    {0, -30, 30, 100},   {4, 4, 4, 0},      {5, 10, -10, 0},
                                    {NAN, -30, 30, 200}};
  for (const auto& [v, low, high, y] : temperatures)
    EXPECT_EQ(MapTemperatureValue(v, low, high, 0, 200), y) << v;
}

TEST(GraphScale, TimeAxisHasTwelveStepsAndDropsLabelsThatWouldOverlap) {
  const double t0 = ToSerialDate({2026, 11, 21, 22, 0, 0, 0});
  auto width40 = [](std::string_view) { return 40; };
  // A young graph keeps the full span: two hours, steps of ten minutes.
  const TimeRange young = GraphTimeRange(t0, AddSeconds(t0, 60), 7200);
  EXPECT_NEAR((young.T1 - young.T0) * 86400, 7200, 1e-3);
  auto ticks = TimeAxis(young, 0, 600, width40);
  ASSERT_EQ(ticks.size(), 11u);
  EXPECT_EQ(ticks[0].x, 50);
  EXPECT_EQ(ticks[0].label, "22:10");
  EXPECT_EQ(ticks[10].label, "23:50");

  // Five-minute steps show seconds; on a narrow picture labels are dropped.
  ticks = TimeAxis(GraphTimeRange(t0, t0, 3600), 0, 240, width40);
  ASSERT_EQ(ticks.size(), 11u);
  EXPECT_EQ(ticks[0].label, "22:05:00");
  EXPECT_FALSE(ticks[1].labelShown);  // left edge 20 < 0 + 40 + 10
  EXPECT_FALSE(ticks[2].labelShown);  // 40 < 50
  EXPECT_TRUE(ticks[0].labelShown && ticks[3].labelShown);
  int previousEnd = -1000;
  for (const TimeTick& t : ticks) {
    if (!t.labelShown) continue;
    EXPECT_GE(t.labelLeft, previousEnd + 10);
    EXPECT_EQ(t.labelLeft, t.x - 20);  // dropped or in place, never moved
    previousEnd = t.labelLeft + t.labelWidth;
  }

  // A clock set back keeps the full span forward of the first point; no span
  // and equal times give no axis at all.
  const TimeRange back = GraphTimeRange(t0, AddSeconds(t0, -600), 7200);
  EXPECT_TRUE(back.Usable());
  EXPECT_NEAR((back.T1 - back.T0) * 86400, 7200, 1e-3);
  EXPECT_FALSE(GraphTimeRange(t0, t0, 0).Usable());
  EXPECT_TRUE(TimeAxis(GraphTimeRange(t0, t0, 0), 0, 600, width40).empty());
  EXPECT_FALSE(RingTimeRange(GraphRing(1), 0, 0, 7200).Usable());
  EXPECT_EQ(ToPixel(1e300), 1000000);
  EXPECT_EQ(ToPixel(NAN), 0);
}

}  // namespace
}  // namespace nbx
