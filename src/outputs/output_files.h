#pragma once

#include <fstream>

namespace nbx {

// Files of the outputs that stay open from one cycle to the next: only the
// user data file, open for as long as a growing recording runs.
struct OutputFiles {
  std::ofstream RecordFile;
};

}  // namespace nbx
