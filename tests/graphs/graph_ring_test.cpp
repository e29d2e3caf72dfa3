#include <gtest/gtest.h>

#include "core/nimbometer.h"
#include "graphs/graph_ring.h"
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
  EXPECT_EQ(s.CloudArrayLst, 1);
  EXPECT_EQ(s.CloudArrayFst, 2);
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
  const GraphKind kinds[] = {GraphKind::Cloud, GraphKind::Rain,     GraphKind::Wind,
                             GraphKind::Day,   GraphKind::Temp,     GraphKind::Humidity,
                             GraphKind::Pressure};
  for (GraphKind kind : kinds)
    for (int i = 0; i < 3; ++i) AddRingPoint(RingOf(nm.state, kind), 120, i, i);

  nm.config.GraphNoPoints = 200;
  GraphNoPointsChanged(nm);
  for (GraphKind kind : kinds) EXPECT_EQ(RingUpperBound(RingOf(nm.state, kind).ring), 0);
  EXPECT_EQ(nm.display.GraphSpan.Caption, "12000");
  EXPECT_EQ(nm.display.GraphSpanDesc.Caption, "03 h 20 m 00 s");
  EXPECT_EQ(GraphSpanDesc(3725), "01 h 02 m 05 s");

  AddRingPoint(RingOf(nm.state, GraphKind::Day), 200, 7, 7);
  EXPECT_EQ(RingUpperBound(nm.state.NBX_GraphArrayDay), 200);
  EXPECT_EQ(nm.state.DayArrayFst, 1);
  EXPECT_EQ(nm.state.DayArrayLst, 2);

  // The drawing computes the span itself when no one has yet: 120 points
  // of six cycles of 15 s.
  Nimbometer fresh;
  fresh.config.RefreshPeriod = 15;
  EXPECT_EQ(GraphSpanSeconds(fresh), 10800);
}

}  // namespace
}  // namespace nbx
