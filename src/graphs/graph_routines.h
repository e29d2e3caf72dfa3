#pragma once

#include <string>

#include "core/config.h"
#include "graphs/image_export.h"

namespace nbx {
struct Nimbometer;
struct SiteState;

// The seven graph routines of a cycle, in their order: on a graph tick each
// graph that is switched on gets a point, is redrawn and, when its export is
// on, saved.
void RunGraphRoutines(Nimbometer& nm);
void RunGraphCloud(Nimbometer& nm);
void RunGraphRain(Nimbometer& nm);
void RunGraphWind(Nimbometer& nm);
void RunGraphDay(Nimbometer& nm);
void RunGraphTemp(Nimbometer& nm);
void RunGraphHumidity(Nimbometer& nm);
void RunGraphPressure(Nimbometer& nm);

// The value a graph plots, in the display unit of the moment.
double GraphValue(const SiteState& state, GraphKind kind);
// Adds the value to the graph's ring, stamped with the cycle's LastReading,
// and redraws the graph.
void AddGraphPoint(Nimbometer& nm, GraphKind kind, double value);
// Draws the graph from its ring with the limits and colours in use.
void DrawGraph(Nimbometer& nm, GraphKind kind);
// Redraws the graphs from their rings (after a reopen, at Stop).
void RedrawGraphs(Nimbometer& nm);

}  // namespace nbx
