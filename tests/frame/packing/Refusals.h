/** How a call ended. */
#pragma once

#include <string>

#include "KvxFrame/Error.h"

namespace kvx::frame::test {

inline constexpr uint32_t kInvalid = 0x80070007, kNull = 0x80070008;

/** The result code of a call: that of its Error, or 0. `sentence` receives what it says. */
template <class Call>
uint32_t ResultOf(const Call& call, std::string* sentence = nullptr) {
    try {
        call();
    } catch (const Error& error) {
        if (sentence) *sentence = error.what();
        return error.Result();
    }
    return 0;
}

}  // namespace kvx::frame::test
