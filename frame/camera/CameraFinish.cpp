#include "frame/camera/CameraFinish.h"

#include <algorithm>
#include <cmath>

namespace kvx::frame {
namespace {

bool AreOne(const Gains& gains) {
    return gains.red == 1 && gains.green == 1 && gains.blue == 1 && gains.pan == 1;
}

}  // namespace

std::optional<Finish> ColoursWith(const CameraProfile& profile, const std::optional<Finish>& finish, GivenParts given) {
    const bool takesGains = profile.gains && !given.gains, takesMatrix = profile.matrix && !given.matrix;
    const bool takesLevels = (profile.blackLevel && !given.blackLevel) || (profile.whiteLevel && !given.whiteLevel);
    if (!finish && !takesLevels && !takesGains && !takesMatrix) return std::nullopt;
    const Finish none;
    Finish whole = finish.value_or(none);
    if (takesGains && whole.whiteBalance == WhiteBalance::Given && AreOne(whole.gains)) whole.gains = *profile.gains;
    if (takesMatrix && whole.matrix == none.matrix) whole.matrix = *profile.matrix;
    return whole;
}

void TakeLevels(const CameraProfile& profile, const Format& format, GivenParts given, Finish& finish) {
    const int more = profile.format ? format.bits - profile.format->bits : 0;
    const auto take = [&](const std::optional<Levels>& levels, bool isGiven, Levels& to) {
        if (!levels || isGiven || !(to == Levels())) return;
        to = *levels;
        for (double& level : to.ofFilters)
            level = std::min(std::ldexp(level, more), static_cast<double>(White(format)));
    };
    take(profile.blackLevel, given.blackLevel, finish.blackLevel);
    take(profile.whiteLevel, given.whiteLevel, finish.whiteLevel);
}

Finish FinishWith(const CameraProfile& profile, const Finish& finish, const Format& frames, GivenParts given) {
    Finish whole = *ColoursWith(profile, finish, given);
    TakeLevels(profile, frames, given, whole);
    return whole;
}

}  // namespace kvx::frame
