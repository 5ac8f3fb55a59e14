/** Samples of bytes or words in memory, words at odd addresses, too. */
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kvx::frame {

template <class T>
uint16_t SampleAt(const uint8_t* samples, size_t index) {
    T sample;
    std::memcpy(&sample, samples + index * sizeof(T), sizeof(T));
    return sample;
}

template <class T>
void PutSample(uint8_t* samples, size_t index, uint32_t value) {
    const T sample = static_cast<T>(value);
    std::memcpy(samples + index * sizeof(T), &sample, sizeof(T));
}

}  // namespace kvx::frame
