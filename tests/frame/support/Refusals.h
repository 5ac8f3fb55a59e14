/** How a call ended. */
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "KvxFrame/Error.h"

namespace kvx::frame {

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

/** Expects an Error with this code and a sentence that says `part`. */
template <class Call>
void ExpectRefused(uint32_t code, const std::string& part, const Call& call) {
    std::string sentence;
    EXPECT_EQ(ResultOf(call, &sentence), code) << sentence;
    EXPECT_NE(sentence.find(part), std::string::npos) << "'" << sentence << "' does not say '" << part << "'";
}

}  // namespace kvx::frame
