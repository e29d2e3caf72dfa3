#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "core/nimbometer.h"
#include "core/serial_date.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_scale.h"
#include "graphs/graph_span.h"

namespace nbx {
namespace {

std::vector<double> Walked(const SiteState& s) {
  std::vector<double> values;
  auto keep = [&](const GraphPoint& p) { values.push_back(p.Value); };
  WalkRing(s.NBX_GraphArrayCloud, s.CloudArrayFst, s.CloudArrayLst, keep, keep);
  return values;
}

TEST(GraphRing, FirstPointStandsTwiceThenTheRingWrapsAfterNMinusOnePoints) {
  SiteState s;
  GraphRingRef ring = RingOf(s, GraphKind::Cloud);
  AddRingPoint(ring, 5, 100.0, -18);
  EXPECT_EQ(RingUpperBound(s.NBX_GraphArrayCloud), 5);
  EXPECT_EQ(Walked(s), (std::vector<double>{-18, -18}));
  EXPECT_EQ(s.NBX_GraphArrayCloud[1].Time, s.NBX_GraphArrayCloud[2].Time);

  for (int i = 1; i <= 3; ++i) AddRingPoint(ring, 5, 100.0 + i, i);
  EXPECT_EQ(s.CloudArrayLst, 5);  // N - 1 points fill the ring up to N
  EXPECT_EQ(Walked(s), (std::vector<double>{-18, -18, 1, 2, 3}));

  AddRingPoint(ring, 5, 104.0, 4);
  EXPECT_EQ(std::tuple(s.CloudArrayLst, s.CloudArrayFst), std::tuple(1, 2));
  EXPECT_EQ(Walked(s), (std::vector<double>{-18, 1, 2, 3, 4}));
  AddRingPoint(ring, 5, 105.0, 5);
  EXPECT_EQ(Walked(s), (std::vector<double>{1, 2, 3, 4, 5}));

  // Other rings are untouched; a ring of no points adds nothing.
  EXPECT_EQ(RingUpperBound(s.NBX_GraphArrayRain), 0);
  AddRingPoint(RingOf(s, GraphKind::Rain), 0, 1.0, 1);
  EXPECT_EQ(RingUpperBound(s.NBX_GraphArrayRain), 0);
}

TEST(GraphRing, ANewNumberOfPointsEmptiesAllSevenAndSetsTheSpan) {
  Nimbometer nm;
  const GraphKind kinds[] = {GraphKind::Cloud, GraphKind::Rain,     GraphKind::Wind,    GraphKind::Day,
                             GraphKind::Temp,  GraphKind::Humidity, GraphKind::Pressure};
  for (GraphKind kind : kinds)
    for (int i = 0; i < 3; ++i) AddRingPoint(RingOf(nm.state, kind), 120, i, i);

  nm.config.GraphNoPoints = 200;
  GraphNoPointsChanged(nm);
  for (GraphKind kind : kinds) EXPECT_EQ(RingUpperBound(RingOf(nm.state, kind).ring), 0);
  EXPECT_EQ(nm.display.GraphSpan.Caption + " " + nm.display.GraphSpanDesc.Caption, "12000 03 h 20 m 00 s");
  EXPECT_EQ(GraphSpanDesc(3725), "01 h 02 m 05 s");

  AddRingPoint(RingOf(nm.state, GraphKind::Day), 200, 7, 7);
  EXPECT_EQ(
      std::tuple(RingUpperBound(nm.state.NBX_GraphArrayDay), nm.state.DayArrayFst, nm.state.DayArrayLst),
      std::tuple(200, 1, 2));

  // The drawing computes the span itself when no one has yet: 120 points of six cycles of 15 s.
  Nimbometer fresh;
  fresh.config.RefreshPeriod = 15;
  EXPECT_EQ(GraphSpanSeconds(fresh), 10800);
}

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
  const Case cases[] = {{true, cloud, -12.5, 0, 15}, {true, cloud, -5, 1, 30},     {true, cloud, 0, 2, 60},
                        {true, cloud, 99900, 3, 89}, {true, cloud, -99900, -1, 1}, {false, rain, 3000, 1, 45},
                        {false, rain, 2800, 1, 60},  {false, rain, 1400, 2, 75},   {false, rain, -1, 3, 89},
                        {false, rain, 99999, -1, 1}};
  for (const Case& c : cases) {
    const BandPosition at = MapBandValue(c.rises, c.limits, c.value, 0, 90);
    EXPECT_EQ(std::tuple(at.band, at.y), std::tuple(c.band, c.y)) << c.value;
  }

  // Equal or crossed limits never give a coordinate that is not a number.
  for (const BandLimits& odd : {BandLimits{5, 5, 5, 5}, BandLimits{30, 0, -5, -20}, BandLimits{0, 10, 10, 0}})
    for (bool rises : {true, false})
      for (double v : {-30.0, -5.0, 0.0, 5.0, 10.0, 30.0, double(NAN), double(INFINITY)}) {
        const double y = MapBandValue(rises, odd, v, 0, 90).y;
        EXPECT_TRUE(y >= 0 && y <= 90) << v << " gives " << y;
      }

  // Temperatures: value, scale bottom and top, the row on a plot of 200.
  const double temperatures[][4] = {{30, -30, 30, 0},   {999, -30, 30, 0}, {-45, -30, 30, 200},
                                    {0, -30, 30, 100},  {4, 4, 4, 0},      {5, 10, -10, 0},
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
  EXPECT_EQ(std::tuple(ticks[0].x, ticks[0].label, ticks[10].label), std::tuple(50, "22:10", "23:50"));

  // Five-minute steps show seconds; on a narrow picture labels are dropped.
  ticks = TimeAxis(GraphTimeRange(t0, t0, 3600), 0, 240, width40);
  ASSERT_EQ(ticks.size(), 11u);
  EXPECT_EQ(ticks[0].label, "22:05:00");
  EXPECT_TRUE(ticks[0].labelShown && ticks[3].labelShown);  // the two between would overlap
  int previousEnd = -1000;
  for (const TimeTick& t : ticks) {
    if (!t.labelShown) continue;
    EXPECT_TRUE(t.labelLeft >= previousEnd + 10 &&
                t.labelLeft == t.x - 20);  // dropped or in place, never moved
    previousEnd = t.labelLeft + t.labelWidth;
  }

  // A clock set back keeps the span forward of the first point; no span or equal times: no axis.
  const TimeRange back = GraphTimeRange(t0, AddSeconds(t0, -600), 7200);
  EXPECT_TRUE(back.Usable() && std::abs((back.T1 - back.T0) * 86400 - 7200) < 1e-3);
  EXPECT_FALSE(GraphTimeRange(t0, t0, 0).Usable() || RingTimeRange(GraphRing(1), 0, 0, 7200).Usable());
  EXPECT_TRUE(TimeAxis(GraphTimeRange(t0, t0, 0), 0, 600, width40).empty());
  EXPECT_EQ(std::tuple(ToPixel(1e300), ToPixel(NAN)), std::tuple(1000000, 0));
}

}  // namespace
}  // namespace nbx
