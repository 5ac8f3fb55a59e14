#include "support/FailingMemory.h"

#include <link.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

extern "C" {  // the C library's own
void* __libc_malloc(size_t);
void* __libc_calloc(size_t, size_t);
void* __libc_realloc(void*, size_t);
void* __libc_memalign(size_t, size_t);
void __libc_free(void*);
}

namespace kvx::test {
namespace {

std::atomic<long> g_counted{0}, g_failed{0};
std::atomic<long> g_first{LONG_MAX}, g_end{LONG_MAX};
std::atomic<uintptr_t> g_openMpBegin{0}, g_openMpEnd{0};

std::atomic<bool> g_noting{false};
std::atomic<void*> g_blocks[1 << 9];  // those that live; more are not in use at once

/** Puts `to` where `from` stands. */
void Exchange(void* from, void* to) {
    for (std::atomic<void*>& block : g_blocks)
        if (void* expected = from; block == expected && block.compare_exchange_strong(expected, to)) return;
}

int NoteOpenMp(dl_phdr_info* library, size_t, void*) {
    if (!std::strstr(library->dlpi_name, "omp.so")) return 0;  // libgomp or libomp
    g_openMpBegin = library->dlpi_addr;
    for (int i = 0; i < library->dlpi_phnum; ++i) {
        const auto& segment = library->dlpi_phdr[i];
        if (segment.p_type == PT_LOAD) g_openMpEnd = library->dlpi_addr + segment.p_vaddr + segment.p_memsz;
    }
    return 1;
}

bool IsOpenMp(const void* caller) {
    const auto address = reinterpret_cast<uintptr_t>(caller);
    return address >= g_openMpBegin && address < g_openMpEnd;
}

template <class Allocate>
void* AllocateFor(const void* caller, const Allocate& allocate) {
    if (IsOpenMp(caller)) return allocate();
    const long index = g_counted++;
    if (index >= g_first && index < g_end) {
        ++g_failed;
        errno = ENOMEM;
        return nullptr;
    }
    void* block = allocate();
    if (block && g_noting) Exchange(nullptr, block);
    return block;
}

}  // namespace

void FailAllocations(long first, long count) {
    dl_iterate_phdr(NoteOpenMp, nullptr);
    g_counted = g_failed = 0;
    g_end = first > LONG_MAX - count ? LONG_MAX : first + count;
    for (std::atomic<void*>& block : g_blocks) block = nullptr;
    g_first = first;
    g_noting = true;
}

long StopFailing() {
    g_first = g_end = LONG_MAX;
    g_noting = false;
    return g_failed;
}

long LeakedBlocks() {
    return std::size(g_blocks) - std::count(std::begin(g_blocks), std::end(g_blocks), nullptr);
}

}  // namespace kvx::test

using kvx::test::AllocateFor;

extern "C" {
void* malloc(size_t size) {
    return AllocateFor(__builtin_return_address(0), [=] { return __libc_malloc(size); });
}
void* calloc(size_t count, size_t size) {
    return AllocateFor(__builtin_return_address(0), [=] { return __libc_calloc(count, size); });
}
void* memalign(size_t alignment, size_t size) {
    return AllocateFor(__builtin_return_address(0), [=] { return __libc_memalign(alignment, size); });
}
void* aligned_alloc(size_t alignment, size_t size) {
    return AllocateFor(__builtin_return_address(0), [=] { return __libc_memalign(alignment, size); });
}
int posix_memalign(void** block, size_t alignment, size_t size) {
    void* made = AllocateFor(__builtin_return_address(0), [=] { return __libc_memalign(alignment, size); });
    if (!made) return ENOMEM;
    *block = made;
    return 0;
}
void* realloc(void* block, size_t size) {  // what grows a block in place of a new one does not fail
    return block ? __libc_realloc(block, size) : malloc(size);
}
void free(void* block) {
    if (block) kvx::test::Exchange(block, nullptr);
    __libc_free(block);
}
}
