#include "KvxFrame/CameraProfile.h"

#include <cmath>

#include "frame/base/Fail.h"
#include "frame/camera/ProfileLimits.h"
#include "frame/finish/FinishLimits.h"

namespace kvx::frame {
namespace {

void CheckLevels(const CameraProfile& profile) {
    const double white = profile.format ? White(*profile.format) : 65535;
    for (size_t colour = 0; colour < 4; ++colour) {
        const double black = profile.blackLevel ? profile.blackLevel->ofFilters[colour] : 0;
        const double clip = profile.whiteLevel ? profile.whiteLevel->ofFilters[colour] : white;
        if (!(black >= 0 && black < clip && clip <= white))
            Fail(KvxResult_OutOfRange, "a black level of {} and a white level of {}: 0 <= black < white <= {}", black,
                 clip, white);
    }
}

void CheckColours(const CameraProfile& profile) {
    if (profile.gains)
        for (const double gain : {profile.gains->red, profile.gains->green, profile.gains->blue, profile.gains->pan})
            if (!(gain > 0 && gain <= kLargestGain))
                Fail(KvxResult_OutOfRange, "a gain of {}: give more than 0, at most {}", gain, kLargestGain);
    if (profile.matrix)
        for (const double coefficient : *profile.matrix)
            if (!(std::abs(coefficient) <= kLargestCoefficient))
                Fail(KvxResult_OutOfRange, "a matrix coefficient of {}: give -{} to {}", coefficient,
                     kLargestCoefficient, kLargestCoefficient);
    if (profile.noise)
        for (const NoiseLine& line : {profile.noise->pan, profile.noise->colour})
            if (!std::isfinite(line.slope) || !std::isfinite(line.intercept))
                Fail(KvxResult_OutOfRange, "noise of {} x signal + {}: give finite numbers", line.slope,
                     line.intercept);
}

void CheckShading(const Shading& shading, const Format& format) {
    for (const uint32_t nodes : {shading.columns, shading.rows})
        if (nodes < 2 || nodes > kMostNodes)
            Fail(KvxResult_OutOfRange, "shading of {} nodes: give 2 to {}", nodes, kMostNodes);
    for (size_t colour = FirstFilter(format.family); colour < 4; ++colour) {
        const std::vector<float>& gains = shading.gains[colour];
        if (gains.size() != size_t{shading.columns} * shading.rows)
            Fail(KvxResult_InvalidArgument, "shading of {} gains: {} x {} nodes need {}", gains.size(), shading.columns,
                 shading.rows, size_t{shading.columns} * shading.rows);
        for (const float gain : gains)
            if (!(gain >= 1 && gain <= kLargestShadingGain))
                Fail(KvxResult_OutOfRange, "a shading gain of {}: give 1 to {}", gain, kLargestShadingGain);
    }
}

}  // namespace

void Validate(const CameraProfile& profile) {
    CheckLevels(profile);
    CheckColours(profile);
    const bool hasDefects = !profile.hotPixels.empty() || !profile.deadPixels.empty();
    const bool hasShading = profile.shading.columns != 0 || profile.shading.rows != 0;
    const bool hasSize =
        profile.width > 0 && profile.height > 0 && profile.width <= INT32_MAX && profile.height <= INT32_MAX;
    if (profile.format && !IsSource(*profile.format))
        Fail(KvxResult_InvalidArgument, "{} is no format of frames", Name(*profile.format));
    if ((hasDefects || hasShading || !profile.darkFrame.empty()) && (!profile.format || !hasSize))
        Fail(KvxResult_InvalidArgument, "shading, defective pixels and a dark frame need format, width and height");
    if (hasShading) CheckShading(profile.shading, *profile.format);
    for (const std::vector<Site>* sites : {&profile.hotPixels, &profile.deadPixels})
        for (const Site& site : *sites)
            if (site.column >= profile.width || site.row >= profile.height)
                Fail(KvxResult_OutOfRange, "a defective pixel at {}, {}: the frame has {} x {}", site.column, site.row,
                     profile.width, profile.height);
    if (profile.darkFrame.empty()) return;
    if (profile.darkFrame.size() != size_t{profile.width} * profile.height)
        Fail(KvxResult_InvalidArgument, "a dark frame of {} samples: the frame has {} x {}", profile.darkFrame.size(),
             profile.width, profile.height);
    if (!profile.blackLevel) Fail(KvxResult_InvalidArgument, "a dark frame needs the black level");
}

}  // namespace kvx::frame
