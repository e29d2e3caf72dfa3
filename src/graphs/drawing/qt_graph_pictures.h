#pragma once

#include <array>
#include <string>

#include "graphs/drawing/graph_surface.h"
#include "graphs/graph_pictures.h"

namespace nbx {
class FreeImageRuntime;

// The seven graphs drawn on QImages with QPainter and saved through the
// image library. The window shows the same surfaces.
class QtGraphPictures : public GraphPictures {
 public:
  // Saves through the process's image library.
  explicit QtGraphPictures(int width = DefaultGraphWidth, int height = DefaultGraphHeight);
  explicit QtGraphPictures(FreeImageRuntime& freeImage, int width = DefaultGraphWidth,
                           int height = DefaultGraphHeight);

  GraphSurface& Surface(GraphKind kind) { return surfaces_[static_cast<std::size_t>(kind)]; }
  const GraphSurface& Surface(GraphKind kind) const {
    return surfaces_[static_cast<std::size_t>(kind)];
  }

  void DrawBandGraph(const BandGraph& graph) override;
  void DrawTemperatureGraph(const TemperatureGraph& graph) override;
  bool SavePicture(GraphKind kind, const std::string& fileName, int format, int flags) override;
  int PendingError() const override { return pendingError_; }
  void ClearError() override { pendingError_ = 0; }
  // Puts an image file on the graph's surface.
  bool LoadPicture(GraphKind kind, const std::string& fileName, int format = -1, int flags = 0);

 private:
  FreeImageRuntime& freeImage_;
  std::array<GraphSurface, 7> surfaces_;
  int pendingError_ = 0;
};

}  // namespace nbx
