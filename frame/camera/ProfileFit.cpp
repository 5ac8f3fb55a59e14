#include "frame/camera/ProfileFit.h"
#include "frame/base/Fail.h"

namespace kvx::frame {

bool HasMaps(const CameraProfile& profile) {
    return profile.shading.columns != 0 || !profile.darkFrame.empty() || !profile.hotPixels.empty() ||
           !profile.deadPixels.empty();
}

void RequireFit(const CameraProfile& profile, const SourceView& frame, const std::optional<Site>& origin) {
    if (profile.format && profile.format->family != frame.format.family)
        Fail(KvxResult_InvalidArgument, "the camera profile is for {}, not for {}", Name(*profile.format),
             Name(frame.format));
    if (!HasMaps(profile)) return;
    const Site first = origin.value_or(Site{});
    const bool fits = origin ? uint64_t{first.column} + frame.width <= profile.width &&
                                   uint64_t{first.row} + frame.height <= profile.height
                             : frame.width == profile.width && frame.height == profile.height;
    if (!fits)
        Fail(KvxResult_InvalidArgument, "the camera profile is for frames of {}x{}, not {}x{}", profile.width,
             profile.height, frame.width, frame.height);
    const bool isMirrored = frame.horMirrored || frame.verMirrored;  // the profile was, too
    for (uint32_t row = 0; row < 4; ++row)
        for (uint32_t column = 0; column < 4; ++column)
            if (!isMirrored && FilterAt(*profile.format, first.row + row, first.column + column) !=
                                   FilterAt(frame.format, row, column))
                Fail(KvxResult_InvalidArgument, "the camera profile is for {}, whose filters are not those of {}",
                     Name(*profile.format), Name(frame.format));
}

}  // namespace kvx::frame
