#pragma once

#include <QFont>
#include <QImage>
#include <QPainter>
#include <QString>

#include "core/colours.h"

namespace nbx {

// A size that reads well on a web page and in the window's graph tabs.
inline constexpr int DefaultGraphWidth = 640;
inline constexpr int DefaultGraphHeight = 240;

// The pictures were laid out for a small serif face at 7 and 14 points; the
// DejaVu Serif of fonts-dejavu-core stands in for it at the same sizes.
inline constexpr const char* GraphFontFamily = "DejaVu Serif";

// A colour of the window's controls (0x00BBGGRR) as Qt takes it; the
// platform's own system colours become the light grey of a plain panel.
QColor ToQColor(Colour colour);

// A picture surface: the image a graph is drawn on, with the font and the
// back colour that belong to the picture itself.
struct GraphSurface {
  explicit GraphSurface(int width = DefaultGraphWidth, int height = DefaultGraphHeight);
  int ScaleWidth() const { return image.width(); }
  int ScaleHeight() const { return image.height(); }

  QImage image;   // 32-bit RGB at 96 dots an inch, so that points are the pixels they were
  QFont font;     // the picture's own font, for the signature and TextHeight("00")
  Colour BackColor = colours::SystemButtonFace;
};

// The alignments of the two text flags in use: 37 centred, 38 right-aligned,
// both vertically centred on one line and clipped to their rectangle.
enum TextFlags { TextCentred = 37, TextRightAligned = 38 };

// The drawing operations of a picture surface over one QPainter, with the
// surface's state of the moment: font, fore colour, draw style and width,
// and the current point. The surface's own font and back colour are left as
// they were when the painter goes.
class SurfacePainter {
 public:
  explicit SurfacePainter(GraphSurface& surface);

  // Fills the whole picture with its back colour.
  void Cls();
  int TextHeight(const QString& text) const;
  int TextWidth(const QString& text) const;

  void SetFont(const QFont& font);
  void SetFontSize(double points);
  const QFont& Font() const { return font_; }
  void SetForeColor(Colour colour) { foreColor_ = ToQColor(colour); }
  void SetDrawStyle(Qt::PenStyle style) { style_ = style; }
  void SetDrawWidth(int width) { width_ = width; }

  // A line from point to point in the fore colour; the end becomes the current point.
  void Line(int x1, int y1, int x2, int y2);
  void MoveTo(int x, int y);
  // A line from the current point. A line that goes nowhere draws nothing.
  void LineTo(int x, int y);
  // An unfilled box, corners included.
  void Box(int x1, int y1, int x2, int y2);
  // A filled box, corners included.
  void FillBox(int x1, int y1, int x2, int y2, Colour colour);
  // Text in the rectangle (right and bottom excluded) with flag 37 or 38.
  void DrawText(const QString& text, int left, int top, int right, int bottom, int flags);

 private:
  QPen Pen() const;

  GraphSurface& surface_;
  QPainter painter_;
  QFont font_;
  QColor foreColor_{Qt::black};
  Qt::PenStyle style_ = Qt::SolidLine;
  int width_ = 1;
  int currentX_ = 0;
  int currentY_ = 0;
};

}  // namespace nbx
