#include "pipeline/ScratchArena.h"

namespace kvx {

constinit thread_local unsigned char* g_dynamicBuffer = nullptr;
constinit thread_local unsigned char* g_bufFloor = nullptr;
constinit thread_local unsigned char* g_bufCeil = nullptr;
constinit thread_local unsigned char* g_dynamicBuffer1 = nullptr;
constinit thread_local unsigned char* g_dynamicBuffer2 = nullptr;

void* PeekScratch(size_t bytes, const char* name, LogText_t* log) noexcept {
    const auto next = reinterpret_cast<uintptr_t>(g_dynamicBuffer);
    const auto floor = reinterpret_cast<uintptr_t>(g_bufFloor), ceil = reinterpret_cast<uintptr_t>(g_bufCeil);
    if (next && next >= floor && next <= ceil && bytes <= ceil - next) return g_dynamicBuffer;
    Append(log, "%s memory alloc error.\n", name);
    return nullptr;
}

}  // namespace kvx

void Alg_SetScratch(void* begin, void* end, void* buffer1, void* buffer2) noexcept {
    kvx::g_dynamicBuffer = kvx::g_bufFloor = static_cast<unsigned char*>(begin);
    kvx::g_bufCeil = static_cast<unsigned char*>(end);
    kvx::g_dynamicBuffer1 = static_cast<unsigned char*>(buffer1);
    kvx::g_dynamicBuffer2 = static_cast<unsigned char*>(buffer2);
}
