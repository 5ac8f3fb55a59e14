#include <opencv2/imgproc.hpp>

#include "KvxBayer/BayerPattern.h"
#include "KvxDemosaicing/KvxBayer.h"

namespace {

struct Codes {
    int rgb, bgr;
};

// By kvx::BayerPattern. OpenCV names a pattern after the second row and column of the cell: GR is its GB.
constexpr Codes s_bilinear[] = {
    {cv::COLOR_BayerGB2RGB, cv::COLOR_BayerGB2BGR},
    {cv::COLOR_BayerBG2RGB, cv::COLOR_BayerBG2BGR},
    {cv::COLOR_BayerRG2RGB, cv::COLOR_BayerRG2BGR},
    {cv::COLOR_BayerGR2RGB, cv::COLOR_BayerGR2BGR},
};
constexpr Codes s_edgeAware[] = {
    {cv::COLOR_BayerGB2RGB_EA, cv::COLOR_BayerGB2BGR_EA},
    {cv::COLOR_BayerBG2RGB_EA, cv::COLOR_BayerBG2BGR_EA},
    {cv::COLOR_BayerRG2RGB_EA, cv::COLOR_BayerRG2BGR_EA},
    {cv::COLOR_BayerGR2RGB_EA, cv::COLOR_BayerGR2BGR_EA},
};

}  // namespace

int PixelTypeToBayerType(uint32_t pixelType, int algType, bool isBGR) noexcept {
    const auto pattern = kvx::PatternOf(pixelType);
    if (!pattern) return -1;
    const auto& codes = algType == KvxBayerAlgorithm_EdgeAware ? s_edgeAware : s_bilinear;
    const Codes& code = codes[static_cast<uint8_t>(*pattern)];
    return isBGR ? code.bgr : code.rgb;
}
