#include "graphs/graph_routines.h"

#include <algorithm>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "graphs/graph_pictures.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_span.h"

namespace nbx {
namespace {

constexpr GraphKind kAllGraphs[] = {GraphKind::Cloud, GraphKind::Rain,     GraphKind::Wind,
                                    GraphKind::Day,   GraphKind::Temp,     GraphKind::Humidity,
                                    GraphKind::Pressure};

bool Generated(const Config& c, GraphKind kind) {
  return c.GraphGenerate[static_cast<std::size_t>(kind)] == 1;
}

void RunGraph(Nimbometer& nm, GraphKind kind) {
  if (!Generated(nm.config, kind) || !nm.state.GraphDue) return;
  AddGraphPoint(nm, kind, GraphValue(nm.state, kind));
  ExportGraphPicture(nm, kind);
}

}  // namespace

double GraphValue(const SiteState& s, GraphKind kind) {
  switch (kind) {
    case GraphKind::Cloud:
      return s.Value_Cloud;
    case GraphKind::Rain:
      return s.Value_Rain;
    case GraphKind::Wind:
      return s.Value_Wind;
    case GraphKind::Day:
      return s.Value_Day;
    case GraphKind::Temp:
      return s.Value_Temp;
    case GraphKind::Humidity:
      return s.Value_HumidityRel;
    case GraphKind::Pressure:
      break;
  }
  return s.Value_RelPressure;
}

void AddGraphPoint(Nimbometer& nm, GraphKind kind, double value) {
  const int points = static_cast<int>(RoundHalfEven(std::clamp(nm.config.GraphNoPoints, 0.0, 1e6)));
  const double time = nm.state.LastReading.value_or(nm.NowSerial());
  AddRingPoint(RingOf(nm.state, kind), points, time, value);
  DrawGraph(nm, kind);
}

void DrawGraph(Nimbometer& nm, GraphKind kind) {
  if (!nm.io.pictures) return;
  const Config& c = nm.config;
  const GraphRingRef r = RingOf(nm.state, kind);
  const std::span<const Colour> colours = GraphColours(c, kind);
  if (kind == GraphKind::Temp) {
    TemperatureGraph graph;
    graph.ring = &r.ring;
    graph.first = r.first;
    graph.last = r.last;
    graph.min = c.GraphTempMin;
    graph.max = c.GraphTempMax;
    graph.spanSeconds = GraphSpanSeconds(nm);
    graph.axisColor = colours[0];
    graph.curveColor = colours[1];
    graph.backColor = c.GraphColorTemp[2];
    graph.unit = c.UnitTempStr;
    nm.io.pictures->DrawTemperatureGraph(graph);
    return;
  }
  BandGraph graph;
  graph.kind = kind;
  graph.ring = &r.ring;
  graph.first = r.first;
  graph.last = r.last;
  graph.limits = BandLimitsFor(c, kind);
  graph.spanSeconds = GraphSpanSeconds(nm);
  graph.axisColor = colours[0];
  graph.curveColor = colours[1];
  graph.bands = BandSwatches(c, kind);
  graph.now = nm.Now();
  nm.io.pictures->DrawBandGraph(graph);
}

void RunGraphCloud(Nimbometer& nm) { RunGraph(nm, GraphKind::Cloud); }
void RunGraphRain(Nimbometer& nm) { RunGraph(nm, GraphKind::Rain); }
void RunGraphWind(Nimbometer& nm) { RunGraph(nm, GraphKind::Wind); }
void RunGraphDay(Nimbometer& nm) { RunGraph(nm, GraphKind::Day); }
void RunGraphTemp(Nimbometer& nm) { RunGraph(nm, GraphKind::Temp); }

// A sensor that has not answered has no history to draw: its value would be
// the stand-in that the link fills in.
void RunGraphHumidity(Nimbometer& nm) {
  if (nm.state.HumidityPresent == 1) RunGraph(nm, GraphKind::Humidity);
}
void RunGraphPressure(Nimbometer& nm) {
  if (nm.state.PressurePresent == 1) RunGraph(nm, GraphKind::Pressure);
}

void RunGraphRoutines(Nimbometer& nm) {
  RunGraphCloud(nm);
  RunGraphRain(nm);
  RunGraphWind(nm);
  RunGraphDay(nm);
  RunGraphTemp(nm);
  RunGraphHumidity(nm);
  RunGraphPressure(nm);
}

void RedrawGraphs(Nimbometer& nm) {
  for (GraphKind kind : kAllGraphs)
    if (Generated(nm.config, kind) && RingUpperBound(RingOf(nm.state, kind).ring) > 0)
      DrawGraph(nm, kind);
}

}  // namespace nbx
