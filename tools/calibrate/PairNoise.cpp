#include "tools/calibrate/PairNoise.h"

#include <cmath>

namespace kvx::tool {
namespace {

constexpr int kBlockSide = 32;
constexpr double kEquallyExposed = 0.03;  // relative difference of the means
constexpr double kBright = 0.9;           // share of white beyond which clipping may cut the noise
constexpr double kEnoughSites = 16;

double SampleAt(const cv::Mat& samples, int row, int column) {
    return samples.depth() == CV_8U ? samples.at<uint8_t>(row, column) : samples.at<uint16_t>(row, column);
}

}  // namespace

void PairNoise::Add(const RawFrame& frame) {
    if (!m_last.empty()) {
        const double mean = cv::mean(frame.samples)[0], last = cv::mean(m_last)[0];
        if (std::abs(mean - last) <= kEquallyExposed * (mean + last) / 2) {
            for (int top = 0; top + kBlockSide <= m_last.rows; top += kBlockSide) {
                for (int left = 0; left + kBlockSide <= m_last.cols; left += kBlockSide) {
                    AddBlock(frame, {left, top, kBlockSide, kBlockSide});
                }
            }
        }
    }
    m_last = frame.samples.clone();
}

void PairNoise::AddBlock(const RawFrame& frame, const cv::Rect& block) {
    struct Sums {
        double count, samples, differences, squares;
    };
    std::array<Sums, 4> sums{};
    std::array<bool, 4> isClear{};
    for (int row = block.y; row < block.y + block.height; ++row) {
        for (int column = block.x; column < block.x + block.width; ++column) {
            const size_t filter = frame::FilterIndex(frame.format, row, column);
            const char letter = frame::FilterAt(frame.format, row, column);
            isClear[filter] = letter == 'W' || letter == 'Y';
            const double sample = SampleAt(frame.samples, row, column), last = SampleAt(m_last, row, column);
            Sums& sum = sums[filter];
            ++sum.count;
            sum.samples += (sample + last) / 2;
            sum.differences += sample - last;
            sum.squares += (sample - last) * (sample - last);
        }
    }
    const double white = frame::White(frame.format), unit = 4095 / white;
    for (size_t filter = 0; filter < sums.size(); ++filter) {
        const Sums& sum = sums[filter];
        const double mean = sum.samples / sum.count;
        if (sum.count < kEnoughSites || mean > kBright * white) continue;
        const double variance = (sum.squares - sum.differences * sum.differences / sum.count) / (sum.count - 1) / 2;
        m_blocks[isClear[filter]].push_back(
            {unit * (mean - m_black.ofFilters[filter]), unit * unit * variance, sum.count});
    }
}

std::optional<frame::NoiseLine> PairNoise::Line(bool isClear, std::optional<double> intercept) const {
    const std::vector<Block>& blocks = m_blocks[isClear];
    if (blocks.empty()) {
        return std::nullopt;
    }
    frame::NoiseLine line{1, intercept.value_or(0)};
    constexpr int kPasses = 4;  // the error of a variance grows with the variance: weights from the line before
    for (int pass = 0; pass < kPasses; ++pass) {
        double weights = 0, x = 0, y = 0, xx = 0, xy = 0;
        for (const Block& block : blocks) {
            const double expected = std::max(line.slope * block.signal + line.intercept, 1e-3);
            const double weight = block.count / (expected * expected);
            weights += weight;
            x += weight * block.signal;
            y += weight * block.variance;
            xx += weight * block.signal * block.signal;
            xy += weight * block.signal * block.variance;
        }
        if (intercept) {
            line.slope = std::max((xy - *intercept * x) / xx, 0.0);
        } else {
            const double spread = weights * xx - x * x;
            if (!(spread > 0)) {  // one brightness: no line
                return std::nullopt;
            }
            line.slope = std::max((weights * xy - x * y) / spread, 0.0);
            line.intercept = std::max((y - line.slope * x) / weights, 0.0);
            if (line.intercept == 0) line.slope = std::max(xy / xx, 0.0);
        }
    }
    return line;
}

}  // namespace kvx::tool
