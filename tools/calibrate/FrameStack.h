#pragma once

#include <functional>
#include <opencv2/core.hpp>
#include <string>
#include <vector>

#include "KvxFrame/Finish.h"
#include "tools/frames/FrameReader.h"

namespace kvx::tool {

/** The mean of several frames of one scene, and the noise between them. */
struct FrameStack {
    frame::Format format;     ///< Layout::Plain
    int count = 0;            ///< frames
    cv::Mat mean;             ///< CV_32F: of each site, in samples
    cv::Mat variance;         ///< CV_32F: between the frames, in samples^2; empty for a single frame
    double clippedShare = 0;  ///< of all samples, at white or above
    double zeroShare = 0;     ///< of all samples, at 0
};

/**
 * Reads frames of the same format and size, one at a time, and calls `visit` for each. Throws as ReadFrame(), and
 * ExitCode::Frame for a frame that differs from the first one.
 *
 * @param white at which the sensor clips; a filter with a level of 0 clips at the format's white
 */
FrameStack StackFrames(const std::vector<std::string>& paths, const FrameRequest& request,
                       const frame::Levels& white = {}, const std::function<void(const RawFrame&)>& visit = {});

}  // namespace kvx::tool
