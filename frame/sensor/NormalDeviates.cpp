#include "frame/sensor/NormalDeviates.h"

#include <cmath>
#include <numbers>

namespace kvx::frame {
namespace {

constexpr uint64_t kGoldenStep = 0x9E3779B97F4A7C15;

/** The output function of SplitMix64 (Steele, Lea and Flood, 2014). */
constexpr uint64_t Mixed(uint64_t bits) {
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EB;
    return bits ^ (bits >> 31);
}

}  // namespace

NormalDeviates::NormalDeviates(uint64_t seed, uint64_t row) : m_state(Mixed(Mixed(seed + kGoldenStep) + row)) {}

double NormalDeviates::NextUniform() {
    m_state += kGoldenStep;
    return static_cast<double>((Mixed(m_state) >> 11) + 1) * 0x1p-53;
}

double NormalDeviates::Next() {
    if (m_hasSecond) {
        m_hasSecond = false;
        return m_second;
    }
    const double radius = std::sqrt(-2 * std::log(NextUniform()));
    const double angle = 2 * std::numbers::pi * NextUniform();
    m_second = radius * std::sin(angle);
    m_hasSecond = true;
    return radius * std::cos(angle);
}

}  // namespace kvx::frame
