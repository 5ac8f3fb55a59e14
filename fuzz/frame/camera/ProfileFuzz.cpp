// Camera profiles: the input is the text of one, or of its dark frame.
#include <memory>
#include <string>

#include "KvxFrame/KvxFrame.h"
#include "frame/camera/GreyPng.h"
#include "frame/camera/ProfileJson.h"
#include "support/GuardedBuffer.h"
#include "support/Refusals.h"

using namespace kvx::fuzz;
using namespace kvx::frame;

namespace {

constexpr uint32_t kInvalid = 0x80070007, kRange = 0x80070004;
constexpr uint32_t kWidth = 24, kHeight = 18;

/** A frame of the profile's format, which the profile may refuse for its size. */
void Correct(const CameraProfile& profile) {
    const Format format = Unpacked(profile.format.value_or(FormatByName("BayerRG12")));
    const GuardedBuffer frame(size_t{kWidth} * kHeight * 2, Edge::End),
        picture(size_t{kWidth} * kHeight * 3, Edge::End);
    const SourceView source{frame.Data(), kWidth, kHeight, 0, size_t{kWidth} * kHeight * (format.bits > 8 ? 2u : 1u),
                            format};
    const DestinationView destination{picture.Data(),      kWidth, kHeight, 0, size_t{kWidth} * kHeight * 3,
                                      FormatByName("RGB8")};
    Options options;
    options.camera = std::make_shared<CameraProfile>(profile);
    options.defects = Defects::Auto;
    options.threads = 1;
    IsRefused([&] { Convert(source, destination, options); }, {kInvalid, kRange});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string text(data, data + size);
    IsRefused([&] { DecodeGreyPng(text, 4, 3, "dark.png"); }, {kInvalid});
    CameraProfile profile;
    if (IsRefused([&] { profile = ParseCameraProfile(text); }, {kInvalid, kRange})) return 0;
    const std::string written = ProfileToJson(profile, "");
    Require(ProfileToJson(ParseCameraProfile(written), "") == written, "what is written reads back");
    Correct(profile);
    return 0;
}
