#include "editing/config_editor.h"
#include "core/nimbometer.h"
#include "graphs/graph_span.h"

namespace nbx {
namespace {

std::size_t Index(GraphKind kind) { return static_cast<std::size_t>(kind); }

}  // namespace

void ConfigEditor::SetGraphFreq(double readings) {
  nm_.config.GraphFreq = readings;
  UpdateGraphSpan(nm_);
}

// As the number control does, the same number again is no change: the
// graphs are kept.
void ConfigEditor::SetGraphNoPoints(double points) {
  if (points == nm_.config.GraphNoPoints) return;
  nm_.config.GraphNoPoints = points;
  GraphNoPointsChanged(nm_);
}

void ConfigEditor::SetGraphGenerate(GraphKind kind, int value) {
  nm_.config.GraphGenerate[Index(kind)] = value;
}

void ConfigEditor::SetGraphImage(GraphKind kind, int value) { nm_.config.GraphImage[Index(kind)] = value; }

void ConfigEditor::SetGraphColour(GraphKind kind, int index, Colour colour) {
  const std::span<Colour> colours = GraphColours(nm_.config, kind);
  if (index >= 0 && static_cast<std::size_t>(index) < colours.size())
    colours[static_cast<std::size_t>(index)] = colour;
}

void ConfigEditor::SetGraphImagePath(const std::string& folder) { nm_.config.GraphImagePath = folder; }

void ConfigEditor::SetGraphTempMax(double value) { nm_.config.GraphTempMax = value; }

void ConfigEditor::SetGraphTempMin(double value) { nm_.config.GraphTempMin = value; }

}  // namespace nbx
