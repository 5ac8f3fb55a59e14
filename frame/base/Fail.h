/** Refusals with a formatted sentence. */
#pragma once

#include <fmt/format.h>

#include <utility>

#include "KvxFrame/Error.h"

namespace kvx::frame {

/** Throws with `code`, one of KvxResultCode, as this layer's result. */
template <typename... Args>
[[noreturn]] void Fail(uint32_t code, fmt::format_string<Args...> sentence, Args&&... args) {
    throw Error(KvxResult_Of(kComponentType, code), fmt::format(sentence, std::forward<Args>(args)...));
}

}  // namespace kvx::frame
