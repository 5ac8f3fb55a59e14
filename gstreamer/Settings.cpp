#include "gstreamer/Settings.h"

#include <glib.h>

#include <array>
#include <utility>

#include "frame/base/Fail.h"

namespace kvx::gst {
using frame::Fail;

namespace {

/** Parses numbers separated by commas, independent of the locale. */
template <size_t count>
std::array<double, count> ParseNumbers(const char* property, const std::string& text) {
    std::array<double, count> numbers{};
    const char* at = text.c_str();
    for (size_t index = 0; index < count; ++index) {
        char* end = nullptr;
        numbers[index] = g_ascii_strtod(at, &end);
        if (end == at || *end != (index + 1 < count ? ',' : '\0')) {
            Fail(KvxResult_InvalidArgument, "{}: '{}' is not {}", property, text,
                 count == 1 ? "a number" : fmt::format("{} numbers with commas between", count));
        }
        at = end + 1;
    }
    return numbers;
}

void SetWhiteBalance(frame::Finish& finish, const std::string& text) {
    if (text == "auto") {
        finish.whiteBalance = frame::WhiteBalance::Auto;
    } else if (text == "white-patch") {
        finish.whiteBalance = frame::WhiteBalance::WhitePatch;
    } else if (text == "grey-world") {
        finish.whiteBalance = frame::WhiteBalance::GreyWorld;
    } else if (text.find(',') == std::string::npos) {
        Fail(KvxResult_InvalidArgument,
             "white-balance: '{}' is unknown: use auto, grey-world, white-patch, or gains such as 1.9,1,1.4", text);
    } else {
        const auto [red, green, blue] = ParseNumbers<3>("white-balance", text);
        finish.whiteBalance = frame::WhiteBalance::Given;
        finish.gains = {red, green, blue, green};
    }
}

/** One number, or four with commas between. */
frame::Levels ParseLevels(const char* property, const std::string& text) {
    if (text.find(',') == std::string::npos) {
        return ParseNumbers<1>(property, text)[0];
    }
    const auto [first, second, third, fourth] = ParseNumbers<4>(property, text);
    return {first, second, third, fourth};
}

}  // namespace

frame::Format PackedFormat(const Settings& settings, frame::Format named) {
    frame::Format format = named;
    format.layout = settings.packing.value_or(named.layout);
    if (!frame::IsValid(format)) {
        Fail(KvxResult_InvalidArgument,
             "packing: not for {}: use msb (above 8 bits), pfnc or mipi (10, 12, 14), gige (10, 12)",
             frame::Name(named));
    }
    return format;
}

std::optional<frame::Finish> FinishOf(const Settings& settings) {
    if (!settings.isNatural && settings.whiteBalance.empty() && settings.exposure.empty() &&
        settings.blackLevel.empty() && settings.whiteLevel.empty() && settings.matrix.empty() && !settings.tone &&
        settings.whiteBalanceFrom.empty()) {
        return std::nullopt;
    }
    frame::Finish finish = settings.isNatural ? frame::Finish::Natural() : frame::Finish();
    if (!settings.blackLevel.empty()) {
        finish.blackLevel = ParseLevels("black-level", settings.blackLevel);
    }
    if (!settings.whiteLevel.empty()) {
        finish.whiteLevel = ParseLevels("white-level", settings.whiteLevel);
    }
    if (!settings.exposure.empty()) {
        finish.autoExposure = settings.exposure == "auto";
        finish.exposure = finish.autoExposure ? 0 : ParseNumbers<1>("exposure", settings.exposure)[0];
    }
    if (!settings.whiteBalance.empty()) {
        SetWhiteBalance(finish, settings.whiteBalance);
    }
    if (!settings.matrix.empty()) {
        finish.matrix = ParseNumbers<9>("matrix", settings.matrix);
    }
    finish.tone = settings.tone.value_or(finish.tone);
    return finish;
}

frame::GivenParts GivenPartsOf(const Settings& settings) {
    const bool givesGains = settings.whiteBalance.find(',') != std::string::npos || !settings.whiteBalanceFrom.empty();
    return {!settings.blackLevel.empty(), !settings.whiteLevel.empty(), givesGains, !settings.matrix.empty()};
}

std::optional<_KvxRect> GreyPlaceOf(const Settings& settings) {
    if (settings.whiteBalanceFrom.empty()) {
        return std::nullopt;
    }
    if (!settings.whiteBalance.empty()) {
        Fail(KvxResult_InvalidArgument, "white-balance and white-balance-from: set one of them");
    }
    std::array<uint32_t, 4> place{};
    const auto numbers = ParseNumbers<4>("white-balance-from", settings.whiteBalanceFrom);
    for (size_t index = 0; index < numbers.size(); ++index) {
        if (!(numbers[index] >= 0 && numbers[index] <= INT32_MAX)) {
            Fail(KvxResult_OutOfRange, "white-balance-from: '{}' is no place X,Y,W,H", settings.whiteBalanceFrom);
        }
        place[index] = static_cast<uint32_t>(numbers[index]);
    }
    return _KvxRect{place[0], place[1], place[2], place[3]};
}

std::shared_ptr<const frame::CameraProfile> CameraOf(const Settings& settings) {
    return settings.camera.empty() ? nullptr
                                   : std::make_shared<frame::CameraProfile>(frame::ReadCameraProfile(settings.camera));
}

frame::Converter MakeConverter(const Settings& settings, frame::Family family,
                               std::shared_ptr<const frame::CameraProfile> camera) {
    frame::Converter converter(family);
    for (const auto& [name, value] : settings.parameters) {
        converter.SetParameter(name, value);
    }
    if (!settings.algorithm.empty()) {
        converter.SetAlgorithm(settings.algorithm);
    }
    if (settings.analogGain > 0) {
        converter.SetAnalogGain(settings.analogGain);
    }
    converter.SetCamera(std::move(camera));
    converter.SetDefects(settings.defects);
    return converter;
}

}  // namespace kvx::gst
