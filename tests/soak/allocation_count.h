#pragma once

#include <cstdint>

namespace nbx::test {

// The heap blocks that this test program holds right now, counted by its own
// operator new and delete: a leak shows as a count that grows with the cycles.
struct HeapInUse {
  std::int64_t blocks = 0;
  std::int64_t bytes = 0;
};

HeapInUse CurrentHeapInUse();

}  // namespace nbx::test
