#include "graphs/drawing/picture_files.h"

#include <QColor>
#include <cstdio>

namespace nbx {
namespace {

// The image library's bitmaps stand bottom-up: scan line 0 is the lowest row.
void CopyIntoBitmap(FreeImageRuntime& fi, const QImage& picture, FIBITMAP* bitmap) {
  const int height = picture.height();
  for (int y = 0; y < height; ++y) {
    const auto* source = reinterpret_cast<const QRgb*>(picture.constScanLine(y));
    BYTE* target = fi.FreeImage_GetScanLine(bitmap, height - 1 - y);
    for (int x = 0; x < picture.width(); ++x, target += 4) {
      target[FI_RGBA_RED] = static_cast<BYTE>(qRed(source[x]));
      target[FI_RGBA_GREEN] = static_cast<BYTE>(qGreen(source[x]));
      target[FI_RGBA_BLUE] = static_cast<BYTE>(qBlue(source[x]));
      target[FI_RGBA_ALPHA] = 0xFF;
    }
  }
}

QImage CopyFromBitmap(FreeImageRuntime& fi, FIBITMAP* bitmap) {
  const int width = static_cast<int>(fi.FreeImage_GetWidth(bitmap));
  const int height = static_cast<int>(fi.FreeImage_GetHeight(bitmap));
  QImage picture(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    const BYTE* source = fi.FreeImage_GetScanLine(bitmap, height - 1 - y);
    auto* target = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < width; ++x, source += 4)
      target[x] = qRgb(source[FI_RGBA_RED], source[FI_RGBA_GREEN], source[FI_RGBA_BLUE]);
  }
  return picture;
}

unsigned ReadFromFile(void* buffer, unsigned size, unsigned count, fi_handle file) {
  return static_cast<unsigned>(std::fread(buffer, size, count, static_cast<std::FILE*>(file)));
}
unsigned WriteToFile(void* buffer, unsigned size, unsigned count, fi_handle file) {
  return static_cast<unsigned>(std::fwrite(buffer, size, count, static_cast<std::FILE*>(file)));
}
int SeekInFile(fi_handle file, long offset, int origin) {
  return std::fseek(static_cast<std::FILE*>(file), offset, origin);
}
long TellInFile(fi_handle file) { return std::ftell(static_cast<std::FILE*>(file)); }

// Saves at the final name, as FreeImage_Save does, but with the file opened
// and closed here: the library's own file save does not see a write that
// fails only when the file is flushed, and a full disk would pass unnoticed.
bool SaveAtFinalName(FreeImageRuntime& fi, FIBITMAP* bitmap, const std::string& fileName,
                     int format, int flags) {
  std::FILE* file = std::fopen(fileName.c_str(), "wb");
  if (!file) return false;
  FreeImageIO io{ReadFromFile, WriteToFile, SeekInFile, TellInFile};
  bool saved = fi.FreeImage_SaveToHandle(static_cast<FREE_IMAGE_FORMAT>(format), bitmap, &io,
                                         file, flags) != FALSE;
  saved = std::fflush(file) == 0 && std::ferror(file) == 0 && saved;
  return std::fclose(file) == 0 && saved;
}

}  // namespace

FIBITMAP* ConvertColorDepth(FreeImageRuntime& fi, FIBITMAP* bitmap, const DepthConversion& how) {
  if (!bitmap) return nullptr;
  FIBITMAP* converted = bitmap;
  switch (how.bitsPerPixel) {
    case 1:
      converted = how.ditherMonochrome ? fi.FreeImage_Dither(bitmap, how.dither)
                                       : fi.FreeImage_Threshold(bitmap, how.threshold);
      break;
    case 4:
      if (fi.FreeImage_GetColorType(bitmap) == FIC_PALETTE) {
        FIBITMAP* grey = fi.FreeImage_ConvertToGreyscale(bitmap);
        converted = grey ? fi.FreeImage_ConvertTo4Bits(grey) : nullptr;
        if (grey) fi.FreeImage_Unload(grey);
      } else {
        converted = fi.FreeImage_ConvertTo4Bits(bitmap);
      }
      break;
    case 8:
      converted = how.paletteSize == 256
                      ? fi.FreeImage_ColorQuantize(bitmap, how.quantizer)
                      : fi.FreeImage_ColorQuantizeEx(bitmap, how.quantizer, how.paletteSize, 0, nullptr);
      break;
    case 15:
      converted = fi.FreeImage_ConvertTo16Bits555(bitmap);
      break;
    case 16:
      converted = fi.FreeImage_ConvertTo16Bits565(bitmap);
      break;
    case 24:
      converted = fi.FreeImage_ConvertTo24Bits(bitmap);
      break;
    case 32:
      converted = fi.FreeImage_ConvertTo32Bits(bitmap);
      break;
    default:
      return bitmap;
  }
  if (converted && converted != bitmap && how.unloadSource) fi.FreeImage_Unload(bitmap);
  return converted;
}

bool SavePictureFile(FreeImageRuntime& fi, const QImage& picture, const std::string& fileName,
                     int format, int flags) {
  if (!fi.Initialise() || picture.isNull()) return false;
  const QImage pixels = picture.format() == QImage::Format_RGB32
                            ? picture
                            : picture.convertToFormat(QImage::Format_RGB32);
  FIBITMAP* bitmap = fi.FreeImage_Allocate(pixels.width(), pixels.height(), 32, FI_RGBA_RED_MASK,
                                           FI_RGBA_GREEN_MASK, FI_RGBA_BLUE_MASK);
  if (!bitmap) return false;
  CopyIntoBitmap(fi, pixels, bitmap);
  DepthConversion to24;
  to24.bitsPerPixel = 24;
  to24.unloadSource = true;
  FIBITMAP* converted = ConvertColorDepth(fi, bitmap, to24);
  if (!converted) {
    fi.FreeImage_Unload(bitmap);
    return false;
  }
  const bool saved = SaveAtFinalName(fi, converted, fileName, format, flags);
  fi.FreeImage_Unload(converted);
  return saved;
}

bool LoadPictureFile(FreeImageRuntime& fi, QImage& picture, const std::string& fileName, int format,
                     int flags) {
  if (!fi.Initialise()) return false;
  const FREE_IMAGE_FORMAT fif = format < 0 ? fi.FreeImage_GetFileType(fileName.c_str(), 0)
                                           : static_cast<FREE_IMAGE_FORMAT>(format);
  if (fif == FIF_UNKNOWN) return false;
  FIBITMAP* loaded = fi.FreeImage_Load(fif, fileName.c_str(), flags);
  DepthConversion to32;
  to32.bitsPerPixel = 32;
  to32.unloadSource = true;
  FIBITMAP* bitmap = ConvertColorDepth(fi, loaded, to32);
  if (!bitmap) {
    if (loaded) fi.FreeImage_Unload(loaded);
    return false;
  }
  picture = CopyFromBitmap(fi, bitmap);
  fi.FreeImage_Unload(bitmap);
  return true;
}

}  // namespace nbx
