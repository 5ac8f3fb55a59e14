#include "KvxBayer/BayerPattern.h"
#include "KvxDemosaicing/KvxBayer.h"

namespace {

struct Codes {
    int rgb, bgr;
};

// By kvx::BayerPattern. OpenCV names a pattern after the second row and column of the cell: GR is its GB.
constexpr Codes s_bilinear[] = {{49, 47}, {48, 46}, {46, 48}, {47, 49}};
constexpr Codes s_edgeAware[] = {{138, 136}, {137, 135}, {135, 137}, {136, 138}};

}  // namespace

int PixelTypeToBayerType(uint32_t pixelType, int algType, bool isBGR) noexcept {
    const auto pattern = kvx::PatternOf(pixelType);
    if (!pattern) return -1;
    const auto& codes = algType == KvxBayerAlgorithm_EdgeAware ? s_edgeAware : s_bilinear;
    const Codes& code = codes[static_cast<uint8_t>(*pattern)];
    return isBGR ? code.bgr : code.rgb;
}
