/** A fuzzer's bytes as the arguments of a call. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <initializer_list>

namespace kvx::fuzz {

/** A property that holds for every input. */
inline void Require(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "violated: %s\n", what);
    std::abort();
}

inline void RequireOneOf(uint32_t result, std::initializer_list<uint32_t> documented) {
    for (const uint32_t code : documented)
        if (result == code) return;
    std::fprintf(stderr, "result 0x%x\n", result);
    Require(false, "a documented result code");
}

/** Takes bytes from the front; after the last one, zeros follow. */
class Input {
public:
    Input(const uint8_t* data, size_t size) : m_data(data), m_size(size) {}

    bool IsEmpty() const {
        return m_size == 0;
    }

    /** Any bits: NaN and infinity where T is a floating-point type. */
    template <class T>
    T Take() {
        T value{};
        Copy(&value, sizeof value);
        return value;
    }
    void Copy(void* to, size_t size) {
        const size_t taken = size < m_size ? size : m_size;
        if (taken > 0) std::memcpy(to, m_data, taken);
        m_data += taken;
        m_size -= taken;
    }

    bool Flag() {
        return Take<uint8_t>() & 1;
    }
    /** 0 to end - 1. */
    uint32_t Below(uint32_t end) {
        return (end > 256 ? Take<uint16_t>() : Take<uint8_t>()) % end;
    }
    template <class T, size_t count>
    T OneOf(const T (&values)[count]) {
        return values[Below(count)];
    }

    /** Samples: one value throughout, random extremes, noise, or the rest of the input, repeated. */
    void Fill(uint8_t* to, size_t size) {
        const uint32_t kind = Below(4);
        auto state = Take<uint32_t>() | 1;
        for (size_t i = 0; i < size; ++i) {
            state = state * 1664525 + 1013904223;
            const auto drawn = static_cast<uint8_t>(state >> 24);
            if (kind == 0) to[i] = static_cast<uint8_t>(m_size ? m_data[0] : 0);
            if (kind == 1) to[i] = drawn & 1 ? 0xFF : 0;
            if (kind == 2) to[i] = drawn;
            if (kind == 3) to[i] = m_size ? m_data[i % m_size] : drawn;
        }
    }

private:
    const uint8_t* m_data;
    size_t m_size;
};

}  // namespace kvx::fuzz
