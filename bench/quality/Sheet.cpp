#include "quality/Sheet.h"

#include <algorithm>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <stdexcept>

namespace kvx::quality {

cv::Mat SheetOf(const std::vector<std::vector<cv::Mat>>& rows, int enlargement) {
    constexpr int kGap = 6;
    const cv::Size size = rows.front().front().size() * enlargement;
    size_t columns = 0;
    for (const auto& row : rows) columns = std::max(columns, row.size());
    const auto extent = [](size_t count, int length) { return static_cast<int>(count) * (length + kGap) - kGap; };
    cv::Mat sheet(extent(rows.size(), size.height), extent(columns, size.width), CV_8UC3, cv::Scalar::all(255));
    for (size_t row = 0; row < rows.size(); ++row)
        for (size_t column = 0; column < rows[row].size(); ++column) {
            const cv::Point corner(static_cast<int>(column) * (size.width + kGap),
                                   static_cast<int>(row) * (size.height + kGap));
            cv::Mat area = sheet(cv::Rect(corner, size));
            cv::resize(rows[row][column], area, size, 0, 0, cv::INTER_NEAREST);
        }
    return sheet;
}

void WritePng(const std::string& path, const cv::Mat& picture) {
    if (!cv::imwrite(path, picture, {cv::IMWRITE_PNG_COMPRESSION, 9}))
        throw std::runtime_error(path + ": cannot be written");
}

}  // namespace kvx::quality
