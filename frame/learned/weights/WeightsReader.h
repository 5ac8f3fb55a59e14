/** Reads the files of weights. */
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "KvxDemosaicing/KvxResult.h"
#include "frame/base/Fail.h"

namespace kvx::frame {

/** Takes bytes and little-endian words from the front. Throws Error 0x80070003 where the file does not fit. */
class WeightsReader {
public:
    explicit WeightsReader(std::span<const uint8_t> bytes) : m_bytes(bytes) {}

    uint8_t Byte() {
        return Take(1)[0];
    }
    std::vector<int16_t> Words(size_t count) {
        const auto bytes = Take(2 * count);
        std::vector<int16_t> words(count);
        for (size_t i = 0; i < count; ++i) words[i] = static_cast<int16_t>(bytes[2 * i] | bytes[2 * i + 1] << 8);
        return words;
    }
    std::span<const uint8_t> Take(size_t count) {
        Require(count <= m_bytes.size(), "it ends too early");
        const auto taken = m_bytes.first(count);
        m_bytes = m_bytes.subspan(count);
        return taken;
    }
    void RequireEnd() const {
        Require(m_bytes.empty(), "it goes on after the last weights");
    }
    static void Require(bool holds, const char* otherwise) {
        if (!holds) Fail(KvxResult_WrongType, "this is no file of weights: {}", otherwise);
    }

private:
    std::span<const uint8_t> m_bytes;
};

}  // namespace kvx::frame
