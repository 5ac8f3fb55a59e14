#include "tools/look/CompareSheet.h"

#include <fmt/format.h>

#include <opencv2/imgproc.hpp>

#include "tools/look/Sheet.h"

namespace kvx::tool {
namespace {

constexpr int kWidth = 480;
/** Differences, in levels of 255, that the map shows as its lightest colour. */
constexpr double kFullScale = 64;

using Row = std::vector<SheetCell>;

/** The whole picture with its crops marked. */
cv::Mat Overview(const cv::Mat& picture, const std::vector<cv::Rect>& crops) {
    cv::Mat overview = FittedToWidth(picture, kWidth);
    const double scale = static_cast<double>(overview.cols) / picture.cols;
    for (size_t index = 0; index < crops.size(); ++index) {
        const cv::Rect& crop = crops[index];
        const cv::Rect marked(cvRound(crop.x * scale), cvRound(crop.y * scale), cvRound(crop.width * scale),
                              cvRound(crop.height * scale));
        const cv::Scalar colour(0, 220, 255);
        cv::rectangle(overview, marked, cv::Scalar::all(0), 3);
        cv::rectangle(overview, marked, colour, 1);
        const cv::Point start = marked.tl() + cv::Point(4, 14);
        cv::putText(overview, std::to_string(index + 1), start, cv::FONT_HERSHEY_DUPLEX, 0.45, cv::Scalar::all(0), 3,
                    cv::LINE_AA);
        cv::putText(overview, std::to_string(index + 1), start, cv::FONT_HERSHEY_DUPLEX, 0.45, colour, 1, cv::LINE_AA);
    }
    return overview;
}

Row OverviewRow(const std::vector<AlgorithmResult>& results, const cv::Mat& reference,
                const std::vector<cv::Rect>& crops) {
    Row row;
    if (!reference.empty()) {
        row.push_back({Overview(reference, crops), "reference", ""});
    }
    for (const AlgorithmResult& result : results) {
        const std::string quality = result.psnr ? fmt::format(", {:.2f} dB", *result.psnr) : "";
        row.push_back(
            {Overview(result.picture, crops), result.name, fmt::format("{:.2f} ms{}", 1e3 * result.seconds, quality)});
    }
    return row;
}

Row CropRow(const std::vector<AlgorithmResult>& results, const cv::Mat& reference, const cv::Rect& crop,
            size_t number) {
    Row row;
    const auto add = [&](const cv::Mat& picture, const std::string& name) {
        row.push_back({FittedToWidth(picture(crop), kWidth), fmt::format("{}: {}", number, name),
                       fmt::format("{}x{} from column {}, row {}", crop.width, crop.height, crop.x, crop.y)});
    };
    if (!reference.empty()) {
        add(reference, "reference");
    }
    for (const AlgorithmResult& result : results) {
        add(result.picture, result.name);
    }
    return row;
}

/** The colours of the map from no difference to its full scale. */
cv::Mat Scale() {
    cv::Mat levels(24, 256, CV_8U);
    for (int level = 0; level < levels.cols; ++level) {
        levels.col(level).setTo(level);
    }
    cv::Mat scale;
    cv::applyColorMap(levels, scale, cv::COLORMAP_INFERNO);
    return scale;
}

Row DifferenceRow(const std::vector<AlgorithmResult>& results, const cv::Mat& reference) {
    Row row = {
        {Scale(), "difference from the reference", fmt::format("0 to {} of 255, the largest of R, G, B", kFullScale)}};
    for (const AlgorithmResult& result : results) {
        row.push_back({FittedToWidth(DifferenceMap(result.picture, reference, kFullScale), kWidth),
                       fmt::format("difference: {}", result.name), fmt::format("{:.2f} dB", *result.psnr)});
    }
    return row;
}

}  // namespace

cv::Mat DrawComparison(const std::string& title, const std::vector<AlgorithmResult>& results, const cv::Mat& reference,
                       const std::vector<cv::Rect>& crops) {
    std::vector<Row> rows = {OverviewRow(results, reference, crops)};
    for (size_t index = 0; index < crops.size(); ++index) {
        rows.push_back(CropRow(results, reference, crops[index], index + 1));
    }
    if (!reference.empty()) {
        rows.push_back(DifferenceRow(results, reference));
    }
    return DrawSheet(title, rows);
}

}  // namespace kvx::tool
