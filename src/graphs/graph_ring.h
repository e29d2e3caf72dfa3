#pragma once

#include <cstdint>
#include <functional>

#include "core/config.h"
#include "core/site_state.h"

namespace nbx {

// A graph's ring with the indices of its oldest and newest points, as they
// live in SiteState.
struct GraphRingRef {
  GraphRing& ring;
  std::int32_t& first;
  std::int32_t& last;
};
GraphRingRef RingOf(SiteState& state, GraphKind kind);

// The ring's upper bound: the number of points it is sized for, 0 when empty.
int RingUpperBound(const GraphRing& ring);

// Adds a point. A ring not sized for `points` is sized afresh and its first
// point stands twice; after that a full ring holds points - 1 or points
// points, the oldest at first. Fewer than one point adds nothing.
void AddRingPoint(GraphRingRef ring, int points, double time, double value);

// Empties the ring; the next point sizes it afresh.
void EmptyRing(GraphRing& ring);

// The curve's walk: `start` gets the point at first, then `lineTo` gets every
// later point up to last, wrapping past the upper bound to 1. Indices outside
// the ring walk nothing.
void WalkRing(const GraphRing& ring, std::int32_t first, std::int32_t last,
              const std::function<void(const GraphPoint&)>& start,
              const std::function<void(const GraphPoint&)>& lineTo);

}  // namespace nbx
