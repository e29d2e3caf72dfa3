#pragma once

#include <QImage>
#include <string>

#include "graphs/drawing/freeimage_runtime.h"

namespace nbx {

// How the general depth conversion reaches its depth.
struct DepthConversion {
  int bitsPerPixel = 24;        // 1, 4, 8, 15 (5-5-5), 16 (5-6-5), 24 or 32
  bool unloadSource = false;    // the source goes once a new bitmap has come out
  bool ditherMonochrome = false;  // depth 1: dither rather than cut at the threshold
  BYTE threshold = 128;
  FREE_IMAGE_DITHER dither = FID_FS;
  FREE_IMAGE_QUANTIZE quantizer = FIQ_WUQUANT;
  int paletteSize = 256;
};

// Converts a bitmap to another depth. A null bitmap gives null; a depth the
// library has no conversion for gives the bitmap as it is.
FIBITMAP* ConvertColorDepth(FreeImageRuntime& fi, FIBITMAP* bitmap, const DepthConversion& how);

// Writes the picture through the image library at its final name: the
// pixels go into a bitmap of the library, which is made 24-bit and saved in
// `format` with the save flags. False when the library is missing or the
// file could not be written.
bool SavePictureFile(FreeImageRuntime& fi, const QImage& picture, const std::string& fileName,
                     int format, int flags);

// The reverse: reads an image file into the picture, which takes its size.
// A format below 0 is found from the file. False when nothing was read.
bool LoadPictureFile(FreeImageRuntime& fi, QImage& picture, const std::string& fileName,
                     int format = FIF_UNKNOWN, int flags = 0);

}  // namespace nbx
