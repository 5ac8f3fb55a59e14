#include "demosaicers/frame/FixedMatrix.h"

#include <algorithm>
#include <cmath>

namespace kvx {
namespace {

/** |sum(coarse x v)| stays below 2^31 - 2^16 for |v| up to 2^15, with coarse parts rounded up by as much as 1/2. */
constexpr double kLargestCoarseSum = 65530;
constexpr double kLargestCoarse = 32766;

bool Fits(const ColourMatrix& matrix, double scale) {
    for (int output = 0; output < kChannels; ++output) {
        double sum = 0;
        for (int input = 0; input < kChannels; ++input) {
            const double magnitude = std::abs(matrix[output * kChannels + input]) * scale;
            if (!(magnitude <= kLargestCoarse)) return false;  // nor is what is not a number
            sum += magnitude;
        }
        if (sum > kLargestCoarseSum) return false;
    }
    return true;
}

}  // namespace

FixedMatrix FixedMatrixOf(const ColourMatrix& matrix) {
    constexpr int most = 14, least = 12;  // bits; with 12, one value in a thousand is doubtful
    FixedMatrix fixed{};
    for (int bits = most; bits >= least && !fixed.isUsable; --bits) {
        fixed.fractionBits = bits;
        fixed.isUsable = Fits(matrix, std::ldexp(1, bits));
    }
    if (!fixed.isUsable) return fixed;
    for (int i = 0; i < kChannels * kChannels; ++i) {
        const auto entry = static_cast<int32_t>(std::lround(std::ldexp(matrix[i], fixed.fractionBits + 15)));
        const int32_t coarse = (entry + (1 << 14)) >> 15;
        fixed.rows[i / kChannels].coarse[i % kChannels] = static_cast<int16_t>(coarse);
        fixed.rows[i / kChannels].fine[i % kChannels] = static_cast<int16_t>(entry - coarse * (1 << 15));
    }
    return fixed;
}

}  // namespace kvx
