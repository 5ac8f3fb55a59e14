/** What the C functions share: no exception leaves them, the sentence of a failure stays with a converter or a thread.
 */
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "frame/base/Fail.h"

namespace kvx::frame::c {

/** The text of an error: a buffer, so that keeping it cannot fail. */
class Sentence {
public:
    const char* Text() const noexcept {
        return m_text.data();
    }
    /** Cuts a text that is too long, between characters of UTF-8. */
    void Set(std::string_view text) noexcept;

private:
    std::array<char, 1024> m_text{};
};

/** Of the calls in this thread without a converter. */
Sentence& ThreadSentence() noexcept;

/** In a catch block: keeps the sentence of the exception. @return its result code */
uint32_t Report(Sentence& sentence) noexcept;

/** Runs the body of a function; exceptions become its result. */
template <class Body>
uint32_t Guarded(Sentence& sentence, const Body& body) noexcept {
    try {
        body();
        return KvxResult_Success;
    } catch (...) {
        return Report(sentence);
    }
}

/** The same for functions without a converter. */
template <class Body>
uint32_t Guarded(const Body& body) noexcept {
    return Guarded(ThreadSentence(), body);
}

/** The value behind a required pointer. @throws Error 0x80070008 */
template <class Value>
Value& Required(Value* pointer, const char* name) {
    if (!pointer) Fail(KvxResult_NullPointer, "{}: a null pointer", name);
    return *pointer;
}

/** Copies a text with its NUL to the caller's buffer. @throws Error 0x80070006, with the size needed in `*size` */
void CopyText(std::string_view text, char* buffer, uint32_t* size);

}  // namespace kvx::frame::c
