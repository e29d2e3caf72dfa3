#pragma once

#include <string>

#include "core/config.h"

namespace nbx {
struct Nimbometer;

// The fixed file name of a graph's picture, without extension.
const char* GraphFileName(GraphKind kind);
// ImageType checked is PNG, clear is JPEG.
int ImageFormat(const Config& config);
const char* ImageExtension(const Config& config);
// 0 for PNG; for JPEG the flag of the first quality option that is on, 0 when none is.
int ExportFlags(const Config& config);
// The folder of the pictures with one trailing "/"; empty (the current folder) when not set.
std::string ImageFolder(const Config& config);

// Saves a graph's picture: with FreeImageUse off nothing is written and the
// save counts as done.
bool SavePictureFile(Nimbometer& nm, GraphKind kind, const std::string& fileName, int format,
                     int flags);
// Saves the graph's picture at its fixed name when its export is on; a
// failed save shows "i23", a missing image library "i24".
void ExportGraphPicture(Nimbometer& nm, GraphKind kind);

// At Start: the image folder check; returns its code ("i21 ", "i22 ") or "".
std::string CheckImageFolder(Nimbometer& nm);

}  // namespace nbx
