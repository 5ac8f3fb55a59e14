/** Counts the allocations by operator new in the whole program. */
#pragma once

#include <atomic>
#include <cstddef>

namespace kvx::test {

extern std::atomic<long> g_allocations;
extern std::atomic<size_t> g_allocatedBytes;
extern std::atomic<long> g_liveBytes;  // allocated and not freed yet, as the allocator rounds them

}  // namespace kvx::test
