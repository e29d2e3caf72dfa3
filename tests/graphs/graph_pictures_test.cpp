#include <gtest/gtest.h>

#include <QFontMetrics>
#include <filesystem>
#include <tuple>

#include "core/status.h"
#include "graph_fixtures.h"
#include "graphs/drawing/picture_files.h"
#include "graphs/graph_ring.h"
#include "graphs/graph_routines.h"
#include "support/child_process.h"

namespace nbx {
namespace {

namespace fs = std::filesystem;
using test::CountColour;
using test::GraphStation;
using test::Pixel;
using test::TempDir;

// The plot's bottom edge: the picture less one line of its own font.
int PlotBottom(const GraphSurface& surface) {
  return surface.ScaleHeight() - QFontMetrics(surface.font, &surface.image).height();
}

TEST(BandGraph, BandsFillTheThirdsUpsideDownForHumidityAndOnePointDrawsNoCurve) {
  GraphStation st;
  st.AddPoint(GraphKind::Cloud, -10);
  st.AddPoint(GraphKind::Humidity, 60);
  const Config& c = st.nm.config;
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Humidity}) {
    const QImage& image = st.Picture(kind);
    const int bottom = PlotBottom(st.pictures.Surface(kind));
    const auto& swatches = kind == GraphKind::Cloud ? c.ColorCloud : c.ColorHumidity;
    for (int row = 0; row < 3; ++row) {
      const int swatch = kind == GraphKind::Cloud ? row : 2 - row;
      EXPECT_EQ(image.pixel(3, bottom * (2 * row + 1) / 6), Pixel(swatches[swatch].BackColor))
          << GraphTag(kind) << " row " << row;
    }
    EXPECT_EQ(CountColour(image, image.rect(), Pixel(c.GraphColorCloud[1])), 0) << GraphTag(kind);
    // The border in the axis colour, the strip below the plot in the picture's own colour.
    EXPECT_EQ(std::tuple(image.pixel(0, bottom / 2), image.pixel(image.width() - 1, bottom / 2),
                         image.pixel(1, image.height() - 1)),
              std::tuple(Pixel(c.GraphColorCloud[0]), Pixel(c.GraphColorCloud[0]),
                         Pixel(colours::SystemButtonFace)));
  }
  // A new colour shows at the next redraw from the rings.
  st.nm.config.ColorCloud[1].BackColor = 0x804020;
  RedrawGraphs(st.nm);
  const int bottom = PlotBottom(st.pictures.Surface(GraphKind::Cloud));
  EXPECT_EQ(st.Picture(GraphKind::Cloud).pixel(3, bottom / 2), Pixel(0x804020));
}

TEST(TemperatureGraph, LinearScaleOnItsOwnBackground) {
  GraphStation st;
  const Config& c = st.nm.config;
  for (int i = 0; i < 2; ++i) {  // an hour at 0, half way between -30 and 30
    st.AddPoint(GraphKind::Temp, 0);
    st.time.RunFor(1800 * 1000);
  }
  const QImage& image = st.Picture(GraphKind::Temp);
  const int bottom = PlotBottom(st.pictures.Surface(GraphKind::Temp));
  EXPECT_EQ(image.pixel(image.width() - 2, bottom / 4 + 3), Pixel(c.GraphColorTemp[2]));
  int row = 0;
  while (row < bottom && image.pixel(100, row) != Pixel(c.GraphColorTemp[1])) ++row;
  EXPECT_NEAR(row, bottom / 2.0, 1.5);
  // Left of the plot the scale labels, in the axis colour's shades.
  const int axis = CountColour(image, QRect(0, bottom - 8, 30, 16), Pixel(c.GraphColorTemp[2]));
  EXPECT_TRUE(axis > 0 && axis < 30 * 16) << axis;
}

TEST(GraphDrawing, OddRingsAndLimitsDrawWithoutLeavingThePicture) {
  GraphStation st;
  Config& c = st.nm.config;
  c.CloudLimit = {5, 5, 5};          // no span between thresholds
  c.RainLimit = {2800, 3200, 3200};  // out of order
  c.GraphTempMax = c.GraphTempMin = 10;
  const Colour curve = c.GraphColorCloud[1];
  for (GraphKind kind : {GraphKind::Cloud, GraphKind::Rain, GraphKind::Temp}) {
    st.AddPoint(kind, 99900);
    st.time.JumpClock(-3600 * 1000);  // the clock went back an hour
    st.AddPoint(kind, 999);
    st.time.JumpClock(7200 * 1000);
    st.AddPoint(kind, NAN);
    EXPECT_FALSE(st.Picture(kind).isNull());
  }
  // With no span at all there is no axis and no curve, but the bands stay.
  st.nm.config.RefreshPeriod = 0;
  st.nm.display.GraphSpan.Caption.clear();
  EmptyRing(st.nm.state.NBX_GraphArrayWind);
  st.AddPoint(GraphKind::Wind, 3);
  const QImage& wind = st.Picture(GraphKind::Wind);
  EXPECT_EQ(std::tuple(CountColour(wind, wind.rect(), Pixel(curve)), wind.pixel(3, 5)),
            std::tuple(0, Pixel(c.ColorWind[0].BackColor)));
}

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
  EXPECT_TRUE(sizes[0] > sizes[1] && sizes[1] > sizes[2]) << sizes[0] << " " << sizes[1] << " " << sizes[2];
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

TEST(GraphExport, TheFolderIsCheckedAtStartAndFailedSavesShowTheirCodesWithoutStoppingTheCycle) {
  TempDir dir;
  GraphStation st;
  Display& d = st.nm.display;
  st.nm.config.GraphImagePath = dir.File("new/pictures");
  EXPECT_EQ(CheckImageFolder(st.nm), "i21 ");
  EXPECT_TRUE(fs::is_directory(dir.File("new/pictures")));
  EXPECT_EQ(CheckImageFolder(st.nm), "");
  // Only the humidity and pressure pictures on: the folder is not looked at.
  st.nm.config.GraphImagePath = dir.File("other");
  st.nm.config.GraphImage = {0, 0, 0, 0, 0, 1, 1};
  EXPECT_TRUE(CheckImageFolder(st.nm).empty() && !fs::exists(dir.File("other")));
  st.nm.config.GraphImage.fill(1);

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
  EXPECT_TRUE(d.StatusBar2.Caption.empty() && fs::is_empty(dir.File("fresh")));

  // A graph that is not generated is not exported either; one not exported
  // is still drawn; off the graph tick nothing happens at all.
  st.nm.config.FreeImageUse = true;
  st.nm.config.GraphGenerate.fill(0);
  st.nm.config.GraphGenerate[static_cast<int>(GraphKind::Rain)] = 1;
  st.nm.config.GraphImage[static_cast<int>(GraphKind::Rain)] = 0;
  const int cloudLast = st.nm.state.CloudArrayLst, rainLast = st.nm.state.RainArrayLst;
  GraphTick(st);
  EXPECT_TRUE(fs::is_empty(dir.File("fresh")));
  EXPECT_EQ(std::tuple(st.nm.state.CloudArrayLst, st.nm.state.RainArrayLst),
            std::tuple(cloudLast, rainLast + 1));
  st.nm.state.GraphDue = false;
  RunGraphRoutines(st.nm);
  EXPECT_EQ(st.nm.state.RainArrayLst, rainLast + 1);
}

// The station saves at 24 bits and loads at 32; the other depths are the
// routine's own, reached straight from 32 bits.
TEST(GraphExport, DepthConversionReachesEachDepth) {
  FreeImageRuntime& fi = Library();
  FIBITMAP* source =
      fi.FreeImage_Allocate(16, 8, 32, FI_RGBA_RED_MASK, FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK);
  EXPECT_EQ(ConvertColorDepth(fi, nullptr, DepthConversion{}), nullptr);
  EXPECT_EQ(ConvertColorDepth(fi, source, DepthConversion{33}), source);
  for (int bpp : {1, 4, 8, 15, 16}) {
    FIBITMAP* converted = ConvertColorDepth(fi, source, DepthConversion{bpp});
    EXPECT_EQ(converted ? fi.FreeImage_GetBPP(converted) : 0u, bpp == 15 ? 16u : unsigned(bpp));
    if (converted) fi.FreeImage_Unload(converted);
  }
  fi.FreeImage_Unload(source);
}

}  // namespace
}  // namespace nbx
