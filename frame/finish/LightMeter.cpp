#include "frame/finish/LightMeter.h"

#include <algorithm>
#include <cmath>

#include "KvxFrame/Geometry.h"
#include "frame/base/Fail.h"
#include "frame/finish/Balance.h"

namespace kvx::frame {
namespace {

constexpr std::array kLuminance = {0.2126, 0.7152, 0.0722};  // of linear sRGB, IEC 61966-2-1
constexpr double kHighlightShare = 0.01, kHighlight = 0.9;
constexpr double kMostBrightening = 6;

Gains Product(const Gains& a, const Gains& b) {
    return {a.red * b.red, a.green * b.green, a.blue * b.blue, a.pan * b.pan};
}

void CheckMeasurable(const SourceView& source, const Finish& finish) {
    Validate(source);
    CheckLevels(source, finish);
}

}  // namespace

/** The exposure that makes the brightest of the blocks that are not clipped almost white. */
double LightMeter::BestExposure(const std::vector<Block>& blocks, Family family, const Finish& finish,
                                const Gains& gains) {
    std::array<double, 3> weights{};
    const bool isMono = family == Family::Mono;
    const double factors[] = {isMono ? gains.pan : gains.red, isMono ? gains.pan : gains.green,
                              isMono ? gains.pan : gains.blue};
    for (size_t column = 0; column < 3; ++column)
        for (size_t row = 0; row < 3; ++row)
            weights[column] += kLuminance[row] * finish.matrix[3 * row + column] * factors[column];
    m_luminance.clear();
    m_luminance.reserve(blocks.size());
    for (const Block& block : blocks)
        if (!block.isClipped)
            m_luminance.push_back(static_cast<float>(weights[0] * block.light[0] + weights[1] * block.light[1] +
                                                     weights[2] * block.light[2]));
    if (m_luminance.empty()) return 0;
    const auto place = static_cast<ptrdiff_t>((1 - kHighlightShare) * static_cast<double>(m_luminance.size() - 1));
    std::nth_element(m_luminance.begin(), m_luminance.begin() + place, m_luminance.end());
    const double highlight = m_luminance[static_cast<size_t>(place)];
    return highlight > 0 ? std::clamp(std::log2(kHighlight / highlight), 0.0, kMostBrightening) : 0;
}

Reading LightMeter::Measure(const SourceView& source, const Finish& finish) {
    Reading reading{{finish.gains, false}, finish.exposure};
    const bool isBalanced = finish.whiteBalance != WhiteBalance::Given && source.format.family != Family::Mono;
    if (!isBalanced && !finish.autoExposure) return reading;
    const std::vector<Block>& blocks = m_survey.Measure(source, finish);
    if (isBalanced) {
        reading.balance = m_whiteBalance.Estimate(blocks, finish.whiteBalance);
        reading.balance.gains = Product(reading.balance.gains, finish.gains);
    }
    if (finish.autoExposure)
        reading.exposure += BestExposure(blocks, source.format.family, finish, reading.balance.gains);
    return reading;
}

Gains MeasureGains(const SourceView& source, const Finish& finish) {
    CheckMeasurable(source, finish);
    if (finish.whiteBalance == WhiteBalance::Given)
        Fail(KvxResult_InvalidArgument, "nothing to measure: choose auto, grey world or white patch");
    Finish levels = finish;
    levels.gains = {};
    levels.autoExposure = false;
    return LightMeter().Measure(source, levels).balance.gains;
}

Gains MeasureGainsOfGrey(const SourceView& source, const _KvxRect& place, const Finish& finish) {
    CheckMeasurable(source, finish);
    const SourceView grey = Crop(source, place);
    BlockSurvey survey;
    const std::vector<Block>& blocks = survey.Measure(grey, finish);
    const bool isLight = std::any_of(blocks.begin(), blocks.end(), [](const Block& block) {
        return !block.isClipped && *std::min_element(block.light.begin(), block.light.end()) > 0;
    });
    if (!isLight)
        Fail(KvxResult_InvalidArgument,
             "the place {} x {} at ({}, {}) gives no gains: choose a grey place of at least {} pixels, neither clipped "
             "nor black",
             place.width, place.height, place.x, place.y, TileSide(source.format));
    Finish mean = finish;
    mean.whiteBalance = WhiteBalance::GreyWorld;
    return MeasureGains(grey, mean);
}

double MeasureExposure(const SourceView& source, const Finish& finish) {
    CheckMeasurable(source, finish);
    Finish measured = finish;
    measured.autoExposure = true;
    measured.exposure = 0;
    return LightMeter().Measure(source, measured).exposure;
}

bool LooksLinear(const SourceView& source, const Finish& finish) {
    constexpr double kDark = 0.1, kRatherDark = 0.3, kCast = 1.7;
    CheckMeasurable(source, finish);
    BlockSurvey survey;
    const std::vector<Block>& blocks = survey.Measure(source, finish);
    if (blocks.empty()) return false;
    std::vector<float> brightness;
    brightness.reserve(blocks.size());
    for (const Block& block : blocks) brightness.push_back((block.light[0] + block.light[1] + block.light[2]) / 3);
    const auto middle = brightness.begin() + static_cast<ptrdiff_t>(brightness.size() / 2);
    std::nth_element(brightness.begin(), middle, brightness.end());
    const Gains gains = WhiteBalanceEstimator().Estimate(blocks, WhiteBalance::Auto).gains;
    const double cast = gains.red * gains.blue / (gains.green * gains.green);
    return *middle < kDark || (*middle < kRatherDark && cast > kCast);
}

}  // namespace kvx::frame
