#include "support/CountedAllocations.h"

#include <malloc.h>

#include <cstdlib>
#include <new>

namespace kvx::test {

std::atomic<long> g_allocations{0};
std::atomic<size_t> g_allocatedBytes{0};
std::atomic<long> g_liveBytes{0};

}  // namespace kvx::test

// All other forms come here, too.
void* operator new(size_t size) {
    ++kvx::test::g_allocations;
    kvx::test::g_allocatedBytes += size;
    void* memory = std::malloc(size);
    if (!memory) throw std::bad_alloc();
    kvx::test::g_liveBytes += static_cast<long>(malloc_usable_size(memory));
    return memory;
}
void operator delete(void* memory) noexcept {
    kvx::test::g_liveBytes -= static_cast<long>(malloc_usable_size(memory));
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    operator delete(memory);
}
