/** Every allocation with operator new in this program, the library's included. */
#pragma once

#include <atomic>
#include <cstddef>

namespace kvx::test {

extern std::atomic<long> g_allocations;
extern std::atomic<size_t> g_allocatedBytes;

}  // namespace kvx::test
