#include "tools/convert/FinishOptions.h"

#include "tools/ToolError.h"
#include "tools/console/Arguments.h"

namespace kvx::tool {
namespace {

using Source = WhiteBalanceRequest::Source;

WhiteBalanceRequest ParseWhiteBalance(const std::string& text) {
    if (text == "grey-world") {
        return {Source::Measured, frame::WhiteBalance::GreyWorld, {}};
    }
    if (text == "auto" || text == "white-patch") {
        return {Source::Measured, frame::WhiteBalance::WhitePatch, {}};
    }
    if (text == "sidecar") {
        return {Source::Sidecar, {}, {}};
    }
    if (text.find(',') == std::string::npos) {
        Fail(ExitCode::Usage,
             "--white-balance: '{}' is unknown: choose auto, grey-world, white-patch, sidecar, or gains such as "
             "1.9,1,1.4",
             text);
    }
    const std::array<double, 3> gains = ParseNumbers<3>("--white-balance", text);
    return {Source::Given, {}, {gains[0], gains[1], gains[2], gains[1]}};
}

void SetWhiteBalance(frame::Finish& finish, const std::optional<WhiteBalanceRequest>& request, const Sidecar& sidecar,
                     const std::string& name) {
    if (!request || request->source == Source::Sidecar) {
        if (request && !sidecar.gains) {
            Fail(ExitCode::Usage, "{}: no sidecar gives its white balance: use --white-balance auto, or give R,G,B",
                 name);
        }
        finish.gains = sidecar.gains.value_or(frame::Gains());
    } else if (request->source == Source::Given) {
        finish.gains = request->gains;
    } else {
        finish.whiteBalance = request->method;
    }
}

}  // namespace

void AddFinishOptions(CLI::App& command, FinishRequest& request) {
    AddText(
        command, "--white-balance",
        [&request](const std::string& text) { request.whiteBalance = ParseWhiteBalance(text); }, "HOW|R,G,B",
        "auto, grey-world, white-patch, sidecar, or gains of red, green and blue");
    AddNumber(command, "--black-level", request.blackLevel, "Sample value of black");
    AddNumber(command, "--white-level", request.whiteLevel, "Sample value at which the sensor clips");
    AddText(
        command, "--matrix",
        [&request](const std::string& text) { request.matrix = ParseNumbers<9>("--matrix", text); }, "RR,RG,...",
        "Colour matrix, row by row: nine numbers separated by commas");
    AddChoice<std::optional<frame::ToneCurve>, frame::ToneCurve>(
        command, "--tone", request.tone, {{"linear", frame::ToneCurve::Linear}, {"srgb", frame::ToneCurve::Srgb}},
        "Tone curve: linear or srgb");
}

std::optional<frame::Finish> MakeFinish(const FinishRequest& request, const Sidecar& sidecar,
                                        const frame::Format& format, const std::string& name) {
    if (!request.whiteBalance && !request.blackLevel && !request.whiteLevel && !request.matrix && !request.tone) {
        return std::nullopt;
    }
    const uint32_t white = frame::White(format);
    const uint64_t blackLevel = request.blackLevel.value_or(sidecar.blackLevel.value_or(0));
    const uint64_t whiteLevel = request.whiteLevel.value_or(sidecar.whiteLevel.value_or(white));
    if (blackLevel >= whiteLevel || whiteLevel > white) {
        Fail(ExitCode::Usage, "{}: black level {} and white level {} do not fit {}: 0 <= black < white <= {}", name,
             blackLevel, whiteLevel, frame::Name(format), white);
    }
    frame::Finish finish;
    finish.blackLevel = static_cast<uint32_t>(blackLevel);
    finish.whiteLevel = static_cast<uint32_t>(whiteLevel);
    SetWhiteBalance(finish, request.whiteBalance, sidecar, name);
    finish.matrix = request.matrix.value_or(sidecar.matrix.value_or(finish.matrix));
    finish.tone = request.tone.value_or(frame::ToneCurve::Linear);
    return finish;
}

}  // namespace kvx::tool
