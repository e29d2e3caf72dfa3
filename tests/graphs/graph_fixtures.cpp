#include "graph_fixtures.h"

#include "graphs/graph_routines.h"

namespace nbx::test {

GraphStation::GraphStation() {
  nm.io.pictures = &pictures;
}

void GraphStation::AddPoint(GraphKind kind, double value) {
  nm.state.LastReading = nm.NowSerial();
  AddGraphPoint(nm, kind, value);
}

QRgb Pixel(Colour c) { return ToQColor(c).rgb(); }

std::vector<int> RowsWithColour(const QImage& image, int x, QRgb colour) {
  std::vector<int> rows;
  for (int y = 0; y < image.height(); ++y)
    if (image.pixel(x, y) == colour) rows.push_back(y);
  return rows;
}

int CountColour(const QImage& image, const QRect& area, QRgb colour) {
  int count = 0;
  const QRect inside = area.intersected(image.rect());
  for (int y = inside.top(); y <= inside.bottom(); ++y)
    for (int x = inside.left(); x <= inside.right(); ++x) count += image.pixel(x, y) == colour;
  return count;
}

}  // namespace nbx::test
