#pragma once

#include <opencv2/core.hpp>
#include <string>

#include "KvxFrame/CameraProfile.h"
#include "tools/files/RawFrame.h"

namespace kvx::tool {

/**
 * The light of a frame: the same mosaic with the most bits that its family has, from 0 for black to the format's white,
 * not balanced. The profile corrects fixed pattern, shading and defective pixels; levels of 0 are the profile's. Throws
 * ExitCode::Usage for levels that do not fit.
 */
RawFrame LightOf(const RawFrame& frame, const frame::CameraProfile& profile, const frame::Finish& levels,
                 const std::string& name);

/** The light as a picture, red first, from 0 for black to 1 for white. */
cv::Mat_<cv::Vec3f> LinearPicture(const RawFrame& light, const std::string& name);

}  // namespace kvx::tool
