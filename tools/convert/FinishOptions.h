#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <optional>
#include <string>

#include "KvxDemosaicing/KvxImage.h"
#include "KvxFrame/CameraProfile.h"
#include "KvxFrame/Finish.h"

namespace kvx::tool {

/** White balance as the user asks for it. */
struct WhiteBalanceRequest {
    enum class Source { Measured, Sidecar, Given, Place };
    Source source = Source::Measured;
    frame::WhiteBalance method = frame::WhiteBalance::Auto;  ///< of a measured one
    frame::Gains gains;                                      ///< of a given one
    _KvxRect place{};                                        ///< a grey one, in the frame
    std::string text;                                        ///< as the user wrote it
};

/** Exposure as the user asks for it. */
struct ExposureRequest {
    bool isAuto = false;
    double value = 0;  ///< in EV
};

/** The finish as the user asks for it. */
struct FinishRequest {
    bool isNatural = false;  ///< --look natural
    std::shared_ptr<const frame::CameraProfile> camera;
    frame::Defects defects = frame::Defects::Listed;
    bool isLinear = false;  ///< --linear: nothing applies, the sidecar neither
    std::optional<WhiteBalanceRequest> whiteBalance;
    std::optional<ExposureRequest> exposure;
    std::optional<frame::Levels> blackLevel;
    std::optional<frame::Levels> whiteLevel;
    std::optional<std::array<double, 9>> matrix;
    std::optional<frame::ToneCurve> tone;
};

/** Adds --camera. */
void AddCameraOption(CLI::App& command, std::shared_ptr<const frame::CameraProfile>& camera);

/** Adds --camera, --defects, --look, --linear, --white-balance, --exposure, --black-level, --white-level, --matrix and
 * --tone. */
void AddFinishOptions(CLI::App& command, FinishRequest& request);

/** Whether any of these options but --linear was given. */
bool AsksForFinish(const FinishRequest& request);

}  // namespace kvx::tool
