#include <opencv2/imgproc.hpp>

#include "KvxDemosaicing/KvxBayer.h"
#include "framework/PixelFormats.h"

namespace {

enum Pattern { GR, RG, GB, BG, kNoPattern };

Pattern PatternOf(uint32_t pixelType) {
    switch (pixelType) {
        case KvxFormat_BayerGR8:
        case KvxFormat_BayerGR10:
        case KvxFormat_BayerGR12:
        case KvxFormat_BayerGR14:
        case KvxFormat_BayerGR16:
            return GR;
        case KvxFormat_BayerRG8:
        case KvxFormat_BayerRG10:
        case KvxFormat_BayerRG12:
        case KvxFormat_BayerRG14:
        case KvxFormat_BayerRG16:
            return RG;
        case KvxFormat_BayerGB8:
        case KvxFormat_BayerGB10:
        case KvxFormat_BayerGB12:
        case KvxFormat_BayerGB14:
        case KvxFormat_BayerGB16:
            return GB;
        case KvxFormat_BayerBG8:
        case KvxFormat_BayerBG10:
        case KvxFormat_BayerBG12:
        case KvxFormat_BayerBG14:
        case KvxFormat_BayerBG16:
            return BG;
        default:
            return kNoPattern;
    }
}

struct Codes {
    int rgb, bgr;
};

// The library calls a pattern by the second row and column of the cell: our GR is its GB.
constexpr Codes s_bilinear[] = {
    {cv::COLOR_BayerGB2RGB, cv::COLOR_BayerGB2BGR},
    {cv::COLOR_BayerBG2RGB, cv::COLOR_BayerBG2BGR},
    {cv::COLOR_BayerGR2RGB, cv::COLOR_BayerGR2BGR},
    {cv::COLOR_BayerRG2RGB, cv::COLOR_BayerRG2BGR},
};
constexpr Codes s_edgeAware[] = {
    {cv::COLOR_BayerGB2RGB_EA, cv::COLOR_BayerGB2BGR_EA},
    {cv::COLOR_BayerBG2RGB_EA, cv::COLOR_BayerBG2BGR_EA},
    {cv::COLOR_BayerGR2RGB_EA, cv::COLOR_BayerGR2BGR_EA},
    {cv::COLOR_BayerRG2RGB_EA, cv::COLOR_BayerRG2BGR_EA},
};

}  // namespace

int PixelTypeToBayerType(uint32_t pixelType, int algType, bool isBGR) noexcept {
    const Pattern pattern = PatternOf(pixelType);
    if (pattern == kNoPattern) return -1;
    const Codes& codes = (algType == KvxBayerAlgorithm_EdgeAware ? s_edgeAware : s_bilinear)[pattern];
    return isBGR ? codes.bgr : codes.rgb;
}
