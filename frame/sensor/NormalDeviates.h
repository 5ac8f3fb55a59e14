/** Random numbers that are the same everywhere. */
#pragma once

#include <cstdint>

namespace kvx::frame {

/**
 * Normal deviates of mean 0 and variance 1. Each row of a frame has a stream of its own, so that rows can be filled in
 * any order. The numbers are SplitMix64's, shaped by the transform of Box and Muller: the standard library's
 * distributions give other numbers with every implementation.
 */
class NormalDeviates {
public:
    NormalDeviates(uint64_t seed, uint64_t row);

    double Next();

private:
    double NextUniform();

    uint64_t m_state;
    double m_second = 0;  // they come in pairs
    bool m_hasSecond = false;
};

}  // namespace kvx::frame
