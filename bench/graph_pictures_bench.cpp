// Time to draw each graph from a full ring and to write its picture as PNG
// and as JPEG: the work a graph tick adds to a cycle.

#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include "core/nimbometer.h"
#include "graphs/drawing/freeimage_runtime.h"
#include "graphs/drawing/picture_files.h"
#include "graphs/drawing/qt_graph_pictures.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_routines.h"

namespace {

class BenchClock : public nbx::Clock {
 public:
  nbx::LocalDateTime Now() const override { return {2026, 11, 22, 8, 0, 0, 0}; }
};

// One station whose seven rings are full: a point every minute for two hours.
struct Graphs {
  Graphs() {
    if (!std::getenv("QT_QPA_PLATFORM")) setenv("QT_QPA_PLATFORM", "offscreen", 1);
    static int argc = 1;
    static char name[] = "graph_pictures_bench";
    static char* argv[] = {name, nullptr};
    static QGuiApplication app(argc, argv);
    nm.io.clock = &clock;
    nm.io.pictures = &pictures;
    folder = std::filesystem::temp_directory_path() / "nbx_graph_pictures_bench";
    std::filesystem::create_directories(folder);
    nm.config.GraphImagePath = folder.string();
    const double start = nbx::ToSerialDate({2026, 11, 22, 6, 0, 0, 0});
    for (int i = 0; i < 130; ++i)
      for (int k = 0; k < 7; ++k)
        nbx::AddRingPoint(nbx::RingOf(nm.state, nbx::GraphKind(k)), 120, start + i / 1440.0,
                          Value(nbx::GraphKind(k), i));
  }
  static double Value(nbx::GraphKind kind, int i) {
    const double wave = std::sin(i / 9.0);
    switch (kind) {
      case nbx::GraphKind::Cloud: return -12 + 10 * wave;
      case nbx::GraphKind::Rain: return 3000 + 300 * wave;
      case nbx::GraphKind::Wind: return 8 + 6 * wave;
      case nbx::GraphKind::Day: return 2000 + 1800 * wave;
      case nbx::GraphKind::Temp: return 6 + 4 * wave;
      case nbx::GraphKind::Humidity: return 70 + 20 * wave;
      case nbx::GraphKind::Pressure: break;
    }
    return 1005 + 20 * wave;
  }

  BenchClock clock;
  nbx::QtGraphPictures pictures;
  nbx::Nimbometer nm;
  std::filesystem::path folder;
};

Graphs& Station() {
  static Graphs graphs;
  return graphs;
}

void BM_DrawGraph(benchmark::State& state) {
  Graphs& g = Station();
  const auto kind = static_cast<nbx::GraphKind>(state.range(0));
  for (auto _ : state) nbx::DrawGraph(g.nm, kind);
  state.SetLabel(nbx::GraphTag(kind));
}

void Export(benchmark::State& state, int imageType, std::array<bool, 3> quality) {
  Graphs& g = Station();
  const auto kind = static_cast<nbx::GraphKind>(state.range(0));
  g.nm.config.ImageType = imageType;
  g.nm.config.ImageQuality = quality;
  nbx::DrawGraph(g.nm, kind);
  for (auto _ : state) nbx::ExportGraphPicture(g.nm, kind);
  const auto file = g.folder / (std::string(nbx::GraphFileName(kind)) + nbx::ImageExtension(g.nm.config));
  state.SetLabel(std::string(nbx::GraphTag(kind)) + ", " +
                 std::to_string(std::filesystem::file_size(file) / 1024) + " KiB" +
                 (g.nm.display.StatusBar2.Caption.empty() ? "" : " " + g.nm.display.StatusBar2.Caption));
}

void BM_ExportPng(benchmark::State& state) { Export(state, 1, {false, false, true}); }
void BM_ExportJpegNormal(benchmark::State& state) { Export(state, 0, {false, false, true}); }
void BM_ExportJpegSuperb(benchmark::State& state) { Export(state, 0, {true, false, false}); }

// One picture (the cloud graph, the busiest) saved straight through FreeImage
// with each of its save flags: CPU time, and bytes on the disk as a counter.
void SaveWithFlags(benchmark::State& state, int format, int flags, const char* label) {
  Graphs& g = Station();
  nbx::DrawGraph(g.nm, nbx::GraphKind::Cloud);
  const auto file = g.folder / (format == FIF_PNG ? "level.png" : "quality.jpg");
  nbx::FreeImageRuntime& fi = nbx::FreeImageRuntime::Instance();
  for (auto _ : state)
    nbx::SavePictureFile(fi, g.pictures.Surface(nbx::GraphKind::Cloud).image, file.string(), format, flags);
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(file));
  state.SetLabel(label);
}

void BM_PngLevel(benchmark::State& state) {
  static const std::pair<int, const char*> kLevels[] = {
      {PNG_Z_NO_COMPRESSION, "PNG_Z_NO_COMPRESSION"}, {PNG_Z_BEST_SPEED, "PNG_Z_BEST_SPEED (1)"},
      {2, "level 2"}, {3, "level 3"}, {4, "level 4"}, {5, "level 5"},
      {PNG_Z_DEFAULT_COMPRESSION, "PNG_Z_DEFAULT_COMPRESSION (6), today's PNG_DEFAULT"},
      {7, "level 7"}, {8, "level 8"}, {PNG_Z_BEST_COMPRESSION, "PNG_Z_BEST_COMPRESSION (9)"}};
  const auto& [flags, label] = kLevels[state.range(0)];
  SaveWithFlags(state, FIF_PNG, flags, label);
}

void BM_JpegQuality(benchmark::State& state) {
  static const std::pair<int, const char*> kQualities[] = {
      {JPEG_QUALITYSUPERB, "JPEG_QUALITYSUPERB (100)"}, {JPEG_QUALITYGOOD, "JPEG_QUALITYGOOD (75)"},
      {JPEG_QUALITYNORMAL, "JPEG_QUALITYNORMAL (50)"}, {JPEG_QUALITYAVERAGE, "JPEG_QUALITYAVERAGE (25)"},
      {JPEG_QUALITYGOOD | JPEG_BASELINE, "JPEG_QUALITYGOOD | JPEG_BASELINE"},
      {JPEG_QUALITYGOOD | JPEG_OPTIMIZE, "JPEG_QUALITYGOOD | JPEG_OPTIMIZE"}};
  const auto& [flags, label] = kQualities[state.range(0)];
  SaveWithFlags(state, FIF_JPEG, flags, label);
}

BENCHMARK(BM_PngLevel)->DenseRange(0, 9)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_JpegQuality)->DenseRange(0, 5)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_DrawGraph)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExportPng)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExportJpegNormal)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ExportJpegSuperb)->DenseRange(0, 6)->Unit(benchmark::kMillisecond);

}  // namespace
