#include "tools/calibrate/ShadingFit.h"

#include <algorithm>
#include <cmath>

#include "tools/ToolError.h"
#include "tools/calibrate/SiteStatistics.h"

namespace kvx::tool {
namespace {

constexpr int kNodeDistance = 24;  // pixels, at least
constexpr int kMostCells = 32;     // in a row
constexpr double kReach = 2.5;     // cells around a node that count
constexpr double kLargestGain = 7.99;

/** The mean of a block of sites at its centre, in cells. */
struct Block {
    double x, y, mean, count;
};

std::vector<Block> BlocksOf(const cv::Mat& signal, const cv::Mat& sites, const cv::Size& cells) {
    std::vector<Block> blocks;
    const cv::Size count(2 * cells.width, 2 * cells.height);
    const auto edge = [](int index, int parts, int size) { return index * size / parts; };
    const double cellWidth = (signal.cols - 1.0) / cells.width, cellHeight = (signal.rows - 1.0) / cells.height;
    for (int row = 0; row < count.height; ++row) {
        for (int column = 0; column < count.width; ++column) {
            const cv::Rect area(
                cv::Point(edge(column, count.width, signal.cols), edge(row, count.height, signal.rows)),
                cv::Point(edge(column + 1, count.width, signal.cols), edge(row + 1, count.height, signal.rows)));
            const int sitesInside = cv::countNonZero(sites(area));
            if (sitesInside > 0) {
                blocks.push_back({(area.x + (area.width - 1) / 2.0) / cellWidth,
                                  (area.y + (area.height - 1) / 2.0) / cellHeight,
                                  cv::mean(signal(area), sites(area))[0], static_cast<double>(sitesInside)});
            }
        }
    }
    return blocks;
}

/** The value at a node of the quadratic surface through the blocks around it. */
double ValueAt(int column, int row, const std::vector<Block>& blocks) {
    cv::Mat left, right;
    for (const Block& block : blocks) {
        const double x = block.x - column, y = block.y - row;
        if (std::max(std::abs(x), std::abs(y)) > kReach) continue;
        const double weight = std::sqrt(block.count * std::exp(-(x * x + y * y) / 2));
        left.push_back(cv::Mat(cv::Matx<double, 1, 6>(1, x, y, x * x, x * y, y * y) * weight));
        right.push_back(block.mean * weight);
    }
    cv::Mat solution;
    cv::solve(left, right, solution, cv::DECOMP_SVD);
    return solution.at<double>(0);
}

}  // namespace

frame::Shading FitShading(const cv::Mat& signal, const cv::Mat& good, const frame::Format& format) {
    const auto cellsOf = [](int pixels) { return std::clamp(pixels / kNodeDistance, 1, kMostCells); };
    const int columns = cellsOf(signal.cols);
    const cv::Size cells(columns, std::min(cellsOf(signal.rows), std::max(1, columns * signal.rows / signal.cols)));
    frame::Shading shading{static_cast<uint32_t>(cells.width + 1), static_cast<uint32_t>(cells.height + 1), {}};
    for (size_t filter = format.family == frame::Family::Mono ? 3 : 0; filter < 4; ++filter) {
        const std::vector<Block> blocks = BlocksOf(signal, SitesOfFilter(format, signal.size(), filter) & good, cells);
        std::vector<double> values;
        for (int row = 0; row <= cells.height; ++row) {
            for (int column = 0; column <= cells.width; ++column) {
                values.push_back(ValueAt(column, row, blocks));
            }
        }
        const auto [lowest, peak] = std::minmax_element(values.begin(), values.end());
        if (!(*lowest > 0 && *peak / *lowest <= kLargestGain)) {
            Fail(ExitCode::Frame,
                 "some of the frame has less than an eighth of the light: take frames of an even light");
        }
        for (const double value : values) {
            shading.gains[filter].push_back(static_cast<float>(std::round(*peak / value * 1e4) / 1e4));
        }
    }
    return shading;
}

}  // namespace kvx::tool
