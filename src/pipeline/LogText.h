/** Messages of the pipeline. */
#pragma once

#include "KvxDemosaicing/KvxPipeline.h"

namespace kvx {

constexpr int32_t kStageSuccess = 0, kStageFailure = -1;

/** Appends a printf-style message; a log without text takes none. */
[[gnu::format(printf, 2, 3)]] void Append(LogText_t* log, const char* format, ...) noexcept;

/** Appends the message of a failure. @return kStageFailure */
int32_t Fail(LogText_t* log, const char* message) noexcept;

}  // namespace kvx
