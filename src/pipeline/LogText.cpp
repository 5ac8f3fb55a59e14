#include "pipeline/LogText.h"

#include <climits>
#include <cstdarg>
#include <cstdio>

namespace kvx {

void Append(LogText_t* log, const char* format, ...) noexcept {
    if (!log || !log->text) return;
    std::va_list arguments;
    va_start(arguments, format);
    const int written = std::vsnprintf(log->text + log->length, INT_MAX, format, arguments);
    va_end(arguments);
    if (written > 0) log->length += static_cast<uint32_t>(written);
}

int32_t Fail(LogText_t* log, const char* message) noexcept {
    Append(log, "%s", message);
    return kStageFailure;
}

}  // namespace kvx
