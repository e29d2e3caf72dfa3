#include <gtest/gtest.h>

#include <filesystem>

#include "core/status.h"
#include "graph_fixtures.h"
#include "graphs/drawing/picture_files.h"
#include "graphs/graph_routines.h"
#include "support/child_process.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using test::GraphStation;
using test::Pixel;
using test::TempDir;

FreeImageRuntime& Library() {
  FreeImageRuntime& fi = FreeImageRuntime::Instance();
  EXPECT_TRUE(fi.Initialise()) << fi.Failure();
  return fi;
}

// A graph tick with every sensor present and points on every ring.
void GraphTick(GraphStation& st) {
  st.nm.state.HumidityPresent = st.nm.state.PressurePresent = 1;
  st.nm.state.GraphDue = true;
  st.nm.state.LastReading = st.nm.NowSerial();
  RunGraphRoutines(st.nm);
}

// The bits a pixel has in the file, as the image library reads it.
unsigned FileDepth(const std::string& path, FREE_IMAGE_FORMAT format) {
  FreeImageRuntime& fi = Library();
  FIBITMAP* bitmap = fi.FreeImage_Load(format, path.c_str(), 0);
  if (!bitmap) return 0;
  const unsigned bpp = fi.FreeImage_GetBPP(bitmap);
  fi.FreeImage_Unload(bitmap);
  return bpp;
}

TEST(GraphExport, PngAndJpegAreReadBackAndTheJpegQualityFlagsChangeTheSize) {
  TempDir dir;
  GraphStation st;
  st.nm.config.GraphImagePath = dir.path() + "/";  // one trailing "/" is kept, not doubled
  EXPECT_EQ(ImageFolder(st.nm.config), dir.path() + "/");
  GraphTick(st);
  st.time.RunFor(600 * 1000);
  GraphTick(st);
  EXPECT_EQ(st.nm.display.StatusBar2.Caption, "");
  const std::string png = dir.File("NBX_ImageCloudCondition.png");
  const QImage& drawn = st.Picture(GraphKind::Cloud);
  EXPECT_EQ(FileDepth(png, FIF_PNG), 24u);
  EXPECT_EQ(QImage(QString::fromStdString(png)).convertToFormat(QImage::Format_RGB32), drawn);
  // Read back through the library onto another graph's surface.
  ASSERT_TRUE(st.pictures.LoadPicture(GraphKind::Day, png));
  EXPECT_EQ(st.Picture(GraphKind::Day), drawn);

  st.nm.config.ImageType = 0;
  const std::string jpg = dir.File("NBX_ImageWindCond.jpg");
  std::uintmax_t sizes[3];
  for (int q = 0; q < 3; ++q) {
    st.nm.config.ImageQuality = {q == 0, q == 1, q == 2};
    GraphTick(st);
    sizes[q] = fs::file_size(jpg);
  }
  EXPECT_GT(sizes[0], sizes[1]);
  EXPECT_GT(sizes[1], sizes[2]);
  EXPECT_EQ(FileDepth(jpg, FIF_JPEG), 24u);
  const QImage read(QString::fromStdString(jpg));
  ASSERT_EQ(read.size(), QSize(DefaultGraphWidth, DefaultGraphHeight));
  for (int row = 0; row < 3; ++row) {  // the channels in their order
    const QRgb want = Pixel(st.nm.config.ColorWind[row].BackColor), got = read.pixel(20, 30 + 70 * row);
    EXPECT_LE(std::abs(qRed(got) - qRed(want)) + std::abs(qBlue(got) - qBlue(want)), 12) << row;
  }
  // A JPEG option left on must not reach a PNG save as one of its flags.
  st.nm.config.ImageType = 1;
  st.nm.config.ImageQuality = {true, false, false};
  EXPECT_EQ(ExportFlags(st.nm.config), PngBestSpeed);
}

TEST(GraphExport, FailedSavesShowTheirCodesAndNeverStopTheCycle) {
  TempDir dir;
  GraphStation st;
  Display& d = st.nm.display;
  test::WriteFile(dir.File("plain"), "not a folder");

  st.nm.config.GraphImagePath = dir.File("plain") + "/images";  // a folder that cannot be
  EXPECT_EQ(CheckImageFolder(st.nm), "i22 ");
  GraphTick(st);
  EXPECT_EQ(d.StatusBar2.Caption, "i23");

  // A full disk, seen only when the file is flushed.
  SetStatusCode(d, "", colours::Black);
  st.nm.config.GraphImagePath = dir.path();
  fs::create_symlink("/dev/full", dir.File("NBX_ImageTemperature.png"));
  GraphTick(st);
  EXPECT_EQ(d.StatusBar2.Caption, "i23");

  // No image library at all.
  FreeImageRuntime missing("/nonexistent/libfreeimage.so.3");
  QtGraphPictures without(missing);
  st.nm.io.pictures = &without;
  st.nm.config.GraphImagePath = dir.File("fresh");
  fs::create_directory(dir.File("fresh"));
  GraphTick(st);
  EXPECT_EQ(d.StatusBar2.Caption, "i24");

  // FreeImageUse off: nothing written, nothing shown.
  SetStatusCode(d, "", colours::Black);
  st.nm.io.pictures = &st.pictures;
  st.nm.config.FreeImageUse = false;
  GraphTick(st);
  EXPECT_EQ(d.StatusBar2.Caption, "");
  EXPECT_TRUE(fs::is_empty(dir.File("fresh")));

  // A graph that is not generated is not exported either; one not exported
  // is still drawn; off the graph tick nothing happens at all.
  st.nm.config.FreeImageUse = true;
  st.nm.config.GraphGenerate.fill(0);
  st.nm.config.GraphGenerate[static_cast<int>(GraphKind::Rain)] = 1;
  st.nm.config.GraphImage[static_cast<int>(GraphKind::Rain)] = 0;
  const int cloudLast = st.nm.state.CloudArrayLst, rainLast = st.nm.state.RainArrayLst;
  GraphTick(st);
  EXPECT_TRUE(fs::is_empty(dir.File("fresh")));
  EXPECT_EQ(st.nm.state.CloudArrayLst, cloudLast);
  EXPECT_EQ(st.nm.state.RainArrayLst, rainLast + 1);
  st.nm.state.GraphDue = false;
  RunGraphRoutines(st.nm);
  EXPECT_EQ(st.nm.state.RainArrayLst, rainLast + 1);
}

TEST(GraphExport, ImageFolderIsCheckedAtStart) {
  TempDir dir;
  Nimbometer nm;
  nm.config.GraphImagePath = dir.File("new/pictures");
  EXPECT_EQ(CheckImageFolder(nm), "i21 ");
  EXPECT_TRUE(fs::is_directory(dir.File("new/pictures")));
  EXPECT_EQ(CheckImageFolder(nm), "");
  // Only the humidity and pressure pictures on: the folder is not looked at.
  nm.config.GraphImagePath = dir.File("other");
  nm.config.GraphImage = {0, 0, 0, 0, 0, 1, 1};
  EXPECT_EQ(CheckImageFolder(nm), "");
  EXPECT_FALSE(fs::exists(dir.File("other")));
}

// The station saves at 24 bits and loads at 32; the other depths are the
// routine's own, reached straight from 32 bits.
TEST(GraphExport, DepthConversionReachesEachDepth) {
  FreeImageRuntime& fi = Library();
  FIBITMAP* source =
      fi.FreeImage_Allocate(16, 8, 32, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK);
  ASSERT_NE(source, nullptr);
  EXPECT_EQ(ConvertColorDepth(fi, nullptr, DepthConversion{}), nullptr);
  EXPECT_EQ(ConvertColorDepth(fi, source, DepthConversion{33}), source);
  for (int bpp : {1, 4, 8, 15, 16}) {
    FIBITMAP* converted = ConvertColorDepth(fi, source, DepthConversion{bpp});
    ASSERT_NE(converted, nullptr) << bpp;
    EXPECT_EQ(fi.FreeImage_GetBPP(converted), bpp == 15 ? 16u : static_cast<unsigned>(bpp));
    fi.FreeImage_Unload(converted);
  }
  fi.FreeImage_Unload(source);
}

}  // namespace
}  // namespace nbx
