// Replaces the global operator new and delete of the soak program, so that
// the blocks in use can be counted. malloc_usable_size gives the size of a
// block on both sides, so a delete without its size counts right too.

#include "allocation_count.h"

#include <malloc.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> blocksInUse{0};
std::atomic<std::int64_t> bytesInUse{0};

void* Take(std::size_t size, std::size_t alignment = 0) {
  if (size == 0) size = 1;
  void* block = nullptr;
  if (alignment > alignof(std::max_align_t)) {
    const std::size_t rounded = (size + alignment - 1) / alignment * alignment;
    block = std::aligned_alloc(alignment, rounded);
  } else {
    block = std::malloc(size);
  }
  if (block == nullptr) return nullptr;
  blocksInUse.fetch_add(1, std::memory_order_relaxed);
  bytesInUse.fetch_add(static_cast<std::int64_t>(malloc_usable_size(block)), std::memory_order_relaxed);
  return block;
}

void* TakeOrThrow(std::size_t size, std::size_t alignment = 0) {
  if (void* block = Take(size, alignment)) return block;
  throw std::bad_alloc();
}

void Give(void* block) noexcept {
  if (block == nullptr) return;
  blocksInUse.fetch_sub(1, std::memory_order_relaxed);
  bytesInUse.fetch_sub(static_cast<std::int64_t>(malloc_usable_size(block)), std::memory_order_relaxed);
  std::free(block);
}

}  // namespace

namespace nbx::test {

HeapInUse CurrentHeapInUse() {
  return {blocksInUse.load(std::memory_order_relaxed), bytesInUse.load(std::memory_order_relaxed)};
}

}  // namespace nbx::test

void* operator new(std::size_t size) { return TakeOrThrow(size); }
void* operator new[](std::size_t size) { return TakeOrThrow(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return Take(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return Take(size); }
void* operator new(std::size_t size, std::align_val_t a) {
  return TakeOrThrow(size, static_cast<std::size_t>(a));
}
void* operator new[](std::size_t size, std::align_val_t a) {
  return TakeOrThrow(size, static_cast<std::size_t>(a));
}
void* operator new(std::size_t size, std::align_val_t a, const std::nothrow_t&) noexcept {
  return Take(size, static_cast<std::size_t>(a));
}
void* operator new[](std::size_t size, std::align_val_t a, const std::nothrow_t&) noexcept {
  return Take(size, static_cast<std::size_t>(a));
}

void operator delete(void* block) noexcept { Give(block); }
void operator delete[](void* block) noexcept { Give(block); }
void operator delete(void* block, std::size_t) noexcept { Give(block); }
void operator delete[](void* block, std::size_t) noexcept { Give(block); }
void operator delete(void* block, const std::nothrow_t&) noexcept { Give(block); }
void operator delete[](void* block, const std::nothrow_t&) noexcept { Give(block); }
void operator delete(void* block, std::align_val_t) noexcept { Give(block); }
void operator delete[](void* block, std::align_val_t) noexcept { Give(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { Give(block); }
void operator delete[](void* block, std::size_t, std::align_val_t) noexcept { Give(block); }
void operator delete(void* block, std::align_val_t, const std::nothrow_t&) noexcept { Give(block); }
void operator delete[](void* block, std::align_val_t, const std::nothrow_t&) noexcept { Give(block); }
