#include "graphs/image_export.h"

#include <filesystem>
#include <system_error>

#include "core/nimbometer.h"
#include "core/status.h"
#include "graphs/graph_pictures.h"

namespace nbx {

const char* GraphFileName(GraphKind kind) {
  static const char* const kNames[] = {
      "NBX_ImageCloudCondition", "NBX_ImageRainCondition",     "NBX_ImageWindCond",
      "NBX_ImageDayCondition",   "NBX_ImageTemperature",       "NBX_ImageHumidityCondition",
      "NBX_ImagePressureCondition"};
  return kNames[static_cast<int>(kind)];
}

int ImageFormat(const Config& c) { return c.ImageType == 1 ? ImageFormatPNG : ImageFormatJPEG; }

const char* ImageExtension(const Config& c) { return c.ImageType == 1 ? ".png" : ".jpg"; }

int ExportFlags(const Config& c) {
  if (c.ImageType == 1) return PngBestSpeed;
  if (c.ImageQuality[0]) return JpegQualitySuperb;
  if (c.ImageQuality[1]) return JpegQualityGood;
  if (c.ImageQuality[2]) return JpegQualityNormal;
  return 0;
}

std::string ImageFolder(const Config& c) {
  std::string folder = c.GraphImagePath;
  if (!folder.empty() && folder.back() != '/') folder += '/';
  return folder;
}

bool SavePictureFile(Nimbometer& nm, GraphKind kind, const std::string& fileName, int format,
                     int flags) {
  if (!nm.config.FreeImageUse) return true;
  return nm.io.pictures && nm.io.pictures->SavePicture(kind, fileName, format, flags);
}

void ExportGraphPicture(Nimbometer& nm, GraphKind kind) {
  const Config& c = nm.config;
  // Without picture surfaces (a station that draws no graphs) there is nothing to save.
  if (!nm.io.pictures || c.GraphImage[static_cast<std::size_t>(kind)] != 1) return;
  nm.io.pictures->ClearError();
  const std::string fileName = ImageFolder(c) + GraphFileName(kind) + ImageExtension(c);
  if (!SavePictureFile(nm, kind, fileName, ImageFormat(c), ExportFlags(c)))
    SetStatusCode(nm.display, "i23", colours::Red);
  if (nm.io.pictures->PendingError() == ErrorLibraryNotFound)
    SetStatusCode(nm.display, "i24", colours::Red);
}

std::string CheckImageFolder(Nimbometer& nm) {
  const Config& c = nm.config;
  // The humidity and pressure pictures are not looked at here.
  bool anyImage = false;
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Rain, GraphKind::Wind, GraphKind::Day,
                         GraphKind::Temp})
    anyImage = anyImage || c.GraphImage[static_cast<std::size_t>(kind)] == 1;
  if (!anyImage) return {};
  SetStatusMain(nm.display, "Checking Image File Path : " + c.GraphImagePath, colours::DarkGreen);
  // An empty path is the current folder, which is always there.
  if (c.GraphImagePath.empty()) return {};
  namespace fs = std::filesystem;
  std::error_code error;
  if (fs::is_directory(c.GraphImagePath, error)) return {};
  fs::create_directories(c.GraphImagePath, error);
  return fs::is_directory(c.GraphImagePath, error) ? "i21 " : "i22 ";
}

}  // namespace nbx
