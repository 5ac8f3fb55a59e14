#include "frame/camera/CameraFinish.h"

#include <algorithm>
#include <cmath>

namespace kvx::frame {
namespace {

bool AreOne(const Gains& gains) {
    return gains.red == 1 && gains.green == 1 && gains.blue == 1 && gains.pan == 1;
}

}  // namespace

std::optional<Finish> ColoursWith(const CameraProfile& profile, const std::optional<Finish>& given) {
    if (!given && !profile.blackLevel && !profile.whiteLevel && !profile.gains && !profile.matrix) return std::nullopt;
    const Finish none;
    Finish finish = given.value_or(none);
    if (profile.gains && finish.whiteBalance == WhiteBalance::Given && AreOne(finish.gains))
        finish.gains = *profile.gains;
    if (profile.matrix && finish.matrix == none.matrix) finish.matrix = *profile.matrix;
    return finish;
}

void TakeLevels(const CameraProfile& profile, const Format& format, Finish& finish) {
    const int more = profile.format ? format.bits - profile.format->bits : 0;
    const auto take = [&](const std::optional<Levels>& levels, Levels& to) {
        if (!levels || !(to == Levels())) return;
        to = *levels;
        for (double& level : to.ofFilters)
            level = std::min(std::ldexp(level, more), static_cast<double>(White(format)));
    };
    take(profile.blackLevel, finish.blackLevel);
    take(profile.whiteLevel, finish.whiteLevel);
}

Finish FinishWith(const CameraProfile& profile, const Finish& finish, const Format& frames) {
    Finish whole = *ColoursWith(profile, finish);
    TakeLevels(profile, frames, whole);
    return whole;
}

}  // namespace kvx::frame
