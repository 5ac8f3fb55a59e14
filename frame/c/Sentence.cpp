#include "frame/c/Sentence.h"

#include <algorithm>
#include <cstring>
#include <new>

#include "KvxFrame/ErrorC.h"

namespace kvx::frame::c {
namespace {

constexpr uint32_t ResultOf(uint32_t code) {
    return KvxResult_Of(kComponentType, code);
}

}  // namespace

void Sentence::Set(std::string_view text) noexcept {
    size_t size = std::min(text.size(), m_text.size() - 1);
    if (size < text.size())
        while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0) == 0x80) --size;
    std::memcpy(m_text.data(), text.data(), size);
    m_text[size] = '\0';
}

Sentence& ThreadSentence() noexcept {
    thread_local Sentence sentence;
    return sentence;
}

uint32_t Report(Sentence& sentence) noexcept {
    try {
        throw;
    } catch (const Error& error) {
        sentence.Set(error.what());
        return error.Result();
    } catch (const std::bad_alloc&) {
        sentence.Set("out of memory");
        return ResultOf(KvxResult_NoMemory);
    } catch (const std::exception& error) {
        sentence.Set(error.what());
    } catch (...) {
        sentence.Set("an unknown error");
    }
    return ResultOf(KvxResult_ConversionFailed);
}

void CopyText(std::string_view text, char* buffer, uint32_t* size) {
    uint32_t& room = Required(size, "size");
    const auto needed = static_cast<uint32_t>(text.size() + 1);
    if (room != 0) Required(buffer, "buffer");
    if (room < needed) {
        room = needed;
        Fail(KvxResult_BufferTooSmall, "the text takes {} bytes", needed);
    }
    std::memcpy(buffer, text.data(), text.size());
    buffer[text.size()] = '\0';
}

}  // namespace kvx::frame::c

const char* KvxFrame_LastError() noexcept {
    return kvx::frame::c::ThreadSentence().Text();
}
