// Counts the blocks the program holds, for the soak's check that memory stops growing.
// Linked into the soak's programs only, never into the monitor.
#include "fault/LiveBlocks.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::int64_t> live{0};

void* TryAllocate(std::size_t size) noexcept {
  void* p = std::malloc(size == 0 ? 1 : size);
  if (p != nullptr) live.fetch_add(1, std::memory_order_relaxed);
  return p;
}

void* Allocate(std::size_t size) {
  void* p = TryAllocate(size);
  if (p == nullptr) throw std::bad_alloc();
  return p;
}

void Release(void* p) noexcept {
  if (p == nullptr) return;
  live.fetch_sub(1, std::memory_order_relaxed);
  std::free(p);
}
}  // namespace

namespace fault {
std::int64_t LiveBlocks() { return live.load(std::memory_order_relaxed); }
}  // namespace fault

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept { return TryAllocate(size); }
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept { return TryAllocate(size); }
void operator delete(void* p) noexcept { Release(p); }
void operator delete[](void* p) noexcept { Release(p); }
void operator delete(void* p, std::size_t) noexcept { Release(p); }
void operator delete[](void* p, std::size_t) noexcept { Release(p); }
void operator delete(void* p, const std::nothrow_t&) noexcept { Release(p); }
void operator delete[](void* p, const std::nothrow_t&) noexcept { Release(p); }
