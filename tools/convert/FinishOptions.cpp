#include "tools/convert/FinishOptions.h"

#include <utility>

#include "tools/ToolError.h"
#include "tools/console/Arguments.h"
#include "tools/console/Console.h"
#include "tools/frames/FrameError.h"

namespace kvx::tool {
namespace {

using Source = WhiteBalanceRequest::Source;

WhiteBalanceRequest ParseWhiteBalance(const std::string& text) {
    if (text == "auto") {
        return {Source::Measured, frame::WhiteBalance::Auto, {}, {}, text};
    }
    if (text == "grey-world") {
        return {Source::Measured, frame::WhiteBalance::GreyWorld, {}, {}, text};
    }
    if (text == "white-patch") {
        return {Source::Measured, frame::WhiteBalance::WhitePatch, {}, {}, text};
    }
    if (text == "sidecar") {
        return {Source::Sidecar, {}, {}, {}, text};
    }
    if (text.find(',') == std::string::npos) {
        Fail(ExitCode::Usage,
             "--white-balance: '{}' is unknown: choose auto, grey-world, white-patch, sidecar, or gains such as "
             "1.9,1,1.4",
             text);
    }
    const std::array<double, 3> gains = ParseNumbers<3>("--white-balance", text);
    return {Source::Given, {}, {gains[0], gains[1], gains[2], gains[1]}, {}, text};
}

/** Two options give a white balance. */
void SetOnce(std::optional<WhiteBalanceRequest>& request, WhiteBalanceRequest given) {
    if (request) {
        Fail(ExitCode::Usage, "--white-balance and --white-balance-from: give one of them");
    }
    request = std::move(given);
}

}  // namespace

void AddCameraOption(CLI::App& command, std::shared_ptr<const frame::CameraProfile>& camera) {
    AddText(
        command, "--camera",
        [&camera](const std::string& path) {
            camera = std::make_shared<frame::CameraProfile>(
                WithExitCode(ExitCode::Input, "--camera", [&] { return frame::ReadCameraProfile(path); }));
            for (const std::string& warning : camera->warnings) {
                PrintMessage(warning);
            }
        },
        "PROFILE", "Correct the frame by what calibrate measured of the camera");
}

void AddFinishOptions(CLI::App& command, FinishRequest& request) {
    AddText(
        command, "--look",
        [&request](const std::string& text) {
            request.isNatural = ParseChoice<bool>("--look", text, {{"natural", true}});
        },
        "WORD", "natural: white balance, exposure and sRGB curve for display, unless other options say otherwise");
    AddText(
        command, "--white-balance",
        [&request](const std::string& text) { SetOnce(request.whiteBalance, ParseWhiteBalance(text)); }, "HOW|R,G,B",
        "auto, grey-world, white-patch, sidecar, or gains of red, green and blue");
    AddText(
        command, "--white-balance-from",
        [&request](const std::string& text) {
            SetOnce(request.whiteBalance, {Source::Place, {}, {}, ParseRegion("--white-balance-from", text), text});
        },
        "PLACE", "Gains that make this part of the frame grey: X,Y,W,H in pixels");
    AddText(
        command, "--exposure",
        [&request](const std::string& text) {
            request.exposure = text == "auto" ? ExposureRequest{true, 0}
                                              : ExposureRequest{false, ParseNumbers<1>("--exposure", text)[0]};
        },
        "EV|auto", "Brightening in EV (1 doubles the light), or measured in the frame");
    AddText(
        command, "--black-level",
        [&request](const std::string& text) { request.blackLevel = ParseLevels("--black-level", text); }, "N|N,N,N,N",
        "Sample value of black: a number, or one per filter");
    AddText(
        command, "--white-level",
        [&request](const std::string& text) { request.whiteLevel = ParseLevels("--white-level", text); }, "N|N,N,N,N",
        "Sample value at which the sensor clips, likewise");
    AddText(
        command, "--matrix",
        [&request](const std::string& text) { request.matrix = ParseNumbers<9>("--matrix", text); }, "RR,RG,...",
        "Colour matrix, row by row: nine numbers separated by commas");
    AddChoice<std::optional<frame::ToneCurve>, frame::ToneCurve>(
        command, "--tone", request.tone, {{"linear", frame::ToneCurve::Linear}, {"srgb", frame::ToneCurve::Srgb}},
        "Tone curve: linear or srgb");
    AddCameraOption(command, request.camera);
    AddChoice<frame::Defects, frame::Defects>(
        command, "--defects", request.defects, {{"listed", frame::Defects::Listed}, {"auto", frame::Defects::Auto}},
        "Replace defective pixels: those listed in the profile (the default), or auto: outliers, too");
    command.add_flag("--linear", request.isLinear, "Keep the values: nothing of the sidecar applies");
}

bool AsksForFinish(const FinishRequest& request) {
    return request.isNatural || request.whiteBalance || request.exposure || request.blackLevel || request.whiteLevel ||
           request.matrix || request.tone;
}

}  // namespace kvx::tool
