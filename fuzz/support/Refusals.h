/** Calls that may throw, but only what is documented. */
#pragma once

#include "KvxFrame/Error.h"
#include "support/Input.h"

namespace kvx::fuzz {

/** @return whether `call` was refused, which it may only be with one of the documented codes and a sentence */
template <class Call>
bool IsRefused(const Call& call, std::initializer_list<uint32_t> documented) {
    try {
        call();
        return false;
    } catch (const frame::Error& error) {
        RequireOneOf(error.Result(), documented);
        Require(*error.what() != 0, "a refusal has a sentence");
        return true;
    }
}

}  // namespace kvx::fuzz
