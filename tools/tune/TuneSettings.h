#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

#include "tools/convert/FrameJob.h"

namespace kvx::tool {

/**
 * Settings travel as a JSON object whose keys are options of `convert` without their dashes, and whose values are
 * texts: {"algorithm": "ipp", "exposure": "0.5", "set": {"panSigma0": "2"}}. "camera": "off" leaves out the profile.
 */
struct TuneSettings {
    ConvertSettings convert;
    std::vector<std::string> arguments;  ///< the same on the command line of `convert`, without the camera
};

/** Reads settings. Throws ExitCode::Usage for unknown keys, and what the options themselves throw. */
TuneSettings ReadSettings(const std::string& json, const FrameRequest& request,
                          const std::shared_ptr<const frame::CameraProfile>& camera);

/**
 * What a page needs to show a control for each option: option, label, group, kind, words, range and help; the help is
 * that of `convert`.
 */
nlohmann::ordered_json ControlsJson(const frame::Format& format, bool hasCamera);

}  // namespace kvx::tool
