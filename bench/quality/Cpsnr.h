/** The quality of a demosaicing algorithm on one picture. */
#pragma once

#include <opencv2/core.hpp>

namespace kvx::quality {

/** Peak signal-to-noise ratios in dB, peak 255. */
struct Cpsnr {
    double colour;  ///< from the mean square error of all three channels together
    double red, green, blue;
};

/**
 * Samples an 8-bit picture (channels blue, green, red) to an RGGB mosaic, and converts that.
 *
 * @param algorithm of KvxBayerAlgorithm
 * @throws std::runtime_error when the conversion is refused
 */
cv::Mat Restored(const cv::Mat& picture, int algorithm);

/**
 * Compares a picture with what is restored of it.
 *
 * @param border pixels at each side that do not count; the picture must be larger
 * @throws std::runtime_error when the conversion is refused
 */
Cpsnr Measure(const cv::Mat& picture, int algorithm, int border);

}  // namespace kvx::quality
