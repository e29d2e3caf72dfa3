#include "graphs/drawing/graph_drawing.h"

#include "core/serial_date.h"
#include "graphs/drawing/axis_drawing.h"
#include "graphs/graph_ring.h"

namespace nbx {

void DrawBandGraph(GraphSurface& surface, const BandGraph& g) {
  SurfacePainter p(surface);
  const int TH = BeginAxes(p, g.axisColor);

  const GraphRing& ring = *g.ring;
  const TimeRange range = RingTimeRange(ring, g.first, g.last, g.spanSeconds);

  const int left = 0;
  const int top = 0;
  const int right = surface.ScaleWidth();
  const int bottom = surface.ScaleHeight() - TH;
  const double height = bottom - top;

  p.SetFontSize(14);
  p.SetDrawWidth(2);
  for (int i = 0; i < 3; ++i) {
    const Swatch& band = g.bands[static_cast<std::size_t>(BandAtRow(g.kind, i))];
    p.FillBox(left, ToPixel(top + height * i / 3), right, ToPixel(top + height * (i + 1) / 3),
              band.BackColor);
    p.DrawText(QString::fromStdString(band.Caption), 0, ToPixel(surface.ScaleHeight() * i / 3.0),
               surface.ScaleWidth(), ToPixel(surface.ScaleHeight() * (i + 1) / 3.0), TextCentred);
  }

  p.SetFontSize(7);
  p.SetDrawWidth(1);
  DrawTimeAxis(p, range, left, right, bottom, surface.ScaleHeight());

  p.SetFont(surface.font);
  DrawSignature(p, right, top);
  const QString date = QString::fromStdString(FormatDate(g.now, "dd/mmm/yy") + " ");
  p.DrawText(date, right - p.TextWidth(date), bottom - p.TextHeight(date), right, bottom,
             TextRightAligned);

  p.SetDrawWidth(1);
  p.SetDrawStyle(Qt::SolidLine);
  p.Box(left, top, right - 1, bottom);

  p.SetDrawWidth(2);
  p.SetForeColor(g.curveColor);
  if (!range.Usable()) return;
  const bool rises = RisesIntoWorseClass(g.kind);
  auto at = [&](const GraphPoint& point) {
    return QPoint(ToPixel(range.X(point.Time, left, right)),
                  ToPixel(MapBandValue(rises, g.limits, point.Value, top, bottom).y));
  };
  DrawCurve(p, ring, g.first, g.last, at);
}

}  // namespace nbx
