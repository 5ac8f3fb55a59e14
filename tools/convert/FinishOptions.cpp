#include "tools/convert/FinishOptions.h"

#include "tools/ToolError.h"
#include "tools/console/Arguments.h"

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

}  // namespace

void AddFinishOptions(CLI::App& command, FinishRequest& request) {
    CLI::Option* look = AddText(
        command, "--look",
        [&request](const std::string& text) {
            request.isNatural = ParseChoice<bool>("--look", text, {{"natural", true}});
        },
        "natural", "White balance, exposure and sRGB curve for display, unless other options say otherwise");
    CLI::Option* balance = AddText(
        command, "--white-balance",
        [&request](const std::string& text) { request.whiteBalance = ParseWhiteBalance(text); }, "HOW|R,G,B",
        "auto, grey-world, white-patch, sidecar, or gains of red, green and blue");
    CLI::Option* place = AddText(
        command, "--white-balance-from",
        [&request](const std::string& text) {
            request.whiteBalance = {Source::Place, {}, {}, ParseRegion("--white-balance-from", text), text};
        },
        "X,Y,W,H", "Gains that make this part of the frame grey");
    place->excludes(balance);
    CLI::Option* exposure = AddText(
        command, "--exposure",
        [&request](const std::string& text) {
            request.exposure = text == "auto" ? ExposureRequest{true, 0}
                                              : ExposureRequest{false, ParseNumbers<1>("--exposure", text)[0]};
        },
        "EV|auto", "Brightening in EV (1 doubles the light), or measured in the frame");
    CLI::Option* black = AddText(
        command, "--black-level",
        [&request](const std::string& text) { request.blackLevel = ParseLevels("--black-level", text); }, "N|N,N,N,N",
        "Sample value of black: a number, or one per filter");
    CLI::Option* white = AddText(
        command, "--white-level",
        [&request](const std::string& text) { request.whiteLevel = ParseLevels("--white-level", text); }, "N|N,N,N,N",
        "Sample value at which the sensor clips, likewise");
    CLI::Option* matrix = AddText(
        command, "--matrix",
        [&request](const std::string& text) { request.matrix = ParseNumbers<9>("--matrix", text); }, "RR,RG,...",
        "Colour matrix, row by row: nine numbers separated by commas");
    CLI::Option* tone = AddChoice<std::optional<frame::ToneCurve>, frame::ToneCurve>(
        command, "--tone", request.tone, {{"linear", frame::ToneCurve::Linear}, {"srgb", frame::ToneCurve::Srgb}},
        "Tone curve: linear or srgb");
    CLI::Option* linear =
        command.add_flag("--linear", request.isLinear, "Keep the values: nothing of the sidecar or above applies");
    for (CLI::Option* option : {look, balance, place, exposure, black, white, matrix, tone}) {
        linear->excludes(option);
    }
}

}  // namespace kvx::tool
