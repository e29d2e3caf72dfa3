#pragma once

#include <QColor>
#include <QImage>
#include <memory>

#include "core/nimbometer.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "support/sim_station.h"

namespace nbx::test {

// A station on virtual time whose graphs are drawn on real QImages.
struct GraphStation : SimStation {
  GraphStation();
  // Puts a value on a graph as a graph tick of the cycle would.
  void AddPoint(GraphKind kind, double value);
  const QImage& Picture(GraphKind kind) const { return pictures.Surface(kind).image; }

  QtGraphPictures pictures;
};

// The colour of the window's controls (0x00BBGGRR) as the pixel shows it.
QRgb Pixel(Colour colour);
// The rows of column x (from top to bottom) whose pixel has the colour.
std::vector<int> RowsWithColour(const QImage& image, int x, QRgb colour);
// How many pixels of the rectangle have the colour.
int CountColour(const QImage& image, const QRect& area, QRgb colour);

}  // namespace nbx::test
