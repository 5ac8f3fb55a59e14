#pragma once

#include <opencv2/core.hpp>
#include <string>
#include <vector>

namespace kvx::tool {

/** A picture (CV_8UC3; may be empty) with a heading and a smaller line below it. */
struct SheetCell {
    cv::Mat picture;
    std::string heading;
    std::string detail;
};

/** A contact sheet: rows of labelled pictures under a title, columns aligned. */
cv::Mat DrawSheet(const std::string& title, const std::vector<std::vector<SheetCell>>& rows);

/** The picture at about this width: reduced by averaging, or enlarged with visible pixels. */
cv::Mat FittedToWidth(const cv::Mat& picture, int width);

}  // namespace kvx::tool
