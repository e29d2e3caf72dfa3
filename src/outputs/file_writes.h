#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace nbx {

// Rewrites a fixed-length file in place: the file is not emptied first, each
// part goes out in one write at its place, and a longer file is cut back to
// the record. Readers that poll the file never see it empty. No temporary
// file, no rename. False on any failure.
bool WriteInPlace(const std::string& path, std::initializer_list<std::string_view> parts);

// Writes a text file whole: emptied on opening, then filled. False on any failure.
bool WriteWhole(const std::string& path, std::string_view content);

// Up to `size` bytes from the start of a file; nothing when it cannot be opened.
std::optional<std::string> ReadStart(const std::string& path, std::size_t size);

// True when `path` names an existing file (not a folder).
bool FileExists(const std::string& path);

}  // namespace nbx
