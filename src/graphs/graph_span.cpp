#include "graphs/graph_span.h"

#include <cmath>

#include "core/nimbometer.h"
#include "core/number_format.h"
#include "core/text.h"
#include "graphs/graph_ring.h"

namespace nbx {

void UpdateGraphSpan(Nimbometer& nm) {
  const Config& c = nm.config;
  const double span = c.RefreshPeriod * c.GraphFreq * c.GraphNoPoints;
  nm.display.GraphSpan.Caption = FormatNumber(span, "0.###");
  nm.display.GraphSpanDesc.Caption = GraphSpanDesc(span);
}

std::string GraphSpanDesc(double spanSeconds) {
  const double hours = std::trunc(spanSeconds / 3600);
  const double minutes = std::trunc((spanSeconds - hours * 3600) / 60);
  const double seconds = spanSeconds - hours * 3600 - minutes * 60;
  return FormatNumber(hours, "00 h ") + FormatNumber(minutes, "00 m ") +
         FormatNumber(seconds, "00 s");
}

double GraphSpanSeconds(Nimbometer& nm) {
  if (Trim(nm.display.GraphSpan.Caption).empty()) UpdateGraphSpan(nm);
  return ParseNumber(nm.display.GraphSpan.Caption).value_or(0.0);
}

void GraphNoPointsChanged(Nimbometer& nm) {
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Rain, GraphKind::Wind, GraphKind::Day,
                         GraphKind::Temp, GraphKind::Humidity, GraphKind::Pressure})
    EmptyRing(RingOf(nm.state, kind).ring);
  UpdateGraphSpan(nm);
}

}  // namespace nbx
