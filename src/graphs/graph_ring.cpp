#include "graphs/graph_ring.h"

namespace nbx {

GraphRingRef RingOf(SiteState& s, GraphKind kind) {
  switch (kind) {
    case GraphKind::Cloud:
      return {s.NBX_GraphArrayCloud, s.CloudArrayFst, s.CloudArrayLst};
    case GraphKind::Rain:
      return {s.NBX_GraphArrayRain, s.RainArrayFst, s.RainArrayLst};
    case GraphKind::Wind:
      return {s.NBX_GraphArrayWind, s.WindArrayFst, s.WindArrayLst};
    case GraphKind::Day:
      return {s.NBX_GraphArrayDay, s.DayArrayFst, s.DayArrayLst};
    case GraphKind::Temp:
      return {s.NBX_GraphArrayTemp, s.TempArrayFst, s.TempArrayLst};
    case GraphKind::Humidity:
      return {s.NBX_GraphArrayHumidity, s.HumidityArrayFst, s.HumidityArrayLst};
    case GraphKind::Pressure:
      break;
  }
  return {s.NBX_GraphArrayPressure, s.PressureArrayFst, s.PressureArrayLst};
}

int RingUpperBound(const GraphRing& ring) {
  return ring.empty() ? 0 : static_cast<int>(ring.size()) - 1;
}

void AddRingPoint(GraphRingRef r, int points, double time, double value) {
  if (points < 1) return;
  const GraphPoint point{time, value};
  if (RingUpperBound(r.ring) != points) {
    r.ring.assign(static_cast<std::size_t>(points) + 1, GraphPoint{});
    r.first = 1;
    r.last = 1;
    r.ring[1] = point;
  }
  // Indices that no longer fit the ring (never so for the ring's own
  // routines) start it over rather than write outside it.
  if (r.first < 1 || r.first > points || r.last < 1 || r.last > points) r.first = r.last = 1;
  r.last = r.last + 1;
  if (r.last > points) r.last = 1;
  if (r.last <= r.first) {
    r.first = r.last + 1;
    if (r.first > points) r.first = 1;
  }
  r.ring[static_cast<std::size_t>(r.last)] = point;
}

void EmptyRing(GraphRing& ring) { ring.assign(1, GraphPoint{}); }

void WalkRing(const GraphRing& ring, std::int32_t first, std::int32_t last,
              const std::function<void(const GraphPoint&)>& start,
              const std::function<void(const GraphPoint&)>& lineTo) {
  const int upper = RingUpperBound(ring);
  if (first < 1 || first > upper || last < 1 || last > upper) return;
  start(ring[static_cast<std::size_t>(first)]);
  int i = first;
  for (int steps = 0; steps < upper; ++steps) {
    i = i + 1;
    if (i > upper) i = 1;
    if (i == first) return;
    lineTo(ring[static_cast<std::size_t>(i)]);
    if (i == last) return;
  }
}

}  // namespace nbx
