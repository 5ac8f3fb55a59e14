#include "tools/look/Comparison.h"

#include <cmath>
#include <limits>
#include <opencv2/imgproc.hpp>

#include "tools/look/PictureView.h"
#include "tools/look/Stopwatch.h"

namespace kvx::tool {
double PeakSignalToNoise(double squares, double samples) {
    return squares > 0 ? 10 * std::log10(255.0 * 255.0 * samples / squares) : std::numeric_limits<double>::infinity();
}

std::vector<AlgorithmResult> CompareAlgorithms(const frame::SourceView& source,
                                               const std::optional<frame::Finish>& finish,
                                               const std::shared_ptr<const frame::CameraProfile>& camera,
                                               frame::Defects defects, const cv::Mat& reference) {
    constexpr double kBudget = 0.1;
    std::vector<std::string> names;
    for (const frame::Algorithm& algorithm : frame::AlgorithmsOf(source.format.family)) {
        names.emplace_back(algorithm.name);
    }
    if (names.empty()) {
        names.emplace_back();
    }
    std::vector<AlgorithmResult> results;
    for (const std::string& name : names) {
        frame::Converter converter(source.format.family);
        if (!name.empty()) {
            converter.SetAlgorithm(name);
        }
        converter.SetFinish(finish, frame::kAllGiven);
        converter.SetCamera(camera);
        converter.SetDefects(defects);
        cv::Mat picture(static_cast<int>(source.height), static_cast<int>(source.width), CV_8UC3);
        const double seconds = MedianSeconds(kBudget, [&] { converter.Convert(source, PictureView(picture)); });
        results.push_back({name.empty() ? "mono" : name, picture, seconds, {}});
        if (!reference.empty()) {
            results.back().psnr = PeakSignalToNoise(cv::norm(picture, reference, cv::NORM_L2SQR),
                                                    static_cast<double>(picture.total()) * picture.channels());
        }
    }
    return results;
}

cv::Mat DifferenceMap(const cv::Mat& picture, const cv::Mat& reference, double fullScale) {
    cv::Mat difference;
    cv::absdiff(picture, reference, difference);
    std::vector<cv::Mat> channels;
    cv::split(difference, channels);
    cv::Mat largest;
    cv::max(channels[0], channels[1], largest);
    cv::max(largest, channels[2], largest);
    largest.convertTo(largest, CV_8U, 255 / fullScale);
    cv::Mat map;
    cv::applyColorMap(largest, map, cv::COLORMAP_INFERNO);
    return map;
}

}  // namespace kvx::tool
