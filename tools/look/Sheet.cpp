#include "tools/look/Sheet.h"

#include <algorithm>
#include <opencv2/imgproc.hpp>

namespace kvx::tool {
namespace {

constexpr int kGap = 16;
const cv::Scalar kBackground(34, 31, 30);

struct Lettering {
    int font;
    double scale;
    cv::Scalar colour;
    int height;  ///< of a line, descenders and a little room included

    int WidthOf(const std::string& text) const {
        return cv::getTextSize(text, font, scale, 1, nullptr).width;
    }
    /** Letters stand on a line a fifth above the bottom of theirs. */
    void Write(cv::Mat& sheet, const std::string& text, cv::Point corner) const {
        cv::putText(sheet, text, corner + cv::Point(0, height - height / 4), font, scale, colour, 1, cv::LINE_AA);
    }
};
const Lettering kTitle{cv::FONT_HERSHEY_DUPLEX, 0.8, cv::Scalar::all(245), 34};
const Lettering kHeading{cv::FONT_HERSHEY_DUPLEX, 0.55, cv::Scalar::all(235), 24};
const Lettering kDetail{cv::FONT_HERSHEY_SIMPLEX, 0.45, cv::Scalar(190, 200, 205), 20};

/** Sizes of the grid: what is in a row or column takes as much as its largest cell. */
struct Grid {
    std::vector<int> columnWidths;
    std::vector<int> rowHeights;

    explicit Grid(const std::vector<std::vector<SheetCell>>& rows) {
        for (const auto& row : rows) {
            int height = 0;
            columnWidths.resize(std::max(columnWidths.size(), row.size()));
            for (size_t column = 0; column < row.size(); ++column) {
                const SheetCell& cell = row[column];
                const int width =
                    std::max({cell.picture.cols, kHeading.WidthOf(cell.heading), kDetail.WidthOf(cell.detail)});
                columnWidths[column] = std::max(columnWidths[column], width);
                height = std::max(height, cell.picture.rows);
            }
            rowHeights.push_back(height + kHeading.height + kDetail.height);
        }
    }
    static int Total(const std::vector<int>& sizes) {
        int total = kGap;
        for (const int size : sizes) {
            total += size + kGap;
        }
        return total;
    }
};

void DrawCell(cv::Mat& sheet, const SheetCell& cell, cv::Point corner) {
    kHeading.Write(sheet, cell.heading, corner);
    kDetail.Write(sheet, cell.detail, corner + cv::Point(0, kHeading.height));
    if (!cell.picture.empty()) {
        const cv::Point start = corner + cv::Point(0, kHeading.height + kDetail.height);
        cell.picture.copyTo(sheet(cv::Rect(start, cell.picture.size())));
    }
}

}  // namespace

cv::Mat DrawSheet(const std::string& title, const std::vector<std::vector<SheetCell>>& rows) {
    const Grid grid(rows);
    const int width = std::max(Grid::Total(grid.columnWidths), kTitle.WidthOf(title) + 2 * kGap);
    cv::Mat sheet(Grid::Total(grid.rowHeights) + kTitle.height + kGap / 2, width, CV_8UC3, kBackground);
    kTitle.Write(sheet, title, {kGap, kGap / 2});
    cv::Point corner(kGap, kTitle.height + kGap);
    for (size_t row = 0; row < rows.size(); ++row) {
        corner.x = kGap;
        for (size_t column = 0; column < rows[row].size(); ++column) {
            DrawCell(sheet, rows[row][column], corner);
            corner.x += grid.columnWidths[column] + kGap;
        }
        corner.y += grid.rowHeights[row] + kGap;
    }
    return sheet;
}

cv::Mat FittedToWidth(const cv::Mat& picture, int width) {
    cv::Mat fitted;
    if (picture.cols > width) {
        const int height = std::max(1, static_cast<int>(static_cast<int64_t>(picture.rows) * width / picture.cols));
        cv::resize(picture, fitted, cv::Size(width, height), 0, 0, cv::INTER_AREA);
    } else {
        const int factor = width / picture.cols;
        cv::resize(picture, fitted, picture.size() * factor, 0, 0, cv::INTER_NEAREST);
    }
    return fitted;
}

}  // namespace kvx::tool
