/** The distance of a restored image from the original. */
#pragma once

#include <opencv2/core.hpp>

namespace kvx::quality {

/** Peak signal-to-noise ratios in dB, peak 255, and structural similarity. */
struct Cpsnr {
    double colour;  ///< from the mean square error of all three channels together
    double red, green, blue;
    double luma;    ///< of Y (ITU-R BT.601)
    double chroma;  ///< mean of Cb and Cr
    double ssim;    ///< of luma, up to 1
};

/**
 * Compares two 8-bit images of the same size (channels blue, green, red).
 *
 * @param border excluded pixels at each side; the images must be larger
 */
Cpsnr Compare(const cv::Mat& original, const cv::Mat& restored, int border);

}  // namespace kvx::quality
