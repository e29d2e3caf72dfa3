#pragma once

#include "graphs/drawing/graph_surface.h"
#include "graphs/graph_pictures.h"

namespace nbx {

// A band graph: the three coloured class bands with their words, the time
// axis, the signature and date, and the history as a curve on the scale
// that runs piecewise between the class thresholds.
void DrawBandGraph(GraphSurface& surface, const BandGraph& graph);

// The temperature graph: a linear scale from min to max with five labelled
// grid lines, the time axis and the history as a curve.
void DrawTemperatureGraph(GraphSurface& surface, const TemperatureGraph& graph);

}  // namespace nbx
