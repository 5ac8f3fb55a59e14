#pragma once

#include <opencv2/core.hpp>

#include "KvxFrame/CameraProfile.h"

namespace kvx::tool {

/**
 * The gains that make a frame of an even light even: a smooth surface for each filter colour, fitted by local quadratic
 * regression to means of blocks. Throws ExitCode::Frame for a frame in which a corner has too little light.
 *
 * @param signal CV_32F: samples without the black level
 * @param good   CV_8U: 0 at sites that do not count
 */
frame::Shading FitShading(const cv::Mat& signal, const cv::Mat& good, const frame::Format& format);

}  // namespace kvx::tool
