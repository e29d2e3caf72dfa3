#pragma once

#include <array>
#include <string>

#include "core/config.h"
#include "core/serial_date.h"
#include "core/site_state.h"
#include "graphs/graph_scale.h"

namespace nbx {

// Format codes and save flags of the image library, as the settings choose them.
inline constexpr int ImageFormatJPEG = 2;
inline constexpr int ImageFormatPNG = 13;
inline constexpr int JpegQualitySuperb = 128;
inline constexpr int JpegQualityGood = 256;
inline constexpr int JpegQualityNormal = 512;
// zlib's fastest level: the pictures are rewritten all night, and the default
// level costs a third more CPU a picture for files a fifth smaller (the
// figures are in bench/README.md).
inline constexpr int PngBestSpeed = 1;
// The error a save leaves when the image library could not be found.
inline constexpr int ErrorLibraryNotFound = 53;

// What a band graph is drawn from.
struct BandGraph {
  GraphKind kind = GraphKind::Cloud;
  const GraphRing* ring = nullptr;
  int first = 0;
  int last = 0;
  BandLimits limits;
  double spanSeconds = 0;
  Colour axisColor = 0;
  Colour curveColor = 0;
  std::array<Swatch, 3> bands;
  LocalDateTime now;  // the date in the bottom right corner
};

// What the temperature graph is drawn from.
struct TemperatureGraph {
  const GraphRing* ring = nullptr;
  int first = 0;
  int last = 0;
  double min = 0;
  double max = 0;
  double spanSeconds = 0;
  Colour axisColor = 0;
  Colour curveColor = 0;
  Colour backColor = 0;
  std::string unit;  // "C" or "F"
};

// The seven picture surfaces of the graphs and their image files. The
// station draws on images that the window shows too; tests keep their own.
class GraphPictures {
 public:
  virtual ~GraphPictures() = default;
  virtual void DrawBandGraph(const BandGraph& graph) = 0;
  virtual void DrawTemperatureGraph(const TemperatureGraph& graph) = 0;
  // Writes the graph's picture as a 24-bit image in `format` with the save
  // flags; false when no file was written.
  virtual bool SavePicture(GraphKind kind, const std::string& fileName, int format, int flags) = 0;
  // The error the last save left: 0, or ErrorLibraryNotFound.
  virtual int PendingError() const = 0;
  virtual void ClearError() = 0;
};

}  // namespace nbx
