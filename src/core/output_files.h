#pragma once

#include <cstdint>
#include <fstream>

namespace nbx {

// Files of the outputs that stay open from one cycle to the next: only the
// user data file, open for as long as a growing recording runs.
struct OutputFiles {
  std::ofstream RecordFile;
  // The file the recording holds open, by device and inode: a file deleted
  // under it (with its folder, say) no longer answers to its name.
  std::uint64_t RecordDevice = 0;
  std::uint64_t RecordInode = 0;
  // The recording's file went away under it; opened again once its folder is back.
  bool RecordFileLost = false;
};

}  // namespace nbx
