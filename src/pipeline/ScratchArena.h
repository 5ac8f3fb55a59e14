/** Scratch memory of the pipeline's stages: one arena for each thread, in buffers that the next stage does not use. */
#pragma once

#include <cstddef>
#include <cstdint>

#include "pipeline/LogText.h"

namespace kvx {

extern constinit thread_local unsigned char* g_dynamicBuffer;  ///< next free byte
extern constinit thread_local unsigned char *g_bufFloor, *g_bufCeil;
extern constinit thread_local unsigned char *g_dynamicBuffer1, *g_dynamicBuffer2;  ///< two further buffers

/** The next `bytes` of the arena, which stay free; null, and a message with `name`, when it has fewer. */
void* PeekScratch(size_t bytes, const char* name, LogText_t* log) noexcept;

/** Takes `count` elements from the arena; null, and a message with `name`, when it has fewer. */
template <class T>
T* TakeScratch(size_t count, const char* name, LogText_t* log) noexcept {
    void* taken = PeekScratch(count * sizeof(T), name, log);
    if (taken) g_dynamicBuffer += count * sizeof(T);
    return static_cast<T*>(taken);
}

}  // namespace kvx
