#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

#include "tools/tune/TunedConversion.h"

namespace kvx::tool {

/** The sidecar of a conversion: format and size, levels, gains and matrix, measured ones as numbers. */
Sidecar SidecarOf(const TunedConversion& conversion);

/** The camera's profile with the levels, gains and matrix of a conversion, which is for all frames of this camera. */
frame::CameraProfile ProfileOf(const TunedConversion& conversion);

/** The settings for other front ends. Empty where a front end cannot read the file. */
struct Exports {
    std::string commandLine;  ///< of `convert`
    std::string python;
    std::string gstreamer;  ///< a line of gst-launch-1.0
};

/** @param cameraPath of the profile, if the conversion has one */
Exports ExportsOf(const TunedConversion& conversion, const std::string& cameraPath);

}  // namespace kvx::tool
