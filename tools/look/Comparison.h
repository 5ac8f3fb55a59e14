#pragma once

#include <memory>
#include <opencv2/core.hpp>
#include <optional>
#include <string>
#include <vector>

#include "KvxFrame/Converter.h"

namespace kvx::tool {

/** What one algorithm makes of a frame. */
struct AlgorithmResult {
    std::string name;
    cv::Mat picture;             ///< CV_8UC3: blue, green, red
    double seconds;              ///< of a conversion, the median
    std::optional<double> psnr;  ///< in dB, peak 255, all samples of the picture; infinite when equal to the reference
};

/** In dB, peak 255, of so many samples with this sum of squared differences; infinite when equal. */
double PeakSignalToNoise(double squares, double samples);

/**
 * Converts a frame to 8 bits by every algorithm of its family; a mono frame in its one way.
 *
 * @param finish complete: the camera's colours are part of it
 * @param reference CV_8UC3 of the same size, or empty
 */
std::vector<AlgorithmResult> CompareAlgorithms(const frame::SourceView& source,
                                               const std::optional<frame::Finish>& finish,
                                               const std::shared_ptr<const frame::CameraProfile>& camera,
                                               frame::Defects defects, const cv::Mat& reference);

/** How a picture differs from the reference: CV_8UC3, black where equal, towards white from `fullScale` levels on. */
cv::Mat DifferenceMap(const cv::Mat& picture, const cv::Mat& reference, double fullScale);

}  // namespace kvx::tool
