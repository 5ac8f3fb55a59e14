#include "support/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace kvx::test {

std::atomic<long> g_allocations{0};
std::atomic<size_t> g_allocatedBytes{0};

}  // namespace kvx::test

// All other forms come here, too.
void* operator new(size_t size) {
    ++kvx::test::g_allocations;
    kvx::test::g_allocatedBytes += size;
    if (void* memory = std::malloc(size)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}
