#include "graphs/drawing/qt_graph_pictures.h"

#include <QGuiApplication>

#include "graphs/drawing/graph_drawing.h"
#include "graphs/drawing/picture_files.h"

namespace nbx {
namespace {

static_assert(ImageFormatPNG == FIF_PNG && ImageFormatJPEG == FIF_JPEG);
static_assert(JpegQualitySuperb == JPEG_QUALITYSUPERB && JpegQualityGood == JPEG_QUALITYGOOD &&
              JpegQualityNormal == JPEG_QUALITYNORMAL && PngBestSpeed == PNG_Z_BEST_SPEED);

// Text needs the fonts of a GUI application; a program without one (a
// benchmark of the link alone) leaves the surfaces as they are.
bool CanDraw() { return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr; }

}  // namespace

QtGraphPictures::QtGraphPictures(int width, int height)
    : QtGraphPictures(FreeImageRuntime::Instance(), width, height) {}

QtGraphPictures::QtGraphPictures(FreeImageRuntime& freeImage, int width, int height)
    : freeImage_(freeImage),
      surfaces_{GraphSurface(width, height), GraphSurface(width, height), GraphSurface(width, height),
                GraphSurface(width, height), GraphSurface(width, height), GraphSurface(width, height),
                GraphSurface(width, height)} {}

void QtGraphPictures::DrawBandGraph(const BandGraph& graph) {
  if (CanDraw() && graph.ring) nbx::DrawBandGraph(Surface(graph.kind), graph);
}

void QtGraphPictures::DrawTemperatureGraph(const TemperatureGraph& graph) {
  if (CanDraw() && graph.ring) nbx::DrawTemperatureGraph(Surface(GraphKind::Temp), graph);
}

bool QtGraphPictures::SavePicture(GraphKind kind, const std::string& fileName, int format,
                                  int flags) {
  if (!freeImage_.Initialise()) {
    pendingError_ = ErrorLibraryNotFound;
    return false;
  }
  return SavePictureFile(freeImage_, Surface(kind).image, fileName, format, flags);
}

bool QtGraphPictures::LoadPicture(GraphKind kind, const std::string& fileName, int format,
                                  int flags) {
  QImage& image = Surface(kind).image;
  QImage loaded;
  if (!LoadPictureFile(freeImage_, loaded, fileName, format, flags)) return false;
  loaded.setDotsPerMeterX(image.dotsPerMeterX());
  loaded.setDotsPerMeterY(image.dotsPerMeterY());
  image = loaded;
  return true;
}

}  // namespace nbx
