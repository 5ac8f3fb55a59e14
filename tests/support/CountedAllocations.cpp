#include "support/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace kvx::test {

std::atomic<long> g_allocations{0};
std::atomic<size_t> g_allocatedBytes{0};

}  // namespace kvx::test

void* operator new(size_t size, const std::nothrow_t&) noexcept {
    ++kvx::test::g_allocations;
    kvx::test::g_allocatedBytes += size;
    return std::malloc(size);
}
void* operator new(size_t size) {
    if (void* memory = operator new(size, std::nothrow)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, size_t) noexcept {
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept {
    std::free(memory);
}
