#pragma once

#include <QColor>
#include <QImage>

#include "core/nimbometer.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "graphs/graph_routines.h"
#include "support/sim_station.h"

namespace nbx::test {

// A station on virtual time whose graphs are drawn on real QImages.
struct GraphStation : SimStation {
  GraphStation() { nm.io.pictures = &pictures; }
  // Puts a value on a graph as a graph tick of the cycle would.
  void AddPoint(GraphKind kind, double value) {
    nm.state.LastReading = nm.NowSerial();
    AddGraphPoint(nm, kind, value);
  }
  const QImage& Picture(GraphKind kind) const { return pictures.Surface(kind).image; }

  QtGraphPictures pictures;
};

// The colour of the window's controls (0x00BBGGRR) as the pixel shows it.
inline QRgb Pixel(Colour c) { return ToQColor(c).rgb(); }

inline int CountColour(const QImage& image, const QRect& area, QRgb colour) {
  int count = 0;
  const QRect inside = area.intersected(image.rect());
  for (int y = inside.top(); y <= inside.bottom(); ++y)
    for (int x = inside.left(); x <= inside.right(); ++x) count += image.pixel(x, y) == colour;
  return count;
}

}  // namespace nbx::test
