#include "graphs/drawing/graph_surface.h"

#include <QFontMetrics>

namespace nbx {
namespace {

constexpr int kDotsPerMeter96Dpi = 3780;
constexpr Colour kPanelFace = 0xF0F0F0;

}  // namespace

QColor ToQColor(Colour c) {
  if (c & 0x80000000u) c = kPanelFace;
  return QColor(static_cast<int>(c & 0xFF), static_cast<int>((c >> 8) & 0xFF),
                static_cast<int>((c >> 16) & 0xFF));
}

GraphSurface::GraphSurface(int width, int height)
    : image(width, height, QImage::Format_RGB32), font("DejaVu Sans", 8) {
  image.setDotsPerMeterX(kDotsPerMeter96Dpi);
  image.setDotsPerMeterY(kDotsPerMeter96Dpi);
  image.fill(ToQColor(BackColor));
}

SurfacePainter::SurfacePainter(GraphSurface& surface)
    : surface_(surface), painter_(&surface.image), font_(surface.font) {
  painter_.setFont(font_);
}

void SurfacePainter::Cls() {
  painter_.fillRect(surface_.image.rect(), ToQColor(surface_.BackColor));
  currentX_ = currentY_ = 0;
}

int SurfacePainter::TextHeight(const QString&) const {
  return QFontMetrics(font_, &surface_.image).height();
}

int SurfacePainter::TextWidth(const QString& text) const {
  return QFontMetrics(font_, &surface_.image).horizontalAdvance(text);
}

void SurfacePainter::SetFont(const QFont& font) {
  font_ = font;
  painter_.setFont(font_);
}

void SurfacePainter::SetFontSize(double points) {
  font_.setPointSizeF(points);
  painter_.setFont(font_);
}

QPen SurfacePainter::Pen() const {
  QPen pen(foreColor_, width_, style_);
  pen.setCapStyle(Qt::FlatCap);
  return pen;
}

void SurfacePainter::Line(int x1, int y1, int x2, int y2) {
  MoveTo(x1, y1);
  LineTo(x2, y2);
}

void SurfacePainter::MoveTo(int x, int y) {
  currentX_ = x;
  currentY_ = y;
}

void SurfacePainter::LineTo(int x, int y) {
  if (x != currentX_ || y != currentY_) {
    painter_.setPen(Pen());
    painter_.drawLine(currentX_, currentY_, x, y);
  }
  MoveTo(x, y);
}

void SurfacePainter::Box(int x1, int y1, int x2, int y2) {
  Line(x1, y1, x2, y1);
  Line(x2, y1, x2, y2);
  Line(x2, y2, x1, y2);
  Line(x1, y2, x1, y1);
}

void SurfacePainter::FillBox(int x1, int y1, int x2, int y2, Colour colour) {
  painter_.fillRect(QRect(QPoint(x1, y1), QPoint(x2, y2)).normalized(), ToQColor(colour));
}

void SurfacePainter::DrawText(const QString& text, int left, int top, int right, int bottom,
                              int flags) {
  const int horizontal = flags == TextRightAligned ? Qt::AlignRight : Qt::AlignHCenter;
  painter_.setPen(QPen(foreColor_));
  painter_.drawText(QRect(left, top, right - left, bottom - top),
                    horizontal | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

}  // namespace nbx
