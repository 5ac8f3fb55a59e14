#include "frame/finish/WhiteBalanceEstimator.h"

#include <algorithm>
#include <cmath>

namespace kvx::frame {
namespace {

using Colour = std::array<double, 3>;

constexpr double kLargestGain = 16;
constexpr double kBrightShare = 0.01, kBrightestShare = 0.005;

// Gains of red and blue, relative to green, with which daylight and lamps become grey on sensors and in developed
// pictures, with some room; and their product, which is high for a green and low for a magenta light.
constexpr double kLeastGain = 0.7, kMostRed = 4, kMostBlue = 5, kLeastProduct = 0.8, kMostProduct = 9;
constexpr float kNearBlack = 1.0F / 64;
constexpr double kEnoughPlausible = 0.02;  // share of the blocks

bool IsUnclipped(const Block& block) {
    return !block.isClipped;
}

bool IsUsable(const Block& block) {
    const auto [least, most] = std::minmax_element(block.light.begin(), block.light.end());
    return !block.isClipped && *most >= kNearBlack && *least > 0;
}

/** Whether the block may be a grey surface: its colour is that of a plausible light. */
bool IsPlausible(const Block& block) {
    const double red = block.light[1] / block.light[0], blue = block.light[1] / block.light[2];
    return red >= kLeastGain && red <= kMostRed && blue >= kLeastGain && blue <= kMostBlue &&
           red * blue >= kLeastProduct && red * blue <= kMostProduct;
}

template <class Condition>
Colour MeanOf(const std::vector<Block>& blocks, const Condition& counts) {
    Colour sums{};
    for (const Block& block : blocks)
        if (counts(block))
            for (size_t i = 0; i < 3; ++i) sums[i] += block.light[i];
    return sums;
}

double Sixth(double value) {
    const double square = value * value;
    return square * square * square;
}

/** Shades of grey: the Minkowski mean with p = 6. */
Colour MinkowskiMean(const std::vector<Block>& blocks) {
    Colour sums{};
    for (const Block& block : blocks)
        for (size_t i = 0; i < 3; ++i) sums[i] += Sixth(block.light[i]);
    for (double& sum : sums) sum = std::pow(sum, 1.0 / 6);
    return sums;
}

double Limited(double gain) {
    return std::clamp(gain, 1 / kLargestGain, kLargestGain);
}

/** Gains that make the levels equal to green's; none is below 1, so that clipped samples stay white. */
Gains GainsFor(const Colour& levels) {
    if (!(levels[1] > 0)) return {};
    const double red = levels[0] > 0 ? Limited(levels[1] / levels[0]) : kLargestGain;
    const double blue = levels[2] > 0 ? Limited(levels[1] / levels[2]) : kLargestGain;
    const double smallest = std::min({red, 1.0, blue});
    return {Limited(red / smallest), 1 / smallest, Limited(blue / smallest), 1 / smallest};
}

/** The gains for `levels`, limited to those that a plausible light needs. */
GainEstimate PlausibleGains(const Colour& levels) {
    if (!(levels[1] > 0)) return {};
    const Gains wanted = GainsFor(levels);
    const double wantedRed = wanted.red / wanted.green, wantedBlue = wanted.blue / wanted.green;
    double red = std::clamp(wantedRed, kLeastGain, kMostRed), blue = std::clamp(wantedBlue, kLeastGain, kMostBlue);
    const double product = red * blue;
    const double scale = std::sqrt(std::clamp(product, kLeastProduct, kMostProduct) / product);
    red *= scale;
    blue *= scale;
    const bool isLimited = std::abs(red - wantedRed) + std::abs(blue - wantedBlue) > 1e-6;
    return {GainsFor({1 / red, 1, 1 / blue}), isLimited};
}

double Median(double a, double b, double c) {
    return std::max(std::min(a, b), std::min(std::max(a, b), c));
}

}  // namespace

/** The mean of the brightest of these blocks, at least this share. */
template <class Condition>
Colour WhiteBalanceEstimator::BrightestMean(const std::vector<Block>& blocks, double share, const Condition& counts) {
    const auto brightness = [](const Block& block) { return block.light[0] + block.light[1] + block.light[2]; };
    m_brightness.clear();
    m_brightness.reserve(blocks.size());
    for (const Block& block : blocks)
        if (counts(block)) m_brightness.push_back(brightness(block));
    if (m_brightness.empty()) return {};
    const auto count = static_cast<ptrdiff_t>(std::ceil(share * static_cast<double>(m_brightness.size())));
    const auto least = m_brightness.end() - count;
    std::nth_element(m_brightness.begin(), least, m_brightness.end());
    return MeanOf(blocks, [&](const Block& block) { return counts(block) && brightness(block) >= *least; });
}

/**
 * The median of three estimates, so that none can mislead it alone: a coloured scene the mean, a coloured highlight the
 * shades of grey and the brightest blocks. The latter two are of plausible blocks: strong colours have no say. If the
 * frame shows hardly anything else, all blocks count, and the gains are limited.
 */
GainEstimate WhiteBalanceEstimator::AutomaticGains(const std::vector<Block>& blocks) {
    m_usable.clear();
    m_plausible.clear();
    for (const Block& block : blocks)
        if (IsUsable(block)) {
            m_usable.push_back(block);
            if (IsPlausible(block)) m_plausible.push_back(block);
        }
    const bool isEnough =
        static_cast<double>(m_plausible.size()) > kEnoughPlausible * static_cast<double>(m_usable.size());
    const std::vector<Block>& counting = isEnough ? m_plausible : m_usable;
    const Colour mean = MeanOf(blocks, IsUnclipped), shades = MinkowskiMean(counting);
    const Colour brightest = BrightestMean(counting, kBrightestShare, IsUnclipped);
    Colour median{};
    for (size_t i = 0; i < 3; ++i)
        median[i] = Median(mean[i] / mean[1], shades[i] / shades[1], brightest[i] / brightest[1]);
    return !m_usable.empty() ? PlausibleGains(median) : GainEstimate();
}

GainEstimate WhiteBalanceEstimator::Estimate(const std::vector<Block>& blocks, WhiteBalance method) {
    switch (method) {
        case WhiteBalance::GreyWorld:
            return {GainsFor(MeanOf(blocks, IsUnclipped))};
        case WhiteBalance::WhitePatch:
            return {GainsFor(BrightestMean(blocks, kBrightShare, IsUnclipped))};
        default:
            return AutomaticGains(blocks);
    }
}

}  // namespace kvx::frame
