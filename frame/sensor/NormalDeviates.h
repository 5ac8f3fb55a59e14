/** Random numbers that are the same on every machine. */
#pragma once

#include <cstdint>

namespace kvx::frame {

/**
 * Normal deviates of mean 0 and variance 1. Each row of a frame has its own stream, so that rows can be filled in any
 * order. SplitMix64 and the Box-Muller transform generate them, because the standard library's distributions differ
 * between implementations.
 */
class NormalDeviates {
public:
    NormalDeviates(uint64_t seed, uint64_t row);

    double Next();
    /** Uniformly distributed in (0, 1]. */
    double NextUniform();

private:
    uint64_t m_state;
    double m_second = 0;  // deviates come in pairs
    bool m_hasSecond = false;
};

}  // namespace kvx::frame
