#pragma once

#include <QPoint>
#include <functional>

#include "graphs/drawing/graph_surface.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_scale.h"

namespace nbx {

// A blank picture, the painter set for the axes: the small font, dotted
// lines of width 1 in `axisColour`. Returns the height of a line of text
// in the surface's own font, by which the plot is laid out.
int BeginAxes(SurfacePainter& painter, Colour axisColour);

// The time axis along the bottom of the plot, in the painter's font, fore
// colour and draw style: a short tick at each of the twelve steps, and below
// the plot each label that does not run into the one before it.
void DrawTimeAxis(SurfacePainter& painter, const TimeRange& range, int left, int right,
                  int bottom, int labelBottom);

// "NBX_Nimbometer " in the top right corner, in the painter's font.
void DrawSignature(SurfacePainter& painter, int right, int top);

// The curve from the point `first` through `last`, in the painter's pen,
// each point placed by `at`.
void DrawCurve(SurfacePainter& painter, const GraphRing& ring, std::int32_t first, std::int32_t last,
               const std::function<QPoint(const GraphPoint&)>& at);

}  // namespace nbx
