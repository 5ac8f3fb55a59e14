/** How result codes are put together; their meanings stand in KvxDemosaicing/KvxResult.h. */
#pragma once

#include <cstdint>

#include "KvxDemosaicing/KvxResult.h"

namespace kvx {

/** `code` in the form that callers see; 0 stays 0. */
constexpr uint32_t ResultOf(uint32_t componentType, uint32_t code) {
    return code == KvxResult_Success ? code : 0x80000000u | (componentType << 16) | code;
}

/** A failure in the form that callers see, which a bare code is not. */
constexpr bool IsFailure(uint32_t result) {
    return result > 0x80000000u;
}

}  // namespace kvx
