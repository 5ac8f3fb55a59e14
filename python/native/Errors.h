/** Refusals as Python exceptions. */
#pragma once

#include <fmt/format.h>
#include <pybind11/pybind11.h>

#include <utility>

#include "KvxFrame/Error.h"

namespace kvx::python {

/** Throws with `code`, one of KvxResultCode, as a result of the frame layer. */
template <typename... Args>
[[noreturn]] void Fail(uint32_t code, fmt::format_string<Args...> sentence, Args&&... args) {
    throw frame::Error(KvxResult_Of(frame::kComponentType, code), fmt::format(sentence, std::forward<Args>(args)...));
}

/** From now on frame::Error arrives as kvxdemosaicing.Error, or the class of it that suits its code. */
void TranslateErrors();

}  // namespace kvx::python
