/** Refusals with a formatted sentence. */
#pragma once

#include <fmt/format.h>

#include <utility>

#include "KvxFrame/Error.h"

namespace kvx::gst {

/** Throws what the frame layer throws for an argument that it refuses. */
template <typename... Args>
[[noreturn]] void Refuse(fmt::format_string<Args...> sentence, Args&&... args) {
    throw frame::Error(KvxResult_Of(frame::kComponentType, KvxResult_InvalidArgument),
                       fmt::format(sentence, std::forward<Args>(args)...));
}

}  // namespace kvx::gst
