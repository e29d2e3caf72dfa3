#include "core/number_format.h"
#include "graphs/drawing/axis_drawing.h"
#include "graphs/drawing/graph_drawing.h"
#include "graphs/graph_ring.h"

namespace nbx {
namespace {

// Room between a scale label and the left edge of the plot.
constexpr int kLabelGap = 3;

}  // namespace

void DrawTemperatureGraph(GraphSurface& surface, const TemperatureGraph& g) {
  surface.BackColor = g.backColor;
  SurfacePainter p(surface);
  const int TH = BeginAxes(p, g.axisColor);

  const GraphRing& ring = *g.ring;
  const TimeRange range = RingTimeRange(ring, g.first, g.last, g.spanSeconds);
  const QString unit = QString::fromStdString(g.unit);

  const int left = p.TextWidth("-00.0 " + unit) + 2 * kLabelGap;
  const int top = 0;
  const int right = surface.ScaleWidth();
  const int Yb = surface.ScaleHeight() - TH;
  const double lineDistance = (Yb - TH / 2.0) / 4;
  const double valueStep = (g.max - g.min) / 4;

  for (int k = 0; k <= 4; ++k) {
    const int y = ToPixel(Yb - k * lineDistance);
    p.Line(left, y, right, y);
    const QString label = QString::fromStdString(FormatNumber(g.min + k * valueStep, "0.0")) + " " + unit;
    p.DrawText(label, 0, y - TH / 2, left - kLabelGap, y + TH - TH / 2, TextRightAligned);
  }

  DrawTimeAxis(p, range, left, right, Yb, surface.ScaleHeight());

  p.SetFont(surface.font);
  DrawSignature(p, right, top);

  p.SetDrawStyle(Qt::SolidLine);
  p.Line(left, top, left, Yb);
  p.Line(left, Yb, right, Yb);

  p.SetDrawWidth(2);
  p.SetForeColor(g.curveColor);
  if (!range.Usable()) return;
  auto at = [&](const GraphPoint& point) {
    return QPoint(ToPixel(range.X(point.Time, left, right)),
                  ToPixel(MapTemperatureValue(point.Value, g.min, g.max, top, Yb)));
  };
  DrawCurve(p, ring, g.first, g.last, at);
}

}  // namespace nbx
