#include "graphs/drawing/axis_drawing.h"

namespace nbx {

int BeginAxes(SurfacePainter& p, Colour axisColour) {
  p.Cls();
  const int textHeight = p.TextHeight("00");
  p.SetFont(QFont(GraphFontFamily, 7));
  p.SetDrawStyle(Qt::DotLine);
  p.SetDrawWidth(1);
  p.SetForeColor(axisColour);
  return textHeight;
}

void DrawTimeAxis(SurfacePainter& p, const TimeRange& range, int left, int right, int bottom,
                  int labelBottom) {
  const auto ticks = TimeAxis(range, left, right, [&](std::string_view label) {
    return p.TextWidth(QString::fromUtf8(label.data(), static_cast<int>(label.size())));
  });
  for (const TimeTick& tick : ticks) {
    p.Line(tick.x, bottom - 4, tick.x, bottom);
    if (tick.labelShown)
      p.DrawText(QString::fromStdString(tick.label), tick.labelLeft, bottom,
                 tick.labelLeft + tick.labelWidth, labelBottom, TextCentred);
  }
}

void DrawSignature(SurfacePainter& p, int right, int top) {
  const QString signature = QStringLiteral("NBX_Nimbometer ");
  p.DrawText(signature, right - p.TextWidth(signature), top, right,
             top + p.TextHeight(signature), TextRightAligned);
}

void DrawCurve(SurfacePainter& painter, const GraphRing& ring, std::int32_t first, std::int32_t last,
               const std::function<QPoint(const GraphPoint&)>& at) {
  WalkRing(
      ring, first, last,
      [&](const GraphPoint& point) {
        const QPoint xy = at(point);
        painter.MoveTo(xy.x(), xy.y());
      },
      [&](const GraphPoint& point) {
        const QPoint xy = at(point);
        painter.LineTo(xy.x(), xy.y());
      });
}

}  // namespace nbx
